// One dynamics step of a 128 x 128 grid joined by springs along its facet
// edges, against a plain loop doing the same arithmetic on float arrays;
// and one step of 10,000 particles in a field. Best of several rounds.
#include <cmath>

#include "animation/dynamics/dynamics.h"
#include "bench_console.h"
#include "kernel/keywords.h"
#include "kernel/chains.h"
#include "scene/lookup.h"
#include "scene/volume.h"

namespace {

// The grid's springs written plainly: a row of 4 neighbours a vertex
// (-1 for none), their rest lengths, a damping of the link, then the
// vertex's own force and damping, and the semi-implicit step.
struct Plain {
  int n = 0;
  std::vector<float> p, v, a, rest, force, dup;
  std::vector<int> near;
  void build(int side, float step) {
    n = side * side;
    p.resize(n * 3);
    v.assign(n * 3, 0);
    a.assign(n * 3, 0);
    force.assign(n * 4, 0);
    near.assign(n * 4, -1);
    rest.assign(n * 4, 0);
    for (int j = 0; j < side; j++)
      for (int i = 0; i < side; i++) {
        const int k = j * side + i;
        p[k * 3] = i * step, p[k * 3 + 1] = -j * step, p[k * 3 + 2] = 0;
        force[k * 4 + 1] = -0.05f, force[k * 4 + 3] = -0.02f;
        int m = 0;
        for (int d : {k - side, k - 1, k + 1, k + side}) {
          const bool ok = d >= 0 && d < n && (d == k - side || d == k + side || d / side == j);
          if (ok) near[k * 4 + m] = d, rest[k * 4 + m++] = step;
        }
      }
    dup = p;
  }
  void step(float k, float c) {
    for (int i = 1; i < n; i++) {  // the first vertex pinned
      float F[3] = {0, 0, 0};
      float* P = &p[i * 3];
      float* V = &v[i * 3];
      for (int m = 0; m < 4; m++) {
        const int j = near[i * 4 + m];
        if (j < 0) break;
        float u[3] = {p[j * 3] - P[0], p[j * 3 + 1] - P[1], p[j * 3 + 2] - P[2]};
        const float D = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
        const float inv = D > 0 ? 1 / D : 0;
        const float e = D - rest[i * 4 + m];
        for (int x = 0; x < 3; x++) F[x] += k * e * u[x] * inv + c * V[x];
      }
      for (int x = 0; x < 3; x++) {
        F[x] += force[i * 4 + x];
        a[i * 3 + x] = force[i * 4 + 3] * V[x] + F[x];
        V[x] += a[i * 3 + x];
        P[x] += V[x];
      }
    }
    std::copy(p.begin(), p.end(), dup.begin());
  }
};

Objet* volume(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }

}  // namespace

int main() {
  if (!bench::start()) return 1;
  install_dynamics();
  // 128 x 128 vertices, 100 apart.
  if (!bench::run("grid(1) secx(127) secy(127); mass vol(1)=1; mass vertex(1) vol(1)=0;"
                  "spring vol(1)=0.1,-0.05; force vertex vol(1)=0,-0.05,0,-0.02;"))
    return 1;
  Objet* grid = volume(1);
  if (DYNAMIC_2(grid) < 0) return 1;  // the first step builds the neighbours
  const double cmd = bench::best_ms(50, [&] { return DYNAMIC_2(grid) == 0; });
  Plain plain;
  plain.build(128, 100);
  const double loop = bench::best_ms(50, [&] {
    plain.step(0.1f, -0.05f);
    return true;
  });
  // 10,000 particles drawn toward a point.
  if (!bench::run("grid(2) secx(99) secy(99) particle; mass vol(2)=1; field(1) poi(0,0,1000); yes field;"))
    return 1;
  Objet* cloud = volume(2);
  if (DYNAMIC_2(cloud) < 0) return 1;
  const double parts = bench::best_ms(50, [&] { return DYNAMIC_2(cloud) == 0; });
  bench::stop();
  printf("DYNAMIC_2 of a 128 x 128 grid with springs: %8.3f ms a step\n", cmd);
  printf("the same arithmetic by a plain loop:        %8.3f ms a step\n", loop);
  printf("step / plain loop: %.2f (checksum %g)\n", cmd / loop, static_cast<double>(plain.p[3 * 200 + 1]));
  printf("10,000 particles in a field:                %8.3f ms a step\n", parts);
  return 0;
}
