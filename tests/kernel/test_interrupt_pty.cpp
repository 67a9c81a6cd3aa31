// Ctrl-C at the console of the real program, through a pseudo-terminal:
// the CONTINUE dialogue, "1" goes on, "0" abandons to a fresh prompt, an
// endless loop is stopped, and the session goes on and ends normally.
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/read_until.h"

namespace {

struct Session {
  pid_t pid = -1;
  int fd = -1;
  std::string seen;

  bool start() {
    char dir[] = "/tmp/orvela_ptyXXXXXX";
    if (!mkdtemp(dir)) return false;
    pid = forkpty(&fd, nullptr, nullptr, nullptr);
    if (pid < 0) return false;
    if (pid == 0) {
      if (chdir(dir) != 0) _exit(127);
      execl(ORVELA_BINARY, "orvela", "gra=0", "ID", static_cast<char*>(nullptr));
      _exit(127);
    }
    return true;
  }

  // Reads until `text` has appeared after position `from`, or 10 s pass.
  bool wait_for(const std::string& text, size_t from) { return read_until(fd, seen, text, from, 10); }

  void type(const std::string& s) { ASSERT_EQ(write(fd, s.data(), s.size()), static_cast<ssize_t>(s.size())); }

  // Waits up to 10 s for the process to end, draining its output.
  int finish() {
    int status = 0;
    for (int i = 0; i < 1000; i++) {
      if (waitpid(pid, &status, WNOHANG) == pid) return status;
      char buf[256];
      pollfd p{fd, POLLIN, 0};
      if (poll(&p, 1, 10) > 0 && read(fd, buf, sizeof buf) > 0) continue;
      usleep(10000);
    }
    kill(pid, SIGKILL);
    waitpid(pid, &status, 0);
    return -1;
  }
};

}  // namespace

TEST(InterruptDialogue, CtrlCAtThePromptContinuesOrAbandons) {
  Session s;
  ASSERT_TRUE(s.start());
  ASSERT_TRUE(s.wait_for(" ?", 0)) << s.seen;
  size_t mark = s.seen.size();
  s.type("\x03");
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark)) << s.seen;
  mark = s.seen.size();
  s.type("1\n");
  ASSERT_TRUE(s.wait_for("CONTINUE", mark)) << s.seen;
  mark = s.seen.size();
  s.type("\x03");
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark)) << s.seen;
  mark = s.seen.size();
  s.type("0\n");
  ASSERT_TRUE(s.wait_for("ABANDONMENT", mark)) << s.seen;
  ASSERT_TRUE(s.wait_for(" ?", s.seen.find("ABANDONMENT", mark))) << s.seen;
  // A running endless loop stops at its next turn; the session goes on.
  mark = s.seen.size();
  s.type("k=7; while(1){}\n");
  usleep(100000);
  s.type("\x03");
  ASSERT_TRUE(s.wait_for("CONTINUE (no:0, yes:1, command:2) ?", mark)) << s.seen;
  mark = s.seen.size();
  s.type("0\n");
  ASSERT_TRUE(s.wait_for("ABANDONMENT", mark)) << s.seen;
  mark = s.seen.size();
  s.type("k+1\n");
  ASSERT_TRUE(s.wait_for("8.000000", mark)) << s.seen;
  mark = s.seen.size();
  s.type("\x04");
  ASSERT_TRUE(s.wait_for("SEE YOU SOON!...", mark)) << s.seen;
  int status = s.finish();
  ASSERT_TRUE(WIFEXITED(status)) << status;
  EXPECT_EQ(WEXITSTATUS(status), 0);
}
