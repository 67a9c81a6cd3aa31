// The walk of a dynamic object's properties.
#include "animation/dynamics/dyn_props.h"

#include <algorithm>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "scene/volume.h"

namespace {

// In the order of DynPath.
constexpr CheminProp PATHS[D_COUNT] = {
    {1, {KW_dynamic}},
    {1, {KW_mass}},
    {1, {KW_force}},
    {2, {KW_force, KW_add}},
    {1, {KW_speed}},
    {1, {KW_acc}},
    {2, {KW_limit, KW_force}},
    {2, {KW_limit, KW_speed}},
    {2, {KW_inv, KW_speed}},
    {2, {KW_force, KW_rota}},
    {3, {KW_force, KW_rota, KW_add}},
    {2, {KW_speed, KW_rota}},
    {2, {KW_acc, KW_rota}},
    {2, {KW_limit, KW_rota}},
    {3, {KW_limit, KW_rota, KW_rotz}},
    {3, {KW_limit, KW_speed, KW_rota}},
    {3, {KW_limit, KW_acc, KW_rota}},
    {3, {KW_limit, KW_force, KW_rota}},
    {2, {KW_spring, KW_rota}},
    {2, {KW_rota, KW_dup}},
    {2, {KW_spring, KW_ang}},
    {3, {KW_coe, KW_force, KW_rota}},
    {3, {KW_limit, KW_axis, KW_rota}},
    {2, {KW_limit, KW_axis}},
    {3, {KW_law, KW_speed, KW_rota}},
    {2, {KW_force, KW_vertex}},
    {2, {KW_mass, KW_vertex}},
    {2, {KW_speed, KW_vertex}},
    {2, {KW_acc, KW_vertex}},
    {3, {KW_add, KW_force, KW_vertex}},
    {2, {KW_col, KW_vertex}},
    {3, {KW_limit, KW_force, KW_vertex}},
    {3, {KW_limit, KW_speed, KW_vertex}},
    {4, {KW_limit, KW_dist, KW_vertex, KW_poi}},
    {3, {KW_limit, KW_dist, KW_force}},
    {2, {KW_limit, KW_dist}},
    {1, {KW_spring}},
    {2, {KW_spring, KW_vertex}},
    {3, {KW_near, KW_vertex, KW_vertex}},
    {3, {KW_near, KW_vertex, KW_dist}},
    {4, {KW_meta, KW_spring, KW_poi, KW_vertex}},
    {2, {KW_poi, KW_dup}},
    {2, {KW_poi, KW_anc}},
    {2, {KW_CG, KW_animate}},
    {2, {KW_radius, KW_tran}},
    {1, {KW_lead}},
    {1, {KW_follow}},
    {2, {KW_vertex, KW_follow}},
    {1, {KW_field}},
    {1, {KW_law}},
    {1, {KW_simple}},
    {1, {KW_envelope}},
    {1, {KW_poi}},
    {1, {KW_fac}},
    {1, {KW_time}},
    {2, {KW_time, KW_vertex}},
    {1, {KW_meta}},
};

bool meme_cles(const word* p, const CheminProp& c) {
  if (p[3] != c.n) return false;
  for (int k = 0; k < c.n; k++)
    if (p[5 + 2 * k] != c.codes[k]) return false;
  return true;
}

}  // namespace

int manque_propriete(const Objet* o, int num) {
  voir_objet(o);
  voir_message(1, num);
  return -1;
}

int cles_prop(DynPath p, const int** codes) {
  *codes = PATHS[p].codes;
  return PATHS[p].n;
}

void lire_chemins(const Objet* o, const CheminProp* chemins, int count, bloc* out) {
  std::fill(out, out + count, nullptr);
  const word* l = o->local;
  if (!l || l[1] != T_PROPRIETES) return;
  for (int i = 0; i < l[2]; i++) {
    bloc p = handle_bloc(l[4 + i]);
    if (!p || p[3] < 1 || p[3] > 4) continue;
    for (int k = 0; k < count; k++)
      if (!out[k] && meme_cles(p, chemins[k])) {
        out[k] = propr_val(p);
        break;
      }
  }
}

void lire_props(const Objet* o, DynProps& d) { lire_chemins(o, PATHS, D_COUNT, d.v); }

float* flottants(bloc v, int n) {
  if (!v || tag(v) != T_FLOAT || dimp(v) < 0 || size(v) - 4 < n) return nullptr;
  if (np(v) * std::max<int>(dimp(v), 1) < n) return nullptr;
  return reinterpret_cast<float*>(v + 4);
}

bloc cree_prop(Objet* o, DynProps& d, DynPath p, int n, int dp) {
  if (flottants(d.v[p], n * dp)) return d.v[p];
  bool valide = false;
  bloc v = cache_vol(o, PATHS[p].n, PATHS[p].codes, n, dp, &valide);
  if (!v) {
    TRACE_FAIL("DYNAMIC_2()");
    return nullptr;
  }
  // A plain property, not a cache: its validity word means nothing here.
  cache_valide(o, PATHS[p].n, PATHS[p].codes);
  return d.v[p] = v;
}

Rangees rangees(const word* v, int w) {
  Rangees r;
  if (!v) return r;
  r.w = w;
  if (tag(v) == T_FLOAT && dimp(v) > 0) {
    r.v = v;
    r.n = elements(v) / w;
    r.plain = reinterpret_cast<const float*>(v + 4);
  } else if ((tag(v) == T_FLOAT && dimp(v) < 0) || tag(v) == T_PROPRIETES) {
    r.v = v;
    r.n = np(v);
  }
  return r;
}

bool Rangees::has_table(int i) const {
  if (i < 0 || i >= n) return false;
  if (tag(v) == T_PROPRIETES) return handle_bloc(v[4 + i]) != nullptr;
  const int s = -dimp(v);
  return 4 + (i + 1) * s <= size(v) && v[4 + i * s] != 0;
}

float Rangees::at_table(int i, int a, float dflt) const {
  if (!has_table(i)) return dflt;
  if (tag(v) == T_PROPRIETES) return value_at(handle_bloc(v[4 + i]), a, dflt);
  const int s = -dimp(v);
  return a + 1 < s ? wf(v[4 + i * s + 1 + a]) : dflt;
}
