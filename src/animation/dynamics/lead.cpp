// Led objects (with `lead`): a hinge that turns and never translates,
// and the angular speed passed along the chain.
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/motion.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/lookup.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

// A chain that loops on itself would never end.
constexpr int PROFONDEUR = 64;

Objet* volume(float id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, static_cast<int>(id)); }

// `force rota add` of an object, made with one float when missing.
float* moment_ajoute(Objet* g) {
  if (float* f = flottants(get_val_3(g->local, KW_force, KW_rota, KW_add), 1)) return f;
  return flottants(set_val_3(g, KW_force, KW_rota, KW_add, 1), 1);
}

// The vertex `vertex follow` names: its value, or the first entry of the
// table the property command writes for `vertex follow vol(id)=n`.
int sommet_suivi(const word* v) {
  const Rangees r = rangees(v, 1);
  for (int i = 0; i < r.n; i++)
    if (r.has(i)) return entier(r.at(i, 0));
  return 0;
}

// The torque of the force at the vertex named by `vertex follow`.
int couple_sommet(Pas& p) {
  const int n = sommet_suivi(p.d[D_vertex_follow]);
  const word* A = get_poi_vol(p.o);
  if (!A || n < 1 || n > np(A)) return 0;
  const int d = stride(A);
  const float* a = reinterpret_cast<const float*>(A + 4);
  float G[3];
  mat::moyenne(a, np(A), d, G);
  const float* P = a + (n - 1) * d;
  const float u[3] = {P[0] - G[0], P[1] - G[1], P[2] - G[2]};
  if (Yes(KW_field) > 0 && champs_objet(p.o, p.d[D_field], p.force, P, 0) < 0) return -1;
  // The absolute vertices are made again for what follows.
  raz_generate(p.o, 0);
  float T[3];
  mat::vectoriel(u, p.force, T);
  float dd = mat::distance2(G, P);
  if (dd < 0.01f) dd = 1.0f;
  float t = std::sqrt(mat::scalaire(T, T));
  if (mat::scalaire(T, p.T + TR_ROTA + 1) < 0) {
    t = -t;
    dd = -dd;
  }
  // |T| signed as T and d together: the turn follows the side of the axis.
  const float m = p.m != 0 ? p.m : 1.0f;
  p.speed_rota[0] += std::fabs(t) * 0.01f / (dd * m);
  p.speed_rota[0] = borne_scalaire(p.speed_rota[0], p.d[D_limit_speed_rota]);
  p.T[TR_ROTA] += p.s * p.speed_rota[0];
  bornes_angle(p);
  return 0;
}

}  // namespace

void EXEC_LAW_SPEED_ROTA(Objet* o, float k, float q, float w) {
  // Along the links of `code`, the first object of each: k x w to its
  // moment, k multiplied by q at each link.
  auto chaine = [&](int code) {
    float kk = k;
    Objet* g = o;
    for (int i = 0; i < PROFONDEUR; i++) {
      Objet* h = volume(value_at(get_val_1(g->local, code), 0, 0));
      if (!h || h == o) break;
      if (float* m = moment_ajoute(h)) m[0] += kk * w;
      kk *= q;
      g = h;
    }
  };
  if (Yes(KW_lead) > 0) chaine(KW_lead);
  if (Yes(KW_follow) < 1) chaine(KW_follow);
}

int mouvement_mene(Pas& p) {
  if (p.d[D_vertex_follow] && couple_sommet(p) < 0) return -1;
  const word* ang = p.d[D_spring_ang];
  const float w = p.speed_rota[0];
  const float t = ang ? value_at(ang, 1, 0) * w - value_at(ang, 0, 0) * p.T[TR_ROTA] : 0;
  if (const word* law = p.d[D_law_speed_rota]; law && value_at(law, 0, 0) != 0)
    EXEC_LAW_SPEED_ROTA(p.o, value_at(law, 0, 0), value_at(law, 1, 1.0f), w);
  // The acceleration here is clamped by the bound of the speed.
  if (pas_rotation(p, t, p.d[D_limit_speed_rota]) < 0) return -1;
  bornes_angle(p);
  // And the angle gets w once more.
  p.T[TR_ROTA] += p.speed_rota[0];
  pas_axe(p);
  return 0;
}

int memoire_positions(Pas& p) {
  float* cg = flottants(cree_prop(p.o, p.d, D_CG_animate, 3, 3), 9);
  if (!cg) return -1;
  std::copy(cg + 3, cg + 9, cg);
  std::copy(p.T + TR_MATRIX + 12, p.T + TR_MATRIX + 15, cg + 6);
  if (value_at(p.d[D_law], 0, 0) > 0)
    for (int a = 0; a < 3; a++) p.speed[a] = cg[6 + a] - cg[3 + a];
  // `radius tran`: the last displacement and its length.
  if (Yes(KW_radius) > 0) {
    float* rt = flottants(cree_prop(p.o, p.d, D_radius_tran, 1, 4), 4);
    if (!rt) return -1;
    for (int a = 0; a < 3; a++) rt[a] = cg[6 + a] - cg[3 + a];
    rt[3] = std::sqrt(rt[0] * rt[0] + rt[1] * rt[1] + rt[2] * rt[2]);
  }
  return 0;
}
