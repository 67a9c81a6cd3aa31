// A cloth in the window: a grid of 17 x 17 vertices 100 apart joined by
// springs along its facet edges, two corners of one edge pinned, pulled by
// a weight at each vertex for 200 images. An independent model of the
// same steps puts the pinned edge's middle 79 units in from its corners
// and the free edge's middle 82 units beyond where it was. Seen from 4000
// the grid's 1600 units are 261 pixels: those are about 13 pixels.
#include <algorithm>
#include <cstdlib>

#include "window/window_run.h"

namespace {

const char* const CLOTH =
    "no edit\nyes dynamic\ninteraction period(0)\neye(0,0,-4000)\n"
    "grid(1) secx(16) secy(16)\ncol vol(1)=1,0,0\nmass vol(1)=1\nmass vertex(1,17) vol(1)=0\n"
    "spring vol(1)=0.1,-0.05\nfunc=\"pese(n){force vertex vol(1)=0,-0.05,0,-0.02}\"\n"
    "interaction func(2,\"pese\")\ndispl\nwrite image name(\"flat.bmp\")\n"
    "interaction time(200)\ndispl\nwrite image name(\"cloth.bmp\")\nbye abs\n";

// The red rows of a column, top to bottom.
std::vector<int> rangs_rouges(const Picture& p, int x) {
  std::vector<int> r;
  for (int y = 0; y < p.h; y++)
    if (reddish(p.at(x, y))) r.push_back(y);
  return r;
}

}  // namespace

TEST(WindowDynamics, ClothHangsFromItsTwoPinnedCorners) {
  REQUIRE_DRAWING();
  WindowRun run(CLOTH);
  Picture flat = run.picture("flat.bmp");
  Picture cloth = run.picture("cloth.bmp");
  ASSERT_EQ(cloth.w, 768) << run.out;
  // The flat grid: edges about 130 pixels above and below the middle row,
  // and 131 left and right of the middle column.
  const std::vector<int> f = rangs_rouges(flat, 384);
  ASSERT_GE(f.size(), 2u) << run.out;
  const int top = f.front(), bottom = f.back();
  EXPECT_NEAR(top, 288 - 130, 3);
  EXPECT_NEAR(bottom, 288 + 130, 3);
  // The pinned edge is the one whose extreme row is still where it was:
  // its corners hold it there. Which of the two it is on screen depends
  // on the view, not on the dynamics.
  int c_top = cloth.h, c_bottom = -1;
  for (int y = 0; y < cloth.h; y++)
    if (cloth.count(0, y, cloth.w, y + 1, reddish) > 0) c_top = std::min(c_top, y), c_bottom = y;
  const bool haut = std::abs(c_top - top) <= 1, bas = std::abs(c_bottom - bottom) <= 1;
  ASSERT_NE(haut, bas) << "one edge keeps its corners: " << c_top << " " << c_bottom;
  const int pinned = haut ? top : bottom, libre = haut ? bottom : top;
  const int inward = haut ? 1 : -1;
  // The middle of the pinned edge sags about 13 pixels toward the cloth.
  const std::vector<int> c = rangs_rouges(cloth, 384);
  ASSERT_GE(c.size(), 2u);
  const int edge_pinned = haut ? c.front() : c.back(), edge_free = haut ? c.back() : c.front();
  EXPECT_NEAR((edge_pinned - pinned) * inward, 13, 3);
  EXPECT_TRUE(cloth.count(380, pinned - 1, 389, pinned + 2, reddish) == 0) << "the pinned edge's middle has left it";
  // The free edge hangs about 13 pixels beyond where it was.
  EXPECT_NEAR((edge_free - libre) * inward, 13, 3);
  // The sides are drawn in a little, and nothing flew away.
  EXPECT_EQ(cloth.count(0, 0, 240, 576, reddish), 0);
  EXPECT_EQ(cloth.count(530, 0, 768, 576, reddish), 0);
}

// Once the scene is built, the images of the dynamics ask for no memory:
// springs of a grid, a led volume, the simple form, vertex fields of several kinds
// with colours, a dynamic image under a field, particles born again and
// a view with a mass; the forces set by a user function at each image.
TEST(WindowDynamics, TheStepsAskForNoMemoryOnceBuilt) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  WindowRun run(
      "no edit\nyes dynamic\nyes field\nyes particle\ninteraction period(0)\n"
      "grid(1) secx(8) secy(8)\nmass vol(1)=1\nmass vertex(1,9) vol(1)=0\nspring vol(1)=0.1,-0.05\n"
      "col vertex vol(1)=0.5,0.5,0.5\nlimit speed vertex vol(1)=5\n"
      "vol(2) poi(0,0,0)\nvol(3) poi(0,0,0, 10,0,0)\nlead vol(3)=2\nvertex follow vol(3)=2\nmass vol(3)=1\n"
      "law speed rota vol(3)=0.5,0.5\nyes lead\nspring ang vol(3)=0.1,-0.1\n"
      "vol(4) poi(0,0,0)\nmass vol(4)=1\nsimple vol(4)=2\nspring rota vol(4)=1,-0.1\n"
      "field(1) meta(0.001,0,0,0,0,0,0,0,0) poi(0,0,0)\nfield(2) vol(2) near(1) coe(0.01)\n"
      "field(3) poi(0,100,0) radius(5) law(1)\n"
      "image(1) dim(16,16) col(0.5,0.5,0.5)\nimage(1) speed(0.1,0,0)\nmass image(1)=1\nforce image(1)=0,0,0,-0.1\ndispl image(1)=1\n"
      "vol(5) poi(0,0,0, 1,1,1, 2,2,2) particle\nparticle vol(5)=0,0,0, 0,1,0\nmass vol(5)=1\ntime vol(5)=0,2,0\n"
      "view(2)\nmass view(2)=2\nforce eye view(2)=0,1,0,-0.5\n"
      "func=\"pousse(n){force vol(3)=0,1,0,0;force vol(4)=1,0,0,-0.1;force vertex vol(1)=0,-0.01,0,-0.02;"
      "force CG vol(1)=0,0.1,0;force rota vol(4)=0.01}\"\n"
      "interaction func(2,\"pousse\")\ninteraction time(240)\nbye abs\n",
      "ID", "", ORVELA_ALLOC_PROBE);
  EXPECT_NE(run.out.find("probe: images 30 to 230: 0 new, 0 blocks\n"), std::string::npos) << run.out;
}

// A visible image of type dynamic, black with a red speed of 3 a pixel:
// after 40 images its pixels are drawn at red 120. An image with a speed
// and no mass is not dynamic and keeps its colour.
TEST(WindowDynamics, ADynamicImageIsDrawnWithItsMovedColours) {
  REQUIRE_DRAWING();
  WindowRun run(
      "no edit\nyes dynamic\ninteraction period(0)\n"
      "image(1) dim(30,20) col(0,0,0)\nimage(1) speed(3,0,0)\nmass image(1)=1\ndispl image(1)=1\n"
      "image(2) dim(30,20) col(0,0,0)\nimage(2) speed(3,0,0)\npoi image(2)=100,100\ndispl image(2)=1\n"
      "interaction time(40)\ndispl\nwrite image name(\"moved.bmp\")\nbye abs\n");
  Picture p = run.picture("moved.bmp");
  ASSERT_GT(p.w, 0) << run.out;
  auto rouge = [](int r) { return [r](Rgb c) { return std::abs(c.r - r) <= 1 && c.g < 3 && c.b < 3; }; };
  EXPECT_EQ(p.count(0, 0, 30, 20, rouge(120)), 30 * 20) << run.out;
  // Image 2 has a speed but no mass: not dynamic, still black.
  EXPECT_EQ(p.count(100, p.h - 120, 130, p.h - 100, rouge(0)), 30 * 20);
}

// The pointer moved over the window while the loop runs, then still: the
// dynamics measures its place from the window's centre (y up) and, the
// pointer at rest, no speed.
TEST(WindowDynamics, ThePointerIsMeasuredAtEachImage) {
  REQUIRE_XVFB();
  WindowRun run(
      "no edit\nyes dynamic\nfunc=\"mark(n){if(n==3){print(\\\"LOOP RUNNING\\\")}}\"\n"
      "interaction func(1,\"mark\")\ninteraction period(25)\ninteraction\nprint(\"BACK\")\ndynamic mouse\nbye abs\n",
      "ID",
      "wait_text 'LOOP RUNNING'\nw=$(window_id)\nxdotool mousemove --window $w 300 300 sleep 0.3 "
      "mousemove --window $w 484 238 sleep 0.6\nkey Escape\n");
  EXPECT_NE(run.out.find("BACK\n ?1: 100.000000 50.000000 \n2: 0.000000 0.000000 \n3: 0.000000 0.000000 \n"),
            std::string::npos)
      << run.out;
}
