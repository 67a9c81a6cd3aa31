#include "platform/line_editor.h"

#include <editline/readline.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/console_io.h"

namespace {

bool active = false;
bool installed = false;
std::string prompt_text;

// A finished line: into the console's buffer, and the history. The
// handler goes until the next prompt, so that the command's output does
// not mix with the editor's line.
void on_line(char* line) {
  rl_callback_handler_remove();
  installed = false;
  if (!line) {
    in_push_text("", true);
    return;
  }
  if (*line) add_history(line);
  in_push_text(std::string(line) + "\n", false);
  free(line);
}

bool feed(int timeout_ms) {
  if (!installed) {
    rl_callback_handler_install(prompt_text.c_str(), on_line);
    installed = true;
  }
  pollfd fd = {0, POLLIN, 0};
  if (timeout_ms != 0 && poll(&fd, 1, timeout_ms) <= 0) return false;
  rl_callback_read_char();
  return true;
}

}  // namespace

bool line_editor_start() {
  if (active) return true;
  if (!isatty(0) || !isatty(1)) return false;
  using_history();
  active = true;
  in_set_line_editor(feed);
  return true;
}

void line_editor_prompt(const char* prompt) {
  prompt_text = prompt;
  if (installed) {
    rl_callback_handler_remove();
    installed = false;
  }
}

bool line_editor_active() { return active; }
