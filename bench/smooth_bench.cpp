// 3x3 smoothing of a 2048 by 2048 image through `smooth image(1,2)`,
// against a plain per-pixel loop over the nine cells on the same data,
// and against ImageMagick's `convert -blur` when it is installed. Best of
// several rounds; the command's pixels are checked against the loop's.
#include <cstdlib>
#include <cstring>
#include <random>

#include "bench_console.h"
#include "scene/image_object.h"

namespace {

constexpr int N = 2048;

// The 3x3 mean, cells outside left out, rounded: the obvious loop.
void plain_smooth(const std::vector<uint8_t>& src, std::vector<uint8_t>& dst) {
  for (int y = 0; y < N; y++)
    for (int x = 0; x < N; x++)
      for (int c = 0; c < 4; c++) {
        int sum = 0;
        for (int j = -1; j <= 1; j++)
          for (int i = -1; i <= 1; i++) {
            const int sx = x + i, sy = y + j;
            if (sx >= 0 && sy >= 0 && sx < N && sy < N) sum += src[(static_cast<size_t>(sy) * N + sx) * 4 + c];
          }
        dst[(static_cast<size_t>(y) * N + x) * 4 + c] = static_cast<uint8_t>((sum * 2 + 9) / 18);
      }
}

bool imagemagick() {
  FILE* p = popen("convert -version 2>/dev/null", "r");
  if (!p) return false;
  char line[256] = "";
  const bool found = fgets(line, sizeof line, p) && std::strstr(line, "Version: ImageMagick");
  pclose(p);
  return found;
}

// `convert -blur 1x1` of the same pixels as a PAM file, timed whole.
double convert_ms(const std::vector<uint8_t>& px) {
  const char* in = "/tmp/orvela_smooth_bench.pam";
  FILE* f = std::fopen(in, "wb");
  if (!f) return -1;
  std::fprintf(f, "P7\nWIDTH %d\nHEIGHT %d\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n", N, N);
  std::fwrite(px.data(), 1, px.size(), f);
  std::fclose(f);
  const double ms = bench::best_ms(3, [&] {
    return std::system("convert /tmp/orvela_smooth_bench.pam -blur 1x1 /tmp/orvela_smooth_bench_out.pam") == 0;
  });
  std::remove(in);
  std::remove("/tmp/orvela_smooth_bench_out.pam");
  return ms;
}

}  // namespace

int main() {
  if (!bench::start()) return 1;
  if (!bench::run("image(1,2) dim(2048);")) return 1;
  std::vector<uint8_t> src(static_cast<size_t>(N) * N * 4), plain(src.size());
  std::mt19937 g(1);
  for (uint8_t& b : src) b = static_cast<uint8_t>(g() & 255);
  std::memcpy(pixels_image(image_numero(1)), src.data(), src.size());
  const double cmd = bench::best_ms("smooth image(1,2);", 10);
  const double loop = bench::best_ms(5, [&] {
    plain_smooth(src, plain);
    return true;
  });
  const bool same = std::memcmp(pixels_image(image_numero(2)), plain.data(), plain.size()) == 0;
  const double im = imagemagick() ? convert_ms(src) : -2;
  bench::stop();
  if (cmd < 0) return 1;
  printf("smooth image(1,2), 2048x2048, 3x3:  %8.2f ms (%.0f million pixels a second)\n", cmd, N * N / cmd / 1000);
  printf("the same by a plain 9-cell loop:     %8.2f ms (%.0f million pixels a second)\n", loop, N * N / loop / 1000);
  printf("command / plain loop: %.2f; pixels %s\n", cmd / loop, same ? "identical" : "DIFFERENT");
  if (im == -2) printf("convert -blur: ImageMagick is not installed, not timed\n");
  else printf("convert -blur 1x1 (whole process, file in and out): %8.2f ms\n", im);
  return same ? 0 : 1;
}
