// Contacts and bounds on volumes made by console lines: the torques passed
// along the chains, the height kept by `collision follow`, normals cycling
// over the planes, the speed bound of vertices and the forces along the
// rows and columns of a lattice. Expected values are worked out by hand in
// the comments (angles checked in Python).
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dynamics.h"
#include "animation/limits/limits.h"
#include "kernel/property.h"
#include "scene/lookup.h"
#include "scene/scene_fixture.h"
#include "scene/volume.h"

namespace {

// The angle between (100,-100,-100) and (0,-1,0): acos(1/sqrt(3)).
constexpr float ANGLE = 0.95531662f;

class CollisionScene : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    static bool installed = false;
    if (!installed) {
      install_dynamics();
      install_collisions();
      install_limits();
    }
    installed = true;
    Yes(KW_edit) = 0;
  }
  static Objet* vol(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }
  static float rota_add(int id) { return floats("force rota add vol(" + std::to_string(id) + ")").at(0); }
  // A cube of half side 100 at the origin whose lead chain is 1 -> 2 -> 3
  // and whose follow chain is 1 -> 4 -> 5, every moment of them at 0.
  static void chains() {
    for (int i = 1; i <= 5; i++) ok("cube(" + std::to_string(i) + ")");
    ok("lead vol(1)=2");
    ok("lead vol(2)=3");
    ok("follow vol(1)=4");
    ok("follow vol(4)=5");
    for (int i = 1; i <= 5; i++) ok("force rota add vol(" + std::to_string(i) + ")=0");
  }
};

// The contact at the corner (100,-100,-100) of a cube centred at 0.
const float ETAT[COLL_STATE] = {1, 7, 1, 100, -100, -100, 0, 0, 0, 0, 0};

}  // namespace

TEST_F(CollisionScene, NewContactTorqueGoesUpTheLeadChainAndDownTheFollowChainWithOppositeSign) {
  chains();
  Absolus a;
  ASSERT_TRUE(absolus(vol(1), a));
  const float force[3] = {0, -1, 0};
  float moment = 0.5f;
  // k = 2, q = 0.5: t = 2 x ANGLE; the moment takes k x t; each link up
  // the lead chain takes t then t q; down the follow chain -t then -t q.
  EXEC_COLLISION_ROTA(vol(1), ETAT, a, force, 2, 0.5f, &moment);
  const float t = 2 * ANGLE;
  EXPECT_NEAR(moment, 0.5f + 2 * t, 1e-5f);
  EXPECT_NEAR(rota_add(2), t, 1e-5f);
  EXPECT_NEAR(rota_add(3), t * 0.5f, 1e-5f);
  EXPECT_NEAR(rota_add(4), -t, 1e-5f);
  EXPECT_NEAR(rota_add(5), -t * 0.5f, 1e-5f);
  // The volume's own `force rota add` is not the moment it was given.
  EXPECT_FLOAT_EQ(rota_add(1), 0);
}

TEST_F(CollisionScene, ChangeOfContactTorqueGoesUpTheLeadChainUndividedAndNotDownTheFollowChain) {
  chains();
  ok("speed vol(1)=0,-2,0");
  // t = k x the angle of the speed (0,-2,0) and r = (100,-100,-100).
  COLLISION_ROTA(vol(1), ETAT, 3);
  const float t = 3 * ANGLE;
  EXPECT_NEAR(rota_add(1), t, 1e-5f);
  EXPECT_NEAR(rota_add(2), t, 1e-5f);
  EXPECT_NEAR(rota_add(3), t, 1e-5f);
  EXPECT_FLOAT_EQ(rota_add(4), 0);
  EXPECT_FLOAT_EQ(rota_add(5), 0);
  // A nought coefficient changes nothing.
  COLLISION_ROTA(vol(1), ETAT, 0);
  EXPECT_NEAR(rota_add(1), t, 1e-5f);
}

TEST_F(CollisionScene, FollowLiftsANewContactToTheHeightOfTheOldOne) {
  // Two cubes falling at 20 whose bottom (y = -310) is 10 under the plane
  // y = -300; restitution 0. The old contact stood at y = -280.
  for (int id : {1, 2}) {
    const std::string v = "vol(" + std::to_string(id) + ")";
    ok("cube(" + std::to_string(id) + ")");
    ok("tran(0,-210,0) matrix " + v);
    ok("speed " + v + "=0,-20,0");
    ok("collision poi " + v + "=0,-300,0");
    ok("collision normal " + v + "=0,1,0");
    ok("collision collision " + v + "=0,0,0,0,0,0,0,0,0,-280,0");
  }
  ok("collision follow vol(2)=1");
  ASSERT_EQ(EXEC_COLLISION_1(vol(1)), 0);
  ASSERT_EQ(EXEC_COLLISION_1(vol(2)), 0);
  // Without follow the volume stays where it is, its speed cleared; with
  // it, it is lifted by -280 - (-310) = 30.
  EXPECT_FLOAT_EQ(get_matrix_vol(vol(1))[TR_TRAN + 1], -210);
  EXPECT_FLOAT_EQ(get_matrix_vol(vol(2))[TR_TRAN + 1], -180);
  EXPECT_EQ(floats("speed vol(2)"), (std::vector<float>{0, 0, 0}));
  // Both are in a new contact of vertex 5 (the lowest numbered bottom
  // corner) with plane 1, at the point where its way down cuts the plane.
  for (int id : {1, 2})
    EXPECT_EQ(floats("collision collision vol(" + std::to_string(id) + ")"),
              (std::vector<float>{1, 5, 1, -100, -300, -100, 5, 1, -100, -300, -100}));
}

TEST_F(CollisionScene, NormalsCycleOverThePlanesWhenFewerAreGiven) {
  ok("cube(1)");
  ok("speed vol(1)=0,-20,0");
  // Planes 1 and 2 lie far from the cube; plane 3 takes normal 1 again,
  // (0,1,0), and the bottom (y = -100) is 50 under it.
  ok("collision poi vol(1)=0,-500,0,-500,0,0,0,-50,0");
  ok("collision normal vol(1)=0,1,0,1,0,0");
  ASSERT_EQ(EXEC_COLLISION_1(vol(1)), 0);
  EXPECT_EQ(floats("collision collision vol(1)"),
            (std::vector<float>{1, 5, 3, -100, -50, -100, 5, 3, -100, -50, -100}));
  EXPECT_EQ(floats("speed vol(1)"), (std::vector<float>{0, 0, 0}));
}

TEST_F(CollisionScene, SpeedOfEachVertexIsBoundByOneValueForAllOrOneEach) {
  ok("vol(1) poi(0,0,0,1,0,0,2,0,0,3,0,0)");
  ok("speed vertex vol(1)=3,4,0,0,0,1,6,8,0,30,40,0");
  // One a vertex: 5 brought to 1; 1 under 2 kept; 10 brought to 5; a
  // negative bound leaves the speed.
  ok("limit speed vertex vol(1)=1");
  ok("limit speed vertex(2) vol(1)=2");
  ok("limit speed vertex(3) vol(1)=5");
  ok("limit speed vertex(4) vol(1)=-1");
  ASSERT_EQ(EXEC_LIMIT_DYNAMIC(KW_vol), 0);
  expect_floats(floats("speed vertex vol(1)"), {0.6f, 0.8f, 0, 0, 0, 1, 3, 4, 0, 30, 40, 0}, "one a vertex");
  // One for all.
  ok("limit speed vertex vol(1)=0.5");
  ASSERT_EQ(EXEC_LIMIT_DYNAMIC(KW_vol), 0);
  expect_floats(floats("speed vertex vol(1)"), {0.3f, 0.4f, 0, 0, 0, 0.5f, 0.3f, 0.4f, 0, 0.3f, 0.4f, 0}, "one for all");
}

TEST_F(CollisionScene, RowAndColumnBoundsPushNeighboursApartAlongTheLattice) {
  // Rows of 3 vertices 100 apart in x, two rows 100 apart in y:
  //   1 (-100,50)  2 (0,50)  3 (100,50)
  //   4 (-100,-50) 5 (0,-50) 6 (100,-50)
  ok("grid(5) dim(100,100) secx(2) secy(1)");
  // Along the rows, bounds 150..200: each neighbour 50 too near, so the
  // ends are pushed out by 50 and the middle by 50 from each side (0).
  ok("limit dist secx vol(5)=150,200");
  ASSERT_EQ(EXEC_LIMIT_DYNAMIC(KW_vol), 0);
  EXPECT_EQ(floats("add force vertex vol(5)"),
            (std::vector<float>{-50, 0, 0, 0, 0, 0, 50, 0, 0, -50, 0, 0, 0, 0, 0, 50, 0, 0}));
  // Along the columns, bounds 20..60: each pair 40 too far, pulled together.
  ok("rem limit dist secx vol(5)");
  ok("limit dist secy vol(5)=20,60");
  ASSERT_EQ(EXEC_LIMIT_DYNAMIC(KW_vol), 0);
  EXPECT_EQ(floats("add force vertex vol(5)"),
            (std::vector<float>{0, -40, 0, 0, -40, 0, 0, -40, 0, 0, 40, 0, 0, 40, 0, 0, 40, 0}));
  // Within the bounds: no force.
  ok("limit dist secy vol(5)=50,150");
  ASSERT_EQ(EXEC_LIMIT_DYNAMIC(KW_vol), 0);
  EXPECT_EQ(floats("add force vertex vol(5)"), std::vector<float>(18, 0.0f));
}

TEST_F(CollisionScene, BoxesOfSingleVerticesHoldOnlyThoseVertices) {
  ok("cube(1)");
  // Vertex 2 stands at (100,100,-100): its box -10..10 brings it to
  // (10,10,-10); vertex 1, given no box, and vertex 3, past the table, stay.
  ok("limit tran vertex(2) vol(1)=-10,-10,-10,10,10,10");
  EXPECT_EQ(floats("limit tran vertex(2) vol(1)"), (std::vector<float>{-10, -10, -10, 10, 10, 10}));
  ASSERT_EQ(EXEC_LIMIT_2(vol(1)), 0);
  EXPECT_EQ(floats("poi(1,2,3) vol(1)"), (std::vector<float>{-100, 100, -100, 10, 10, -10, 100, 100, 100}));
  // vertex(0) gives every vertex the box: the cube shrinks to it.
  ok("limit tran vertex(0) vol(1)=0,0,0,5,5,5");
  ASSERT_EQ(EXEC_LIMIT_2(vol(1)), 0);
  EXPECT_EQ(floats("poi(1,7) vol(1)"), (std::vector<float>{0, 5, 0, 5, 0, 5}));
  // Fewer than six values: refused, the boxes kept.
  EXPECT_NE(run("limit tran vertex(3) vol(1)=1").status, 0);
  EXPECT_EQ(floats("limit tran vertex(3) vol(1)"), (std::vector<float>{0, 0, 0, 5, 5, 5}));
}
