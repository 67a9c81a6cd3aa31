// The `image` command: creation, size, fills, moves, copies, reading
// forms and failures.
#include "image/image_edit.h"
#include "image_fixture.h"
#include "kernel/random_table.h"

namespace {

using ImageCommand = ImageTest;

const uint8_t* pixel(int id, int x, int y) {
  Objet* o = image_numero(id);
  return pixels_image(o) + (static_cast<size_t>(y) * image_nx(o) + x) * 4;
}

TEST_F(ImageCommand, CreationSizeAndReading) {
  ok("image(1)");
  expect_floats(floats("dim image(1)"), {128, 128}, "default size");
  ok("image(2,3) dim(64,32)");
  expect_floats(floats("dim image(1,2,3)"), {128, 128, 64, 32, 64, 32}, "sizes");
  ok("image(4) dim(5)");
  expect_floats(floats("dim image(4)"), {5, 5}, "ny defaults to nx");
  // Options act in a fixed order: the size before the colour.
  ok("image(5) col(1,0,0) dim(3,2)");
  EXPECT_EQ(pixel(5, 2, 1)[0], 255);
  EXPECT_EQ(image_nx(image_numero(5)), 3);
  EXPECT_NE(fails("dim image(9)").find("image 9"), std::string::npos);
}

TEST_F(ImageCommand, ColoursAndGradients) {
  ok("image(1) dim(4,2) col(1,0.5,0)");
  for (int x = 0; x < 4; x++) {
    const uint8_t* p = pixel(1, x, 1);
    EXPECT_EQ(p[0], 255);
    EXPECT_EQ(p[1], 128);
    EXPECT_EQ(p[2], 0);
    EXPECT_EQ(p[3], 255);
  }
  // A gradient runs along x from the first colour to the second.
  ok("image(2) dim(5,3) col(0,0,1, 1,0,0)");
  for (int y = 0; y < 3; y++)
    for (int x = 0; x < 5; x++) {
      EXPECT_EQ(pixel(2, x, y)[0], static_cast<int>(255 * x / 4.0 + 0.5)) << x;
      EXPECT_EQ(pixel(2, x, y)[2], static_cast<int>(255 * (4 - x) / 4.0 + 0.5)) << x;
    }
  EXPECT_EQ(fails("image(3) col(1,0)"), "col (r,g,b[,r2,g2,b2])\n");
}

TEST_F(ImageCommand, ConversionsAndRectangles) {
  pose(1, 2, 1, {10, 20, 30, 40, 200, 100, 50, 7});
  ok("image(1) inv");
  EXPECT_EQ(octets_de(1), (std::vector<uint8_t>{245, 235, 225, 40, 55, 155, 205, 7}));
  pose(2, 1, 1, {100, 200, 50, 9});
  ok("image(2) luminance");
  const int l = static_cast<int>(0.299 * 100 + 0.587 * 200 + 0.114 * 50 + 0.5);
  EXPECT_EQ(octets_de(2), (std::vector<uint8_t>{uint8_t(l), uint8_t(l), uint8_t(l), 9}));
  ok("image(3) dim(6,5) rectangle(1,1,7,2) col(0,1,0)");
  for (int y = 0; y < 5; y++)
    for (int x = 0; x < 6; x++) EXPECT_EQ(pixel(3, x, y)[1], x >= 1 && y >= 1 && y <= 2 ? 255 : 0) << x << "," << y;
  EXPECT_EQ(pixel(3, 0, 0)[3], 0);  // outside: untouched
}

TEST_F(ImageCommand, CutMovesTurnsAndScales) {
  std::vector<uint8_t> px;
  for (int i = 0; i < 4 * 3; i++) px.insert(px.end(), {uint8_t(i), 0, 0, 255});
  pose(1, 4, 3, px);
  ok("image(1) cut(1,1,2,2)");
  expect_floats(floats("dim image(1)"), {2, 2}, "cut size");
  EXPECT_EQ(pixel(1, 0, 0)[0], 5);
  EXPECT_EQ(pixel(1, 1, 1)[0], 10);
  pose(2, 4, 3, px);
  ok("image(2) tran(1,-1)");
  EXPECT_EQ(pixel(2, 1, 0)[0], 4);  // from (0,1)
  EXPECT_EQ(pixel(2, 0, 0)[3], 0);  // came from outside
  EXPECT_EQ(pixel(2, 3, 2)[3], 0);
  // A quarter turn of a 3 by 3 about its centre, counter-clockwise.
  std::vector<uint8_t> q;
  for (int i = 0; i < 9; i++) q.insert(q.end(), {uint8_t(i), 0, 0, 255});
  pose(3, 3, 3, q);
  ok("image(3) rotz(90)");
  EXPECT_EQ(pixel(3, 1, 1)[0], 4);
  EXPECT_EQ(pixel(3, 2, 1)[0], 1);  // (1,0) went to (2,1)
  EXPECT_EQ(pixel(3, 1, 2)[0], 5);  // (2,1) went to (1,2)
  pose(4, 3, 3, q);
  ok("image(4) rota(-90)");
  EXPECT_EQ(pixel(4, 1, 0)[0], 5);
  pose(5, 3, 3, q);
  ok("image(5) dila(3)");
  for (int y = 0; y < 3; y++)
    for (int x = 0; x < 3; x++) EXPECT_EQ(pixel(5, x, y)[0], 4);  // the centre fills it
  EXPECT_NE(fails("image(5) dila(0)").find("ILLEGAL"), std::string::npos);
}

TEST_F(ImageCommand, CopiesValidationAndSpeed) {
  const auto px = hasard(7, 4, 1);
  pose(1, 7, 4, px);
  ok("image(1) dup(2,3)");
  EXPECT_EQ(octets_de(2), px);
  EXPECT_EQ(octets_de(3), px);
  ok("image(1) validate");
  ok("image(1) col(1,1,1)");
  ok("image(1) ini");
  EXPECT_EQ(octets_de(1), px);
  ok("image(4) dim(2) col(1,1,1)");
  ok("image(4) ini");  // nothing kept: black
  EXPECT_EQ(octets_de(4), std::vector<uint8_t>(16, 0));
  ok("image(1) speed(1,2,3)");
  const std::vector<float> v = floats("speed image(1)");
  ASSERT_EQ(v.size(), 7u * 4 * 3);
  EXPECT_EQ(v[0], 1);
  EXPECT_EQ(v[v.size() - 1], 3);
}

TEST_F(ImageCommand, RandomFields) {
  random_table_fill(10000);  // the table `alea` draws from, as at start-up
  ok("image(1) dim(100) rand(0.25)");
  ok("image(2) dim(100) alea(0.25)");
  for (int id : {1, 2}) {
    const auto px = octets_de(id);
    int live = 0;
    for (size_t i = 0; i < px.size(); i += 4) {
      ASSERT_TRUE(px[i] == 0 || px[i] == 255);
      live += px[i] == 255;
    }
    EXPECT_NEAR(live / 10000.0, 0.25, 0.03) << id;
  }
}

TEST_F(ImageCommand, Resampling) {
  // Enlarging 2 to 4 along x: the triangle gives 1/4 and 3/4 mixes.
  pose(1, 2, 1, {0, 0, 0, 255, 200, 100, 40, 255});
  ok("dim image(1)=4,1");
  expect_floats(floats("dim image(1)"), {4, 1}, "new size");
  const auto px = octets_de(1);
  EXPECT_EQ(px[0], 0);
  EXPECT_EQ(px[4], 50);
  EXPECT_EQ(px[8], 150);
  EXPECT_EQ(px[12], 200);
  // Halving averages neighbour pairs of a uniform image exactly, and
  // a 4 to 2 of a ramp gives the ramp's local means.
  std::vector<uint8_t> u(8 * 6 * 4, 77);
  pose(2, 8, 6, u);
  ok("image(2) dim(4,3) adjust");
  EXPECT_EQ(octets_de(2), std::vector<uint8_t>(4 * 3 * 4, 77));
  pose(3, 4, 1, {0, 0, 0, 0, 80, 0, 0, 0, 160, 0, 0, 0, 240, 0, 0, 0});
  ok("image(4) dim(2,1)");
  ok("image(3) adjust(4)");
  const auto r = octets_de(3);
  ASSERT_EQ(r.size(), 8u);
  // Weights 1/8, 3/8, 3/8, 1/8 about each new pixel, the edge repeated.
  EXPECT_EQ(r[0], (0 * 1 + 0 * 3 + 80 * 3 + 160 * 1) / 8);
  EXPECT_EQ(r[4], (80 * 1 + 160 * 3 + 240 * 3 + 240 * 1) / 8);
}

TEST_F(ImageCommand, BadSizesAndNumbersAreRefusedAndNothingIsLost) {
  const auto px = hasard(6, 5, 9);
  pose(1, 6, 5, px);
  for (const char* line : {"image(1) dim(-5)", "image(1) dim(1e20,1e20)", "dim image(1)=0,3", "dim image(1)=100000,100000",
                           "image(1) cut(10,10,20,20)", "image(1) rectangle(1,2)"})
    EXPECT_FALSE(fails(line).empty()) << line;
  EXPECT_EQ(octets_de(1), px);
  // Huge or negative numbers are held to what the operations can take.
  ok("smooth(1e20) image(1,2)");
  EXPECT_EQ(octets_de(2), px);  // the box is cut to nothing: a copy
  ok("near image(1) dup(-3)");
  ok("disk image(1) poi(-1e30,1e30) radius(1e30) precision(1e9)");
  EXPECT_EQ(image_nx(image_numero(1)), 6);
}

TEST_F(ImageCommand, OtherWordsBecomeProperties) {
  ok("image(1) dim(2) name(\"sky\") mass(3)");
  EXPECT_EQ(image_ou_cree(0, "sky"), image_numero(1));
  expect_floats(floats("mass image(1)"), {3}, "property");
}

}  // namespace
