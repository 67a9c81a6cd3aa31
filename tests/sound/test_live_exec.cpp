// EXEC_AUDIO_1: what a volume's properties make of the live level.
#include <memory>

#include "kernel/vocab.h"
#include "platform/audio.h"
#include "scene/lookup.h"
#include "scene/volume.h"
#include "sound/live_capture.h"
#include "sound/live_exec.h"
#include "sound/live_state.h"
#include "sound_fixture.h"

namespace {

class LiveExecTest : public SoundTest {
 protected:
  void SetUp() override {
    SoundTest::SetUp();
    FreeDirectSound();
    live_audio() = *std::make_unique<LiveAudio>();
    ok("cube(1) dim(10)");
  }
  static Objet* cube() { return get_objet_id(chaine_classe(KW_vol), KW_vol, 1); }
  static std::vector<float> delta(int at) {
    const float* B = get_matrix_vol(cube());
    return {B[TR_DELTA + at], B[TR_DELTA + at + 1], B[TR_DELTA + at + 2]};
  }
};

TEST_F(LiveExecTest, TheLevelTimesTheAxesAndCoefficientsWithinTheLimits) {
  LiveAudio& a = live_audio();
  a.Niveau_moyen = 100;
  // Without `audio tran` or `audio rota` the volume is left alone.
  EXPECT_EQ(run("speed audio vol(1) = 1").out, "") << "a volume's property, not a sound's speed";
  const std::vector<float> vitesse = floats("speed audio vol(1)");
  ASSERT_FALSE(vitesse.empty());
  EXPECT_FLOAT_EQ(vitesse[0], 1);
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 0, 0}));
  ok("audio tran vol(1) = 1, -2, 0.5");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{100, -200, 50}));
  // The command's coefficient, the volume's own over it, then `coe tran`.
  EXEC_AUDIO_1(cube(), 0.5f);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{50, -100, 25}));
  ok("coe audio vol(1) = 2");
  ok("coe tran vol(1) = 0.1");
  EXEC_AUDIO_1(cube(), 0.5f);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{20, -40, 10}));
  // `limit tran` (m): -m .. m; (lo, hi) as given.
  ok("limit tran vol(1) = 15");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{15, -15, 10}));
  ok("limit tran vol(1) = -50, 12");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{12, -40, 10}));
  // Angles likewise, by their own coefficient.
  ok("audio rota vol(1) = 0, 0.5, 0");
  ok("coe rota vol(1) = 0.5");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_ROTX), (std::vector<float>{0, 50, 0}));
}

TEST_F(LiveExecTest, ASampleOfTheWindowAndASpeed) {
  LiveAudio& a = live_audio();
  a.Fenetre = 8;
  a.Niveau_moyen = 100;
  a.Signal[5] = 40;
  ok("audio tran vol(1) = 0, 1, 0");
  ok("audio win vol(1) = 5");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 40, 0}));
  // Outside the window: the mean.
  ok("audio win vol(1) = 8");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 100, 0}));
  // A quarter of the way at each call.
  ok("speed audio vol(1) = 0.25");
  a.Niveau_moyen = 0;
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 75, 0}));
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_FLOAT_EQ(delta(TR_TRAN)[1], 56.25f);
}

TEST_F(LiveExecTest, TheStepNeedsTheCaptureTheCommandAndTheFlag) {
  ok("audio tran vol(1) = 0, 1, 0");
  LiveAudio& a = live_audio();
  a.Niveau_moyen = 100;
  ok("audio exec vol(1) coe(2)");
  EXPECT_EQ(a.exec, 1);
  EXPECT_EQ(a.exec_vols, std::vector<int>{1});
  EXPECT_FLOAT_EQ(a.exec_coe, 2);
  EXEC_AUDIO();
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 0, 0})) << "no capture: nothing moves";
  // The capture on through a back end that has nothing new: the levels of
  // the window as it is (zeros) would give 0, so the test gives a mean by
  // a window of 200s.
  a.capture = audio_open_bytes(std::vector<uint8_t>(64, 0), [] { return 0.0; });
  a.on = 1;
  a.Fenetre = 4;
  for (int i = 0; i < 4; i++) a.Echantillons[i] = 200;
  Yes(KW_audio) = -1;
  EXEC_AUDIO();
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 0, 0})) << "the flag negative: nothing";
  Yes(KW_audio) = 0;
  EXEC_AUDIO();
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 400, 0}));
  ok("audio anc");
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 0, 0}));
  ok("audio STOP");
  EXEC_AUDIO();
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 0, 0})) << "stopped";
  FreeDirectSound();
}

}  // namespace
