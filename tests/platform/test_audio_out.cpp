// The playback ring and its clock back ends, paced by a clock the test
// moves: what is written plays in order, silence where nothing was, the
// ring wraps, a writer cannot run a ring ahead of the player, and the
// WAV file reads whole after every pump.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/audio_out.h"

namespace {

double temps = 0;
double horloge() { return temps; }
// The clock just past `octets` bytes of play.
void jusqua(long long octets) { temps = (static_cast<double>(octets) + 1) / AUDIO_BYTES_PER_SECOND; }

struct Sortie {
  std::string chemin = std::filesystem::temp_directory_path() / ("orvela_out_" + std::to_string(getpid()) + ".wav");
  AudioPlayback* p = nullptr;
  Sortie() {
    temps = 0;
    p = audio_out_open_clock(chemin.c_str(), horloge, nullptr, nullptr);
  }
  ~Sortie() {
    audio_out_close(p);
    std::remove(chemin.c_str());
  }
  std::vector<uint8_t> fichier() const {
    std::ifstream f(chemin, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
  }
  // The samples' bytes, after checking the header's sizes.
  std::vector<uint8_t> joues() const {
    const std::vector<uint8_t> b = fichier();
    EXPECT_GE(b.size(), 44u);
    if (b.size() < 44) return {};
    auto le32 = [&](size_t at) { return b[at] | b[at + 1] << 8 | b[at + 2] << 16 | b[at + 3] << 24; };
    EXPECT_EQ(std::string(b.begin(), b.begin() + 4), "RIFF");
    EXPECT_EQ(le32(4), static_cast<int>(b.size()) - 8);
    EXPECT_EQ(le32(24), AUDIO_RATE);
    EXPECT_EQ(le32(40), static_cast<int>(b.size()) - 44);
    return {b.begin() + 44, b.end()};
  }
  // Adds v (never 0) to n bytes at `at`, which must be silent; the count
  // written.
  int ecrit(long long at, int n, uint8_t v) {
    AudioOutStretch s[2];
    long long debut = -1;
    const int k = audio_out_lock(p, at, n, s, &debut);
    EXPECT_EQ(s[0].n + s[1].n, k);
    for (const AudioOutStretch& e : s)
      for (int i = 0; i < e.n; i++) {
        EXPECT_EQ(e.p[i], 0) << "past the write position the ring is silent";
        e.p[i] = static_cast<uint8_t>(e.p[i] + v);
      }
    audio_out_unlock(p, debut, k);
    return k;
  }
};

bool tous(const std::vector<uint8_t>& b, size_t from, size_t to, uint8_t v) {
  for (size_t i = from; i < to; i++)
    if (b[i] != v) return false;
  return true;
}

TEST(AudioOut, WrittenBytesPlayInOrderAndSilenceFillsTheRest) {
  Sortie s;
  ASSERT_NE(s.p, nullptr);
  EXPECT_EQ(s.joues().size(), 0u) << "a valid empty file from the start";
  EXPECT_EQ(s.ecrit(0, 1000, 7), 1000);
  EXPECT_EQ(audio_out_written(s.p), 1000);
  EXPECT_EQ(audio_out_pump(s.p, nullptr), 0);
  EXPECT_EQ(audio_out_played(s.p), 0) << "nothing before the clock moves";
  jusqua(3000);
  EXPECT_EQ(audio_out_pump(s.p, nullptr), 0);
  EXPECT_EQ(audio_out_played(s.p), 3000);
  std::vector<uint8_t> b = s.joues();
  ASSERT_EQ(b.size(), 3000u);
  EXPECT_TRUE(tous(b, 0, 1000, 7));
  EXPECT_TRUE(tous(b, 1000, 3000, 0));
  // Written behind the player: it starts at the play position.
  EXPECT_EQ(s.ecrit(2000, 400, 9), 400);
  EXPECT_EQ(audio_out_written(s.p), 3400);
  jusqua(4000);
  audio_out_pump(s.p, nullptr);
  b = s.joues();
  ASSERT_EQ(b.size(), 4000u);
  EXPECT_TRUE(tous(b, 3000, 3400, 9));
  EXPECT_TRUE(tous(b, 3400, 4000, 0));
}

TEST(AudioOut, ALockAcrossTheEndOfTheRingIsTwoStretches) {
  Sortie s;
  ASSERT_NE(s.p, nullptr);
  const long long bord = AUDIO_OUT_RING - 400;
  jusqua(bord);
  audio_out_pump(s.p, nullptr);
  AudioOutStretch e[2];
  long long debut = 0;
  EXPECT_EQ(audio_out_lock(s.p, bord, 1000, e, &debut), 1000);
  EXPECT_EQ(debut, bord);
  EXPECT_EQ(e[0].n, 400);
  EXPECT_EQ(e[1].n, 600);
  for (int i = 0; i < 400; i++) e[0].p[i] = static_cast<uint8_t>(i % 200 + 1);
  for (int i = 0; i < 600; i++) e[1].p[i] = static_cast<uint8_t>((400 + i) % 200 + 1);
  audio_out_unlock(s.p, debut, 1000);
  jusqua(bord + 1000);
  audio_out_pump(s.p, nullptr);
  const std::vector<uint8_t> b = s.joues();
  ASSERT_EQ(b.size(), static_cast<size_t>(bord + 1000));
  for (int i = 0; i < 1000; i++) ASSERT_EQ(b[bord + i], i % 200 + 1) << i;
}

TEST(AudioOut, AWriterCatchingThePlayerIsHeldARingAhead) {
  Sortie s;
  ASSERT_NE(s.p, nullptr);
  jusqua(800);
  audio_out_pump(s.p, nullptr);
  // A ring ahead of the player is as far as a lock reaches.
  EXPECT_EQ(s.ecrit(800 + AUDIO_OUT_RING - 100, 1000, 3), 100);
  EXPECT_EQ(s.ecrit(800 + AUDIO_OUT_RING, 1000, 3), 0);
  EXPECT_EQ(s.ecrit(800, AUDIO_OUT_RING - 100, 5), AUDIO_OUT_RING - 100);
  // A writer that comes back over written bytes finds them as they are.
  AudioOutStretch e[2];
  long long debut = 0;
  EXPECT_EQ(audio_out_lock(s.p, 800 + AUDIO_OUT_RING - 200, 1000, e, &debut), 200);
  EXPECT_EQ(e[0].p[0], 5);
  EXPECT_EQ(e[0].n > 100 ? e[0].p[100] : e[1].p[100 - e[0].n], 3);
  audio_out_unlock(s.p, debut, 0);
  // Played, the bytes of the last lap read as silence to the next writer.
  jusqua(800 + AUDIO_OUT_RING);
  audio_out_pump(s.p, nullptr);
  std::vector<uint8_t> b = s.joues();
  ASSERT_EQ(b.size(), static_cast<size_t>(800 + AUDIO_OUT_RING));
  EXPECT_TRUE(tous(b, 800, 800 + AUDIO_OUT_RING - 100, 5));
  EXPECT_TRUE(tous(b, 800 + AUDIO_OUT_RING - 100, 800 + AUDIO_OUT_RING, 3));
  EXPECT_EQ(s.ecrit(800 + AUDIO_OUT_RING, 2000, 4), 2000);
}

TEST(AudioOut, ALongPauseIsOneRingOfSilence) {
  Sortie s;
  ASSERT_NE(s.p, nullptr);
  s.ecrit(0, 100, 1);
  jusqua(10LL * AUDIO_BYTES_PER_SECOND);
  audio_out_pump(s.p, nullptr);
  EXPECT_EQ(s.joues().size(), static_cast<size_t>(AUDIO_OUT_RING));
  // The clock goes on from there.
  jusqua(10LL * AUDIO_BYTES_PER_SECOND + 400);
  audio_out_pump(s.p, nullptr);
  EXPECT_EQ(s.joues().size(), static_cast<size_t>(AUDIO_OUT_RING + 400));
}

TEST(AudioOut, TheBackEndFollowsTheEnvironment) {
  std::string path;
  unsetenv("ORVELA_AUDIO");
  unsetenv("ORVELA_AUDIO_OUT");
  EXPECT_EQ(audio_sink(&path), AudioSource::alsa);
  setenv("ORVELA_AUDIO", "file:in.wav", 1);
  EXPECT_EQ(audio_sink(&path), AudioSource::none) << "a capture from a file plays nothing by default";
  setenv("ORVELA_AUDIO", "none", 1);
  EXPECT_EQ(audio_sink(&path), AudioSource::none);
  setenv("ORVELA_AUDIO_OUT", "alsa", 1);
  EXPECT_EQ(audio_sink(&path), AudioSource::alsa) << "chosen, whatever the capture";
  setenv("ORVELA_AUDIO_OUT", "file:out.wav", 1);
  EXPECT_EQ(audio_sink(&path), AudioSource::file);
  EXPECT_EQ(path, "out.wav");
  setenv("ORVELA_AUDIO_OUT", "pulse", 1);
  EXPECT_EQ(audio_sink(&path), AudioSource::unknown);
  EXPECT_EQ(path, "pulse");
  unsetenv("ORVELA_AUDIO");
  unsetenv("ORVELA_AUDIO_OUT");
}

TEST(AudioOut, AFileThatCannotBeMadeIsADeviceThatDoesNotOpen) {
  AudioOutStep step = AudioOutStep::format;
  std::string detail;
  EXPECT_EQ(audio_out_open_clock("/nonexistent/folder/out.wav", horloge, &step, &detail), nullptr);
  EXPECT_EQ(step, AudioOutStep::device);
  EXPECT_FALSE(detail.empty());
}

}  // namespace
