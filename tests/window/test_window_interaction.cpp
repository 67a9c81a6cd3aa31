// The loop driven in its window with xdotool: the keys that end it, a
// command typed in the window, the menu of the right button, a volume
// dragged in "tran" mode, a key binding, the CONTINUE/X panel.
#include <cstdio>

#include "window/window_run.h"

namespace {

// A scene whose loop says when it runs (at image 3), then waits for the
// driver; what follows the loop is read after it stops.
std::string scene(const std::string& before, const std::string& after) {
  return "no edit\n" + before +
         "func=\"mark(n){if(n==3){print(\\\"LOOP RUNNING\\\")}}\"\n"
         "interaction func(1,\"mark\")\ninteraction period(25)\ninteraction\nprint(\"BACK\")\n" +
         after + "bye abs\n";
}

bool has(const std::string& out, const std::string& text) { return out.find(text) != std::string::npos; }

TEST(WindowInteraction, EscapeAndLeftBracketEndTheLoop) {
  REQUIRE_XVFB();
  for (const char* k : {"Escape", "bracketleft"}) {
    WindowRun run(scene("", ""), "ID", std::string("wait_text 'LOOP RUNNING'\nkey ") + k + "\n");
    EXPECT_TRUE(has(run.out, "BACK")) << k << "\n" << run.out;
  }
}

TEST(WindowInteraction, ALineOpenedByABangRunsAsACommand) {
  REQUIRE_XVFB();
  WindowRun run(scene("", ""), "ID",
                "wait_text 'LOOP RUNNING'\ntype_text '!print(\"typed in the window\")'\nkey Return\n"
                "wait_text 'typed in the window'\nkey Escape\n");
  EXPECT_TRUE(has(run.out, "typed in the window\n")) << run.out;
  EXPECT_TRUE(has(run.out, "BACK"));
}

TEST(WindowInteraction, TheMenuEntryQuitterGoesBackToTheInterpreter) {
  REQUIRE_XVFB();
  // The right button opens the menu at the pointer; released on its first
  // entry, it selects "quitter".
  WindowRun run(scene("", ""), "ID",
                "wait_text 'LOOP RUNNING'\nw=$(window_id)\nxdotool mousemove --window $w 200 200 sleep 0.2 "
                "mousedown 3 sleep 0.5 mousemove --window $w 215 208 sleep 0.3 mouseup 3\n"
                "wait_text 'interaction -> interpreter' 5 || key Escape\n");
  EXPECT_TRUE(has(run.out, "interaction -> interpreter\n")) << run.out;
  EXPECT_TRUE(has(run.out, "BACK"));
}

TEST(WindowInteraction, ALeftDragInTranModeMovesTheVolumeUnderThePointer) {
  REQUIRE_XVFB();
  WindowRun run(scene("cube(1) dim(50)\ncol vol(1)=1,0,0\nyes illum\neye(0,0,-1000)\ninteraction interaction(\"tran\")\n",
                      "screen\ndispl\nwrite image name(\"moved.bmp\")\n"),
                "ID", "wait_text 'LOOP RUNNING'\ndrag 384 288 504 218\nsleep 0.3\nkey Escape\n");
  Picture p = run.picture("moved.bmp");
  // The cube's face, about 70 pixels wide, went from the middle to where the
  // pointer was released.
  EXPECT_EQ(p.count(354, 258, 414, 318, reddish), 0) << run.out;
  EXPECT_GT(p.count(484, 198, 524, 238, reddish), 1500);
}

TEST(WindowInteraction, AKeyBoundByAsciiRunsItsFunction) {
  REQUIRE_XVFB();
  WindowRun run(scene("func=\"bound(n){print(\\\"BOUND \\\",n>3)}\"\ninteraction ascii(\"a\") func(\"bound\")\n", ""),
                "ID", "wait_text 'LOOP RUNNING'\nkey a\nwait_text BOUND 5\nkey Escape\n");
  EXPECT_TRUE(has(run.out, "BOUND \n1.000000")) << run.out;
  EXPECT_TRUE(has(run.out, "BACK"));
}

TEST(WindowInteraction, TheContinuePanelAdvancesOneImageAClickAndXEndsIt) {
  REQUIRE_XVFB();
  // While the panel holds the images slot 5 does not run; each click on
  // CONTINUE gives one image that advances. X takes the panel away and the
  // images run on. The panel sits at (20, 20) from the top left corner:
  // CONTINUE is 72 pixels wide, then X.
  WindowRun run(
      "no edit\nfunc=\"adv(n){print(\\\"ADVANCE\\\")}\"\nfunc=\"shown(n){if(n==3){print(\\\"SHOWN\\\")}}\"\n"
      "interaction func(5,\"adv\")\ninteraction func(3,\"shown\")\ninteraction period(25)\ninteraction mouse\n"
      "interaction format(\"ORVELA 0.1 for\")\nprint(\"BACK\")\ninteraction mouse validate\nbye abs\n",
      "ID",
      "wait_text SHOWN\nsleep 0.5\nclick 50 30\nsleep 0.5\nclick 50 30\nsleep 0.5\n"
      "type_text '!print(\"MARK\")'\nkey Return\nwait_text MARK\nclick 100 30\nsleep 0.5\nkey Escape\n");
  const size_t mark = run.out.find("MARK\n");
  ASSERT_NE(mark, std::string::npos) << run.out;
  auto count = [&](size_t from, size_t to) {
    int n = 0;
    for (size_t p = run.out.find("ADVANCE", from); p < to; p = run.out.find("ADVANCE", p + 1)) n++;
    return n;
  };
  EXPECT_EQ(count(0, mark), 2) << run.out;
  EXPECT_GT(count(mark, run.out.size()), 3) << run.out;
  EXPECT_TRUE(has(run.out, "BACK\n ?0.000000")) << "X switched the panel off";
}

TEST(WindowInteraction, MouseFactorsOfATransformationReadThePointer) {
  REQUIRE_XVFB();
  // The pointer 100 pixels right of the centre and 50 up: mouse(2) scales
  // tran(1,1,0) to (100,50,0); mouse(0) wants a button held and does
  // nothing; out of the frame nothing either.
  WindowRun run(scene("cube(1) dim(50)\n", "CG matrix vol(1)\n"), "ID",
                "wait_text 'LOOP RUNNING'\nxdotool mousemove --window $(window_id) 484 238\nsleep 0.3\n"
                "type_text '!tran(1,1,0) mouse(2) matrix vol(1)'\nkey Return\n"
                "type_text '!tran(1,1,0) mouse(0) matrix vol(1)'\nkey Return\n"
                "type_text '!tran(1,1,0) mouse(2) frame(-50,-50,50,50) matrix vol(1)'\nkey Return\n"
                "sleep 0.3\nkey Escape\n");
  EXPECT_TRUE(has(run.out, "BACK\n ?1: 100.000000 50.000000 0.000000")) << run.out;
}

TEST(WindowInteraction, ALineIsAskedForInABoxOfTheWindow) {
  REQUIRE_XVFB();
  // `interaction ascii poi(...) rectangle(...) frame(...) col(...)` waits
  // for a line typed in the window and answers it.
  WindowRun run("no edit\nprint(\"TYPE\")\nx=interaction ascii poi(-100,0) rectangle(0,0,0) frame(1,1,1) col(1,1,0)\n"
                "print(\"got \",x)\nbye abs\n",
                "ID", "wait_text TYPE\nsleep 0.5\ntype_text 'hello'\nkey BackSpace\ntype_text 'p'\nkey Return\n");
  EXPECT_TRUE(has(run.out, "got hellp")) << run.out;
}

TEST(WindowInteraction, KeysRecordedAreReplayedAtTheirImages) {
  REQUIRE_XVFB();
  // While recording, the key "a" (bound to a function that prints the
  // image) is typed; STOP, under the gauge, writes the record. Replayed in
  // a second run, the key comes again at the same image of the record.
  WindowRun run(
      scene("func=\"bound(n){print(\\\"BOUND \\\",n)}\"\ninteraction ascii(\"a\") func(\"bound\")\n"
            "interaction ascii write(\"keys.rec\")\n",
            "print(\"REPLAY\")\ninteraction ascii read(\"keys.rec\")\ninteraction func(1,\"mark\")\n"
            "interaction period(0)\ninteraction time(60)\n"),
      "ID", "wait_text 'LOOP RUNNING'\nsleep 0.4\nkey a\nwait_text BOUND 5\nclick 200 313\nwait_text 'gare stocker' 5\nkey Escape\n");
  EXPECT_TRUE(has(run.out, "gare stocker keys.rec\n")) << run.out;
  const size_t first = run.out.find("BOUND \n"), replay = run.out.find("REPLAY");
  ASSERT_NE(first, std::string::npos) << run.out;
  ASSERT_NE(replay, std::string::npos) << run.out;
  const size_t again = run.out.find("BOUND \n", replay);
  ASSERT_NE(again, std::string::npos) << run.out;
  float n1 = 0, n2 = 0;
  std::sscanf(run.out.c_str() + first + 7, "%f", &n1);
  std::sscanf(run.out.c_str() + again + 7, "%f", &n2);
  EXPECT_GT(n1, 3.0f);
  EXPECT_EQ(n1, n2) << "the image numbers of the record and of the replay start together";
}

}  // namespace
