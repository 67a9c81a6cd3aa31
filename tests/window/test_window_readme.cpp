// The README's examples as a newcomer sees them in the window: a profile
// turned by `rev` must face outwards, lit, not black.
#include <fstream>
#include <string>

#include "window/window_run.h"

namespace {

// The README line typed after the prompt that starts with `start`.
std::string readme_line(const std::string& start) {
  std::ifstream f(ORVELA_SOURCE_DIR "/README.md");
  for (std::string line; std::getline(f, line);) {
    const size_t at = line.find("? " + start);
    if (at != std::string::npos && line.find_first_not_of(' ') == at) return line.substr(at + 2);
  }
  return "";
}

TEST(WindowReadme, TheRevExampleFacesOutwards) {
  REQUIRE_DRAWING();
  const std::string rev = readme_line("rev(3)");
  ASSERT_FALSE(rev.empty()) << "no rev example in the README";
  WindowRun run("yes illum\n" + rev + "\ncol vol(3)=1,0.5,0\ndila(4) vol(3)\nscreen\ndispl\n" +
                "write image name(\"rev.bmp\")\nbye abs\n");
  Picture p = run.picture("rev.bmp");
  // The middle of the turned profile is lit orange: its facets face the
  // eye and the light; turned inwards they would be drawn black.
  auto orange = [](Rgb c) { return c.r > 120 && c.g > 40 && c.b < 60; };
  EXPECT_GT(p.count(344, 248, 424, 328, orange), 3000) << run.out;
}

}  // namespace
