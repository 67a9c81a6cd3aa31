// The particle form: each vertex of a particle volume against the planes,
// with its own speed (`speed vertex`) and no torque and no state.
#include <algorithm>
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/volume.h"

namespace {

// r = L.x with L the linear part of m.
void lineaire(const float m[16], const float x[3], float r[3]) {
  for (int i = 0; i < 3; i++) r[i] = m[i] * x[0] + m[4 + i] * x[1] + m[8 + i] * x[2];
}

// x such that L.x = y, by Cramer's rule; false when L is singular.
bool resout(const float m[16], const float y[3], float x[3]) {
  const float c0[3] = {m[0], m[1], m[2]}, c1[3] = {m[4], m[5], m[6]}, c2[3] = {m[8], m[9], m[10]};
  float t[3], u[3], w[3];
  mat::vectoriel(c1, c2, t);
  const float det = mat::scalaire(c0, t);
  if (std::fabs(det) < 1e-12f) return false;
  mat::vectoriel(y, c2, u);
  mat::vectoriel(c1, y, w);
  x[0] = mat::scalaire(y, t) / det;
  x[1] = mat::scalaire(c0, u) / det;
  x[2] = mat::scalaire(c0, w) / det;
  return true;
}

}  // namespace

int EXEC_COLLISION_PARTICLE(Objet* o, const word* plans) {
  Absolus a;
  bloc poi = poi_vol(o);
  if (!absolus(o, a) || a.p != (poi ? sommets(poi) : nullptr)) return 0;
  const int n = elements(plans) / 3;
  const float restitution = value_at(get_val_2(o->local, KW_collision, KW_coe), 0, 0);
  const word* normales = get_val_2(o->local, KW_collision, KW_normal);
  const int nn = elements(normales) / 3;
  float* V = flottants(get_val_2(o->local, KW_speed, KW_vertex), np(poi) * 3);
  float* P = sommets(poi);
  for (int i = 0; i < a.n; i++)
    for (int j = 0; j < n; j++) {
      float N[3] = {0, -1, 0}, Q[3], X[3];
      for (int k = 0; k < 3; k++) {
        if (nn) N[k] = value_at(normales, (j % nn) * 3 + k, 0);
        Q[k] = value_at(plans, j * 3 + k, 0);
      }
      a.at(i, X);
      const float w[3] = {Q[0] - X[0], Q[1] - X[1], Q[2] - X[2]};
      const float h = mat::scalaire(w, N);
      if (h <= 0) continue;
      // Put back on the plane along its normal, in the volume's coordinates.
      const float dA[3] = {h * N[0], h * N[1], h * N[2]};
      float dL[3];
      if (!resout(a.m, dA, dL)) continue;
      for (int k = 0; k < 3; k++) P[i * a.d + k] += dL[k];
      if (!V) continue;
      float v[3], vl[3];
      lineaire(a.m, V + i * 3, v);
      const float vn = mat::scalaire(v, N);
      if (vn >= 0) continue;
      for (int k = 0; k < 3; k++) v[k] = restitution <= 0.0001f ? 0 : (v[k] - 2 * vn * N[k]) * restitution;
      if (resout(a.m, v, vl)) std::copy(vl, vl + 3, V + i * 3);
    }
  invalide_caches(o);
  return 0;
}
