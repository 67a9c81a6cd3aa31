// Generated properties: where they are stored and which generator makes
// each path.
#include <algorithm>
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

struct Derive {
  std::vector<int> path;    // the words of a reading command
  std::vector<int> stored;  // the property that holds the answer
  bloc (*gen)(Objet*);
  bool toujours = false;  // made again at each reading: `matrix anc` may
                          // change without the vertices
};

bloc gen_voisins(Objet* o) { return gen_near_vertex(o, KW_vertex); }
bloc gen_distances(Objet* o) { return gen_near_vertex(o, KW_dist); }
bloc gen_cible(Objet* o) { return generer_cible(o, cible_vol(o)) < 0 ? nullptr : o->local; }

const Derive DERIVES[] = {
    {{KW_normal, KW_fac}, {KW_normal, KW_fac}, gen_normal_fac},
    {{KW_normal, KW_vertex}, {KW_normal, KW_vertex}, gen_normal_vertex},
    {{KW_coord, KW_vertex}, {KW_coord, KW_vertex}, gen_coord_vertex},
    {{KW_near, KW_vertex}, {KW_near, KW_vertex, KW_vertex}, gen_voisins},
    {{KW_near, KW_vertex, KW_vertex}, {KW_near, KW_vertex, KW_vertex}, gen_voisins},
    {{KW_near, KW_vertex, KW_dist}, {KW_near, KW_vertex, KW_dist}, gen_distances},
    {{KW_radius, KW_near, KW_vertex}, {KW_radius, KW_near, KW_vertex}, gen_radius_near},
    {{KW_poi, KW_anc}, {KW_poi, KW_anc}, gen_poi_anc, true},
    {{KW_poi, KW_generate}, {KW_poi, KW_generate}, gen_cible},
    {{KW_fac, KW_generate}, {KW_fac, KW_generate}, gen_cible},
};

const Derive* trouve(int n, const int* keys) {
  for (const Derive& d : DERIVES)
    if (static_cast<int>(d.path.size()) == n && std::equal(d.path.begin(), d.path.end(), keys)) return &d;
  return nullptr;
}

}  // namespace

bool est_derive(int n, const int* keys) { return trouve(n, keys) != nullptr; }

bloc derive_vol(Objet* o, int n, const int* keys, bool* connu) {
  const Derive* d = trouve(n, keys);
  if (connu) *connu = d != nullptr;
  if (!d) return nullptr;
  const int k = static_cast<int>(d->stored.size());
  if (bloc v = derive_valide(o, k, d->stored.data()); v && !d->toujours) return v;
  if (!d->gen(o)) {
    TRACE_FAIL("derive_vol()");
    return nullptr;
  }
  return derive_valide(o, k, d->stored.data());
}

const word* poi_requis(Objet* o, const char* name) {
  const word* poi = poi_vol(o);
  if (poi && poi[2] >= 1) return poi;
  err_vide(name, o);
  return nullptr;
}

bloc derive_valide(Objet* o, int n, const int* keys) {
  bloc p = o && o->local ? get_propr_k(o->local, n, keys, nullptr) : nullptr;
  return p && p[1] == 1 ? propr_val(p) : nullptr;
}

bloc stocke_derive(Objet* o, int n, const int* keys, const word* value) {
  if (!o->local && !local_ini(o)) return nullptr;
  int slot = 0;
  bloc old = get_propr_k(o->local, n, keys, &slot);
  const int size = 2 * n + 4 + value[0];
  bloc p = old && old[0] == size ? old : installe_propriete(o, old, slot, size);
  if (!p) {
    TRACE_FAIL("stocke_derive()");
    return nullptr;
  }
  p[0] = size;
  propr_key_k(p, n, keys);
  p[1] = 1;
  std::memcpy(propr_val(p), value, static_cast<size_t>(value[0]) * sizeof(word));
  return propr_val(p);
}

bloc stocke_floats(Objet* o, int n, const int* keys, const std::vector<float>& f, int dimp) {
  std::vector<word> v(4 + f.size());
  build_head(v.data(), static_cast<word>(v.size()), T_FLOAT, dimp > 0 ? static_cast<word>(f.size()) / dimp : 0, dimp);
  for (size_t i = 0; i < f.size(); i++) v[4 + i] = fw(f[i]);
  return stocke_derive(o, n, keys, v.data());
}
