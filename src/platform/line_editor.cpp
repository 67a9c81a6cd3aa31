#include "platform/line_editor.h"

#include <editline/readline.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/console_io.h"
#include "platform/process.h"
#include "platform/safe_write.h"

namespace {

struct Editor {
  bool active = false;
  bool installed = false;  // a line is being edited
  std::string prompt;
  std::string history_file;
  int file_lines = 0;      // lines in the history file
};

Editor& editor() {
  static Editor e;
  return e;
}

// Lines of history kept; the file grows to twice as many between trims.
constexpr int HISTORY_KEPT = 1000;

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  for (size_t nl; (nl = text.find('\n', start)) != std::string::npos; start = nl + 1)
    if (nl > start) lines.push_back(text.substr(start, nl - start));
  return lines;
}

// The file named by ORVELA_HISTORY, else ".orvela_history" in the home
// folder; an empty ORVELA_HISTORY keeps no file.
std::string history_path() {
  if (const char* p = getenv("ORVELA_HISTORY")) return p;
  std::string home = home_directory();
  return home.empty() ? "" : home + "/.orvela_history";
}

void load_history() {
  Editor& e = editor();
  e.history_file = history_path();
  stifle_history(HISTORY_KEPT);
  std::string text;
  if (e.history_file.empty() || !file_read_all(e.history_file, text)) return;
  std::vector<std::string> lines = lines_of(text);
  e.file_lines = static_cast<int>(lines.size());
  size_t first = lines.size() > HISTORY_KEPT ? lines.size() - HISTORY_KEPT : 0;
  for (size_t i = first; i < lines.size(); i++) add_history(lines[i].c_str());
}

// Keeps the newest lines only, rewriting the file safely.
void trim_history_file() {
  Editor& e = editor();
  std::string text;
  if (!file_read_all(e.history_file, text)) return;
  std::vector<std::string> lines = lines_of(text);
  size_t first = lines.size() > HISTORY_KEPT ? lines.size() - HISTORY_KEPT : 0;
  std::string kept;
  for (size_t i = first; i < lines.size(); i++) kept += lines[i] + "\n";
  if (safe_write_file(e.history_file, kept.data(), kept.size()) == WriteFault::none)
    e.file_lines = static_cast<int>(lines.size() - first);
}

// A finished line goes to the console's buffer. The handler goes until
// the next prompt, so that the command's output does not mix with the
// editor's line.
void on_line(char* line) {
  rl_callback_handler_remove();
  editor().installed = false;
  if (!line) {
    in_push_text("", true);
    return;
  }
  in_push_text(std::string(line) + "\n", false);
  free(line);
}

// Ctrl-C: the line being typed or searched is dropped, as a shell does,
// and the prompt comes again on a fresh line.
void abandon_line() {
  Editor& e = editor();
  interrupt_clear();
  if (!e.installed) return;
  rl_replace_line("", 0);
  rl_callback_handler_remove();
  e.installed = false;
  out_write("^C\n", 3);
  out_flush();
}

bool feed(int timeout_ms) {
  Editor& e = editor();
  if (sigint_pending()) {
    abandon_line();
    return true;
  }
  if (!e.installed) {
    rl_callback_handler_install(e.prompt.c_str(), on_line);
    e.installed = true;
  }
  pollfd fds[2] = {{0, POLLIN, 0}, {interrupt_fd(), POLLIN, 0}};
  int ready = poll(fds, interrupt_fd() >= 0 ? 2 : 1, timeout_ms);
  if (sigint_pending()) {
    abandon_line();
    return true;
  }
  if (ready <= 0 || !(fds[0].revents & (POLLIN | POLLHUP | POLLERR))) return false;
  rl_callback_read_char();
  return true;
}

}  // namespace

bool line_editor_start() {
  Editor& e = editor();
  if (e.active) return true;
  if (!isatty(0) || !isatty(1)) return false;
  // The process's own handlers stay in place while the editor reads.
  rl_catch_signals = 0;
  using_history();
  load_history();
  e.active = true;
  in_set_line_editor(feed);
  return true;
}

void line_editor_prompt(const char* prompt) {
  Editor& e = editor();
  e.prompt = prompt;
  if (e.installed) {
    rl_callback_handler_remove();
    e.installed = false;
  }
}

bool line_editor_active() { return editor().active; }

void line_editor_remember(const std::string& line) {
  Editor& e = editor();
  if (!e.active || line.empty() || line.find('\n') != std::string::npos) return;
  add_history(line.c_str());
  if (e.history_file.empty()) return;
  int fd = open(e.history_file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  if (fd < 0) return;
  std::string entry = line + "\n";
  bool ok = write(fd, entry.data(), entry.size()) == static_cast<ssize_t>(entry.size());
  close(fd);
  if (ok && ++e.file_lines > 2 * HISTORY_KEPT) trim_history_file();
}
