// The expression evaluator and the code interpreter. Every intermediate
// value lives on the evaluation area (kernel().eval_stack up to
// kernel().eval_limit) as a complete bloc, or as a two-word token that
// names a variable or an address until it is resolved.
#pragma once
#include "kernel/objet.h"
#include <vector>

#include "kernel/handles.h"
#include "kernel/word.h"
#include "language/code.h"

// Statuses of the evaluator and of command handlers.
constexpr int EVAL_RETURN = 2;  // a `return` ran: the code stops

struct EvalState {
  word* limit = nullptr;        // end of the area in use
  int line = 0;                 // current source line
  int go = 0;                   // GO: the console loop ends after the text
  bool quiet = false;           // the last statement was an assignment
  int depth = 0;                // nested function calls (depth guard)
  const word* code = nullptr;   // the code being run (its symbol table names calls)
  bool post_mortem_done = false;  // the failing function was shown
};

// The evaluator's state, reached through eval_state().
extern EvalState the_eval_state;
inline EvalState& eval_state() { return the_eval_state; }
// End of the evaluation area in use: the console's area, or the private
// area of a text run by executer_texte.
inline word* eval_limit() { return eval_state().limit; }

// Runs compiled code (a -1021 bloc) with `base` as the first free word of
// the evaluation area. The value of the last statement is left at `base`
// (and *result points to it). Returns 0 on a normal end, negative on failure.
int interp(const word* code, word* base, word** result);

// Evaluates the group (or command) at `p` into `dest`; returns the cursor
// after it, or null on failure. *status receives EVAL_RETURN after `return`.
const word* evaluer_expr(const word* p, word* dest, int* status);
// The condition group at `p`, evaluated at `dest`: 1 true, 0 false, -1
// failure; *next receives the cursor after it.
int evaluer_cond(const word* p, word* dest, const word** next);

// Value behind an item: a variable token gives the variable's value (a
// NIL bloc is created for a variable with none), a value gives itself.
// Null when the item has no value form (reported with message 81 when
// `error` is on).
const word* get_evaluation(const word* item);

// Replaces the item at `at` by a plain value (variables copied,
// references collected, commands and calls run); returns 0 or negative.
int resolve_other(word* at, int* status);
inline int resolve_item(word* at, int* status) {
  if (at[0] > 0 && tag(at) == T_FLOAT) return 0;
  return resolve_other(at, status);
}

// Copies `n` words that may overlap; the one-float value, the commonest,
// is moved without a library call.
inline void move_words(word* dest, const word* src, int n) {
  if (n == 5) __builtin_memmove(dest, src, 5 * sizeof(word));
  else __builtin_memmove(dest, src, static_cast<unsigned long>(n) * sizeof(word));
}

// Checks that `words` more words fit at `at`; reports message 12 otherwise.
bool room(const word* at, long words);

// Runs a text as a console line ("{text}") on an evaluation area of its
// own, and copies the value it leaves into `value`; negative on failure.
int executer_texte(const char* text, std::vector<word>& value);

// Variable object of a variable token, or null.
inline bool is_variable_token(const word* item) {
  switch (item[0]) {
    case C_AUTO: case C_STATIC: case C_EXTERN: case C_GLOBAL: case C_FORMEL: return true;
    default: return false;
  }
}
inline Objet* token_variable(const word* item) { return is_variable_token(item) ? handle_objet(item[1]) : nullptr; }
