// Reading what the window shows: the buffer last drawn.
#pragma once
#include <cstdint>
#include <vector>

// The pixels of the window that has the focus, at its present size (in
// *w, *h): R, G, B, A, bottom row first. Empty with no window.
std::vector<uint8_t> pixels_fenetre(int* w, int* h);
// The window's size now, in *w, *h (one resized from outside and not
// yet reported included); false with no window.
bool taille_fenetre(int* w, int* h);
// The pixels R, G, B (bottom row first) of the back buffer (where the
// loop draws its image) or the front one, at w x h, into `rgb`: a read
// that allocates nothing, for recordings.
bool pixels_rgb(uint8_t* rgb, int w, int h, bool back);
// Draws w x h pixels R, G, B, A (bottom row first) blended over the
// window, their bottom left corner at window pixel (x, y) counted from
// the bottom left. Nothing without a window.
void dessine_pixels(const uint8_t* px, int w, int h, int x, int y);
