// Recordings of the loop (`interaction video`), drawn off-screen: one
// numbered picture an image drawn, none dropped or doubled; a count; the
// recording ended with what was drawn when a stage fails; films through
// ffmpeg with one frame an image, and a clear refusal without ffmpeg.
#include <csignal>

#include "image/image_files.h"
#include "support/program.h"
#include "window/window_run.h"

namespace {

// A red ball crossing the window from left to right, 4 pixels an image
// for 100 images.
const char* const CROSSING =
    "ball(1) dim(30) secy(12)\ncol vol(1)=1,0,0\nyes illum\neye(0,0,-1000)\n"
    "traj(1) tran(-300,0,0,300,0,0) animate(100) period(1) vol(1)\n";

std::string numbered(const std::string& base, int n) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "%04d", n);
  return base + digits + ".png";
}

// The middle of the columns where the ball's red shows, or -1.
double ball_centre(const std::filesystem::path& file) {
  std::ifstream f(file, std::ios::binary);
  const std::string d((std::istreambuf_iterator<char>(f)), {});
  ImageData img;
  if (d.empty() || png_read(reinterpret_cast<const uint8_t*>(d.data()), d.size(), FormatOptions{}, img) < 0) return -1;
  if (img.w < 1 || img.h < 1) return -1;
  const size_t nz = img.px.size() / (static_cast<size_t>(img.w) * img.h);  // R, G, B, A
  int lo = img.w, hi = -1;
  for (int y = 0; y < img.h; y++)
    for (int x = 0; x < img.w; x++) {
      const uint8_t* p = &img.px[(static_cast<size_t>(y) * img.w + x) * nz];
      if (nz >= 3 && p[0] > 60 && p[1] < 40 && p[2] < 40) {
        lo = std::min(lo, x);
        hi = std::max(hi, x);
      }
    }
  return hi < 0 ? -1 : (lo + hi) / 2.0;
}

int files_named(const std::filesystem::path& dir, const std::string& prefix) {
  int n = 0;
  for (const auto& e : std::filesystem::directory_iterator(dir))
    n += e.path().filename().string().rfind(prefix, 0) == 0 ? 1 : 0;
  return n;
}

bool have_program(const char* name) { return std::system(("command -v " + std::string(name) + " >/dev/null").c_str()) == 0; }

TEST(WindowVideo, EveryImageOfTheLoopIsOneNumberedPictureOneStepFurther) {
  REQUIRE_DRAWING();
  WindowRun run(std::string(CROSSING) + "interaction video name(\"shot\") format(\"png\")\ninteraction time(100)\n"
                                        "interaction video\nbye abs\n");
  EXPECT_NE(run.out.find("100.000000"), std::string::npos) << run.out;
  EXPECT_EQ(files_named(run.dir, "shot"), 100) << run.out;
  EXPECT_FALSE(std::filesystem::exists(run.dir / numbered("shot", 0)));
  EXPECT_FALSE(std::filesystem::exists(run.dir / numbered("shot", 101)));
  // Each picture shows the ball one step (600/100 units, some 4 pixels)
  // right of the one before: none was dropped or doubled.
  double before = ball_centre(run.dir / numbered("shot", 1));
  EXPECT_GT(before, 150);
  EXPECT_LT(before, 230);
  const double first = before, step = (ball_centre(run.dir / numbered("shot", 100)) - first) / 99;
  for (int n = 2; n <= 100; n++) {
    const double x = ball_centre(run.dir / numbered("shot", n));
    EXPECT_GT(x - before, 2.5) << "image " << n;
    EXPECT_LT(x - before, 5.5) << "image " << n;
    EXPECT_NEAR(x, first + (n - 1) * step, 1.5) << "image " << n;
    before = x;
  }
}

TEST(WindowVideo, ACountEndsTheRecordingWhileTheLoopGoesOnAndANewOneCountsAgain) {
  REQUIRE_DRAWING();
  WindowRun run(std::string(CROSSING) +
                "interaction video(7) name(\"a.png\")\ninteraction time(20)\nprint(\"A\",interaction video)\n"
                "interaction video name(\"b\")\ninteraction time(3)\nprint(\"B\",interaction video)\n"
                "interaction video name(\"c\")\ninteraction end video\ninteraction time(3)\nbye abs\n");
  EXPECT_EQ(files_named(run.dir, "a"), 7) << run.out;
  EXPECT_TRUE(std::filesystem::exists(run.dir / "a0007.png"));
  EXPECT_NE(run.out.find("A\n7.000000"), std::string::npos) << run.out;
  EXPECT_EQ(files_named(run.dir, "b"), 3);
  EXPECT_NE(run.out.find("B\n3.000000"), std::string::npos);
  // Ended before the loop ran: nothing recorded.
  EXPECT_EQ(files_named(run.dir, "c"), 0);
}

TEST(WindowVideo, AFailingStageEndsTheRecordingWithTheImagesDrawn) {
  REQUIRE_DRAWING();
  WindowRun run(std::string(CROSSING) +
                "func=\"boom(n){if(n==10){a=nothere(1)}}\"\ninteraction func(1,\"boom\")\n"
                "interaction video name(\"f\")\ninteraction time(50)\nprint(\"F\",interaction video)\nbye abs\n");
  EXPECT_NE(run.out.find("NON DEFINED FUNCTION"), std::string::npos) << run.out;
  EXPECT_EQ(files_named(run.dir, "f0"), 9);
  EXPECT_NE(run.out.find("F\n9.000000"), std::string::npos);
  EXPECT_GT(ball_centre(run.dir / "f0009.png"), ball_centre(run.dir / "f0008.png"));
}

// In the window, under Xvfb: Escape ends the loop and the recording with
// it, every image drawn written; the pictures are read from the back
// buffer before its swap.
TEST(WindowVideo, EscapeInTheWindowEndsTheRecordingWithEveryImageWritten) {
  REQUIRE_XVFB();
  WindowRun run(std::string("no edit\n") + CROSSING +
                    "func=\"mark(n){if(n==3){print(\\\"LOOP RUNNING\\\")}}\"\ninteraction func(1,\"mark\")\n"
                    "interaction period(25)\ninteraction video name(\"esc\")\ninteraction\n"
                    "print(\"N\",interaction video)\nbye abs\n",
                "ID", "wait_text 'LOOP RUNNING'\nsleep 0.5\nkey Escape\n");
  const int n = files_named(run.dir, "esc");
  EXPECT_GE(n, 3) << run.out;
  EXPECT_NE(run.out.find("N\n" + std::to_string(n) + ".000000"), std::string::npos) << run.out;
  // The last picture is whole and shows the ball further than the first.
  EXPECT_GT(ball_centre(run.dir / numbered("esc", n)), ball_centre(run.dir / numbered("esc", 1)));
}

TEST(WindowVideo, BadFormsAreRefusedAndChangeNothing) {
  REQUIRE_DRAWING();
  WindowRun run(std::string(CROSSING) +
                "interaction video name(\"x\") format(\"gif\")\ninteraction video format(\"png\")\n"
                "interaction video(-2) name(\"x\")\ninteraction video(4)\ninteraction time(2)\nbye abs\n");
  EXPECT_EQ(files_named(run.dir, "x"), 0) << run.out;
  size_t usages = 0;
  for (size_t at = 0; (at = run.out.find("interaction video(n) name(", at)) != std::string::npos; at++) usages++;
  EXPECT_EQ(usages, 4u) << run.out;
}

TEST(WindowVideo, WithoutFfmpegAFilmIsRefusedWithHowToGetIt) {
  REQUIRE_DRAWING();
  if (drawing_for(false, Drawing::automatic) != Drawing::offscreen) GTEST_SKIP() << "the PATH is set off-screen only";
  WindowRun run(std::string(CROSSING) + "interaction video name(\"film\") format(\"mp4\")\ninteraction time(2)\nbye abs\n",
                "ID", "", std::string("PATH=/nowhere ") + ORVELA_BINARY);
  EXPECT_NE(run.out.find("films need the ffmpeg program, which is not installed (Debian: apt-get install ffmpeg)"),
            std::string::npos)
      << run.out;
  EXPECT_FALSE(std::filesystem::exists(run.dir / "film.mp4"));
}

// Images 30 to 230 of a recording ask for no memory: the buffers, the
// compressor and the names were taken at its start.
TEST(WindowVideo, ARecordingAllocatesNothingOnceStarted) {
  REQUIRE_DRAWING();
  REQUIRE_COUNTED_ALLOCATIONS();
  std::string films = "interaction video name(\"shot\")\ninteraction period(0)\ninteraction time(240)\n";
  size_t runs = 1;
  if (have_program("ffmpeg")) {
    films += "interaction video name(\"film.mp4\")\ninteraction period(0)\ninteraction time(240)\n";
    runs++;
  }
  WindowRun run(std::string("no edit\n") + CROSSING + films + "bye abs\n", "ID", "", ORVELA_ALLOC_PROBE);
  const std::string none = "probe: images 30 to 230: 0 new, 0 blocks\n";
  size_t seen = 0;
  for (size_t at = run.out.find(none); at != std::string::npos; at = run.out.find(none, at + 1)) seen++;
  EXPECT_EQ(seen, runs) << run.out;
  EXPECT_EQ(files_named(run.dir, "shot"), 240);
  EXPECT_EQ(run.out.find('\a'), std::string::npos) << run.out;
}

int frames_of(const std::filesystem::path& film) {
  const std::string cmd = "ffprobe -v error -count_frames -select_streams v:0 -show_entries stream=nb_read_frames "
                          "-of default=nw=1:nk=1 '" + film.string() + "' > '" + film.string() + ".count'";
  if (std::system(cmd.c_str()) != 0) return -1;
  std::ifstream f(film.string() + ".count");
  int n = -1;
  f >> n;
  return n;
}

TEST(WindowVideo, AFilmHasOneFrameForEachImage) {
  REQUIRE_DRAWING();
  if (!have_program("ffmpeg") || !have_program("ffprobe")) GTEST_SKIP() << "ffmpeg is not installed";
  WindowRun run(std::string(CROSSING) + "interaction period(0)\n"
                "interaction video name(\"film\") format(\"mp4\")\ninteraction time(250)\n"
                "interaction video name(\"small.webm\")\ninteraction time(12)\nbye abs\n");
  EXPECT_EQ(frames_of(run.dir / "film.mp4"), 250) << run.out;
  EXPECT_EQ(frames_of(run.dir / "small.webm"), 12) << run.out;
  EXPECT_EQ(run.out.find('\a'), std::string::npos) << run.out;
}

// A loop with no end recording a film, ended by a signal: the film is
// closed with every image sent, and reads whole.
class FilmStopped : public ::testing::Test {
 protected:
  Program p;
  // A name of this run's own, to look for its ffmpeg among the processes.
  const std::string film = "film" + std::to_string(getpid()) + "_" +
                           ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".mp4";
  // "[f]ilm" matches the name and not the shell's own command line.
  bool ffmpeg_running() const { return std::system(("pgrep -f '[f]" + film.substr(1) + "' >/dev/null").c_str()) == 0; }
  void SetUp() override {
    if (!have_egl()) GTEST_SKIP() << "no off-screen drawing here (EGL)";
    if (!have_program("ffmpeg") || !have_program("ffprobe")) GTEST_SKIP() << "ffmpeg is not installed";
    ASSERT_TRUE(p.start_command({"env", "-u", "DISPLAY", ORVELA_BINARY, "egl", "ID"}, Program::Input::pipe));
    p.type(std::string(CROSSING) + "func=\"tick(n){if(n==20){print(\\\"TWENTY\\\")}}\"\ninteraction func(1,\"tick\")\n"
           "interaction period(0)\ninteraction video name(\"" + film + "\")\ninteraction\n");
    ASSERT_TRUE(p.wait_for("TWENTY")) << p.seen;
  }
};

TEST_F(FilmStopped, BySigterm) {
  kill(p.pid, SIGTERM);
  p.finish();
  // The film is finished and its ffmpeg gone once the program has ended.
  EXPECT_FALSE(ffmpeg_running());
  EXPECT_GE(frames_of(p.dir / film), 20) << p.seen;
}

TEST_F(FilmStopped, ByCtrlCAnswered0WhileTheLoopStartsAgain) {
  kill(p.pid, SIGINT);
  ASSERT_TRUE(p.wait_for("CONTINUE")) << p.seen;
  p.type("0\n");
  p.settle(1500);
  // The process runs on (the loop started again), the film is finished.
  EXPECT_EQ(waitpid(p.pid, nullptr, WNOHANG), 0);
  EXPECT_FALSE(ffmpeg_running());
  EXPECT_GE(frames_of(p.dir / film), 20) << p.seen;
  kill(p.pid, SIGTERM);
  p.finish();
}

}  // namespace
