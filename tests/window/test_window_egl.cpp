// The same scenes drawn in the window under Xvfb and off-screen through
// EGL give the same pixels, byte for byte: both are Mesa's llvmpipe, and
// texts come from the program's own font tables in both.
//
// The one difference allowed, by design, is not in these pictures: off
// screen there is one colour buffer standing for the front and the back
// one, so a picture of the front buffer taken while the loop's next image
// is half drawn in the back one (which no command of the console does)
// would show that image; the window would show the last swapped one.
#include "window/window_run.h"

namespace {

std::string file_bytes(const std::filesystem::path& p) {
  std::ifstream f(p, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(f), {});
}

// Runs `script` both ways and compares the files it writes, by name.
void same_both_ways(const std::string& script, const std::vector<std::string>& files) {
  WindowRun window(script, "ID", "", ORVELA_BINARY, Drawing::window);
  WindowRun offscreen(script, "ID", "", ORVELA_BINARY, Drawing::offscreen);
  for (const std::string& name : files) {
    const std::string a = file_bytes(window.dir / name), b = file_bytes(offscreen.dir / name);
    ASSERT_FALSE(a.empty()) << name << " not written in the window:\n" << window.out;
    ASSERT_FALSE(b.empty()) << name << " not written off-screen:\n" << offscreen.out;
    EXPECT_TRUE(a == b) << name << " differs";
  }
  // And the console said the same from the first prompt on (the banner
  // names the options and the folder).
  const size_t a = window.out.find(" ?"), b = offscreen.out.find(" ?");
  ASSERT_NE(a, std::string::npos) << window.out;
  ASSERT_NE(b, std::string::npos) << offscreen.out;
  EXPECT_EQ(window.out.substr(a), offscreen.out.substr(b));
}

#define REQUIRE_BOTH() \
  REQUIRE_XVFB();      \
  if (!have_egl()) GTEST_SKIP() << "no off-screen drawing here (EGL)"

TEST(WindowEgl, ALitTexturedSceneWithTextsAndImagesIsTheSame) {
  REQUIRE_BOTH();
  same_both_ways(
      "light(1) eye(100,-100,-100) col(1,1,1)\nimage(1) dim(64,64) col(1,1,0,0,1,1)\n"
      "cube(1) dim(100)\nrotx(0.5) vol(1)\nroty(0.6) vol(1)\neye(0,0,-1000)\nyes illum\nyes texture\n"
      "texture vol(1)=1\nball(2) dim(40) secx(24) secy(12)\ntran(-220,120,0) vol(2)\ncol vol(2)=0,1,0\n"
      "message vol(1)=\"cube one\"\ncol message vol(1)=1,1,0\nback message vol(1)=0,0,0\n"
      "message vol(2)=\"Times\"\nfont message vol(2)=\"times24\"\n"
      "image(3) dim(50,40) col(1,0,0)\npoi image(3)=100,100\ndispl image(3)=1\n"
      "displ\nwrite image name(\"scene.bmp\")\n"
      "displ exec(\"Run\") poi(20,40) rectangle(0,1,0) frame\ndispl exec(\"Helvetica\") poi(300,40) font(\"helvetica18\")\n"
      "write image name(\"texts.bmp\")\nbye abs\n",
      {"scene.bmp", "texts.bmp"});
}

TEST(WindowEgl, ViewsFogAndTransparencyAreTheSame) {
  REQUIRE_BOTH();
  same_both_ways(
      "cube(1) dim(80)\nrotx(0.4) vol(1)\ncol vol(1)=1,0,0\nball(2) dim(60)\ntran(60,0,-50) vol(2)\n"
      "transp vol(2)=0.5\nyes transp\nyes illum\neye(0,0,-1000)\nview(2)\neye view(2)=0,0,-300\n"
      "displ\nwrite image name(\"views.bmp\")\nfog(1) col(0.5,0.5,0.5)\nyes fog\nscreen\ndispl\n"
      "write image name(\"fog.bmp\")\nbye abs\n",
      {"views.bmp", "fog.bmp"});
}

// `graphic(w,h)`: the surface takes the new size, and the picture is
// drawn again in it as in a window that was exposed.
TEST(WindowEgl, AResizedWindowIsTheSame) {
  REQUIRE_BOTH();
  same_both_ways(
      "cube(1) dim(50)\neye(0,0,-1000)\ncol vol(1)=1,0,0\ngraphic(400,300)\ndispl\nwrite image name(\"g1.bmp\")\n"
      "graphic(300,500)\nscreen\ndispl\nwrite image name(\"g2.bmp\")\nbye abs\n",
      {"g1.bmp", "g2.bmp"});
}

// The loop with its stages, a button's text, `time(n)` and the pacing:
// the picture after it, and the images recorded during it.
TEST(WindowEgl, TheLoopAndItsRecordingAreTheSame) {
  REQUIRE_BOTH();
  same_both_ways(
      "ball(1) dim(30) secy(12)\ncol vol(1)=1,0,0\nyes illum\n"
      "eye(0,0,-1000)\ntraj(1) tran(-300,0,0,300,0,0) animate(40) period(1) vol(1)\n"
      "interaction message(\"STEP\") poi(-300,-200) col(1,1,0)\n"
      "interaction video name(\"loop\") format(\"png\") video(5)\ninteraction time(20)\n"
      "write image name(\"after.bmp\")\ninteraction video\nbye abs\n",
      {"after.bmp", "loop0001.png", "loop0003.png", "loop0005.png"});
}

// No EGL vendor to be had: one line says so, and the session goes on as
// with gra=0.
TEST(WindowEgl, WithoutEglTheSessionGoesOnWithNoWindow) {
  WindowRun run("cube(1)\ndispl\nprint(\"STILL HERE\")\nbye abs\n", "ID", "",
                std::string("__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent.json ") + ORVELA_BINARY, Drawing::offscreen);
  EXPECT_NE(run.out.find("no off-screen drawing: Mesa's surfaceless EGL platform cannot be opened (libegl-mesa0 is "
                         "needed): running with gra=0\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("STILL HERE"), std::string::npos);
  EXPECT_NE(run.out.find("SEE YOU SOON"), std::string::npos);
}

}  // namespace
