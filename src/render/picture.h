// Reading what the window shows: the buffer last drawn.
#pragma once
#include <cstdint>
#include <vector>

// Dimx x Dimy pixels R, G, B, A, bottom row first; empty with no window.
std::vector<uint8_t> pixels_fenetre(int* w, int* h);
