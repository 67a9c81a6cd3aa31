// EXEC_TRAJ_OBJ_1_1: the current row of a trajectory given to one object,
// by the trajectory's kind. Transformations go to the deltas of the
// object's transformation block (words 29 to 41), so that the values the
// user set stay apart; other kinds write the property of their name. On
// lights and views, which are placed by `eye`, the transformations act on
// what they use (light_view.cpp).
#include <algorithm>
#include <cmath>

#include "animation/traj/apply.h"
#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "render/window.h"
#include "scene/volume.h"

namespace {

constexpr float PI_F = 3.14159265f;

// The effective scale of axis k becomes the user's times f.
void echelle(float* ob, int k, float f) { ob[TR_DELTA + TR_DILA + k] = ob[TR_DILA + k] * f - ob[TR_DILA + k]; }

// The property `code` takes n floats: in place when it holds as many or
// more, else made again with n.
void ecrit_propriete(Objet* o, int n_keys, const int* codes, const float* f, int n) {
  bloc v = get_val_n(o->local, n_keys, codes);
  if (!v || tag(v) != T_FLOAT || elements(v) < n) {
    if (v) rem_propr_k(o, n_keys, codes);
    v = set_matrix_k(o, n_keys, codes, n, 1);
    if (!v) return;
  }
  for (int k = 0; k < n; k++) setf(v, k, f[k]);
}

void ecrit_1(Objet* o, int code, const float* f, int n) { ecrit_propriete(o, 1, &code, f, n); }

// `transp`: the fifth value of `illum`, made from the defaults.
void transparence(Objet* o, float t) {
  bloc v = get_val_1(o->local, KW_illum);
  if (!v || tag(v) != T_FLOAT || elements(v) < 5) {
    float d[5] = {0, 0, 0, 0, 0};
    int n = 0;
    if (const float* def = def_com(KW_illum / KW_PER_VOC, KW_illum, &n))
      std::copy(def, def + std::min(n, 5), d);
    floats_of(v, d, 5);
    ecrit_1(o, KW_illum, d, 5);
    v = get_val_1(o->local, KW_illum);
    if (!v) return;
  }
  setf(v, 4, t);
}

bool place_par_eye(const Objet* o) { return o->kind == KW_light || o->kind == KW_view; }

}  // namespace

void axe_limite(Objet* t, const float* r, float a[3]) {
  std::copy(r, r + 3, a);
  if (const word* l = get_val_2(t->local, KW_limit, KW_axis); l && elements(l) >= 6)
    for (int k = 0; k < 3; k++) a[k] = std::clamp(a[k], getf(l, k), getf(l, 3 + k));
  const float n = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
  if (n > 0) for (int k = 0; k < 3; k++) a[k] /= n;
}

float angle_quat(float w) {
  float a = 2 * std::acos(std::clamp(w, -1.0f, 1.0f));
  if (a > PI_F) a -= 2 * PI_F;
  return a * DEGRES;
}

bool applique_ligne(Objet* o, Objet* t, const float* r, int d) {
  const int k1 = kind_1(t), k2 = kind_2(t);
  const float v = valeur_ligne(r, d);
  if (k2 && k1 == KW_dila && (k2 == KW_eye || k2 == KW_aim || k2 == KW_axis)) {
    ecrit_1(o, k2, r, std::min(d, 3));
    return false;
  }
  if (k2) {
    const int codes[2] = {k1, k2};
    ecrit_propriete(o, 2, codes, r, d);
    return false;
  }
  if (k1 == KW_dim && o->kind == KW_image) {
    dim_image(o, r, d);
    return false;
  }
  const float* B = get_matrix_vol(t);
  if (!B) return false;
  if (place_par_eye(o) && applique_lumiere_vue(o, t, r, d)) return false;
  switch (k1) {
    case KW_tran: case KW_dila: case KW_dilx: case KW_dily: case KW_dilz: case KW_hom: case KW_rota:
    case KW_rotx: case KW_roty: case KW_rotz: case KW_axis: case KW_quat:
      break;
    case KW_back: {
      float* b = Back();
      for (int k = 0; k < 3 && k < d; k++) b[k] = r[k], b[3 + k] = r[k] * 255.0f;
      return false;
    }
    case KW_transp: transparence(o, v); return false;
    case KW_validate: o->valid = v > 0.5f ? 1 : 0; return false;
    case KW_poi:
      if (o->kind == KW_vol) return false;  // a volume's vertices are not one point
      ecrit_1(o, k1, r, d);
      return false;
    default:
      // One value, pairs (i, a, b), or the whole row.
      if (d >= 3 && kind_une_valeur(k1)) ecrit_1(o, k1, &r[1], 1);
      else if (d >= 3 && (k1 == KW_dim || k1 == KW_radius)) ecrit_1(o, k1, &r[1], 2);
      else ecrit_1(o, k1, r, d);
      return false;
  }
  float* ob = get_matrix_vol(o);
  if (!ob) return false;
  switch (k1) {
    case KW_tran:
      for (int k = 0; k < 3; k++) ob[TR_DELTA + TR_TRAN + k] = B[TR_TRAN + k] + B[TR_DELTA + TR_TRAN + k];
      break;
    case KW_dila:
      for (int k = 0; k < 3 && k < d; k++) echelle(ob, k, B[TR_DILA + k] * r[k]);
      break;
    case KW_dilx: echelle(ob, 0, B[TR_DILA] * v); break;
    case KW_dily: echelle(ob, 1, B[TR_DILA + 1] * v); break;
    case KW_dilz: echelle(ob, 2, B[TR_DILA + 1] * v); break;  // from B's y, as it always was
    case KW_hom:
      for (int k = 0; k < 3; k++) echelle(ob, k, B[TR_DILA + k] * v);
      break;
    case KW_rota: ob[TR_DELTA + TR_ROTA] = B[TR_ROTA] + v; break;
    case KW_rotx: case KW_roty: case KW_rotz: {
      const int k = k1 - KW_rotx;
      ob[TR_DELTA + TR_ROTX + k] = B[TR_ROTX + k] + v;
      break;
    }
    case KW_axis: {
      float a[3];
      axe_limite(t, r, a);
      for (int k = 0; k < 3; k++) ob[TR_DELTA + TR_ROTA + 1 + k] = a[k] - ob[TR_ROTA + 1 + k];
      break;
    }
    case KW_quat:
      if (d < 4) return false;
      ob[TR_DELTA + TR_ROTA] = angle_quat(r[0]) - ob[TR_ROTA];
      for (int k = 0; k < 3; k++) ob[TR_DELTA + TR_ROTA + 1 + k] = r[1 + k] - ob[TR_ROTA + 1 + k];
      break;
    default: break;
  }
  return true;
}
