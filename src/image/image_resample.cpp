// Resampling an image to a new size, one axis after the other.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "image/image_edit.h"
#include "kernel/interrupt.h"

namespace {

struct Poids {
  int j;
  float w;
};

// For each of the m destination positions of an axis of n source
// pixels, the source pixels and their normalised weights: a triangle
// centred on the position, as wide as the larger of the two pixel sizes.
// Indices past the ends are clamped, so edges repeat.
std::vector<std::vector<Poids>> contributions(int n, int m) {
  const double scale = static_cast<double>(n) / m, r = std::max(1.0, scale);
  std::vector<std::vector<Poids>> out(static_cast<size_t>(m));
  for (int i = 0; i < m; i++) {
    const double c = (i + 0.5) * scale - 0.5;
    double sum = 0;
    for (int j = static_cast<int>(std::ceil(c - r)); j <= static_cast<int>(std::floor(c + r)); j++) {
      const double w = 1 - std::fabs(j - c) / r;
      if (w <= 0) continue;
      out[static_cast<size_t>(i)].push_back({std::clamp(j, 0, n - 1), static_cast<float>(w)});
      sum += w;
    }
    for (Poids& p : out[static_cast<size_t>(i)]) p.w = static_cast<float>(p.w / sum);
  }
  return out;
}

}  // namespace

int REDIM_IMAGE(Objet* o, int nx, int ny) {
  const int sx = image_nx(o), sy = image_ny(o);
  if (nx == sx && ny == sy) return 0;
  // The row pass holds nx by sy pixels of floats: both it and the result
  // must stay within what a pixel block may hold.
  constexpr long long MAX = 1LL << 28;
  if (static_cast<long long>(nx) * ny > MAX || static_cast<long long>(nx) * sy > MAX) {
    err_malloc("REDIM_IMAGE()", static_cast<double>(nx) * std::max(ny, sy) * 16);
    return -1;
  }
  if (nx <= 0 || ny <= 0) {
    voir_int2("%d,%d ", nx, ny);
    err_illegal("REDIM_IMAGE()");
    return -1;
  }
  const auto cx = contributions(sx, nx), cy = contributions(sy, ny);
  // Rows first: sy rows of nx pixels, in floats.
  const uint8_t* src = pixels_image(o);
  std::vector<float> rows(static_cast<size_t>(nx) * sy * 4);
  for (int y = 0; y < sy; y++) {
    interrupt_check();
    for (int x = 0; x < nx; x++) {
      float* d = &rows[(static_cast<size_t>(y) * nx + x) * 4];
      for (const Poids& p : cx[static_cast<size_t>(x)])
        for (int k = 0; k < 4; k++) d[k] += p.w * src[(static_cast<size_t>(y) * sx + p.j) * 4 + k];
    }
  }
  if (SET_DIM_IMAGE(o, nx, ny) < 0) return -1;
  uint8_t* dst = pixels_image(o);
  for (int y = 0; y < ny; y++) {
    interrupt_check();
    for (int x = 0; x < nx; x++) {
      float acc[4] = {0, 0, 0, 0};
      for (const Poids& p : cy[static_cast<size_t>(y)])
        for (int k = 0; k < 4; k++) acc[k] += p.w * rows[(static_cast<size_t>(p.j) * nx + x) * 4 + k];
      for (int k = 0; k < 4; k++) *dst++ = octet255(acc[k]);
    }
  }
  return 0;
}

int IMAGE_ADJUST_DIM(Objet* o, Objet* ref) { return REDIM_IMAGE(o, image_nx(ref), image_ny(ref)); }
