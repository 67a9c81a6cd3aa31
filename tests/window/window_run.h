// Window tests: a script run by the real executable, which writes pictures
// of its window; the pictures are read back as pixels. A run with keys or
// the mouse (a driver) has a real window under xvfb-run; one without draws
// off-screen (the `egl` option, no X server), unless ORVELA_WINDOW=xvfb
// asks for the window everywhere. The two draw the same pixels
// (test_window_egl.cpp).
#pragma once
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

struct Rgb {
  int r, g, b;
};

// A 24-bit bitmap as the writer makes it: rows with no padding, the
// first row at the bottom. at() counts y from the top.
struct Picture {
  int w = 0, h = 0;
  std::vector<uint8_t> px;  // B, G, R
  bool load(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::vector<uint8_t> d((std::istreambuf_iterator<char>(f)), {});
    if (d.size() < 54 || d[0] != 'B' || d[1] != 'M') return false;
    auto le32 = [&](size_t at) { return d[at] | d[at + 1] << 8 | d[at + 2] << 16 | d[at + 3] << 24; };
    w = le32(18);
    h = le32(22);
    if (w <= 0 || h <= 0 || d.size() < 54 + static_cast<size_t>(w) * h * 3) return false;
    px.assign(d.begin() + 54, d.end());
    return true;
  }
  Rgb at(int x, int y) const {
    const size_t i = (static_cast<size_t>(h - 1 - y) * w + x) * 3;
    return {px[i + 2], px[i + 1], px[i]};
  }
  template <class F>
  int count(int x0, int y0, int x1, int y1, F&& pred) const {
    int n = 0;
    for (int y = y0; y < y1; y++)
      for (int x = x0; x < x1; x++) n += pred(at(x, y)) ? 1 : 0;
    return n;
  }
  template <class F>
  int count(F&& pred) const { return count(0, 0, w, h, pred); }
};

inline bool background(Rgb c) { return c.r < 20 && c.g < 20 && c.b > 170; }
inline bool reddish(Rgb c) { return c.r > 120 && c.g < 60 && c.b < 60; }
inline int luminance(Rgb c) { return c.r + c.g + c.b; }

inline bool have_xvfb() { return std::system("command -v xvfb-run >/dev/null 2>&1") == 0; }

// Whether the program can draw off-screen here (EGL on Mesa's surfaceless
// platform): asked once of the program itself.
inline bool have_egl() {
  static const int known = [] {
    const std::string cmd = "echo 'bye abs' | env -u DISPLAY " ORVELA_BINARY
                            " egl ID 2>&1 | grep -q 'no off-screen drawing'";
    return std::system(cmd.c_str()) == 0 ? 0 : 1;
  }();
  return known == 1;
}

enum class Drawing { automatic, window, offscreen };

// Where a run draws: a run with a driver needs the window; one without
// draws off-screen, or in the window where EGL is missing.
inline Drawing drawing_for(bool driven, Drawing asked) {
  if (asked != Drawing::automatic) return asked;
  const char* forced = std::getenv("ORVELA_WINDOW");
  if (driven || (forced && std::string(forced) == "xvfb")) return Drawing::window;
  return have_egl() || !have_xvfb() ? Drawing::offscreen : Drawing::window;
}
// Runs `script` (which should end in `bye abs`) in a fresh folder, and
// loads the pictures it was to write, by name. The console output is kept
// for messages in failures. A `driver`, when given, is a bash script run
// beside the program under the same display, with the helpers of
// tests/window/drive.sh (wait_text, key, type_text, click, drag).
struct WindowRun {
  std::string out;
  std::filesystem::path dir;
  bool ran = false;
  // `options` go on the command line.
  // `binary` is the program to run, orvela by default.
  explicit WindowRun(const std::string& script, const std::string& options = "", const std::string& driver = "",
                     const std::string& binary = ORVELA_BINARY, Drawing drawing = Drawing::automatic) {
    static int runs = 0;
    runs++;
    dir = std::filesystem::temp_directory_path() /
          ("orvela_win_" + std::to_string(getpid()) + "_" + std::to_string(runs));
    std::filesystem::create_directories(dir);
    std::ofstream(dir / "script.orv") << script;
    // A server number of our own: parallel tests do not race for one.
    const int server = 100 + (getpid() * 16 + runs) % 4000;
    std::string program = binary + " " + options + " < script.orv > out.txt 2>&1";
    if (!driver.empty()) {
      std::ofstream(dir / "driver.sh") << "source " ORVELA_SOURCE_DIR "/tests/window/drive.sh\n" << driver;
      std::ofstream(dir / "both.sh") << program << " & pid=$!\nbash driver.sh\n"
                                     << "for i in $(seq 100); do kill -0 $pid 2>/dev/null || break; sleep 0.1; done\n"
                                     << "kill $pid 2>/dev/null\nwait $pid\n";
      program = "bash both.sh";
    }
    std::string cmd = "cd '" + dir.string() + "' && timeout 90 xvfb-run -a -n " + std::to_string(server) +
                      " -s '-screen 0 1024x768x24' " + program;
    if (drawing_for(!driver.empty(), drawing) == Drawing::offscreen)
      cmd = "cd '" + dir.string() + "' && timeout 90 env -u DISPLAY " + binary + " egl " + options +
            " < script.orv > out.txt 2>&1";
    ran = std::system(cmd.c_str()) == 0;
    std::ifstream f(dir / "out.txt");
    out.assign(std::istreambuf_iterator<char>(f), {});
  }
  ~WindowRun() { std::filesystem::remove_all(dir); }
  Picture picture(const std::string& name) const {
    Picture p;
    EXPECT_TRUE(p.load((dir / name).string())) << name << " not written; output:\n" << out;
    return p;
  }
};

#define REQUIRE_XVFB() \
  if (!have_xvfb()) GTEST_SKIP() << "xvfb-run is not installed: window tests need it (apt-get install xvfb)"

// A run without keys or mouse: off-screen, or in the window when
// ORVELA_WINDOW=xvfb or EGL is missing.
#define REQUIRE_DRAWING()                                                                            \
  if (drawing_for(false, Drawing::automatic) == Drawing::window) {                                   \
    REQUIRE_XVFB();                                                                                  \
  } else if (!have_egl())                                                                            \
  GTEST_SKIP() << "no off-screen drawing here: it needs EGL (apt-get install libegl1 libegl-mesa0)"

// The probe counts the program's own allocations: the sanitizer build has
// allocators of its own and gives every block back, so there is nothing to
// count there.
#if defined(__SANITIZE_ADDRESS__)
#define REQUIRE_COUNTED_ALLOCATIONS() \
  GTEST_SKIP() << "the sanitizer build has its own allocators and gives every block back: nothing to count"
#else
#define REQUIRE_COUNTED_ALLOCATIONS() (void)0
#endif
