// Ctrl-C reaches loops that run on the quick road: the dialogue comes up,
// "1" lets the loop go on from where it stood, "0" abandons the line
// with the work of the turns done kept.
#include <gtest/gtest.h>

#include <string>

#include "support/program_session.h"

namespace {

// Interrupts the running line and answers `answer`; the text the
// dialogue printed after it.
std::string interrupt_and_answer(ProgramSession& s, const std::string& answer) {
  usleep(300000);
  size_t mark = s.seen.size();
  s.interrupt();
  EXPECT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark, 5)) << s.seen.substr(mark);
  mark = s.seen.size();
  EXPECT_TRUE(s.type(answer + "\n"));
  EXPECT_TRUE(s.wait_for(answer == "0" ? "ABANDONMENT" : "CONTINUE", mark, 5)) << s.seen.substr(mark);
  return s.seen.substr(mark);
}

}  // namespace

TEST(QuickInterrupt, CtrlCReachesTightLoops) {
  ProgramSession s;
  ASSERT_TRUE(s.start());
  ASSERT_TRUE(s.wait_for(" ?", 0)) << s.seen;
  // A step of 0: the loop never ends by itself.
  ASSERT_TRUE(s.type("s=0; for(i=0,1,0){s=s+1;}\n"));
  interrupt_and_answer(s, "1");
  // Still running: a second interrupt finds it.
  interrupt_and_answer(s, "0");
  expect_answer(s, "$(s>1000)", "1.000000");
  // An empty body, and a body calling a pure function.
  ASSERT_TRUE(s.type("for(i=0,1,0){}\n"));
  interrupt_and_answer(s, "0");
  expect_answer(s, "func = \"qi_half(x){ return(x*0.5); }\"", " ?");
  ASSERT_TRUE(s.type("t=0; for(i=0,1,0){t=t+qi_half(2);}\n"));
  interrupt_and_answer(s, "0");
  expect_answer(s, "$(t>1000)", "1.000000");
  int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status << s.seen;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}
