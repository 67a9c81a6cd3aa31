// The cellular rule on images, `near image(ids)`, and its stored options
// `near matrix image(id)` and `near number image(id)`.
//
// A pixel is a live cell when R+G+B is above 3 * limit * 255. The sum of
// the nine weights over the cell and its eight neighbours (cells outside
// the image left out) decides: exactly 3 gives life, below 2 or above 3
// death, 2 leaves the cell as it is. These numbers belong to the rule;
// `number` is only kept with the image. A pass reads the old states and
// writes a second array. At the end, cells that changed are painted
// white (born) or black (dead), alpha kept; the others keep their pixels.
#include <algorithm>
#include <cstring>

#include "image/image_command.h"
#include "image/image_ops.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/primitives.h"

namespace {

constexpr float MATRICE_DEFAUT[9] = {0, 1, 0, 1, 0, 1, 0, 1, 0};
constexpr float NUMBER_DEFAUT[2] = {2, 3};

struct Regle {
  float m[9];
  int passes = 1;
  float limite = 0.5f;
  bool hasard = false;
  float p = 0.5f;
  Tirage tirage;
};

// One pass over nx by ny cells from `a` into `b`.
void passe(const uint8_t* a, uint8_t* b, int nx, int ny, Regle& r) {
  for (int y = 0; y < ny; y++) {
    interrupt_check();
    for (int x = 0; x < nx; x++) {
      float sum = 0;
      for (int j = -1; j <= 1; j++) {
        if (y + j < 0 || y + j >= ny) continue;
        const uint8_t* row = a + static_cast<size_t>(y + j) * nx;
        for (int i = -1; i <= 1; i++)
          if (x + i >= 0 && x + i < nx) sum += r.m[(j + 1) * 3 + (i + 1)] * static_cast<float>(row[x + i]);
      }
      const size_t k = static_cast<size_t>(y) * nx + x;
      uint8_t etat = a[k];
      if (sum == 3) etat = 1;
      else if (sum < 2 || sum > 3) etat = 0;
      if (etat != a[k] && r.hasard && !(r.tirage() < r.p)) etat = a[k];
      b[k] = etat;
    }
  }
}

int vie(Objet* o, Regle& r) {
  const int nx = image_nx(o), ny = image_ny(o);
  uint8_t* px = pixels_image(o);
  const size_t n = static_cast<size_t>(nx) * ny;
  std::vector<uint8_t> debut(n), a(n), b(n);
  const float seuil = 3 * r.limite * 255;
  par_tranches(n, [&](size_t k0, size_t k1) {
    for (size_t k = k0; k < k1; k++)
      debut[k] = static_cast<float>(px[k * 4] + px[k * 4 + 1] + px[k * 4 + 2]) > seuil ? 1 : 0;
  });
  a = debut;
  for (int t = 0; t < r.passes; t++) {
    passe(a.data(), b.data(), nx, ny, r);
    a.swap(b);
  }
  par_tranches(n, [&](size_t k0, size_t k1) {
    for (size_t k = k0; k < k1; k++)
      if (a[k] != debut[k]) std::memset(px + k * 4, a[k] ? 255 : 0, 3);
  });
  return 0;
}

// The stored value of `near code` on the image, or null.
const word* option_gardee(Objet* o, int code, int count) {
  const word* v = get_val_2(o->local, KW_near, code);
  return v && tag(v) == T_FLOAT && elements(v) == count ? v : nullptr;
}

int garde(Objet* o, int code, const float* f, int count) {
  bloc v = set_val_2(o, KW_near, code, count);
  if (!v) return -1;
  for (int i = 0; i < count; i++) setf(v, i, f[i]);
  return 0;
}

int usage_matrice() {
  voir_mot(KW_near);
  voir_texte("0,1,2\n3,4,5\n6,7,8");
  voir_texte("\a\n");
  return -1;
}

}  // namespace

int NEAR_IMAGE(word* s, const word* ob, word* st, const word* lim) {
  (void)st, (void)lim;
  if (ob) return bloc_0(s, ob, st, lim);
  const word* sel = images_commande(s, nullptr);
  Regle r;
  bool matrice = false;
  const std::vector<float> m = arg_floats(s, KW_matrix, &matrice);
  if (matrice && m.size() != 9) return usage_matrice();
  bool number = false;
  std::vector<float> num = arg_floats(s, KW_number, &number);
  if (number && num.size() < 2) num.assign(NUMBER_DEFAUT, NUMBER_DEFAUT + 2);
  r.passes = coord(arg_float(s, KW_dup, 1));
  r.limite = arg_float(s, KW_limit, 0.5f);
  for (int code : {KW_rand, KW_alea})
    if (find_item(s, code)) {
      r.hasard = true;
      r.tirage.table = code == KW_alea;
      r.p = arg_float(s, code, 0.5f);
    }
  const int res = pour_chaque_image(sel, "NEAR_IMAGE()", [&](Objet* o) {
    const word* gardee = option_gardee(o, KW_matrix, 9);
    for (int i = 0; i < 9; i++)
      r.m[i] = matrice ? m[static_cast<size_t>(i)] : gardee ? getf(gardee, i) : MATRICE_DEFAUT[i];
    if (number && garde(o, KW_number, num.data(), 2) < 0) return -1;
    return vie(o, r);
  });
  return res < 0 ? -1 : build_nil(s);
}

int NEAR_IMAGE_EG(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  const int code = next_item(first_item(s))[2];
  const int count = code == KW_matrix ? 9 : 2;
  const float* defaut = code == KW_matrix ? MATRICE_DEFAUT : NUMBER_DEFAUT;
  const word* sel = images_commande(s, nullptr);
  const std::vector<float> v = floats_of(ob);
  if (ob && static_cast<int>(v.size()) != count) {
    voir_mot(KW_near);
    voir_mot(code);
    voir_mot(KW_image);
    voir_texte(code == KW_matrix ? "(id)=m00,m01,m02, m10,m11,m12, m20,m21,m22" : "(id)=num1,num2");
    voir_texte("\a\n");
    return -1;
  }
  std::vector<float> f;
  const int r = pour_chaque_image(sel, "NEAR_IMAGE_EG()", [&](Objet* o) {
    if (ob) return garde(o, code, v.data(), count);
    const word* g = option_gardee(o, code, count);
    for (int i = 0; i < count; i++) f.push_back(g ? getf(g, i) : defaut[i]);
    return 0;
  });
  if (r < 0) return -1;
  return ob ? set_result(s, ob, lim) : build_floats(s, lim, f, 1);
}
