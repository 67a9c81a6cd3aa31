// Ctrl-C at the console of the real program, through a pseudo-terminal: at
// the prompt it abandons the line being typed or searched and runs
// nothing; while a line runs it holds the CONTINUE dialogue, where "1"
// goes on and "0" abandons to a fresh prompt.
#include <gtest/gtest.h>

#include "support/program.h"

TEST(InterruptDialogue, CtrlCWhileRunningAsksWhetherToContinue) {
  Program s;
  ASSERT_TRUE(s.start_at_prompt()) << s.seen;
  // A running endless loop stops at its next turn; "1" lets it go on.
  s.type("k=7; while(1){}\r");
  s.settle(200);
  const std::string question = "CONTINUE (no:0, yes:1, command:2) ?";
  ASSERT_TRUE(s.exchange("\x03", question)) << s.seen;
  ASSERT_TRUE(s.exchange("1\r", "CONTINUE")) << s.seen;
  ASSERT_TRUE(s.exchange("\x03", question)) << s.seen;
  ASSERT_TRUE(s.exchange("0\r", "ABANDONMENT", true)) << s.seen;
  // The session goes on.
  ASSERT_TRUE(s.exchange("k+1\r", "8.000000", true)) << s.seen;
  ASSERT_TRUE(s.exchange("\x04", "SEE YOU SOON!...")) << s.seen;
  EXPECT_EQ(s.exit_code(), 0);
}

TEST(InterruptDialogue, CtrlCAtThePromptAbandonsTheLineAndRunsNothing) {
  Program s;
  ASSERT_TRUE(s.start_at_prompt()) << s.seen;
  ASSERT_TRUE(s.exchange("6*7\r", "42.000000", true)) << s.seen;
  // Typing, then Ctrl-C, then Return: the line typed does not run.
  size_t mark = s.seen.size();
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
  ASSERT_TRUE(s.exchange("2+3\r", "5.000000", true)) << s.seen;
  s.type("bye abs\r");
  EXPECT_EQ(s.exit_code(), 0);
}
