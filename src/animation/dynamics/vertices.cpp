// The motion of each vertex: springs along the facet edges, pair forces,
// fields, a spring to a point, the vertex's own force and bounds.
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/motion.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/near_lists.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

// A vertex lighter than this doesn't move: how a point of a mesh is pinned.
constexpr float MASSE_MIN = 0.0001f;

const int NEAR_VV[] = {KW_near, KW_vertex, KW_vertex};
const int NEAR_VD[] = {KW_near, KW_vertex, KW_dist};

// Rows of a per-vertex value: its floats when it holds n rows of w.
float* rangees(bloc v, int n, int w) { return flottants(v, n * w); }

// Step 2: `limit dist force` (d1, d2, k): the pair forces, written to
// `add force vertex` and not added, a later pair overwriting an earlier.
bool forces_de_paires(Pas& p, const float* P, int d, int n) {
  const word* l = p.d[D_limit_dist_force];
  const float d1 = value_at(l, 0, 0), d2 = value_at(l, 1, 0), k = value_at(l, 2, 0);
  if (!l || d1 <= 0) return true;
  float* add = rangees(cree_prop(p.o, p.d, D_add_force_vertex, np(p.d[D_poi]), 3), n, 3);
  if (!add) return false;
  for (int i = 0; i < n; i++)
    for (int j = i + 1; j < n; j++) {
      float u[3] = {P[j * d] - P[i * d], P[j * d + 1] - P[i * d + 1], P[j * d + 2] - P[i * d + 2]};
      const float D2 = u[0] * u[0] + u[1] * u[1] + u[2] * u[2];
      const float D = std::sqrt(D2);
      float g;
      if (D2 < d1 * d1) {
        const float Dm = std::max(D, 1.0f);
        g = k * (Dm - d1) / Dm;
      } else if (D2 > d2 * d2 && D > 0) {
        g = k * (D - d2) / D;
      } else {
        continue;
      }
      const float inv = D > 0 ? 1 / D : 0;
      for (int a = 0; a < 3; a++) {
        add[j * 3 + a] = g * u[a] * inv;
        add[i * 3 + a] = -g * u[a] * inv;
      }
    }
  return true;
}

// The shell of `limit dist vertex poi` (r1, r2, x, y, z) of vertex i: one
// for all, or one a vertex as the property command writes it.
void coquille(const Rangees& l, int i, const float* P, float F[3]) {
  const int k = l.n == 1 ? 0 : i;
  if (!l.has(k)) return;
  const float r1 = l.at(k, 0), r2 = l.at(k, 1);
  const float c[3] = {l.at(k, 2), l.at(k, 3), l.at(k, 4)};
  float u[3] = {P[0] - c[0], P[1] - c[1], P[2] - c[2]};
  const float D = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
  if (D <= 0) return;
  for (float& x : u) x /= D;
  const float g = D < r1 ? r1 - D : D > r2 ? r2 - D : 0;
  for (int a = 0; a < 3; a++) F[a] += g * u[a];
}

}  // namespace

int mouvement_sommets(Pas& p) {
  const bool ressorts = p.d[D_spring] || p.d[D_spring_vertex];
  bloc poi = p.d[D_poi];
  const int stored = np(poi), d = stride(poi);
  // A particle volume moves its vertices under the fields even with no
  // force of their own.
  if (!p.d[D_force_vertex] && p.o->subkind == KW_particle && !cree_prop(p.o, p.d, D_force_vertex, stored, 4))
    return -1;
  if (!p.d[D_force_vertex] && !ressorts) return 0;
  if (d < 3) return 0;
  const int n = std::min(det_np(p.o), stored);
  // Step 1: the neighbours and their rest lengths, made from the facets
  // and the distances of this first step, so a shape is at rest as first
  // seen; and `force vertex`.
  if (ressorts) {
    if (!p.d[D_near_vertex_vertex]) {
      if (!gen_near_vertex(p.o, KW_vertex)) {
        TRACE_FAIL("DYNAMIC_2()");
        return -1;
      }
      p.d[D_near_vertex_vertex] = get_val_3(p.o->local, KW_near, KW_vertex, KW_vertex);
      p.d[D_near_vertex_dist] = get_val_3(p.o->local, KW_near, KW_vertex, KW_dist);
    } else if (elements(p.d[D_near_vertex_dist]) != elements(p.d[D_near_vertex_vertex])) {
      // The user's lists, their rest lengths taken now.
      if (!(p.d[D_near_vertex_dist] = gen_near_dist(p.o, p.d[D_near_vertex_vertex]))) {
        TRACE_FAIL("DYNAMIC_2()");
        return -1;
      }
    }
    if (!cree_prop(p.o, p.d, D_force_vertex, stored, 4)) return -1;
  }
  float* P = sommets(poi);
  if (!forces_de_paires(p, P, d, n)) return -1;
  float* V = rangees(p.d[D_speed_vertex], stored, 3);
  float* A = rangees(p.d[D_acc_vertex], stored, 3);
  if (!V || !A) return 0;
  const Rangees FV = rangees(p.d[D_force_vertex], 4);
  const Rangees MV = rangees(p.d[D_mass_vertex], 1);
  const Rangees AF = rangees(p.d[D_add_force_vertex], 3);
  const Rangees SV = rangees(p.d[D_spring_vertex], 2);
  const Rangees MS = rangees(p.d[D_meta_spring_poi_vertex], 5);
  const Rangees LF = rangees(p.d[D_limit_force_vertex], 1);
  const Rangees LS = rangees(p.d[D_limit_speed_vertex], 1);
  const Rangees coq = rangees(p.d[D_limit_dist_vertex_poi], 5);
  const Rangees CV = rangees(p.d[D_col_vertex], 3);
  float couleur[3];
  // The lists of neighbours, one a vertex, each led by its own size, and
  // the rest lengths in the same layout.
  const int total = ressorts ? elements(p.d[D_near_vertex_vertex]) : 0;
  const float* NV = total > 0 ? flottants(p.d[D_near_vertex_vertex], total) : nullptr;
  const float* ND = NV && elements(p.d[D_near_vertex_dist]) == total ? flottants(p.d[D_near_vertex_dist], total) : nullptr;
  CurseurVoisins listes(ND ? NV : nullptr, total);
  // With one facet or none, the last vertex follows no spring list.
  const word* fac = p.d[D_fac];
  const bool peu_de_facettes = !fac || np(fac) <= 1;
  float limite[2] = {value_at(p.d[D_limit_dist], 0, 0), value_at(p.d[D_limit_dist], 1, 0)};
  const float* lim_dist = p.d[D_limit_dist] ? limite : nullptr;
  const float k0 = value_at(p.d[D_spring], 0, 0), c0 = value_at(p.d[D_spring], 1, 0);
  const bool champs = Yes(KW_field) > 0;
  for (int i = 0; i < n; i++) {
    // The list of vertex i, read even when the vertex has no mass.
    const CurseurVoisins::Liste l = listes.suivante();
    const float mi = MV.at(i, 0, p.m);
    if (mi < MASSE_MIN) continue;
    const float r = 1 / mi;
    float* Pi = P + i * d;
    float* vi = V + i * 3;
    float F[4] = {AF.at(i, 0), AF.at(i, 1), AF.at(i, 2), 0};
    if (!l.vide() && !(peu_de_facettes && i == n - 1)) {
      const float ks = SV.at(i, 0, k0), cs = SV.at(i, 1, c0);
      for (int j = l.debut; j < l.fin; j++) {
        const int v = listes.voisin(j);
        if (v >= 1 && v <= stored) spring_force(Pi, P + (v - 1) * d, ND[j], F, ks, cs, vi, lim_dist);
      }
    }
    if (champs && champs_objet(p.o, p.d[D_field], F, Pi, i + 1, CV.row(i, couleur)) < 0) return -1;
    if (MS.has(i))
      for (int a = 0; a < 3; a++) F[a] += MS.at(i, 1) * vi[a] + MS.at(i, 0) * (MS.at(i, 2 + a) - Pi[a]);
    for (int a = 0; a < 3; a++) F[a] += FV.at(i, a);
    const float c = FV.at(i, 3);
    borne_vecteur(F, 3, LF.at(i, 0, -1));
    if (coq) coquille(coq, i, Pi, F);
    for (int a = 0; a < 3; a++) {
      A[i * 3 + a] = c * vi[a] + r * F[a];
      vi[a] += A[i * 3 + a];
      Pi[a] += vi[a];
    }
  }
  // The bounds of the speed act after the move: they limit the next step.
  const float L = value_at(p.d[D_limit_speed], 0, -1);
  for (int i = 0; i < n; i++) borne_vecteur(V + i * 3, 3, LS.at(i, 0, -1) >= 0 ? LS.at(i, 0) : L);
  // `poi dup` takes the vertices.
  if (float* dup = rangees(p.d[D_poi_dup], stored, d)) std::copy(P, P + stored * d, dup);
  // The measures of the volume are stale; the rest lengths stay.
  invalide_caches(p.o);
  cache_valide(p.o, 3, NEAR_VV);
  cache_valide(p.o, 3, NEAR_VD);
  return 0;
}
