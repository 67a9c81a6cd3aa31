// Scalar expressions of compiled code decoded once into a short postfix
// program of floats, for the quick roads (the turns of a counted `for`,
// pure scalar functions). The decoder takes only groups whose every step
// is known to give one float when its operands are one float each; the
// program then runs without reading a token, and gives up, before any
// effect, at the first operand or result the general road must judge.
#pragma once
#include <vector>

#include "kernel/word.h"

enum QuickKind : word {
  Q_NUMBER,    // push the float `value`
  Q_SLOT,      // push the float of slot `arg` (a variable holding one float)
  Q_FORMAL,    // push formal `arg` of the running pure function
  Q_ELEMENT,   // pop an index, push that element of vector slot `arg`
  Q_DIVIDE,    // pop b and a, push a / b; a divisor near 0 gives up
  Q_CALL,      // pop `arg` arguments, push the value of pure function `value` (a handle)
  // The operators of scalar_op have kinds of their own (quick_code.cpp).
};

struct QuickOp {
  word kind;
  word arg;
  word value;
};

// Deepest stack a decoded expression may need.
constexpr int QUICK_STACK = 32;

// How the decoder names variables: a slot number for the variable token at
// `t` read as one float (`vector` false) or indexed as a FLOAT vector, or
// -1 when this road does not take it.
struct QuickNames {
  virtual int slot(const word* t, bool vector) = 0;
  virtual bool formals() const { return false; }  // variables are formals (Q_FORMAL)
};

// Decodes the operand at `p` (a number, PI, a variable, a group "( a )" or
// "( a op b )", an indexed variable, a call of a linked function) onto
// `out`; the cursor after it, or null when it is not such an operand.
const word* quick_operand(const word* p, QuickNames& names, std::vector<QuickOp>& out);

// What running a program gave.
enum QuickOutcome { QUICK_DONE, QUICK_UNFIT, QUICK_LATER };

// The values a program reads: slots (value blocs of one float, or FLOAT
// vectors of `length` elements), formals, and the depth of pure calls.
struct QuickFrame {
  word* const* slot = nullptr;
  const int* length = nullptr;
  const float* formal = nullptr;
  int depth = 0;
};

// Runs ops[0..n) and leaves the one value in *r. QUICK_UNFIT when a
// called function proved not pure, QUICK_LATER for any other reason to
// give up (an index out of range, a divisor near 0, a deep call).
QuickOutcome quick_run(const QuickOp* ops, int n, const QuickFrame& fr, float* r);
