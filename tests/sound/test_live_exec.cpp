// EXEC_AUDIO_1: what a volume's properties make of the live level.
#include <memory>

#include "kernel/vocab.h"
#include "platform/audio.h"
#include "scene/image_object.h"
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

TEST_F(LiveExecTest, TheMinimumMaximumAndChangeAddTheirPartsToTheScale) {
  LiveAudio& a = live_audio();
  a.Niveau_moyen = 100;
  a.Moyen_precedent = 90;
  a.Niveau_min = 10;
  a.Niveau_max = 200;
  ok("audio dila vol(1) = 0.01, 0, 0");
  ok("audio dila max vol(1) = 0, 0.01, 0");
  ok("audio dila min vol(1) = 0, 0, 0.1");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_DILA), (std::vector<float>{1, 2, 1}));
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{0, 0, 0})) << "an undriven part is left alone";
  // Each form adds its part; `rand` is the mean's change, or with
  // `audio win` the sample of the difference of two windows.
  ok("audio tran vol(1) = 1, 0, 0");
  ok("audio tran rand vol(1) = 1, 1, 0");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{110, 10, 0}));
  a.Fenetre = 4;
  a.Signal[2] = 30;
  a.Derivee[2] = -5;
  ok("audio win vol(1) = 2");
  ok("limit dila vol(1) = 1.5");
  ok("coe dila vol(1) = 2");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{25, -5, 0}));
  expect_floats(delta(TR_DILA), {0.6f, 1.5f, 1.5f}, "bounded and scaled");
  ok("audio anc");
  EXPECT_EQ(delta(TR_DILA), (std::vector<float>{0, 0, 0}));
}

TEST_F(LiveExecTest, AFunctionOfTheLevelsGivesTheNineParts) {
  LiveAudio& a = live_audio();
  a.Niveau_moyen = 50;
  a.Niveau_min = 5;
  a.Niveau_max = 80;
  ok("func=\"bouge(v){return(v[0], v[1], v[3] - v[2], 0, 0, 90, 0.5)}\"");
  ok("meta func vol(1) = \"bouge\"");
  ok("coe audio vol(1) = 2");
  ok("limit rota vol(1) = 45");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{1, 100, 75}));
  EXPECT_EQ(delta(TR_ROTX), (std::vector<float>{0, 0, 45})) << "the limits bound the function's parts too";
  EXPECT_EQ(delta(TR_DILA), (std::vector<float>{0.5f, 0, 0}));
  // Added to what the properties drive.
  ok("audio tran vol(1) = 0, 0, 1");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{1, 100, 175}));
  // Another function under the same property is found again.
  ok("func=\"autre(v){return(-1)}\"");
  ok("meta func vol(1) = \"autre\"");
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(delta(TR_TRAN), (std::vector<float>{-1, 0, 100}));
  // An unknown name is told once, not at every image.
  ok("meta func vol(1) = \"personne\"");
  Capture sortie;
  EXEC_AUDIO_1(cube(), 1);
  EXEC_AUDIO_1(cube(), 1);
  const std::string dit = sortie.take();
  EXPECT_EQ(dit.find("personne"), dit.rfind("personne")) << dit;
  EXPECT_NE(dit.find("personne"), std::string::npos) << dit;
}

TEST_F(LiveExecTest, AFunctionThatRemovesItsVolumeEndsItsStep) {
  live_audio().Niveau_moyen = 10;
  ok("cube(2) dim(5)");
  ok("func=\"fin(v){rem vol(v[0]); return(1, 2, 3)}\"");
  ok("meta func vol(1,2) = \"fin\"");
  ok("audio exec");
  LiveAudio& a = live_audio();
  a.capture = audio_open_bytes(std::vector<uint8_t>(64, 0), [] { return 0.0; });
  a.on = 1;
  EXEC_AUDIO();
  EXPECT_EQ(cube(), nullptr);
  EXPECT_EQ(get_objet_id(chaine_classe(KW_vol), KW_vol, 2), nullptr);
  FreeDirectSound();
}

TEST_F(LiveExecTest, TheLevelChoosesTheImageAVolumeWears) {
  LiveAudio& a = live_audio();
  ok("audio image vol(1) = 11, 12, 13");
  // No table: one is made on the first call, a bound every 25 from 0.
  a.Niveau_moyen = 30;
  Yes(KW_debug) = 1;
  Capture sortie;
  EXEC_AUDIO_1(cube(), 1);
  const std::string trace = sortie.take();
  Yes(KW_debug) = 0;
  EXPECT_EQ(trace, "AUDIO_IMAGE\nlu(30.000000) per(25.000000)\ni(1) num(12)\n");
  EXPECT_EQ(floats("audio period vol(1)"), (std::vector<float>{0, 25, 50}));
  EXPECT_EQ(floats("texture vol(1)"), std::vector<float>{12});
  // A table of one's own; below its first bound, the first image.
  ok("audio period vol(1) = 100, 150, 160");
  a.Niveau_moyen = 155;
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(floats("texture vol(1)"), std::vector<float>{12});
  a.Niveau_moyen = 500;
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(floats("texture vol(1)"), std::vector<float>{13});
  a.Niveau_moyen = 3;
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(floats("texture vol(1)"), std::vector<float>{11});
  // A negative first value asks for the automatic table again.
  ok("audio period vol(1) = -1");
  a.Niveau_moyen = 60;
  EXEC_AUDIO_1(cube(), 1);
  EXPECT_EQ(floats("audio period vol(1)"), (std::vector<float>{0, 25, 50}));
  EXPECT_EQ(floats("texture vol(1)"), std::vector<float>{13});
  // `audio anc` clears only the parts that sound drives.
  get_matrix_vol(cube())[TR_DELTA + TR_DILA] = 0.5f;
  ok("audio anc");
  EXPECT_FLOAT_EQ(delta(TR_DILA)[0], 0.5f);
}

TEST_F(LiveExecTest, AnImageShowsThePixelsOfTheImageTheLevelChooses) {
  ok("image(21) dim(4,4) col(1,0,0)");
  ok("image(22) dim(4,4) col(0,0,1)");
  ok("image(23) dim(8,8) col(0,1,0)");
  ok("image(20) dim(4,4)");
  ok("audio image image(20) = 21, 22, 23");
  ok("audio exec image(20)");
  LiveAudio& a = live_audio();
  a.capture = audio_open_bytes(std::vector<uint8_t>(64, 0), [] { return 0.0; });
  a.on = 1;
  a.Fenetre = 4;
  auto pixel = [] {
    const uint8_t* p = octets(pixels_lecture(image_numero(20)));
    return std::vector<int>{p[0], p[1], p[2]};
  };
  const int version = image_numero(20)->work[IW_VERSION];
  for (int i = 0; i < 4; i++) a.Echantillons[i] = 30;
  EXEC_AUDIO();
  EXPECT_EQ(pixel(), (std::vector<int>{0, 0, 255}));
  EXPECT_TRUE(nil("texture vol(1)")) << "an image list alone leaves the volumes";
  const int changed = image_numero(20)->work[IW_VERSION];
  EXPECT_NE(changed, version);
  EXEC_AUDIO();
  EXPECT_EQ(image_numero(20)->work[IW_VERSION], changed) << "the same image again is not rewritten";
  // An image of another size is not shown.
  for (int i = 0; i < 4; i++) a.Echantillons[i] = 100;
  EXEC_AUDIO();
  EXPECT_EQ(pixel(), (std::vector<int>{0, 0, 255}));
  for (int i = 0; i < 4; i++) a.Echantillons[i] = 0;
  EXEC_AUDIO();
  EXPECT_EQ(pixel(), (std::vector<int>{255, 0, 0}));
  FreeDirectSound();
}

TEST_F(LiveExecTest, TheScalesOfSoundGiveTheirPair) {
  ok("scale(1)");
  ok("scale(2)");
  ok("audio inv scale(1) = 0, 255");
  ok("audio max scale(2) = 7");
  EXPECT_EQ(floats("audio inv scale(1)"), (std::vector<float>{0, 255}));
  EXPECT_EQ(floats("audio max scale(1,2)"), std::vector<float>{7});
  EXPECT_TRUE(nil("audio max scale(1)")) << "a missing pair";
  EXPECT_NE(run("audio inv scale(1,9)").out.find("NOT FOUND"), std::string::npos);
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
