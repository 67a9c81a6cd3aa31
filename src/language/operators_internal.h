// Shared pieces of the operator files: operand kinds and counts, float
// truncation as the machine does it, and the failure reports.
#pragma once
#include <cstring>

#include "kernel/entier.h"
#include "kernel/values.h"
#include "kernel/word.h"

// Kind of an operand: its tag, T_NIL for the two-word NIL token, 0 for
// anything that is not a value bloc.
inline word value_kind(const word* v) {
  if (v[0] == T_NIL) return T_NIL;
  return v[0] >= 4 ? v[1] : 0;
}

// Failure reports, printed only when `error` is on. Each returns the
// status to hand back: -12 for the evaluation area, -1 otherwise. The
// operators check their room with `fits` and report through these, then
// write headers with build_head.
int ops_overflow();
int ops_fault(int num);
int ops_illegal(const word* culprit);
int ops_unknown();

// True when [dest, dest + words) fits below `limit`.
inline bool fits(const word* dest, long words, const word* limit) {
  return limit - dest >= words;
}


int eval_list(const word* left, const word* right, word* dest, const word* limit);
int eval_vector(const word* left, word op, const word* right, word* dest, const word* limit);
