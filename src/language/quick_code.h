// Scalar expressions of compiled code decoded once into a short postfix
// program of floats, for the quick roads (the turns of a counted `for`,
// pure scalar functions). The decoder takes only groups whose every step
// is known to give one float when its operands are one float each; the
// program then runs without reading a token, and gives up, before any
// effect, at the first operand or result the general road must judge.
#pragma once
#include <cmath>
#include <vector>

#include "kernel/entier.h"

#include "kernel/word.h"
#include "language/operators.h"

enum QuickKind : word {
  // Leaves: push one float.
  Q_NUMBER,    // the float `value`
  Q_SLOT,      // the float of slot `arg` (a variable holding one float)
  Q_FORMAL,    // formal `arg` of the running pure function
  Q_ELEMENT,   // pop an index, push that element of vector slot `arg`
  Q_CALL,      // pop `arg` arguments, push the value of pure function `value` (a handle)
  // Operators: a op b in place of a, b being popped when `arg` is
  // RIGHT_ON_STACK, else the leaf of kind `arg` - 1 named by `value`.
  Q_DIVIDE,    // a divisor near 0 gives up
  Q_ADD, Q_SUB, Q_MUL, Q_LT, Q_GT, Q_LE, Q_GE, Q_EQ, Q_NE,
};
constexpr word RIGHT_ON_STACK = 0;

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

// The same for "v op= (operand)": slot `slot`, the base operator `op` of
// the compound, then the operand at `p`.
const word* quick_compound(int slot, word op, const word* p, QuickNames& names, std::vector<QuickOp>& out);

// The element an index `x` names in a vector of `length` elements, or -1
// when the general road must judge it: an index is the one-element list
// [x], which a non-finite x cannot make, truncated, and within range.
inline int quick_index(float x, int length) {
  if (!std::isfinite(x)) return -1;
  const int k = entier(x);
  return k >= 0 && k < length ? k : -1;
}

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

// The value of a leaf of kind Q_NUMBER, Q_SLOT or Q_FORMAL named by `v`.
[[gnu::always_inline]] inline float quick_leaf(word kind, word v, const QuickFrame& fr) {
  switch (kind) {
    case Q_NUMBER: return wf(v);
    case Q_SLOT: return wf(fr.slot[v][4]);
    default: return fr.formal[v];
  }
}

// a op b for an operator's kind in *r; false for a divisor near 0.
[[gnu::always_inline]] inline bool quick_apply(word kind, float a, float b, float* r) {
  switch (kind) {
    case Q_ADD: *r = a + b; return true;
    case Q_SUB: *r = a - b; return true;
    case Q_MUL: *r = a * b; return true;
    case Q_LT: *r = a < b ? 1.0f : 0.0f; return true;
    case Q_GT: *r = a > b ? 1.0f : 0.0f; return true;
    case Q_LE: *r = a <= b ? 1.0f : 0.0f; return true;
    case Q_GE: *r = a >= b ? 1.0f : 0.0f; return true;
    case Q_EQ: *r = a == b ? 1.0f : 0.0f; return true;
    case Q_NE: *r = a != b ? 1.0f : 0.0f; return true;
    default:
      if (near_zero(b)) return false;
      *r = a / b;
      return true;
  }
}

// Runs ops[0..n) and leaves the one value in *r. QUICK_UNFIT when a
// called function proved not pure, QUICK_LATER for any other reason to
// give up (an index out of range, a divisor near 0, a deep call).
QuickOutcome quick_run(const QuickOp* ops, int n, const QuickFrame& fr, float* r);

// The same, the commonest programs (a leaf, or a leaf and an operator
// whose right operand is a leaf) done in line.
[[gnu::always_inline]] inline QuickOutcome quick_eval(const QuickOp* ops, int n, const QuickFrame& fr, float* r) {
  if (n > 2 || ops[0].kind > Q_FORMAL || (n == 2 && (ops[1].kind < Q_DIVIDE || ops[1].arg == RIGHT_ON_STACK)))
    return quick_run(ops, n, fr, r);
  const float a = quick_leaf(ops[0].kind, ops[0].kind == Q_NUMBER ? ops[0].value : ops[0].arg, fr);
  if (n == 1) {
    *r = a;
    return QUICK_DONE;
  }
  return quick_apply(ops[1].kind, a, quick_leaf(ops[1].arg - 1, ops[1].value, fr), r) ? QUICK_DONE : QUICK_LATER;
}
