// The cost of writing a file safely (a temporary file, flushed to disk,
// renamed over the target) against writing it in place with stdio, for
// a small file (a function file) and a picture of the window's size (a
// 768 by 576 bmp). Best of several rounds, in the folder given (default
// /tmp), whose disk is what is measured.
#include <cstdio>
#include <string>
#include <vector>

#include "bench_console.h"
#include "platform/safe_write.h"

namespace {

bool in_place(const std::string& path, const std::vector<char>& bytes) {
  FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return false;
  const bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  return std::fclose(f) == 0 && ok;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : "/tmp";
  const std::string path = folder + "/orvela_write_bench.bin";
  for (size_t size : {size_t{2048}, size_t{768} * 576 * 3 + 54}) {
    std::vector<char> bytes(size, 'x');
    const double safe = bench::best_ms(20, [&] { return safe_write_file(path, bytes.data(), bytes.size()) == WriteFault::none; });
    const double plain = bench::best_ms(20, [&] { return in_place(path, bytes); });
    std::printf("%8zu bytes: safe write %.2f ms, in place %.2f ms\n", size, safe, plain);
  }
  std::remove(path.c_str());
  return 0;
}
