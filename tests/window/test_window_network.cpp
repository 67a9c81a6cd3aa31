// The learning screen of a network (mode 298) in its window, driven by
// the menu of the right button: help, single steps, a random start, the
// console line of "interp", and "quitter".
#include <string>

#include "window/window_run.h"

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

int count_of(const std::string& text, const std::string& part) {
  int n = 0;
  for (size_t p = text.find(part); p != std::string::npos; p = text.find(part, p + 1)) n++;
  return n;
}

// The menu opens where the right button is pressed; its entries are
// about 26 pixels high: exec, menu, help, quitter, interp, centre,
// go_init, go_rand, pas a pas, vitesse, numero motif.
const char* DRIVER_HELPERS =
    "root() { w=$(window_id); xdotool mousemove --window $w 200 150 sleep 0.2 mousedown 3 sleep 0.4 "
    "mousemove --window $w 215 $((163 + 26 * $1)) sleep 0.4 mouseup 3; sleep 0.4; }\n";

bool yellow(Rgb c) { return c.r > 200 && c.g > 200 && c.b < 80; }

TEST(WindowNetwork, TheMenuStepsLearnsAndLeaves) {
  REQUIRE_XVFB();
  const std::string script =
      "network(1) fac(2,4,1) motif(0.1,0.1, 0.1,0.9, 0.9,0.1, 0.9,0.9) law(0.1,0.9,0.9,0.1)\n"
      "generate network(1) validate(1) alea(1)\n"
      "yes debug\n"
      "print(\"READY\")\n"
      "interaction network(1) validate(20,1)\n"
      "print(\"MARK0\")\n"
      "print(\"MARK1\")\n"
      "print(\"MARK2\")\n"
      "print(\"MARK3\")\n"
      "no debug\n"
      "generate network(1) validate validate\n"
      "bye abs\n";
  const std::string driver = std::string(DRIVER_HELPERS) +
                             // validate(20, 1): twenty passes at once.
                             "wait_text READY\nsleep 2\nroot 4\nwait_text MARK0 5\n"
                             "root 2\nwait_text 'quitter: Retour' 5\n"
                             // One step, then nothing more until asked.
                             "root 8\nsleep 0.5\nroot 4\nwait_text MARK1 5\nsleep 1\n"
                             "root 4\nwait_text MARK2 5\n"
                             "root 8\nsleep 0.5\nroot 4\nwait_text MARK3 5\n"
                             // A random start runs the passes free.
                             "root 7\nsleep 2\n" ORVELA_XWIN " grab ORVELA learning.bmp\n"
                             "root 3\nwait_text '1: 0.000000' 5\n";
  WindowRun run(script, "ID", driver);
  const std::string& out = run.out;
  ASSERT_TRUE(has(out, "help: Help\nquitter: Retour a l'interpreteur\ninterp: Acces a l'interpreteur\n")) << out;
  EXPECT_TRUE(has(out, "vitesse: Lire la vitesse (entre 0 et 1)\n"));
  // Single steps: one pass before MARK1 (four patterns, 12 weights: every
  // pattern above the tolerance changes 12 weights), none while waiting,
  // one more before MARK3.
  const size_t m0 = out.find("MARK0"), m1 = out.find("MARK1"), m2 = out.find("MARK2"), m3 = out.find("MARK3");
  ASSERT_NE(m0, std::string::npos) << out;
  // The run of validate(20, 1) started by itself and ended: at most 20
  // passes' worth of weight changes.
  const int free_run = count_of(out.substr(0, m0), "poids[");
  EXPECT_GT(free_run, 48);
  EXPECT_LE(free_run, 20 * 48);
  ASSERT_NE(m1, std::string::npos) << out;
  ASSERT_NE(m2, std::string::npos) << out;
  ASSERT_NE(m3, std::string::npos) << out;
  const int first = count_of(out.substr(m0, m1 - m0), "poids[");
  EXPECT_GT(first, 0) << out;
  EXPECT_EQ(first % 12, 0);
  EXPECT_LE(first, 48);
  EXPECT_EQ(count_of(out.substr(m1, m2 - m1), "poids["), 0);
  const int second = count_of(out.substr(m2, m3 - m2), "poids[");
  EXPECT_GT(second, 0);
  EXPECT_LE(second, 48);
  // The random start learned more than two passes' worth.
  EXPECT_GT(count_of(out.substr(m3), "poids["), 96);
  EXPECT_LE(count_of(out.substr(m3), "poids["), 20 * 48);
  // "quitter" went back to the console, which ran the test pass.
  EXPECT_TRUE(has(out.substr(m3), "1: 0.000000 ")) << out;
  // The picture: three columns of neurons (2, 4, 1), framed in yellow.
  Picture p = run.picture("learning.bmp");
  ASSERT_GT(p.w, 700);
  // Columns at a tenth of the width from each side and in the middle.
  const int fifth = p.w / 5;
  EXPECT_GT(p.count(0, 0, fifth, p.h, yellow), 2 * 25);
  EXPECT_GT(p.count(p.w / 2 - 20, 0, p.w / 2 + 20, p.h, yellow), 4 * 25);
  EXPECT_GT(p.count(p.w - fifth, 0, p.w, p.h, yellow), 25);
  // Lines between them: grey pixels away from the neurons.
  EXPECT_GT(p.count(fifth, 0, p.w / 2 - 20, p.h, [](Rgb c) { return c.r > 60 && c.r == c.g && c.g == c.b; }), 50);
}

}  // namespace
