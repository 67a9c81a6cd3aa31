// Two stages of collisions and limits against plain loops doing the same
// tests on float arrays: 1000 balls each against the 6 walls of a box,
// and the distance bounds of a 128 x 128 grid's neighbours turned into
// forces. Best of several rounds.
#include <cmath>
#include <string>
#include <vector>

#include "animation/collision/collision.h"
#include "animation/limits/limits.h"
#include "bench_console.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "scene/lookup.h"
#include "scene/volume.h"

namespace {

constexpr int BALLS = 1000;
const float WALLS[6][6] = {{0, -1000, 0, 0, 1, 0},  {0, 1000, 0, 0, -1, 0}, {-1000, 0, 0, 1, 0, 0},
                           {1000, 0, 0, -1, 0, 0}, {0, 0, -1000, 0, 0, 1}, {0, 0, 1000, 0, 0, -1}};

// The balls' test written plainly: the vertices of each ball placed by its
// translation, the lowest along each wall's normal, and the side it lies on.
struct PlainBalls {
  std::vector<float> poi;     // the vertices of one ball (all alike)
  std::vector<float> matrix;  // 12 a ball: the columns of its placement
  int contacts = 0;
  void run() {
    const int n = static_cast<int>(poi.size() / 3);
    contacts = 0;
    for (size_t b = 0; b < matrix.size() / 12; b++)
      for (const auto& w : WALLS) {
        float best = 0;
        int k = -1;
        for (int i = 0; i < n; i++) {
          // Placed by the ball's matrix (here a translation, but a ball may
          // turn): the same 3 x 4 product as any volume needs.
          const float* v = &poi[i * 3];
          const float* M = &matrix[b * 12];
          const float x = M[0] * v[0] + M[3] * v[1] + M[6] * v[2] + M[9];
          const float y = M[1] * v[0] + M[4] * v[1] + M[7] * v[2] + M[10];
          const float z = M[2] * v[0] + M[5] * v[1] + M[8] * v[2] + M[11];
          const float h = x * w[3] + y * w[4] + z * w[5];
          if (k < 0 || h < best) best = h, k = i;
        }
        const float q = w[0] * w[3] + w[1] * w[4] + w[2] * w[5];
        if (q - best > 0) contacts++;
      }
  }
};

// The grid's bounds written plainly: 4 neighbours a vertex (-1 for none),
// (d1-D) or (d2-D) along the unit vector from the neighbour.
struct PlainGrid {
  int n = 0;
  std::vector<float> p, add;
  std::vector<int> near;
  void build(int side, float step) {
    n = side * side;
    p.resize(n * 3);
    add.assign(n * 3, 0);
    near.assign(n * 4, -1);
    for (int j = 0; j < side; j++)
      for (int i = 0; i < side; i++) {
        const int k = j * side + i;
        p[k * 3] = i * step * 1.05f, p[k * 3 + 1] = -j * step, p[k * 3 + 2] = 0;
        int m = 0;
        for (int d : {k - side, k - 1, k + 1, k + side})
          if (d >= 0 && d < n && (d == k - side || d == k + side || d / side == j)) near[k * 4 + m++] = d;
      }
  }
  void run(float d1, float d2) {
    std::fill(add.begin(), add.end(), 0.0f);
    for (int i = 0; i < n; i++)
      for (int m = 0; m < 4; m++) {
        const int j = near[i * 4 + m];
        if (j < 0) break;
        const float u[3] = {p[i * 3] - p[j * 3], p[i * 3 + 1] - p[j * 3 + 1], p[i * 3 + 2] - p[j * 3 + 2]};
        const float D = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
        if (D <= 0 || (D >= d1 && D <= d2)) continue;
        const float g = (D < d1 ? d1 : d2) - D;
        for (int c = 0; c < 3; c++) add[i * 3 + c] += g * u[c] / D;
      }
  }
};

}  // namespace

int main() {
  if (!bench::start()) return 1;
  install_collisions();
  install_limits();
  std::string walls, normals;
  for (const auto& w : WALLS) {
    for (int c = 0; c < 3; c++) walls += (walls.empty() ? "" : ",") + std::to_string(static_cast<int>(w[c]));
    for (int c = 3; c < 6; c++) normals += (normals.empty() ? "" : ",") + std::to_string(static_cast<int>(w[c]));
  }
  PlainBalls plain;
  for (int b = 1; b <= BALLS; b++) {
    const int x = (b * 37) % 1600 - 800, y = (b * 91) % 1600 - 800, z = (b * 53) % 1600 - 800;
    const std::string id = std::to_string(b);
    const std::string t = "ball(" + id + ") radius(10); tran(" + std::to_string(x) + "," + std::to_string(y) + "," +
                          std::to_string(z) + ") matrix vol(" + id + "); collision poi vol(" + id + ")=" + walls +
                          "; collision normal vol(" + id + ")=" + normals + "; speed vol(" + id + ")=1,2,3;";
    if (!bench::run(t.c_str())) return 1;
    plain.matrix.insert(plain.matrix.end(), {1, 0, 0, 0, 1, 0, 0, 0, 1, static_cast<float>(x), static_cast<float>(y),
                                             static_cast<float>(z)});
  }
  Objet* b1 = get_objet_id(chaine_classe(KW_vol), KW_vol, 1);
  const word* poi = poi_vol(b1);
  plain.poi.assign(sommets(const_cast<word*>(poi)), sommets(const_cast<word*>(poi)) + np(poi) * 3);
  if (EXEC_COLLISION() < 0) return 1;
  const double coll = bench::best_ms(20, [] { return EXEC_COLLISION() == 0; });
  const double coll_plain = bench::best_ms(20, [&] {
    plain.run();
    return true;
  });
  // 128 x 128 vertices 100 apart, bounds 90..100 on every link.
  if (!bench::run("rem vol; grid(1) secx(127) secy(127); dila(1.05,1,1) vol(1); limit dist vertex vol(1)=90,100;"))
    return 1;
  if (EXEC_LIMIT_DYNAMIC(KW_vol) < 0) return 1;  // the first pass builds the neighbours
  const double lim = bench::best_ms(50, [] { return EXEC_LIMIT_DYNAMIC(KW_vol) == 0; });
  PlainGrid grid;
  grid.build(128, 100);
  const double lim_plain = bench::best_ms(50, [&] {
    grid.run(90, 100);
    return true;
  });
  bench::stop();
  printf("EXEC_COLLISION, %d balls of %d vertices, 6 planes each: %8.3f ms an image\n", BALLS,
         static_cast<int>(plain.poi.size() / 3), coll);
  printf("the same tests by a plain loop:                           %8.3f ms (contacts %d)\n", coll_plain,
         plain.contacts);
  printf("collisions / plain loop: %.2f\n", coll / coll_plain);
  printf("EXEC_LIMIT_DYNAMIC, distance bounds of a 128 x 128 grid:  %8.3f ms an image\n", lim);
  printf("the same bounds by a plain loop:                          %8.3f ms (checksum %g)\n", lim_plain,
         static_cast<double>(grid.add[0]));
  printf("limits / plain loop: %.2f\n", lim / lim_plain);
  return 0;
}
