// A `dim` trajectory on an image resizes it: its rows are pairs (i, nx,
// ny) and the pixels are resampled to each new size.
#include <algorithm>

#include "animation/traj/apply.h"
#include "image/image_edit.h"
#include "image/image_object.h"
#include "image/image_traj.h"
#include "kernel/access.h"
#include "kernel/keywords.h"

namespace {

bool dim_image(Objet* o, int kind, const float* r, int d) {
  if (kind != KW_dim) return false;
  // Rows of pairs hold (i, nx, ny); a row of one or two floats is the size.
  const float* v = d >= 3 ? r + 1 : r;
  const int nx = std::max(entier(v[0]), 1);
  const int ny = d >= 2 ? std::max(entier(v[1]), 1) : nx;
  if (nx != image_nx(o) || ny != image_ny(o)) REDIM_IMAGE(o, nx, ny);
  return true;
}

}  // namespace

void install_image_trajectories() { register_traj_objet(KW_image, dim_image); }
