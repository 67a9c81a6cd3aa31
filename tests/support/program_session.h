// The real program in a fresh folder, its standard input and output on
// pipes: lines are typed, output is waited for, signals are sent.
#pragma once
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/read_until.h"

struct ProgramSession {
  pid_t pid = -1;
  int in = -1, out = -1;
  std::string seen;
  std::string dir;

  // Starts `orvela gra=0 ID`; with `address_space` above 0 the child may
  // map no more than that many bytes.
  bool start(long address_space = 0) {
    char tmpl[] = "/tmp/orvela_sessionXXXXXX";
    if (!mkdtemp(tmpl)) return false;
    dir = tmpl;
    int to_child[2], from_child[2];
    if (pipe(to_child) != 0 || pipe(from_child) != 0) return false;
    pid = fork();
    if (pid < 0) return false;
    if (pid == 0) {
      dup2(to_child[0], 0);
      dup2(from_child[1], 1);
      dup2(from_child[1], 2);
      close(to_child[1]);
      close(from_child[0]);
      if (address_space > 0) {
        rlimit r{static_cast<rlim_t>(address_space), static_cast<rlim_t>(address_space)};
        setrlimit(RLIMIT_AS, &r);
      }
      if (chdir(dir.c_str()) != 0) _exit(127);
      alarm(120);
      execl(ORVELA_BINARY, "orvela", "gra=0", "ID", static_cast<char*>(nullptr));
      _exit(127);
    }
    close(to_child[0]);
    close(from_child[1]);
    in = to_child[1];
    out = from_child[0];
    return true;
  }

  // Reads until `text` has appeared after position `from`, or `seconds` pass.
  bool wait_for(const std::string& text, size_t from, int seconds = 10) {
    return read_until(out, seen, text, from, seconds);
  }

  bool type(const std::string& s) { return write(in, s.data(), s.size()) == static_cast<ssize_t>(s.size()); }
  void interrupt() { kill(pid, SIGINT); }

  // Closes standard input and waits up to 10 s for the end; the wait status.
  int finish() {
    if (in >= 0) close(in);
    in = -1;
    int status = 0;
    for (int i = 0; i < 1000; i++) {
      if (waitpid(pid, &status, WNOHANG) == pid) return status;
      pollfd p{out, POLLIN, 0};
      char buf[4096];
      ssize_t n = poll(&p, 1, 10) > 0 ? read(out, buf, sizeof buf) : 0;
      if (n > 0) seen.append(buf, static_cast<size_t>(n));
      else usleep(10000);
    }
    kill(pid, SIGKILL);
    waitpid(pid, &status, 0);
    return -1;
  }

  ~ProgramSession() {
    if (pid > 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
    if (in >= 0) close(in);
    if (out >= 0) close(out);
    if (!dir.empty()) {
      std::string cleanup = "rm -rf " + dir;
      if (system(cleanup.c_str()) != 0) dir.clear();
    }
  }
};

// Types `line` and expects `answer` to appear after it.
inline void expect_answer(ProgramSession& s, const std::string& line, const std::string& answer) {
  const size_t mark = s.seen.size();
  ASSERT_TRUE(s.type(line + "\n"));
  EXPECT_TRUE(s.wait_for(answer, mark)) << line << s.seen.substr(mark);
}
