// Resampling keys into rows: every law against its formula on a straight
// line, several keys against a walk along the polyline, a curve as law,
// a segment of no length, the smoothed curve, the closing option, the
// spacing by segments, and the widening of `format(1)` and `format(2)`.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "animation/traj/ajust.h"
#include "scene/law.h"
#include "kernel/keywords.h"

namespace {

constexpr double PI = 3.14159265358979;

// The point at arc length s along a polyline of 3-float points, walked
// segment by segment.
std::vector<double> at_length(const std::vector<float>& p, double s) {
  const size_t n = p.size() / 3;
  for (size_t i = 0; i + 1 < n; i++) {
    const double dx = p[3 * i + 3] - p[3 * i], dy = p[3 * i + 4] - p[3 * i + 1], dz = p[3 * i + 5] - p[3 * i + 2];
    const double len = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (s <= len || i + 2 == n) {
      const double f = len > 0 ? std::min(s / len, 1.0) : 0;
      return {p[3 * i] + f * dx, p[3 * i + 1] + f * dy, p[3 * i + 2] + f * dz};
    }
    s -= len;
  }
  return {p[0], p[1], p[2]};
}

double length_of(const std::vector<float>& p) {
  double L = 0;
  for (size_t i = 3; i < p.size(); i += 3)
    L += std::sqrt(std::pow(p[i] - p[i - 3], 2) + std::pow(p[i + 1] - p[i - 2], 2) + std::pow(p[i + 2] - p[i - 1], 2));
  return L;
}

void expect_rows(const std::vector<float>& got, const std::vector<float>& keys, int ni, double (*law)(double, double),
                 const char* what) {
  ASSERT_EQ(got.size(), static_cast<size_t>(3 * ni)) << what;
  const double L = length_of(keys);
  for (int k = 0; k < ni; k++) {
    const std::vector<double> want = at_length(keys, law(L, static_cast<double>(k) / (ni - 1)));
    for (int c = 0; c < 3; c++) EXPECT_NEAR(got[3 * k + c], want[c], 2e-3) << what << " row " << k << " coord " << c;
  }
}

Ajustement rows(int ni, int law = 0) {
  Ajustement a;
  a.ni = ni;
  a.loi.kind = law;
  return a;
}

TEST(TrajAjust, EachLawOnTwoKeysFollowsItsFormula) {
  const std::vector<float> keys = {1, 2, 3, 4, 6, 15};  // length 13
  expect_rows(ajust_1(keys, 3, rows(9)), keys, 9, [](double L, double t) { return L * t; }, "none");
  expect_rows(ajust_1(keys, 3, rows(9, KW_acc)), keys, 9,
              [](double L, double t) { return L - L * std::cos(t * PI / 2); }, "acc");
  expect_rows(ajust_1(keys, 3, rows(9, KW_dec)), keys, 9, [](double L, double t) { return L * std::sin(t * PI / 2); },
              "dec");
  expect_rows(ajust_1(keys, 3, rows(9, KW_pend)), keys, 9,
              [](double L, double t) { return (L - L * std::cos(t * PI)) / 2; }, "pend");
  expect_rows(ajust_1(keys, 3, rows(9, -KW_pend)), keys, 9,
              [](double L, double t) { return L * (1 - std::acos(2 * t - 1) / PI); }, "-pend");
}

TEST(TrajAjust, SeveralKeysAreWalkedAlongThePolylineWithExactEnds) {
  const std::vector<float> keys = {0, 0, 0, 3, 4, 0, 3, 4, 12, -2, 4, 12};
  const std::vector<float> got = ajust_1(keys, 3, rows(23, KW_acc));
  expect_rows(got, keys, 23, [](double L, double t) { return L - L * std::cos(t * PI / 2); }, "acc polyline");
  // First and last rows are the keys themselves, bit for bit.
  for (int c = 0; c < 3; c++) {
    EXPECT_EQ(got[c], keys[c]);
    EXPECT_EQ(got[22 * 3 + c], keys[9 + c]);
  }
  // Fewer than two rows are raised to two.
  EXPECT_EQ(ajust_1(keys, 3, rows(1)).size(), 6u);
}

TEST(TrajAjust, ACurveAsLawScalesItsAbscissaAndItsResult) {
  // law: x 0..2, y 0, 0.25, 1 (a slow start).
  const std::vector<float> curve = {0, 0, 0, 1, 0.25f, 0, 2, 1, 0};
  const std::vector<float> keys = {0, 0, 0, 8, 0, 0};
  auto law_y = [](double x) { return x <= 1 ? 0.25 * x : 0.25 + 0.75 * (x - 1); };
  Ajustement a = rows(5, KW_law);
  a.loi.curve = curve;
  const std::vector<float> got = ajust_1(keys, 3, a);
  for (int k = 0; k < 5; k++) EXPECT_NEAR(got[3 * k], 8 * law_y(2.0 * k / 4) / 1.0, 1e-4) << "law row " << k;
  // `adjust`: t over the curve's range (x 1..3), y brought to 0..L.
  const std::vector<float> shifted = {1, 2, 0, 2, 2.5f, 0, 3, 4, 0};
  auto adj_y = [](double x) { return x <= 2 ? 2 + 0.5 * (x - 1) : 2.5 + 1.5 * (x - 2); };
  a.loi.kind = KW_adjust;
  a.loi.curve = shifted;
  const std::vector<float> adj = ajust_1(keys, 3, a);
  for (int k = 0; k < 5; k++)
    EXPECT_NEAR(adj[3 * k], 8 * (adj_y(1 + 2.0 * k / 4) - 2) / 2, 1e-4) << "adjust row " << k;
}

TEST(TrajAjust, ASegmentOfNoLengthGivesItsStart) {
  // The third key is 0.00005 from the second: a row whose position falls
  // on that segment is the second key, not a point between.
  const std::vector<float> keys = {0, 0, 0, 1, 0, 0, 1.00005f, 0, 0, 2.00005f, 0, 0};
  const std::vector<float> got = ajust_1(keys, 3, rows(3));
  EXPECT_EQ(got[3], 1.0f);
  // Equal keys: every row is that key.
  const std::vector<float> same = {5, 5, 5, 5, 5, 5};
  for (float f : ajust_1(same, 3, rows(4))) EXPECT_EQ(f, 5.0f);
}

TEST(TrajAjust, TheSmoothedCurvePassesThroughTheKeysWithItsTangents) {
  const std::vector<float> keys = {0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10, 0};
  const std::vector<float> c = courbe_ext(keys, 3, 4, 1.0f, false);
  ASSERT_EQ(c.size(), static_cast<size_t>((3 * 4 + 1) * 3));
  for (int i = 0; i < 4; i++)
    for (int k = 0; k < 3; k++) EXPECT_FLOAT_EQ(c[(i * 4) * 3 + k], keys[i * 3 + k]) << "key " << i;
  // The middle of the second segment: (p1 + p2)/2 + (m1 - m2)/8 with the
  // tangents m1 = (p2 - p0)/2 and m2 = (p3 - p1)/2.
  const float m1[2] = {5, 5}, m2[2] = {-5, 5};
  EXPECT_NEAR(c[6 * 3], 10 + (m1[0] - m2[0]) / 8, 1e-5);
  EXPECT_NEAR(c[6 * 3 + 1], 5 + (m1[1] - m2[1]) / 8, 1e-5);
  // Keys evenly spaced on a line stay on it, evenly: the rows are those
  // of the keys alone.
  const std::vector<float> line = {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3};
  Ajustement a = rows(7);
  a.ext = true;
  const std::vector<float> smooth = ajust_1(line, 3, a), plain = ajust_1(line, 3, rows(7));
  for (size_t i = 0; i < plain.size(); i++) EXPECT_NEAR(smooth[i], plain[i], 1e-4);
  // Closed, the curve ends where it began.
  const std::vector<float> closed = courbe_ext(keys, 3, 4, 1.0f, true);
  ASSERT_EQ(closed.size(), static_cast<size_t>((4 * 4 + 1) * 3));
  for (int k = 0; k < 3; k++) EXPECT_FLOAT_EQ(closed[closed.size() - 3 + k], keys[k]);
}

TEST(TrajAjust, TheClosingOptionComesBackToTheFirstKey) {
  const std::vector<float> keys = {0, 0, 0, 4, 0, 0};
  Ajustement a = rows(5);
  a.close = true;
  const std::vector<float> got = ajust_1(keys, 3, a);
  const float want[5] = {0, 2, 4, 2, 0};
  for (int k = 0; k < 5; k++) EXPECT_NEAR(got[3 * k], want[k], 1e-5) << k;
}

TEST(TrajAjust, InterpolSpacesRowsEquallyInEachSegment) {
  const std::vector<float> keys = {0, 0, 0, 10, 0, 0, 40, 0, 0};
  Ajustement a = rows(7);
  a.interpol = true;
  const std::vector<float> got = ajust_1(keys, 3, a);
  // 7/2 = 3 rows on the first segment, the 4 others on the last.
  const float want[7] = {0, 10.0f / 3, 20.0f / 3, 10, 20, 30, 40};
  for (int k = 0; k < 7; k++) EXPECT_NEAR(got[3 * k], want[k], 1e-4) << k;
}

TEST(TrajAjust, FormatsWidenBeforeAndNarrowAfter) {
  // format(1): (v, i, 0), every step of length sqrt(4 + 1).
  const std::vector<float> one = retrecit_format(ajust_1(elargit_format({5, 7, 9}, 1), 3, rows(5)), 1);
  ASSERT_EQ(one.size(), 5u);
  for (int k = 0; k < 5; k++) EXPECT_NEAR(one[k], 5 + k, 1e-5);
  // format(2): (a, b, 0).
  const std::vector<float> two = retrecit_format(ajust_1(elargit_format({0, 0, 3, 4}, 2), 3, rows(3)), 2);
  const float want[6] = {0, 0, 1.5f, 2, 3, 4};
  ASSERT_EQ(two.size(), 6u);
  for (int k = 0; k < 6; k++) EXPECT_NEAR(two[k], want[k], 1e-5);
}

}  // namespace
