// EXEC_TRAJ_LIGHT_VIEW: lights and views are placed by an `eye` and look
// at an `aim` (or along an `axis` when so directed), and have no deltas a
// trajectory could write. So the kinds act on what they use:
//   `tran`                     the eye is put at the row;
//   `rota`, `rotx`, `roty`,    the eye turns about the aim (an object
//   `rotz`, `quat`             directed by `axis`: the axis turns);
//   `axis`                     the direction of sight becomes the row: the
//                              eye stands on it at its distance from the aim
//                              (the axis itself for an object so directed);
//   `dila`, `dilx`, `dily`,    the eye's offset from the aim is scaled, per
//   `dilz`, `hom`              axis (from the origin when directed by `axis`).
// Turns and scales start at each image from the user's own eye (or axis),
// kept in `eye traj` (`axis traj`) with the value last written and the
// image: a value the user sets is taken as the new start, and several
// trajectories in one image compose in the order of the list.
#include <algorithm>
#include <cmath>

#include "animation/traj/apply.h"
#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/cmd_util.h"
#include "language/args.h"
#include "scene/volume.h"

namespace {

constexpr float RADIANS = 0.017453293f;

void lis3(Objet* o, int code, float v[3]) { floats_of(get_val_1(o->local, code), v, 3); }

bool ecrit3(Objet* o, int code, const float v[3]) {
  bloc b = set_val_1(o, code, 3);
  if (!b) return false;
  for (int k = 0; k < 3; k++) setf(b, k, v[k]);
  return true;
}

void unitaire(float u[3], const float dflt[3]) {
  const float n = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
  if (n > 0) for (int k = 0; k < 3; k++) u[k] /= n;
  else std::copy(dflt, dflt + 3, u);
}

// p turned by deg degrees about the unit axis u (Rodrigues).
void tourne(float p[3], const float u[3], float deg) {
  const float a = deg * RADIANS, c = std::cos(a), s = std::sin(a);
  const float d = u[0] * p[0] + u[1] * p[1] + u[2] * p[2];
  const float x[3] = {u[1] * p[2] - u[2] * p[1], u[2] * p[0] - u[0] * p[2], u[0] * p[1] - u[1] * p[0]};
  for (int k = 0; k < 3; k++) p[k] = p[k] * c + x[k] * s + u[k] * d * (1 - c);
}

enum Sorte { AUTRE, TOUR, ECHELLE, DIRECTION };

Sorte sorte(int k) {
  switch (k) {
    case KW_rota: case KW_rotx: case KW_roty: case KW_rotz: case KW_quat: return TOUR;
    case KW_dila: case KW_dilx: case KW_dily: case KW_dilz: case KW_hom: return ECHELLE;
    case KW_axis: return DIRECTION;
    default: return AUTRE;
  }
}

// The start of this trajectory's change: the user's value, or the value
// already changed in this image. `rec` holds start, last written, image.
bool depart(Objet* o, int code, const float cur[3], float src[3], bloc* rec) {
  const int codes[2] = {code, KW_traj};
  bloc r = get_val_2(o->local, code, KW_traj);
  if (!r || tag(r) != T_FLOAT || elements(r) < 7) {
    if (r) rem_propr_k(o, 2, codes);
    r = set_matrix_k(o, 2, codes, 7, 1);
    if (!r) return false;
    for (int k = 0; k < 3; k++) setf(r, k, cur[k]), setf(r, 3 + k, cur[k]);
    setf(r, 6, -1);
  }
  bool moved = false;
  for (int k = 0; k < 3; k++) moved = moved || getf(r, 3 + k) != cur[k];
  if (moved)
    for (int k = 0; k < 3; k++) setf(r, k, cur[k]);
  const bool composed = getf(r, 6) == static_cast<float>(traj_state().image);
  for (int k = 0; k < 3; k++) src[k] = composed ? cur[k] : getf(r, k);
  *rec = r;
  return true;
}

// The angle and axis of a turning kind; false when the row cannot give one.
bool tour(Objet* t, const float* B, const float* r, int d, float* deg, float u[3]) {
  static const float Z[3] = {0, 0, 1};
  const int k = kind_1(t);
  const float v = valeur_ligne(r, d);
  if (k == KW_quat) {
    if (d < 4) return false;
    *deg = angle_quat(r[0]);
    std::copy(r + 1, r + 4, u);
  } else if (k == KW_rota) {
    *deg = B[TR_ROTA] + v;
    for (int c = 0; c < 3; c++) u[c] = B[TR_ROTA + 1 + c] + B[TR_DELTA + TR_ROTA + 1 + c];
  } else {
    const int i = k - KW_rotx;
    *deg = B[TR_ROTX + i] + v;
    for (int c = 0; c < 3; c++) u[c] = c == i ? 1.0f : 0.0f;
  }
  unitaire(u, Z);
  return true;
}

void echelles(Objet* t, const float* B, const float* r, int d, float s[3]) {
  const int k = kind_1(t);
  const float v = valeur_ligne(r, d);
  for (int c = 0; c < 3; c++) s[c] = 1;
  switch (k) {
    case KW_dila: for (int c = 0; c < 3; c++) s[c] = B[TR_DILA + c] * (c < d ? r[c] : 1.0f); break;
    case KW_dilx: s[0] = B[TR_DILA] * v; break;
    case KW_dily: s[1] = B[TR_DILA + 1] * v; break;
    case KW_dilz: s[2] = B[TR_DILA + 1] * v; break;  // from B's y, as for the volumes
    default: for (int c = 0; c < 3; c++) s[c] = B[TR_DILA + c] * v; break;
  }
}

}  // namespace

bool applique_lumiere_vue(Objet* o, Objet* t, const float* r, int d) {
  const int k = kind_1(t);
  const Sorte so = sorte(k);
  if (k != KW_tran && so == AUTRE) return false;
  const float* B = get_matrix_vol(t);
  if (!B) return true;
  if (k == KW_tran) {
    const float eye[3] = {B[TR_TRAN] + B[TR_DELTA + TR_TRAN], B[TR_TRAN + 1] + B[TR_DELTA + TR_TRAN + 1],
                          B[TR_TRAN + 2] + B[TR_DELTA + TR_TRAN + 2]};
    ecrit3(o, KW_eye, eye);
    return true;
  }
  const bool par_axe = o->subkind == KW_axis;
  const int code = par_axe && so != ECHELLE ? KW_axis : KW_eye;
  float cur[3] = {0, 0, 0}, aim[3] = {0, 0, 0}, src[3], res[3];
  lis3(o, code, cur);
  if (!par_axe) lis3(o, KW_aim, aim);
  bloc rec = nullptr;
  if (!depart(o, code, cur, src, &rec)) return true;
  const float* centre = code == KW_axis || par_axe ? nullptr : aim;
  float p[3];
  for (int c = 0; c < 3; c++) p[c] = src[c] - (centre ? centre[c] : 0.0f);
  if (so == TOUR) {
    float deg = 0, u[3];
    if (!tour(t, B, r, d, &deg, u)) return true;
    tourne(p, u, deg);
  } else if (so == ECHELLE) {
    float s[3];
    echelles(t, B, r, d, s);
    for (int c = 0; c < 3; c++) p[c] *= s[c];
  } else {
    float n[3];
    axe_limite(t, r, n);
    const float l = code == KW_axis ? 1.0f : std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
    for (int c = 0; c < 3; c++) p[c] = code == KW_axis ? n[c] : -l * n[c];
  }
  for (int c = 0; c < 3; c++) res[c] = p[c] + (centre ? centre[c] : 0.0f);
  ecrit3(o, code, res);
  for (int c = 0; c < 3; c++) setf(rec, 3 + c, res[c]);
  setf(rec, 6, static_cast<float>(traj_state().image));
  return true;
}
