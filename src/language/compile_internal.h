// Shared by the stages of the compiler.
#pragma once
#include <string>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "language/code.h"
#include "language/symbols.h"

using Tokens = std::vector<word>;

// State of one compile.
struct Compilation {
  Objet* obj = nullptr;
  Objet* owner = nullptr;     // where variables are resolved and created
  bool console = false;       // a console line (not a function)
  Symboles* sym = nullptr;    // entries of calls, formals, statics, locals
  int line = 0;               // last line passed, for reports
  bool failed = false;
};

// The walk over prepared text: appends tokens to `out`; negative on failure.
int compile_walk(Compilation& c, const char* text, Tokens& out);
// The three phases of parenthesising, in place; negative on failure.
int set_parenthese(Compilation& c, Tokens& code);
// Replaces "((" ... "))" pairs of one group by a single pair.
void remove_redundant(Tokens& code);

// Walking helpers.
inline size_t next_token(const Tokens& t, size_t i) { return i + token_len(&t[i]); }
inline bool oper_at(const Tokens& t, size_t i, word code) {
  return i + 1 < t.size() && t[i] == C_OPER && t[i + 1] == code;
}
bool is_open(const word* t);
bool is_close(const word* t);
// Where the groups of a stream end, found in one pass so that stepping
// over a group costs nothing however deep the nesting: for the index of
// an opening bracket, the index just past its matching close, or the
// stream's size when it has none. Valid while the brackets stay put.
class Groupes {
 public:
  explicit Groupes(const Tokens& t);
  size_t end(size_t i) const { return i < fin_.size() && fin_[i] ? fin_[i] : taille_; }

 private:
  std::vector<size_t> fin_;  // 0 for what is no opening bracket
  size_t taille_;
};
void emit2(Tokens& out, word a, word b);
void emit_oper(Tokens& out, word code);
// Reports a failure at the current line of the compile.
void compile_error(Compilation& c, int message);
// True, after the nesting report, when the stack is too short to descend
// into one more level of the text.
bool compile_too_deep(Compilation& c);
// Precedence of an operator code (0 for what is not a binary operator).
int precedence(word code);
