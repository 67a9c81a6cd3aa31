// The counter of a trajectory by period mode: the rows an object reads
// image after image, and where a cycle is said to end.
#include <gtest/gtest.h>

#include <string>

#include "animation/traj/traj.h"

namespace {

// The rows read over `images` images (the counter before each step),
// with a '|' after each image whose step ended a cycle; '-' when the row
// is out of the table.
std::string rows(int n, int per, int step, int images) {
  Objet t;
  ni(&t) = n;
  period(&t) = per;
  inc(&t) = step;
  std::string out;
  for (int i = 0; i < images; i++) {
    out += cpt(&t) >= 0 && cpt(&t) < n ? std::to_string(cpt(&t)) : "-";
    if (step_traj(&t)) out += "|";
  }
  return out;
}

TEST(TrajStep, EachPeriodModeReadsItsRows) {
  // Go and come back: the ends are not repeated.
  EXPECT_EQ(rows(4, -1, 1, 12), "0123|210|123|21");
  // Loop: first and last rows both played.
  EXPECT_EQ(rows(3, 1, 1, 8), "012|012|01");
  // Once: the counter goes one past the end (the object keeps its last
  // row), the next step ends the trajectory, and it ends only once.
  EXPECT_EQ(rows(3, 0, 1, 7), "012-|---");
  // A step of 2 going and coming back.
  EXPECT_EQ(rows(5, -1, 2, 8), "024|31|13|3");
}

}  // namespace
