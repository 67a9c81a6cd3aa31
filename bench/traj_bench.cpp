// Trajectories: building a table of 100,000 rows through a smoothed curve
// (`ext`), and one pass of the stage EXEC_TRAJ with 1000 trajectories
// driving 1000 volumes, against a plain loop doing the same reads and
// writes on arrays (the row at the counter added to the trajectory's
// place, written into each object's deltas, then the counters stepped).
#include <string>

#include "animation/traj/traj.h"
#include "bench_console.h"

namespace {

constexpr int N = 1000, ROWS = 100, BLOCK = 42, DELTA = 29;

struct Plain {
  std::vector<float> tables = std::vector<float>(static_cast<size_t>(N * ROWS * 3));
  std::vector<float> own = std::vector<float>(static_cast<size_t>(N * BLOCK));
  std::vector<float> blocks = std::vector<float>(static_cast<size_t>(N * BLOCK));
  std::vector<int> cpt = std::vector<int>(N, 0);
  void image() {
    for (int i = 0; i < N; i++) {
      const float* r = &tables[static_cast<size_t>((i * ROWS + cpt[i]) * 3)];
      float* b = &blocks[static_cast<size_t>(i * BLOCK)];
      const float* t = &own[static_cast<size_t>(i * BLOCK)];
      for (int k = 0; k < 3; k++) b[DELTA + k] = t[k] + r[k];
    }
    for (int i = 0; i < N; i++)
      if (++cpt[i] >= ROWS) cpt[i] = 0;
  }
};

}  // namespace

int main() {
  if (!bench::start()) return 1;
  install_trajectories();
  std::string keys;
  for (int i = 0; i < 20; i++) keys += (i ? "," : "") + std::to_string(i * 10) + "," + std::to_string((i * 37) % 50) + ",0";
  const std::string build = "traj(1) tran(" + keys + ") ext animate(100000);";
  const double table = bench::best_ms(build.c_str(), 5);
  for (int i = 1; i <= N; i++) {
    const std::string made = "cube(" + std::to_string(i) + ") dim(1);traj(" + std::to_string(i) +
                             ") tran(0,0,0,99,0,0) animate(100) period(1) vol(" + std::to_string(i) + ");";
    if (!bench::run(made.c_str())) return 1;
  }
  const double stage = bench::best_ms(50, [] { return EXEC_TRAJ() == 0; });
  Plain plain;
  for (size_t i = 0; i < plain.tables.size(); i++) plain.tables[i] = static_cast<float>(i % 300);
  const double loop = bench::best_ms(50, [&] {
    plain.image();
    return true;
  });
  bench::stop();
  if (table < 0 || stage < 0) return 1;
  printf("table of 100,000 rows from 20 keys with ext:        %8.3f ms\n", table);
  printf("EXEC_TRAJ, 1000 trajectories driving 1000 volumes:  %8.3f ms\n", stage);
  printf("the same reads and writes by a plain loop:          %8.3f ms\n", loop);
  printf("stage / plain loop: %.1f (checksum %g)\n", stage / loop, static_cast<double>(plain.blocks[DELTA]));
  return 0;
}
