// Building `ball(1) secx(512) secy(256)`, and `rotx` of a volume of
// 1,000,000 vertices through the command, against a plain loop doing the
// same arithmetic on an array of the same size. Best of several rounds.
#include <cmath>

#include "bench_console.h"

namespace {

// The same turn about x through the origin, written plainly.
void plain_rotx(std::vector<float>& v, float a) {
  const float c = std::cos(a), s = std::sin(a);
  for (size_t i = 0; i < v.size(); i += 3) {
    const float y = v[i + 1], z = v[i + 2];
    v[i + 1] = y * c - z * s;
    v[i + 2] = z * c + y * s;
  }
}

}  // namespace

int main() {
  if (!bench::start()) return 1;
  const double ball = bench::best_ms("ball(1) secx(512) secy(256);", 5);
  // (999+1) x (999+1) = 1,000,000 vertices.
  if (!bench::run("grid(2) secx(999) secy(999) dim(1,1);")) return 1;
  const double turn = bench::best_ms("rotx(0.001) vol(2);", 10);
  std::vector<float> v(3000000);
  for (size_t i = 0; i < v.size(); i++) v[i] = static_cast<float>(i % 1000) * 0.001f;
  const double plain = bench::best_ms(10, [&] {
    plain_rotx(v, 0.001f);
    return true;
  });
  bench::stop();
  if (ball < 0 || turn < 0) return 1;
  printf("ball(1) secx(512) secy(256), 131,584 vertices: %8.2f ms\n", ball);
  printf("rotx of 1,000,000 vertices by the command:    %8.2f ms (%.0f million vertices a second)\n", turn,
         1.0 / turn * 1000.0);
  printf("the same turn by a plain loop:                %8.2f ms (%.0f million vertices a second)\n", plain,
         1.0 / plain * 1000.0);
  printf("command / plain loop: %.2f (checksum %g)\n", turn / plain, static_cast<double>(v[7]));
  return 0;
}
