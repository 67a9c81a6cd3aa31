// The turns of a counted `for` whose body is made only of scalar
// statements (assignments of scalar expressions to variables holding one
// float or to elements of FLOAT vectors, `++` and `--`), run from a form
// decoded once, with the variables checked once before the turns rather
// than at every read. A statement the quick road cannot finish is left,
// before any effect, to the general road at its first token.
#pragma once
#include <vector>

#include "kernel/word.h"
#include "language/quick_code.h"

enum QuickStatementKind : word {
  QS_SET,          // slot = value
  QS_SET_ELEMENT,  // slot[index] = value
  QS_STEP,         // slot += delta, its value the old one when postfix
  QS_LINE,         // a source line
};

struct QuickStatement {
  word kind;
  int offset = 0;               // its first token, from the loop's record
  int slot = 0;                 // the variable written
  int first = 0, count = 0;     // ops of the value
  int index_first = 0, index_count = 0;  // ops of the index
  float delta = 0.0f;
  bool postfix = false;
  word line = 0;
};

// Variables a quick body may name.
constexpr int QUICK_SLOTS = 16;

struct QuickLoop {
  std::vector<word> body;  // the tokens it was decoded from
  bool fit = false;
  bool calls = false;      // it calls functions
  std::vector<QuickOp> ops;
  std::vector<QuickStatement> statements;
  std::vector<word> slot;    // handles of the variables
  std::vector<char> vector;  // 1 for a variable indexed as a vector
};

// The decoded body of the counted `for` at record `r`, kept while its
// tokens stay the same; null when the body has no end.
const QuickLoop* quick_loop_of(const word* r);

// Runs the turns of the loop at `r` on the quick road, starting with the
// step that follows a turn of its body, `counter` being its variable's
// value. The cursor where the general road goes on: past the loop, at a
// statement it must run, or at `r` for an interrupt; null when the quick
// road is not taken at all (a variable does not hold what the body reads
// it as). *why tells QUICK_UNFIT when a called function proved not pure,
// QUICK_LATER when the road was not taken. The value of the last
// statement run is left at `base`, as the general road leaves it.
const word* quick_turns(const QuickLoop& q, const word* r, word* counter, float end, float step, word* base,
                        QuickOutcome* why);
