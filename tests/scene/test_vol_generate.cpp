// The generators of volume data, against computations made here.
#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "kernel/vocab.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"
#include "vol_fixture.h"

namespace {

using VolGenerate = VolTest;

TEST_F(VolGenerate, CubeNormalsPointOutward) {
  const std::vector<P3> p = cube_points(2);
  volume(1, p, cube_facets());
  // About the origin, a face's outward normal is the direction of its
  // centre, and a corner's mean normal the direction of the corner.
  const std::vector<float> nf = floats("normal fac vol(1)");
  ASSERT_EQ(nf.size(), 18u);
  for (size_t i = 0; i < 6; i++) expect_point(nf, i, unit(centre(p, cube_facets()[i])), "facet");
  const std::vector<float> nv = floats("normal vertex vol(1)");
  ASSERT_EQ(nv.size(), 24u);
  for (size_t i = 0; i < 8; i++) expect_point(nv, i, unit(p[i]), "vertex");
  expect_point(floats("normal fac(3) vol(1)"), 0, unit(centre(p, cube_facets()[2])), "one facet");
  expect_point(floats("normal vertex(7) vol(1)"), 0, unit(p[6]), "one vertex");
}

TEST_F(VolGenerate, CopiesOfOnePointShareTheirNormal) {
  ok("ball(1) dim(1) secy(4)");
  const word* poi = poi_vol(get_objet_id(chaine_classe(KW_vol), KW_vol, 1));
  ASSERT_NE(poi, nullptr);
  const std::vector<float> nv = floats("normal vertex vol(1)");
  ASSERT_EQ(nv.size(), 3u * static_cast<size_t>(np(poi)));
  int poles = 0, equator = 0;
  for (int i = 0; i < np(poi); i++) {
    const P3 p = {getf(poi, 3 * i), getf(poi, 3 * i + 1), getf(poi, 3 * i + 2)};
    if (std::fabs(std::fabs(p[1]) - 1) < 1e-5f) {
      expect_point(nv, static_cast<size_t>(i), {0, p[1], 0}, "a pole points along y");
      poles++;
    } else if (std::fabs(p[1]) < 1e-5f) {
      expect_point(nv, static_cast<size_t>(i), unit({p[0], 0, p[2]}), "the equator points outward");
      equator++;
    }
  }
  EXPECT_EQ(poles, 16);
  EXPECT_EQ(equator, 8);
}

TEST_F(VolGenerate, NormalsFollowTheVerticesWhenTheyChange) {
  Objet* o = volume(1, cube_points(1), cube_facets());
  floats("normal fac vol(1)");
  const int keys[] = {KW_normal, KW_fac};
  ASSERT_NE(derive_valide(o, 2, keys), nullptr) << "kept once computed";
  // The mirror image in y with the same facets: they now turn inward.
  std::vector<P3> m = cube_points(1);
  for (P3& q : m) q[1] = -q[1];
  std::ostringstream t;
  t << "poi vol(1)=";
  for (size_t i = 0; i < m.size(); i++) t << (i ? "," : "") << m[i][0] << "," << m[i][1] << "," << m[i][2];
  ok(t.str());
  EXPECT_EQ(derive_valide(o, 2, keys), nullptr) << "stale";
  const std::vector<float> nf = floats("normal fac vol(1)");
  for (size_t i = 0; i < 6; i++) {
    const P3 c = unit(centre(m, cube_facets()[i]));
    expect_point(nf, i, {-c[0], -c[1], -c[2]}, "inward");
  }
}

TEST_F(VolGenerate, NeighboursAndRestLengthsOfAGrid) {
  const int n = 4;
  const std::vector<P3> p = grid_points(n);
  // A bent grid: distances differ, neighbours stay those of the lattice.
  std::vector<P3> bent = p;
  for (P3& q : bent) q[2] = q[0] * q[0] / 3;
  Objet* o = volume(1, bent, grid_facets(n));
  const std::vector<float> near = floats("near vertex vol(1)");
  const std::vector<float> dist = floats("near vertex dist vol(1)");
  const std::vector<float> radius = floats("radius near vertex vol(1)");
  ASSERT_EQ(near.size(), p.size() * 4) << "an inner vertex has 4 neighbours";
  ASSERT_EQ(dist.size(), near.size());
  for (size_t a = 0; a < p.size(); a++) {
    std::vector<float> want, lengths;
    float shortest = 1e9f;
    for (size_t b = 0; b < p.size(); b++)
      if (std::fabs(dist_plane(p[a], p[b]) - 1) < 1e-6f) {
        want.push_back(static_cast<float>(b + 1));
        lengths.push_back(VolTest::dist(bent[a], bent[b]));
        shortest = std::min(shortest, lengths.back());
      }
    want.resize(4, 0.0f);
    lengths.resize(4, 0.0f);
    for (size_t k = 0; k < 4; k++) {
      EXPECT_EQ(near[a * 4 + k], want[k]) << "vertex " << a + 1;
      EXPECT_NEAR(dist[a * 4 + k], lengths[k], 1e-4f) << "vertex " << a + 1;
    }
    EXPECT_NEAR(radius[a], shortest / 2, 1e-4f) << "vertex " << a + 1;
  }
  // Stored, each vertex's list is led by its own size: corners have 2
  // neighbours, edges 3, the 4 inner vertices 4.
  const word* stored = get_val_3(o->local, KW_near, KW_vertex, KW_vertex);
  ASSERT_EQ(elements(stored), 4 * 3 + 8 * 4 + 4 * 5);
  for (int i = 0, a = 0; a < 16; a++) {
    const int len = static_cast<int>(getf(stored, i));
    ASSERT_GE(len, 3) << "vertex " << a + 1;
    for (int j = 1; j < len; j++) EXPECT_EQ(getf(stored, i + j), near[a * 4 + j - 1]) << "vertex " << a + 1;
    if (len < 5) {
      EXPECT_EQ(near[a * 4 + len - 1], 0) << "vertex " << a + 1;
    }
    i += len;
  }
  EXPECT_EQ(floats("near vertex(6,1) vol(1)"), (std::vector<float>{2, 5, 7, 10, 2, 5, 0, 0}));
  EXPECT_NEAR(one("radius near vertex(6) vol(1)"), radius[5], 1e-6f);
  EXPECT_EQ(one("radius near vertex(99) vol(1)"), 0.0f) << "out of range gives 0";
}

TEST_F(VolGenerate, TextureCoordinatesAlongSectionsOrAroundTheCentre) {
  const int n = 3;
  Objet* o = volume(1, grid_points(n), grid_facets(n));
  vol_secx(o) = n - 1;
  vol_secy(o) = n - 1;
  const std::vector<float> uv = floats("coord vertex vol(1)");
  ASSERT_EQ(uv.size(), 2u * n * n);
  // The grid's own coordinates, scaled to 0..1, are its texture.
  const std::vector<P3> p = grid_points(n);
  for (size_t k = 0; k < p.size(); k++) {
    EXPECT_NEAR(uv[2 * k], p[k][0] / (n - 1), 1e-6f);
    EXPECT_NEAR(uv[2 * k + 1], p[k][1] / (n - 1), 1e-6f);
  }
  volume(2, cube_points(1), cube_facets());
  const std::vector<float> c = floats("coord vertex vol(2)");
  ASSERT_EQ(c.size(), 16u);
  const std::vector<P3> q = cube_points(1);
  for (size_t k = 0; k < 8; k++) {
    EXPECT_GE(c[2 * k], 0.0f);
    EXPECT_LE(c[2 * k], 1.0f);
    EXPECT_EQ(c[2 * k + 1] < 0.5f, q[k][1] > 0) << "the top half above the middle";
  }
  // Opposite corners through the centre are half a turn apart.
  EXPECT_NEAR(std::fabs(c[0] - c[2 * 6]), 0.5f, 1e-5f);
}

TEST_F(VolGenerate, RefinementKeepsTheShapeAndSplitsEveryFacet) {
  Objet* o = volume(1, cube_points(1), cube_facets());
  ok("generate frac vol(1)");
  std::set<std::pair<int, int>> edges;
  size_t corners = 0;
  for (const auto& f : cube_facets())
    for (size_t i = 0; i < f.size(); i++) {
      edges.insert({std::min(f[i], f[(i + 1) % f.size()]), std::max(f[i], f[(i + 1) % f.size()])});
      corners++;
    }
  const std::vector<float> pg = floats("poi generate vol(1)");
  EXPECT_EQ(pg.size() / 3, 8 + edges.size() + 6) << "vertices, edge middles, facet centres";
  for (size_t i = 0; i < pg.size(); i += 3)
    EXPECT_NEAR(std::max({std::fabs(pg[i]), std::fabs(pg[i + 1]), std::fabs(pg[i + 2])}), 1.0f, 1e-6f)
        << "on the cube";
  const int kf[] = {KW_fac, KW_generate};
  const word* fg = derive_vol(o, 2, kf);
  ASSERT_NE(fg, nullptr);
  EXPECT_EQ(np(fg), static_cast<int>(corners)) << "one quadrilateral per corner of a facet";
  // Each new facet faces as the facet it came from: four per face.
  std::map<std::vector<int>, int> by_normal;
  pour_chaque_facette(fg, [&](const word* v, int count) {
    float r[3];
    normale_facette(pg.data(), 3, static_cast<int>(pg.size() / 3), v, count, r);
    by_normal[{static_cast<int>(std::lround(r[0])), static_cast<int>(std::lround(r[1])), static_cast<int>(std::lround(r[2]))}]++;
  });
  ASSERT_EQ(by_normal.size(), 6u);
  for (const auto& [normal, count] : by_normal) EXPECT_EQ(count, 4);
  // A second level splits each quadrilateral at its four corners again.
  ok("generate frac(2) vol(1)");
  EXPECT_EQ(np(derive_vol(o, 2, kf)), static_cast<int>(corners) * 4);
}

TEST_F(VolGenerate, ExtrusionGivesTheSurfaceAThickness) {
  volume(1, cube_points(1), cube_facets());
  ok("generate ext(0.5) vol(1)");
  const std::vector<float> pg = floats("poi generate vol(1)");
  ASSERT_EQ(pg.size(), 48u);
  const std::vector<P3> p = cube_points(1);
  for (size_t i = 0; i < 8; i++) {
    const P3 u = unit(p[i]);
    expect_point(pg, 8 + i, {p[i][0] + 0.5f * u[0], p[i][1] + 0.5f * u[1], p[i][2] + 0.5f * u[2]}, "moved along the normal");
  }
  EXPECT_EQ(floats("NP(fac generate vol(1))")[0], 12.0f) << "a closed surface: outside and inside";
  // One square: two sides and four edges closed.
  volume(2, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{1, 2, 3, 4}});
  ok("generate ext(2) vol(2)");
  EXPECT_EQ(floats("NP(fac generate vol(2))")[0], 6.0f);
  const std::vector<float> top = floats("poi generate vol(2)");
  for (size_t i = 4; i < 8; i++) EXPECT_NEAR(top[3 * i + 2], 2.0f, 1e-6f);
}

TEST_F(VolGenerate, LedVerticesGoThroughTheMatrixAnc) {
  Objet* o = volume(1, cube_points(1), cube_facets());
  ok("matrix anc vol(1)=1,0,0,0,0,1,0,0,0,0,1,0,10,20,30,1");
  // The leader exists: with the dynamics installed `lead` links both ends.
  ok("vol(2) poi(0,0,0)");
  ok("lead vol(1)=2");
  const int was = Yes(KW_anc);
  Yes(KW_anc) = 1;
  const std::vector<float> moved = floats("poi vol(1)");
  const std::vector<P3> p = cube_points(1);
  for (size_t i = 0; i < 8; i++) expect_point(moved, i, {p[i][0] + 10, p[i][1] + 20, p[i][2] + 30}, "led");
  const int keys[] = {KW_poi, KW_anc};
  EXPECT_EQ(get_poi_vol(o), derive_valide(o, 2, keys));
  // A new matrix: a reading sees it at once, the animation's accessor
  // after the per-image reset.
  ok("matrix anc vol(1)=1,0,0,0,0,1,0,0,0,0,1,0,0,0,-5,1");
  EXPECT_NEAR(getf(get_poi_vol(o), 2), p[0][2] + 30, 1e-6f) << "made once an image";
  raz_generate(o, 1);
  EXPECT_NEAR(getf(get_poi_vol(o), 2), p[0][2] - 5, 1e-6f);
  ok("matrix anc vol(1)=1,0,0,0,0,1,0,0,0,0,1,0,0,0,7,1");
  expect_point(floats("poi vol(1)"), 0, {p[0][0], p[0][1], p[0][2] + 7}, "a reading");
  Yes(KW_anc) = 0;
  expect_point(floats("poi vol(1)"), 0, p[0], "anc off");
  EXPECT_EQ(get_poi_vol(o), poi_vol(o));
  Yes(KW_anc) = was;
}

TEST_F(VolGenerate, TheCommandComputesAndReportsWhatItCannot) {
  Objet* o = volume(1, grid_points(3), grid_facets(3));
  ok("generate vol(1)");
  for (std::vector<int> k : std::vector<std::vector<int>>{{KW_normal, KW_fac}, {KW_normal, KW_vertex}, {KW_coord, KW_vertex},
                                                          {KW_near, KW_vertex, KW_vertex}, {KW_near, KW_vertex, KW_dist},
                                                          {KW_radius, KW_near, KW_vertex}})
    EXPECT_NE(derive_valide(o, static_cast<int>(k.size()), k.data()), nullptr) << k[0];
  EXPECT_NE(fails("generate col vol(1)").find("frac(n)"), std::string::npos);
  ok("vol(2) col(1,0,0)");
  EXPECT_NE(fails("normal fac vol(2)").find("EMPTY"), std::string::npos);
  EXPECT_TRUE(nil("normal fac vol(9)"));
}

}  // namespace
