// Ctrl-C at the console of the real program, through a pseudo-terminal: at
// the prompt it abandons the line being typed or searched and runs
// nothing; while a line runs it holds the CONTINUE dialogue, where "1"
// goes on and "0" abandons to a fresh prompt.
#include <gtest/gtest.h>

#include "support/program.h"

TEST(InterruptDialogue, CtrlCWhileRunningAsksWhetherToContinue) {
  Program s;
  ASSERT_TRUE(s.start(Program::Input::terminal));
  ASSERT_TRUE(s.wait_for(" ?")) << s.seen;
  // A running endless loop stops at its next turn; "1" lets it go on.
  size_t mark = s.seen.size();
  s.type("k=7; while(1){}\r");
  s.settle(200);
  s.type("\x03");
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark)) << s.seen;
  mark = s.seen.size();
  s.type("1\r");
  ASSERT_TRUE(s.wait_for("CONTINUE", mark)) << s.seen;
  mark = s.seen.size();
  s.type("\x03");
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark)) << s.seen;
  mark = s.seen.size();
  s.type("0\r");
  ASSERT_TRUE(s.wait_for("ABANDONMENT", mark)) << s.seen;
  ASSERT_TRUE(s.wait_for(" ?", s.seen.find("ABANDONMENT", mark))) << s.seen;
  // The session goes on.
  mark = s.seen.size();
  s.type("k+1\r");
  ASSERT_TRUE(s.wait_for("8.000000", mark)) << s.seen;
  mark = s.seen.size();
  s.type("\x04");
  ASSERT_TRUE(s.wait_for("SEE YOU SOON!...", mark)) << s.seen;
  int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(InterruptDialogue, CtrlCAtThePromptAbandonsTheLineAndRunsNothing) {
  Program s;
  ASSERT_TRUE(s.start(Program::Input::terminal));
  ASSERT_TRUE(s.wait_for(" ?")) << s.seen;
  size_t mark = s.seen.size();
  s.type("6*7\r");
  ASSERT_TRUE(s.wait_for("42.000000", mark)) << s.seen;
  // Typing, then Ctrl-C, then Return: the line typed does not run.
  mark = s.seen.size();
  s.type("1+99");
  s.settle(100);
  s.type("\x03");
  s.settle(100);
  s.type("\r");
  s.settle(200);
  EXPECT_EQ(s.seen.find("100.000000", mark), std::string::npos) << s.seen;
  EXPECT_EQ(s.seen.find("CONTINUE", mark), std::string::npos) << s.seen;
  // A history search that found the earlier line, then Ctrl-C, then
  // Return: nothing runs either.
  mark = s.seen.size();
  s.type("\x12");
  s.settle(100);
  s.type("6*");
  s.settle(100);
  s.type("\x03");
  s.settle(100);
  s.type("\r");
  s.settle(200);
  EXPECT_EQ(s.seen.find("42.000000", mark), std::string::npos) << s.seen;
  // The prompt takes the next line as usual.
  mark = s.seen.size();
  s.type("2+3\r");
  ASSERT_TRUE(s.wait_for("5.000000", mark)) << s.seen;
  s.type("bye abs\r");
  int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}
