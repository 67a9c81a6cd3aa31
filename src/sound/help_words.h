// The help of the words of sound, added to the help table at install.
#pragma once

void install_sound_help();
