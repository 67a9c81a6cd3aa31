// The plane test, the walk along a column and the reading of a curve,
// against values worked out independently (by hand and in Python).
#include <gtest/gtest.h>

#include "animation/collision/collision.h"
#include "animation/limits/limits.h"
#include "scene/law.h"
#include "scene/matrix.h"

namespace {

// The eight corners of a cube of half side 100, in the order of the
// primitive's first face then its second.
const float CUBE[8 * 3] = {-100, -100, -100, 100, -100, -100, 100, 100, -100, -100, 100, -100,
                           -100, -100, 100,  100, -100, 100,  100, 100, 100,  -100, 100, 100};

Absolus cube_at(float x, float y, float z) {
  Absolus a;
  a.p = CUBE;
  a.n = 8;
  a.d = 3;
  mat::identite(a.m);
  a.m[12] = x, a.m[13] = y, a.m[14] = z;
  return a;
}

}  // namespace

TEST(CollisionPlane, ExtremeVertexAlongMinusNormalTakesTheLowestNumberOnATie) {
  const Absolus a = cube_at(0, -210, 0);
  const float up[3] = {0, 1, 0};
  float P[3];
  // Four corners lie at y = -310; the first of them is vertex 1.
  EXPECT_EQ(MAX_POI_ANC(a, nullptr, up, P), 1);
  EXPECT_FLOAT_EQ(P[1], -310);
  // Seen from the side +x, the extreme corners are at x = -100.
  const float side[3] = {1, 0, 0};
  EXPECT_EQ(MAX_POI_ANC(a, nullptr, side, P), 1);
  EXPECT_FLOAT_EQ(P[0], -100);
  // A list of vertices restricts the search; numbers out of range are skipped.
  const word liste[7] = {7, T_FLOAT, 3, 1, fw(3.0f), fw(99.0f), fw(7.0f)};
  EXPECT_EQ(MAX_POI_ANC(a, liste, up, P), 3);
  EXPECT_FLOAT_EQ(P[1], -110);
  // No vertex: 0.
  Absolus vide = a;
  vide.n = 0;
  EXPECT_EQ(MAX_POI_ANC(vide, nullptr, up, P), 0);
}

TEST(CollisionPlane, ContactPointIsWhereTheLineAlongTheSpeedCutsThePlane) {
  const float P[3] = {-100, -310, -100}, Q[3] = {0, -300, 0}, N[3] = {0, 1, 0};
  float C[3];
  // Straight down at 20: 10 back along the speed.
  const float down[3] = {0, -20, 0};
  ASSERT_TRUE(coupe_plan(P, down, Q, N, C));
  EXPECT_FLOAT_EQ(C[0], -100);
  EXPECT_FLOAT_EQ(C[1], -300);
  // Slanting (3, -4): t = 10 / -4, so C = P - 2.5 (3, -4).
  const float slant[3] = {3, -4, 0};
  ASSERT_TRUE(coupe_plan(P, slant, Q, N, C));
  EXPECT_FLOAT_EQ(C[0], -107.5f);
  EXPECT_FLOAT_EQ(C[1], -300);
  // Along the plane, or still: no point.
  const float along[3] = {5, 0, 0}, still[3] = {0, 0, 0};
  EXPECT_FALSE(coupe_plan(P, along, Q, N, C));
  EXPECT_FALSE(coupe_plan(P, still, Q, N, C));
}

TEST(CollisionPlane, CentreIsTheMeanOfThePlacedVertices) {
  Absolus a = cube_at(5, -7, 9);
  float G[3];
  a.centre(G);
  EXPECT_FLOAT_EQ(G[0], 5);
  EXPECT_FLOAT_EQ(G[1], -7);
  EXPECT_FLOAT_EQ(G[2], 9);
  const float x[3] = {1, 0, 0}, y[3] = {0, 2, 0};
  EXPECT_NEAR(angle_vecteurs(x, y), 1.5707964f, 1e-6);
  const float zero[3] = {0, 0, 0};
  EXPECT_EQ(angle_vecteurs(x, zero), 0);
}

TEST(LimitColumn, EachVertexIsPutWithinBoundsOfTheOneBeforeFromTheTopDown) {
  // Stride 4 floats, every other vertex of the array: the odd ones are
  // another column and stay.
  float P[8 * 4] = {};
  const float col[4][3] = {{0, 0, 0}, {0, -50, 0}, {30, -200, 0}, {30, -300, 0}};
  for (int k = 0; k < 4; k++)
    for (int c = 0; c < 3; c++) P[(2 * k) * 4 + c] = col[k][c], P[(2 * k + 1) * 4 + c] = 1000;
  limit_column(P, 4, 0, 4, 2, 90, 110);
  // Too near: put at 90 below the first.
  EXPECT_FLOAT_EQ(P[2 * 4 + 1], -90);
  // The correction carries on: the third is now too far from the second,
  // and goes to 110 from it along their line.
  EXPECT_NEAR(P[4 * 4 + 0], 28.942915f, 1e-4);
  EXPECT_NEAR(P[4 * 4 + 1], -196.12402f, 1e-3);
  // Then within bounds: unchanged.
  EXPECT_FLOAT_EQ(P[6 * 4 + 0], 30);
  EXPECT_FLOAT_EQ(P[6 * 4 + 1], -300);
  for (int k = 0; k < 4; k++) EXPECT_FLOAT_EQ(P[(2 * k + 1) * 4], 1000);
  // Coincident vertices have no direction and stay.
  float Q[6] = {1, 1, 1, 1, 1, 1};
  limit_column(Q, 3, 0, 2, 1, 10, 20);
  EXPECT_FLOAT_EQ(Q[3], 1);
}

TEST(ReadLaw, InterpolatesAlongAnIncreasingCurveAndHoldsItsEnds) {
  const float c[9] = {0, 0, 0, 10, 5, 0, 20, -5, 0};
  EXPECT_FLOAT_EQ(read_law(c, 3, 3, -3), 0);
  EXPECT_FLOAT_EQ(read_law(c, 3, 3, 0), 0);
  EXPECT_FLOAT_EQ(read_law(c, 3, 3, 4), 2);
  EXPECT_FLOAT_EQ(read_law(c, 3, 3, 10), 5);
  EXPECT_FLOAT_EQ(read_law(c, 3, 3, 15), 0);
  EXPECT_FLOAT_EQ(read_law(c, 3, 3, 25), -5);
  EXPECT_FLOAT_EQ(read_law(c, 1, 3, 25), 0);
}

TEST(ReadLaw, KeepsTheStepAsTheFractionWhenItIsAtOrUnderOneTenThousandth) {
  // A decreasing curve: every step is negative, so the fraction is the
  // step itself.
  const float d[9] = {20, 1, 0, 10, 3, 0, 0, 7, 0};
  EXPECT_FLOAT_EQ(read_law(d, 3, 3, 25), 1);
  EXPECT_FLOAT_EQ(read_law(d, 3, 3, 15), -19);
  EXPECT_FLOAT_EQ(read_law(d, 3, 3, 5), -37);
  EXPECT_FLOAT_EQ(read_law(d, 3, 3, -1), 7);
  // A step of 0.00005: fraction 0.00005 whatever the abscissa.
  const float e[9] = {0, 2, 0, 0.00005f, 4, 0, 1, 6, 0};
  EXPECT_NEAR(read_law(e, 3, 3, 0.00001f), 2.0001f, 1e-6);
}

TEST(Inside, EvenOddRuleInThePlaneAndInSpace) {
  const float carre[8] = {0, 0, 10, 0, 10, 10, 0, 10};
  const float dedans[2] = {5, 5}, dehors[2] = {15, 5}, gauche[2] = {-5, 5};
  EXPECT_EQ(INSIDE_LINE(carre, 4, 2, dedans, true), 1);
  EXPECT_EQ(INSIDE_LINE(carre, 4, 2, dehors, true), 0);
  // Open, the edge from the last point back to the first is missing.
  EXPECT_EQ(INSIDE_LINE(carre, 4, 2, gauche, true), 0);
  EXPECT_EQ(INSIDE_LINE(carre, 4, 2, gauche, false), 1);
  const float encoche[10] = {0, 0, 10, 0, 10, 10, 5, 2, 0, 10};
  const float creux[2] = {5, 8}, plein[2] = {2, 3};
  EXPECT_EQ(INSIDE_LINE(encoche, 5, 2, creux, true), 0);
  EXPECT_EQ(INSIDE_LINE(encoche, 5, 2, plein, true), 1);
  const float mur[12] = {0, 0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10};
  const float p[3] = {0, 5, 5}, q[3] = {0, 15, 5};
  EXPECT_EQ(INSIDE_POI_LINE_3D(mur, 4, p, true), 1);
  EXPECT_EQ(INSIDE_POI_LINE_3D(mur, 4, q, true), 0);
}
