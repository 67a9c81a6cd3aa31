// The real program in a window under Xvfb: each script draws and writes
// pictures of its window, checked by where colours must and must not be.
#include "window/window_run.h"

namespace {

// A cube of edge 200 seen from 1000 in front: about 116 pixels wide in
// the middle of the 768 x 576 window.
const char* const CUBE = "cube(1)\neye(0,0,-1000)\ncol vol(1)=1,0,0\n";

bool greenish(Rgb c) { return c.g > 120 && c.r < 60 && c.b < 60; }
bool yellowish(Rgb c) { return c.r > 120 && c.g > 120 && c.b < 60; }

TEST(WindowPicture, WireCubeDrawsEdgesAndLeavesFacesOpen) {
  REQUIRE_DRAWING();
  WindowRun run(std::string(CUBE) + "displ\nwrite image name(\"wire.bmp\")\nbye abs\n");
  Picture p = run.picture("wire.bmp");
  ASSERT_EQ(p.w, 768);
  ASSERT_EQ(p.h, 576);
  // The front face's outline crosses the middle row near x 326 and 442.
  EXPECT_GT(p.count(318, 280, 336, 296, reddish), 0) << run.out;
  EXPECT_GT(p.count(434, 280, 452, 296, reddish), 0);
  // Unlit wire frame: the middle of the face is background, and so is
  // everything far from the cube.
  EXPECT_TRUE(background(p.at(384, 288)));
  EXPECT_TRUE(background(p.at(384, 270)));
  EXPECT_EQ(p.count(0, 0, 300, 576, [](Rgb c) { return !background(c); }), 0);
  EXPECT_EQ(p.count(470, 0, 768, 576, [](Rgb c) { return !background(c); }), 0);
  // Lines, not faces: few pixels are red.
  const int red = p.count(reddish);
  EXPECT_GT(red, 400);
  EXPECT_LT(red, 3000);
}

TEST(WindowPicture, LitBallIsShadedFromTheDefaultLight) {
  REQUIRE_DRAWING();
  WindowRun run(
      "ball(1) dim(150) secx(32) secy(16)\neye(0,0,-1000)\ncol vol(1)=1,0,0\nyes illum\n"
      "illum vol(1)=2,1,0,0,0\ndispl\nwrite image name(\"ball.bmp\")\nbye abs\n");
  Picture p = run.picture("ball.bmp");
  // Radius 150 at 1000: about 80 pixels on screen.
  const Rgb centre = p.at(384, 288);
  EXPECT_GT(centre.r, 100) << run.out;
  EXPECT_LT(centre.g, 40);
  EXPECT_LT(centre.b, 40);
  // The start-up light stands up and to the left: that side is brighter.
  const int lit = luminance(p.at(384 - 45, 288 - 45));
  const int dark = luminance(p.at(384 + 45, 288 + 45));
  EXPECT_GT(lit, dark + 60);
  // A disc: filled inside, background outside.
  EXPECT_EQ(p.count(384 - 50, 288 - 50, 384 + 50, 288 + 50, background), 0);
  EXPECT_TRUE(background(p.at(384 + 100, 288)));
  EXPECT_TRUE(background(p.at(384, 288 - 100)));
}

TEST(WindowPicture, EveryViewInUseDrawsTheScene) {
  REQUIRE_DRAWING();
  WindowRun run(std::string(CUBE) +
                "yes illum\nview(2)\neye view(2)=400,0,-1000\naim view(2)=400,0,0\ndispl\n"
                "write image name(\"views.bmp\")\nview(2) displ(0)\nscreen\ndispl\n"
                "write image name(\"one.bmp\")\nbye abs\n");
  Picture both = run.picture("views.bmp");
  Picture one = run.picture("one.bmp");
  // View 1 sees the cube in the middle; view 2, moved 400 to the right,
  // sees it about 210 pixels to the left.
  EXPECT_TRUE(reddish(both.at(384, 288))) << run.out;
  EXPECT_TRUE(reddish(both.at(174, 288)));
  EXPECT_TRUE(background(both.at(600, 288)));
  // With view 2 out of use, only the middle one stays.
  EXPECT_TRUE(reddish(one.at(384, 288)));
  EXPECT_TRUE(background(one.at(174, 288)));
}

TEST(WindowPicture, StereoDrawsARedAndAGreenEye) {
  REQUIRE_DRAWING();
  WindowRun run(
      "back(0,0,0)\nscreen\ncube(1)\ncol vol(1)=1,1,1\nyes illum\nstereo eye(0,0,-1000) dist(60)\ndispl\n"
      "write image name(\"stereo.bmp\")\nbye abs\n");
  Picture p = run.picture("stereo.bmp");
  // Each view writes only its colour. The left eye, red, sees the cube
  // further right: its right edge shows only red, the left edge only
  // green, and the middle both, yellow. Blue is never written.
  // The window opens through one pass of the loop, which gives the view
  // the focal 0.825.
  EXPECT_GT(p.count(452, 240, 460, 330, reddish), 200) << run.out;
  EXPECT_GT(p.count(308, 240, 316, 330, greenish), 200);
  EXPECT_EQ(p.count(320, 220, 768, 356, greenish), 0) << "only the top and bottom edges may differ";
  EXPECT_TRUE(yellowish(p.at(384, 288)));
  EXPECT_EQ(p.count([](Rgb c) { return c.b != 0; }), 0);
}

TEST(WindowPicture, FogTurnsAFarVolumeToTheFogColour) {
  REQUIRE_DRAWING();
  WindowRun run(
      "cube(1)\ncube(2)\ntran(-300,0,0) vol(1)\ntran(300,0,0) vol(2)\neye(0,0,-1000)\n"
      "col vol(1,2)=1,0,0\nyes illum\nyes fog\nfog zbuf vol(1)=1,1,1,10,500\n"
      "fog zbuf vol(2)=1,1,1,5000,9000\ndispl\nwrite image name(\"fog.bmp\")\nbye abs\n");
  Picture p = run.picture("fog.bmp");
  // Vol 1 lies past the end of its fog: white. Vol 2's fog starts far
  // behind it: plain red.
  const Rgb fogged = p.at(384 - 157, 288);
  EXPECT_GT(fogged.r, 230) << run.out;
  EXPECT_GT(fogged.g, 230);
  EXPECT_GT(fogged.b, 230);
  EXPECT_TRUE(reddish(p.at(384 + 157, 288)));
}

TEST(WindowPicture, NoBehindCullsTheFacetsThatFaceAway) {
  REQUIRE_DRAWING();
  // Two squares, one wound to face the eye, one to face away.
  WindowRun run(
      "vol(1) poi(-300,100,0, -100,100,0, -100,-100,0, -300,-100,0) fac(1,2,3,4)\n"
      "vol(2) poi(100,100,0, 300,100,0, 300,-100,0, 100,-100,0) fac(4,3,2,1)\n"
      "eye(0,0,-1000)\ncol vol(1,2)=1,0,0\nyes illum\nillum vol(1,2)=-1,1,0,0,0\ndispl\n"
      "write image name(\"both.bmp\")\nno behind\nscreen\ndispl\nwrite image name(\"culled.bmp\")\nbye abs\n");
  Picture both = run.picture("both.bmp");
  Picture culled = run.picture("culled.bmp");
  const int left = 384 - 104, right = 384 + 104;
  EXPECT_FALSE(background(both.at(left, 288))) << run.out;
  EXPECT_FALSE(background(both.at(right, 288)));
  // With culling one of the two is gone, the other stays.
  EXPECT_NE(background(culled.at(left, 288)), background(culled.at(right, 288)));
}

TEST(WindowPicture, ScreenClearsToTheBackgroundGiven) {
  REQUIRE_DRAWING();
  WindowRun run(
      "back(0,1,0)\nscreen\nwrite image name(\"green.bmp\")\nscreen(1,0,0)\n"
      "write image name(\"red.tga\")\nwrite image name(\"red.bmp\") format(\"RGB\")\nbye abs\n");
  Picture g = run.picture("green.bmp");
  EXPECT_EQ(g.count([](Rgb c) { return !(c.g == 255 && c.r == 0 && c.b == 0); }), 0) << run.out;
  // The format string writes R first: red lands where blue is read.
  Picture swapped = run.picture("red.bmp");
  const Rgb c = swapped.at(10, 10);
  EXPECT_EQ(c.b, 255);
  EXPECT_EQ(c.r, 0);
  std::ifstream tga(run.dir / "red.tga", std::ios::binary);
  std::vector<uint8_t> t((std::istreambuf_iterator<char>(tga)), {});
  ASSERT_EQ(t.size(), 18u + 768u * 576u * 4u);
  EXPECT_EQ(t[18 + 2], 255);  // B, G, R, A: red third
  EXPECT_EQ(t[18 + 0], 0);
}

TEST(WindowPicture, OrthographicModePutsTheOriginMidWindowInPixels) {
  REQUIRE_DRAWING();
  WindowRun run(
      "vol(1) poi(-50,-50,0, 50,-50,0, 50,50,0, -50,50,0) fac(4,3,2,1)\n"
      "col vol(1)=1,0,0\nyes illum\npers(0)\ndispl\nwrite image name(\"ortho.bmp\")\nbye abs\n");
  Picture p = run.picture("ortho.bmp");
  // A square of 100 pixels, centred.
  EXPECT_EQ(p.count(384 - 45, 288 - 45, 384 + 45, 288 + 45, [](Rgb c) { return !reddish(c); }), 0) << run.out;
  EXPECT_TRUE(background(p.at(384 + 56, 288)));
  EXPECT_TRUE(background(p.at(384 - 56, 288)));
  EXPECT_TRUE(background(p.at(384, 288 + 56)));
}

}  // namespace

TEST(WindowPicture, AFileReadWithNoImageIsDrawnInTheWindow) {
  REQUIRE_DRAWING();
  WindowRun run(
      "back(1,0,0)\nscreen\nwrite image name(\"red.png\")\nback(0,0,1)\nscreen\n"
      "read image name(\"red.png\") dim(100,50) poi(0,0)\nread image name(\"red.png\") dim(40,30)\n"
      "write image name(\"after.bmp\")\nbye abs\n");
  Picture p = run.picture("after.bmp");
  ASSERT_EQ(p.w, 768) << run.out;
  const auto red = [](Rgb c) { return c.r == 255 && c.g == 0 && c.b == 0; };
  // 100 x 50 at the bottom left, 40 x 30 at the top left, blue elsewhere.
  EXPECT_EQ(p.count(0, p.h - 50, 100, p.h, red), 100 * 50) << run.out;
  EXPECT_EQ(p.count(0, 0, 40, 30, red), 40 * 30);
  EXPECT_EQ(p.count(red), 100 * 50 + 40 * 30);
}
