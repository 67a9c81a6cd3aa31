// The clock and the birth of particles.
#include "animation/dynamics/particles.h"

#include <algorithm>

#include "animation/dynamics/dyn_props.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "render/cmd_args.h"
#include "kernel/chains.h"
#include "scene/volume.h"

namespace {

int& prochain(Objet* o) { return o->work[6]; }

// One clock (t1, t2, t3): true when it passed t2 and went back to 0.
bool tic(float* t) {
  t[2] += 1;
  if (t[2] <= t[1]) return false;
  t[2] = 0;
  return true;
}

}  // namespace

int SET_PARTICLE_1(Objet* o, int vertex) {
  bloc poi = poi_vol(o);
  if (!poi || stride(poi) < 3 || np(poi) < 1) return 0;
  const int n = np(poi), d = stride(poi);
  int i = vertex - 1;
  if (vertex <= 0) {
    i = prochain(o) % n;
    prochain(o) = (i + 1) % n;
  }
  if (i < 0 || i >= n) return 0;
  const word* e = get_val_1(o->local, KW_particle);
  float* p = sommets(poi) + i * d;
  for (int a = 0; a < 3; a++) p[a] = value_at(e, a, 0);
  if (float* v = flottants(get_val_2(o->local, KW_speed, KW_vertex), n * 3))
    for (int a = 0; a < 3; a++) v[i * 3 + a] = value_at(e, 3 + a, 0);
  if (float* f = flottants(get_val_2(o->local, KW_force, KW_vertex), n * 4))
    std::fill(f + i * 4, f + i * 4 + 4, 0.0f);
  if (float* dup = flottants(get_val_2(o->local, KW_poi, KW_dup), n * d)) std::copy(p, p + d, dup + i * d);
  return 0;
}

int inc_particule() {
  for (Objet* o = chaine_classe(KW_vol)->next; o; o = o->next) {
    if (o->kind != KW_vol || o->subkind != KW_particle || !o->local) continue;
    if (float* t = flottants(get_val_1(o->local, KW_time), 3); t && tic(t)) SET_PARTICLE_1(o, 0);
    bloc tv = get_val_2(o->local, KW_time, KW_vertex);
    const int n = tv ? value_elements(tv) / 3 : 0;
    float* t = flottants(tv, n * 3);
    for (int i = 0; t && i < n; i++)
      if (t[i * 3 + 1] > 0 && tic(t + i * 3)) SET_PARTICLE_1(o, i + 1);
  }
  return 0;
}
