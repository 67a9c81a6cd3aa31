// DISPLAY_IMAGE: images drawn over the window, each at its `poi` (window
// pixels from the bottom left corner), by default at the top left.
#pragma once
#include <vector>

#include "kernel/objet.h"

// The box an image is drawn in: left, bottom, right, top, in window
// pixels from the bottom left corner; false for an image without a size.
bool image_placement(Objet* o, float box[4]);
// Draws these images; an image without pixels is skipped.
void DISPLAY_IMAGE(const std::vector<Objet*>& images);
// Draws every image whose Visible word is 1, as each image does.
void DISPLAY_IMAGE_VISIBLES();
