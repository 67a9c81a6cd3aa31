// Texts in the window: a volume's message and the exec menu's buttons.
#include "window/window_run.h"

namespace {

bool yellowish(Rgb c) { return c.r > 150 && c.g > 150 && c.b < 80; }
bool greenish(Rgb c) { return c.g > 150 && c.r < 60 && c.b < 60; }
bool black(Rgb c) { return c.r < 20 && c.g < 20 && c.b < 20; }

TEST(WindowText, AMessageStandsInABoxAtTheVolumesFirstVertex) {
  REQUIRE_DRAWING();
  WindowRun run(
      "cube(1) dim(50)\neye(0,0,-1000)\nmessage vol(1)=\"cube one\"\ncol message vol(1)=1,1,0\n"
      "back message vol(1)=0,0,0\ndispl\nwrite image name(\"m.bmp\")\nbye abs\n");
  Picture p = run.picture("m.bmp");
  // Vertex 1 of the cube falls near (356, 312): the text runs right of
  // it, over its black box, in yellow.
  EXPECT_GT(p.count(350, 295, 440, 325, yellowish), 30) << run.out;
  EXPECT_GT(p.count(350, 295, 440, 325, black), 300);
  EXPECT_EQ(p.count(0, 0, 768, 280, yellowish), 0);
  EXPECT_EQ(p.count(0, 330, 768, 576, black), 0);
}

TEST(WindowText, ExecButtonsDrawWhileTheMenuIsOnAndAnswerTheMouse) {
  REQUIRE_DRAWING();
  WindowRun run(
      "yes menu\ndispl exec(\"Run\") poi(20,40) rectangle(0,1,0) frame\n"
      "a=displ exec(\"Run\") poi(300,40) mouse displ(0)\nb=displ exec(\"Go\") poi(2,10) mouse displ(0)\n"
      "print(\"mouse\",a,b)\nno menu\ndispl exec(\"Off\") poi(500,40) rectangle(0,1,0)\n"
      "write image name(\"b.bmp\")\nbye abs\n");
  Picture p = run.picture("b.bmp");
  // The button's green box from the top left, its white frame around.
  EXPECT_GT(p.count(18, 22, 60, 46, greenish), 200) << run.out;
  EXPECT_GT(p.count(14, 18, 64, 50, [](Rgb c) { return c.r > 200 && c.g > 200 && c.b > 200; }), 60);
  // displ(0) and `no menu` drew nothing.
  EXPECT_EQ(p.count(280, 0, 768, 80, [](Rgb c) { return !background(c); }), 0);
  // The mouse has not moved from the corner: only the button there has it.
  EXPECT_NE(run.out.find("mouse\n0.000000 1.000000"), std::string::npos) << run.out;
}

}  // namespace
