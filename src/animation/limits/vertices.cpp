// EXEC_LIMIT on vertices: boxes, balls and distances between neighbours,
// held by moving the vertices (in the volume's own coordinates).
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dyn_props.h"
#include "animation/limits/limits.h"
#include "animation/limits/vertex_limits.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/volume.h"

namespace {

const int TRAN_POI[] = {KW_limit, KW_tran, KW_poi};
const int TRAN_VERTEX[] = {KW_limit, KW_tran, KW_vertex};
const int TRAN_POI_FORCE[] = {KW_limit, KW_tran, KW_poi, KW_force};
const int BALL[] = {KW_limit, KW_ball};
const int NEAR_VV[] = {KW_limit, KW_near, KW_vertex, KW_vertex};
const int DIST_VV[] = {KW_limit, KW_dist, KW_vertex, KW_vertex};
const int DIST_SECX[] = {KW_limit, KW_dist, KW_secx};
const int DIST_SECY[] = {KW_limit, KW_dist, KW_secy};
const int FORCE_VERTEX[] = {KW_force, KW_vertex};

// What the bounds of one volume read.
struct Sommets {
  Objet* o;
  float* P;
  int d, n, stored;
  float* V;  // `speed vertex`, or null
};

// Vertex i within the box b (x1,y1,z1,x2,y2,z2); the speed across a wall
// is reversed. True when it was moved.
bool dans_boite(Sommets& s, int i, const float* b) {
  bool bouge = false;
  for (int c = 0; c < 3; c++) {
    float& x = s.P[i * s.d + c];
    const float lo = std::min(b[c], b[3 + c]), hi = std::max(b[c], b[3 + c]);
    if (x >= lo && x <= hi) continue;
    x = x < lo ? lo : hi;
    if (s.V) s.V[i * 3 + c] = -s.V[i * 3 + c];
    bouge = true;
  }
  return bouge;
}

void tran_poi(Sommets& s, const word* l) {
  float b[6];
  floats_of(l, b, 6);
  for (int i = 0; i < s.n; i++) dans_boite(s, i, b);
}

// A box a vertex, rows of 6.
void tran_vertex(Sommets& s, const word* l) {
  for (int i = 0; i < s.n && (i + 1) * 6 <= elements(l); i++) {
    float b[6];
    for (int c = 0; c < 6; c++) b[c] = value_at(l, i * 6 + c, 0);
    dans_boite(s, i, b);
  }
}

// k times the way back into the box, added to `force vertex`.
int tran_poi_force(Sommets& s, const word* l) {
  float b[7] = {0, 0, 0, 0, 0, 0, 1};
  floats_of(l, b, 7);
  float* F = rangees_cree(s.o, 2, FORCE_VERTEX, s.stored, 4);
  if (!F) return -1;
  for (int i = 0; i < s.n; i++)
    for (int c = 0; c < 3; c++) {
      const float x = s.P[i * s.d + c];
      const float lo = std::min(b[c], b[3 + c]), hi = std::max(b[c], b[3 + c]);
      F[i * 4 + c] += b[6] * (std::clamp(x, lo, hi) - x);
    }
  return 0;
}

// Each vertex within r of the point, or outside -r; a vertex at the point
// itself has no direction and stays.
void ball(Sommets& s, const word* l) {
  const float C[3] = {value_at(l, 0, 0), value_at(l, 1, 0), value_at(l, 2, 0)};
  const float r = value_at(l, 3, 0), R = std::fabs(r);
  for (int i = 0; i < s.n; i++) {
    float* p = s.P + i * s.d;
    float u[3] = {p[0] - C[0], p[1] - C[1], p[2] - C[2]};
    const float D = std::sqrt(mat::scalaire(u, u));
    if (D <= 0 || (r >= 0 ? D <= R : D >= R)) continue;
    for (int c = 0; c < 3; c++) p[c] = C[c] + R * u[c] / D;
    if (s.V) std::fill(s.V + i * 3, s.V + i * 3 + 3, 0.0f);
  }
}

// The neighbour j put back within d1..d2 of vertex i, along their line.
void voisin_dans(Sommets& s, int i, int j, float d1, float d2) {
  const float* a = s.P + i * s.d;
  float* b = s.P + j * s.d;
  float u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const float D = std::sqrt(mat::scalaire(u, u));
  if (D <= 0 || (D >= d1 && D <= d2)) return;
  const float L = D < d1 ? d1 : d2;
  for (int c = 0; c < 3; c++) b[c] = a[c] + L * u[c] / D;
}

int near_vertex_vertex(Sommets& s, const word* l) {
  Voisins nv;
  if (!voisins(s.o, nv)) return -1;
  nv.pour_chaque(s.n, [&](int i, int j) {
    if (j >= 0 && j < s.n) voisin_dans(s, i, j, value_at(l, 0, 0), value_at(l, 1, 0));
  });
  return 0;
}

// The table of pairs, with more than 6 values: both ends moved by half
// the excess, and the force of the dynamic form added to `force vertex`.
int dist_vertex_vertex(Sommets& s, const word* l) {
  Voisins nv;
  if (!voisins(s.o, nv)) return -1;
  float* F = rangees_cree(s.o, 2, FORCE_VERTEX, s.stored, 4);
  if (!F) return -1;
  nv.pour_chaque(s.n, [&](int i, int j) {
    const long k = static_cast<long>(s.n - 1) * i + j;
    if (j < 0 || j >= s.n || 2 * k + 1 >= elements(l)) return;
    const float d1 = value_at(l, 2 * k, 0), d2 = value_at(l, 2 * k + 1, 0);
    if (d1 < 0) return;
    float* a = s.P + i * s.d;
    float* b = s.P + j * s.d;
    float u[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
    const float D = std::sqrt(mat::scalaire(u, u));
    if (D <= 0 || (D >= d1 && D <= d2)) return;
    const float g = (D < d1 ? d1 : d2) - D;
    for (int c = 0; c < 3; c++) {
      const float off = 0.5f * g * u[c] / D;
      a[c] += off;
      b[c] -= off;
      F[i * 4 + c] += g * u[c] / D;
    }
  });
  return 0;
}

// limit_column along each row (secx) or each column (secy) of the lattice.
void colonnes(Sommets& s, const word* sx, const word* sy) {
  const int len = std::max(vol_secx(s.o) + (vol_close(s.o) ? 0 : 1), 1);
  const int rows = s.n / len;
  for (int r = 0; sx && r < rows; r++) limit_column(s.P, s.d, r * len, len, 1, value_at(sx, 0, 0), value_at(sx, 1, 0));
  for (int c = 0; sy && c < len; c++) limit_column(s.P, s.d, c, rows, len, value_at(sy, 0, 0), value_at(sy, 1, 0));
}

}  // namespace

int limites_sommets(Objet* o) {
  const word* tp = get_val_k(o->local, 3, TRAN_POI);
  const word* tv = get_val_k(o->local, 3, TRAN_VERTEX);
  const word* tf = get_val_k(o->local, 4, TRAN_POI_FORCE);
  const word* bl = get_val_k(o->local, 2, BALL);
  const word* nvv = get_val_k(o->local, 4, NEAR_VV);
  const word* dvv = get_val_k(o->local, 4, DIST_VV);
  const word* sx = get_val_k(o->local, 3, DIST_SECX);
  const word* sy = get_val_k(o->local, 3, DIST_SECY);
  if (dvv && elements(dvv) <= 6) dvv = nullptr;
  if (!tp && !tv && !tf && !bl && !nvv && !dvv && !sx && !sy) return 0;
  bloc poi = poi_vol(o);
  if (!poi || stride(poi) < 3) return 0;
  Sommets s{o, sommets(poi), stride(poi), std::min(det_np(o), static_cast<int>(np(poi))), np(poi), nullptr};
  s.V = flottants(get_val_2(o->local, KW_speed, KW_vertex), s.stored * 3);
  if (tp) tran_poi(s, tp);
  if (tv) tran_vertex(s, tv);
  if (tf && tran_poi_force(s, tf) < 0) return -1;
  if (bl) ball(s, bl);
  if (nvv && near_vertex_vertex(s, nvv) < 0) return -1;
  if (dvv && dist_vertex_vertex(s, dvv) < 0) return -1;
  if (sx || sy) colonnes(s, sx, sy);
  invalide_caches(o);
  const int near_vv[] = {KW_near, KW_vertex, KW_vertex}, near_vd[] = {KW_near, KW_vertex, KW_dist};
  cache_valide(o, 3, near_vv);
  cache_valide(o, 3, near_vd);
  return 0;
}
