// The simple form of the step: the same Euler step with no bounds, no
// springs and no chain, when `simple` (or Yes[simple]) is above 1.
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/motion.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/volume.h"

namespace {

constexpr float RADIANS = 0.017453f;
constexpr float SEUIL = 0.0001f;

}  // namespace

int forme_simple(Pas& p) {
  if (p.m == 0) return 0;
  const float r = 1 / p.m;
  if (Yes(KW_field) > 0 && champs_objet(p.o, p.d[D_field], p.force, p.T + TR_TRAN, 0) < 0) return -1;
  const float c = p.force[3];
  for (int a = 0; a < 3; a++) {
    p.acc[a] = c * p.speed[a] + r * (p.force[a] + value_at(p.d[D_force_add], a, 0));
    p.speed[a] += p.acc[a];
    p.T[TR_TRAN + a] += p.speed[a];
  }
  float M, c2;
  moment(p, &M, &c2);
  float& w = p.speed_rota[0];
  float& angle = p.T[TR_ROTA];
  p.acc_rota[0] = c2 * w + r * M;
  if (const word* sr = p.d[D_spring_rota])
    p.acc_rota[0] += value_at(sr, 1, 0) * w - value_at(sr, 0, 0) * RADIANS * angle;
  w += p.acc_rota[0];
  angle += p.s * w;
  // The vertices move under their own force and the fields, when that
  // force has a component above 0.0001 in size.
  bloc poi = p.d[D_poi];
  const int stored = np(poi), d = stride(poi);
  const Rangees FV = rangees(p.d[D_force_vertex], 4);
  float* V = flottants(p.d[D_speed_vertex], stored * 3);
  if (!FV || !V || p.m < SEUIL || d < 3) return 0;
  float* P = sommets(poi);
  const bool champs = Yes(KW_field) > 0;
  const Rangees CV = rangees(p.d[D_col_vertex], 3);
  float couleur[3];
  for (int i = 0; i < stored; i++) {
    float F[4] = {FV.at(i, 0), FV.at(i, 1), FV.at(i, 2), 0};
    if (champs && champs_objet(p.o, p.d[D_field], F, P + i * d, i + 1, CV.row(i, couleur)) < 0) return -1;
    if (std::fabs(F[0]) <= SEUIL && std::fabs(F[1]) <= SEUIL && std::fabs(F[2]) <= SEUIL) continue;
    for (int a = 0; a < 3; a++) {
      V[i * 3 + a] += FV.at(i, 3) * V[i * 3 + a] + r * F[a];
      P[i * d + a] += V[i * 3 + a];
    }
  }
  invalide_caches(p.o);
  return 0;
}
