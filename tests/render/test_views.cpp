// Views without a window: the matrices of CAL_VIEW as seen through the
// projection of points, the orthographic camera, the wall of views and
// stereo; and the window commands' answers.
#include <cmath>

#include "render/window.h"
#include "scene/scene_fixture.h"

namespace {

class Views : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    ok("eye(0,0,-1000)");
    ok("aim(0,0,0)");
    ok("foc(1)");
    ok("roll(0)");
  }
  // Every view goes: the next command makes the start-up view again.
  void TearDown() override {
    rem_tous(chaine_classe(KW_view), 0, 0);
    SceneTest::TearDown();
  }
};

// Where a point in front of the eye on the z axis lands: d = the mean of
// the window's sides over f = foc x 1.28, and x d / z from the centre.
float ecran_x(float x, float z, float foc) {
  const float d = (768 + 576) * 0.5f / (foc * 1.28f);
  return 384 + x * d / z;
}

TEST_F(Views, PointsProjectByTheFocalAndTheWindowSize) {
  std::vector<float> p = floats("pers(0,0,0, 100,0,0, 0,50,500)");
  ASSERT_EQ(p.size(), 9u);
  EXPECT_NEAR(p[0], 384, 1e-3);
  EXPECT_NEAR(p[1], 288, 1e-3);
  EXPECT_NEAR(p[3], ecran_x(100, 1000, 1), 1e-2);
  EXPECT_NEAR(p[7], 288 + (ecran_x(50, 1500, 1) - 384), 1e-2);
  // A smaller focal is a narrower angle: the point moves out.
  ok("foc(0.5)");
  EXPECT_NEAR(floats("pers(100,0,0)")[0], ecran_x(100, 1000, 0.5f), 1e-2);
}

TEST_F(Views, AnEyeStraightAboveTheAimStillMakesAView) {
  ok("eye(0,500,0)");
  std::vector<float> m = floats("abs eye view(1)");
  ASSERT_EQ(m.size(), 16u);
  for (float x : m) EXPECT_TRUE(std::isfinite(x));
  // The aim stands at the centre of the screen.
  std::vector<float> c = floats("pers(0,0,0)");
  EXPECT_NEAR(c[0], 384, 0.5);
  EXPECT_NEAR(c[1], 288, 0.5);
}

TEST_F(Views, AZeroFocalIsRefusedAndTheMatricesStay) {
  const std::vector<float> before = floats("abs pers view(1)");
  EXPECT_NE(fails("foc(0)").find("opening zero"), std::string::npos);
  EXPECT_EQ(one("foc"), 1.0f);
  EXPECT_EQ(floats("abs pers view(1)"), before);
}

TEST_F(Views, TheOrthographicCameraIsReadAndWrittenWhole) {
  const std::vector<float> start = floats("pers normal");
  expect_floats(start, {-384, 288, -1000, -384, 288, 0, 0, -1, 0}, "pers normal");
  // Fewer than nine values only read.
  EXPECT_EQ(floats("pers normal(1,2,3)"), start);
  ok("pers normal(0,0,-500, 0,0,0, 0,-1,0)");
  expect_floats(floats("pers normal"), {0, 0, -500, 0, 0, 0, 0, -1, 0}, "written");
  ok("pers normal(-384,288,-1000, -384,288,0, 0,-1,0)");
}

TEST_F(Views, AWallOfViewsNeedsSquareManyItems) {
  const std::string out = fails("view(3) dim(2) write(\"a;b;c\")");
  EXPECT_NE(out.find("3 != 4"), std::string::npos) << out;
  ok("view(3) dim(2) write(\"a;b;c;d\")");
  ok("view(4) dim(3) write(\"1;2;3;4;5;6;7;8;9\")");
}

TEST_F(Views, StereoSetsTwoEyesApartAcrossTheSight) {
  ok("stereo eye(0,0,-1600)");
  // d = -1600 / 16, along x when looking along z.
  expect_floats(floats("eye view(1)"), {100, 0, -1600}, "first eye");
  expect_floats(floats("eye view(2)"), {-100, 0, -1600}, "second eye");
  expect_floats(floats("col view(1)"), {1, 0, 0}, "first colour");
  expect_floats(floats("col view(2)"), {0, 1, 0}, "second colour");
  // Looking along x, the eyes stand apart along z.
  ok("stereo eye(-1000,0,0) aim(0,0,0) dist(30)");
  expect_floats(floats("eye view(1)"), {-1000, 0, -30}, "first eye along z");
  expect_floats(floats("eye view(2)"), {-1000, 0, 30}, "second eye along z");
  ok("view(2) displ(0)");
}

TEST_F(Views, DepthBufferModesReportThemselves) {
  EXPECT_NE(run("zbuf(2)").out.find("zbuffer 32 bits"), std::string::npos);
  EXPECT_NE(run("zbuf(2)").out.find("zbuffer 32 bits"), std::string::npos);
  EXPECT_NE(run("zbuf(3)").out.find("zbuffer = 3 shorts"), std::string::npos);
  EXPECT_NE(fails("zbuf(-1)").find("ILLEGAL"), std::string::npos);
  EXPECT_NE(run("zbuf(0)").out.find("zbuffer off"), std::string::npos);
}

TEST_F(Views, TheBackgroundKeepsItsImageRangeHalf) {
  ok("back(0.2,0.4,1)");
  const float* b = Back();
  EXPECT_FLOAT_EQ(b[3], 0.2f * 255);
  EXPECT_FLOAT_EQ(b[5], 255);
  ok("back(0,0,0)");
  EXPECT_EQ(b[3] + b[4] + b[5], 0.0f);
  ok("back ini");
  expect_floats(floats("back"), {0, 0, 0.75f}, "back ini");
}

TEST_F(Views, AReshapeToNothingIsReportedAndIgnored) {
  Capture out;
  Reshape_Func(0, 0);
  Reshape_Func(640, -3);
  EXPECT_EQ(out.take(), "Warning Reshape_Func(0, 0)\nWarning Reshape_Func(640, -3)\n");
}

}  // namespace
