// Images of type `dynamic`, while shown (the stage leaves out an object
// whose displ is 0, and an image's displ is its Visible word): the colour
// of each pixel moves as a vertex does, R, G and B being its three
// coordinates. The image's `speed` (three
// floats a pixel, as `generate speed image` makes it) is the pixels'
// speed; `mass` m, `force` (fx, fy, fz and a damping c) and `force add`
// act on every pixel, and with `yes field` the fields add their force at
// the pixel's place (x, y, 0), in pixels from the first one. One step:
//   a = c v + F/m;  v += a;  colour += v, held within 0..255;
// then `limit speed` bounds v, for the next step. The exact colours are
// kept in `col dynamic` (three floats a pixel); a pixel whose byte something
// else changed starts again from that byte. Neither `force` nor `force
// add` of an image is cleared by the cycle: they act until changed.
#include <cmath>
#include <cstdint>

#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/motion.h"
#include "image/image_edit.h"
#include "image/image_ops.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/image_object.h"
#include "scene/volume.h"

namespace {

const int COL_DYNAMIC[] = {KW_col, KW_dynamic};

// What the step of one image reads.
struct PasImage {
  Objet* o;
  float r;         // 1/m
  float c;         // the damping
  float F[3];      // `force` + `force add`
  float L;         // `limit speed`, negative for none
  float* V;        // speed, 3 a pixel
  float* C;        // exact colours, 3 a pixel
  uint8_t* B;      // the pixels, 4 bytes each
  int nx;
  bool champs;     // Yes[field]
  const word* liste;  // the image's own `field` list, or null
};

}  // namespace

// DYNAMIC_IMAGE_PIXEL: one step of pixel i.
static int DYNAMIC_IMAGE_PIXEL(const PasImage& p, int i) {
  float F[4] = {p.F[0], p.F[1], p.F[2], 0};
  if (p.champs) {
    const float x[3] = {static_cast<float>(i % p.nx), static_cast<float>(i / p.nx), 0};
    if (champs_objet(p.o, p.liste, F, x, 0) < 0) return -1;
  }
  float* v = p.V + i * 3;
  float* col = p.C + i * 3;
  uint8_t* b = p.B + i * 4;
  for (int a = 0; a < 3; a++) {
    if (octet255(col[a]) != b[a]) col[a] = b[a];
    v[a] += p.c * v[a] + p.r * F[a];
    col[a] = std::fmin(std::fmax(col[a] + v[a], 0.0f), 255.0f);
    b[a] = octet255(col[a]);
  }
  borne_vecteur(v, 3, p.L);
  return 0;
}

int DYNAMIC_IMAGE(Objet* o) {
  if (!image_dynamique(o) || !o->local) return 0;
  const word* l = o->local;
  if (value_at(get_val_1(l, KW_dynamic), 0, 2.0f) <= 0) return 0;
  const float m = value_at(get_val_1(l, KW_mass), 0, 0);
  if (m == 0) return 0;
  const int n = image_nx(o) * image_ny(o);
  const word* px = pixels_lecture(o);
  if (n < 1 || !px || np(px) < n) return 0;
  bloc v = speed_image(o);
  bool valide = false;
  bloc c = cache_vol(o, 2, COL_DYNAMIC, n, 3, &valide);
  if (!v || !c) {
    TRACE_FAIL("DYNAMIC_IMAGE()");
    return -1;
  }
  PasImage p{};
  p.o = o;
  p.r = m <= 0.0000001f ? 1000000.0f : 1 / m;
  const word* force = get_val_1(o->local, KW_force);
  const word* add = get_val_2(o->local, KW_force, KW_add);
  for (int a = 0; a < 3; a++) p.F[a] = value_at(force, a, 0) + value_at(add, a, 0);
  p.c = value_at(force, 3, 0);
  p.L = value_at(get_val_2(o->local, KW_limit, KW_speed), 0, -1);
  p.V = reinterpret_cast<float*>(v + 4);
  p.C = reinterpret_cast<float*>(c + 4);
  p.B = pixels_image(o);  // the pixels change: a texture of them follows
  p.nx = image_nx(o);
  p.champs = Yes(KW_field) > 0;
  p.liste = get_val_1(o->local, KW_field);
  for (int i = 0; i < n; i++)
    if (DYNAMIC_IMAGE_PIXEL(p, i) < 0) {
      TRACE_FAIL("DYNAMIC_IMAGE()");
      return -1;
    }
  return 0;
}
