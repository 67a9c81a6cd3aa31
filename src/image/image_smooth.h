// Smoothing of an image by a convolution kernel.
#pragma once
#include <vector>

#include "kernel/objet.h"

// The kernel a list of numbers gives: `side` by `side` weights, row by
// row. `copie` when it leaves the pixels as they are.
struct Noyau {
  int side = 0;
  std::vector<float> w;
  bool uniforme = false;  // all weights equal: the fast box path
  bool copie = false;
};

// None: 3 by 3 of 1/9. One number n: below 2 a copy; otherwise an odd
// box (n+1 when n is even) of 1/(n*n), cut to nx/2-2 (and ny/2-2) when it
// reaches nx/2-1 (ny/2-1), and made odd again by taking one off. A list:
// side the integer root of its length, weights as given.
Noyau noyau_lissage(const std::vector<float>* values, int nx, int ny);

// Keeps the alpha byte of the source instead of smoothing it.
constexpr int LISSE_RGB = 1;

// image_lisse_0: the destination (made or re-sized to the source, with a
// copy of its pixels) receives the source convolved by the kernel centred
// on each pixel; near the border the sum runs over the kernel cells that
// lie inside the image only, without renormalising. Each byte is the sum
// rounded to the nearest and clamped to 0..255. An image smaller than 4
// by 4 is copied, not smoothed. The destination may be the source.
// 0, or -1 after a report.
int image_lisse_0(Objet* source, Objet* destination, const std::vector<float>* values, int flags);
