// Steps near the end of an image: the record and replay gauges with a
// wait, and the beep path moving through its note table.
#include <vector>

#include "interaction/internal.h"
#include "scene/scene_fixture.h"

namespace {

class EndOfImage : public SceneTest {
 protected:
  void TearDown() override {
    InteractionState& L = loop();
    L.mode_enregistrement = L.image_enregistrement = L.attente = L.cpt_attente = 0;
    L.notes.clear();
    L.position_note = 0;
    L.pas_note = 1;
    L.bip = nullptr;
    SceneTest::TearDown();
  }
};

std::vector<float> joues;
bool note_jouee(float f, int) {
  joues.push_back(f);
  return true;
}

TEST_F(EndOfImage, AWaitHoldsTheRecordCountUntilItsLimitAndThenRestartsIt) {
  InteractionState& L = loop();
  L.mode_enregistrement = 242;
  L.image_enregistrement = 5;
  L.attente = 3;
  jauges();
  jauges();
  EXPECT_EQ(L.image_enregistrement, 5) << "the images of a wait are not numbered";
  EXPECT_EQ(L.cpt_attente, 2);
  jauges();
  EXPECT_EQ(L.attente, 0) << "the wait ends at its limit";
  EXPECT_EQ(L.cpt_attente, 0);
  EXPECT_EQ(L.image_enregistrement, 0) << "and the record counts again from 0";
  jauges();
  EXPECT_EQ(L.image_enregistrement, 1);
}

TEST_F(EndOfImage, AWaitHoldsTheReplayToo) {
  InteractionState& L = loop();
  L.nb_touches = 1;
  L.relecture = 0;
  L.mode_enregistrement = -242;
  L.attente = 2;
  jauges();
  EXPECT_EQ(L.image_enregistrement, 0);
  EXPECT_EQ(L.mode_enregistrement, -242);
  jauges();
  jauges();
  EXPECT_EQ(L.image_enregistrement, 1) << "after the wait the replay moves on";
  L.nb_touches = 0;
}

TEST_F(EndOfImage, TheBeepInterpolatesTheTableAndTurnsBackAtBothEnds) {
  InteractionState& L = loop();
  joues.clear();
  L.bip = note_jouee;
  L.notes = {100, 200, 400};
  L.pas_note = 0.5f;
  for (int i = 0; i < 10; i++) bip();
  const std::vector<float> attendu = {100, 150, 200, 300, 400, 300, 200, 150, 100, 150};
  EXPECT_EQ(joues, attendu);
}

TEST_F(EndOfImage, AStepPastTheEndStopsAtIt) {
  InteractionState& L = loop();
  joues.clear();
  L.bip = note_jouee;
  L.notes = {100, 200};
  L.pas_note = 0.75f;
  for (int i = 0; i < 4; i++) bip();
  const std::vector<float> attendu = {100, 175, 200, 125};
  EXPECT_EQ(joues, attendu);
}

TEST_F(EndOfImage, NoTableNoBeep) {
  joues.clear();
  loop().bip = note_jouee;
  bip();
  EXPECT_TRUE(joues.empty());
}

}  // namespace
