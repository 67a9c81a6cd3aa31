// A ball of radius 100 dropped on the plane y = -300 with restitution 0.8,
// pictured from 4000 away (0.163 pixel a unit, as the cloth test measures).
// An independent model of the steps (Python: v -= 1, y += v, a new contact
// reflects the speed times 0.8 and moves out by 1.8 times the new speed)
// puts the first two tops of the bounces at y = -61.2 and -103.92; at rest
// the centre is within a few units of -200.
#include <cmath>

#include "window/window_run.h"

namespace {

const char* const BOUNCE =
    "no edit\nyes dynamic\nyes collision\ninteraction period(0)\neye(0,0,-4000)\n"
    "ball(1) radius(100)\ncol vol(1)=1,0,0\nmass vol(1)=1\n"
    "collision poi vol(1)=0,-300,0\ncollision normal vol(1)=0,1,0\ncollision coe vol(1)=0.8\n"
    "func=\"g(n){force vol(1)=0,-1,0,0}\"\n"
    "displ\nwrite image name(\"start.bmp\")\n"
    "interaction func(2,\"g\")\ninteraction time(36)\ndispl\nwrite image name(\"top1.bmp\")\n"
    "interaction func(2,\"g\")\ninteraction time(30)\ndispl\nwrite image name(\"top2.bmp\")\n"
    "interaction func(2,\"g\")\ninteraction time(400)\ndispl\nwrite image name(\"rest.bmp\")\nbye abs\n";

constexpr double PIXEL = 261.0 / 1600.0;

// The middle row of the red ball, -1 when it is not seen.
double centre(const Picture& p) {
  int top = -1, bottom = -1;
  for (int y = 0; y < p.h; y++)
    if (p.count(0, y, p.w, y + 1, reddish) > 0) {
      if (top < 0) top = y;
      bottom = y;
    }
  return top < 0 ? -1 : (top + bottom) / 2.0;
}

}  // namespace

TEST(WindowCollision, BallBouncesLowerEachTimeAndComesToRestOnThePlane) {
  REQUIRE_DRAWING();
  WindowRun run(BOUNCE);
  const double c0 = centre(run.picture("start.bmp"));
  const double c1 = centre(run.picture("top1.bmp"));
  const double c2 = centre(run.picture("top2.bmp"));
  const double c3 = centre(run.picture("rest.bmp"));
  ASSERT_GE(c0, 0) << run.out;
  ASSERT_GE(c1, 0);
  ASSERT_GE(c2, 0);
  ASSERT_GE(c3, 0);
  // All on the same side of the start, further each time.
  const double d1 = c1 - c0, d2 = c2 - c0, d3 = c3 - c0;
  EXPECT_TRUE((d1 > 0 && d2 > 0 && d3 > 0) || (d1 < 0 && d2 < 0 && d3 < 0)) << d1 << " " << d2 << " " << d3;
  EXPECT_NEAR(std::fabs(d1), 61.2 * PIXEL, 2);
  EXPECT_NEAR(std::fabs(d2), 103.92 * PIXEL, 2);
  // At rest on the plane: the centre 200 below where it started, never
  // through the plane.
  EXPECT_NEAR(std::fabs(d3), 200 * PIXEL, 2);
  EXPECT_LT(std::fabs(d1), std::fabs(d2));
  EXPECT_LT(std::fabs(d2), std::fabs(d3));
}

// Contacts with planes, spheres, pairs of centres and the bounds of
// positions and distances in every image: none of them allocates once the
// scene is built (the forces are set once, with `no force`, so that no
// user function runs).
TEST(WindowCollision, TheCollisionAndLimitStagesAllocateNothingInTheLoop) {
  REQUIRE_DRAWING();
  WindowRun run("no edit\n"
                "yes dynamic\n"
                "yes collision\n"
                "interaction period(0)\n"
                "ball(1) radius(100)\n"
                "mass vol(1)=1\n"
                "collision poi vol(1)=0,-300,0,0,300,0\n"
                "collision normal vol(1)=0,1,0,0,-1,0\n"
                "collision coe vol(1)=0.8\n"
                "cube(2)\n"
                "mass vol(2)=1\n"
                "collision poi vol(2)=0,-300,0\n"
                "collision normal vol(2)=0,1,0\n"
                "collision vol vol(2)=1\n"
                "cube(3)\n"
                "cube(4)\n"
                "tran(150,0,0) matrix vol(4)\n"
                "collision anc vol(3)=4\n"
                "mass vol(3,4)=1\n"
                "limit CG matrix vol(3)=0,0,0,400\n"
                "limit tran vol(4)=-500,-500,-500,500,500,500\n"
                "limit ball vol(4)=0,0,0,1000\n"
                "grid(5) secx(10) secy(10)\n"
                "mass vol(5)=1\n"
                "mass vertex(1) vol(5)=0\n"
                "spring vol(5)=0.1,-0.05\n"
                "limit dist vertex vol(5)=5,30\n"
                "limit dist secy vol(5)=5,30\n"
                "limit dist secx vol(5)=5,30\n"
                "limit speed vertex vol(5)=3\n"
                "no force\n"
                "force vol(1)=0,-1,0,0\n"
                "force vol(2)=0,-1,0,0\n"
                "force vertex vol(5)=0,-0.05,0,-0.02\n"
                "interaction time(260)\n"
                "collision collision vol(1)\n"
                "bye abs\n",
                "ID", "", ORVELA_ALLOC_PROBE);
  EXPECT_NE(run.out.find("probe: images 30 to 230: 0 new, 0 blocks\n"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("EXEC_"), std::string::npos) << run.out;
  // The ball did reach its plane: its state names a vertex and plane 1.
  EXPECT_NE(run.out.find(" 1.000000 0.000000 -300.000000 0.000000 "), std::string::npos) << run.out;
}
