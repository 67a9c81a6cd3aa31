// The live path at the console with no sound card: a square wave in a WAV
// file played by the file back end, read through the "AUD" device and the
// `audio` command; the capture's failures; the file's conversion.
#include <chrono>
#include <cstdlib>
#include <memory>
#include <set>
#include <thread>

#include "device/device_table.h"
#include "platform/audio.h"
#include "sound/live_capture.h"
#include "sound/live_state.h"
#include "sound/live_fixture.h"

namespace {

class LiveCommandTest : public SoundTest {
 protected:
  void SetUp() override {
    SoundTest::SetUp();
    FreeDirectSound();
    live_audio() = *std::make_unique<LiveAudio>();
    put(at("carre.wav"), carre_wav(1));
    setenv("ORVELA_AUDIO", ("file:" + at("carre.wav")).c_str(), 1);
    // The capture's own failures, whatever the playback device would do.
    setenv("ORVELA_AUDIO_OUT", "none", 1);
  }
  void TearDown() override {
    {
      Capture quiet;
      fermer_device(1);
    }
    FreeDirectSound();
    unsetenv("ORVELA_AUDIO");
    unsetenv("ORVELA_AUDIO_OUT");
    SoundTest::TearDown();
  }
  // More than a window of bytes comes in meanwhile: the next poll's
  // window is whole periods of the wave.
  static void attend() { std::this_thread::sleep_for(std::chrono::milliseconds(30)); }
};

TEST_F(LiveCommandTest, ASquareWaveGivesItsLevelsThroughTheDeviceAndTheCommand) {
  Outcome o = run("device(1) ini(\"AUD\") dim(10) coe(2) tran(1)");
  ASSERT_EQ(o.status, 0) << o.out;
  EXPECT_NE(o.out.find("Fenetre d'echantillonnage = 1024\n"), std::string::npos) << o.out;
  attend();
  expect_floats(floats("device(1)"), {(127.75f + 1) * 2, (16 + 1) * 2, (240 + 1) * 2}, "device read, mapped");
  attend();
  expect_floats(floats("audio read"), {127.75f, 16, 240}, "audio read");
  EXPECT_FLOAT_EQ(one("audio module"), 127.75f);
  EXPECT_FLOAT_EQ(one("audio min"), 16);
  EXPECT_FLOAT_EQ(one("audio max"), 240);
  EXPECT_FLOAT_EQ(one("audio status"), 1);
  EXPECT_FLOAT_EQ(one("audio dim"), 1024);
  EXPECT_GE(one("audio NP"), 1024);
  // The window itself: a quarter of it each of the four byte values.
  attend();
  const std::vector<float> w = floats("audio read var");
  ASSERT_EQ(w.size(), 1024u);
  for (float b : {16.0f, 64.0f, 240.0f, 191.0f}) EXPECT_EQ(std::count(w.begin(), w.end(), b), 256) << b;
  // Its spectrum: bin 0 the sum, with bars high enough to keep it.
  ok("audio ini sort(1000)");
  attend();
  const std::vector<float> sp = floats("audio read sort");
  ASSERT_EQ(sp.size(), 2048u);
  EXPECT_FLOAT_EQ(sp[0], 127.75f * 1024);
  // The change since the last window: differences of the four values.
  attend();
  const std::vector<float> d = floats("audio read rand");
  ASSERT_EQ(d.size(), 1024u);
  std::set<float> ecarts;
  for (float a : {16.0f, 64.0f, 240.0f, 191.0f})
    for (float b : {16.0f, 64.0f, 240.0f, 191.0f}) ecarts.insert(a - b);
  for (float x : d) ASSERT_TRUE(ecarts.count(x)) << x;
  expect_floats(floats("audio precision"), {1024 / 88200.0f, 88200 / 1024.0f}, "precision");
  EXPECT_EQ(floats("audio max(5)").size(), 5u);
  const float crossing = one("audio puls(100, 10)");
  EXPECT_GE(crossing, 0);
  EXPECT_LT(crossing, 1024);
}

TEST_F(LiveCommandTest, SettingsChangeTheReading) {
  ok("audio ini dim(10) tran(128) limit(50, 100) average(3)");
  attend();
  // |16 - 128| = 112 and |240 - 128| = 112 over the limit, 64 - 128 = 64,
  // 191 - 128 = 63: all kept between the bars.
  std::vector<float> v;
  for (int i = 0; i < 3; i++) {
    v = floats("audio read");
    attend();
  }
  expect_floats(v, {(100 + 64 + 100 + 63) / 4.0f, 63, 100}, "three windows in the ring");
  EXPECT_EQ(floats("audio ring").size(), 9u);
  EXPECT_EQ(floats("audio read average").size(), 3u);
  ok("audio ini normal(1)");
  // `audio read average` polled just now: without the wait the next
  // window would be few new bytes before the old ones, a broken period.
  attend();
  for (int i = 0; i < 3; i++) {
    v = floats("audio read");
    attend();
  }
  expect_floats(v, {(100 + 64 + 100 + 63) / 4.0f / 255, 63 / 255.0f, 100 / 255.0f}, "normalised");
  const std::string e = run("audio edit").out;
  EXPECT_NE(e.find("limit = 100.000000\n"), std::string::npos) << e;
  EXPECT_NE(e.find("Normalise = 1\n"), std::string::npos) << e;
}

// The device's `audio` hands its settings to the analysis, but its `coe`
// and `tran` stay the mapping of its values.
TEST_F(LiveCommandTest, TheDeviceHandsItsAudioSettingsOver) {
  ok("device(1) ini(\"AUD\") dim(10) coe(2) audio limit(0, 100)");
  attend();
  // 16, 64, 240 and 191 limited to 100: the mean 70.
  expect_floats(floats("device(1)"), {140, 32, 200}, "limited, then mapped");
  const std::string e = run("audio edit").out;
  EXPECT_NE(e.find("gain = 1.000000\n"), std::string::npos) << e;
  EXPECT_NE(e.find("limit = 100.000000\n"), std::string::npos) << e;
}

TEST_F(LiveCommandTest, StoppedOrNeverStartedTheReadingsReportSoundOff) {
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  EXPECT_FLOAT_EQ(one("audio dim"), 1024) << "the window answers without the capture";
  EXPECT_NE(fails("audio read").find("audio  SOUND OFF"), std::string::npos);
  EXPECT_NE(fails("audio module").find("SOUND OFF"), std::string::npos);
  ok("device(1) ini(\"AUD\") dim(4)");
  EXPECT_FLOAT_EQ(one("audio dim"), 16);
  // Opened again: the earlier capture is freed first.
  Outcome o = run("device(1) ini(\"AUD\") dim(20)");
  EXPECT_NE(o.out.find("FreeDirectSound\nFenetre d'echantillonnage = 16384\n"), std::string::npos) << o.out;
  EXPECT_EQ(run("audio end").out, "FreeDirectSound\n");
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  Outcome r = run("device(1)");
  EXPECT_NE(r.out.find("SOUND OFF"), std::string::npos) << r.out;
  EXPECT_NE(fails("audio puls").find("audio puls(level, tolerance[, passes])"), std::string::npos);
}

TEST_F(LiveCommandTest, ABackEndThatCannotStartLeavesAudioOff) {
  setenv("ORVELA_AUDIO", "none", 1);
  Outcome o = run("device(1) ini(\"AUD\") dim(10)");
  EXPECT_NE(o.out.find("Fenetre d'echantillonnage = 1024\nERROR InitDirectSound"), std::string::npos) << o.out;
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  setenv("ORVELA_AUDIO", ("file:" + at("nothing.wav")).c_str(), 1);
  o = run("audio ini dim(10)");
  EXPECT_NE(o.out.find("ERROR DirectSoundCaptureCreate"), std::string::npos) << o.out;
  EXPECT_NE(o.out.find("ERROR InitDirectSound"), std::string::npos) << o.out;
  put(at("texte.wav"), Octets(100, 'x'));
  setenv("ORVELA_AUDIO", ("file:" + at("texte.wav")).c_str(), 1);
  o = run("audio ini dim(10)");
  EXPECT_NE(o.out.find("BADLY FORMATED FILE"), std::string::npos) << o.out;
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  setenv("ORVELA_AUDIO", "jack", 1);
  o = run("audio ini dim(10)");
  EXPECT_NE(o.out.find("ORVELA_AUDIO=jack: alsa, none or file:PATH.wav\n"), std::string::npos) << o.out;
}

// Where ALSA has no card, as on the machines that run these tests, the
// device says so and audio stays off; where it has one, this test has
// nothing to show.
TEST_F(LiveCommandTest, AlsaWithoutACardSaysSo) {
  std::string step, detail;
  if (AudioCapture* c = audio_open_alsa(&step, &detail)) {
    audio_close(c);
    GTEST_SKIP() << "this machine has a capture device";
  }
  setenv("ORVELA_AUDIO", "alsa", 1);
  Outcome o = run("device(1) ini(\"AUD\") dim(10)");
  const std::string attendu = step == "open" ? "ERROR DirectSoundCaptureCreate" : "ERROR SetFormat";
  EXPECT_NE(o.out.find("Fenetre d'echantillonnage = 1024\n" + attendu), std::string::npos) << o.out;
  if (!detail.empty()) {
    EXPECT_EQ(o.out.find(detail), std::string::npos) << "ALSA's words only under debug";
  }
  EXPECT_FLOAT_EQ(one("audio status"), 0);
  EXPECT_NE(run("device(1)").out.find("SOUND OFF"), std::string::npos);
}

TEST(LiveFile, SoundsAreBroughtToTheCaptureFormat) {
  // 8-bit mono at 11025 Hz: centred, widened to 16 bits, both channels,
  // twice the frames by interpolation.
  const Octets f = wav(1, 11025, 8, {128 + 64, 128 - 64});
  std::string why;
  const std::vector<uint8_t> pcm = pcm_capture(f.data(), f.size(), &why);
  const Octets attendu = le16({16384, 16384, 0, 0, -16384, -16384, -16384, -16384});
  EXPECT_EQ(pcm, attendu);
  // Stereo 16 bits at 22050 passes as it is.
  const Octets s = le16({1, -2, 300, -400});
  EXPECT_EQ(pcm_capture(wav(2, 22050, 16, s).data(), 44 + s.size(), &why), s);
  // Not a sound, or a sound with no sample.
  EXPECT_TRUE(pcm_capture(reinterpret_cast<const uint8_t*>("RIFF"), 4, &why).empty());
  EXPECT_TRUE(pcm_capture(wav(2, 22050, 16, {}).data(), 44, &why).empty());
  EXPECT_EQ(why, "(no samples)");
}

}  // namespace
