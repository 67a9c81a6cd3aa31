// Generators of primitives and the vertex transformations, checked
// against direct computations.
#include <cmath>
#include <set>
#include <utility>

#include "kernel/random_table.h"
#include "scene/law.h"
#include "scene/matrix.h"
#include "scene/transform.h"
#include "scene/vol_gen.h"
#include "scene_fixture.h"

namespace {

// Every edge of a closed surface of quadrilaterals is shared by exactly
// two facets, once in each direction when the facets agree in turn.
std::multiset<std::pair<int, int>> aretes(const Facettes& f) {
  std::multiset<std::pair<int, int>> e;
  f.pour_chaque([&](const word* v, int k) {
    for (int i = 0; i < k; i++) e.insert({v[i], v[(i + 1) % k]});
  });
  return e;
}

// Every vertex number of the facets lies in 1..vertices.
void numeros_dans(const Facettes& f, int vertices) {
  f.pour_chaque([&](const word* v, int k) {
    for (int i = 0; i < k; i++) EXPECT_TRUE(v[i] >= 1 && v[i] <= vertices) << v[i];
  });
}

TEST(VolumeGenerators, ClosedRowsFormABandWhoseEdgesPair) {
  const int nx = 6, ny = 4;
  Facettes f = gen_fac_close(nx, ny);
  ASSERT_EQ(f.count, nx * ny);
  EXPECT_EQ(facettes_close(nx, ny), f.count) << "the count made before building";
  auto e = aretes(f);
  // Inner edges (between rows 1..ny-1 and within rows) appear in both
  // directions; only the first and last rows' outer edges stand alone.
  int lonely = 0;
  for (const auto& [a, b] : e)
    if (!e.count({b, a})) lonely++;
  EXPECT_EQ(lonely, 2 * nx);
  numeros_dans(f, nx * (ny + 1));
}

TEST(VolumeGenerators, GridCountsMatchTheLatticeFormula) {
  for (int nx : {1, 3})
    for (int ny : {1, 2})
      for (int nz : {0, 1, 2}) {
        Facettes f = gen_fac_grid(nx, ny, nz);
        EXPECT_EQ(f.count, nx * ny * (nz + 1) + nz * nx * (ny + 1)) << nx << ny << nz;
        EXPECT_EQ(facettes_grid(nx, ny, nz), f.count) << "the count made before building";
        EXPECT_EQ(f.mots.size(), 8u * static_cast<size_t>(f.count));
        numeros_dans(f, (nx + 1) * (ny + 1) * (nz + 1));
      }
}

TEST(VolumeGenerators, RevolutionTurnsEachPointAboutY) {
  Sommets profile;
  profile.add(2, 1, 0);
  profile.add(0, 3, 1);
  const float angle = 1.2f, phase = 0.3f;
  Sommets r = gen_poi_rev(profile, angle, phase, 4, false);
  ASSERT_EQ(r.count(), 2 * 5) << "open: n+1 positions per point";
  for (int k = 0; k < 2; k++)
    for (int i = 0; i < 5; i++) {
      const float a = i * angle / 4 + phase;
      const float* p = &profile.xyz[3 * k];
      const float* q = &r.xyz[3 * (k * 5 + i)];
      // The distance to the y axis and the height are kept, and the
      // point has turned by a.
      EXPECT_NEAR(q[0] * q[0] + q[2] * q[2], p[0] * p[0] + p[2] * p[2], 1e-4f);
      EXPECT_FLOAT_EQ(q[1], p[1]);
      const float turned = std::atan2(q[2], q[0]) - std::atan2(p[2], p[0]);
      EXPECT_NEAR(std::remainder(turned - a, 6.2831853f), 0.0f, 1e-5f);
    }
  EXPECT_EQ(gen_poi_rev(profile, angle, 0, 4, true).count(), 8);
  EXPECT_EQ(gen_poi_rev(Sommets{}, angle, 0, 3, true).count(), 3) << "an empty profile: positions of one point";
}

TEST(VolumeTransforms, TurnsAgreeWithTheRotationMatrix) {
  const float c[3] = {1, -2, 0.5f};
  const float pts[] = {1, 2, 3, -4, 0.5f, 7, 0, 0, 0};
  for (int axis = 0; axis < 3; axis++) {
    Transformation t;
    t.kind = KW_rotx + axis;
    t.par = {0.7f};
    std::copy(c, c + 3, t.centre);
    float moved[9];
    TRANSF_POI(pts, moved, 3, 3, t);
    float m[16], ax[3] = {0, 0, 0};
    ax[axis] = 1;
    mat::rotation(m, 0.7f, ax, c);
    for (int i = 0; i < 3; i++) {
      float r[3];
      mat::point(m, pts + 3 * i, r);
      for (int k = 0; k < 3; k++) EXPECT_NEAR(moved[3 * i + k], r[k], 1e-4f) << "axis " << axis << " vertex " << i;
    }
    // rota about the same axis gives the same.
    Transformation a = t;
    a.kind = KW_rota;
    std::copy(ax, ax + 3, a.axis);
    float turned[9];
    TRANSF_POI(pts, turned, 3, 3, a);
    for (int i = 0; i < 9; i++) EXPECT_NEAR(turned[i], moved[i], 1e-4f);
  }
}

TEST(VolumeTransforms, StrideListsAndTheRandomTable) {
  // Stride 4: the fourth word of each vertex is left alone.
  float v[8] = {1, 1, 1, 9, 2, 2, 2, 9};
  Transformation t;
  t.kind = KW_tran;
  t.par = {1};
  t.vertices = {2, 5, 0};
  TRANSF_POI(v, v, 2, 4, t);
  EXPECT_FLOAT_EQ(v[0], 1) << "vertex 1 is not listed";
  EXPECT_FLOAT_EQ(v[4], 3);
  EXPECT_FLOAT_EQ(v[5], 2) << "missing values of tran are 0";
  EXPECT_FLOAT_EQ(v[7], 9);
  // The table from one seed gives one shape; the values stay within a.
  random_table_fill(100);
  Transformation a;
  a.kind = KW_alea;
  a.par = {0.5f, 0.5f, 0.5f};
  float p1[30] = {}, p2[30] = {};
  graine_alea() = 7;
  TRANSF_POI(p1, p1, 10, 3, a);
  graine_alea() = 7;
  TRANSF_POI(p2, p2, 10, 3, a);
  for (int i = 0; i < 30; i++) {
    EXPECT_FLOAT_EQ(p1[i], p2[i]);
    EXPECT_LE(std::fabs(p1[i]), 0.5f);
  }
  graine_alea() = 8;
  float p3[30] = {};
  TRANSF_POI(p3, p3, 10, 3, a);
  EXPECT_NE(p3[0], p1[0]) << "another seed, another shape";
}

TEST(VolumeTransforms, LawsAndCurves) {
  EXPECT_FLOAT_EQ(loi(KW_acc, 0), 1);
  EXPECT_FLOAT_EQ(loi(KW_acc, 1), 0);
  EXPECT_FLOAT_EQ(loi(KW_dec, 0), 0);
  EXPECT_NEAR(loi(KW_pend, 1), -1, 1e-6f);
  EXPECT_NEAR(loi(KW_sin, 0.5f), std::sin(3.14159265f / 4), 1e-6f);
  const float rising[] = {0, 0, 0, 1, 10, 0, 3, 30, 0};
  EXPECT_FLOAT_EQ(read_law(rising, 3, 3, 0.5f), 5);
  EXPECT_FLOAT_EQ(read_law(rising, 3, 3, 2), 20);
  EXPECT_FLOAT_EQ(read_law(rising, 3, 3, -1), 0) << "before the curve: the first y";
  EXPECT_FLOAT_EQ(read_law(rising, 3, 3, 9), 30) << "after it: the last y";
  EXPECT_FLOAT_EQ(read_law(rising, 1, 3, 9), 0) << "one point: its y";
  // A step of 0.0001 or less takes the step itself as the fraction.
  const float flat[] = {0, 0, 0, 0.00005f, 10, 0, 1, 10, 0};
  EXPECT_NEAR(read_law(flat, 3, 3, 0.00001f), 0.00005f * 10, 1e-6f);
}

}  // namespace
