// The help of the words of display, views and lights, added to the help table at install.
#pragma once

void install_render_help();
