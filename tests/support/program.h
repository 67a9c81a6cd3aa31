// The real program run in a fresh folder, on a pseudo-terminal (where a
// terminal matters: line editing, Ctrl-C, Ctrl-D) or on a pipe, with keys
// or lines typed to it and its output read as it comes.
#pragma once
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

struct Program {
  enum class Input { terminal, pipe };

  std::filesystem::path dir;  // working folder, also HOME
  pid_t pid = -1;
  int fd = -1;   // terminal master, or the read end of the output pipe
  int in = -1;   // write end of the input pipe
  std::string seen;
  long file_limit = -1;  // a size limit on files written, in bytes

  Program() {
    char tmpl[] = "/tmp/orvela_progXXXXXX";
    if (mkdtemp(tmpl)) dir = tmpl;
  }
  ~Program() {
    if (pid > 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
    if (fd >= 0) close(fd);
    if (in >= 0) close(in);
    std::error_code ec;
    if (!dir.empty()) std::filesystem::remove_all(dir, ec);
  }

  bool start(Input how, std::vector<std::string> args = {"gra=0", "ID"}) {
    std::vector<std::string> command{std::string(ORVELA_BINARY)};
    command.insert(command.end(), args.begin(), args.end());
    return start_command(std::move(command), how);
  }

  // Starts on a terminal and waits for the first prompt.
  bool start_at_prompt() { return start(Input::terminal) && wait_for(" ?"); }

  // Runs a command (found on PATH) in place of the program alone.
  bool start_command(std::vector<std::string> args, Input how) {
    int to_child[2] = {-1, -1}, from_child[2] = {-1, -1};
    if (how == Input::terminal) {
      pid = forkpty(&fd, nullptr, nullptr, nullptr);
    } else {
      if (pipe(to_child) != 0 || pipe(from_child) != 0) return false;
      pid = fork();
    }
    if (pid < 0) return false;
    if (pid == 0) {
      if (how == Input::pipe) {
        dup2(to_child[0], 0);
        dup2(from_child[1], 1);
        dup2(from_child[1], 2);
        close(to_child[1]);
        close(from_child[0]);
      }
      if (chdir(dir.c_str()) != 0) _exit(127);
      setenv("HOME", dir.c_str(), 1);
      unsetenv("ORVELA_HISTORY");
      if (file_limit >= 0) {
        rlimit r{static_cast<rlim_t>(file_limit), static_cast<rlim_t>(file_limit)};
        setrlimit(RLIMIT_FSIZE, &r);
      }
      std::vector<char*> argv;
      for (std::string& a : args) argv.push_back(a.data());
      argv.push_back(nullptr);
      execvp(argv[0], argv.data());
      _exit(127);
    }
    if (how == Input::pipe) {
      close(to_child[0]);
      close(from_child[1]);
      in = to_child[1];
      fd = from_child[0];
    } else {
      in = dup(fd);
    }
    return true;
  }

  // Reads until `text` has appeared after position `from`, or 10 s pass.
  bool wait_for(const std::string& text, size_t from = 0) {
    auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (seen.find(text, from) == std::string::npos) {
      if (std::chrono::steady_clock::now() > end) return false;
      if (!read_some(100)) return seen.find(text, from) != std::string::npos;
    }
    return true;
  }

  // Types `keys`, then waits for `text` to come after them; with
  // `prompt`, also for the prompt that follows it, so that the next keys
  // reach the line editor rather than the terminal alone.
  bool exchange(const std::string& keys, const std::string& text, bool prompt = false) {
    const size_t mark = seen.size();
    type(keys);
    if (!wait_for(text, mark)) return false;
    return !prompt || wait_for("\n ?", seen.find(text, mark));
  }

  // Reads what comes for `ms` milliseconds; false once the output ended.
  bool read_some(int ms) {
    pollfd p{fd, POLLIN, 0};
    if (poll(&p, 1, ms) <= 0) return true;
    char buf[4096];
    ssize_t n = read(fd, buf, sizeof buf);
    if (n <= 0) return false;
    seen.append(buf, static_cast<size_t>(n));
    return true;
  }

  // Reads for `ms` milliseconds whatever comes.
  void settle(int ms) {
    auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    while (std::chrono::steady_clock::now() < end && read_some(20)) {}
  }

  void type(const std::string& s) { ASSERT_EQ(write(in, s.data(), s.size()), static_cast<ssize_t>(s.size())); }

  // Closes the input (the end of a pipe).
  void end_input() {
    close(in);
    in = -1;
  }

  // Waits up to 10 s for the process to end, reading its output; the
  // status of waitpid, or -1 when it had to be killed.
  int finish() {
    int status = 0;
    for (int i = 0; i < 1000; i++) {
      if (waitpid(pid, &status, WNOHANG) == pid) {
        settle(50);
        pid = -1;
        return status;
      }
      if (!read_some(10)) usleep(10000);
    }
    kill(pid, SIGKILL);
    waitpid(pid, &status, 0);
    pid = -1;
    return -1;
  }

  // Waits for the end: the exit status, or -1 when the process was killed
  // by a signal or had to be.
  int exit_code() {
    const int status = finish();
    return status >= 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  // Runs the program on a pipe with these lines as its whole input; the
  // exit status.
  int run_lines(const std::string& lines) {
    if (!start(Input::pipe)) return -1;
    type(lines);
    end_input();
    return exit_code();
  }

  // Works in the folder of an earlier run, which gives it up.
  void take_folder(Program& earlier) { dir.swap(earlier.dir); }

  std::string file(const std::string& name) const {
    std::ifstream f(dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(f), {});
  }
  void put(const std::string& name, const std::string& bytes) const {
    std::ofstream(dir / name, std::ios::binary) << bytes;
  }
  // Entries of the folder whose names begin with a dot and are no history:
  // temporary files left behind.
  int leftovers() const {
    int n = 0;
    for (const auto& e : std::filesystem::directory_iterator(dir)) {
      std::string name = e.path().filename().string();
      if (name[0] == '.' && name != ".orvela_history") n++;
    }
    return n;
  }
};

// Counts the non-overlapping occurrences of `what` in `text`.
inline int occurrences(const std::string& text, const std::string& what) {
  int n = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) n++;
  return n;
}
