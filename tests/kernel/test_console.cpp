// The console loop: prompt, escape-number repeat, history, line runner.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kernel/console.h"
#include "kernel/report.h"
#include "support/capture.h"

namespace {

std::vector<std::string> ran;
int record_line(std::string& braced, int, word*) {
  ran.push_back(braced);
  return 7;
}

}  // namespace

class Console : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    kernel().esc = 27;
    ConsoleState& c = console();
    c.repeat = 0;
    c.stop = 0;
    c.runner = record_line;
    ran.clear();
  }
  void TearDown() override {
    in_from_string(nullptr);
    console().runner = nullptr;
  }
  void type(const std::string& text) {
    input = text;
    in_from_string(&input);
  }
  std::string input;
  Capture out;
};

TEST_F(Console, ALineIsBracedAndRunAfterThePrompt) {
  type("  a = 1\n");
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 7);
  ASSERT_EQ(ran.size(), 1u);
  EXPECT_EQ(ran[0], "{a = 1\n}");
  EXPECT_EQ(out.take(), " ?");
}

TEST_F(Console, EmptyLinesPromptAgainWithoutRunning) {
  type("\n\t\nx\n");
  lire_executer(1, 0, nullptr, 0);
  ASSERT_EQ(ran.size(), 1u);
  EXPECT_EQ(out.take(), " ? ? ?");
}

TEST_F(Console, AMessageNumberReplacesThePrompt) {
  type("x\n");
  lire_executer(1, 79, nullptr, 0);
  EXPECT_EQ(out.take(), " DEBUG>");
}

TEST_F(Console, EscapeDigitMakesTheFollowingCallsReturnAtOnce) {
  type("\0333\nnext\n");
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 1);
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 1);
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 1);
  EXPECT_TRUE(ran.empty());
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 7);
  ASSERT_EQ(ran.size(), 1u);
  EXPECT_EQ(ran[0], "{next\n}");
  // Two prompts: the escape line's and the last call's.
  EXPECT_EQ(out.take(), " ? ?");
}

TEST_F(Console, EscapeAloneRunsNothingAndRepeatsNothing) {
  type("\033\nz\n");
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 1);
  EXPECT_EQ(lire_executer(1, 0, nullptr, 0), 7);
  EXPECT_EQ(ran.size(), 1u);
}

TEST_F(Console, WithoutStopAfterOneTheLoopGoesOnUntilStopped) {
  type("a\nb\nc\n");
  console().runner = [](std::string& l, int, word*) {
    ran.push_back(l);
    if (ran.size() == 2) console().stop = 1;
    return 0;
  };
  lire_executer(1, 0, nullptr, 1);
  EXPECT_EQ(ran.size(), 2u);
}

TEST_F(Console, HistoryKeepsDistinctLinesAndSkipsItsOwnCommands) {
  int before = history_count();
  std::string unique = "h" + std::to_string(before) + "_line";
  EXPECT_EQ(history_record(unique), 0);
  EXPECT_EQ(history_record(unique), 0);
  EXPECT_EQ(history_record("history"), 0);
  EXPECT_EQ(history_record("history(3)"), 0);
  EXPECT_EQ(history_record("exec 4"), 0);
  EXPECT_EQ(history_record("exec4"), 0);
  ASSERT_EQ(history_count(), before + 1);
  EXPECT_EQ(history_line(before), unique);
  // `exec` with a name, and a word that only begins with "history", are kept.
  history_record("exec f()");
  history_record("historyx");
  EXPECT_EQ(history_count(), before + 3);
  EXPECT_EQ(history_line(before + 2), "historyx");
  Yes(KW_history) = 0;
  history_record("not kept");
  EXPECT_EQ(history_count(), before + 3);
}

TEST_F(Console, HistoryEntriesOfEveryLengthReadBack) {
  int before = history_count();
  std::string s;
  for (int len = 1; len <= 9; len++) {
    s = std::string(static_cast<size_t>(len), static_cast<char>('a' + len)) + std::to_string(before);
    history_record(s);
  }
  ASSERT_EQ(history_count(), before + 9);
  EXPECT_EQ(history_line(before + 8), s);
  EXPECT_EQ(history_line(before + 3), std::string(4, 'e') + std::to_string(before));
}
