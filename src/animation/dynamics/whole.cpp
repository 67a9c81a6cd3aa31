// The motion of an object as a whole and its rotation about its axis.
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/motion.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/lookup.h"
#include "scene/volume.h"

namespace {

// Radians of a degree: the springs of rotation take their angle so.
constexpr float RADIANS = 0.017453f;
// The share of the acceleration each next follower receives.
constexpr float DECROISSANCE = 0.9f;

// Yes[acc]: the acceleration handed down the `follow` objects, the first
// at 1.0, each next at 0.9 times the one before; it adds to their speed.
void transmet_acceleration(const Pas& p) {
  const word* f = p.d[D_follow];
  float coe = 1.0f;
  for (int i = 0; f && i < elements(f); i++) {
    Objet* g = get_objet_id(chaine_classe(KW_vol), KW_vol, static_cast<int>(value_at(f, i, 0)));
    if (!g || g == p.o) continue;
    if (float* v = flottants(get_val_1(g->local, KW_speed), 3))
      for (int a = 0; a < 3; a++) v[a] += coe * p.acc[a];
    coe *= DECROISSANCE;
  }
}

}  // namespace

float borne_scalaire(float x, const word* limit) {
  const float L = value_at(limit, 0, -1);
  return L < 0 ? x : std::clamp(x, -L, L);
}

void borne_vecteur(float* v, int n, float L) {
  if (L < 0) return;
  float q = 0;
  for (int a = 0; a < n; a++) q += v[a] * v[a];
  const float l = std::sqrt(q);
  if (l > L) {
    // A zero bound stops the motion at once.
    const float k = l > 0 ? L / l : 0;
    for (int a = 0; a < n; a++) v[a] *= k;
  }
}

int mouvement_libre(Pas& p) {
  if (Yes(KW_field) > 0 && champs_objet(p.o, p.d[D_field], p.force, p.T + TR_TRAN, 0) < 0) return -1;
  if (const float k = value_at(p.d[D_inv_speed], 0, 0); k != 0)
    for (int a = 0; a < 3; a++) p.force[a] = k * p.speed[a];
  const word* add = p.d[D_force_add];
  float F[3];
  for (int a = 0; a < 3; a++) F[a] = p.force[a] + value_at(add, a, 0);
  const float c = p.force[3];
  // `limit force` puts the scaled `force` in place of F: `force add` is
  // dropped for that image.
  if (const float L = value_at(p.d[D_limit_force], 0, -1); L >= 0) {
    const float l = std::sqrt(p.force[0] * p.force[0] + p.force[1] * p.force[1] + p.force[2] * p.force[2]);
    if (l > L) {
      borne_vecteur(p.force, 3, L);
      std::copy(p.force, p.force + 3, F);
    }
  }
  for (int a = 0; a < 3; a++) {
    p.acc[a] = c * p.speed[a] + p.r * F[a];
    p.speed[a] += p.acc[a];
  }
  borne_vecteur(p.speed, 3, value_at(p.d[D_limit_speed], 0, -1));
  for (int a = 0; a < 3; a++) p.T[TR_TRAN + a] += p.speed[a];
  if (Yes(KW_acc) > 0) transmet_acceleration(p);
  return 0;
}

float ressort_rota(Pas& p, int* err) {
  const word* sr = p.d[D_spring_rota];
  if (!sr) return 0;
  const float angle = p.T[TR_ROTA];
  if (!p.d[D_rota_dup]) {
    float* dup = flottants(cree_prop(p.o, p.d, D_rota_dup, 1, 1), 1);
    if (!dup) {
      *err = -1;
      return 0;
    }
    dup[0] = angle;
  }
  const float repos = value_at(p.d[D_rota_dup], 0, angle);
  return value_at(sr, 1, 0) * p.speed_rota[0] + (repos - angle) * value_at(sr, 0, 0) * RADIANS;
}

void borne_rota(float& angle, const word* l) {
  // In radians, one value serving for both ends: -a..a.
  const float a1 = value_at(l, 0, 0) * DEGRES;
  const float a2 = elements(l) > 1 ? value_at(l, 1, 0) * DEGRES : a1;
  const float lo = elements(l) > 1 ? a1 : -std::fabs(a1), hi = elements(l) > 1 ? a2 : std::fabs(a1);
  angle = std::clamp(angle, std::min(lo, hi), std::max(lo, hi));
}

void bornes_angle(Pas& p) {
  float& angle = p.T[TR_ROTA];
  if (const word* l = p.d[D_limit_rota]) borne_rota(angle, l);
  // The bound of rota + rotz: the angle is set to the bound itself, not
  // to the bound less rotz, as scenes written for it expect.
  if (const word* l = p.d[D_limit_rota_rotz]) {
    const float a1 = value_at(l, 0, 0) * DEGRES;
    const float a2 = elements(l) > 1 ? value_at(l, 1, 0) * DEGRES : a1;
    const float lo = elements(l) > 1 ? std::min(a1, a2) : -std::fabs(a1);
    const float hi = elements(l) > 1 ? std::max(a1, a2) : std::fabs(a1);
    const float total = angle + p.T[TR_ROTX + 2];
    if (total < lo) angle = lo;
    else if (total > hi) angle = hi;
  }
}

// `limit axis rota` (x, y, z, k): the axis of rotation leans from its
// present direction toward the given one by the share k of the angle
// turned in the image (k 1 when not given), and the angular speed is
// scaled by the cosine of the lean so that the motion about the old axis
// is kept. `limit axis` alone gives the direction with k at 1.
void pas_axe(Pas& p) {
  const word* l = p.d[D_limit_axis_rota] ? p.d[D_limit_axis_rota] : p.d[D_limit_axis];
  if (!l || elements(l) < 3) return;
  float cible[3] = {value_at(l, 0, 0), value_at(l, 1, 0), value_at(l, 2, 0)};
  const float nc = std::sqrt(cible[0] * cible[0] + cible[1] * cible[1] + cible[2] * cible[2]);
  float* axe = p.T + TR_ROTA + 1;
  const float na = std::sqrt(axe[0] * axe[0] + axe[1] * axe[1] + axe[2] * axe[2]);
  if (nc < 0.0001f || na < 0.0001f) return;
  const float k = std::clamp(value_at(l, 3, 1.0f) * std::fabs(p.s * p.speed_rota[0]) * RADIANS, 0.0f, 1.0f);
  float neuf[3];
  for (int a = 0; a < 3; a++) neuf[a] = (1 - k) * axe[a] / na + k * cible[a] / nc;
  const float nn = std::sqrt(neuf[0] * neuf[0] + neuf[1] * neuf[1] + neuf[2] * neuf[2]);
  if (nn < 0.0001f) return;
  float cosinus = 0;
  for (int a = 0; a < 3; a++) {
    neuf[a] /= nn;
    cosinus += neuf[a] * axe[a] / na;
  }
  for (int a = 0; a < 3; a++) axe[a] = neuf[a] * na;
  p.speed_rota[0] *= cosinus;
}

int pas_rotation(Pas& p, float t, const word* borne_acc) {
  float M, c;
  moment(p, &M, &c);
  p.acc_rota[0] = c * p.speed_rota[0] + (M + t) * p.r;
  int err = 0;
  p.acc_rota[0] += ressort_rota(p, &err);
  if (err < 0) return -1;
  p.acc_rota[0] = borne_scalaire(p.acc_rota[0], borne_acc);
  p.speed_rota[0] += p.acc_rota[0];
  p.speed_rota[0] = borne_scalaire(p.speed_rota[0], p.d[D_limit_speed_rota]);
  p.T[TR_ROTA] += p.s * p.speed_rota[0];
  return 0;
}

int rotation_libre(Pas& p) {
  if (pas_rotation(p, 0, p.d[D_limit_acc_rota]) < 0) return -1;
  pas_axe(p);
  bornes_angle(p);
  return 0;
}
