// Shared pieces of the operator files: operand kinds and counts, float
// truncation as the machine does it, and the failure reports.
#pragma once
#include <climits>
#include <cstring>

#include "kernel/word.h"

// Kind of an operand: its tag, T_NIL for the two-word NIL token, 0 for
// anything that is not a value bloc.
inline word value_kind(const word* v) {
  if (v[0] == T_NIL) return T_NIL;
  return v[0] >= 4 ? v[1] : 0;
}

// Elements of a FLOAT: np points of dimp words (dimp below 1 read as 1),
// never more than the data words the bloc holds.
inline int float_count(const word* v) {
  const long n = static_cast<long>(v[2]) * (v[3] > 0 ? v[3] : 1);
  if (n <= 0) return 0;
  return n < v[0] - 4 ? static_cast<int>(n) : v[0] - 4;
}

// Text length of a CHAR, never reading past its bloc.
inline size_t char_length(const word* v) {
  return strnlen(text(v), static_cast<size_t>(v[0] - 4) * sizeof(word));
}

// Truncation toward zero; out of range and NaN give INT_MIN, the value the
// processor's own conversion yields.
inline int trunc_int(float x) {
  return x >= -2147483648.f && x < 2147483648.f ? static_cast<int>(x) : INT_MIN;
}

// Failure reports, printed only when `error` is on. Each returns the
// status to hand back: -12 for the evaluation area, -1 otherwise.
int ops_overflow();
int ops_fault(int num);
int ops_illegal(const word* culprit);
int ops_unknown();

// True when [dest, dest + words) fits below `limit`.
inline bool fits(const word* dest, long words, const word* limit) {
  return limit - dest >= words;
}

// Writes a header with dimp 1.
inline void put_head(word* d, word size, word tag, word np) {
  d[0] = size;
  d[1] = tag;
  d[2] = np;
  d[3] = 1;
}

int eval_list(const word* left, const word* right, word* dest, const word* limit);
int eval_vector(const word* left, word op, const word* right, word* dest, const word* limit);
