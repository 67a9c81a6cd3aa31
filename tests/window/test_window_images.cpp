// Images drawn over the window: by command, and every visible image at
// each display.
#include "window/window_run.h"

namespace {

bool pure_red(Rgb c) { return c.r > 250 && c.g < 5 && c.b < 5; }
bool pure_green(Rgb c) { return c.g > 250 && c.r < 5 && c.b < 5; }

TEST(WindowImages, ImagesAreDrawnByCommandAndWhenVisible) {
  REQUIRE_DRAWING();
  WindowRun run(
      "image(1) dim(50,40) col(1,0,0)\nimage(2) dim(30,20) col(0,1,0)\npoi image(1)=100,100\n"
      "displ image(1)\nwrite image name(\"one.bmp\")\nscreen\ndispl image(2)=1\ndispl\n"
      "write image name(\"visible.bmp\")\ndispl image(2)=0\nscreen\ndispl\nwrite image name(\"none.bmp\")\n"
      "bye abs\n");
  Picture one = run.picture("one.bmp");
  // 50 x 40 from (100, 100) counted from the bottom: rows 436..475.
  EXPECT_EQ(one.count(pure_red), 50 * 40) << run.out;
  EXPECT_EQ(one.count(100, 436, 150, 476, pure_red), 50 * 40);
  EXPECT_EQ(one.count(pure_green), 0);
  // A visible image stands at the top left at each display.
  Picture visible = run.picture("visible.bmp");
  EXPECT_EQ(visible.count(0, 0, 30, 20, pure_green), 30 * 20);
  EXPECT_EQ(visible.count(pure_green), 30 * 20);
  EXPECT_EQ(visible.count(pure_red), 0);
  Picture none = run.picture("none.bmp");
  EXPECT_EQ(none.count(pure_green), 0);
}

}  // namespace
