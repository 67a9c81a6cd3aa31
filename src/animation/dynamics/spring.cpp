// Springs: the force between two points, and the motion of a point
// pulled toward another (the eye's spring).
#include <cmath>

#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/dynamics.h"
#include "kernel/bloc.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "scene/volume.h"

namespace {

// v scaled to length L when longer.
void borne(float v[3], float L) {
  if (L < 0) return;
  const float n = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  if (n > L && n > 0)
    for (int a = 0; a < 3; a++) v[a] *= L / n;
}

}  // namespace

void spring_force(const float pi[3], const float pj[3], float rest, float F[3], float k, float c,
                  const float vi[3], const float* limit) {
  float u[3] = {pj[0] - pi[0], pj[1] - pi[1], pj[2] - pi[2]};
  const float D = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
  // Two points at one place have no direction: only the damping acts.
  const float inv = D > 0 ? 1 / D : 0;
  for (float& x : u) x *= inv;
  float e = D - rest;
  for (int a = 0; a < 3; a++) F[a] += k * e * u[a] + c * vi[a];
  if (!limit) return;
  // The tests compare the extension, and the second reads what the
  // first left in it: kept as older scenes were tuned with it.
  if (e > 0.0001f && e < limit[0]) {
    const float g = 10 * (limit[0] - e) / e;
    for (int a = 0; a < 3; a++) F[a] += g * u[a];
    e = g;
  }
  if (e > 0.0001f && e > limit[1]) {
    const float g = 10 * (limit[1] - e) / e;
    for (int a = 0; a < 3; a++) F[a] += g * u[a];
  }
}

void spring_move(const float from[3], float to[3], float k, float c, float m, SpringMotion& s) {
  const float r = m <= 0.0000001f ? 1000000.0f : 1 / m;
  // k x |D| x u along D = from - to: the point is pulled back toward
  // `from`, as the eye's spring is.
  float G[3];
  for (int a = 0; a < 3; a++) G[a] = c * s.speed[a] + k * (from[a] - to[a]) + s.force[a];
  borne(G, s.limit_force);
  for (int a = 0; a < 3; a++) {
    s.acc[a] = s.force[3] * s.speed[a] + r * G[a];
    s.speed[a] += s.acc[a];
  }
  borne(s.speed, s.limit_speed);
  for (int a = 0; a < 3; a++) to[a] += s.speed[a];
}

int SPRING_MOVE(Objet* o, const float from[3], float to[3], float k, float c, float m, int qualifier) {
  if (!o->local && !local_ini(o)) return -1;
  // `speed move`, `acc move` (3) and `force move` (4), made at 0; with a
  // qualifier, `speed move aim` and so on.
  auto ligne = [&](int code, int n) -> float* {
    const int keys[] = {code, KW_move, qualifier};
    const int nk = qualifier ? 3 : 2;
    if (bloc p = get_propr_k(o->local, nk, keys, nullptr); p && flottants(propr_val(p), n))
      return flottants(propr_val(p), n);
    bool valide = false;
    float* f = flottants(cache_vol(o, nk, keys, 1, n, &valide), n);
    if (f) cache_valide(o, nk, keys);
    return f;
  };
  float* v = ligne(KW_speed, 3);
  float* acc = ligne(KW_acc, 3);
  float* f = ligne(KW_force, 4);
  if (!v || !acc || !f) {
    TRACE_FAIL("SPRING_MOVE()");
    return -1;
  }
  DynProps d;
  lire_props(o, d);
  SpringMotion s{v, acc, f, value_at(d[D_limit_force], 0, -1), value_at(d[D_limit_speed], 0, -1)};
  spring_move(from, to, k, c, m, s);
  return 0;
}
