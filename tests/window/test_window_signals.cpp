// SIGTERM while the window owns the thread and the console waits in its
// idle slices: the unsaved work is saved to the recovery files all the
// same, and the program ends.
#include <gtest/gtest.h>

#include "support/program.h"
#include "window/window_run.h"

TEST(WindowSignals, SigtermAtTheWindowsPromptSavesTheWork) {
  REQUIRE_XVFB();
  Program s;
  setenv("B", ORVELA_BINARY, 1);
  const std::string server = std::to_string(100 + (getpid() * 16 + 7) % 4000);
  // The shell gives its process number to the program it becomes.
  ASSERT_TRUE(s.start_command({"xvfb-run", "-a", "-n", server, "-s", "-screen 0 1024x768x24", "sh", "-c",
                               "echo $$ > orvela.pid; exec \"$B\" ID"},
                              Program::Input::pipe));
  unsetenv("B");
  s.type("func=\"twice(x){return(2*x);}\"\nball(1)\n$\"ready\"\n");
  ASSERT_TRUE(s.wait_for("ready")) << s.seen;
  const pid_t program = std::atoi(s.file("orvela.pid").c_str());
  ASSERT_GT(program, 0);
  kill(program, SIGTERM);
  s.finish();
  const std::string where = s.dir.string() + "/orvela-recovery";
  EXPECT_NE(s.seen.find("SIGTERM: unsaved work written to " + where + ".func\n"), std::string::npos) << s.seen;
  EXPECT_NE(s.seen.find("SIGTERM: unsaved work written to " + where + ".vol\n"), std::string::npos) << s.seen;
  EXPECT_EQ(s.file("orvela-recovery.func"), "twice(x){return(2*x);}\n\n");
}
