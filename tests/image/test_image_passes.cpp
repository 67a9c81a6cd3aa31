// Interpolation, discs and speeds of images.
#include "image_fixture.h"
#include "kernel/property.h"

namespace {

using ImagePasses = ImageTest;

TEST_F(ImagePasses, InterpolationMakesTruncatedMixes) {
  const auto a = hasard(5, 4, 1), b = hasard(5, 4, 2);
  pose(1, 5, 4, a);
  pose(2, 5, 4, b);
  ok("interpol(0) image(1,2) number(10)");
  EXPECT_EQ(octets_de(10), a);  // n=0: one image, a copy of the first
  EXPECT_EQ(image_numero(11), nullptr);
  EXPECT_TRUE(image_visible(image_numero(10)));
  ok("interpol(2) image(1,2) number(20)");
  for (int j = 0; j < 3; j++) {
    const auto got = octets_de(20 + j);
    ASSERT_EQ(got.size(), a.size());
    for (size_t i = 0; i < a.size(); i++)
      ASSERT_EQ(got[i], (a[i] * (3 - j) + b[i] * j) / 3) << j << " byte " << i;
  }
  EXPECT_EQ(image_numero(23), nullptr);
}

TEST_F(ImagePasses, InterpolationChainsPairsAndRemakesWrongSizes) {
  pose(1, 2, 2, std::vector<uint8_t>(16, 0));
  pose(2, 2, 2, std::vector<uint8_t>(16, 100));
  pose(3, 2, 2, std::vector<uint8_t>(16, 200));
  pose(31, 9, 9, hasard(9, 9, 3));  // re-made to 2 by 2
  ok("interpol(1) image(1,2,3) number(30)");
  EXPECT_EQ(octets_de(30), std::vector<uint8_t>(16, 0));
  EXPECT_EQ(octets_de(31), std::vector<uint8_t>(16, 50));
  EXPECT_EQ(octets_de(32), std::vector<uint8_t>(16, 100));
  EXPECT_EQ(octets_de(33), std::vector<uint8_t>(16, 150));
  pose(4, 3, 2, std::vector<uint8_t>(24, 0));
  EXPECT_NE(fails("interpol image(1,4) number(40)").find("INCOHERENT"), std::string::npos);
  EXPECT_EQ(fails("interpol image(1)"), "interpol (n) image(id1,id2,...) number(destination)\n");
}

TEST_F(ImagePasses, InterpolationNumbersAndSizesNeverOverflow) {
  // The default destination is one past the highest number; past the
  // largest integer it is held at 100000000.
  ok("image(2147483647) dim(4,4); image(1) dim(4,4)");
  ok("interpol(1) image(1,2147483647)");
  EXPECT_NE(image_numero(100000000), nullptr);
  EXPECT_NE(image_numero(100000001), nullptr);
  // Images that could never be held are refused before the first is
  // made, with the bytes they would take: 100001 of 1024 x 1024 x 4.
  ok("image(3) dim(1024,1024); image(4) dim(1024,1024)");
  Outcome r = run("interpol(100000) image(3,4) number(10)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("419434594304:  MALLOC ERROR"), std::string::npos) << r.out;
  EXPECT_EQ(image_numero(10), nullptr);
}

TEST_F(ImagePasses, DiscsPaintThePixelsWithinTheRadius) {
  ok("image(1) dim(20,16)");
  ok("disk image(1) poi(6,5) radius(3.5) col(1,0,0.5)");
  const auto px = octets_de(1);
  for (int y = 0; y < 16; y++)
    for (int x = 0; x < 20; x++) {
      const bool in = (x - 6) * (x - 6) + (y - 5) * (y - 5) <= 3.5 * 3.5;
      const uint8_t* p = &px[(static_cast<size_t>(y) * 20 + x) * 4];
      ASSERT_EQ(p[0], in ? 255 : 0) << x << "," << y;
      ASSERT_EQ(p[2], in ? 128 : 0) << x << "," << y;
    }
  // Blending by coe, and a ring only with limit.
  pose(2, 9, 9, std::vector<uint8_t>(9 * 9 * 4, 100));
  ok("disk image(2) poi(4,4) radius(3) col(1,1,1) coe limit(1)");
  const auto q = octets_de(2);
  EXPECT_EQ(q[(4 * 9 + 4) * 4], 100);              // centre: not on the ring
  EXPECT_EQ(q[(4 * 9 + 7) * 4], (100 + 255) / 2 + 1);  // on the ring: half way, rounded
  EXPECT_NE(fails("disk image(2) radius(-1)").find("ILLEGAL"), std::string::npos);
}

TEST_F(ImagePasses, SpeedsFromTwoImagesOrAtRandom) {
  pose(1, 2, 1, {10, 20, 30, 0, 200, 0, 100, 0});
  pose(2, 2, 1, {15, 20, 0, 0, 100, 50, 100, 0});
  ok("generate speed image(1) image(2) coe(0.5)");
  expect_floats(floats("speed image(1)"), {-2.5f, 0, 15, 50, -25, 0}, "differences");
  pose(3, 50, 40, hasard(50, 40, 4));
  ok("generate speed image(3) rand(2,3)");
  const std::vector<float> v = floats("speed image(3)");
  ASSERT_EQ(v.size(), 50u * 40 * 3);
  for (float f : v) ASSERT_TRUE(f >= 2 && f < 3) << f;
  // The first call kept the pixels as the previous copy.
  Objet* o = image_numero(3);
  const word* prev = get_val_1(o->local, -KW_image);
  ASSERT_NE(prev, nullptr);
  EXPECT_EQ(std::memcmp(octets(prev), pixels_image(o), 50 * 40 * 4), 0);
  pose(4, 3, 1, hasard(3, 1, 5));
  EXPECT_NE(fails("generate speed image(1) image(4)").find("INCOHERENT"), std::string::npos);
  const std::string usage = fails("generate speed image");
  EXPECT_EQ(usage.rfind("generate speed image (id)", 0), 0u) << usage;
}

}  // namespace
