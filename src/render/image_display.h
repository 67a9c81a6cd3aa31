// DISPLAY_IMAGE: images drawn over the window, each at its `poi` (window
// pixels from the bottom left corner), by default at the top left.
#pragma once
#include <vector>

#include "kernel/objet.h"

// Draws these images; an image without pixels is skipped.
void DISPLAY_IMAGE(const std::vector<Objet*>& images);
// Draws every image whose Visible word is 1, as each image does.
void DISPLAY_IMAGE_VISIBLES();
