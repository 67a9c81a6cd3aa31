// The capture ring and its back end of given bytes, paced by a clock the
// test moves.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/audio.h"

namespace {

double temps = 0;
double horloge() { return temps; }

std::vector<uint8_t> rampe(size_t n) {
  std::vector<uint8_t> b(n);
  for (size_t i = 0; i < n; i++) b[i] = static_cast<uint8_t>(i % 251);
  return b;
}

std::vector<uint8_t> prend(AudioCapture* c, int n) {
  AudioStretch s[2];
  const int k = audio_lock(c, n, s);
  std::vector<uint8_t> out(s[0].p, s[0].p + s[0].n);
  out.insert(out.end(), s[1].p, s[1].p + s[1].n);
  EXPECT_EQ(static_cast<int>(out.size()), k);
  audio_unlock(c, k);
  return out;
}

TEST(AudioBytes, DeliversWhatTheClockMadeDueAndLoops) {
  temps = 8;
  const std::vector<uint8_t> src = rampe(4000);
  AudioCapture* c = audio_open_bytes(src, horloge);
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(audio_pending(c, nullptr), 0) << "nothing before the clock moves";
  temps += 1.0 / 64;  // 1378.125 bytes, 1376 in whole frames
  EXPECT_EQ(audio_pending(c, nullptr), 1376);
  std::vector<uint8_t> got = prend(c, 1376);
  EXPECT_EQ(got, std::vector<uint8_t>(src.begin(), src.begin() + 1376));
  EXPECT_EQ(audio_read_position(c), 1376);
  // Past the end of the source it starts again from its beginning.
  temps = 8 + 1.0 / 16;  // 5512 bytes due in all
  const int n = audio_pending(c, nullptr);
  EXPECT_EQ(n, 5512 - 1376);
  got = prend(c, n);
  for (int i = 0; i < n; i++) ASSERT_EQ(got[i], src[(1376 + i) % src.size()]) << i;
  audio_close(c);
}

TEST(AudioBytes, ALockTakesAtMostWhatWaitsAndWrapsTheRing) {
  temps = 0;
  AudioCapture* c = audio_open_bytes(rampe(3 * AUDIO_RING), horloge);
  ASSERT_NE(c, nullptr);
  temps = 0.5;
  ASSERT_EQ(audio_pending(c, nullptr), 44100);
  AudioStretch s[2];
  EXPECT_EQ(audio_lock(c, 100000, s), 44100) << "no more than waits";
  audio_unlock(c, 44100);
  temps = 1.25;  // 110250 due, 110248 in whole frames: the ring wraps
  ASSERT_EQ(audio_pending(c, nullptr), 66148);
  EXPECT_EQ(audio_lock(c, 66148, s), 66148);
  EXPECT_EQ(s[0].n, AUDIO_RING - 44100);
  EXPECT_EQ(s[1].n, 66148 - (AUDIO_RING - 44100));
  EXPECT_EQ(s[1].p[0], static_cast<uint8_t>(AUDIO_RING % 251)) << "the wrapped part holds what follows";
  audio_unlock(c, 66148);
  EXPECT_EQ(audio_read_position(c), 110248 - AUDIO_RING);
  audio_close(c);
}

TEST(AudioBytes, ALongPauseKeepsTheLastSecond) {
  temps = 0;
  AudioCapture* c = audio_open_bytes(rampe(1000), horloge);
  temps = 5;
  EXPECT_EQ(audio_pending(c, nullptr), AUDIO_RING);
  AudioStretch s[2];
  audio_lock(c, 4, s);
  // 5 seconds made: the last ring starts at byte 4 * 88200 of the loop.
  EXPECT_EQ(s[0].p[0], static_cast<uint8_t>((4 * AUDIO_RING % 1000) % 251));
  audio_close(c);
}

TEST(AudioBytes, NoWholeFrameIsNoSource) {
  EXPECT_EQ(audio_open_bytes({1, 2, 3}, horloge), nullptr);
  EXPECT_EQ(audio_open_bytes({}, horloge), nullptr);
}

TEST(AudioSource, TheEnvironmentChoosesTheBackEnd) {
  std::string path;
  setenv("ORVELA_AUDIO", "file:/tmp/x.wav", 1);
  EXPECT_EQ(audio_source(&path), AudioSource::file);
  EXPECT_EQ(path, "/tmp/x.wav");
  setenv("ORVELA_AUDIO", "none", 1);
  EXPECT_EQ(audio_source(&path), AudioSource::none);
  setenv("ORVELA_AUDIO", "alsa", 1);
  EXPECT_EQ(audio_source(&path), AudioSource::alsa);
  setenv("ORVELA_AUDIO", "pulse", 1);
  EXPECT_EQ(audio_source(&path), AudioSource::unknown);
  unsetenv("ORVELA_AUDIO");
  EXPECT_EQ(audio_source(&path), AudioSource::alsa);
}

// ALSA opens where there is a card; where there is none it says which
// step failed and why, and prints nothing itself.
TEST(AudioAlsa, OpensOrSaysWhy) {
  std::string step, detail;
  AudioCapture* c = audio_open_alsa(&step, &detail);
  if (c) {
    EXPECT_GE(audio_pending(c, nullptr), 0);
    audio_close(c);
  } else {
    EXPECT_TRUE(step == "open" || step == "format") << step;
    EXPECT_FALSE(detail.empty());
  }
}

}  // namespace
