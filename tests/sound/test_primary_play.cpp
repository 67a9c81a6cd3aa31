// What plays into the primary buffer, read back from its ring before the
// device plays it: the beep path's tones, the sounds that play along the
// animation, the `audio play` table, and the failures of the device.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "device/device_table.h"
#include "interaction/loop_state.h"
#include "platform/audio_out.h"
#include "sound/fft.h"
#include "sound/live_capture.h"
#include "sound/primary_buffer.h"
#include "sound/primary_play.h"
#include "sound/sound_fixture.h"
#include "sound/sound_play.h"
#include "support/capture.h"

namespace {

class PrimaryTest : public SoundTest {
 protected:
  void SetUp() override {
    SoundTest::SetUp();
    FreeDirectSound();
    primaire() = PrimaryBuffer{};
    setenv("ORVELA_AUDIO_OUT", "none", 1);
  }
  void TearDown() override {
    FreeDirectSound();
    primaire() = PrimaryBuffer{};
    loop().notes.clear();
    unsetenv("ORVELA_AUDIO_OUT");
    SoundTest::TearDown();
  }
  // The left channel of the written bytes, from the play position.
  static std::vector<int> gauche() {
    AudioPlayback* p = primaire().sortie;
    std::vector<int> v;
    if (!p) return v;
    AudioOutStretch s[2];
    const long long joues = audio_out_played(p);
    audio_out_lock(p, joues, static_cast<int>(audio_out_written(p) - joues), s, nullptr);
    for (const AudioOutStretch& e : s)
      for (int i = 0; i + 3 < e.n; i += 4) v.push_back(static_cast<int16_t>(e.p[i] | e.p[i + 1] << 8));
    return v;
  }
  // The frequency of the largest bin of 1024 samples from `from`.
  static float frequence(const std::vector<int>& v, size_t from) {
    std::vector<float> re(1024), im(1024);
    for (size_t i = 0; i < 1024; i++) re[i] = static_cast<float>(v.at(from + i));
    EXPECT_EQ(fft_float(1024, 0, re.data(), nullptr, re.data(), im.data()), 0);
    int best = 1;
    for (int k = 1; k < 512; k++)
      if (std::hypot(re[k], im[k]) > std::hypot(re[best], im[best])) best = k;
    return best * 22050.0f / 1024;
  }
  static int pic(const std::vector<int>& v, size_t from, size_t to) {
    int m = 0;
    for (size_t i = from; i < to && i < v.size(); i++) m = std::max(m, std::abs(v[i]));
    return m;
  }
};

TEST_F(PrimaryTest, ABeepIsASineWithSoftEdgesQueuedAfterTheLastOne) {
  ASSERT_TRUE(bip_primaire(1000, 100));
  ASSERT_NE(primaire().sortie, nullptr) << "opened on demand";
  std::vector<int> v = gauche();
  ASSERT_EQ(v.size(), 2205u) << "100 ms at 22050 Hz";
  EXPECT_NEAR(frequence(v, 500), 1000, 22050.0 / 1024);
  EXPECT_EQ(v[0], 0);
  EXPECT_LT(pic(v, 0, 20), 2500) << "it fades in";
  EXPECT_LT(pic(v, 2185, 2205), 2500) << "and out";
  EXPECT_NEAR(pic(v, 500, 1500), 12000, 20);
  // The next tone follows it.
  ASSERT_TRUE(bip_primaire(2000, 50));
  v = gauche();
  ASSERT_EQ(v.size(), 2205u + 1102u);
  EXPECT_LT(pic(v, 2195, 2215), 2500);
  EXPECT_NEAR(pic(v, 2400, 3200), 12000, 20);
  // Queued faster than they play, tones stop at a quarter of a second;
  // the longest, a second, still goes in whole.
  for (int i = 0; i < 20; i++) EXPECT_TRUE(bip_primaire(500, 40));
  EXPECT_LE(primaire().curseur_bip, 88200 / 4 + 3528);
  EXPECT_GE(primaire().curseur_bip, 88200 / 4 - 3528);
  FreeDirectSound();
  ASSERT_TRUE(bip_primaire(500, 1000));
  EXPECT_EQ(gauche().size(), 22050u);
}

TEST_F(PrimaryTest, APlayingSoundIsHeardInTheTimeOfEachImage) {
  // 441 Hz at half the full scale, 44100 Hz mono: 882 frames an image at
  // 22050 Hz, every other sample of it.
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) sin(441, 0.5); dynamic audio(1) = 1;");
  joue_sons();
  joue_sons();
  std::vector<int> v = gauche();
  ASSERT_EQ(v.size(), 2u * 882);
  int ecart = 0;
  for (int j = 0; j < 1764; j++)
    ecart = std::max(ecart, std::abs(v[j] - static_cast<int>(std::lround(16384 * std::sin(2 * M_PI * 441 * j / 22050)))));
  EXPECT_LE(ecart, 1);
  // At 2 images an image, the next image holds two: an octave higher.
  ok("dynamic audio(1) = 2;");
  joue_sons();
  v = gauche();
  ASSERT_EQ(v.size(), 3u * 882);
  for (int j = 0; j < 882; j++)
    ASSERT_NEAR(v[1764 + j], 16384 * std::sin(2 * M_PI * 441 * (1764 + 2 * j) / 22050), 1.5) << j;
  // Two sounds at the full scale, in phase, add up and are held within
  // 16 bits.
  ok("dynamic audio(1) = 0;");
  for (int id : {2, 3})
    ok("generate audio(" + std::to_string(id) + ") dim(1); generate audio(" + std::to_string(id) +
       ") time(0, 25) sin(441, 1); dynamic audio(" + std::to_string(id) + ") = 1;");
  joue_sons();
  v = gauche();
  ASSERT_EQ(v.size(), 4u * 882);
  for (int j = 0; j < 882; j++) {
    const double x = 2 * 32767 * std::sin(2 * M_PI * 441 * j / 22050);
    ASSERT_NEAR(v[3 * 882 + j], std::clamp(x, -32768.0, 32767.0), 2) << j;
  }
  EXPECT_GE(pic(v, 3 * 882, 4 * 882), 32767);
}

TEST_F(PrimaryTest, AudioPlaySetsTheNoteTable) {
  ok("audio play(440, 880.5) time(80) speed(0.5)");
  const InteractionState& L = loop();
  EXPECT_EQ(L.notes, (std::vector<float>{440, 880.5f}));
  EXPECT_EQ(L.duree_note, 80);
  EXPECT_EQ(L.pas_note, 0.5f);
  ok("audio play(300)");
  EXPECT_EQ(L.notes, std::vector<float>{300});
  EXPECT_EQ(L.duree_note, 40) << "one image by default";
  EXPECT_EQ(L.pas_note, 1);
  // Bad values are refused with the usage, the table unchanged.
  for (const char* bad : {"audio play(440, 5)", "audio play(440, 20000)", "audio play(\"la\")",
                          "audio play(440) time(0)", "audio play(440) time(1001)", "audio play(440) time(\"x\")",
                          "audio play(440) speed(\"x\")"}) {
    Outcome r = run(bad);
    EXPECT_NE(r.status, 0) << bad;
    EXPECT_NE(r.out.find("audio play(f1, f2, ...) [time(ms)] [speed(step)]: frequencies from 20 to 11025 Hz"),
              std::string::npos)
        << bad << ": " << r.out;
    EXPECT_EQ(L.notes, std::vector<float>{300}) << bad;
  }
  ok("audio play");
  EXPECT_TRUE(L.notes.empty());
}

// Where the playback device cannot open, the set-up fails at its first
// step and audio stays off; the beep falls back to the bell with one
// message.
TEST_F(PrimaryTest, ADeviceThatCannotOpenLeavesAudioOff) {
  setenv("ORVELA_AUDIO", "none", 1);
  setenv("ORVELA_AUDIO_OUT", "file:/nonexistent/folder/out.wav", 1);
  Outcome r = run("audio ini dim(10)");
  EXPECT_NE(r.out.find("Fenetre d'echantillonnage = 1024\nERROR DirectSoundCreate\nERROR InitDirectSound\n"),
            std::string::npos)
      << r.out;
  EXPECT_EQ(r.out.find("nonexistent"), std::string::npos) << "the system's words only under debug";
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  EXPECT_EQ(primaire().sortie, nullptr);
  {
    Capture c;
    EXPECT_FALSE(bip_primaire(440, 40)) << "refused by the set-up: the bell rings";
    EXPECT_EQ(c.take(), "");
  }
  ok("audio play(440)");
  {
    Capture c;
    EXPECT_FALSE(bip_primaire(440, 40));
    EXPECT_FALSE(bip_primaire(440, 40));
    EXPECT_EQ(debut_image_sons(), -1);
    EXPECT_EQ(c.take(), "ERROR DirectSoundCreate\n") << "once (its bell dropped with `ring` off)";
  }
  setenv("ORVELA_AUDIO_OUT", "pulse", 1);
  r = run("audio ini dim(10)");
  EXPECT_NE(r.out.find("ORVELA_AUDIO_OUT=pulse: alsa, none or file:PATH.wav\nERROR DirectSoundCreate"),
            std::string::npos)
      << r.out;
  unsetenv("ORVELA_AUDIO");
}

TEST_F(PrimaryTest, AlsaWithoutACardSaysSo) {
  AudioOutStep step;
  std::string detail;
  if (AudioPlayback* p = audio_out_open_alsa(&step, &detail)) {
    audio_out_close(p);
    GTEST_SKIP() << "this machine has a playback device";
  }
  setenv("ORVELA_AUDIO_OUT", "alsa", 1);
  Outcome r = run("device(1) ini(\"AUD\") dim(10)");
  const std::string attendu = step == AudioOutStep::device ? "ERROR DirectSoundCreate" : "ERROR SetFormat";
  EXPECT_NE(r.out.find("Fenetre d'echantillonnage = 1024\n" + attendu + "\nERROR InitDirectSound"), std::string::npos)
      << r.out;
  EXPECT_EQ(r.out.find("DirectSoundCaptureCreate"), std::string::npos) << "the playback device comes first";
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  {
    Capture quiet;
    fermer_device(1);
  }
  // Under `debug`, ALSA's own words follow.
  primaire().refus = 0;
  ok("yes debug");
  Capture c;
  EXPECT_FALSE(bip_primaire(440, 40));
  const std::string out = c.take();
  ok("no debug");
  EXPECT_EQ(out, attendu + "\n" + detail + "\n");
}

}  // namespace
