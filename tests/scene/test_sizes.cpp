// Sizes that a user's numbers ask for are checked before anything is
// built: a volume too large to hold is refused at once with "MALLOC
// ERROR" and the true byte count, nothing is made, and the session goes on.
#include <gtest/gtest.h>

#include <string>

#include "kernel/chains.h"
#include "scene/scene_fixture.h"

namespace {

class Sizes : public SceneTest {
 protected:
  // The text fails with MALLOC ERROR and leaves no volume `id`.
  void expect_refused(const std::string& text, int id) {
    Outcome r = run(text);
    EXPECT_LT(r.status, 0) << text;
    EXPECT_NE(r.out.find("MALLOC ERROR"), std::string::npos) << text << ": " << r.out;
    EXPECT_TRUE(nil("vol(" + std::to_string(id) + ")")) << text;
  }
};

TEST_F(Sizes, HugePrimitivesAreRefusedBeforeBuilding) {
  expect_refused("ball(1) dim(1) secy(100000)", 1);
  expect_refused("ball(1) dim(1) secx(1e12) secy(4)", 1);
  expect_refused("grid(2) dim(1,1) secx(100000) secy(100000)", 2);
  expect_refused("grid(2) secx(2000) secy(2000) secz(2000)", 2);
  expect_refused("rev(3) poi(1,0,0,1,2,0) secx(1e9)", 3);
  expect_refused("prism(4) poi(0,0,0,1,0,0,1,1,0) poi(0,0,1) secy(1e9) close", 4);
  expect_refused("vol(5) arc(100,0,6.28,1e9)", 5);
  expect_refused("vol(5) arc(100,0,6.28,8) secx(1e9)", 5);
  ok("ball(10) dim(1); ball(11) dim(2)");
  expect_refused("vol(6) pipe(10,11) secy(1e9)", 6);
  expect_refused("vol(7) envelope(10,11) secy(1e9)", 7);
  // Vertices and a facet asked for by count.
  for (const char* line : {"vol(9) NP(1e9)", "vol(9) NF(3e9)"}) {
    Outcome r = run(line);
    EXPECT_LT(r.status, 0) << line;
    EXPECT_NE(r.out.find("MALLOC ERROR"), std::string::npos) << line << ": " << r.out;
  }
  // The session goes on: a volume of a usual size is made.
  ok("ball(8) dim(1) secy(4)");
  EXPECT_FLOAT_EQ(one("NP(poi vol(8))"), 40.0f);
}

TEST_F(Sizes, RefinementTooLargeIsRefusedBeforeRefining) {
  // 1500 x 750 quadrilaterals refined 4 times: each level makes four of
  // one, 288,000,000 facets of 8 words: more than a block can hold.
  ok("ball(12) dim(1) secx(1500) secy(750)");
  Outcome r = run("generate frac(4) vol(12)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("MALLOC ERROR"), std::string::npos) << r.out;
  ok("ball(8) dim(1) secy(4); generate frac(2) vol(8)");
  EXPECT_FLOAT_EQ(one("NP(fac generate vol(8))"), 32.0f * 16);
}

TEST_F(Sizes, TheByteCountPrintedIsTheTrueOne) {
  // ball: 2 x 100000 sections around, 100000 up: 100001 rings of 200000
  // vertices (4 + 3 x 20,000,200,000 words) and 20,000,000,000
  // quadrilaterals (4 + 8 words each): 220,000,600,008 words.
  EXPECT_NE(run("ball(1) dim(1) secy(100000)").out.find("880002400032:"), std::string::npos);
  // grid: 100001 x 100001 vertices (4 + 30,000,600,003 words) and
  // 10,000,000,000 quadrilaterals (4 + 80,000,000,000): 110,000,600,011.
  EXPECT_NE(run("grid(2) dim(1,1) secx(100000) secy(100000)").out.find("440002400044:"), std::string::npos);
}

}  // namespace
