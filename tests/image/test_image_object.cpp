// The image record and its pixel blocks.
#include <cstring>

#include "scene/image_object.h"
#include "scene/scene_fixture.h"

namespace {

using ImageObject = SceneTest;

TEST_F(ImageObject, ANewImageIsTheDefaultSizeAndBlack) {
  Objet* o = image_ou_cree(3, nullptr);
  ASSERT_NE(o, nullptr);
  EXPECT_EQ(image_ou_cree(3, nullptr), o);
  int nx = 0, ny = 0;
  ASSERT_TRUE(GET_DIM_IMAGE(o, &nx, &ny));
  EXPECT_EQ(nx, 128);
  EXPECT_EQ(ny, 128);
  const bloc b = pixels_bloc(o);
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(tag(b), T_IMAGE);
  EXPECT_EQ(np(b), 128 * 128);
  EXPECT_EQ(dimp(b), 4);
  const uint8_t* px = pixels_image(o);
  for (int i = 0; i < 128 * 128 * 4; i++) ASSERT_EQ(px[i], 0) << i;
}

TEST_F(ImageObject, ResizingReplacesTheBlockAndRefusesEmptySizes) {
  Objet* o = image_ou_cree(1, nullptr);
  ASSERT_EQ(SET_DIM_IMAGE(o, 5, 3), 0);
  EXPECT_EQ(image_nx(o), 5);
  EXPECT_EQ(image_ny(o), 3);
  EXPECT_EQ(np(pixels_bloc(o)), 15);
  pixels_image(o)[14 * 4 + 3] = 9;
  EXPECT_EQ(SET_DIM_IMAGE(o, 0, 3), -1);
  // Refused with the true count of bytes.
  Capture out;
  EXPECT_EQ(SET_DIM_IMAGE(o, 100000, 100000), -1);
  EXPECT_EQ(SET_DIM_IMAGE(o, 30000, 30000), -1);
  const std::string said = out.take();
  EXPECT_NE(said.find("40000000000:  MALLOC ERROR"), std::string::npos) << said;
  EXPECT_NE(said.find("3600000000:  MALLOC ERROR"), std::string::npos) << said;
  // The refused sizes left the block as it was.
  ASSERT_NE(pixels_image(o), nullptr);
  EXPECT_EQ(pixels_image(o)[14 * 4 + 3], 9);
  // A record whose size no longer matches its block has no pixels.
  o->work[IW_NX] = 6;
  EXPECT_EQ(pixels_image(o), nullptr);
}

TEST_F(ImageObject, ThePreviousCopyFollowsTheImageSize) {
  Objet* o = image_ou_cree(2, nullptr);
  ASSERT_EQ(SET_DIM_IMAGE(o, 2, 2), 0);
  std::memset(pixels_image(o), 7, 16);
  bloc prev = pixels_precedents(o, true);
  ASSERT_NE(prev, nullptr);
  EXPECT_EQ(tag(prev), T_IMAGE_PREV);
  EXPECT_EQ(octets(prev)[15], 7);
  ASSERT_EQ(SET_DIM_IMAGE(o, 3, 1), 0);
  prev = pixels_precedents(o, false);
  ASSERT_NE(prev, nullptr);
  EXPECT_EQ(np(prev), 3);
}

TEST_F(ImageObject, NamedImagesAreFoundByName) {
  Objet* a = image_ou_cree(0, "sky");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(image_ou_cree(0, "sky"), a);
  EXPECT_NE(image_ou_cree(0, "sea"), a);
}

}  // namespace
