// Reading what the window shows: the buffer last drawn.
#pragma once
#include <cstdint>
#include <vector>

// The pixels of the window that has the focus, at its present size (in
// *w, *h): R, G, B, A, bottom row first. Empty with no window.
std::vector<uint8_t> pixels_fenetre(int* w, int* h);
// Draws w x h pixels R, G, B, A (bottom row first) blended over the
// window, their bottom left corner at window pixel (x, y) counted from
// the bottom left. Nothing without a window.
void dessine_pixels(const uint8_t* px, int w, int h, int x, int y);
