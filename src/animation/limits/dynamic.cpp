// EXEC_LIMIT_DYNAMIC: bounds on distances turned into forces, before the
// dynamics of the image.
#include <algorithm>
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/motion.h"
#include "animation/limits/limits.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/volume.h"

namespace {

const int ADD_FORCE_VERTEX[] = {KW_add, KW_force, KW_vertex};

// The force on vertex i from its neighbour j when their distance is out
// of d1..d2: (d1-D) or (d2-D) along the unit vector from j to i.
void borne_paire(const float* P, int d, int i, int j, float d1, float d2, float* F) {
  const float* a = P + i * d;
  const float* b = P + j * d;
  float u[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
  const float D = std::sqrt(mat::scalaire(u, u));
  if (D <= 0 || (D >= d1 && D <= d2)) return;
  const float g = (D < d1 ? d1 : d2) - D;
  for (int c = 0; c < 3; c++) F[i * 3 + c] += g * u[c] / D;
}

// `limit dist CG force` d1, d2, a, b, ids: the other volumes pushed back
// within d1..d2. The z of the force follows u.y, as it always has.
int dist_CG_force(Objet* o, const word* l) {
  const float d1 = value_at(l, 0, 0), d2 = value_at(l, 1, 0), a = value_at(l, 2, 0), b = value_at(l, 3, 0);
  const float* T = get_matrix_vol(o);
  if (!T || d2 - d1 < 0.0001f) return 0;
  for (int i = 4; i < elements(l); i++) {
    Objet* v = volume_numero(value_at(l, i, 0));
    if (!v) {
      err_objet(KW_vol, l, i, 0, nullptr);
      return -1;
    }
    const float* TB = v == o ? nullptr : get_matrix_vol(v);
    if (!TB) continue;
    float u[3] = {T[TR_TRAN] - TB[TR_TRAN], T[TR_TRAN + 1] - TB[TR_TRAN + 1], T[TR_TRAN + 2] - TB[TR_TRAN + 2]};
    const float D = std::sqrt(mat::scalaire(u, u));
    if (D >= d1 && D <= d2) continue;
    mat::normalise(u);
    const float g = D < d1 ? (d1 - D) / (d2 - d1) : (d2 - D) / (d2 - d1);
    float* f = cree_floats(v, KW_force, KW_add, 5);
    if (!f) return -1;
    f[0] += g * u[0];
    f[1] += g * u[1];
    f[2] += g * u[1];
    f[3] = a;
    f[4] = b;
  }
  return 0;
}

// The distance bounds on vertices of one volume, added to `add force
// vertex` (cleared first).
int bornes_sommets(Objet* o, const word* vv, const word* sx, const word* sy, const word* dv) {
  bloc poi = poi_vol(o);
  if (!poi || stride(poi) < 3) return 0;
  const int n = std::min(det_np(o), static_cast<int>(np(poi))), d = stride(poi);
  float* F = rangees_cree(o, 3, ADD_FORCE_VERTEX, np(poi), 3);
  Voisins nv;
  if (!F || ((vv || dv) && !voisins(o, nv))) return -1;
  std::fill(F, F + np(poi) * 3, 0.0f);
  const float* P = sommets(poi);
  const float dv1 = value_at(dv, 0, 0), dv2 = value_at(dv, 1, 0);
  const int nvv = elements(vv);
  if (vv || dv)
    nv.pour_chaque(n, [&](int i, int j) {
      if (j < 0 || j >= n) return;
      if (dv) borne_paire(P, d, i, j, dv1, dv2, F);
      const long k = static_cast<long>(n - 1) * i + j;
      if (vv && 2 * k + 1 < nvv && value_at(vv, static_cast<int>(2 * k), 0) >= 0)
        borne_paire(P, d, i, j, value_at(vv, static_cast<int>(2 * k), 0), value_at(vv, static_cast<int>(2 * k + 1), 0), F);
    });
  // Along the rows (secx) and the columns (secy) of the lattice: each
  // vertex against the one before and the one after it.
  const int len = std::max(vol_secx(o) + (vol_close(o) ? 0 : 1), 1);
  const int rows = (n + len - 1) / len;
  const float sx1 = value_at(sx, 0, 0), sx2 = value_at(sx, 1, 0), sy1 = value_at(sy, 0, 0), sy2 = value_at(sy, 1, 0);
  for (int i = 0; (sx || sy) && i < n; i++) {
    const int x = i % len, y = i / len;
    if (sx && x > 0) borne_paire(P, d, i, i - 1, sx1, sx2, F);
    if (sx && x + 1 < len && i + 1 < n) borne_paire(P, d, i, i + 1, sx1, sx2, F);
    if (sy && y > 0) borne_paire(P, d, i, i - len, sy1, sy2, F);
    if (sy && y + 1 < rows && i + len < n) borne_paire(P, d, i, i + len, sy1, sy2, F);
  }
  return 0;
}

// `limit speed vertex`: one bound for all, or one a vertex.
void vitesses_sommets(Objet* o, const word* l) {
  bloc poi = poi_vol(o);
  float* V = poi ? flottants(get_val_2(o->local, KW_speed, KW_vertex), np(poi) * 3) : nullptr;
  if (!V) return;
  const Rangees L = rangees(l, 1);
  for (int i = 0; i < np(poi); i++) borne_vecteur(V + i * 3, 3, L.n == 1 ? L.at(0, 0, -1) : L.at(i, 0, -1));
}

const int CG_FORCE[] = {KW_limit, KW_dist, KW_CG, KW_force};
const int DIST_VV[] = {KW_limit, KW_dist, KW_vertex, KW_vertex};
const int DIST_SECX[] = {KW_limit, KW_dist, KW_secx};
const int DIST_SECY[] = {KW_limit, KW_dist, KW_secy};
const int DIST_V[] = {KW_limit, KW_dist, KW_vertex};
const int SPEED_V[] = {KW_limit, KW_speed, KW_vertex};

int limite_dynamique(Objet* o) {
  if (const word* l = get_val_k(o->local, 4, CG_FORCE); l && dist_CG_force(o, l) < 0) return -1;
  const word* vv = get_val_k(o->local, 4, DIST_VV);
  const word* sx = get_val_k(o->local, 3, DIST_SECX);
  const word* sy = get_val_k(o->local, 3, DIST_SECY);
  const word* dv = get_val_k(o->local, 3, DIST_V);
  if ((vv || sx || sy || dv) && bornes_sommets(o, vv, sx, sy, dv) < 0) return -1;
  if (const word* l = get_val_k(o->local, 3, SPEED_V)) vitesses_sommets(o, l);
  return 0;
}

}  // namespace

int EXEC_LIMIT_DYNAMIC(int kind) {
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next) {
    if (o->kind != kind || !o->local || o->valid == 0) continue;
    if (limite_dynamique(o) < 0) {
      TRACE_FAIL("EXEC_LIMIT_DYNAMIC()");
      return -1;
    }
  }
  return 0;
}

int EXEC_LIMIT_DYNAMIC_VOL() { return EXEC_LIMIT_DYNAMIC(KW_vol); }
int EXEC_LIMIT_DYNAMIC_BRUSH() { return EXEC_LIMIT_DYNAMIC(KW_brush); }
