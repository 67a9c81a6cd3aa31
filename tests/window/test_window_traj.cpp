// A ball driven by a trajectory along a closed smoothed curve through the
// four corners of a square, pictured at chosen images: at the corners it
// stands where the keys are, and half-way along a side the curve bulges
// outwards by an eighth of the difference of the tangents.
#include "window/window_run.h"

namespace {

struct Centre {
  double x = 0, y = 0;
  int n = 0;
};

// The centre of the pixels that are not the background: the ball, lit
// and shaded sides alike.
Centre red_centre(const Picture& p) {
  Centre c;
  for (int y = 0; y < p.h; y++)
    for (int x = 0; x < p.w; x++)
      if (!background(p.at(x, y))) c.x += x, c.y += y, c.n++;
  if (c.n) c.x /= c.n, c.y /= c.n;
  return c;
}

TEST(WindowTraj, ABallFollowsAClosedSmoothCurve) {
  REQUIRE_DRAWING();
  // 41 rows on the closed curve: rows 0, 10, 20 at the first three
  // corners, row 5 half-way along the first side, at (0, -187.5).
  WindowRun run(
      "ball(1) dim(30) secy(12)\ncol vol(1)=1,0,0\nyes illum\neye(0,0,-1000)\n"
      "traj(1) tran(-150,-150,0,150,-150,0,150,150,0,-150,150,0) ext close animate(41) period(1) vol(1)\n"
      "func=\"pic(n){if(n==1){write image name(\\\"r0.bmp\\\")}; if(n==6){write image name(\\\"r5.bmp\\\")}; "
      "if(n==11){write image name(\\\"r10.bmp\\\")}; if(n==21){write image name(\\\"r20.bmp\\\")}}\"\n"
      "interaction func(5,\"pic\")\ninteraction period(0)\ninteraction time(21)\nCG abs vol(1)\nbye abs\n");
  const Centre c0 = red_centre(run.picture("r0.bmp")), c5 = red_centre(run.picture("r5.bmp"));
  const Centre c10 = red_centre(run.picture("r10.bmp")), c20 = red_centre(run.picture("r20.bmp"));
  ASSERT_GT(c0.n, 200) << run.out;
  ASSERT_GT(c5.n, 200);
  ASSERT_GT(c10.n, 200);
  ASSERT_GT(c20.n, 200);
  // The window is 768 x 576: its centre is the origin. The corners are
  // symmetric about it.
  EXPECT_NEAR(c0.x + c10.x, 768, 4);
  EXPECT_NEAR(c0.y, c10.y, 2);
  EXPECT_NEAR(c10.x, c20.x, 2);
  EXPECT_NEAR(c10.y + c20.y, 576, 4);
  EXPECT_GT(c10.x - c0.x, 150);
  // Half-way: on the centre column, and 187.5/150 as far from the centre
  // row as the corners (the ball is at the same depth).
  EXPECT_NEAR(c5.x, 384, 2);
  EXPECT_NEAR((c5.y - 288) / (c0.y - 288), 187.5 / 150, 0.03);
  // The last image played is row 20, the third corner.
  const size_t at = run.out.rfind("1: ");
  float p[3] = {0, 0, 1};
  ASSERT_NE(at, std::string::npos) << run.out;
  ASSERT_EQ(std::sscanf(run.out.c_str() + at, "1: %f %f %f", &p[0], &p[1], &p[2]), 3);
  EXPECT_NEAR(p[0], 150, 0.01);
  EXPECT_NEAR(p[1], 150, 0.01);
  EXPECT_NEAR(p[2], 0, 0.01);
}

}  // namespace

namespace {

TEST(WindowTraj, AnImageOfTrajectoriesAllocatesNothing) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  // Volumes, an object, a light and the background driven by looping
  // trajectories of several kinds, a second order, a child, vertices and
  // facets, a morph, and a light turned by a trajectory it names by name:
  // images 30 to 230 are counted.
  WindowRun run(
      "no edit\nball(1) dim(20)\ncube(2) dim(10)\ncube(3) dim(10)\ncube(4) dim(20)\ncube(5) dim(10)\n"
      "object(1) col(0,0,0)\nlight(1) eye(-300,-300,-600)\nyes light\neye(0,0,-1000)\n"
      "traj(1) tran(-100,0,0,100,0,0,0,100,0) ext close animate(40) period(1) vol(1)\n"
      "traj(2) col(0,0,0,1,1,1) animate(7) period(-1) object(1) light(1)\n"
      "traj(3) rotz(0,3) animate(9) period(1) vol(2)\ntraj(4) dila(1,1,1,2,2,2) animate(5,2) period(1) vol(2)\n"
      "traj(5) tran(0,0,0,0,20,0) animate(6) period(1)\ntraj traj(1)=5\n"
      "traj(6) tran(0,0,0,0,0,30) animate(4) period(1) vertex(1) vol(3)\n"
      "traj(7) col(1,0,0,0,1,0) animate(3) period(1) fac(2) vol(3)\n"
      "traj(8) back(0,0,0.5,0,0,1) animate(10) period(-1)\n"
      "traj(9) interpol(2,4) animate(8) period(-1) vol(5)\n"
      "traj(10) quat(1,0,0,0,0.7,0,0.7,0) animate(6) period(1) add(1) number(1,2) vol(4)\n"
      "light(2) eye(300,0,0)\ntraj(11) rotz(0,6.28) animate(12) period(-1) name(\"spin\")\n"
      "traj light(2)=\"spin\"\n"
      "interaction period(0)\ninteraction time(240)\nbye abs\n",
      "ID", "", ORVELA_ALLOC_PROBE);
  EXPECT_NE(run.out.find("probe: images 30 to 230: 0 new, 0 blocks\n"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("EXEC_TRAJ"), std::string::npos) << run.out;
}

}  // namespace
