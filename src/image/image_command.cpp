// IMAGE_1, the `image` command: each image of the selector is created
// when absent (128 by 128) and then changed by the options, which take
// effect in the order of the table below whatever their order in the
// line: size first, then fills, then moves, then copies. Words that are
// no option become properties of the image, as for other objects.
#include <algorithm>
#include <cmath>

#include "image/image_command.h"
#include "image/image_edit.h"
#include "kernel/keywords.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/primitives.h"
#include "scene/vol_build.h"

namespace {

int usage(int code, const char* text) {
  voir_mot(code);
  voir_texte(text);
  return -1;
}

// The values of the option `code`, and whether there are at least `n`.
bool au_moins(word* s, int code, size_t n, std::vector<float>& v) {
  v = arg_floats(s, code);
  return v.size() >= n;
}

int opt_dim(Objet* o, word* s) {
  std::vector<float> v;
  if (!au_moins(s, KW_dim, 1, v)) return usage(KW_dim, "(nx,ny)\a\n");
  const int nx = coord(v[0]), ny = v.size() > 1 ? coord(v[1]) : nx;
  bool adjust = false;
  if (arg_floats(s, KW_adjust, &adjust).empty() && adjust) return REDIM_IMAGE(o, nx, ny);
  if (nx == image_nx(o) && ny == image_ny(o) && image_nz(o) == 1) return 0;
  return SET_DIM_IMAGE(o, nx, ny);
}

// `adjust(id)`: to the size of that image; `adjust` alone with `dim` is
// done by `dim`, and without it takes the window's size.
int opt_adjust(Objet* o, word* s) {
  const word* ref = arg_of(s, KW_adjust);
  if (!ref && find_item(s, KW_dim)) return 0;
  Objet* r = ref ? image_operande(ref, 0) : image_courante();
  return r ? IMAGE_ADJUST_DIM(o, r) : -1;
}

int opt_cut(Objet* o, word* s) {
  std::vector<float> v;
  if (!au_moins(s, KW_cut, 4, v)) return usage(KW_cut, "(x1,y1,x2,y2)\a\n");
  return IMAGE_CUT(o, coord(v[0]), coord(v[1]), coord(v[2]), coord(v[3]));
}

int opt_ini(Objet* o, word*) { return IMAGE_INI(o); }

int opt_col(Objet* o, word* s) {
  if (find_item(s, KW_rectangle)) return 0;  // the rectangle's colour
  std::vector<float> v;
  if (!au_moins(s, KW_col, 3, v)) return usage(KW_col, "(r,g,b[,r2,g2,b2])\a\n");
  IMAGE_COL(o, v.data(), static_cast<int>(std::min<size_t>(v.size(), 6)));
  return 0;
}

int alea_de(Objet* o, word* s, int code) {
  Tirage t{code == KW_alea};
  image_alea(o, arg_float(s, code, 0.5f), t);
  return 0;
}
int opt_rand(Objet* o, word* s) { return alea_de(o, s, KW_rand); }
int opt_alea(Objet* o, word* s) { return alea_de(o, s, KW_alea); }

int opt_rectangle(Objet* o, word* s) {
  std::vector<float> v, c;
  if (!au_moins(s, KW_rectangle, 4, v)) return usage(KW_rectangle, "(x1,y1,x2,y2) col(r,g,b)\a\n");
  uint8_t rgba[4] = {255, 255, 255, 255};
  if (au_moins(s, KW_col, 3, c))
    for (int k = 0; k < 3; k++) rgba[k] = octet(c[static_cast<size_t>(k)]);
  RECTANGLE_IMAGE(o, coord(v[0]), coord(v[1]), coord(v[2]), coord(v[3]), rgba);
  return 0;
}

int opt_luminance(Objet* o, word*) {
  IMAGE_LUMINANCE(o);
  return 0;
}
int opt_inv(Objet* o, word*) {
  INV_IMAGE(o);
  return 0;
}

int opt_tran(Objet* o, word* s) {
  const std::vector<float> v = arg_floats(s, KW_tran);
  return TRAN_IMAGE(o, v.size() > 0 ? v[0] : 0, v.size() > 1 ? v[1] : 0);
}
int opt_rota(Objet* o, word* s) { return ROTZ_IMAGE(o, arg_float(s, KW_rota, 0)); }
int opt_rotz(Objet* o, word* s) { return ROTZ_IMAGE(o, arg_float(s, KW_rotz, 0)); }
int opt_dila(Objet* o, word* s) {
  const std::vector<float> v = arg_floats(s, KW_dila);
  const float sx = v.empty() ? 1 : v[0];
  return DILA_IMAGE(o, sx, v.size() > 1 ? v[1] : sx);
}
int opt_dilx(Objet* o, word* s) { return DILA_IMAGE(o, arg_float(s, KW_dilx, 1), 1); }
int opt_dily(Objet* o, word* s) { return DILA_IMAGE(o, 1, arg_float(s, KW_dily, 1)); }

// `speed` makes the per-pixel speed; `speed(vx,vy,vz)` gives it to all.
int opt_speed(Objet* o, word* s) {
  bloc v = speed_image(o);
  if (!v) return -1;
  std::vector<float> f = arg_floats(s, KW_speed);
  if (f.empty()) return 0;
  f.resize(3, 0.0f);
  for (int i = 0; i < np(v); i++)
    for (int k = 0; k < 3; k++) setf(v, i * 3 + k, f[static_cast<size_t>(k)]);
  return 0;
}

int opt_validate(Objet* o, word*) { return VALIDATE_IMAGE(o); }

// `dup(ids)`: copies of the image into those images, made as needed.
int opt_dup(Objet* o, word* s) {
  const word* ids = arg_of(s, KW_dup);
  if (!ids) return usage(KW_dup, "(id)\a\n");
  for (int i = 0; i < nb_selection(ids); i++) {
    int num = 0;
    char name[256] = "";
    const int r = element_selection(ids, i, &num, name);
    if (r < 0) return -1;
    Objet* d = image_ou_cree(r == 0 ? num : 0, r == 1 ? name : nullptr);
    if (!d || copie_image(d, o) < 0) return -1;
  }
  return 0;
}

int sans_effet(Objet*, word*) { return 0; }

struct Option {
  int code;
  int (*f)(Objet*, word*);
};

// In the order they take effect.
const Option OPTIONS[] = {
    {KW_dim, opt_dim}, {KW_adjust, opt_adjust}, {KW_cut, opt_cut}, {KW_ini, opt_ini},
    {KW_col, opt_col}, {KW_rand, opt_rand}, {KW_alea, opt_alea}, {KW_rectangle, opt_rectangle},
    {KW_luminance, opt_luminance}, {KW_inv, opt_inv}, {KW_tran, opt_tran}, {KW_rota, opt_rota},
    {KW_rotz, opt_rotz}, {KW_dila, opt_dila}, {KW_dilx, opt_dilx}, {KW_dily, opt_dily},
    {KW_speed, opt_speed}, {KW_validate, opt_validate}, {KW_dup, opt_dup},
    // Flags of the drawing and of the handlers not built here.
    {KW_abs, sans_effet}, {KW_debug, sans_effet}, {KW_precision, sans_effet}, {KW_average, sans_effet},
    {KW_ang, sans_effet}, {KW_bitmap, sans_effet}, {KW_cube, sans_effet}, {KW_dec, sans_effet},
    {KW_dilz, sans_effet}, {KW_normal, sans_effet}, {KW_poi, sans_effet}, {KW_roll, sans_effet},
    {KW_rotx, sans_effet}, {KW_roty, sans_effet}, {KW_sphere, sans_effet},
};

const Option* option_de(int code) {
  for (const Option& op : OPTIONS)
    if (op.code == code) return &op;
  return nullptr;
}

int change_image(Objet* o, word* s) {
  for (const Option& op : OPTIONS)
    if (find_item(s, op.code) && op.f(o, s) < 0) return -1;
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item))
    if (!option_de(item[2]) && ajou_propriete_simple(o, item) < 0) return -1;
  return 0;
}

bool a_des_options(word* s) { return item_count(s) > 1; }

}  // namespace

bool commande_image(word* s) { return find_item(s, KW_image) != nullptr; }

int IMAGE_1(word* s, const word* ob, word* st, const word* lim) {
  const word* sel = command_argument(s);
  if (ob || (!sel && !a_des_options(s))) return bloc_0(s, ob, st, lim);
  const int n = nb_images(sel);
  for (int i = 0; i < n; i++) {
    Objet* o = nullptr;
    if (!sel) {
      o = image_courante();
    } else {
      int num = 0;
      char name[256] = "";
      const int r = element_selection(sel, i, &num, name);
      if (r >= 0) o = image_ou_cree(r == 0 ? num : 0, r == 1 ? name : nullptr);
      if (o && !pixels_bloc(o) && SET_DIM_IMAGE(o, IMAGE_DEFAULT_SIZE, IMAGE_DEFAULT_SIZE) < 0) o = nullptr;
    }
    if (!o || change_image(o, s) < 0) {
      TRACE_FAIL("IMAGE_1()");
      return -1;
    }
  }
  return build_nil(s);
}

int DIM_IMAGE(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  const word* sel = images_commande(s, nullptr);
  if (ob) {
    const std::vector<float> v = floats_of(ob);
    if (v.empty()) return usage(KW_dim, "image(id)=nx,ny\a\n");
    const int nx = coord(v[0]), ny = v.size() > 1 ? coord(v[1]) : nx;
    return pour_chaque_image(sel, "DIM_IMAGE()", [&](Objet* o) { return REDIM_IMAGE(o, nx, ny); });
  }
  std::vector<float> f;
  const int r = pour_chaque_image(sel, "DIM_IMAGE()", [&](Objet* o) {
    f.push_back(static_cast<float>(image_nx(o)));
    f.push_back(static_cast<float>(image_ny(o)));
    return 0;
  });
  if (r < 0) return -1;
  return build_floats(s, lim, f, 2);
}
