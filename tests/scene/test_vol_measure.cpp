// Centres, boxes and radii of volumes, against computations made here.
#include <algorithm>
#include <limits>

#include "scene/vol_measure.h"
#include "scene/volume.h"
#include "vol_fixture.h"

namespace {

using VolMeasure = VolTest;

P3 mean(const std::vector<P3>& p, size_t n) {
  P3 c{0, 0, 0};
  for (size_t i = 0; i < n; i++)
    for (int a = 0; a < 3; a++) c[a] += p[i][a] / static_cast<float>(n);
  return c;
}

const std::vector<P3> FIVE = {{1, 2, 3}, {-4, 0, 2}, {3, 3, -1}, {0, -2, 5}, {100, 100, 100}};

TEST_F(VolMeasure, CentreIsTheMeanOfTheVerticesTheFacetsCountAndIsKept) {
  // The facets reach vertex 4: the fifth is not counted.
  Objet* o = volume(1, FIVE, {{1, 2, 3}, {1, 3, 4}});
  ASSERT_NE(o, nullptr);
  expect_point(floats("CG vol(1)"), 0, mean(FIVE, 4), "centre");
  const word* g = get_val_1(o->local, KW_CG);
  ASSERT_NE(g, nullptr);
  EXPECT_EQ(np(g), 3);
  EXPECT_EQ(dimp(g), 3);
  for (int row = 1; row < 3; row++) expect_point(valeurs(g), row, mean(FIVE, 4), "the first centre, twice");
  // Two volumes: the mean of their centres.
  volume(2, {{10, 10, 10}, {12, 10, 10}, {11, 13, 10}}, {{1, 2, 3}});
  const P3 a = mean(FIVE, 4), b = mean({{10, 10, 10}, {12, 10, 10}, {11, 13, 10}}, 3);
  expect_point(floats("CG vol(1,2)"), 0, {(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2}, "two");
  EXPECT_TRUE(nil("CG vol(99)")) << "no volume, no centre";
}

TEST_F(VolMeasure, CachesAreComputedAgainAfterTheVerticesChange) {
  volume(1, FIVE, {{1, 2, 3, 4}});
  const P3 first = mean(FIVE, 4);
  expect_point(floats("CG vol(1)"), 0, first, "before");
  const std::vector<float> box = floats("limit vol(1)");
  const float r = one("radius vol(1)");
  ok("poi(1) vol(1)=20,-30,40");
  std::vector<P3> moved = FIVE;
  moved[0] = {20, -30, 40};
  expect_point(floats("CG vol(1)"), 0, mean(moved, 4), "after");
  const P3 now = mean(moved, 4);
  expect_point(floats("CG animate vol(1)"), 0, {now[0] - first[0], now[1] - first[1], now[2] - first[2]},
               "moved since the first computation");
  EXPECT_NE(floats("limit vol(1)"), box);
  EXPECT_NE(one("radius vol(1)"), r);
  expect_floats(floats("limit vol(1)"), {-4, -30, -1, 20, 3, 40}, "box after the change");
}

TEST_F(VolMeasure, BoxesMergeAndEachObjectKeepsTheRunningBox) {
  Objet* a = volume(1, {{0, 0, 0}, {1, 2, 3}}, {{1, 2}});
  Objet* b = volume(2, {{-5, 1, 1}, {0, 7, 1}}, {{1, 2}});
  expect_floats(floats("limit vol(1,2)"), {-5, 0, 0, 1, 7, 3}, "merged");
  // The first keeps its own box, the second the merged one.
  expect_floats(valeurs(get_val_1(a->local, KW_box)), {0, 0, 0, 1, 2, 3}, "box of 1");
  expect_floats(valeurs(get_val_1(b->local, KW_box)), {-5, 0, 0, 1, 7, 3}, "box of 2");
  // A valid box is read back as stored, so 2 answers the merged box.
  expect_floats(floats("limit vol(2)"), {-5, 0, 0, 1, 7, 3}, "stored box of 2");
  expect_floats(floats("limit generate vol(2)"), {-5, 1, 1, 0, 7, 1}, "generate computes again");
  EXPECT_TRUE(nil("limit vol(99)")) << "an empty list gives no infinities";
}

TEST_F(VolMeasure, RunningBoundsStartAtAMillion) {
  volume(1, {{2e6f, 3e6f, -3e6f}, {2.5e6f, 4e6f, -2e6f}}, {{1, 2}});
  // The minimum never exceeds 1e6 and the maximum never falls below -1e6.
  expect_floats(floats("limit vol(1)"), {1e6f, 1e6f, -3e6f, 2.5e6f, 4e6f, -1e6f}, "bounds");
  float box[6];
  EXPECT_FALSE(det_limite_vol({}, false, box));
}

TEST_F(VolMeasure, RadiusFromTheMeanPointOverAllOrListedVertices) {
  Objet* o = volume(1, FIVE, {{1, 2, 3, 4}});
  const P3 c = mean(FIVE, 4);
  float all = 0, listed = 0;
  for (size_t i = 0; i < 4; i++) all = std::max(all, dist(c, FIVE[i]));
  for (size_t i : {0u, 2u}) listed = std::max(listed, dist(c, FIVE[i]));
  EXPECT_NEAR(one("radius vol(1)"), all, 1e-4f);
  EXPECT_NEAR(valeurs(get_val_1(o->local, KW_radius))[0], all, 1e-4f) << "kept";
  EXPECT_NEAR(one("radius vertex(1,3,0,9) vol(1)"), listed, 1e-4f) << "0 and 9 are skipped";
  const std::vector<int> none = {7};
  EXPECT_EQ(det_rayon(o, &none), 0.0f);
}

TEST_F(VolMeasure, CentresOfPartsOfAVolume) {
  const std::vector<P3> p = grid_points(3);
  Objet* o = volume(1, p, grid_facets(3));
  expect_point(floats("CG vertex(1,9) vol(1)"), 0, mean({p[0], p[8]}, 2), "vertices");
  const std::vector<float> f = floats("CG fac(2,4) vol(1)");
  expect_point(f, 0, centre(p, grid_facets(3)[1]), "facet 2");
  expect_point(f, 1, centre(p, grid_facets(3)[3]), "facet 4");
  EXPECT_EQ(floats("CG fac vol(1)").size(), 12u) << "every facet";
  // Weighted: vertex 3 weighs 3, vertex 1 weighs 1.
  const P3 w = {(p[0][0] + 3 * p[2][0]) / 4, (p[0][1] + 3 * p[2][1]) / 4, 0};
  expect_point(floats("CG coe(1,0,3) vol(1)"), 0, w, "weights");
  EXPECT_NE(fails("CG coe(0,0) vol(1)").find("DIVISION BY ZERO"), std::string::npos);
  // Sections: rings of 3 vertices (open, secx 2), columns across them.
  EXPECT_NE(fails("CG secy vol(1)").find("is not a grid"), std::string::npos);
  vol_secx(o) = 2;
  vol_secy(o) = 2;
  const std::vector<float> rings = floats("CG secy vol(1)");
  ASSERT_EQ(rings.size(), 9u);
  for (size_t j = 0; j < 3; j++) expect_point(rings, j, mean({p[3 * j], p[3 * j + 1], p[3 * j + 2]}, 3), "ring");
  expect_point(floats("CG secx(2) vol(1)"), 0, mean({p[2], p[5], p[8]}, 3), "column 2");
  const Outcome out = run("CG secx(3) vol(1)");
  EXPECT_NE(out.out.find("3  ILLEGAL"), std::string::npos) << "columns go from 0 to 2: " << out.out;
}

TEST_F(VolMeasure, CentreThroughTheMatrixOfTheVolume) {
  Objet* o = volume(1, FIVE, {{1, 2, 3, 4}});
  float* t = get_matrix_vol(o);
  // Moved by (100,200,300), a quarter turn about z, a scale of 2 in x;
  // the animation adds 5 to the translation in y.
  t[TR_TRAN] = 100, t[TR_TRAN + 1] = 200, t[TR_TRAN + 2] = 300;
  t[TR_DELTA + TR_TRAN + 1] = 5;
  t[TR_ROTX + 2] = 90;
  t[TR_DILA] = 2;
  const P3 c = mean(FIVE, 4);
  // Scaled first, then turned: (x,y) -> (-y, x).
  expect_point(floats("CG abs vol(1)"), 0, {100 - c[1], 205 + 2 * c[0], 300 + c[2]}, "drawn centre");
  expect_point(floats("CG anc vol(1)"), 0, {100, 205, 300}, "origin of the matrix");
  t[TR_MATRIX + 12] = 7;
  expect_point(floats("CG matrix vol(1)"), 0, {7, 0, 0}, "no matrix anc: the stored matrix");
  ok("matrix anc vol(1)=1,0,0,0,0,1,0,0,0,0,1,0,-1,-2,-3,1");
  expect_point(floats("CG matrix vol(1)"), 0, {-1, -2, -3}, "matrix anc");
}

TEST_F(VolMeasure, PlainNumbers) {
  expect_point(floats("CG(1,2,3,3,4,5)"), 0, {2, 3, 4}, "two points");
  EXPECT_NE(fails("CG(1,2)").find("x1,y1,z1, ..."), std::string::npos);
  EXPECT_NE(fails("CG(\"a\")").find("x1,y1,z1, ..."), std::string::npos);
}

TEST_F(VolMeasure, AVolumeWithoutVerticesIsReported) {
  ok("vol(3) col(1,0,0)");
  EXPECT_NE(fails("limit vol(3)").find("EMPTY"), std::string::npos);
  EXPECT_NE(fails("radius vol(3)").find("EMPTY"), std::string::npos);
}

}  // namespace
