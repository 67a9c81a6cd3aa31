// Closing the window through the window manager's close request: the
// questions of `bye`, and, for a user who stays, the window back with
// the scene, every window command still working.
#include "window/live_session.h"

namespace {

const char* const UNSAVED = "FUNCTIONS HAVE NOT BEEN SAVED (0,1) ?";

TEST(WindowClose, StayingAfterTheQuestionReopensTheWindowWithItsScene) {
  REQUIRE_LIVE_TOOLS();
  LiveSession s;
  const std::string panel = "win(\"panel\") dim(100,60) poi(-384,-288)";
  ASSERT_TRUE(s.run(std::string("func=\"g(){return(1);}\"\n") + RED_CUBE + "\n" + panel)) << s.output();
  ASSERT_FALSE(s.window_id().empty()) << s.output();
  const size_t before = s.output().size();
  ASSERT_EQ(s.x(std::string(ORVELA_XWIN) + " close ORVELA"), 0);
  ASSERT_TRUE(s.wait_output(UNSAVED, before)) << s.output();
  s.send("0\n");

  // The window comes back by itself, showing the scene as it was.
  ASSERT_FALSE(s.window_id().empty()) << s.output();
  EXPECT_TRUE(LiveSession::wait_until([&] { return shows_red_cube(s.grab("shown.bmp"), 768, 576); }, 20))
      << s.output();
  ASSERT_TRUE(s.run("write image name(\"back.bmp\")")) << s.output();
  EXPECT_TRUE(shows_red_cube(s.picture("back.bmp"), 768, 576)) << s.output();

  // Every window command works on the new window.
  ASSERT_TRUE(s.run("graphic(640,480,0,0)")) << s.output();
  EXPECT_TRUE(LiveSession::wait_until([&] { return s.answer("win") == "640.000000 480.000000 0.000000 0.000000"; }))
      << s.output();
  ASSERT_TRUE(s.run("screen\ndispl\nwrite image name(\"resized.bmp\")")) << s.output();
  EXPECT_TRUE(shows_red_cube(s.picture("resized.bmp"), 640, 480));
  // The sub-window was made again, in its place, and takes the focus.
  ASSERT_TRUE(s.run("win foc(\"panel\")\nscreen(0,1,0)\nwin foc(\"ORVELA\")")) << s.output();
  auto green = [](Rgb c) { return c.r < 20 && c.g > 230 && c.b < 20; };
  EXPECT_TRUE(LiveSession::wait_until([&] {
    Picture p = s.grab("panel.bmp");
    return p.w == 640 && p.count(0, 0, 100, 60, green) == 6000 && p.count(green) == 6000;
  }, 20)) << s.output();
  EXPECT_EQ(s.answer("1+1"), "2.000000");
  EXPECT_EQ(s.output().find("freeglut"), std::string::npos) << s.output();

  // Asked again at the next close; leaving ends the session as `bye` does.
  const size_t again = s.output().size();
  ASSERT_EQ(s.x(std::string(ORVELA_XWIN) + " close ORVELA"), 0);
  ASSERT_TRUE(s.wait_output(UNSAVED, again)) << s.output();
  s.send("1\n");
  ASSERT_TRUE(s.wait_exit()) << s.output();
  EXPECT_EQ(s.status, 0);
  EXPECT_NE(s.output().find("SEE YOU SOON!...", again), std::string::npos) << s.output();
}

TEST(WindowClose, WithNothingUnsavedClosingEndsAsByeDoes) {
  REQUIRE_LIVE_TOOLS();
  LiveSession s;
  ASSERT_TRUE(s.run(RED_CUBE)) << s.output();
  ASSERT_FALSE(s.window_id().empty()) << s.output();
  ASSERT_EQ(s.x(std::string(ORVELA_XWIN) + " close ORVELA"), 0);
  ASSERT_TRUE(s.wait_exit()) << s.output();
  EXPECT_EQ(s.status, 0);
  EXPECT_EQ(s.output().find(UNSAVED), std::string::npos);
  EXPECT_NE(s.output().find("SEE YOU SOON!..."), std::string::npos) << s.output();
}

}  // namespace
