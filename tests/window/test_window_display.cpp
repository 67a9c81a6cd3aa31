// The display's rules on the displ words, followers, transformations
// given to `displ`, lights past the limit and `no displ`.
#include "window/window_run.h"

namespace {

bool drawn(Rgb c) { return !background(c); }

TEST(WindowDisplay, VerticesWithoutFacetsDrawNothing) {
  REQUIRE_DRAWING();
  WindowRun run("vol(1) poi(0,0,0, 100,0,0, 0,100,0)\neye(0,0,-1000)\ndispl\nwrite image name(\"a.bmp\")\nbye abs\n");
  Picture p = run.picture("a.bmp");
  EXPECT_EQ(p.count(drawn), 0) << run.out;
}

TEST(WindowDisplay, AHiddenLeaderStillShowsItsFollowers) {
  REQUIRE_DRAWING();
  WindowRun run(
      "cube(1) dim(50)\ncube(2) dim(20)\ntran(200,0,0) vol(2)\nfollow vol(1)=2\neye(0,0,-1000)\n"
      "displ vol(1)=0\ndispl\nwrite image name(\"f.bmp\")\nbye abs\n");
  Picture p = run.picture("f.bmp");
  // The leader's square (340..430) is gone, the follower's (470..510) stays.
  EXPECT_EQ(p.count(330, 240, 440, 340, drawn), 0) << run.out;
  EXPECT_GT(p.count(465, 270, 510, 305, drawn), 40);
}

TEST(WindowDisplay, ADilaGivenToDisplStaysWithTheVolume) {
  REQUIRE_DRAWING();
  WindowRun run(
      "cube(1) dim(50)\neye(0,0,-1000)\ndispl\nwrite image name(\"small.bmp\")\nscreen\n"
      "displ dila(2) vol(1)\nscreen\ndispl\nwrite image name(\"big.bmp\")\nbye abs\n");
  Picture small = run.picture("small.bmp");
  Picture big = run.picture("big.bmp");
  // The front square's half side goes from about 27 to about 55 pixels.
  EXPECT_EQ(small.count(0, 0, 768, 576, [&](Rgb c) { return drawn(c); }),
            small.count(384 - 35, 288 - 35, 384 + 35, 288 + 35, drawn)) << run.out;
  EXPECT_GT(big.count(0, 0, 384 - 45, 576, drawn), 50);
  EXPECT_GT(big.count(384 + 45, 0, 768, 576, drawn), 50);
}

TEST(WindowDisplay, LightsPastTheLimitAreRefusedAndNoDisplDrawsNothing) {
  REQUIRE_DRAWING();
  WindowRun run(
      "cube(1) dim(50)\neye(0,0,-1000)\nyes illum\nlight(3377)\ndispl\nno displ\nscreen\ndispl\n"
      "write image name(\"none.bmp\")\nyes displ\nbye abs\n");
  EXPECT_NE(run.out.find("light 3377 > 3376"), std::string::npos) << run.out;
  Picture p = run.picture("none.bmp");
  EXPECT_EQ(p.count(drawn), 0);
}

TEST(WindowDisplay, FogSwitchedOnByGraphicStaysUntilNoFog) {
  REQUIRE_DRAWING();
  WindowRun run(
      "cube(1) dim(50)\neye(0,0,-1000)\ncol vol(1)=1,0,0\nyes illum\ngraphic(\"glEnable(GL_FOG)\")\n"
      "displ\nwrite image name(\"on.bmp\")\nscreen\ndispl\nwrite image name(\"still.bmp\")\n"
      "no fog\nscreen\ndispl\nwrite image name(\"off.bmp\")\nbye abs\n");
  // GL's own fog covers the whole depth: the face takes its black.
  auto fogged = [](Rgb c) { return c.r < 10 && c.g < 10 && c.b < 10; };
  for (const char* name : {"on.bmp", "still.bmp"}) {
    Picture p = run.picture(name);
    EXPECT_GT(p.count(370, 275, 400, 300, fogged), 700) << name << run.out;
  }
  Picture off = run.picture("off.bmp");
  EXPECT_GT(off.count(370, 275, 400, 300, reddish), 700);
}

}  // namespace
