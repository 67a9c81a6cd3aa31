// The absolute vertices of a volume and the plane test.
#include <algorithm>
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "kernel/property.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/lookup.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

CollisionState& collision_state() {
  static CollisionState s;
  return s;
}

namespace {

// In the order of CollPath.
constexpr CheminProp CHEMINS[C_COUNT] = {
    {1, {KW_collision}},           {2, {KW_collision, KW_poi}},    {2, {KW_collision, KW_center}},
    {2, {KW_collision, KW_normal}}, {2, {KW_collision, KW_coe}},   {2, {KW_collision, KW_vertex}},
    {2, {KW_collision, KW_follow}}, {2, {KW_collision, KW_debug}}, {2, {KW_collision, KW_force}},
    {2, {KW_collision, KW_func}},   {2, {KW_collision, KW_vol}},   {2, {KW_collision, -KW_poi}},
    {1, {KW_speed}},                {1, {KW_force}},               {2, {KW_force, KW_rota}},
    {1, {KW_lead}},                 {1, {KW_poi}},                 {1, {KW_fac}},
};

}  // namespace

void lire_collision(const Objet* o, CollProps& c) { lire_chemins(o, CHEMINS, C_COUNT, c.v); }

void Absolus::at(int i, float r[3]) const {
  if (q) std::copy(q + i * 3, q + i * 3 + 3, r);
  else mat::point(m, p + i * d, r);
}

void Absolus::place(std::vector<float>& buffer) {
  if (buffer.size() < static_cast<size_t>(n) * 3) buffer.resize(static_cast<size_t>(n) * 3);
  for (int i = 0; i < n; i++) mat::point(m, p + i * d, buffer.data() + i * 3);
  q = buffer.data();
}

void Absolus::centre(float g[3]) const {
  float l[3];
  mat::moyenne(p, n, d, l);
  mat::point(m, l, g);
}

namespace {

// `poi` is the volume's own vertex array (placed by its matrix) or `poi
// anc` (already placed).
bool absolus_de(Objet* o, Absolus& a, bloc poi, bool propre, const word* fac) {
  if (!poi || np(poi) < 1 || stride(poi) < 3) return false;
  a.p = sommets(poi);
  a.d = stride(poi);
  a.n = std::min(det_np(o, propre ? poi : poi_vol(o), fac), static_cast<int>(np(poi)));
  if (propre) matrice_du_bloc(o, a.m);
  else mat::identite(a.m);
  return a.n > 0;
}

}  // namespace

bool absolus(Objet* o, Absolus& a) {
  bloc poi = get_poi_vol(o);
  return absolus_de(o, a, poi, poi && poi == poi_vol(o), fac_vol(o));
}

bool absolus(Objet* o, Absolus& a, const CollProps& c) {
  if (c[C_lead] && Yes(KW_anc) > 0) return absolus(o, a);
  bloc poi = c[C_vpoi] && tag(c[C_vpoi]) == T_FLOAT ? c[C_vpoi] : nullptr;
  return absolus_de(o, a, poi, true, c[C_fac] && tag(c[C_fac]) == T_HYBRIDE ? c[C_fac] : nullptr);
}

int MAX_POI_ANC(const Absolus& a, const word* liste, const float N[3], float P[3]) {
  int best = 0;
  float bas = 0;
  const int n = liste ? elements(liste) : a.n;
  for (int k = 0; k < n; k++) {
    const int i = liste ? entier(value_at(liste, k, 0)) - 1 : k;
    if (i < 0 || i >= a.n) continue;
    float q[3];
    a.at(i, q);
    const float h = mat::scalaire(q, N);
    if (!best || h < bas || (h == bas && i + 1 < best)) {
      best = i + 1, bas = h;
      std::copy(q, q + 3, P);
    }
  }
  return best;
}

bool coupe_plan(const float P[3], const float v[3], const float Q[3], const float N[3], float C[3]) {
  const float vn = mat::scalaire(v, N);
  if (std::fabs(vn) < 1e-12f) return false;
  const float w[3] = {Q[0] - P[0], Q[1] - P[1], Q[2] - P[2]};
  const float t = mat::scalaire(w, N) / vn;
  for (int k = 0; k < 3; k++) C[k] = P[k] + t * v[k];
  return true;
}

float angle_vecteurs(const float a[3], const float b[3]) {
  const float la = std::sqrt(mat::scalaire(a, a)), lb = std::sqrt(mat::scalaire(b, b));
  if (la <= 0 || lb <= 0) return 0;
  return std::acos(std::clamp(mat::scalaire(a, b) / (la * lb), -1.0f, 1.0f));
}

Objet* volume_numero(float id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, entier(id)); }

float* cree_floats(Objet* o, int c1, int c2, int n) {
  if (float* f = flottants(c2 ? get_val_2(o->local, c1, c2) : get_val_1(o->local, c1), n)) return f;
  return flottants(c2 ? set_val_2(o, c1, c2, n) : set_val_1(o, c1, n), n);
}
