#include "platform/process.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/safe_write.h"

bool file_read_all(const std::string& path, std::string& out) {
  // Only regular files: a device or a fifo could be endless.
  std::error_code ec;
  if (path.empty() || !std::filesystem::is_regular_file(path, ec)) return false;
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return false;
  // In one read of the size the file has (a sound runs to 100 MB); a file
  // that tells no size (those of /proc) is read to its end.
  const std::streamoff n = in.tellg();
  if (n > 0) {
    out.resize(static_cast<size_t>(n));
    in.seekg(0);
    in.read(out.data(), n);
    out.resize(static_cast<size_t>(in.gcount()));
    return true;
  }
  in.seekg(0);
  std::ostringstream ss;
  ss << in.rdbuf();
  out = ss.str();
  return true;
}

bool file_exists(const std::string& path) {
  std::error_code ec;
  return std::filesystem::is_regular_file(path, ec);
}

std::vector<std::string> files_starting_with(const std::string& folder, const std::string& prefix) {
  std::vector<std::string> out;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    if (name.compare(0, prefix.size(), prefix) == 0) out.push_back(name);
  }
  std::sort(out.begin(), out.end());
  return out;
}

std::string home_directory() {
  const char* home = getenv("HOME");
  if (home && *home) return home;
  const passwd* pw = getpwuid(getuid());
  return pw && pw->pw_dir ? pw->pw_dir : "";
}

std::string working_directory() {
  std::error_code ec;
  std::string p = std::filesystem::current_path(ec).string();
  return ec ? std::string(".") : p;
}

unsigned long thread_id() { return static_cast<unsigned long>(syscall(SYS_gettid)); }

namespace {
// Room for each subsystem that has something to finish.
constexpr int MAX_FINISH = 8;
void (*at_exit_finish[MAX_FINISH])() = {};
}  // namespace

void process_at_exit(void (*finish)()) {
  for (auto& f : at_exit_finish)
    if (f == finish || !f) {
      f = finish;
      return;
    }
}

void process_exit(int status) {
  for (auto f : at_exit_finish)
    if (f) f();
  safe_commit_all();
  fflush(stdout);
  std::_Exit(status);
}

SignalFlags signal_flags;

namespace {
// The handler also writes a byte here, so that a reader waiting in poll
// wakes up whenever the signal arrives (no window before a blocking read).
int wake_pipe[2] = {-1, -1};

void wake() {
  if (wake_pipe[1] >= 0) {
    char c = 1;
    ssize_t r = write(wake_pipe[1], &c, 1);
    (void)r;
  }
}

void on_sigint(int) {
  signal_flags.interrupted.store(true);
  wake();
}

void on_terminate(int signal) {
  signal_flags.terminated.store(signal);
  wake();
}

// Installs the handler unless the signal was ignored when the process
// started (a shell's `&` for SIGINT, `nohup` for SIGHUP): it stays so.
void set_handler(int signal, void (*handler)(int)) {
  struct sigaction old {};
  sigaction(signal, nullptr, &old);
  if (old.sa_handler == SIG_IGN) return;
  struct sigaction act {};
  act.sa_handler = handler;
  sigemptyset(&act.sa_mask);
  act.sa_flags = 0;  // no SA_RESTART: a blocked console read returns at once
  sigaction(signal, &act, nullptr);
}
}  // namespace

int interrupt_fd() { return wake_pipe[0]; }

void interrupt_install() {
  if (wake_pipe[0] < 0 && pipe2(wake_pipe, O_CLOEXEC) == 0) {
    fcntl(wake_pipe[0], F_SETFL, O_NONBLOCK);
    fcntl(wake_pipe[1], F_SETFL, O_NONBLOCK);
  }
  // Past a size limit a write answers EFBIG instead of ending the process.
  signal(SIGXFSZ, SIG_IGN);
  set_handler(SIGTERM, on_terminate);
  set_handler(SIGHUP, on_terminate);
  set_handler(SIGINT, on_sigint);
}

bool sigint_pending() { return signal_flags.interrupted.load(); }
int terminate_pending() { return signal_flags.terminated.load(); }
void hangup_request() { on_terminate(SIGHUP); }

std::string signal_name(int signal) {
  const char* abbrev = sigabbrev_np(signal);
  return abbrev ? std::string("SIG") + abbrev : "signal " + std::to_string(signal);
}
void interrupt_clear() {
  signal_flags.interrupted.store(false);
  char buf[64];
  while (wake_pipe[0] >= 0 && read(wake_pipe[0], buf, sizeof buf) > 0) {}
  // A termination keeps the reader awake until it is dealt with.
  if (signal_flags.terminated.load()) wake();
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
