// The help of the words of animation: trajectories, dynamics, collisions and limits, added to the help table at install.
#pragma once

void install_animation_help();
