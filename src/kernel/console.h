// The read-compile-execute loop of the console.
#pragma once
#include <string>

#include "kernel/word.h"

struct Objet;

// What runs a console line once it is read: compiles and executes the
// braced text `{line}`. Installed by the language layer; while none is
// installed a line is only recorded in the history.
using LineRunner = int (*)(std::string& braced_line, int interactive, word* eval_stack);

struct ConsoleState {
  int repeat = 0;            // calls left to return 1 at once (escape-number)
  int line_ready = 0;
  int stop = 0;              // raised by bye-class commands and the debugger
  int current_line = 0;
  LineRunner runner = nullptr;
  Objet* history = nullptr;  // the line history object
  std::string last_line;
  // Set while the console runs inside the window's idle slices: a blank
  // line returns instead of waiting for the next one, and a prompt
  // already shown is not shown again.
  int nonblocking = 0;
  int prompt_shown = 0;
  // Ends of input at a terminal within the last second (from ends_since,
  // in milliseconds): many mean the terminal is gone.
  int ends = 0;
  long long ends_since = 0;
};

ConsoleState& console();

// Returns 1 when a repeat count consumed the call, a negative value on
// failure, otherwise the result of the interpreted line.
int lire_executer(int interactive, int message, word* eval_stack, int stop_after_one);

// Prints the prompt: message `message`, or for MES_PROMPT the summary of
// stacked commands followed by that message.
void print_prompt(int message);
// Asks a question (`text` if given, then message `num` of vocabulary
// `voc` when num is above 0) and reads the answer line; false at the end
// of input.
bool ask(int voc, int num, std::string& answer, const char* text = nullptr);

// Line history: records a line (unless history is off, the line starts
// with `history` or with `exec` and a digit, or it is already there).
int history_record(const std::string& line);
int history_count();
std::string history_line(int i);

// Clears the stacked commands and the temporary state of an abandoned line.
void abandon_state();
