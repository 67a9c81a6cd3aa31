// The help of the words of interaction: the loop, menus, panels and tools, added to the help table at install.
#pragma once

void install_interaction_help();
