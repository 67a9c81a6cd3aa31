// Images laid on volumes: a texture for the whole volume, an image for
// each facet, and a texture that follows its image's pixels.
#include "window/window_run.h"

namespace {

// A cube turned to show three faces, lit from the start-up light.
const char* const TURNED_CUBE =
    "cube(1) dim(100)\nrotx(0.5) vol(1)\nroty(0.6) vol(1)\neye(0,0,-1000)\nyes illum\nyes texture\n";

// Colours of the yellow-to-cyan gradient, away from the blue background.
bool yellowish(Rgb c) { return c.g > 80 && c.r > c.b + 60; }
bool cyanish(Rgb c) { return c.g > 80 && c.b > c.r + 60; }
bool grey(Rgb c) { return std::abs(c.r - c.g) < 12 && std::abs(c.g - c.b) < 12 && c.r > 40; }
bool greenish(Rgb c) { return c.g > 20 && c.r < 10 && c.b < 10; }
bool pure_red(Rgb c) { return c.r > 80 && c.g < 10 && c.b < 10; }

TEST(WindowTexture, ATexturedCubeShowsItsImageAndZeroFallsThrough) {
  REQUIRE_DRAWING();
  WindowRun run(std::string("image(1) dim(64,64) col(1,1,0,0,1,1)\n") + TURNED_CUBE +
                "texture vol(1)=1\ndispl\nwrite image name(\"tex.bmp\")\n"
                "texture vol(1)=0\nscreen\ndispl\nwrite image name(\"plain.bmp\")\nbye abs\n");
  Picture tex = run.picture("tex.bmp");
  Picture plain = run.picture("plain.bmp");
  // The cube stands in 290..470 x 210..370: both ends of the gradient
  // show on it, and no grey of the untextured white cube.
  EXPECT_GT(tex.count(290, 210, 470, 370, yellowish), 300) << run.out;
  EXPECT_GT(tex.count(290, 210, 470, 370, cyanish), 1000);
  EXPECT_LT(tex.count(290, 210, 470, 370, grey), 100);
  // Texture 0 names no image: the plain member draws the white cube.
  EXPECT_GT(plain.count(290, 210, 470, 370, grey), 10000);
  EXPECT_EQ(plain.count(yellowish) + plain.count(cyanish), 0);
}

TEST(WindowTexture, EachFacetTakesItsOwnImage) {
  REQUIRE_DRAWING();
  WindowRun run(std::string("image(2) dim(8,8) col(1,0,0)\nimage(3) dim(8,8) col(0,1,0)\n") + TURNED_CUBE +
                "texture fac vol(1)=2\ntexture fac(2,4,6) vol(1)=3\ndispl\nwrite image name(\"fac.bmp\")\nbye abs\n");
  Picture p = run.picture("fac.bmp");
  // Two faces in sight hold image 2, the shaded right one image 3.
  EXPECT_GT(p.count(290, 210, 420, 370, pure_red), 10000) << run.out;
  EXPECT_GT(p.count(410, 230, 465, 360, greenish), 3000);
  EXPECT_EQ(p.count(290, 210, 380, 370, greenish), 0);
}

TEST(WindowTexture, ATextureFollowsTheChangesOfItsImage) {
  REQUIRE_DRAWING();
  WindowRun run(std::string("image(1) dim(8,8) col(1,0,0)\n") + TURNED_CUBE +
                "texture vol(1)=1\ndispl\nwrite image name(\"red.bmp\")\n"
                "image(1) col(0,1,0)\nscreen\ndispl\nwrite image name(\"green.bmp\")\n"
                "rem image(1)\nscreen\ndispl\nwrite image name(\"gone.bmp\")\n"
                "image(1) dim(4,4) col(1,0,0)\nscreen\ndispl\nwrite image name(\"again.bmp\")\nbye abs\n");
  Picture red = run.picture("red.bmp");
  Picture green = run.picture("green.bmp");
  EXPECT_GT(red.count(pure_red), 10000) << run.out;
  EXPECT_EQ(red.count(greenish), 0);
  EXPECT_GT(green.count(greenish), 10000);
  EXPECT_EQ(green.count(pure_red), 0);
  // With its image gone the cube is drawn plain; a new image 1 is used.
  Picture gone = run.picture("gone.bmp");
  EXPECT_GT(gone.count(290, 210, 470, 370, grey), 10000);
  EXPECT_EQ(gone.count(greenish), 0);
  Picture again = run.picture("again.bmp");
  EXPECT_GT(again.count(pure_red), 10000);
}

TEST(WindowTexture, GeneratedFacetsAreTexturedToo) {
  REQUIRE_DRAWING();
  WindowRun run(std::string("image(1) dim(8,8) col(1,0,0)\n") + TURNED_CUBE +
                "texture vol(1)=1\nfrac vol(1)=1\ngenerate frac vol(1)\nyes frac\ndispl\n"
                "write image name(\"gen.bmp\")\nbye abs\n");
  Picture p = run.picture("gen.bmp");
  EXPECT_GT(p.count(pure_red), 10000) << run.out;
  EXPECT_EQ(p.count(290, 210, 470, 370, grey), 0);
}

}  // namespace
