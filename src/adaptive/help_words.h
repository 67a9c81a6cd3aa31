// The help of the words of networks and genetics, added to the help table at install.
#pragma once

void install_adaptive_help();
