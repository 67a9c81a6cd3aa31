// What trajectories do to images beyond their properties.
#pragma once

// Registers it with the trajectories (start-up).
void install_image_trajectories();
