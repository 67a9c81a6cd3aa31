// The keyboard of the window, driven by its callback: the line typed, the
// keys that edit it, Return, the keys that end or pause the loop, and the
// `ascii` bindings that exec_INTERACTION runs.
#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/kernel.h"
#include "scene/scene_fixture.h"

namespace {

class Keyboard : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    InteractionState& L = loop();
    efface_ligne();
    L.Ligne_validee[0] = 0;
    L.voir = 0;
    L.menus = 1;
    L.Car_prompt = '<';
    L.liaisons.clear();
    kernel().Mode_idle = 0;
  }
  void TearDown() override {
    loop().liaisons.clear();
    kernel().Mode_idle = 0;
    SceneTest::TearDown();
  }
  static void type(const std::string& keys) {
    for (unsigned char c : keys) touche(c, 0, 0);
  }
  static std::string line() { return loop().Ligne_clavier; }
};

TEST_F(Keyboard, KeysMakeALineThatReturnValidates) {
  type("abc");
  EXPECT_EQ(line(), "abc");
  type("\b");
  EXPECT_EQ(line(), "ab");
  type("x&");
  EXPECT_EQ(line(), "") << "& clears the line";
  type("y>");
  EXPECT_EQ(line(), "") << "> too";
  type("ok!<\r");
  EXPECT_STREQ(loop().Ligne_validee, "ok") << "! and < only open an empty line";
  EXPECT_EQ(line(), "");
}

TEST_F(Keyboard, ALineOpenedByABangRunsAsACommand) {
  Capture out;
  type("!print(\"from the window\")\r");
  EXPECT_NE(out.take().find("from the window"), std::string::npos);
  EXPECT_EQ(line(), "");
  EXPECT_STREQ(loop().Ligne_validee, "");
}

TEST_F(Keyboard, TheLineHoldsAtMost128Characters) {
  Capture out;
  type(std::string(128, 'a'));
  EXPECT_EQ(line().size(), 128u);
  type("b");
  EXPECT_EQ(line(), "") << "the 129th clears it";
  EXPECT_NE(out.take().find("OVERFLOW"), std::string::npos);
}

TEST_F(Keyboard, BracketsPauseAndResumeALoopAndEscapeEndsIt) {
  KernelState& k = kernel();
  k.Mode_idle = KW_mouse;
  type("[");
  EXPECT_EQ(k.Mode_idle, -KW_mouse);
  type("]");
  EXPECT_EQ(k.Mode_idle, KW_mouse);
  loop().menus = 0;
  type("\x1b");
  EXPECT_EQ(k.Mode_idle, KW_mouse) << "Escape does nothing with the menus off";
  loop().menus = 1;
  type("\x1b");
  EXPECT_EQ(k.Mode_idle, 0);
  k.Mode_idle = 0;
  type("[");
  EXPECT_EQ(k.Mode_idle, 0) << "nothing to pause";
}

TEST_F(Keyboard, ABindingRunsItsFunctionOnTheLinesFirstCharacter) {
  ok("hits=0");
  ok("func=\"hit(n){extern hits; hits=hits+1}\"");
  Liaison b;
  b.car = 'h';
  b.kind = KW_func;
  b.function = fonction_nommee("hit");
  ASSERT_NE(b.function, 0);
  loop().liaisons.push_back(b);
  type("h");
  ASSERT_EQ(exec_INTERACTION(), 0);
  EXPECT_EQ(one("hits"), 1.0f);
  EXPECT_EQ(line(), "") << "the line is taken";
  type("<h");
  ASSERT_EQ(exec_INTERACTION(), 0);
  EXPECT_EQ(one("hits"), 1.0f) << "a line opened by the prompt is being typed";
  EXPECT_EQ(line(), "<h");
}

TEST_F(Keyboard, TheConsoleViewOpensACommandLineWithAKey) {
  loop().voir = 1;
  type("p");
  EXPECT_EQ(line(), "!p");
  type("rint(7)");
  Capture out;
  type("\r");
  EXPECT_NE(out.take().find("7.000000"), std::string::npos);
}

TEST_F(Keyboard, AKeyTypedInsideTheCaptureRectangleIsKeptForIt) {
  InteractionState& L = loop();
  L.capture_on = 1;
  const float r[4] = {10, 10, -10, -10};  // corners in any order
  for (int i = 0; i < 4; i++) L.capture[i] = r[i];
  L.touche_capturee = 0;
  L.survol[0] = 0;
  L.survol[1] = 5;
  type("k");
  EXPECT_EQ(L.touche_capturee, 'k');
  L.survol[0] = 10;  // on the edge: outside
  type("m");
  EXPECT_EQ(L.touche_capturee, 'k');
  L.capture_on = 0;
  L.survol[0] = 0;
  type("n");
  EXPECT_EQ(L.touche_capturee, 'k') << "no rectangle, no capture";
  EXPECT_EQ(line(), "kmn") << "a captured key still goes to the line";
}

int stock_vu = -1;
int stock_joue(word entry) {
  stock_vu = static_cast<int>(entry);
  return 0;
}

TEST_F(Keyboard, AStockBindingHandsItsEntryToTheStockTool) {
  Liaison b;
  b.car = 's';
  b.kind = KW_stock;
  b.stock = 4;
  loop().liaisons.push_back(b);
  loop().stock_touche = stock_joue;
  stock_vu = -1;
  type("s");
  ASSERT_EQ(exec_INTERACTION(), 0);
  EXPECT_EQ(stock_vu, 4);
  EXPECT_EQ(line(), "") << "the line is taken";
  loop().stock_touche = nullptr;
}

TEST_F(Keyboard, KeyboardInputPutsTheCallersTextBeforeTheLineOrTheScaleField) {
  BoiteSaisie b;
  std::string lu;
  ASSERT_EQ(KEYBOARD_INPUT("name: ", b, false, lu), 0);
  EXPECT_EQ(lu, "name: ") << "without a window nothing can be typed";
  Capture out;
  EXPECT_LT(KEYBOARD_INPUT("name: ", b, true, lu), 0);
  EXPECT_NE(out.take().find("NOT IMPLEMENTED"), std::string::npos) << "no scales' tool";
  loop().echelle_saisie = [](const float poi[2], std::string& t) {
    t = poi[0] == 12 ? "typed" : "wrong place";
    return 0;
  };
  b.poi[0] = 12;
  ASSERT_EQ(KEYBOARD_INPUT("name: ", b, true, lu), 0);
  EXPECT_EQ(lu, "name: typed");
  loop().echelle_saisie = nullptr;
}

}  // namespace
