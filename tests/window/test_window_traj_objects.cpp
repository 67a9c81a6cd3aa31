// Trajectories on the objects beyond volumes, through the one table of
// kinds: an image resized by `dim`, a field and a brush coloured, lights
// and views placed by turns, scales and directions of their eye; and the
// lists of trajectories given by name.
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "window/window_run.h"

namespace {

// The first n numbers printed after the text `mark`, prompts and "1:"
// labels left out.
std::vector<float> apres(const std::string& out, const std::string& mark, size_t n) {
  std::vector<float> v;
  const size_t at = out.find(mark);
  if (at == std::string::npos) return v;
  std::istringstream in(out.substr(at + mark.size()));
  std::string w;
  while (v.size() < n && in >> w) {
    w.erase(0, w.find_first_not_of('?'));
    char* end = nullptr;
    const float f = std::strtof(w.c_str(), &end);
    if (end != w.c_str() && *end == '\0') v.push_back(f);
  }
  return v;
}

// What the console must show after a mark, and what it stands for.
struct Attendu {
  const char* mark;
  std::vector<float> want;
  const char* what;
};

void verifie(const std::string& out, const std::vector<Attendu>& all) {
  for (const Attendu& a : all) {
    const std::vector<float> got = apres(out, a.mark, a.want.size());
    ASSERT_EQ(got.size(), a.want.size()) << a.what << "\n" << out;
    for (size_t i = 0; i < got.size(); i++) EXPECT_NEAR(got[i], a.want[i], 1e-3) << a.what << " [" << i << "]";
  }
}

TEST(WindowTrajObjects, ImagesFieldsAndBrushesTakeTheRows) {
  REQUIRE_DRAWING();
  // Two images: rows 0 and 1 are played. dim(10,10,40,20) in 4 rows has
  // row 1 at (20, 13.33): the image becomes 20 by 13; the colours are half
  // way along 3 rows.
  WindowRun run(
      "no edit\nimage(1) dim(30,30)\nfield(1) col(1,0,0)\nbrush(1) col(0,1,0)\n"
      "yes image\nyes field\nyes brush\n"
      "traj(1) col(0,0,0,1,0.5,0) animate(3) field(1) brush(1)\n"
      "traj(2) dim(10,10,40,20) animate(4) period(1) image(1)\n"
      "interaction period(0)\ninteraction time(2)\n"
      "print(\"@field\")\ncol field(1)\nprint(\"@brush\")\ncol brush(1)\nprint(\"@image\")\ndim image(1)\n"
      "print(\"off\")\nno image\nno brush\ninteraction time(1)\n"
      "print(\"@still\")\ndim image(1)\nprint(\"@brush2\")\ncol brush(1)\nprint(\"@field2\")\ncol field(1)\nbye abs\n",
      "ID");
  verifie(run.out, {
      {"@field", {0.5f, 0.25f, 0}, "field"},
      {"@brush", {0.5f, 0.25f, 0}, "brush"},
      {"@image", {20, 13}, "image"},
      // With `no image` and `no brush` they keep their values; the field
      // goes on to the last row.
      {"@still", {20, 13}, "image held"},
      {"@brush2", {0.5f, 0.25f, 0}, "brush held"},
      {"@field2", {1, 0.5f, 0}, "field on"},
  });
  EXPECT_EQ(run.out.find("EXEC_TRAJ"), std::string::npos) << run.out;
}

TEST(WindowTrajObjects, LightsAndViewsTurnAndScaleTheirEye) {
  REQUIRE_DRAWING();
  // Each trajectory reaches its last row at the second image.
  WindowRun run(
      "no edit\nlight(1) eye(100,0,0) aim(0,0,0)\ntraj(1) roty(0,1.5707963) animate(2) light(1)\n"
      "light(2) eye(10,20,30) aim(0,0,10)\ntraj(2) hom(1,3) animate(3) light(2)\n"
      "light(3) eye(100,0,0) aim(0,0,0)\ntraj(3) rotz(0,1.5707963) animate(2)\ntraj(4) hom(2,2) animate(2)\n"
      "traj light(3)=3,4\n"
      "view(1) eye(0,0,-500) aim(0,0,0)\ntraj(5) axis(1,0,0,0,1,0) animate(2) view(1)\n"
      "light(4) eye(50,0,0) aim(0,0,0)\ntraj(6) tran(0,0,0,0,0,70) animate(2) light(4)\n"
      "interaction period(0)\ninteraction time(2)\n"
      "print(\"@l1\")\neye light(1)\nprint(\"@l2\")\neye light(2)\nprint(\"@l3\")\neye light(3)\n"
      "print(\"@v1\")\neye view(1)\nprint(\"@l4\")\neye light(4)\n"
      "eye light(2)=0,0,0\ninteraction time(1)\nprint(\"@moved\")\neye light(2)\nprint(\"@held\")\neye light(3)\n"
      "bye abs\n",
      "ID");
  // A quarter turn about y through the aim.
  verifie(run.out, {
      {"@l1", {0, 0, -100}, "roty"},
      // Twice as far from the aim at row 1.
      {"@l2", {20, 40, 50}, "hom"},
      // Two trajectories in one list compose in its order: turned, then scaled.
      {"@l3", {0, 200, 0}, "rotz then hom"},
      // The direction of sight becomes y at the eye's distance from the aim.
      {"@v1", {0, -500, 0}, "axis"},
      {"@l4", {0, 0, 70}, "tran"},
      // An eye the user sets is the new start: row 2 scales by 3.
      {"@moved", {0, 0, -20}, "after the user's eye"},
      // Ended one-shots hold their last place.
      {"@held", {0, 200, 0}, "held"},
  });
}

TEST(WindowTrajObjects, ListsByNameStepWhereApplied) {
  REQUIRE_DRAWING();
  // Trajectory 1 is named by name by two objects: each application steps
  // it, so the second object reads the next row, and the end of the
  // image does not step it again. Trajectory 2, named by number by two
  // objects, gives both the same row and steps once.
  WindowRun run(
      "no edit\nobject(1) col(9,9,9)\nobject(2) col(9,9,9)\nobject(3) col(9,9,9)\nobject(4) col(9,9,9)\n"
      "traj(1) col(0,0,0,9,9,9) animate(10) period(1) name(\"c\")\n"
      "traj(2) col(0,0,0,9,9,9) animate(10) period(1)\n"
      "traj object(1)=\"c\"\ntraj object(2)=\"c\"\ntraj object(3)=2\ntraj object(4)=2\n"
      "interaction period(0)\ninteraction time(2)\n"
      "print(\"@o1\")\ncol object(1)\nprint(\"@o2\")\ncol object(2)\n"
      "print(\"@o3\")\ncol object(3)\nprint(\"@o4\")\ncol object(4)\n"
      // Renamed: the list no longer finds it, and the report names both.
      "traj(1) name(\"d\")\ninteraction time(1)\n"
      // Made again under the name: the list finds the new one.
      "traj(7) col(5,5,5,6,6,6) animate(2) name(\"c\")\ninteraction time(1)\nprint(\"@again\")\ncol object(1)\n"
      // Removed while object 3 names it by number.
      "rem traj(2)\ninteraction time(1)\nbye abs\n",
      "ID");
  verifie(run.out, {
      {"@o1", {2, 2, 2}, "first by name"},
      {"@o2", {3, 3, 3}, "second by name"},
      {"@o3", {1, 1, 1}, "first by number"},
      {"@o4", {1, 1, 1}, "second by number"},
      {"@again", {5, 5, 5}, "made again"},
  });
  EXPECT_NE(run.out.find("traj c NOT FOUND\n object (1)\nEXEC_TRAJ\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("traj 2.000000  NOT FOUND\n object (3)\nEXEC_TRAJ\n"), std::string::npos) << run.out;
}

}  // namespace
