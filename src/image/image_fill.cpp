// Fills and conversions of whole images: colour and gradient, grey,
// negative, random fields, rectangles, cuts, the kept copy.
#include <algorithm>
#include <cstring>

#include "image/image_edit.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/property.h"

namespace {

size_t nb_octets(Objet* o) { return static_cast<size_t>(image_nx(o)) * image_ny(o) * image_nz(o) * 4; }

// f(pixel) on every pixel, in slices with a safe point before each.
template <class F>
void chaque_pixel(Objet* o, F&& f) {
  uint8_t* px = pixels_image(o);
  par_tranches(nb_octets(o) / 4, [&](size_t a, size_t b) {
    for (uint8_t *p = px + a * 4, *e = px + b * 4; p < e; p += 4) f(p);
  });
}

}  // namespace

void IMAGE_COL(Objet* o, const float* c, int n) {
  uint8_t* p = pixels_image(o);
  const int nx = image_nx(o), rows = image_ny(o) * image_nz(o);
  std::vector<uint8_t> row(static_cast<size_t>(nx) * 4);
  for (int x = 0; x < nx; x++) {
    const float t = n >= 6 && nx > 1 ? static_cast<float>(x) / static_cast<float>(nx - 1) : 0.0f;
    for (int k = 0; k < 3; k++) {
      const float a = c[k], b = n >= 6 ? c[3 + k] : a;
      row[static_cast<size_t>(x) * 4 + k] = octet(a + (b - a) * t);
    }
    row[static_cast<size_t>(x) * 4 + 3] = 255;
  }
  for (int y = 0; y < rows; y++) {
    interrupt_check();
    std::memcpy(p + static_cast<size_t>(y) * row.size(), row.data(), row.size());
  }
}

void IMAGE_LUMINANCE(Objet* o) {
  chaque_pixel(o, [](uint8_t* p) {
    const uint8_t l = octet255(0.299f * p[0] + 0.587f * p[1] + 0.114f * p[2]);
    p[0] = l;
    p[1] = l;
    p[2] = l;
  });
}

void INV_IMAGE(Objet* o) {
  chaque_pixel(o, [](uint8_t* p) {
    p[0] = static_cast<uint8_t>(255 - p[0]);
    p[1] = static_cast<uint8_t>(255 - p[1]);
    p[2] = static_cast<uint8_t>(255 - p[2]);
  });
}

void image_alea(Objet* o, float prob, Tirage& t) {
  chaque_pixel(o, [&](uint8_t* p) {
    const uint8_t v = t() < prob ? 255 : 0;
    p[0] = v;
    p[1] = v;
    p[2] = v;
    p[3] = 255;
  });
}

void RECTANGLE_IMAGE(Objet* o, int x1, int y1, int x2, int y2, const uint8_t* rgba) {
  const int nx = image_nx(o), ny = image_ny(o);
  x1 = std::max(0, std::min(x1, x2)), x2 = std::min(nx - 1, std::max(x1, x2));
  y1 = std::max(0, std::min(y1, y2)), y2 = std::min(ny - 1, std::max(y1, y2));
  uint8_t* p = pixels_image(o);
  for (int y = y1; y <= y2; y++) {
    interrupt_check();
    for (uint8_t *q = p + (static_cast<size_t>(y) * nx + x1) * 4, *e = q + static_cast<size_t>(x2 - x1 + 1) * 4; q < e; q += 4)
      std::memcpy(q, rgba, 4);
  }
}

int IMAGE_CUT(Objet* o, int x1, int y1, int x2, int y2) {
  const int nx = image_nx(o), ny = image_ny(o);
  const int a = std::max(0, std::min(x1, x2)), b = std::min(nx - 1, std::max(x1, x2));
  const int c = std::max(0, std::min(y1, y2)), d = std::min(ny - 1, std::max(y1, y2));
  if (a > b || c > d) {
    voir_int2("%d,%d ", x1, y1);
    voir_int2("%d,%d ", x2, y2);
    err_illegal("IMAGE_CUT()");
    return -1;
  }
  const int w = b - a + 1, h = d - c + 1;
  std::vector<uint8_t> keep(static_cast<size_t>(w) * h * 4);
  const uint8_t* p = pixels_image(o);
  for (int y = 0; y < h; y++)
    std::memcpy(&keep[static_cast<size_t>(y) * w * 4], p + (static_cast<size_t>(y + c) * nx + a) * 4, static_cast<size_t>(w) * 4);
  if (SET_DIM_IMAGE(o, w, h) < 0) return -1;
  std::memcpy(pixels_image(o), keep.data(), keep.size());
  return 0;
}

int VALIDATE_IMAGE(Objet* o) { return pixels_precedents(o, true) ? 0 : -1; }

int IMAGE_INI(Objet* o) {
  const word* prev = get_val_1(o->local, -KW_image);
  const bloc cur = pixels_bloc(o);
  if (prev && tag(prev) == T_IMAGE_PREV && np(prev) == np(cur))
    std::memcpy(octets(cur), octets(prev), nb_octets(o));
  else
    std::memset(octets(cur), 0, nb_octets(o));
  return 0;
}

bloc speed_image(Objet* o) {
  const int n = image_nx(o) * image_ny(o);
  bloc v = get_val_1(o->local, KW_speed);
  if (v && tag(v) == T_FLOAT && np(v) == n && dimp(v) == 3) return v;
  if (v) rem_propr_1(o, KW_speed);
  v = set_val_1(o, KW_speed, 3 * n);
  if (!v) return nullptr;
  np(v) = n;
  dimp(v) = 3;
  return v;
}
