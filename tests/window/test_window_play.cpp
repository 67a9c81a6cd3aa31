// What the real program plays, written by the WAV-file playback back end:
// the beep path's notes one an image, a sound playing along the
// animation with its own samples, and an image loop that plays both and
// allocates nothing.
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "sound/fft.h"
#include "window/window_run.h"

namespace {

bool has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }

struct JoueDansFichier {
  JoueDansFichier() { setenv("ORVELA_AUDIO_OUT", "file:play.wav", 1); }
  ~JoueDansFichier() { unsetenv("ORVELA_AUDIO_OUT"); }
};

// The left channel of the run's play.wav, after checking its header.
std::vector<int> gauche(const WindowRun& run) {
  std::ifstream f(run.dir / "play.wav", std::ios::binary);
  const std::vector<uint8_t> b((std::istreambuf_iterator<char>(f)), {});
  std::vector<int> v;
  EXPECT_GE(b.size(), 44u) << run.out;
  if (b.size() < 44) return v;
  auto le32 = [&](size_t at) { return b[at] | b[at + 1] << 8 | b[at + 2] << 16 | b[at + 3] << 24; };
  EXPECT_EQ(le32(24), 22050);
  EXPECT_EQ(b[22], 2);
  EXPECT_EQ(b[34], 16);
  EXPECT_EQ(static_cast<size_t>(le32(40)), b.size() - 44) << "the header says what the file holds";
  for (size_t i = 44; i + 3 < b.size(); i += 4) v.push_back(static_cast<int16_t>(b[i] | b[i + 1] << 8));
  return v;
}

// The magnitude of each bin of n samples from `from`.
std::vector<float> spectre(const std::vector<int>& v, size_t from, unsigned n) {
  std::vector<float> re(n), im(n), m(n / 2);
  for (unsigned i = 0; i < n; i++) re[i] = static_cast<float>(v[from + i]);
  EXPECT_EQ(fft_float(n, 0, re.data(), nullptr, re.data(), im.data()), 0);
  for (unsigned k = 0; k < n / 2; k++) m[k] = std::hypot(re[k], im[k]);
  return m;
}

int plus_fort(const std::vector<float>& m) {
  int k = 1;
  for (int i = 1; i < static_cast<int>(m.size()); i++)
    if (m[i] > m[k]) k = i;
  return k;
}

TEST(WindowPlay, TheNotesOfTheTableComeOutOneAnImage) {
  REQUIRE_DRAWING();
  JoueDansFichier fichier;
  WindowRun run("no edit\naudio play(430.66, 1033.6)\ninteraction period(25)\ninteraction time(50)\nbye abs\n", "ID");
  EXPECT_FALSE(has(run.out, "ERROR")) << run.out;
  const std::vector<int> v = gauche(run);
  ASSERT_GT(v.size(), 22050u) << run.out;
  // Windows of 256 samples (11.6 ms): 430.66 Hz is bin 5, 1033.6 Hz bin 12.
  // Each sounding window holds one note or the seam of two; a run of
  // windows of one note lasts about an image, 40 ms, 3.4 windows.
  int notes[2] = {0, 0}, suites = 0, fenetres = 0, avant = -1;
  for (size_t at = 0; at + 256 <= v.size(); at += 256) {
    const std::vector<float> m = spectre(v, at, 256);
    const int k = plus_fort(m);
    if (m[k] < 256 * 1000) continue;  // silence
    const int note = k == 5 ? 0 : k == 12 ? 1 : -1;
    if (note < 0) continue;
    notes[note]++;
    fenetres++;
    if (note != avant) suites++;
    avant = note;
  }
  EXPECT_GT(notes[0], 20);
  EXPECT_GT(notes[1], 20);
  ASSERT_GT(suites, 20);
  const double par_suite = static_cast<double>(fenetres) / suites;
  EXPECT_GT(par_suite, 2.2) << "notes of about an image";
  EXPECT_LT(par_suite, 4.6) << "notes of about an image";
}

TEST(WindowPlay, ASoundPlayingAlongComesOutWithItsSamples) {
  REQUIRE_DRAWING();
  JoueDansFichier fichier;
  WindowRun run(
      "no edit\ngenerate audio(1) dim(1)\ngenerate audio(1) time(0, 25) sin(441, 0.5)\ndynamic audio(1) = 1\n"
      "interaction period(25)\ninteraction time(30)\nbye abs\n",
      "ID");
  EXPECT_FALSE(has(run.out, "ERROR")) << run.out;
  const std::vector<int> v = gauche(run);
  ASSERT_GT(v.size(), 4096u) << run.out;
  // The first image's stretch starts the file: the sine at half the full
  // scale, its samples bound by the recurrence of a sine of 441 Hz.
  const double c = 2 * std::cos(2 * M_PI * 441 / 22050);
  int pic = 0;
  double ecart = 0;
  for (int j = 1; j < 881; j++) {
    pic = std::max(pic, std::abs(v[j]));
    ecart = std::max(ecart, std::abs(v[j + 1] + v[j - 1] - c * v[j]));
  }
  EXPECT_GE(pic, 16340) << "sampled 50 times a period, the peak is within cos(pi / 50) of the top";
  EXPECT_LE(pic, 16385);
  EXPECT_LT(ecart, 3);
  // Its frequency found again over the whole of what sounded.
  const std::vector<float> m = spectre(v, 0, 4096);
  EXPECT_NEAR(plus_fort(m) * 22050.0 / 4096, 441, 22050.0 / 4096);
}

// Notes and a playing sound over images 30 to 230, the file written at
// each: no memory asked.
TEST(WindowPlay, PlayingAllocatesNothing) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  JoueDansFichier fichier;
  const std::string script =
      "no edit\ngenerate audio(1) dim(1)\ngenerate audio(1) time(0, 25) sin(441, 0.5)\ndynamic audio(1) = 1\n"
      "audio play(440, 660, 880) time(10)\n"
      "interaction period(0)\ninteraction time(240)\nbye abs\n";
  WindowRun run(script, "ID", "", ORVELA_ALLOC_PROBE);
  EXPECT_TRUE(has(run.out, "probe: images 30 to 230: 0 new, 0 blocks\n")) << run.out;
  EXPECT_GT(gauche(run).size(), 0u);
}

}  // namespace
