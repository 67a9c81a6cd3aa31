// DISK_IMAGE: `disk image(ids) poi(x,y) radius(r) col(r,g,b)` paints a
// disc on images, in pixel coordinates (pixel (x,y) centred on x,y).
// Options: `coe(f)` blends the colour in by f; `rand(p)`/`alea(p)` paint
// each pixel with probability p (both default 0.5); `transp(t)` gives the
// painted pixels the alpha 1-t (else 1); `normal` shades as a lit
// hemisphere, sqrt(1 - (d/r)^2); `limit(w)` paints only the ring of width
// w (default 1) at the edge; `precision(n)` samples n by n points a pixel
// and blends by the part covered; `inside` moves the centre so that the
// disc lies within the image.
#include <algorithm>
#include <cmath>

#include "image/image_command.h"
#include "image/image_ops.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/primitives.h"

namespace {

struct Disque {
  float cx = 0, cy = 0, r = 0;
  bool centre = false, rayon = false;  // given by the command
  float col[3] = {1, 1, 1};
  float coe = 1;
  bool hasard = false;
  float p = 0.5f;
  Tirage tirage;
  float alpha = 1;
  bool normal = false;
  float bord = 0;  // width of the ring, 0 for a full disc
  int precision = 1;
  bool inside = false;
};

bool dans(const Disque& d, float dist) { return dist <= d.r && (d.bord <= 0 || dist > d.r - d.bord); }

// The part of the pixel (x,y) the disc covers, by n by n samples.
float couverture(const Disque& d, int x, int y) {
  const int n = d.precision;
  int in = 0;
  for (int j = 0; j < n; j++)
    for (int i = 0; i < n; i++) {
      const float u = static_cast<float>(x) + (static_cast<float>(i) + 0.5f) / static_cast<float>(n) - 0.5f;
      const float v = static_cast<float>(y) + (static_cast<float>(j) + 0.5f) / static_cast<float>(n) - 0.5f;
      if (dans(d, std::hypot(u - d.cx, v - d.cy))) in++;
    }
  return static_cast<float>(in) / static_cast<float>(n * n);
}

}  // namespace

// DISK_IMAGE_1: the pixels of one disc on one image.
static int DISK_IMAGE_1(Objet* o, Disque d) {
  const int nx = image_nx(o), ny = image_ny(o);
  if (!d.centre) d.cx = static_cast<float>(nx - 1) / 2, d.cy = static_cast<float>(ny - 1) / 2;
  if (!d.rayon) d.r = static_cast<float>(std::min(nx, ny)) / 4;
  if (d.inside) {
    d.cx = std::clamp(d.cx, d.r, std::max(d.r, static_cast<float>(nx - 1) - d.r));
    d.cy = std::clamp(d.cy, d.r, std::max(d.r, static_cast<float>(ny - 1) - d.r));
  }
  const int x0 = std::max(0, coord(d.cx - d.r - 1)), x1 = std::min(nx - 1, coord(d.cx + d.r + 2));
  const int y0 = std::max(0, coord(d.cy - d.r - 1)), y1 = std::min(ny - 1, coord(d.cy + d.r + 2));
  uint8_t* px = pixels_image(o);
  for (int y = y0; y <= y1; y++)
    for (int x = x0; x <= x1; x++) {
      // The samples a pixel takes are the user's to choose.
      interrupt_check();
      float f = couverture(d, x, y) * d.coe;
      if (f <= 0 || (d.hasard && !(d.tirage() < d.p))) continue;
      float shade = 1;
      if (d.normal) {
        const float q = std::hypot(static_cast<float>(x) - d.cx, static_cast<float>(y) - d.cy) / d.r;
        shade = q < 1 ? std::sqrt(1 - q * q) : 0;
      }
      uint8_t* p = px + (static_cast<size_t>(y) * nx + x) * 4;
      for (int k = 0; k < 4; k++) {
        const float cible = k < 3 ? d.col[k] * shade * 255 : d.alpha * 255;
        p[k] = octet255(p[k] + (cible - p[k]) * f);
      }
    }
  return 0;
}

int DISK_IMAGE(word* s, const word* ob, word* st, const word* lim) {
  bool found = false;
  const word* sel = images_commande(s, &found);
  if (ob || !found) return bloc_0(s, ob, st, lim);
  Disque d;
  const std::vector<float> poi = arg_floats(s, KW_poi);
  if ((d.centre = poi.size() >= 2)) d.cx = poi[0], d.cy = poi[1];
  const std::vector<float> r = arg_floats(s, KW_radius);
  if ((d.rayon = !r.empty())) d.r = r[0];
  const std::vector<float> c = arg_floats(s, KW_col);
  for (size_t k = 0; k < 3 && k < c.size(); k++) d.col[k] = c[k];
  if (find_item(s, KW_coe)) d.coe = arg_float(s, KW_coe, 0.5f);
  for (int code : {KW_rand, KW_alea})
    if (find_item(s, code)) {
      d.hasard = true;
      d.tirage.table = code == KW_alea;
      d.p = arg_float(s, code, 0.5f);
    }
  if (find_item(s, KW_transp)) d.alpha = 1 - arg_float(s, KW_transp, 0);
  d.normal = find_item(s, KW_normal) != nullptr;
  if (find_item(s, KW_limit)) d.bord = arg_float(s, KW_limit, 1);
  d.precision = std::clamp(coord(arg_float(s, KW_precision, 1)), 1, 16);
  d.inside = find_item(s, KW_inside) != nullptr;
  if (d.rayon && d.r <= 0) {
    voir_mot(KW_radius);
    voir_float("%f ", d.r);
    err_illegal("DISK_IMAGE()");
    return -1;
  }
  if (pour_chaque_image(sel, "DISK_IMAGE()", [&](Objet* o) { return DISK_IMAGE_1(o, d); }) < 0) return -1;
  return build_nil(s);
}
