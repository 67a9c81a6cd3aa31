// The stages of an image: their order with the loop's steps between them,
// the switches and the `avance` word that skip them, a failure that stops
// the walk with its label, the play step that takes the rest, the palette's
// part of the list; the per-image clears of forces; the exec timetable.
#include <string>

#include "animation/cycle.h"
#include "animation/stages.h"
#include "scene/scene_fixture.h"

namespace {

std::string journal;
int fail_at = -1;  // the stage that fails, or -1
bool play_takes = false;

template <int S>
int stage() {
  journal += std::to_string(S) + " ";
  if (S == fail_at) return -1;
  if (S == STAGE_PLAY && play_takes) return STAGE_REST_TAKEN;
  return 0;
}

int step(Stage s) {
  journal += "L" + std::to_string(s) + " ";
  return 0;
}

// Every stage that later subsystems fill, filled with a recorder.
void register_all(bool on) {
  register_stage(STAGE_PLAY, on ? stage<STAGE_PLAY> : nullptr);
  register_stage(STAGE_CAL_MATRIX_TRAJ, on ? stage<STAGE_CAL_MATRIX_TRAJ> : nullptr);
  register_stage(STAGE_EXEC_TRAJ, on ? stage<STAGE_EXEC_TRAJ> : nullptr);
  register_stage(STAGE_EXEC_COLLISION_ANC, on ? stage<STAGE_EXEC_COLLISION_ANC> : nullptr);
  register_stage(STAGE_EXEC_LIMIT_DYNAMIC, on ? stage<STAGE_EXEC_LIMIT_DYNAMIC> : nullptr);
  register_stage(STAGE_EXEC_LIMIT_DYNAMIC_BRUSH, on ? stage<STAGE_EXEC_LIMIT_DYNAMIC_BRUSH> : nullptr);
  register_stage(STAGE_EXEC_META, on ? stage<STAGE_EXEC_META> : nullptr);
  register_stage(STAGE_DYNAMIC, on ? stage<STAGE_DYNAMIC> : nullptr);
  register_stage(STAGE_EXEC_COLLISION, on ? stage<STAGE_EXEC_COLLISION> : nullptr);
  register_stage(STAGE_EXEC_LIMIT, on ? stage<STAGE_EXEC_LIMIT> : nullptr);
}

class Cycle : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    journal.clear();
    fail_at = -1;
    play_takes = false;
    register_all(true);
    for (int k : {KW_traj, KW_collision, KW_brush, KW_meta, KW_dynamic, KW_force}) Yes(k) = 1;
  }
  void TearDown() override {
    register_all(false);
    for (int k : {KW_traj, KW_collision, KW_brush, KW_meta, KW_dynamic, KW_force, KW_local}) Yes(k) = 0;
    SceneTest::TearDown();
  }
  static int walk(CycleLoop l, int avance = 1) { return run_stages({l, avance, step}); }
};

std::string expected(std::initializer_list<int> entries) {
  std::string s;
  for (int e : entries) s += (e >= 100 ? "L" + std::to_string(e - 100) : std::to_string(e)) + " ";
  return s;
}
constexpr int L(int s) { return 100 + s; }

TEST_F(Cycle, AnImageRunsTheStagesInTheirOrderWithTheLoopsStepsBetween) {
  ASSERT_EQ(walk(LOOP_INTERACTION), 0);
  EXPECT_EQ(journal, expected({L(STAGE_F1), L(STAGE_CIN), STAGE_PLAY, STAGE_CAL_MATRIX_TRAJ, STAGE_EXEC_TRAJ,
                               L(STAGE_F2), STAGE_EXEC_COLLISION_ANC, STAGE_EXEC_LIMIT_DYNAMIC,
                               STAGE_EXEC_LIMIT_DYNAMIC_BRUSH, STAGE_EXEC_META, STAGE_DYNAMIC, STAGE_EXEC_COLLISION,
                               L(STAGE_F3), L(STAGE_PERIOD), L(STAGE_F4), STAGE_EXEC_LIMIT}));
}

TEST_F(Cycle, SwitchesOffAndAHeldImageSkipTheirStages) {
  for (int k : {KW_traj, KW_collision, KW_brush, KW_meta, KW_dynamic}) Yes(k) = 0;
  ASSERT_EQ(walk(LOOP_INTERACTION), 0);
  EXPECT_EQ(journal, expected({L(STAGE_F1), L(STAGE_CIN), STAGE_PLAY, L(STAGE_F2), STAGE_EXEC_LIMIT_DYNAMIC,
                               L(STAGE_F3), L(STAGE_PERIOD), L(STAGE_F4), STAGE_EXEC_LIMIT}));
  // Switched on again, they run at the next image.
  Yes(KW_meta) = 1;
  journal.clear();
  walk(LOOP_INTERACTION);
  EXPECT_NE(journal.find(std::to_string(STAGE_EXEC_META) + " "), std::string::npos);
  // The CONTINUE panel holding the image: the stages of the step are left.
  Yes(KW_traj) = Yes(KW_collision) = 1;
  journal.clear();
  walk(LOOP_INTERACTION, 0);
  EXPECT_EQ(journal, expected({L(STAGE_F1), L(STAGE_CIN), L(STAGE_F2), STAGE_EXEC_COLLISION_ANC, L(STAGE_F3),
                               L(STAGE_PERIOD), L(STAGE_F4), STAGE_EXEC_LIMIT}));
}

TEST_F(Cycle, AFailingStageStopsTheImageWithItsLabel) {
  fail_at = STAGE_EXEC_COLLISION_ANC;
  EXPECT_LT(walk(LOOP_INTERACTION), 0);
  EXPECT_STREQ(failed_stage_label(), "EXEC_COLISION_ANC");
  EXPECT_EQ(journal.find("L" + std::to_string(STAGE_F3)), std::string::npos) << journal;
  fail_at = STAGE_EXEC_COLLISION;
  journal.clear();
  EXPECT_LT(walk(LOOP_INTERACTION), 0);
  EXPECT_STREQ(failed_stage_label(), "EXEC_COLISION");
}

TEST_F(Cycle, ThePlayStepTakesTheRestOfTheImage) {
  play_takes = true;
  EXPECT_EQ(walk(LOOP_INTERACTION), STAGE_REST_TAKEN);
  EXPECT_EQ(journal, expected({L(STAGE_F1), L(STAGE_CIN), STAGE_PLAY}));
}

TEST_F(Cycle, ThePaletteWalksTheSameListWithoutTheLoopsOwnSteps) {
  ASSERT_EQ(walk(LOOP_PALETTE), 0);
  EXPECT_EQ(journal, expected({L(STAGE_F1), STAGE_CAL_MATRIX_TRAJ, STAGE_EXEC_TRAJ, L(STAGE_F2),
                               STAGE_EXEC_COLLISION_ANC, STAGE_EXEC_LIMIT_DYNAMIC, STAGE_EXEC_LIMIT_DYNAMIC_BRUSH,
                               STAGE_EXEC_META, STAGE_DYNAMIC, STAGE_EXEC_COLLISION, L(STAGE_F3), L(STAGE_F4),
                               STAGE_EXEC_LIMIT}));
  // Its trajectories need the brushes as well.
  Yes(KW_brush) = 0;
  journal.clear();
  walk(LOOP_PALETTE);
  EXPECT_EQ(journal.find(std::to_string(STAGE_EXEC_TRAJ) + " "), std::string::npos) << journal;
}

TEST_F(Cycle, ForcesAreClearedEachImageOnlyWithDynamicsAndForceOn) {
  ok("cube(1)");
  ok("force vol(1)=1,2,3,4");
  ok("force add vol(1)=5,6,7");
  ok("force rota add vol(1)=1,1,1");
  ok("force rota vol(1)=2,0.5");
  ok("light(1) eye(0,0,-100)");
  ok("force add light(1)=9,9,9");
  ok("force vertex vol(1)=9,9,9");
  ASSERT_EQ(efface_forces_volumes(), 0);
  EXPECT_EQ(floats("force vol(1)"), (std::vector<float>{0, 0, 0, 4})) << "the first three floats";
  ASSERT_EQ(ZER_FORCE(), 0);
  for (const char* p : {"force add vol(1)", "force rota add vol(1)", "force add light(1)", "force vertex vol(1)"})
    for (float f : floats(p)) EXPECT_EQ(f, 0.0f) << p;
  EXPECT_EQ(floats("force rota vol(1)"), (std::vector<float>{0, 0.5f, 0, 0})) << "the moment goes, the damping stays";
  // The stage is gated by both switches.
  ok("force vol(1)=1,2,3,4");
  Yes(KW_force) = 0;
  walk(LOOP_INTERACTION);
  EXPECT_EQ(floats("force vol(1)"), (std::vector<float>{1, 2, 3, 4}));
  Yes(KW_force) = 1;
  walk(LOOP_INTERACTION);
  EXPECT_EQ(floats("force vol(1)"), (std::vector<float>{0, 0, 0, 4}));
}

TEST_F(Cycle, TheTimetableRunsEachEntryByItsPeriodOrOnceEachByACommonDelay) {
  ok("ra=0");
  ok("rb=0");
  ok("func=\"ta(){extern ra; ra=ra+1}\"");
  ok("func=\"tb(){extern rb; rb=rb+1}\"");
  ok("exec func(\"ta tb\") time(2,3)");
  for (int i = 0; i < 6; i++) ASSERT_EQ(executer_fonc(), 0);
  EXPECT_EQ(one("ra"), 3.0f);
  EXPECT_EQ(one("rb"), 2.0f);
  EXPECT_EQ(floats("exec func(\"ta\")"), (std::vector<float>{2, 2})) << "period and count left";
  ok("exec func(\"ta tb\") time(1) NP(3)");
  for (int i = 0; i < 12; i++) ASSERT_EQ(executer_fonc(), 0);
  EXPECT_EQ(one("ra"), 4.0f) << "a common delay runs each once, then the list is off";
  EXPECT_EQ(one("rb"), 3.0f);
  // A function removed since it was scheduled is passed over.
  ok("exec func(\"ta\") time(1)");
  ok("rem func(\"ta\")");
  EXPECT_EQ(executer_fonc(), 0);
}

}  // namespace
