// The help of the words of the objects and volumes, added to the help table at install.
#pragma once

void install_scene_help();
