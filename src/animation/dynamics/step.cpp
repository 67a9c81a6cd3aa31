// DYNAMIC_2: one step of one object, in the order the parts act: the
// bare rotation, the motion as a whole, the rotation, the memory of the
// positions and the vertices.
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/motion.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "render/cmd_args.h"
#include "scene/volume.h"

namespace {

// Step 4: what every dynamic object has, made at 0 when missing.
bool etat_de_base(Pas& p) {
  const struct {
    DynPath path;
    int n;
    float** out;
  } rows[] = {{D_force, 4, &p.force},           {D_speed, 3, &p.speed},
              {D_acc, 3, &p.acc},               {D_force_rota, 4, &p.force_rota},
              {D_speed_rota, 2, &p.speed_rota}, {D_acc_rota, 2, &p.acc_rota}};
  for (const auto& row : rows)
    if (!cree_prop(p.o, p.d, row.path, 1, row.n)) return false;
  // The pointers are taken after all were made.
  for (const auto& row : rows) *row.out = flottants(p.d[row.path], 1);
  return true;
}

// Step 6: `poi dup`, `speed vertex` and `acc vertex`, a row a vertex.
bool etat_des_sommets(Pas& p) {
  bloc poi = p.d[D_poi];
  const int n = np(poi), d = stride(poi);
  bloc dup = p.d[D_poi_dup];
  if (!flottants(dup, n * d)) {
    if (!(dup = cree_prop(p.o, p.d, D_poi_dup, n, d))) return false;
    std::copy(poi + 4, poi + 4 + n * d, dup + 4);
  }
  return cree_prop(p.o, p.d, D_speed_vertex, n, 3) && cree_prop(p.o, p.d, D_acc_vertex, n, 3);
}

}  // namespace

void moment(const Pas& p, float* M, float* c) {
  const word* add = p.d[D_force_rota_add];
  *M = p.force_rota[0] + value_at(add, 0, 0);
  *c = p.force_rota[1] + value_at(add, 1, 0);
}

int DYNAMIC_2(Objet* o) {
  // Step 1.
  if (!o->local || o->subkind == KW_envelope || o->kind == KW_envelope) return 0;
  // Step 2.
  Pas p{};
  p.o = o;
  lire_props(o, p.d);
  if (value_at(p.d[D_dynamic], 0, 2.0f) <= 0) return 0;
  if (!p.d[D_poi] || tag(p.d[D_poi]) != T_FLOAT) return 0;
  // Step 3.
  if (!(p.T = get_matrix_vol(o))) {
    TRACE_FAIL("DYNAMIC_2()");
    return -1;
  }
  p.m = value_at(p.d[D_mass], 0, 0);
  p.r = p.m <= 0.0000001f ? 1000000.0f : 1 / p.m;
  p.s = value_at(p.d[D_coe_force_rota], 0, 0.5f);
  // Step 4.
  if (!etat_de_base(p)) return -1;
  // Step 5: the bare rotation, always done; so in the normal path the
  // rotation advances twice in an image.
  float M, c;
  moment(p, &M, &c);
  p.acc_rota[0] = c * p.speed_rota[0] + p.r * M;
  p.speed_rota[0] += p.acc_rota[0];
  p.T[TR_ROTA] += p.s * p.speed_rota[0];
  // Step 6.
  if (!etat_des_sommets(p)) return -1;
  if (Yes(KW_simple) > 1 || value_at(p.d[D_simple], 0, 0) > 1) return forme_simple(p);
  if (p.d[D_lead]) {
    if (mouvement_mene(p) < 0) return -1;
  } else if (p.m != 0) {
    if (mouvement_libre(p) < 0 || rotation_libre(p) < 0) return -1;
  }
  // With m at 0 only the bare update above ran, with r at 1000000.
  if (memoire_positions(p) < 0) return -1;
  return mouvement_sommets(p);
}
