// Dynamics: the spring force and its bounds, the spring that moves a
// point, the fields, and steps of volumes checked against formulas worked
// out independently here.
#include <cmath>

#include "animation/dynamics_fixture.h"
#include "kernel/property.h"
#include "scene/volume.h"

namespace {

TEST(SpringForce, StretchPullsAlongTheLinkAndDampsTheFirstEnd) {
  const float pi[3] = {0, 0, 0}, pj[3] = {3, 4, 0}, v[3] = {1, 2, 3};
  float F[3] = {0, 0, 0};
  // D = 5, e = 3, u = (0.6, 0.8, 0): k e u + c v.
  spring_force(pi, pj, 2, F, 0.5f, -0.1f, v, nullptr);
  expect3(F, 0.5f * 3 * 0.6f - 0.1f, 0.5f * 3 * 0.8f - 0.2f, -0.3f, "stretch");
  // Compressed: pushed apart; the force adds to what F held.
  float G[3] = {1, 1, 1};
  const float zero[3] = {0, 0, 0};
  spring_force(pi, pj, 7, G, 1, 0, zero, nullptr);
  expect3(G, 1 - 2 * 0.6f, 1 - 2 * 0.8f, 1, "compression");
}

TEST(SpringForce, TwoEndsAtOnePlaceOnlyDamp) {
  const float p[3] = {1, 1, 1}, v[3] = {2, 0, 0};
  float F[3] = {0, 0, 0};
  spring_force(p, p, 1, F, 1, -0.5f, v, nullptr);
  expect3(F, -1, 0, 0, "same place");
}

TEST(SpringForce, LimitsCompareTheExtensionAndTheSecondReadsTheFirst) {
  const float pi[3] = {0, 0, 0}, zero[3] = {0, 0, 0};
  // e = 0.5 under dmin 1: g = 10 (1 - 0.5) / 0.5 = 10, and e becomes 10,
  // which is above dmax 5: g = 10 (5 - 10) / 10 = -5 is added as well.
  const float pj[3] = {0, 2.5f, 0};
  const float lim[2] = {1, 5};
  float F[3] = {0, 0, 0};
  spring_force(pi, pj, 2, F, 1, 0, zero, lim);
  expect3(F, 0, 0.5f + 10 - 5, 0, "under dmin");
  // e = 8 above dmax 5 alone: g = 10 (5 - 8) / 8.
  const float pk[3] = {10, 0, 0};
  float G[3] = {0, 0, 0};
  spring_force(pi, pk, 2, G, 0, 0, zero, lim);
  expect3(G, 10 * (5 - 8) / 8.0f, 0, 0, "over dmax");
  // The length 2.5 is not the extension: with rest 0 (e = 2.5, between
  // the bounds) nothing is added.
  float H[3] = {0, 0, 0};
  spring_force(pi, pj, 0, H, 0, 0, zero, lim);
  expect3(H, 0, 0, 0, "inside");
  // A compression is never bounded.
  float K[3] = {0, 0, 0};
  spring_force(pi, pj, 4, K, 0, 0, zero, lim);
  expect3(K, 0, 0, 0, "compression");
}

TEST(SpringMove, TheEndIsPulledBackTowardTheStart) {
  const float from[3] = {0, 0, 0};
  float to[3] = {10, 0, 0};
  float speed[3] = {1, 0, 0}, acc[3] = {0, 0, 0};
  const float force[4] = {0, 1, 0, -0.5f};
  SpringMotion s{speed, acc, force};
  // G = c v + k (from - to) + f = (-0.2 - 1, 1, 0); a = -0.5 v + G / 2.
  spring_move(from, to, 0.1f, -0.2f, 2, s);
  expect3(acc, -0.5f - 0.6f, 0.5f, 0, "acc");
  expect3(speed, -0.1f, 0.5f, 0, "speed");
  expect3(to, 9.9f, 0.5f, 0, "to");
}

TEST(SpringMove, BoundsScaleTheForceAndTheSpeed) {
  const float from[3] = {0, 0, 0};
  float to[3] = {0, 100, 0};
  float speed[3] = {0, 0, 0}, acc[3];
  const float force[4] = {0, 0, 0, 0};
  SpringMotion s{speed, acc, force, 2.0f, 0.5f};
  // G = (0, -100, 0) scaled to 2; a = G (m 1); v scaled to 0.5.
  spring_move(from, to, 1, 0, 1, s);
  expect3(acc, 0, -2, 0, "acc");
  expect3(speed, 0, -0.5f, 0, "speed");
  expect3(to, 0, 99.5f, 0, "to");
}

TEST_F(Dynamics, SpringMoveKeepsItsMotionInTheObject) {
  ok("vol(1) poi(0,0,0)");
  ok("limit speed vol(1)=1");
  const float from[3] = {0, 0, 0};
  float to[3] = {0, 0, 10};
  // k 0.5, m 1: G = -5 z; v = -5 z scaled to 1; the second call starts
  // from the speed the first left in `speed move`.
  ASSERT_EQ(SPRING_MOVE(vol(1), from, to, 0.5f, 0, 1), 0);
  expect3(to, 0, 0, 9, "first");
  EXPECT_EQ(floats("speed move vol(1)"), (std::vector<float>{0, 0, -1}));
  EXPECT_EQ(floats("acc move vol(1)"), (std::vector<float>{0, 0, -5}));
  ok("force move vol(1)=0,0,0,-1");
  // a = -1 x v + G: v = -(-1) + (-1) - 4.5 -> scaled to 1.
  ASSERT_EQ(SPRING_MOVE(vol(1), from, to, 0.5f, 0, 1), 0);
  expect3(to, 0, 0, 8, "second");
  EXPECT_EQ(floats("acc move vol(1)"), (std::vector<float>{0, 0, 1 - 4.5f}));
}

// The quadric q0 x2 + q1 y2 + q2 z2 + q3 xy + q4 xz + q5 yz + q6 x + q7 y + q8 z.
float quadrique(const float* q, float x, float y, float z) {
  return q[0] * x * x + q[1] * y * y + q[2] * z * z + q[3] * x * y + q[4] * x * z + q[5] * y * z + q[6] * x +
         q[7] * y + q[8] * z;
}

TEST_F(Dynamics, MetaFieldIsTheGradientOfItsQuadricAboutItsPoint) {
  ok("field(1) meta(0.5,-1,2,0.3,-0.7,1.1,4,-2,0.5) poi(1,2,3) coe(0.25)");
  Objet* f = field(1);
  ASSERT_NE(f, nullptr);
  const float q[9] = {0.5f, -1, 2, 0.3f, -0.7f, 1.1f, 4, -2, 0.5f};
  const float x[3] = {2.5f, -1, 4};
  float F[4] = {1, 1, 1, 0};
  ASSERT_EQ(set_FIELD_1(f, F, x, 0), 0);
  // Central differences of the quadric at x - poi.
  const float p[3] = {1.5f, -3, 1}, h = 0.01f;
  for (int a = 0; a < 3; a++) {
    float e[3] = {0, 0, 0};
    e[a] = h;
    const float g = (quadrique(q, p[0] + e[0], p[1] + e[1], p[2] + e[2]) -
                     quadrique(q, p[0] - e[0], p[1] - e[1], p[2] - e[2])) / (2 * h);
    EXPECT_NEAR(F[a], 1 + 0.25f * g, 2e-3f) << "axis " << a;
  }
}

TEST_F(Dynamics, PointFieldsPullAndPushInsideTheirRadiusWithTheirLaw) {
  ok("field(1) poi(0,10,0) radius(4) coe(2)");
  const float far[3] = {0, 0, 0}, near[3] = {0, 7, 0};
  float F[4] = {0, 0, 0, 0};
  ASSERT_EQ(set_FIELD_1(field(1), F, far, 0), 0);
  expect3(F, 0, 2, 0, "toward");
  float G[4] = {0, 0, 0, 0};
  set_FIELD_1(field(1), G, near, 0);
  expect3(G, 0, -2, 0, "pushed inside the radius");
  // law b: s / d^b, the divisor at least 0.001.
  ok("law field(1)=2");
  float H[4] = {0, 0, 0, 0};
  set_FIELD_1(field(1), H, far, 0);
  expect3(H, 0, 2.0f / 100, 0, "law");
  const float at[3] = {0, 10.01f, 0};
  float K[4] = {0, 0, 0, 0};
  ok("radius field(1)=0");
  set_FIELD_1(field(1), K, at, 0);
  expect3(K, 0, -2 / 0.001f, 0, "floored divisor");
  // Two points: the constant direction from the first to the second,
  // and the field's damping from the fourth value of its force.
  ok("field(2) poi(0,0,0, 3,0,4)");
  ok("force field(2)=0,0,0,-0.3");
  float L[4] = {0, 0, 0, 0};
  set_FIELD_1(field(2), L, far, 0);
  expect3(L, 0.1f * 0.6f, 0, 0.1f * 0.8f, "two points");
  EXPECT_FLOAT_EQ(L[3], -0.3f);
}

TEST_F(Dynamics, ImageFieldsReadThePixelUnderThePoint) {
  ok("image(5) dim(4,2) col(1,0,0)");
  ok("field(1) image(5) coe(2)");
  // Each component from -1 to 1 about 128: 255, 0, 0.
  const float on[3] = {1.5f, 1.2f, 0}, off[3] = {4.5f, 0, 0};
  float F[4] = {0, 0, 0, 0};
  ASSERT_EQ(set_FIELD_1(field(1), F, on, 0), 0);
  expect3(F, 2 * 127 / 128.0f, -2, -2, "colour");
  float G[4] = {0, 0, 0, 0};
  ASSERT_EQ(set_FIELD_1(field(1), G, off, 0), 0);
  expect3(G, 0, 0, 0, "outside");
}

TEST_F(Dynamics, AnObjectsOwnFieldListNamesTheFieldsThatAct) {
  ok("field(1) poi(0,10,0)");
  ok("field(2) poi(10,0,0)");
  ok("vol(1) poi(0,0,0)");
  const float x[3] = {0, 0, 0};
  float F[4] = {0, 0, 0, 0};
  ASSERT_EQ(champs_objet(vol(1), nullptr, F, x, 0), 0);
  expect3(F, 0.1f, 0.1f, 0, "all fields");
  ok("field vol(1)=2");
  float G[4] = {0, 0, 0, 0};
  ASSERT_EQ(champs_objet(vol(1), get_val_1(vol(1)->local, KW_field), G, x, 0), 0);
  expect3(G, 0.1f, 0, 0, "the list");
  ok("field vol(1)=7");
  float H[4] = {0, 0, 0, 0};
  Capture c;
  EXPECT_LT(champs_objet(vol(1), get_val_1(vol(1)->local, KW_field), H, x, 0), 0);
  EXPECT_NE(c.take().find("NOT FOUND"), std::string::npos);
}

TEST_F(Dynamics, AStepMakesItsStateAndMovesAsAWhole) {
  ok("vol(1) poi(0,0,0, 1,0,0)");
  ok("mass vol(1)=4");
  ok("force vol(1)=8,0,0,-0.5");
  ok("speed vol(1)=2,0,0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  // a = c v + F / m = -1 + 2.
  EXPECT_EQ(floats("speed vol(1)"), (std::vector<float>{3, 0, 0}));
  EXPECT_EQ(floats("acc vol(1)"), (std::vector<float>{1, 0, 0}));
  EXPECT_FLOAT_EQ(get_matrix_vol(vol(1))[TR_TRAN], 3);
  for (const char* made : {"speed rota vol(1)", "acc rota vol(1)", "force rota vol(1)", "poi dup vol(1)",
                           "speed vertex vol(1)", "acc vertex vol(1)"})
    EXPECT_FALSE(floats(made).empty()) << made;
  // `inv speed`: the force becomes k v, the damping kept.
  ok("inv speed vol(1)=-0.5");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  // F = -1.5, a = -1.5 + -1.5 / 4.
  EXPECT_FLOAT_EQ(floats("speed vol(1)")[0], 3 - 1.5f - 0.375f);
  // `dynamic` at 0 leaves the object out.
  ok("dynamic vol(1)=0");
  const float before = get_matrix_vol(vol(1))[TR_TRAN];
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_FLOAT_EQ(get_matrix_vol(vol(1))[TR_TRAN], before);
}

TEST_F(Dynamics, AngleBoundsAndTheBoundOfRotaPlusRotz) {
  ok("vol(1) poi(0,0,0)");
  ok("mass vol(1)=1");
  ok("speed rota vol(1)=30");
  // limit rota 0.5 rad (28.6 degrees) for both ends: the angle is put back
  // and w kept.
  ok("limit rota vol(1)=0.5");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  float* T = get_matrix_vol(vol(1));
  EXPECT_NEAR(T[TR_ROTA], 0.5f * DEGRES, 1e-3f);
  EXPECT_FLOAT_EQ(floats("speed rota vol(1)")[0], 30);
  // With rotz at 10 and the bound of the sum 20 degrees, the angle is set
  // to the bound itself.
  ok("rem limit rota vol(1)");
  ok("limit rota rotz vol(1)=-0.349066,0.349066");
  T[TR_ROTA] = 0;
  T[TR_ROTX + 2] = 10;
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  EXPECT_NEAR(get_matrix_vol(vol(1))[TR_ROTA], 20, 1e-3f);
}

TEST_F(Dynamics, TheMemoryOfPositionsMeasuresTheSpeed) {
  ok("vol(1) poi(0,0,0)");
  ok("law vol(1)=1");
  float* T = get_matrix_vol(vol(1));
  const float places[3][3] = {{1, 2, 3}, {2, 4, 3}, {4, 5, 1}};
  for (const auto& p : places) {
    T = get_matrix_vol(vol(1));
    T[TR_MATRIX + 12] = p[0], T[TR_MATRIX + 13] = p[1], T[TR_MATRIX + 14] = p[2];
    ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  }
  const word* cg = get_val_2(vol(1)->local, KW_CG, KW_animate);
  ASSERT_NE(cg, nullptr);
  for (int i = 0; i < 9; i++) EXPECT_FLOAT_EQ(getf(cg, i), places[i / 3][i % 3]);
  EXPECT_EQ(floats("speed vol(1)"), (std::vector<float>{2, 1, -2}));
}

TEST_F(Dynamics, PairForcesAreWrittenAndALaterPairOverwrites) {
  // Three vertices on a line: (1,2) at 1, (1,3) at 3, (2,3) at 2; d1 2, d2 2.5, k 1.
  ok("vol(1) poi(0,0,0, 1,0,0, 3,0,0)");
  ok("mass vol(1)=1");
  ok("limit dist force vol(1)=2,2.5,1");
  ok("force vertex vol(1)=0,0,0,0");
  ok("mass vertex vol(1)=0");
  ASSERT_EQ(DYNAMIC_2(vol(1)), 0);
  const word* add = get_val_3(vol(1)->local, KW_add, KW_force, KW_vertex);
  ASSERT_NE(add, nullptr);
  // (1,2): D 1 under d1: g = k (max(D,1) - d1) / max(D,1) = -1, u = +x:
  //   2 gets g u = -1, 1 gets -g u = +1.
  // (1,3): D 3 over d2: g = (3 - 2.5) / 3: 3 gets g u, and 1 gets -g u in
  //   place of its +1 (written, not added).
  // (2,3): D 2, D2 = 4 is not under d1 squared: nothing.
  EXPECT_FLOAT_EQ(getf(add, 0), -0.5f / 3);
  EXPECT_FLOAT_EQ(getf(add, 3), -1);
  EXPECT_FLOAT_EQ(getf(add, 6), 0.5f / 3);
}

TEST_F(Dynamics, CommandsReadAndWriteTheRowsOfVertices) {
  ok("vol(1) poi(0,0,0, 1,0,0, 3,0,0)");
  ok("mass vol(1)=2");
  ok("mass vertex(2) vol(1)=0");
  EXPECT_EQ(floats("mass vertex vol(1)"), (std::vector<float>{2, 0, 2}));
  ok("force vertex(1,3) vol(1)=1,2,3,4,5,6,7,8");
  EXPECT_EQ(floats("force vertex(3) vol(1)"), (std::vector<float>{5, 6, 7, 8}));
  EXPECT_EQ(floats("force vertex(2) vol(1)"), (std::vector<float>{0, 0, 0, 0}));
  // Reading what a volume lacks: message 81 of vocabulary 1.
  Outcome r = run("speed vertex vol(1)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("has no speed"), std::string::npos) << r.out;
  ok("force CG vol(1)=3,0,0");
  EXPECT_EQ(floats("force vertex(2) vol(1)"), (std::vector<float>{1, 0, 0, 0}));
  // The rows of a grid: row 2 of a 3 x 3 grid is vertices 4 to 6.
  ok("grid(4) secx(2) secy(2)");
  ok("force secy(2) vol(4)=0,-1,0,0");
  EXPECT_EQ(floats("force vertex vol(4)"),
            (std::vector<float>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, -1, 0, 0, 0, -1, 0, 0, 0, -1, 0, 0,
                                0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  // A chain: both ends of each link written.
  ok("vol(2) poi(0,0,0)");
  ok("vol(3) poi(0,0,0)");
  ok("follow vol(1)=2,3");
  EXPECT_EQ(floats("lead vol(3)"), (std::vector<float>{1}));
  ok("lead vol(2)=1");
  EXPECT_EQ(floats("follow vol(1)"), (std::vector<float>{2, 3}));
}

}  // namespace
