// Dynamics: the simple form of the step, the axis led by `limit axis
// rota`, the torque of a led object's vertex, the acceleration handed down
// the followers, the lists of neighbours, the eye's spring and the fields
// of a volume. Each expected number is worked out by hand beside it (the
// axis with python3: the lines are in the comments).
#include <cmath>

#include "animation/dynamics_fixture.h"
#include "kernel/property.h"
#include "scene/volume.h"

namespace {

class Forms : public Dynamics {
 protected:
  void SetUp() override {
    Dynamics::SetUp();
    for (int i = 0; i < 3; i++) saved[i] = Yes(switches[i]);
  }
  void TearDown() override {
    for (int i = 0; i < 3; i++) Yes(switches[i]) = saved[i];
    Dynamics::TearDown();
  }
  static constexpr int switches[3] = {KW_simple, KW_acc, KW_field};
  int saved[3] = {};

  // Mass 2, force (4,0,0) damped by -0.5, force add (0,2,0), speed (1,0,0):
  // a = -0.5 v + (F + add)/2 = (1.5, 1, 0), v = (2.5, 1, 0), tran = v; the
  // `limit speed` 0.1 of the whole motion isn't read. The rotation: moment
  // 0.2 damped by 0.1, w 1, spring rota (2, -0.5). The bare update first:
  // acc = 0.1 + 0.1, w 1.2, angle 0.6; then the simple one: acc = 0.12 + 0.1
  // - 0.6 - 2 x 0.017453 x 0.6 = -0.4009436, w 0.7990564, angle 0.9995282.
  // Vertex 1, force (1,0,0) damped by -0.5: v = 0.5; vertex 2, force
  // 0.00005: no component above 0.0001, it stays.
  static void prepare_simple() {
    ok("vol(1) poi(0,0,0, 10,0,0)");
    ok("mass vol(1)=2");
    ok("force vol(1)=4,0,0,-0.5");
    ok("force add vol(1)=0,2,0");
    ok("speed vol(1)=1,0,0");
    ok("limit speed vol(1)=0.1");
    ok("force rota vol(1)=0.2,0.1");
    ok("speed rota vol(1)=1");
    ok("spring rota vol(1)=2,-0.5");
    ok("force vertex vol(1)=1,0,0,-0.5, 0.00005,0,0,0");
  }

  static void verifie_simple(Objet* o) {
    EXPECT_EQ(floats("speed vol(1)"), (std::vector<float>{2.5f, 1, 0}));
    EXPECT_EQ(floats("acc vol(1)"), (std::vector<float>{1.5f, 1, 0}));
    const float* T = get_matrix_vol(o);
    expect3(T + TR_TRAN, 2.5f, 1, 0, "tran");
    EXPECT_NEAR(floats("acc rota vol(1)")[0], -0.4009436f, 1e-6f);
    EXPECT_NEAR(floats("speed rota vol(1)")[0], 0.7990564f, 1e-6f);
    EXPECT_NEAR(T[TR_ROTA], 0.9995282f, 1e-6f);
    const std::vector<float> P = floats("poi vol(1)");
    ASSERT_EQ(P.size(), 6u);
    EXPECT_FLOAT_EQ(P[0], 0.5f);
    EXPECT_FLOAT_EQ(P[3], 10);
  }
};

TEST_F(Forms, SimpleFormByTheVolumesOwnLevel) {
  prepare_simple();
  ok("simple vol(1)=2");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  verifie_simple(vol(1));
}

TEST_F(Forms, SimpleFormByTheSwitchSetToTwo) {
  prepare_simple();
  // `yes simple` gives 1, which is not the simple form: the limit acts.
  ok("yes simple");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_NEAR(floats("speed vol(1)")[1], 0.1f / std::sqrt(2.5f * 2.5f + 1) * 1, 1e-6f);
  ok("rem vol(1)");
  prepare_simple();
  ok("status simple(2)");
  EXPECT_EQ(Yes(KW_simple), 2);
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  verifie_simple(vol(1));
  // With mass 0 the simple form does nothing after the bare update.
  ok("mass vol(1)=0");
  ok("speed vol(1)=1,0,0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_EQ(floats("speed vol(1)"), (std::vector<float>{1, 0, 0}));
}

// `limit axis rota` (1,0,0, 2) on the axis (0,0,1) with w 10 and no moment:
// w stays 10 through both updates, the angle turns 5 twice. Then the lean
// k = 2 x |0.5 x 10| x 0.017453 = 0.17453; the axis is the unit of
// (k, 0, 1-k) and w is scaled by its cosine with the old axis:
//   python3 -c "import math;k=0.17453;n=math.hypot(k,1-k);print(k/n,(1-k)/n,10*(1-k)/n)"
//   0.2068580 0.9783710 9.783710
TEST_F(Forms, LimitAxisRotaLeansTheAxisByTheAngleTurned) {
  ok("vol(1) poi(0,0,0)");
  ok("mass vol(1)=1");
  ok("speed rota vol(1)=10");
  ok("limit axis rota vol(1)=1,0,0,2");
  float* T = get_matrix_vol(vol(1));
  T[TR_ROTA + 1] = 0, T[TR_ROTA + 2] = 0, T[TR_ROTA + 3] = 1;
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  T = get_matrix_vol(vol(1));
  EXPECT_NEAR(T[TR_ROTA], 10, 1e-5f);
  expect3(T + TR_ROTA + 1, 0.2068580f, 0, 0.9783710f, "axis");
  EXPECT_NEAR(floats("speed rota vol(1)")[0], 9.783710f, 1e-5f);
  // An axis along the bound stays, and w with it.
  ok("speed rota vol(1)=10");
  T[TR_ROTA + 1] = 2, T[TR_ROTA + 2] = 0, T[TR_ROTA + 3] = 0;
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  expect3(get_matrix_vol(vol(1)) + TR_ROTA + 1, 2, 0, 0, "kept, its length too");
  EXPECT_NEAR(floats("speed rota vol(1)")[0], 10, 1e-5f);
}

// A led volume of vertices (0,0,0) and (10,0,0), `vertex follow` 2, mass
// 2, force (0,3,0): G = (5,0,0), u = P - G = (5,0,0), T = u x F = (0,0,15),
// d = |G-P|^2 = 25. With the axis along z, w += 15 x 0.01 / (25 x 2) =
// 0.003 and the angle takes 0.5 w; the led update adds nothing (no
// moment), turns 0.5 w more and then w once more: angle 2 w = 0.006. The
// volume doesn't translate. With the axis along -z both signs change.
TEST_F(Forms, TheForceAtTheFollowingVertexTurnsALedVolume) {
  for (float z : {1.0f, -1.0f}) {
    ok("vol(2) poi(0,0,0)");
    ok("vol(1) poi(0,0,0, 10,0,0)");
    ok("lead vol(1)=2");
    ok("vertex follow vol(1)=2");
    ok("mass vol(1)=2");
    ok("force vol(1)=0,3,0,0");
    float* T = get_matrix_vol(vol(1));
    T[TR_ROTA + 1] = 0, T[TR_ROTA + 2] = 0, T[TR_ROTA + 3] = z;
    ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
    T = get_matrix_vol(vol(1));
    EXPECT_NEAR(floats("speed rota vol(1)")[0], 0.003f * z, 1e-7f);
    EXPECT_NEAR(T[TR_ROTA], 0.006f * z, 1e-7f);
    expect3(T + TR_TRAN, 0, 0, 0, "no translation");
    ok("rem vol(1,2)");
  }
}

// Yes[acc]: the acceleration (1,0,0) of a volume of mass 1 under force
// (1,0,0) goes to its followers' speed at 1, 0.9 and 0.81.
TEST_F(Forms, TheAccelerationIsHandedDownTheFollowers) {
  ok("vol(1) poi(0,0,0)");
  for (int id : {2, 3, 4}) ok("vol(" + std::to_string(id) + ") poi(0,0,0)");
  ok("follow vol(1)=2,3,4");
  for (int id : {2, 3, 4}) ok("speed vol(" + std::to_string(id) + ")=0,1,0");
  ok("mass vol(1)=1");
  ok("force vol(1)=1,0,0,0");
  Yes(KW_acc) = 0;
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_EQ(floats("speed vol(2)"), (std::vector<float>{0, 1, 0})) << "off: nothing handed down";
  Yes(KW_acc) = 1;
  ok("speed vol(1)=0,0,0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_EQ(floats("acc vol(1)"), (std::vector<float>{1, 0, 0}));
  EXPECT_EQ(floats("speed vol(2)"), (std::vector<float>{1, 1, 0}));
  EXPECT_EQ(floats("speed vol(3)"), (std::vector<float>{0.9f, 1, 0}));
  EXPECT_NEAR(floats("speed vol(4)")[0], 0.81f, 1e-6f);
}

// Lists of neighbours given by the user, each led by its size: vertex 1
// is joined to 2 and 3, the list of vertex 2 (size -2) is skipped, vertex
// 3 has none. The rest lengths are taken at the first step, in the same
// layout. Vertex 2 pulled to 15: vertex 1 feels 0.1 x 5 along +x and moves
// 0.5; vertex 2, whose list is skipped, stays.
TEST_F(Forms, UserListsOfNeighboursLedByTheirSize) {
  ok("vol(1) poi(0,0,0, 10,0,0, 0,10,0)");
  ok("mass vol(1)=1");
  ok("spring vol(1)=0.1,0");
  bloc nv = set_val_3(vol(1), KW_near, KW_vertex, KW_vertex, 6);
  ASSERT_NE(nv, nullptr);
  const float lists[6] = {3, 2, 3, -2, 1, 1};
  for (int i = 0; i < 6; i++) setf(nv, i, lists[i]);
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  const word* d = get_val_3(vol(1)->local, KW_near, KW_vertex, KW_dist);
  ASSERT_EQ(elements(d), 6);
  const float want[6] = {3, 10, 10, -2, 10, 1};
  for (int i = 0; i < 6; i++) EXPECT_FLOAT_EQ(getf(d, i), want[i]) << i;
  EXPECT_EQ(floats("poi vol(1)"), (std::vector<float>{0, 0, 0, 10, 0, 0, 0, 10, 0})) << "at rest";
  ok("poi(2) vol(1)=15,0,0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_EQ(floats("poi vol(1)"), (std::vector<float>{0.5f, 0, 0, 15, 0, 0, 0, 10, 0}));
}

// The lists built from the facets: a square of two triangles, vertex 1
// joined to 2, 3 and 4 by the diagonal; a stretch of vertex 3 along the
// diagonal pulls 1 only by that link.
TEST_F(Forms, ListsBuiltFromTheFacetsEachNeighbourOnce) {
  ok("vol(1) poi(0,0,0, 10,0,0, 10,10,0, 0,10,0) fac(1,2,3) fac(1,3,4)");
  ok("mass vol(1)=1");
  ok("spring vol(1)=0.1,0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  const word* nv = get_val_3(vol(1)->local, KW_near, KW_vertex, KW_vertex);
  const float want[14] = {4, 2, 3, 4, 3, 1, 3, 4, 1, 2, 4, 3, 1, 3};
  ASSERT_EQ(elements(nv), 14);
  for (int i = 0; i < 14; i++) EXPECT_FLOAT_EQ(getf(nv, i), want[i]) << i;
  ok("poi(3) vol(1)=20,20,0");
  ok("mass vertex vol(1)=1,0,0,0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  // e = 20 sqrt(2) - 10 sqrt(2) along (1,1)/sqrt(2): F = 0.1 x 10 sqrt(2) / sqrt(2) = 1 on each axis.
  const std::vector<float> P = floats("poi vol(1)");
  EXPECT_NEAR(P[0], 1, 1e-5f);
  EXPECT_NEAR(P[1], 1, 1e-5f);
}

// `eye poi(...) view(id) spring(k,c)`: the eye is pulled by the spring
// step, its motion kept in the view. From -1000 toward 0 with k 0.1, c
// -0.5, mass 1: G = 100, v = 100, eye -900; then G = -50 + 90, v = 140,
// eye -760. The aim keeps a motion of its own: k 0.5 toward 10 gives 5.
TEST_F(Forms, TheEyesSpringStepsWithTheViewsMotion) {
  ok("view(3)");
  ok("eye view(3)=0,0,-1000");
  ok("eye poi(0,0,0) view(3) spring(0.1,-0.5)");
  EXPECT_EQ(floats("eye view(3)"), (std::vector<float>{0, 0, -900}));
  ok("eye poi(0,0,0) view(3) spring(0.1,-0.5)");
  EXPECT_EQ(floats("eye view(3)"), (std::vector<float>{0, 0, -760}));
  EXPECT_EQ(floats("speed move view(3)"), (std::vector<float>{0, 0, 140}));
  ok("aim poi(0,10,0) view(3) spring(0.5)");
  EXPECT_EQ(floats("aim view(3)"), (std::vector<float>{0, 5, 0}));
  EXPECT_EQ(floats("speed move view(3)"), (std::vector<float>{0, 0, 140})) << "the eye's motion kept apart";
  // A view of mass 4 takes a quarter of the force: G = 0.1 x 760 - 70 = 6,
  // v = 140 + 1.5.
  ok("mass view(3)=4");
  ok("eye poi(0,0,0) view(3) spring(0.1,-0.5)");
  EXPECT_NEAR(floats("speed move view(3)")[2], 141.5f, 1e-4f);
  ok("rem view(3)");
}

// A field of kind vol: toward every vertex of volume 5 (10,0,0) and
// (0,20,0), toward the nearest, or toward the vertex of the same number;
// s 0.5, or s / d with the law 1.
TEST_F(Forms, VolFieldsPullTowardTheVertices) {
  ok("vol(5) poi(10,0,0, 0,20,0)");
  ok("field(1) vol(5) coe(0.5)");
  ok("field(2) vol(5) coe(0.5) law(1)");
  ok("field(3) vol(5) near(1) coe(0.5)");
  ok("field(4) vol(5) vertex(1) coe(0.5)");
  const struct {
    int field, vertex;
    float want[3];
    const char* what;
  } cases[] = {{1, 2, {0.5f, 0.5f, 0}, "every vertex"},
               {2, 2, {0.05f, 0.025f, 0}, "with the law"},
               {3, 2, {0.5f, 0, 0}, "the nearest"},
               {4, 2, {0, 0.5f, 0}, "the same number"},
               {4, 0, {0, 0, 0}, "the whole object has no number"}};
  const float x[3] = {0, 0, 0};
  for (const auto& c : cases) {
    float F[4] = {0, 0, 0, 0};
    ASSERT_EQ(set_FIELD_1(field(c.field), F, x, c.vertex), 0) << c.what;
    expect3(F, c.want[0], c.want[1], c.want[2], c.what);
  }
  // A missing volume is reported.
  ok("field(6) vol(9)");
  Capture c;
  float M[4] = {0, 0, 0, 0};
  EXPECT_LT(set_FIELD_1(field(6), M, x, 2), 0);
  EXPECT_NE(c.take().find("NOT FOUND"), std::string::npos);
}

// `col vertex` reaches the function of a func field after the point: a
// function that returns the colour pushes each vertex by it (coe 1). The
// volume has no mass of its own, so only its vertices (mass 1) move.
TEST_F(Forms, TheColourOfAVertexReachesAFuncField) {
  ok("func=\"teinte(x){return(x[3],x[4],x[5])}\"");
  ok("field(1) func(\"teinte\") coe(1)");
  ok("vol(1) poi(0,0,0, 5,0,0)");
  ok("mass vertex vol(1)=1");
  ok("force vertex vol(1)=0,0,0,0");
  ok("col vertex vol(1)=0.1,0.2,0.3");
  ok("col vertex(2) vol(1)=1,0,0.5");
  Yes(KW_field) = 1;
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  const std::vector<float> v = floats("speed vertex vol(1)");
  ASSERT_EQ(v.size(), 6u);
  expect3(v.data(), 0.1f, 0.2f, 0.3f, "vertex 1");
  expect3(v.data() + 3, 1, 0, 0.5f, "vertex 2");
}

}  // namespace
