// The table of kinds on a volume: a trajectory's row multiplies the
// volume's own scale, and `dilz` takes the trajectory's y scale.
#include <gtest/gtest.h>

#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "kernel/chains.h"
#include "scene/lookup.h"
#include "scene/removal.h"
#include "scene/scene_fixture.h"
#include "scene/volume.h"

namespace {

class TrajApply : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    install_trajectories();
  }
  void TearDown() override {
    rem_tous(chaine_classe(KW_traj), 0, 0);
    SceneTest::TearDown();
  }
  // The scales the volume is drawn with after one row of trajectory id.
  static void joue(Objet* v, int id, float s[3]) {
    Objet* t = trajectoire(id);
    ASSERT_NE(t, nullptr);
    MATRIX_POS(t);
    EXEC_TRAJ_OBJ_1_1(v, t);
    const float* b = get_matrix_vol(v);
    for (int k = 0; k < 3; k++) s[k] = b[TR_DILA + k] + b[TR_DELTA + TR_DILA + k];
  }
  static void attendu(const float s[3], float x, float y, float z) {
    EXPECT_FLOAT_EQ(s[0], x);
    EXPECT_FLOAT_EQ(s[1], y);
    EXPECT_FLOAT_EQ(s[2], z);
  }
};

TEST_F(TrajApply, ScalesMultiplyTheVolumesOwn) {
  ok("cube(1) dim(1)");
  ok("dila(2,3,4) matrix vol(1)");
  Objet* v = get_objet_id(chaine_classe(KW_vol), KW_vol, 1);
  ASSERT_NE(v, nullptr);
  float s[3];
  ok("traj(1) hom(1.5,1.5)");
  joue(v, 1, s);
  attendu(s, 3, 4.5f, 6);
  // A row replaces the last one rather than adding to it, and the
  // trajectory's own scale (its block's) multiplies as well.
  ok("traj(2) dila(0.5,1,2, 0.5,1,2)");
  get_matrix_vol(trajectoire(2))[TR_DILA + 2] = 2;
  joue(v, 2, s);
  attendu(s, 1, 3, 16);
  // dilz is computed from the trajectory's y scale, not its z.
  ok("traj(3) dilz(3,3)");
  get_matrix_vol(trajectoire(3))[TR_DILA + 1] = 5;
  get_matrix_vol(trajectoire(3))[TR_DILA + 2] = 7;
  joue(v, 3, s);
  attendu(s, 1, 3, 4 * 5 * 3);
}

}  // namespace
