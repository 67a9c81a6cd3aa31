// A session of the real program driven step by step, for what a script
// on standard input cannot do alone: acting on the window from outside
// (xdotool, the window manager's close request) between console lines.
// The program runs under a private Xvfb (which chooses its own display
// number), its standard input a pipe the test writes to, its output a
// file the test reads. Every wait is for a condition, bounded in time.
#pragma once
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "window/window_run.h"

inline bool have_live_tools() {
  return have_xvfb() && std::system("command -v Xvfb >/dev/null 2>&1 && command -v xdotool >/dev/null 2>&1") == 0;
}

#define REQUIRE_LIVE_TOOLS() \
  if (!have_live_tools()) GTEST_SKIP() << "Xvfb, xvfb-run and xdotool are needed (apt-get install xvfb xdotool)"

// A private X server: Xvfb chooses a free display number and writes it to
// -displayfd once it accepts clients.
struct XServer {
  std::string display;  // ":n", empty when it did not start
  pid_t pid = -1;
  XServer() {
    if (!start()) display.clear();
  }
  ~XServer() {
    if (pid > 0) {
      kill(pid, SIGTERM);
      waitpid(pid, nullptr, 0);
    }
  }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

 private:
  bool start() {
    int fds[2];
    if (pipe(fds) != 0) return false;
    pid = fork();
    if (pid == 0) {
      // A test that dies must not leave its server behind.
      prctl(PR_SET_PDEATHSIG, SIGTERM);
      close(fds[0]);
      const int quiet = open("/dev/null", O_WRONLY);
      dup2(quiet, 1);
      dup2(quiet, 2);
      const std::string fd = std::to_string(fds[1]);
      execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
             "-noreset", static_cast<char*>(nullptr));
      _exit(127);
    }
    close(fds[1]);
    std::string number;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    fcntl(fds[0], F_SETFL, O_NONBLOCK);
    while (number.empty() || number.back() != '\n') {
      char c;
      const ssize_t n = ::read(fds[0], &c, 1);
      if (n == 1) number.push_back(c);
      else if (n == 0 || std::chrono::steady_clock::now() > end) break;
      else std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    close(fds[0]);
    if (number.empty() || number.back() != '\n') return false;
    number.pop_back();
    display = ":" + number;
    return true;
  }
};

// A scene that shows where the window's picture stands: a red wire-frame
// cube, 100 wide, seen from the front.
inline const char* const RED_CUBE = "cube(1) dim(100)\neye(0,0,-1000)\ncol vol(1)=1,0,0\ndispl";

// The cube as a window of w x h shows it: a square outline at the centre,
// its side in proportion to the height (the perspective's aperture is
// vertical), everything else the background.
inline bool shows_red_cube(const Picture& p, int w, int h) {
  if (p.w != w || p.h != h) return false;
  int x0 = w, y0 = h, x1 = -1, y1 = -1, red = 0;
  for (int y = 0; y < h; y++)
    for (int x = 0; x < w; x++)
      if (reddish(p.at(x, y))) {
        x0 = std::min(x0, x);
        x1 = std::max(x1, x);
        y0 = std::min(y0, y);
        y1 = std::max(y1, y);
        red++;
      }
  const int side = 118 * h / 576;
  return red > 0 && std::abs(x1 - x0 + 1 - side) <= 3 && std::abs(y1 - y0 + 1 - side) <= 3 &&
         std::abs(x0 + x1 + 1 - w) <= 2 && std::abs(y0 + y1 + 1 - h) <= 2 && p.count(background) == w * h - red;
}

struct LiveSession {
  std::filesystem::path dir;
  XServer server;
  const std::string& display = server.display;
  pid_t prog = -1;
  int to_prog = -1;
  int status = -1;  // the program's exit status once it ended
  int marks = 0;

  // Starts the server and the program with `options` on its command line.
  explicit LiveSession(const std::string& options = "ID") {
    static int sessions = 0;
    dir = std::filesystem::temp_directory_path() /
          ("orvela_live_" + std::to_string(getpid()) + "_" + std::to_string(++sessions));
    std::filesystem::create_directories(dir);
    if (!display.empty()) start_program(options);
  }

  ~LiveSession() {
    if (to_prog >= 0) close(to_prog);
    if (prog > 0 && status < 0) {
      kill(prog, SIGKILL);
      waitpid(prog, nullptr, 0);
    }
    std::filesystem::remove_all(dir);
  }

  void send(const std::string& text) {
    if (to_prog >= 0 && ::write(to_prog, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
      close(to_prog);
      to_prog = -1;
    }
  }

  std::string output() const {
    std::ifstream f(dir / "out.txt");
    return std::string(std::istreambuf_iterator<char>(f), {});
  }

  // Waits until `pred` holds, for at most `seconds`.
  template <class F>
  static bool wait_until(F&& pred, double seconds = 30) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!pred()) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
  }

  // Waits until `text` is printed after position `from` of the output.
  bool wait_output(const std::string& text, size_t from = 0, double seconds = 30) {
    return wait_until([&] { return output().find(text, from) != std::string::npos || ended(); }, seconds) &&
           output().find(text, from) != std::string::npos;
  }

  // Runs console lines and waits until they are done (a printed mark
  // follows them); false when the mark never came.
  bool run(const std::string& lines) {
    const std::string mark = "@@" + std::to_string(++marks) + "@@";
    send(lines + "\n$\"" + mark + "\"\n");
    return wait_output(mark);
  }

  // The value printed by one console line of the form $(...), read after
  // its own mark.
  std::string answer(const std::string& expression) {
    const size_t from = output().size();
    if (!run("$(" + expression + ")")) return "";
    const std::string out = output().substr(from);
    const size_t mark = out.find("@@" + std::to_string(marks) + "@@");
    std::string value = out.substr(0, mark);
    for (size_t at; (at = value.find(" ?")) != std::string::npos;) value.erase(at, 2);  // prompts
    while (!value.empty() && (value.back() == '\n' || value.back() == ' ')) value.pop_back();
    return value;
  }

  // A command run with the session's display; its exit status, and its
  // standard output in `out` when given.
  int x(const std::string& command, std::string* out = nullptr) const {
    const std::string file = (dir / "x.txt").string();
    const std::string cmd = "DISPLAY=" + display + " timeout 30 " + command + " > '" + file + "' 2>&1";
    const int r = std::system(cmd.c_str());
    if (out) {
      std::ifstream f(file);
      out->assign(std::istreambuf_iterator<char>(f), {});
    }
    return WIFEXITED(r) ? WEXITSTATUS(r) : -1;
  }

  // The id of the viewable window titled "ORVELA", waiting for it; empty
  // when none came.
  std::string window_id(double seconds = 20) const {
    std::string out;
    if (x(std::string(ORVELA_XWIN) + " wait ORVELA " + std::to_string(seconds), &out) != 0) return "";
    while (!out.empty() && out.back() == '\n') out.pop_back();
    return out;
  }

  // What the X server shows of the window, as a picture.
  Picture grab(const std::string& name) const {
    Picture p;
    const std::string file = (dir / name).string();
    if (x(std::string(ORVELA_XWIN) + " grab ORVELA '" + file + "'") == 0) p.load(file);
    return p;
  }

  Picture picture(const std::string& name) const {
    Picture p;
    EXPECT_TRUE(p.load((dir / name).string())) << name << " not written; output:\n" << output();
    return p;
  }

  bool ended() {
    if (status >= 0) return true;
    int st = 0;
    if (prog <= 0 || waitpid(prog, &st, WNOHANG) != prog) return false;
    status = WIFEXITED(st) ? WEXITSTATUS(st) : 128 + WTERMSIG(st);
    return true;
  }

  bool wait_exit(double seconds = 30) {
    return wait_until([&] { return ended(); }, seconds);
  }

 private:
  void start_program(const std::string& options) {
    int fds[2];
    if (pipe(fds) != 0) return;
    const std::string out = (dir / "out.txt").string();
    prog = fork();
    if (prog == 0) {
      close(fds[1]);
      dup2(fds[0], 0);
      const int o = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      dup2(o, 1);
      dup2(o, 2);
      if (chdir(dir.c_str()) != 0) _exit(127);
      setenv("DISPLAY", display.c_str(), 1);
      std::string line = std::string("exec ") + ORVELA_BINARY + " " + options;
      execl("/bin/sh", "sh", "-c", line.c_str(), static_cast<char*>(nullptr));
      _exit(127);
    }
    close(fds[0]);
    to_prog = fds[1];
    // A program that ended early must not kill the test with SIGPIPE.
    signal(SIGPIPE, SIG_IGN);
  }
};
