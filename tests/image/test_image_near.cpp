// The cellular rule checked against a plain evaluation of the rule on a
// grid of cells, written here on its own.
#include "image_fixture.h"

namespace {

using Near = ImageTest;
using Grille = std::vector<int>;

constexpr float QUATRE[9] = {0, 1, 0, 1, 0, 1, 0, 1, 0};

Grille etape(const Grille& g, int nx, int ny, const float* m) {
  Grille out = g;
  for (int y = 0; y < ny; y++)
    for (int x = 0; x < nx; x++) {
      float sum = 0;
      for (int j = -1; j <= 1; j++)
        for (int i = -1; i <= 1; i++) {
          const int sx = x + i, sy = y + j;
          if (sx >= 0 && sy >= 0 && sx < nx && sy < ny) sum += m[(j + 1) * 3 + i + 1] * g[static_cast<size_t>(sy * nx + sx)];
        }
      int& c = out[static_cast<size_t>(y * nx + x)];
      if (sum == 3) c = 1;
      else if (sum < 2 || sum > 3) c = 0;
    }
  return out;
}

std::vector<uint8_t> en_pixels(const Grille& g) {
  std::vector<uint8_t> px;
  for (int c : g) px.insert(px.end(), {uint8_t(c * 255), uint8_t(c * 255), uint8_t(c * 255), 255});
  return px;
}

Grille lue(int id) {
  Grille g;
  const auto px = ImageTest::octets_de(id);
  for (size_t i = 0; i < px.size(); i += 4) g.push_back(px[i] + px[i + 1] + px[i + 2] > 382 ? 1 : 0);
  return g;
}

Grille au_hasard(int n, unsigned seed) {
  std::mt19937 r(seed);
  Grille g(static_cast<size_t>(n));
  for (int& c : g) c = (r() % 3) == 0;
  return g;
}

TEST_F(Near, PassesFollowTheRuleOnTheOldStates) {
  const int nx = 19, ny = 13;
  const Grille g = au_hasard(nx * ny, 11);
  pose(1, nx, ny, en_pixels(g));
  pose(2, nx, ny, en_pixels(g));
  ok("near image(1)");
  EXPECT_EQ(lue(1), etape(g, nx, ny, QUATRE));
  ok("near image(2) dup(3)");
  EXPECT_EQ(lue(2), etape(etape(etape(g, nx, ny, QUATRE), nx, ny, QUATRE), nx, ny, QUATRE));
  const float life[9] = {1, 1, 1, 1, 0, 1, 1, 1, 1};
  pose(3, nx, ny, en_pixels(g));
  ok("near image(3) matrix(1,1,1,1,0,1,1,1,1)");
  EXPECT_EQ(lue(3), etape(g, nx, ny, life));
}

TEST_F(Near, TheDefaultMatrixCountsTheFourSideNeighboursOnly) {
  // Three live diagonal neighbours: the eight-neighbour rule would give
  // birth, the side-neighbour rule counts 0.
  const Grille a = {1, 0, 1,
                    0, 0, 0,
                    1, 0, 0};
  pose(1, 3, 3, en_pixels(a));
  ok("near image(1)");
  EXPECT_EQ(lue(1)[4], 0);
  EXPECT_EQ(lue(1), etape(a, 3, 3, QUATRE));
  // Three live side neighbours and two diagonals: 3 is birth here, where
  // the eight-neighbour count of 5 would leave it dead.
  const Grille b = {1, 1, 1,
                    1, 0, 1,
                    0, 0, 0};
  pose(2, 3, 3, en_pixels(b));
  ok("near image(2)");
  EXPECT_EQ(lue(2)[4], 1);
  EXPECT_EQ(lue(2), etape(b, 3, 3, QUATRE));
}

TEST_F(Near, ASumOfTwoKeepsTheState) {
  // Dead cell (1,1) with exactly two live side neighbours stays dead; a
  // live one with two stays alive.
  Grille g = {0, 1, 0,
              1, 0, 0,
              0, 0, 0};
  pose(1, 3, 3, en_pixels(g));
  ok("near image(1)");
  EXPECT_EQ(lue(1)[4], 0);
  Grille h = {0, 1, 0,
              1, 1, 0,
              0, 0, 0};
  pose(2, 3, 3, en_pixels(h));
  ok("near image(2)");
  EXPECT_EQ(lue(2)[4], 1);
}

TEST_F(Near, NumberIsKeptButDoesNotChangeTheRule) {
  const Grille g = au_hasard(12 * 12, 5);
  pose(1, 12, 12, en_pixels(g));
  pose(2, 12, 12, en_pixels(g));
  ok("near image(1) number(1,1)");
  ok("near image(2)");
  EXPECT_EQ(lue(1), lue(2));
  expect_floats(floats("near number image(1)"), {1, 1}, "kept");
  expect_floats(floats("near number image(2)"), {2, 3}, "default");
}

TEST_F(Near, StoredMatricesServeLaterPasses) {
  const Grille g = au_hasard(10 * 9, 8);
  const float life[9] = {1, 1, 1, 1, 0, 1, 1, 1, 1};
  pose(1, 10, 9, en_pixels(g));
  expect_floats(floats("near matrix image(1)"), {0, 1, 0, 1, 0, 1, 0, 1, 0}, "default");
  ok("near matrix image(1)=1,1,1,1,0,1,1,1,1");
  ok("near image(1)");
  EXPECT_EQ(lue(1), etape(g, 10, 9, life));
  EXPECT_EQ(fails("near matrix image(1)=1,2"), "near matrix image (id)=m00,m01,m02, m10,m11,m12, m20,m21,m22\n");
  EXPECT_EQ(fails("near number image(1)=1"), "near number image (id)=num1,num2\n");
  EXPECT_EQ(fails("near image(1) matrix(1,2,3)"), "near 0,1,2\n3,4,5\n6,7,8\n");
}

TEST_F(Near, ChanceAndThreshold) {
  const Grille g = au_hasard(16 * 16, 9);
  pose(1, 16, 16, en_pixels(g));
  ok("near image(1) rand(0)");
  EXPECT_EQ(lue(1), g);  // nothing may change
  ok("near image(1) alea(1)");
  EXPECT_EQ(lue(1), etape(g, 16, 16, QUATRE));
  // Grey 100 is dead at the default threshold and alive at 0.3.
  std::vector<uint8_t> grey(4 * 4 * 4, 100);
  pose(2, 4, 4, grey);
  ok("near image(2) limit(0.3)");
  // Every cell alive: corners have 2 side neighbours (kept), edges 3
  // (alive), inner cells 4 (dead, painted black).
  const auto px = octets_de(2);
  EXPECT_EQ(px[0], 100);                  // corner kept as it was
  EXPECT_EQ(px[(1 * 4 + 1) * 4], 0);      // inner cell died
  EXPECT_EQ(px[(1 * 4 + 1) * 4 + 3], 100);  // alpha kept
}

TEST_F(Near, AListStopsAtTheFirstMissingImage) {
  const Grille g = au_hasard(8 * 8, 3);
  pose(1, 8, 8, en_pixels(g));
  pose(2, 8, 8, en_pixels(g));
  EXPECT_NE(fails("near image(1,5,2)").find("image 5"), std::string::npos);
  EXPECT_EQ(lue(1), etape(g, 8, 8, QUATRE));
  EXPECT_EQ(lue(2), g);
}

}  // namespace
