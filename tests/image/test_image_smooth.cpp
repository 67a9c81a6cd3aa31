// Smoothing checked against a plain sum over the kernel cells that lie
// inside the image, written here independently of the command's code.
#include <cmath>

#include "image/image_smooth.h"
#include "image_fixture.h"

namespace {

using Smooth = ImageTest;

// The kernel centred on each pixel (centre at side/2), cells outside
// left out, each byte rounded to the nearest and clamped.
std::vector<uint8_t> reference(const std::vector<uint8_t>& px, int nx, int ny, int side, const std::vector<double>& w) {
  std::vector<uint8_t> out(px.size());
  const int h = side / 2;
  for (int y = 0; y < ny; y++)
    for (int x = 0; x < nx; x++)
      for (int c = 0; c < 4; c++) {
        double sum = 0;
        for (int j = 0; j < side; j++)
          for (int i = 0; i < side; i++) {
            const int sx = x + i - h, sy = y + j - h;
            if (sx < 0 || sy < 0 || sx >= nx || sy >= ny) continue;
            sum += w[static_cast<size_t>(j * side + i)] * px[(static_cast<size_t>(sy) * nx + sx) * 4 + c];
          }
        out[(static_cast<size_t>(y) * nx + x) * 4 + c] = static_cast<uint8_t>(std::clamp(std::lround(sum), 0L, 255L));
      }
  return out;
}

std::vector<double> box(int n) { return std::vector<double>(static_cast<size_t>(n * n), 1.0 / (n * n)); }

void expect_same(const std::vector<uint8_t>& got, const std::vector<uint8_t>& want, const char* what) {
  ASSERT_EQ(got.size(), want.size()) << what;
  int bad = 0;
  for (size_t i = 0; i < got.size() && bad < 5; i++)
    if (got[i] != want[i]) {
      ADD_FAILURE() << what << ": byte " << i << " is " << int(got[i]) << ", expected " << int(want[i]);
      bad++;
    }
}

TEST_F(Smooth, BoxKernelsEqualTheSumOverTheCellsInside) {
  const int nx = 23, ny = 17;
  const auto px = hasard(nx, ny, 1);
  pose(1, nx, ny, px);
  ok("smooth image(1,2)");
  expect_same(octets_de(2), reference(px, nx, ny, 3, box(3)), "no kernel: 3x3");
  ok("smooth(2) image(1,3)");
  expect_same(octets_de(3), reference(px, nx, ny, 3, box(3)), "n=2 is a 3x3 box");
  ok("smooth(5) image(1,4)");
  expect_same(octets_de(4), reference(px, nx, ny, 5, box(5)), "n=5");
  // The source is left as it was.
  expect_same(octets_de(1), px, "source");
}

TEST_F(Smooth, InPlaceAndLargeKernels) {
  const int nx = 64, ny = 48;
  const auto px = hasard(nx, ny, 2);
  pose(1, nx, ny, px);
  ok("smooth(9) image(1)");
  expect_same(octets_de(1), reference(px, nx, ny, 9, box(9)), "n=9 in place");
}

TEST_F(Smooth, TheBoxIsCutToHalfTheImage) {
  // 20 by 40: a box of 11 reaches 20/2-1 = 9 and becomes 20/2-2 = 8,
  // then 7 to stay centred.
  const auto px = hasard(20, 40, 3);
  pose(1, 20, 40, px);
  ok("smooth(11) image(1,2)");
  expect_same(octets_de(2), reference(px, 20, 40, 7, box(7)), "n=11 on 20 wide");
  Noyau k = noyau_lissage(nullptr, 20, 40);
  EXPECT_EQ(k.side, 3);
  const std::vector<float> one = {1}, four = {4}, big = {30};
  EXPECT_TRUE(noyau_lissage(&one, 20, 40).copie);
  EXPECT_EQ(noyau_lissage(&four, 20, 40).side, 5);
  EXPECT_EQ(noyau_lissage(&big, 40, 20).side, 7);  // the height limits too
}

TEST_F(Smooth, ListsGiveTheirWeightsWithoutNormalising) {
  const int nx = 15, ny = 11;
  const auto px = hasard(nx, ny, 4);
  pose(1, nx, ny, px);
  ok("smooth(0.0625,0.125,0.0625, 0.125,0.25,0.125, 0.0625,0.125,0.0625) image(1,2)");
  expect_same(octets_de(2), reference(px, nx, ny, 3, {0.0625, 0.125, 0.0625, 0.125, 0.25, 0.125, 0.0625, 0.125, 0.0625}),
              "3x3 list");
  // Five numbers: side 2 (the integer root), the fifth unused.
  ok("smooth(0.5,0.25,0.125,0.125,9) image(1,3)");
  expect_same(octets_de(3), reference(px, nx, ny, 2, {0.5, 0.25, 0.125, 0.125}), "2x2 list");
  // Weights above one saturate.
  ok("smooth(0,0,0, 0,2,0, 0,0,0) image(1,4)");
  expect_same(octets_de(4), reference(px, nx, ny, 3, {0, 0, 0, 0, 2, 0, 0, 0, 0}), "doubling");
}

TEST_F(Smooth, CopiesWhenNothingIsToBeDone) {
  const auto small = hasard(3, 8, 5);
  pose(1, 3, 8, small);
  ok("smooth image(1,2)");
  expect_same(octets_de(2), small, "3 wide is not smoothed");
  const auto px = hasard(10, 10, 6);
  pose(3, 10, 10, px);
  ok("smooth(1) image(3,4)");
  expect_same(octets_de(4), px, "n below 2");
  // The destination took the source's size.
  EXPECT_EQ(image_nx(image_numero(4)), 10);
}

TEST_F(Smooth, MissingAndEmptyImagesAreReported) {
  EXPECT_NE(fails("smooth image(7)").find("image 7"), std::string::npos);
  Objet* o = pose(1, 8, 8, hasard(8, 8, 7));
  o->work[IW_NX] = 9;  // the block no longer matches: no pixels
  EXPECT_NE(fails("smooth image(1)").find("EMPTY"), std::string::npos);
}

}  // namespace
