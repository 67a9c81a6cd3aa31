// `.stock` analysis of a 10-minute 44.1 kHz 16-bit stereo WAV file
// through `stock audio(1)`, against a plain loop over the same bytes
// doing the same sums and counts. Best of several rounds; the pairs of
// both are compared.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "bench_console.h"
#include "sound/sound_object.h"

namespace {

// The obvious loop: per window of rate/25 frames, the sum of the first
// channel, then the count against the one sample just after the window.
std::vector<float> plain_stock(const uint8_t* d, long long bytes, int rate, int channels, int images) {
  std::vector<float> out(static_cast<size_t>(images) * 2);
  const long long window = rate / 25, frame = channels * 2, frames = bytes / frame;
  for (long long w = 0; w < images; w++) {
    long long sum = 0;
    for (long long i = w * window; i < (w + 1) * window && i < frames; i++)
      sum += static_cast<int16_t>(d[i * frame] | d[i * frame + 1] << 8);
    const long long after = (w + 1) * window;
    const long long v = after < frames ? static_cast<int16_t>(d[after * frame] | d[after * frame + 1] << 8) : 0;
    long long count = 0;
    for (long long i = 0, flag = 0; i < window; i++) {
      if (v > sum && !flag) {
        count++;
        flag = 1;
      } else {
        flag = 0;
      }
    }
    out[w * 2] = static_cast<float>(count) / (0.2f * 20000.0f);
    out[w * 2 + 1] = static_cast<float>(sum) / (0.002f * static_cast<float>(rate) * 32767.0f);
  }
  return out;
}

}  // namespace

int main() {
  if (!bench::start()) return 1;
  const char* file = "/tmp/orvela_stock_bench.wav";
  // Ten minutes of a 440 Hz sine with noise, written and read back as a file.
  if (!bench::run("generate audio(1) dim(600, 2); generate audio(1) time(0, 15000) sin(440, 0.5);")) return 1;
  if (!bench::run("generate audio(1) time(0, 15000) alea(0.2) add;")) return 1;
  if (!bench::run("write audio(1) name(\"/tmp/orvela_stock_bench.wav\");")) return 1;
  const double read = bench::best_ms("read audio(1) name(\"/tmp/orvela_stock_bench.wav\");", 3);
  std::remove(file);
  Objet* o = audio_numero(1);
  if (!o) return 1;
  std::vector<word> value;
  const double cmd = bench::best_ms(5, [&] { return executer_texte("stock audio(1)", value) == 0; });
  const uint8_t* d = donnees(o);
  std::vector<float> plain;
  const double loop = bench::best_ms(5, [&] {
    plain = plain_stock(d, octets_donnees(o), Rate(o), Channel(o), Images(o));
    return true;
  });
  bench::stop();
  const bool same = value.size() == plain.size() + 4 && value[1] == T_FLOAT &&
                    std::memcmp(value.data() + 4, plain.data(), plain.size() * 4) == 0;
  const double mb = static_cast<double>(Size(o)) / 1e6;
  printf("file: %.1f MB, %d images; read audio: %.1f ms\n", mb, Images(o), read);
  printf("stock audio(1):          %8.2f ms (%.0f MB a second)\n", cmd, mb / cmd * 1000);
  printf("the same by a plain loop: %8.2f ms (%.0f MB a second)\n", loop, mb / loop * 1000);
  printf("command / plain loop: %.2f; pairs %s\n", cmd / loop, same ? "identical" : "DIFFERENT");
  return same ? 0 : 1;
}
