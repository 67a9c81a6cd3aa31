// A `dim` trajectory on an image resizes it: its rows are pairs (i, nx,
// ny) and the pixels are resampled to each new size.
#include <algorithm>

#include "animation/traj/apply.h"
#include "image/image_edit.h"
#include "scene/image_object.h"
#include "kernel/access.h"

void dim_image(Objet* o, const float* r, int d) {
  // Rows of pairs hold (i, nx, ny); a row of one or two floats is the size.
  const float* v = d >= 3 ? r + 1 : r;
  const int nx = std::max(entier(v[0]), 1);
  const int ny = d >= 2 ? std::max(entier(v[1]), 1) : nx;
  if (nx != image_nx(o) || ny != image_ny(o)) REDIM_IMAGE(o, nx, ny);
}
