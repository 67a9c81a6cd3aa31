// Volumes typed vertex by vertex for the tests of measures and
// generators, and independent computations to check them against.
#pragma once
#include <array>
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "kernel/chains.h"
#include "kernel/property.h"
#include "scene/lookup.h"
#include "scene_fixture.h"

using P3 = std::array<float, 3>;
using Facets = std::vector<std::vector<int>>;

class VolTest : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    Yes(KW_edit) = 0;
  }
  // `vol(id) poi(...) fac(...)...`, and the volume made.
  static Objet* volume(int id, const std::vector<P3>& p, const Facets& f) {
    std::ostringstream t;
    t << std::fixed << "vol(" << id << ") poi(";
    for (size_t i = 0; i < p.size(); i++) t << (i ? "," : "") << p[i][0] << "," << p[i][1] << "," << p[i][2];
    t << ")";
    for (const auto& fac : f) {
      t << " fac(";
      for (size_t i = 0; i < fac.size(); i++) t << (i ? "," : "") << fac[i];
      t << ")";
    }
    ok(t.str());
    return get_objet_id(chaine_classe(KW_vol), KW_vol, id);
  }
  // Small grids numbered by `ids`, and console lines that must succeed.
  static void grilles(std::initializer_list<int> ids) {
    for (int id : ids) volume(id, grid_points(2), grid_facets(2));
  }
  static void lignes(std::initializer_list<std::string> texts) {
    for (const std::string& t : texts) ok(t);
  }
  // A cube of half edge h about the origin, facets turning
  // counter-clockwise seen from outside.
  static std::vector<P3> cube_points(float h) {
    return {{-h, h, -h}, {h, h, -h}, {h, h, h}, {-h, h, h}, {-h, -h, -h}, {h, -h, -h}, {h, -h, h}, {-h, -h, h}};
  }
  static Facets cube_facets() { return {{1, 2, 6, 5}, {2, 3, 7, 6}, {3, 4, 8, 7}, {4, 1, 5, 8}, {5, 6, 7, 8}, {4, 3, 2, 1}}; }
  // An n x n grid of vertices in the plane z = 0, one apart, rows of n.
  static std::vector<P3> grid_points(int n) {
    std::vector<P3> p;
    for (int j = 0; j < n; j++)
      for (int i = 0; i < n; i++) p.push_back({static_cast<float>(i), static_cast<float>(j), 0});
    return p;
  }
  static Facets grid_facets(int n) {
    Facets f;
    for (int j = 0; j + 1 < n; j++)
      for (int i = 0; i + 1 < n; i++) {
        const int a = j * n + i + 1;
        f.push_back({a, a + 1, a + 1 + n, a + n});
      }
    return f;
  }
  static P3 unit(P3 v) {
    const float l = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return {v[0] / l, v[1] / l, v[2] / l};
  }
  static P3 centre(const std::vector<P3>& p, const std::vector<int>& f) {
    P3 c{0, 0, 0};
    for (int k : f)
      for (int a = 0; a < 3; a++) c[a] += p[static_cast<size_t>(k - 1)][a] / static_cast<float>(f.size());
    return c;
  }
  static float dist(P3 a, P3 b) { return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2])); }
  // Distance in the plane z = 0.
  static float dist_plane(P3 a, P3 b) { return std::hypot(a[0] - b[0], a[1] - b[1]); }
  static void expect_point(const std::vector<float>& got, size_t i, P3 want, const char* what) {
    ASSERT_GE(got.size(), 3 * i + 3) << what;
    for (size_t a = 0; a < 3; a++) EXPECT_NEAR(got[3 * i + a], want[a], 1e-4f) << what << " point " << i + 1;
  }
  // The floats of a property value.
  static std::vector<float> valeurs(const word* v) {
    std::vector<float> f;
    for (int i = 0; v && i < np(v) * std::max<int>(dimp(v), 1); i++) f.push_back(getf(v, i));
    return f;
  }
};
