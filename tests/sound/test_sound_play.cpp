// Sounds along the animation: the place of a playing sound, volumes whose
// scale follows a sound's level, and a sound drawn as a volume of lines.
#include <gtest/gtest.h>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "scene/lookup.h"
#include "scene/volume.h"
#include "sound/sound_play.h"
#include "sound_fixture.h"

namespace {

Objet* vol(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }
float delta_dila(int id, int axis = 0) { return get_matrix_vol(vol(id))[TR_DELTA + TR_DILA + axis]; }

}  // namespace

TEST_F(SoundTest, APlayingSoundMovesOnEachImage) {
  ok("generate audio(1) dim(1); generate audio(2) dim(1);");
  ok("dynamic audio(1) = 1; dynamic audio(2) = 0;");
  for (int i = 0; i < 3; i++) etape_son();
  EXPECT_EQ(position_son(audio_numero(1)), 3);
  EXPECT_EQ(position_son(audio_numero(2)), 0);
  // Twice as fast, and from the start again past the end (25 images).
  ok("dynamic audio(1) = 2;");
  for (int i = 0; i < 12; i++) etape_son();
  EXPECT_EQ(position_son(audio_numero(1)), 2);
  EXPECT_EQ(floats("time audio(1)")[2], 2);
  expect_floats(floats("dynamic audio(1)"), {2}, "its dynamic value");
}

TEST_F(SoundTest, FollowingVolumesScaleWithTheLevel) {
  // Image 0 silent, image 1 at half the full scale, image 2 at full scale.
  ok("generate audio(1) dim(1); generate audio(1) time(1, 2) puls(0, 0.5, 1); generate audio(1) time(2, 3) puls(0, 1, 1);");
  ok("cube(5) dim(1); cube(6) dim(1); follow vol(5, 6) audio(1) coe(2);");
  expect_floats(floats("follow audio(1)"), {5, 2, 6, 2}, "the links and their gains");
  // The link makes the sound play: a step moves it to image 1.
  etape_son();
  EXPECT_NEAR(delta_dila(5), 2 * 16384 / 32767.0, 1e-4);
  EXPECT_NEAR(delta_dila(6, 2), 2 * 16384 / 32767.0, 1e-4);
  ok("follow vol(6) audio(1) = 3;");
  etape_son();
  EXPECT_NEAR(delta_dila(5), 2, 1e-5);
  EXPECT_NEAR(delta_dila(6), 3, 1e-5);
  // The user's own scale stays apart.
  EXPECT_EQ(get_matrix_vol(vol(5))[TR_DILA], 1);
  // Written at once, without a step; renumbered, the sound keeps its volumes.
  get_matrix_vol(vol(5))[TR_DELTA + TR_DILA] = 0;
  ok("follow vol audio(1) write; move audio(1, 4);");
  EXPECT_NEAR(delta_dila(5), 2, 1e-5);
  expect_floats(floats("follow audio(4)"), {5, 2, 6, 3}, "the links under the new number");
  EXPECT_TRUE(nil("follow audio(1)"));
  ok("move audio(4, 1);");
  // Unlinked: the animation's part goes back to 0 and stays there.
  ok("follow vol(5) audio(1) cut;");
  etape_son();
  EXPECT_EQ(delta_dila(5), 0);
  EXPECT_EQ(delta_dila(6), 0);  // image 3 is silent
  expect_floats(floats("follow audio(1)"), {6, 3}, "the link left");
  // A removed volume or sound is passed over.
  ok("rem vol(6); clean audio(1);");
  etape_son();
  EXPECT_NE(fails("follow vol(5) audio(1)").find("NOT FOUND"), std::string::npos);
}

TEST_F(SoundTest, ASoundDrawnAsLines) {
  ok("generate audio(1) dim(1, 2); generate audio(1) time(0, 25) puls(0, 0.5, 1);");
  Outcome r = run("generate vol(3) audio(1) NP(100) dim(1000, 200);");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out, "channel 0 freq 0.000000 amp 0.000000 max 0.500015 inv inv\n"
                   "channel 1 freq 0.000000 amp 0.000000 max 0.500015 inv inv\n");
  Objet* v = vol(3);
  ASSERT_NE(v, nullptr);
  bloc poi = poi_vol(v);
  ASSERT_NE(poi, nullptr);
  ASSERT_EQ(np(poi), 200);
  const float* p = sommets(poi);
  // The first channel's line above, the second's below, each half high.
  EXPECT_FLOAT_EQ(p[0], -500);
  EXPECT_NEAR(p[1], 100 + 50, 0.01);
  EXPECT_FLOAT_EQ(p[99 * 3], 500);
  EXPECT_NEAR(p[100 * 3 + 1], -100 + 50, 0.01);
  int facettes = 0;
  pour_chaque_bloc(fac_vol(v), [&](int, const word* f) { facettes += f[3] == 2; });
  EXPECT_EQ(facettes, 198);
  // Upside down, labelled so.
  r = run("generate vol(3) audio(1) NP(10) inv;");
  EXPECT_NE(r.out.find("max 0.500015 inv\n"), std::string::npos) << r.out;
  EXPECT_NEAR(sommets(poi_vol(vol(3)))[1], 100 - 50, 0.01);
}
