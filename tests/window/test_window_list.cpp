// The list of windows: sub-windows made, answered, focused.
#include "window/window_run.h"

namespace {

// Sub-windows are the window system's: off-screen they are records only.
TEST(WindowList, SubWindowsAreMadeAnsweredAndTakeTheFocus) {
  REQUIRE_XVFB();
  WindowRun run(
      "win(\"panel\") dim(200,100) poi(-384,-288)\nlist win\nwin(\"panel\")\nwin(\"panel\") poi(-100,-50)\n"
      "win(\"panel\")\nwin(\"ORVELA\")\nwin foc(\"nothere\")\nwin foc(\"panel\")\nback(0,1,0)\nscreen\n"
      "win foc(\"ORVELA\")\ncube(1) dim(50)\neye(0,0,-1000)\ncol vol(1)=1,0,0\ndispl\n"
      "write image name(\"main.bmp\")\nbye abs\n",
      "", "", ORVELA_BINARY, Drawing::window);
  // Placed from the main window's centre: at the corner, then centred.
  EXPECT_NE(run.out.find("200.000000 100.000000 0.000000 0.000000"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("200.000000 100.000000 284.000000 238.000000"), std::string::npos);
  // The main window is in the list under its title.
  EXPECT_NE(run.out.find("768.000000 576.000000"), std::string::npos);
  EXPECT_NE(run.out.find("nothere:"), std::string::npos);
  EXPECT_NE(run.out.find("win (0)(ORVELA)\n win (0)(panel)"), std::string::npos);
  // The green `screen` cleared the panel alone, and with the focus back
  // the cube is drawn in the main window.
  Picture p = run.picture("main.bmp");
  EXPECT_GT(p.count(340, 250, 430, 330, reddish), 100);
  EXPECT_EQ(p.count([](Rgb c) { return c.g > 200; }), 0);
}

}  // namespace

namespace {

// The window's size as `win` answers it: width, height, x, y.
std::string taille(const std::string& options) {
  WindowRun run("win\nbye abs\n", options);
  const size_t at = run.out.find(" ?");
  return at == std::string::npos ? run.out : run.out.substr(at + 2, run.out.find('\n', at) - at - 2);
}

TEST(WindowList, TheWindowIsClippedToTheScreenAndShortenedByANegativeHeight) {
  REQUIRE_DRAWING();
  EXPECT_EQ(taille("x=5000 y=5000"), "1024.000000 768.000000 0.000000 0.000000 ");
  EXPECT_EQ(taille("x=500 y=-100"), "500.000000 668.000000 0.000000 0.000000 ");
  EXPECT_EQ(taille("x=0.5 y=0.5"), "512.000000 384.000000 0.000000 0.000000 ");
}

}  // namespace
