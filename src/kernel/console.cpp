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
#include "platform/files.h"
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
  voir_message(0, MES_RULE);
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

// End of standard input from a pipe or a file ends the run as `bye abs`.
// At a terminal (Ctrl-D) the questions of `bye` come first, and staying
// goes back to the prompt; a terminal that answers nothing but its end,
// many times a second, is gone, and the run ends as on a hangup.
void end_of_input() {
  if (!in_is_terminal()) bye(true);
  ConsoleState& con = console();
  const long long now = clock_ms();
  if (now - con.ends_since > 1000) {
    con.ends_since = now;
    con.ends = 0;
  }
  if (++con.ends > 20) {
    hangup_request();
    return;
  }
  in_resume();
  voir_texte("\n");
  bye(false);
}

// What `print` shows before a line is read. A line editor shows the last
// line of it itself, as the prompt of the line it edits; a bell in it
// rings once rather than at each redisplay.
template <class F>
void show_before_reading(F&& print) {
  if (!line_editor_active()) {
    print();
    flush_out();
    return;
  }
  std::string shown;
  std::string* previous = out_capture(&shown);
  print();
  out_capture(previous);
  size_t last = shown.rfind('\n');
  last = last == std::string::npos ? 0 : last + 1;
  std::string prompt;
  int bells = 0;
  for (size_t i = last; i < shown.size(); i++)
    if (shown[i] == '\a') bells++;
    else prompt += shown[i];
  out_write(shown.data(), last);
  if (bells) out_write("\a", 1);
  flush_out();
  line_editor_prompt(prompt.c_str());
}

void end_of_line(int interactive) {
  if (interactive > 0 && Yes(KW_ring) == 2) bell();
}

}  // namespace

void print_prompt(int message) {
  show_before_reading([message] {
    if (message > 0) voir_message(0, message);
    else {
      print_stacked_commands();
      voir_message(0, MES_PROMPT);
    }
  });
}

bool ask(int voc, int num, std::string& answer, const char* text) {
  show_before_reading([&] {
    if (text) voir_texte(text);
    if (num > 0) voir_message(voc, num);
  });
  return in_getline(answer);
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
      end_of_input();
      if (con.nonblocking) return 0;
      continue;
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
    line_editor_remember(p);
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
