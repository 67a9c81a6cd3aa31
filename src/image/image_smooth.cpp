// image_lisse_0 and the `smooth` command. A uniform box runs as a
// sliding sum of columns then rows, so its cost does not grow with the
// side, and its clipping at the border is the box's own; any other
// kernel is summed cell by cell over the part that lies inside.
#include "image/image_smooth.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "image/image_command.h"
#include "image/image_ops.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/primitives.h"

namespace {

constexpr int TAILLE_MIN = 4;

Noyau boite(int n) {
  Noyau k;
  k.side = n;
  k.uniforme = true;
  k.copie = n < 2;
  k.w.assign(static_cast<size_t>(n) * n, 1.0f / static_cast<float>(n * n));
  return k;
}

inline uint8_t arrondi(double v) { return v <= 0 ? 0 : v >= 254.5 ? 255 : static_cast<uint8_t>(v + 0.5); }

// The box of side n (odd) over nx by ny pixels of `src` into `dst`: the
// sums of the column windows are kept for the current row and moved down
// one row at a time; each row is then a sliding sum of them.
void lisse_boite(const uint8_t* src, uint8_t* dst, int nx, int ny, int n, int canaux) {
  const int h = n / 2;
  const size_t ligne = static_cast<size_t>(nx) * 4;
  const uint32_t cells = static_cast<uint32_t>(n) * static_cast<uint32_t>(n);
  // The rounded mean of every possible sum, in a table while it is small
  // (a sum over n*n cells is never a half, n being odd).
  std::vector<uint8_t> moyenne;
  if (cells <= 4096) {
    moyenne.resize(255 * cells + 1);
    for (uint32_t t = 0; t < moyenne.size(); t++) moyenne[t] = static_cast<uint8_t>((2 * t + cells) / (2 * cells));
  }
  const double poids = 1.0 / cells;
  std::vector<uint32_t> col(ligne, 0);
  auto ajoute = [&](int y, int signe) {
    const uint8_t* p = src + static_cast<size_t>(y) * ligne;
    if (signe > 0) for (size_t i = 0; i < ligne; i++) col[i] += p[i];
    else for (size_t i = 0; i < ligne; i++) col[i] -= p[i];
  };
  for (int y = 0; y < std::min(h, ny); y++) ajoute(y, 1);
  for (int y = 0; y < ny; y++) {
    interrupt_check();
    if (y + h < ny) ajoute(y + h, 1);
    if (y - h - 1 >= 0) ajoute(y - h - 1, -1);
    uint32_t acc[4] = {0, 0, 0, 0};
    for (int x = 0; x < std::min(h, nx); x++)
      for (int c = 0; c < 4; c++) acc[c] += col[static_cast<size_t>(x) * 4 + c];
    uint8_t* q = dst + static_cast<size_t>(y) * ligne;
    for (int x = 0; x < nx; x++, q += 4) {
      if (x + h < nx) for (int c = 0; c < 4; c++) acc[c] += col[static_cast<size_t>(x + h) * 4 + c];
      if (x - h - 1 >= 0) for (int c = 0; c < 4; c++) acc[c] -= col[static_cast<size_t>(x - h - 1) * 4 + c];
      if (!moyenne.empty()) for (int c = 0; c < canaux; c++) q[c] = moyenne[acc[c]];
      else for (int c = 0; c < canaux; c++) q[c] = arrondi(acc[c] * poids);
    }
  }
}

// Any kernel, summed over its cells inside the image.
void lisse_noyau(const uint8_t* src, uint8_t* dst, int nx, int ny, const Noyau& k, int canaux) {
  const int h = k.side / 2;
  for (int y = 0; y < ny; y++) {
    const int j0 = std::max(0, h - y), j1 = std::min(k.side, ny - y + h);
    for (int x = 0; x < nx; x++) {
      // A kernel may be large: a point at each pixel.
      interrupt_check();
      const int i0 = std::max(0, h - x), i1 = std::min(k.side, nx - x + h);
      double acc[4] = {0, 0, 0, 0};
      for (int j = j0; j < j1; j++) {
        const uint8_t* p = src + (static_cast<size_t>(y + j - h) * nx + (x + i0 - h)) * 4;
        const float* w = &k.w[static_cast<size_t>(j) * k.side];
        for (int i = i0; i < i1; i++, p += 4)
          for (int c = 0; c < 4; c++) acc[c] += static_cast<double>(w[i]) * p[c];
      }
      uint8_t* q = dst + (static_cast<size_t>(y) * nx + x) * 4;
      for (int c = 0; c < canaux; c++) q[c] = arrondi(acc[c]);
    }
  }
}

}  // namespace

Noyau noyau_lissage(const std::vector<float>* values, int nx, int ny) {
  if (!values || values->empty()) return boite(3);
  if (values->size() == 1) {
    int n = coord((*values)[0]);
    if (n < 2) return boite(1);
    if (n % 2 == 0) n++;
    if (n >= nx / 2 - 1) n = nx / 2 - 2;
    if (n >= ny / 2 - 1) n = ny / 2 - 2;
    if (n % 2 == 0) n--;
    return boite(std::max(n, 1));
  }
  Noyau k;
  k.side = static_cast<int>(std::sqrt(static_cast<double>(values->size())));
  while ((k.side + 1) * (k.side + 1) <= static_cast<int>(values->size())) k.side++;
  while (k.side * k.side > static_cast<int>(values->size())) k.side--;
  k.w.assign(values->begin(), values->begin() + k.side * k.side);
  return k;
}

int image_lisse_0(Objet* source, Objet* destination, const std::vector<float>* values, int flags) {
  const int nx = image_nx(source), ny = image_ny(source);
  const bloc b = pixels_bloc(source);
  if (!b) {
    err_vide("image_lisse_0()", source);
    return -1;
  }
  const size_t n = static_cast<size_t>(np(b)) * 4;
  // In place, the sums read a copy; otherwise the source itself, whose
  // block stays where it is while the destination is re-made.
  std::vector<uint8_t> tampon;
  if (destination == source) tampon.assign(octets(b), octets(b) + n);
  const uint8_t* src = tampon.empty() ? octets(b) : tampon.data();
  if (image_nx(destination) != nx || image_ny(destination) != ny || image_nz(destination) != image_nz(source) ||
      !pixels_bloc(destination))
    if (SET_DIM_IMAGE(destination, nx, ny, image_nz(source)) < 0) {
      TRACE_FAIL("image_lisse_0()");
      return -1;
    }
  uint8_t* dst = pixels_image(destination);
  const Noyau k = noyau_lissage(values, nx, ny);
  const int canaux = flags & LISSE_RGB ? 3 : 4;
  if (nx < TAILLE_MIN || ny < TAILLE_MIN || k.copie || image_nz(source) != 1 || canaux < 4) {
    if (dst != src) std::memcpy(dst, src, n);
    if (nx < TAILLE_MIN || ny < TAILLE_MIN || k.copie || image_nz(source) != 1) return 0;
  }
  if (k.uniforme) lisse_boite(src, dst, nx, ny, k.side, canaux);
  else lisse_noyau(src, dst, nx, ny, k, canaux);
  return 0;
}

// `smooth image(src[,dst])`: the kernel is the parameter list of `smooth`.
int SMOOTH_b(word* s, const word* ob, word* st, const word* lim) {
  bool found = false;
  const word* sel = images_commande(s, &found);
  if (ob || !found) return bloc_0(s, ob, st, lim);
  bool present = false;
  const std::vector<float> values = arg_floats(s, KW_smooth, &present);
  Objet* src = image_operande(sel, 0);
  Objet* dst = src;
  if (src && sel && nb_selection(sel) > 1) {
    int num = 0;
    char name[256] = "";
    const int r = element_selection(sel, 1, &num, name);
    dst = r < 0 ? nullptr : image_ou_cree(r == 0 ? num : 0, r == 1 ? name : nullptr);
  }
  if (!src || !dst || image_lisse_0(src, dst, values.empty() ? nullptr : &values, 0) < 0) {
    TRACE_FAIL("SMOOTH_b()");
    return -1;
  }
  return build_nil(s);
}
