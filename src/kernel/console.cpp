// lire_executer: prompt, read, escape-number repeat, history, then compile
// and run through the language layer's runner.
#include "kernel/console.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/bye.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"
#include "platform/line_editor.h"
#include "platform/process.h"

ConsoleState& console() {
  static ConsoleState c;
  return c;
}

namespace {

// Bytes a line may hold: the 20000-word local code storage.
constexpr size_t LINE_MAX_BYTES = 20000 * 4 - 8;

// Prints the keywords of each stacked command, with its first value when
// `edit` is on.
void print_stacked_commands() {
  bloc s = kernel().command_stack;
  if (!s || np(s) <= 0) return;
  voir_message(0, 1);
  word* cmd = data(s);
  for (int c = 0; c < np(s) && cmd < kernel().command_insert && size(cmd) > 0; c++) {
    word* seg = data(cmd);
    for (int i = 0; i < np(cmd) && size(seg) >= 3; i++) {
      voir_mot(seg[2]);
      if (Yes(KW_edit) > 0 && size(seg) > 3 && tag(seg + 3) == T_FLOAT && np(seg + 3) > 0)
        voir_float("(%g) ", getf(seg + 3, 0));
      seg += size(seg);
    }
    voir_texte("\n");
    cmd += size(cmd);
  }
}

enum class Read { Line, Empty, Overflow, End };

// Reads one line into `line`; the SIGINT dialogue may run inside the read.
Read read_line(std::string& line) {
  line.clear();
  int c;
  bool overflow = false;
  while ((c = in_getc()) >= 0 && c != '\n') {
    if (line.size() >= LINE_MAX_BYTES) {
      overflow = true;
      continue;
    }
    line.push_back(static_cast<char>(c));
  }
  if (c < 0 && line.empty()) return Read::End;
  if (overflow) {
    err_debordement(nullptr);
    return Read::Overflow;
  }
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line.empty() ? Read::Empty : Read::Line;
}

// The escape character opens a repeat: a digit after it makes that many
// calls in all, this one included, return at once.
bool escape_line(const char* p) {
  int esc = kernel().esc;
  if (static_cast<unsigned char>(*p) != esc) return false;
  ConsoleState& con = console();
  if (p[1] >= '0' && p[1] <= '9') con.repeat = p[1] - '0' - 1;
  else con.repeat = 0;
  if (con.repeat < 0) con.repeat = 0;
  return true;
}

void end_of_line(int interactive) {
  if (interactive > 0 && Yes(KW_ring) == 2) bell();
}

}  // namespace

void print_prompt(int message) {
  // A line editor shows the prompt itself, on the line it edits.
  std::string shown;
  std::string* previous = line_editor_active() ? out_capture(&shown) : nullptr;
  if (message > 0) voir_message(0, message);
  else {
    print_stacked_commands();
    voir_message(0, 0);
  }
  if (line_editor_active()) {
    out_capture(previous);
    line_editor_prompt(shown.c_str());
  }
  flush_out();
}

int lire_executer(int interactive, int message, word* eval_stack, int stop_after_one) {
  ConsoleState& con = console();
  con.line_ready = 0;
  interrupt_clear();
  if (con.repeat > 0) {
    con.repeat--;
    return 1;
  }
  int result = 0;
  for (;;) {
    if (con.prompt_shown) con.prompt_shown = 0;
    else print_prompt(message);
    std::string line;
    Read r = read_line(line);
    if (r == Read::End) {
      // End of standard input ends the run as `bye abs`.
      bye(true);
    }
    const char* p = line.c_str();
    while (*p == ' ' || *p == '\t') p++;
    if (r != Read::Line || !*p) {
      if (con.nonblocking) return 0;
      continue;
    }
    if (escape_line(p)) {
      end_of_line(interactive);
      return 1;
    }
    if (history_record(p) < 0) return -1;
    con.last_line = p;
    if (con.runner) {
      // The newline stays in the text, so that a directive ends before "}".
      std::string braced = "{" + std::string(p) + "\n}";
      result = con.runner(braced, interactive, eval_stack);
    }
    if (con.stop || stop_after_one == 0) break;
  }
  end_of_line(interactive);
  return result;
}

void abandon_state() {
  KernelState& k = kernel();
  if (k.command_stack) {
    k.command_stack[0] = 4;
    k.command_stack[2] = 0;
    k.command_insert = k.command_stack + 4;
  }
  console().repeat = 0;
}

void enter_exit(const char* text) {
  if (text) VOIR_CHAR("%s\n", text);
  voir_texte("ENTER");
  flush_out();
  in_getc();
  process_exit(0);
}
