// A Python peer for the socket tests: a script run in the background for
// 10 s at most, whose output the test reads at the end; and a free port
// of loopback.
#pragma once
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "device/device_table.h"
#include "platform/sockets.h"
#include "support/text_runner.h"

// A free port of loopback, as the system gives one.
inline int port_libre(bool stream) {
  const int fd = net_socket(stream);
  if (fd < 0 || !net_bind(fd, 0)) return 0;
  const int port = net_local_port(fd);
  net_close(fd);
  return port;
}

// Runs a Python script (or a shell command) in the background, for 10 s
// at most; its output goes to `out` (a file the test reads afterwards).
struct Pair {
  pid_t pid = -1;
  std::string out;
  void start(const std::string& script) { start_command("python3 -c '" + script + "'"); }
  void start_command(const std::string& command) {
    char tmpl[] = "/tmp/orvela_peerXXXXXX";
    const int fd = mkstemp(tmpl);
    if (fd >= 0) close(fd);
    out = tmpl;
    pid = fork();
    if (pid == 0) {
      const std::string cmd = "timeout 10 " + command + " > " + out + " 2>&1";
      execl("/bin/sh", "sh", "-c", cmd.c_str(), static_cast<char*>(nullptr));
      _exit(127);
    }
  }
  // What the peer printed so far.
  std::string printed() const {
    std::string s;
    if (FILE* f = fopen(out.c_str(), "r")) {
      char buf[256];
      size_t n;
      while ((n = fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
      fclose(f);
    }
    return s;
  }
  // Waits (5 s at most) until the peer printed `text`.
  bool wait_for(const std::string& text) const {
    for (int i = 0; i < 100; i++) {
      if (printed().find(text) != std::string::npos) return true;
      usleep(50000);
    }
    return false;
  }
  // Waits for the end; what the peer printed.
  std::string finish() {
    int status = 0;
    if (pid > 0) waitpid(pid, &status, 0);
    const std::string s = printed();
    unlink(out.c_str());
    return s;
  }
};

inline bool python_present() { return system("python3 -c pass >/dev/null 2>&1") == 0; }

// Runs console texts on a fresh device table, with Python at hand.
class SocketTest : public TextRunner {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    if (!python_present()) GTEST_SKIP() << "python3 is not installed: no peer for the sockets";
    ini_devices();
  }
  void TearDown() override { ini_devices(); }
};
