// The window resized or uncovered from outside: the picture follows the
// window's size, comes back when the window is exposed, and `write image`
// writes what the window shows. Pictures are checked both as GL reads
// them (`write image`) and as the X server shows them (a grab).
#include "window/live_session.h"

namespace {

std::string size_answer(int w, int h) { return std::to_string(w) + ".000000 " + std::to_string(h) + ".000000"; }

struct Resized : ::testing::Test {
  LiveSession s;
  std::string id;
  void SetUp() override {
    REQUIRE_LIVE_TOOLS();
    ASSERT_TRUE(s.run(RED_CUBE)) << s.output();
    id = s.window_id();
    ASSERT_FALSE(id.empty()) << s.output();
  }
  bool resize(int w, int h) {
    return s.x("xdotool windowsize --sync " + id + " " + std::to_string(w) + " " + std::to_string(h)) == 0;
  }
  // Until the program has taken the new size.
  bool taken(int w, int h) {
    return LiveSession::wait_until([&] { return s.answer("win").rfind(size_answer(w, h), 0) == 0; });
  }
};

TEST_F(Resized, ThePictureFollowsTheWindowsSize) {
  // A point beside the centre lies, on the screen, at a distance in
  // proportion to the sum of the window's sides (the views' matrices).
  auto beside = [&] { return std::atof(s.answer("pers(50,0,-50)").c_str()); };
  const double offset = beside() - 384;
  ASSERT_GT(offset, 10);
  for (auto [w, h] : {std::pair{400, 300}, std::pair{900, 700}}) {
    ASSERT_TRUE(resize(w, h));
    ASSERT_TRUE(taken(w, h)) << s.output();
    EXPECT_NEAR(beside() - w / 2.0, offset * (w + h) / (768 + 576), 0.01) << w << "x" << h;
    // Drawn again at the new size, the scene centred, without a command.
    EXPECT_TRUE(LiveSession::wait_until([&] { return shows_red_cube(s.grab("shown.bmp"), w, h); }, 20))
        << w << "x" << h << s.output();
    const std::string name = "w" + std::to_string(w) + ".bmp";
    ASSERT_TRUE(s.run("write image name(\"" + name + "\")")) << s.output();
    EXPECT_TRUE(shows_red_cube(s.picture(name), w, h)) << name;
    // The perspective follows the window's proportions: the square stays square.
    ASSERT_TRUE(s.run("screen\ndispl\nwrite image name(\"again.bmp\")")) << s.output();
    EXPECT_TRUE(shows_red_cube(s.picture("again.bmp"), w, h)) << w << "x" << h;
  }
  EXPECT_EQ(s.answer("1+1"), "2.000000");
}

TEST_F(Resized, TheOrthographicCameraFollowsTheWindowUnlessOneWasChosen) {
  ASSERT_TRUE(s.run("no pers\nscreen\ndispl")) << s.output();
  ASSERT_TRUE(resize(400, 300));
  ASSERT_TRUE(taken(400, 300)) << s.output();
  EXPECT_EQ(s.answer("pers normal"),
            "-200.000000 150.000000 -1000.000000 -200.000000 150.000000 0.000000 0.000000 -1.000000 0.000000");
  // The cube, 200 pixels wide seen without perspective, stays centred.
  ASSERT_TRUE(s.run("write image name(\"o.bmp\")")) << s.output();
  Picture p = s.picture("o.bmp");
  EXPECT_EQ(p.count(100, 49, 301, 250, reddish), p.count(reddish));
  EXPECT_GT(p.count(100, 49, 102, 250, reddish), 190);
  EXPECT_GT(p.count(299, 49, 301, 250, reddish), 190);
  const std::string chosen =
      "-100.000000 100.000000 -1000.000000 -100.000000 100.000000 0.000000 0.000000 -1.000000 0.000000";
  ASSERT_TRUE(s.run("pers normal(-100,100,-1000,-100,100,0,0,-1,0)")) << s.output();
  ASSERT_TRUE(resize(600, 500));
  ASSERT_TRUE(taken(600, 500)) << s.output();
  EXPECT_EQ(s.answer("pers normal"), chosen);
}

TEST_F(Resized, TheFirstScreenAfterAResizeStays) {
  // A picture written before: the renderer then read the old size back.
  ASSERT_TRUE(s.run("write image name(\"red.bmp\")")) << s.output();
  ASSERT_TRUE(resize(640, 480));
  ASSERT_TRUE(s.run("screen(0,1,0)")) << s.output();
  ASSERT_TRUE(taken(640, 480)) << s.output();
  ASSERT_TRUE(s.run("write image name(\"green.bmp\")")) << s.output();
  auto green = [](Rgb c) { return c.r < 20 && c.g > 230 && c.b < 20; };
  Picture written = s.picture("green.bmp");
  EXPECT_EQ(written.w, 640);
  EXPECT_EQ(written.count(green), 640 * 480);
  Picture shown = s.grab("green_shown.bmp");
  EXPECT_EQ(shown.w, 640);
  EXPECT_EQ(shown.count(green), 640 * 480);
}

TEST_F(Resized, AnUncoveredWindowShowsItsPictureAgain) {
  ASSERT_TRUE(LiveSession::wait_until([&] { return shows_red_cube(s.grab("before.bmp"), 768, 576); }, 20));
  ASSERT_EQ(s.x("xdotool windowunmap --sync " + id), 0);
  ASSERT_EQ(s.x("xdotool windowmap --sync " + id), 0);
  EXPECT_TRUE(LiveSession::wait_until([&] { return shows_red_cube(s.grab("after.bmp"), 768, 576); }, 20))
      << s.output();
  ASSERT_TRUE(s.run("write image name(\"after.bmp\")")) << s.output();
  EXPECT_TRUE(shows_red_cube(s.picture("after.bmp"), 768, 576));
}

}  // namespace
