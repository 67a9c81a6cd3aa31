// Operators on two FLOAT vectors. The operator is chosen once; each one is
// a functor run by a loop written out for the case of equal lengths and
// for each side being the shorter, the shorter restarting from its start
// at every pass over the longer.
#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/vocab.h"
#include "language/code.h"
#include "language/operators.h"
#include "language/operators_internal.h"

namespace {

// Element operators. `bad` tells a divisor that faults (message 56).
struct NoFault {
  bool bad(float) const { return false; }
};
struct Add : NoFault {
  float operator()(float a, float b) const { return a + b; }
};
struct Sub : NoFault {
  float operator()(float a, float b) const { return a - b; }
};
struct Mul : NoFault {
  float operator()(float a, float b) const { return a * b; }
};
struct Div {
  bool bad(float b) const { return near_zero(b); }
  float operator()(float a, float b) const { return a / b; }
};
// A divisor of magnitude below 1 truncates to 0: a fault as well.
struct Mod {
  bool bad(float b) const { return near_zero(b) || entier(b) == 0; }
  float operator()(float a, float b) const {
    const int d = entier(b);
    return d == -1 ? 0.f : static_cast<float>(entier(a) % d);
  }
};
// exp(b log a) with b log a held to [-11350, 43], without testing a.
float raw_pow(float a, float b) {
  float e = b * std::log(a);
  if (e < -11350.f) e = -11350.f;
  if (e > 43.f) e = 43.f;
  return std::exp(e);
}
struct Pow : NoFault {
  float operator()(float a, float b) const { return a > 0.f ? raw_pow(a, b) : 0.f; }
};
struct BitAnd : NoFault {
  float operator()(float a, float b) const {
    return static_cast<float>(entier(a) & entier(b));
  }
};
struct BitOr : NoFault {
  float operator()(float a, float b) const {
    return static_cast<float>(entier(a) | entier(b));
  }
};
struct Shl : NoFault {
  float operator()(float a, float b) const {
    const unsigned x = static_cast<unsigned>(entier(a));
    return static_cast<float>(static_cast<int>(x << (entier(b) & 31)));
  }
};
struct Shr : NoFault {
  float operator()(float a, float b) const {
    return static_cast<float>(entier(a) >> (entier(b) & 31));
  }
};
float truth(bool t) { return t ? 1.f : 0.f; }
struct Lt : NoFault {
  float operator()(float a, float b) const { return truth(a < b); }
};
struct Gt : NoFault {
  float operator()(float a, float b) const { return truth(a > b); }
};
struct Le : NoFault {
  float operator()(float a, float b) const { return truth(a <= b); }
};
struct Ge : NoFault {
  float operator()(float a, float b) const { return truth(a >= b); }
};
struct Eq : NoFault {
  float operator()(float a, float b) const { return truth(a == b); }
};
struct Ne : NoFault {
  float operator()(float a, float b) const { return truth(a != b); }
};
struct Near : NoFault {
  float precision;
  float operator()(float a, float b) const { return truth(std::fabs(a - b) <= precision); }
};

struct Vec {
  const word* d;  // first element
  int n;
};

Vec vec(const word* v) { return {v + 4, elements(v)}; }

constexpr int FAULT = -56;

// r[i] = op(a[i], b[i]) for i < n.
template <class Op>
int run_equal(const Op& op, const word* a, const word* b, word* r, int n) {
  for (int i = 0; i < n; i++) {
    const float y = wf(b[i]);
    if (op.bad(y)) return FAULT;
    r[i] = fw(op(wf(a[i]), y));
  }
  return 0;
}

// a[0] against each b[i]: the whole passes of ^ with a shorter left.
int run_first_pow(float a0, const word* b, word* r, int n) {
  for (int i = 0; i < n; i++) r[i] = fw(raw_pow(a0, wf(b[i])));
  return 0;
}

// Shorter on the right: whole passes with `op`, the tail with `tail`.
template <class Op, class Tail>
int run_right_short(const Op& op, const Tail& tail, Vec a, Vec b, word* r) {
  int i = 0;
  for (; a.n - i >= b.n; i += b.n)
    if (run_equal(op, a.d + i, b.d, r + i, b.n) < 0) return FAULT;
  return run_equal(tail, a.d + i, b.d, r + i, a.n - i);
}

// Shorter on the left, likewise.
template <class Op, class Tail>
int run_left_short(const Op& op, const Tail& tail, Vec a, Vec b, word* r) {
  int i = 0;
  for (; b.n - i >= a.n; i += a.n)
    if (run_equal(op, a.d, b.d + i, r + i, a.n) < 0) return FAULT;
  return run_equal(tail, a.d, b.d + i, r + i, b.n - i);
}

// Kept behaviour: with the shorter on the left, every whole pass of ^
// takes the left's first element as the base, untested; the tail goes
// back to the left's start with the usual test.
int pow_left_short(Vec a, Vec b, word* r) {
  const int whole = b.n / a.n * a.n;
  run_first_pow(wf(a.d[0]), b.d, r, whole);
  return run_equal(Pow{}, a.d, b.d + whole, r + whole, b.n - whole);
}

template <class Op, class Tail = Op>
int zip(const Op& op, Vec a, Vec b, word* r, const Tail& tail = Tail{}) {
  if (a.n == b.n) return run_equal(op, a.d, b.d, r, a.n);
  if (a.n > b.n) return run_right_short(op, tail, a, b, r);
  return run_left_short(op, tail, a, b, r);
}

// && and || on truncated values, short-circuit per element: the left
// cursor moves at every element, the right one only when its element is
// examined, that is when the left element does not decide. After such a
// decision the right lags behind and the vectors go out of step; this is
// the language's behaviour and is kept. The shorter side restarts at each
// pass; a longer right keeps its lagging cursor across passes.
template <bool And>
void run_logic(Vec a, Vec b, word* r) {
  const int n = std::max(a.n, b.n), s = std::min(a.n, b.n);
  int ia = 0, ib = 0;
  for (int start = 0; start < n; start += s) {
    if (a.n == s) ia = 0;
    if (b.n == s) ib = 0;
    const int end = std::min(start + s, n);
    for (int i = start; i < end; i++) {
      const bool x = entier(wf(a.d[ia++])) != 0;
      const bool v = x != And ? x : entier(wf(b.d[ib++])) != 0;
      r[i] = fw(truth(v));
    }
  }
}

float precision() {
  const float* p = vocab().current[KW_precision];
  return p && vocab().dim[KW_precision] > 0 ? p[0] : 0.1f;
}

// Element by element into r; 0 or FAULT on a divisor. The operator is
// known to be one of these.
int elementwise(word op, Vec a, Vec b, word* r) {
  switch (op) {
    case '+': return zip(Add{}, a, b, r);
    case '-': return zip(Sub{}, a, b, r);
    case '*': return zip(Mul{}, a, b, r);
    case '/': return zip(Div{}, a, b, r);
    case '%': return zip(Mod{}, a, b, r, Div{});  // kept: the tail divides
    case '^': return a.n < b.n ? pow_left_short(a, b, r) : zip(Pow{}, a, b, r);
    case '&': return zip(BitAnd{}, a, b, r);
    case '|': return zip(BitOr{}, a, b, r);
    case O_SHL: return zip(Shl{}, a, b, r);
    case O_SHR: return zip(Shr{}, a, b, r);
    case '<': return zip(Lt{}, a, b, r);  // a shorter left repeats like the others
    case '>': return zip(Gt{}, a, b, r);
    case O_LE: return zip(Le{}, a, b, r);
    case O_GE: return zip(Ge{}, a, b, r);
    case O_EQ: return zip(Eq{}, a, b, r);
    case O_NE: return zip(Ne{}, a, b, r);
    case O_TILDE: return zip(Near{{}, precision()}, a, b, r);
    case O_AND: run_logic<true>(a, b, r); return 0;
    default: run_logic<false>(a, b, r); return 0;  // O_OR
  }
}

// 1 when op holds for every pair.
template <class Op>
bool all_pairs(const Op& op, Vec a, Vec b) {
  for (int i = 0; i < a.n; i++)
    if (op(wf(a.d[i]), wf(b.d[i])) == 0.f) return false;
  return true;
}

bool reduces(word op) {
  return op == O_EQ || op == O_NE || op == O_LE || op == O_GE || op == O_TILDE;
}

bool reduce(word op, Vec a, Vec b) {
  switch (op) {
    case O_EQ: return all_pairs(Eq{}, a, b);
    case O_NE: return !all_pairs(Eq{}, a, b);
    case O_LE: return all_pairs(Le{}, a, b);
    case O_GE: return all_pairs(Ge{}, a, b);
    default: return all_pairs(Near{{}, precision()}, a, b);
  }
}

// A reducing comparison on equal lengths: one element, in a bloc that
// keeps the n + 4 words of the vector form (at least 5), the words after
// the element set to 0.
int eval_reduced(word op, Vec a, Vec b, word* dest, const word* limit) {
  const int words = 4 + std::max(a.n, 1);
  if (!fits(dest, words, limit)) return ops_overflow();
  build_head(dest, words, T_FLOAT, 1);
  std::fill(dest + 5, dest + words, 0);
  dest[4] = fw(truth(reduce(op, a, b)));
  return 0;
}

}  // namespace

int eval_vector(const word* left, word op, const word* right, word* dest, const word* limit) {
  const Vec a = vec(left), b = vec(right);
  if (a.n == b.n && reduces(op)) return eval_reduced(op, a, b, dest, limit);
  const int n = std::max(a.n, b.n);
  if (!fits(dest, 4 + n, limit)) return ops_overflow();
  build_head(dest, 4 + n, T_FLOAT, n);
  word* r = dest + 4;
  if (std::min(a.n, b.n) == 0) {  // empty against non-empty: zeros
    std::fill(r, r + n, fw(0.f));
    return 0;
  }
  if (elementwise(op, a, b, r) == FAULT) {  // the result is cleared to an empty vector
    build_head(dest, 4, T_FLOAT, 0);
    return ops_fault(MES_DIVISION_BY_ZERO);
  }
  return 0;
}
