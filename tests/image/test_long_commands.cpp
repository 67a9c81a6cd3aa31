// Long commands at the console of the real program: Ctrl-C reaches them
// within moments, and memory that runs out leaves the session usable.
#include <gtest/gtest.h>

#include <string>

#include "support/program_session.h"

namespace {

// Types `line`, interrupts it once it runs, answers "0" and sees the
// line abandoned. The lines take minutes when left alone, so the
// dialogue within seconds shows the command itself was reached.
void interrupt_line(ProgramSession& s, const std::string& line) {
  size_t mark = s.seen.size();
  ASSERT_TRUE(s.type(line + "\n"));
  usleep(500000);
  s.interrupt();
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark, 5)) << line << s.seen.substr(mark);
  mark = s.seen.size();
  ASSERT_TRUE(s.type("0\n"));
  ASSERT_TRUE(s.wait_for("ABANDONMENT", mark)) << line << s.seen.substr(mark);
}

}  // namespace

TEST(LongCommands, CtrlCReachesLongImageCommands) {
  ProgramSession s;
  ASSERT_TRUE(s.start());
  ASSERT_TRUE(s.wait_for(" ?", 0)) << s.seen;
  expect_answer(s, "image(4) dim(1024,1024) rand(0.5); $1", "1.000000");
  interrupt_line(s, "near image(4) dup(100000)");
  // A kernel of 31 x 31 weights over 2048 x 2048 pixels: many seconds.
  std::string weights = "1";
  for (int i = 1; i < 31 * 31; i++) weights += ",1";
  interrupt_line(s, "image(5) dim(2048,2048); smooth(" + weights + ") image(5)");
  expect_answer(s, "$(1+1)", "2.000000");
  int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status << s.seen;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(LongCommands, AfterMallocErrorEveryLineWorks) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the address sanitizer cannot run in a bounded address space";
#endif
  ProgramSession s;
  ASSERT_TRUE(s.start(1L << 30));
  ASSERT_TRUE(s.wait_for(" ?", 0)) << s.seen;
  // Images of 256 KB until the gigabyte the process may map is used up.
  expect_answer(s, "for(i=1,6000){ image(i) dim(256,256) }", "MALLOC ERROR");
  expect_answer(s, "$1", "1.000000");
  size_t mark = s.seen.size();
  expect_answer(s, "rem image; $2", "2.000000");
  EXPECT_EQ(s.seen.find("MALLOC ERROR", mark), std::string::npos) << s.seen.substr(mark);
  expect_answer(s, "image(1) dim(256,256); image(2) dim(256,256); interpol(100000) image(1,2) number(10)",
                "26214662144:  MALLOC ERROR");
  mark = s.seen.size();
  expect_answer(s, "rem image; $(1+1)", "2.000000");
  EXPECT_EQ(s.seen.find("MALLOC ERROR", mark), std::string::npos) << s.seen.substr(mark);
  int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status << s.seen;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}
