// Live coding in the window: the loop runs while a watched function file
// is written again three times, once with a mistake. Each good version
// moves the cube to its own place from the image that reloads it; the bad
// one leaves the previous version moving it.
#include <sstream>

#include "window/window_run.h"

namespace {

// The console's lines that tell the versions: "reload ..." and
// "... previous version runs", "STEP Vk" from F1, and "POS x" from slot 5
// (the cube's x after the display).
struct Event {
  char kind;  // 'r' reload, 'b' bad, 's' step, 'p' position
  int value;
};

std::vector<Event> events(const std::string& out) {
  std::vector<Event> ev;
  std::istringstream in(out);
  std::string line;
  bool pos = false;
  while (std::getline(in, line)) {
    if (pos) {
      ev.push_back({'p', static_cast<int>(std::stof(line))});
      pos = false;
    } else if (line.rfind("reload ", 0) == 0) {
      ev.push_back({line.find("previous version runs") != std::string::npos ? 'b' : 'r', 0});
    } else if (line.rfind("STEP V", 0) == 0) {
      ev.push_back({'s', std::stoi(line.substr(6))});
    } else if (line.rfind("POS", 0) == 0) {
      pos = true;
    }
  }
  return ev;
}

const char* VERSION =
    "step(n){c = CG vol(1); tran(%d - c[0], 0, 0) vol(1); print(\\\"STEP V%d\\\")%s\\n";

std::string version(int k, bool good) {
  char b[256];
  std::snprintf(b, sizeof b, VERSION, 100 * k, k, good ? "}" : "");
  return b;
}

}  // namespace

TEST(WindowReload, EachGoodVersionTakesEffectAtOnceAndABadOneLeavesThePreviousRunning) {
  REQUIRE_XVFB();
  const std::string script =
      "no edit\ncube(1) dim(40)\ncol vol(1)=1,0,0\nyes illum\neye(0,0,-1000)\n"
      "func=\"step(n){c = CG vol(1); tran(100 - c[0], 0, 0) vol(1); print(\\\"STEP V1\\\")}\"\n"
      "write func(\"step\") name(\"move.func\")\nread func(\"move.func\")\nyes reload\n"
      "func=\"pos(n){c = CG vol(1); print(\\\"POS \\\"); print(c[0])}\"\n"
      "interaction func(1,\"step\")\ninteraction func(5,\"pos\")\ninteraction period(25)\ninteraction\n"
      "print(\"BACK\")\nCG vol(1)\nbye abs\n";
  // The editor's two ways: a new file renamed over the old, and the file
  // written again in place.
  const std::string driver = "wait_text 'STEP V1'\nsleep 0.3\n"
                             "printf '" + version(2, true) + "' > move.tmp && mv move.tmp move.func\n"
                             "wait_text 'STEP V2'\nsleep 0.3\n"
                             "printf '" + version(3, false) + "' > move.func\n"
                             "wait_text 'previous version runs'\nsleep 0.5\n"
                             "printf '" + version(4, true) + "' > move.func\n"
                             "wait_text 'STEP V4'\nsleep 0.3\nkey Escape\n";
  WindowRun run(script, "ID", driver);
  ASSERT_NE(run.out.find("BACK"), std::string::npos) << run.out;
  const std::vector<Event> ev = events(run.out);
  // Each reload is followed, within the same image, by the new version's
  // step, and the next position is the new place; between the bad file and
  // the next good one, version 2 keeps running at 200.
  int reloads = 0, bad = 0;
  for (size_t i = 0; i < ev.size(); i++) {
    if (ev[i].kind == 'b') {
      bad++;
      ASSERT_LT(i + 2, ev.size());
      EXPECT_EQ(ev[i + 1].kind, 's');
      EXPECT_EQ(ev[i + 1].value, 2) << run.out;
      EXPECT_EQ(ev[i + 2].value, 200) << run.out;
    }
    if (ev[i].kind != 'r') continue;
    reloads++;
    const int expected = reloads == 1 ? 2 : 4;
    ASSERT_LT(i + 2, ev.size()) << run.out;
    EXPECT_EQ(ev[i + 1].kind, 's');
    EXPECT_EQ(ev[i + 1].value, expected) << run.out;
    EXPECT_EQ(ev[i + 2].kind, 'p');
    EXPECT_EQ(ev[i + 2].value, 100 * expected) << run.out;
  }
  EXPECT_EQ(reloads, 2) << run.out;
  EXPECT_EQ(bad, 1) << run.out;
  // Before the first reload every step is version 1 at 100; the cube ends
  // where version 4 put it.
  EXPECT_NE(run.out.find("STEP V1\nPOS \n100.000000"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("BACK\n ?1: 400.000000 0.000000 0.000000"), std::string::npos) << run.out;
}
