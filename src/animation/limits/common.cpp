// What the limits share: the walk along a column, the rows of a vertex
// value, the neighbours, the state.
#include <algorithm>
#include <cmath>

#include "animation/dynamics/dyn_props.h"
#include "animation/limits/limits.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "scene/vol_generate.h"

LimitState& limit_state() {
  static LimitState s;
  return s;
}

void limit_column(float* P, int d, int first, int count, int step, float d1, float d2) {
  for (int k = 1; k < count; k++) {
    const float* a = P + (first + (k - 1) * step) * d;
    float* b = P + (first + k * step) * d;
    float u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const float D = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
    if (D <= 0 || (D >= d1 && D <= d2)) continue;
    const float L = D < d1 ? d1 : d2;
    for (int c = 0; c < 3; c++) b[c] = a[c] + L * u[c] / D;
  }
}

float* rangees_cree(Objet* o, int nkeys, const int* keys, int n, int w) {
  if (float* f = flottants(get_val_n(o->local, nkeys, keys), n * w)) return f;
  if (rem_propr_k(o, nkeys, keys) < 0) return nullptr;
  return flottants(set_matrix_k(o, nkeys, keys, n, w), n * w);
}

bool voisins(Objet* o, Voisins& nv) {
  const word* v = get_val_3(o->local, KW_near, KW_vertex, KW_vertex);
  if (!v) v = gen_near_vertex(o, KW_vertex);
  if (!v || tag(v) != T_FLOAT || dimp(v) < 1) {
    TRACE_FAIL("near vertex vertex");
    return false;
  }
  nv.total = elements(v);
  nv.v = reinterpret_cast<const float*>(v + 4);
  return true;
}
