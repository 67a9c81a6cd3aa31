// Images of type dynamic: the colours of the pixels move under the
// image's speed and forces, the exact colours kept between images; the
// commands that make an image dynamic; the pointer the stage measures.
#include "animation/dynamics/dyn_state.h"
#include "animation/dynamics_fixture.h"
#include "image/image_fixture.h"
#include "kernel/property.h"
#include "kernel/vocab.h"
#include "scene/scene_state.h"

namespace {

class DynamicImage : public ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    installe_dynamique();
    Yes(KW_edit) = 0;
  }
  static std::vector<float> rangee(int id, int code1, int code2) {
    const word* v = get_val_2(image_numero(id)->local, code1, code2);
    std::vector<float> f;
    for (int i = 0; i < elements(v); i++) f.push_back(getf(v, i));
    return f;
  }
};

// Two pixels (10,20,30) and (250,0,0), speed (1,2,3) each, mass 2, force
// (2,0,-4) damped by -0.5. First step: v = (1,2,3) - 0.5 (1,2,3) + (1,0,-2)
// = (1.5,1,-0.5); colours (11.5,21,29.5), bytes rounded 12,21,30; the
// second pixel (251.5,1,-0.5) held at 0: 252,1,0. Second step: v =
// (1.75,0.5,-2.25); the first pixel (13.25,21.5,27.25): 13,22,27, which
// steps of whole bytes would have missed. Alpha is untouched.
TEST_F(DynamicImage, ColoursMoveUnderTheSpeedAndForceOfTheImage) {
  pose(1, 2, 1, {10, 20, 30, 77, 250, 0, 0, 88});
  ok("image(1) speed(1,2,3)");
  ok("mass image(1)=2");
  ok("force image(1)=2,0,-4,-0.5");
  Objet* o = image_numero(1);
  ASSERT_TRUE(image_dynamique(o));
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  EXPECT_EQ(octets_de(1), (std::vector<uint8_t>{12, 21, 30, 77, 252, 1, 0, 88}));
  const word* v = get_val_1(o->local, KW_speed);
  ASSERT_EQ(elements(v), 6);
  EXPECT_FLOAT_EQ(getf(v, 0), 1.5f);
  EXPECT_FLOAT_EQ(getf(v, 2), -0.5f);
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  const std::vector<uint8_t> b = octets_de(1);
  EXPECT_EQ(b[0], 13);
  EXPECT_EQ(b[1], 22);
  EXPECT_EQ(b[2], 27);
  const std::vector<float> c = rangee(1, KW_col, KW_dynamic);
  ASSERT_EQ(c.size(), 6u);
  EXPECT_FLOAT_EQ(c[0], 13.25f);
  EXPECT_FLOAT_EQ(c[1], 21.5f);
  EXPECT_FLOAT_EQ(c[2], 27.25f);
  EXPECT_FLOAT_EQ(c[5], 0) << "held at 0";
}

// A pixel that something else changed starts again from its byte; the
// speed bound acts after the move; mass 0, `dynamic` 0 and an image that
// isn't dynamic are left as they are.
TEST_F(DynamicImage, ChangedPixelsBoundsAndImagesLeftOut) {
  pose(1, 1, 1, {100, 100, 100, 255});
  ok("image(1) speed(0.4,0,0)");
  ok("mass image(1)=1");
  Objet* o = image_numero(1);
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  EXPECT_EQ(octets_de(1)[0], 101) << "100.8: the fractions add up";
  pixels_image(o)[0] = 50;
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  EXPECT_EQ(octets_de(1)[0], 50) << "50.4 from the new byte";
  ok("limit speed image(1)=0.1");
  ok("force image(1)=1,0,0,0");
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  EXPECT_EQ(octets_de(1)[0], 52) << "50.4 + 1.4";
  EXPECT_FLOAT_EQ(getf(get_val_1(o->local, KW_speed), 0), 0.1f);
  ok("dynamic image(1)=0");
  EXPECT_FALSE(image_dynamique(o));
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  EXPECT_EQ(octets_de(1)[0], 52);
  ok("dynamic image(1)=2");
  ok("mass image(1)=0");
  ASSERT_EQ(DYNAMIC_IMAGE(o), 0);
  EXPECT_EQ(octets_de(1)[0], 52);
  pose(2, 1, 1, {0, 0, 0, 255});
  ok("image(2) speed(5,5,5)");
  ok("force image(2)=1,1,1,0");
  ASSERT_EQ(DYNAMIC_IMAGE(image_numero(2)), 0);
  EXPECT_EQ(octets_de(2)[0], 0) << "not of type dynamic";
}

TEST_F(DynamicImage, CommandsMarkReadAndReport) {
  pose(1, 2, 2, std::vector<uint8_t>(16, 0));
  EXPECT_EQ(one("dynamic"), 2.0f);
  Outcome r = run("mass image(1)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("does not have masse"), std::string::npos) << r.out;
  r = run("dynamic image(1)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("does not have dynamic"), std::string::npos) << r.out;
  // A mass given on creation marks the image too.
  ok("image(3) dim(2,2) mass(3)");
  EXPECT_TRUE(image_dynamique(image_numero(3)));
  EXPECT_EQ(one("mass image(3)"), 3.0f);
  EXPECT_EQ(one("dynamic image(3)"), 2.0f) << "the default of a dynamic image";
  ok("dynamic image(1)=0.5");
  EXPECT_TRUE(image_dynamique(image_numero(1)));
  EXPECT_EQ(one("dynamic image(1)"), 0.5f);
}

// The stage takes the pointer once an image: place (y up), speed and
// acceleration in pixels an image; zeros without a window.
TEST_F(DynamicImage, ThePointerAsTheStageMeasuresIt) {
  ScenePointer& p = scene().pointeur;
  const ScenePointer saved = p;
  dynamique() = DynState{};
  p.on = true;
  const float places[3][2] = {{10, -5}, {13, -9}, {20, -9}};
  for (const auto& x : places) {
    p.x = x[0], p.y = x[1];
    ASSERT_EQ(DYNAMIC_b(), 0);
  }
  // Speeds (3,4) then (7,0): acceleration (4,-4).
  EXPECT_EQ(floats("dynamic mouse"), (std::vector<float>{20, 9, 7, 0, 4, -4}));
  p.on = false;
  ASSERT_EQ(DYNAMIC_b(), 0);
  EXPECT_EQ(floats("dynamic mouse"), (std::vector<float>(6, 0.0f)));
  p = saved;
}

}  // namespace
