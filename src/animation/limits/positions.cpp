// EXEC_LIMIT: positions held within bounds before the display. This file
// holds the walk and the bounds on a volume as a whole; vertices.cpp the
// bounds on its vertices.
#include <algorithm>
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/motion.h"
#include "animation/limits/limits.h"
#include "animation/limits/vertex_limits.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/volume.h"

namespace {

const int DIST_ROTY[] = {KW_limit, KW_dist, KW_roty};
const int DIST_CG[] = {KW_limit, KW_dist, KW_CG};
const int CG_MATRIX[] = {KW_limit, KW_CG, KW_matrix};
const int TRAN[] = {KW_limit, KW_tran};
const int ROTA[] = {KW_limit, KW_rota};

// The other volume of element i of a list of identifiers; null after a
// report when there is none.
Objet* autre(const word* l, int i) {
  Objet* v = volume_numero(value_at(l, i, 0));
  if (!v) err_objet(KW_vol, l, i, 0, nullptr);
  return v;
}

// `limit dist roty` a, ids: this volume's roty follows each other's, a
// (radians, as every angle a command takes) ahead.
int dist_roty(float* T, const word* l) {
  for (int i = 1; i < elements(l); i++) {
    Objet* v = autre(l, i);
    const float* TB = v ? get_matrix_vol(v) : nullptr;
    if (!TB) return -1;
    T[TR_ROTX + 1] = value_at(l, 0, 0) * DEGRES + TB[TR_ROTX + 1];
  }
  return 0;
}

// `limit dist CG` d1, d2, ids: each other volume put on the shell of the
// nearer bound, on its line to this one; both volumes' `collision` takes
// the image number.
int dist_CG(Objet* o, float* T, const word* l) {
  const float d1 = value_at(l, 0, 0), d2 = value_at(l, 1, 0);
  for (int i = 2; i < elements(l); i++) {
    Objet* v = autre(l, i);
    float* TB = v ? get_matrix_vol(v) : nullptr;
    if (!TB) return -1;
    if (v == o) continue;
    float u[3] = {TB[TR_TRAN] - T[TR_TRAN], TB[TR_TRAN + 1] - T[TR_TRAN + 1], TB[TR_TRAN + 2] - T[TR_TRAN + 2]};
    const float D = std::sqrt(mat::scalaire(u, u));
    if (D <= 0 || (D >= d1 && D <= d2)) continue;
    const float L = D < d1 ? d1 : d2;
    for (int c = 0; c < 3; c++) TB[TR_TRAN + c] = T[TR_TRAN + c] + L * u[c] / D;
    for (Objet* x : {o, v}) {
      float* etat = cree_floats(x, KW_collision, 0, COLL_STATE);
      if (!etat) return -1;
      etat[0] = static_cast<float>(limit_state().image);
    }
  }
  return 0;
}

// `limit CG matrix` x,y,z, r [,axis]: within r of the centre, or outside
// -r when r is negative; the speed and the contact are cleared when held.
int CG_matrix(Objet* o, float* T, const word* l) {
  const float C[3] = {value_at(l, 0, 0), value_at(l, 1, 0), value_at(l, 2, 0)};
  const float r = value_at(l, 3, 0);
  float u[3] = {T[TR_TRAN] - C[0], T[TR_TRAN + 1] - C[1], T[TR_TRAN + 2] - C[2]};
  const float D = std::sqrt(mat::scalaire(u, u));
  if (D <= 0) return 0;
  for (float& x : u) x /= D;
  if (elements(l) >= 7) {
    const float axe[3] = {value_at(l, 4, 0), value_at(l, 5, 0), value_at(l, 6, 0)};
    float w[3];
    mat::vectoriel(u, axe, w);
    if (D * std::fabs(w[1]) < r) return 0;
  }
  const float R = std::fabs(r);
  if (r >= 0 ? D <= R : D >= R) return 0;
  for (int c = 0; c < 3; c++) T[TR_TRAN + c] = C[c] + R * u[c];
  if (float* v = flottants(get_val_1(o->local, KW_speed), 3)) std::fill(v, v + 3, 0.0f);
  if (float* etat = flottants(get_val_1(o->local, KW_collision), 1)) etat[0] = 0;
  return 0;
}

// `limit tran` x1,y1,z1,x2,y2,z2: the translation within the box; on a
// wall the speed across it is reversed and damped by the restitution.
void tran(Objet* o, float* T, const word* l) {
  float* v = flottants(get_val_1(o->local, KW_speed), 3);
  const float e = value_at(get_val_2(o->local, KW_collision, KW_coe), 0, 0);
  for (int c = 0; c < 3; c++) {
    const float lo = value_at(l, c, 0), hi = value_at(l, 3 + c, 0);
    float& x = T[TR_TRAN + c];
    if (x >= lo && x <= hi) continue;
    x = x < lo ? lo : hi;
    if (v) v[c] = -v[c] * e;
  }
}

}  // namespace

int EXEC_LIMIT_2(Objet* o) {
  float* T = get_matrix_vol(o);
  // The list is read at each lookup: a property made on the way moves it.
  if (!o->local || !T) return 0;
  if (const word* l = get_val_k(o->local, 3, DIST_ROTY); l && dist_roty(T, l) < 0) return -1;
  if (const word* l = get_val_k(o->local, 3, DIST_CG); l && dist_CG(o, T, l) < 0) return -1;
  if (const word* l = get_val_k(o->local, 3, CG_MATRIX)) CG_matrix(o, T, l);
  if (const word* l = get_val_k(o->local, 2, TRAN)) tran(o, T, l);
  if (const word* l = get_val_k(o->local, 2, ROTA); l && elements(l) >= 1) borne_rota(T[TR_ROTA], l);
  return limites_sommets(o);
}

int EXEC_LIMIT_1(int kind) {
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next) {
    if (o->kind != kind || o->valid == 0 || !o->local) continue;
    if (EXEC_LIMIT_2(o) < 0) {
      TRACE_FAIL("EXEC_LIMIT_1()");
      return -1;
    }
  }
  return 0;
}

int EXEC_LIMIT() {
  limit_state().image++;
  if (EXEC_LIMIT_1(KW_vol) < 0) return -1;
  if (Yes(KW_brush) > 0 && EXEC_LIMIT_1(KW_brush) < 0) return -1;
  return 0;
}
