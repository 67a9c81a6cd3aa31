// The end of the console's input, and its history, with the real program:
// Ctrl-D at a terminal asks the questions of `bye`, and staying goes back
// to the prompt; the end of a pipe ends the run at once. Lines that ran
// are kept in a bounded history file in the home folder, repeated ones
// included, and the next run recalls them.
#include <gtest/gtest.h>

#include <sstream>

#include "support/program.h"

namespace {

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string l; std::getline(in, l);) lines.push_back(l);
  return lines;
}

}  // namespace

TEST(ConsoleEnd, CtrlDAtATerminalAsksAboutUnsavedWork) {
  Program s;
  ASSERT_TRUE(s.start_at_prompt()) << s.seen;
  ASSERT_TRUE(s.exchange("func=\"f(){return(5);}\"\r", "\n ?")) << s.seen;
  ASSERT_TRUE(s.exchange("ball(1)\r", "\n ?")) << s.seen;
  // "0" at the first question stays, and the session goes on.
  const std::string functions = "FUNCTIONS HAVE NOT BEEN SAVED (0,1) ?";
  ASSERT_TRUE(s.exchange("\x04", functions)) << s.seen;
  ASSERT_TRUE(s.exchange("0\rf()+1\r", "6.000000", true)) << s.seen;
  // Both questions answered "1": the run ends normally.
  ASSERT_TRUE(s.exchange("\x04", functions)) << s.seen;
  ASSERT_TRUE(s.exchange("1\r", "Volumes have not been saved, leave (0,1) ?")) << s.seen;
  ASSERT_TRUE(s.exchange("1\r", "SEE YOU SOON!...")) << s.seen;
  EXPECT_EQ(s.exit_code(), 0);
}

TEST(ConsoleEnd, EndOfAPipeEndsAtOnceWhateverIsUnsaved) {
  Program s;
  EXPECT_EQ(s.run_lines("func=\"f(){return(5);}\"\nball(1)\n"), 0);
  EXPECT_NE(s.seen.find("SEE YOU SOON!..."), std::string::npos) << s.seen;
  EXPECT_EQ(s.seen.find("HAVE NOT BEEN SAVED"), std::string::npos) << s.seen;
  EXPECT_EQ(s.seen.find("have not been saved"), std::string::npos) << s.seen;
}

TEST(ConsoleHistory, EveryLineThatRanIsKeptAndRecalledByTheNextRun) {
  Program first;
  ASSERT_TRUE(first.start_at_prompt()) << first.seen;
  for (const char* line : {"1+1\r", "40+2\r", "40+2\r"}) ASSERT_TRUE(first.exchange(line, "\n ?")) << first.seen;
  // A line abandoned with Ctrl-C did not run: it is not kept.
  first.type("7+7\x03");
  first.settle(100);
  first.type("bye abs\r");
  ASSERT_EQ(first.exit_code(), 0);
  const std::string kept = first.file(".orvela_history");
  EXPECT_EQ(lines_of(kept), (std::vector<std::string>{"1+1", "40+2", "40+2", "bye abs"})) << kept;

  // The next run in the same home recalls them: two steps up is "40+2".
  Program second;
  second.take_folder(first);
  ASSERT_TRUE(second.start_at_prompt()) << second.seen;
  second.type("\x1b[A");
  second.settle(100);
  second.type("\x1b[A");
  second.settle(100);
  ASSERT_TRUE(second.exchange("\r", "42.000000")) << second.seen;
  second.type("bye abs\r");
  EXPECT_EQ(second.exit_code(), 0);
}

TEST(ConsoleHistory, TheFileStaysBounded) {
  Program s;
  std::string old;
  for (int i = 0; i < 2500; i++) old += "x=" + std::to_string(i) + "\n";
  s.put(".orvela_history", old);
  ASSERT_TRUE(s.start_at_prompt()) << s.seen;
  ASSERT_TRUE(s.exchange("3+4\r", "7.000000", true)) << s.seen;
  s.type("bye abs\r");
  ASSERT_EQ(s.exit_code(), 0);
  std::vector<std::string> lines = lines_of(s.file(".orvela_history"));
  ASSERT_LE(lines.size(), 2000u);
  ASSERT_GE(lines.size(), 1000u);
  // The newest lines are the ones kept, in order.
  EXPECT_EQ(lines[lines.size() - 2], "3+4");
  EXPECT_EQ(lines.back(), "bye abs");
  EXPECT_EQ(lines[lines.size() - 3], "x=2499");
}
