#include "platform/process.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

bool file_read_all(const std::string& path, std::string& out) {
  // Only regular files: a device or a fifo could be endless.
  std::error_code ec;
  if (path.empty() || !std::filesystem::is_regular_file(path, ec)) return false;
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream ss;
  ss << in.rdbuf();
  out = ss.str();
  return true;
}

bool file_write_all(const std::string& path, const std::string& text, bool append) {
  std::ofstream out(path, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
  if (!out) return false;
  out << text;
  return static_cast<bool>(out.flush());
}

bool file_exists(const std::string& path) {
  std::error_code ec;
  return std::filesystem::is_regular_file(path, ec);
}

std::string working_directory() {
  std::error_code ec;
  std::string p = std::filesystem::current_path(ec).string();
  return ec ? std::string(".") : p;
}

unsigned long thread_id() { return static_cast<unsigned long>(syscall(SYS_gettid)); }

void process_exit(int status) {
  fflush(stdout);
  std::_Exit(status);
}

namespace {
std::atomic<bool> interrupted{false};
// The handler also writes a byte here, so that a reader waiting in poll
// wakes up whenever the signal arrives (no window before a blocking read).
int wake_pipe[2] = {-1, -1};

void on_sigint(int) {
  interrupted.store(true);
  if (wake_pipe[1] >= 0) {
    char c = 1;
    ssize_t r = write(wake_pipe[1], &c, 1);
    (void)r;
  }
}
}  // namespace

int interrupt_fd() { return wake_pipe[0]; }

void interrupt_install() {
  struct sigaction old {};
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  sigemptyset(&ignore.sa_mask);
  sigaction(SIGINT, &ignore, &old);
  if (old.sa_handler == SIG_IGN) return;
  if (wake_pipe[0] < 0 && pipe(wake_pipe) == 0) {
    fcntl(wake_pipe[0], F_SETFL, O_NONBLOCK);
    fcntl(wake_pipe[1], F_SETFL, O_NONBLOCK);
  }
  struct sigaction act {};
  act.sa_handler = on_sigint;
  sigemptyset(&act.sa_mask);
  act.sa_flags = 0;  // no SA_RESTART: a blocked console read returns at once
  sigaction(SIGINT, &act, nullptr);
}

bool interrupt_pending() { return interrupted.load(); }
void interrupt_clear() {
  interrupted.store(false);
  char buf[64];
  while (wake_pipe[0] >= 0 && read(wake_pipe[0], buf, sizeof buf) > 0) {}
}

void sleep_ms(int ms) {
  if (ms > 0) usleep(static_cast<useconds_t>(ms) * 1000);
}

int run_shell(const char* command) {
  fflush(stdout);
  int status = std::system(command);
  if (status < 0) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int start_task(const char* command) {
  fflush(stdout);
  pid_t pid = fork();
  if (pid < 0) return -1;
  if (pid == 0) {
    // A grandchild runs the task so that no zombie is left behind.
    if (fork() == 0) {
      execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
      _exit(127);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return 0;
}
