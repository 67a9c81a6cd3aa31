// The live sound in the window, from the file back end (no sound card):
// EXEC_AUDIO moves a volume by the level of the sound at each image, and
// the image loop that polls it allocates nothing.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "sound/live_fixture.h"
#include "window/window_run.h"

namespace {

bool has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }

// The square wave of the live tests in a file of its own.
std::string carre() {
  const std::string path = std::filesystem::temp_directory_path() / ("orvela_carre_" + std::to_string(getpid()) + ".wav");
  ScratchFolder::put(path, carre_wav(1));
  return path;
}

struct SonDeFichier {
  std::string path = carre();
  SonDeFichier() { setenv("ORVELA_AUDIO", ("file:" + path).c_str(), 1); }
  ~SonDeFichier() {
    unsetenv("ORVELA_AUDIO");
    std::remove(path.c_str());
  }
};

TEST(WindowAudio, TheLevelOfTheSoundMovesAVolume) {
  REQUIRE_DRAWING();
  SonDeFichier son;
  // The cube moves by the mean level times 1 unit along y: 127.75 units,
  // about 85 pixels down the window in this view; `audio anc` brings it
  // back.
  const std::string script =
      "no edit\nyes ring\n"
      "cube(1) dim(50)\ncol vol(1)=1,0,0\nyes illum\neye(0,0,-1000)\n"
      "audio tran vol(1) = 0, 1, 0\n"
      "device(1) ini(\"AUD\") dim(10)\n"
      "audio exec vol(1)\n"
      "interaction time(30)\nwrite image name(\"moved.bmp\")\n"
      "audio STOP\naudio anc\ndispl\nwrite image name(\"back.bmp\")\nbye abs\n";
  WindowRun run(script, "ID");
  EXPECT_FALSE(has(run.out, "\a")) << run.out;
  const Picture moved = run.picture("moved.bmp"), back = run.picture("back.bmp");
  // The centre is empty where the cube was; its face, 68 pixels wide, is
  // now centred 85 pixels lower.
  EXPECT_EQ(moved.count(354, 258, 414, 318, reddish), 0) << run.out;
  EXPECT_GT(moved.count(354, 345, 414, 400, reddish), 3000) << run.out;
  EXPECT_GT(back.count(354, 258, 414, 318, reddish), 3000);
}

// The level picks the image a volume wears: the square wave's mean,
// 127.75, is past the bound 100 and the cube wears the green image; with
// the bound at 1000 it wears the red one.
TEST(WindowAudio, TheLevelPicksTheImageAVolumeWears) {
  REQUIRE_DRAWING();
  SonDeFichier son;
  const std::string script =
      "no edit\n"
      "image(5) dim(16,16) col(1,0,0)\nimage(6) dim(16,16) col(0,1,0)\n"
      "cube(1) dim(50)\nyes texture\nyes illum\neye(0,0,-1000)\n"
      "audio image vol(1) = 5, 6\naudio period vol(1) = 0, 100\n"
      "device(1) ini(\"AUD\") dim(10)\n"
      "audio exec vol(1)\n"
      "interaction time(30)\nwrite image name(\"loud.bmp\")\n"
      "audio period vol(1) = 0, 1000\n"
      "interaction time(10)\nwrite image name(\"quiet.bmp\")\nbye abs\n";
  WindowRun run(script, "ID");
  const auto green = [](Rgb c) { return c.g > 120 && c.r < 60 && c.b < 60; };
  const Picture loud = run.picture("loud.bmp"), quiet = run.picture("quiet.bmp");
  EXPECT_GT(loud.count(354, 258, 414, 318, green), 3000) << run.out;
  EXPECT_EQ(loud.count(354, 258, 414, 318, reddish), 0) << run.out;
  EXPECT_GT(quiet.count(354, 258, 414, 318, reddish), 3000) << run.out;
  EXPECT_EQ(quiet.count(354, 258, 414, 318, green), 0) << run.out;
}

// Volumes driven by every form and an image shown by the level, the
// window polled at every image, over images 30 to 230: no memory asked.
TEST(WindowAudio, TheAudioStepAllocatesNothing) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  SonDeFichier son;
  const std::string script =
      "no edit\n"
      "cube(1) dim(50)\naudio tran vol(1) = 0, 1, 0\naudio rota vol(1) = 0.1, 0, 0\nspeed audio vol(1) = 0.5\n"
      "cube(2) dim(20)\naudio dila max vol(2) = 0.01, 0, 0\naudio tran rand vol(2) = 1, 1, 1\n"
      "func=\"f(v){return(v[1] / 100, 0, 0, v[2])}\"\nmeta func vol(2) = \"f\"\n"
      "image(5) dim(16,16) col(1,0,0)\nimage(6) dim(16,16) col(0,1,0)\nimage(4) dim(16,16)\n"
      "audio image vol(2) = 5, 6\naudio image image(4) = 5, 6\naudio period image(4) = 0, 128\n"
      "device(1) ini(\"AUD\") dim(10)\naudio ini sort(10) envelope(8, 1)\n"
      "audio exec vol(1,2) image(4)\n"
      "func=\"poll(n){p=device(1)}\"\n"
      "interaction func(2,\"poll\")\ninteraction period(0)\ninteraction time(240)\nbye abs\n";
  WindowRun run(script, "ID", "", ORVELA_ALLOC_PROBE);
  EXPECT_TRUE(has(run.out, "probe: images 30 to 230: 0 new, 0 blocks\n")) << run.out;
}

}  // namespace
