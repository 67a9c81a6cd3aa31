// The quick road for calls of pure scalar functions (see pure_call.cpp).
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Runs `f` on the evaluated arguments at `args` (`count` items) when it is
// pure and they are one-element floats: 1 with its value in *result; 0
// when not tried; -1 when given up for a passing reason, -2 when `f`
// proved unfit. Nothing has changed unless 1 is returned.
int pure_call(Objet* f, const word* args, int count, float* result);

// While one lives, pure_call tries nothing: the general road takes a
// call whose quick run was given up, down to its last nested call.
struct PureCallsOff {
  PureCallsOff();
  ~PureCallsOff();
  PureCallsOff(const PureCallsOff&) = delete;
  PureCallsOff& operator=(const PureCallsOff&) = delete;
};

// The guard of nested calls: true when one more function running at
// `depth` (functions already running) would exceed the limits.
bool call_too_deep(int depth);
