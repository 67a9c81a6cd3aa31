// The quick road for calls of pure scalar functions (see pure_call.cpp).
#pragma once
#include "kernel/objet.h"
#include "kernel/resources.h"
#include "kernel/word.h"
#include "language/quick_code.h"

// Runs `f` on the evaluated arguments at `args` (`count` items) when it is
// pure and they are one-element floats: 1 with its value in *result; 0
// when not tried; -1 when given up for a passing reason, -2 when `f`
// proved unfit. Nothing has changed unless 1 is returned.
int pure_call(Objet* f, const word* args, int count, float* result);

// True when the quick road may be taken at all: not while the debugger
// or the post-mortem copies watch calls, nor before calls are linked.
bool pure_calls_allowed();
// Sizes the table of verdicts to the handles made so far: done before a
// quick road starts, never while one runs (its verdicts are held).
void pure_calls_prepare();
// The pure function of handle `h` on `count` floats at `args`, run by a
// quick road already running at `depth` functions: its value in *r.
QuickOutcome pure_call_floats(word h, const float* args, int count, int depth, float* r);

// While one lives, pure_call tries nothing: the general road takes a
// call whose quick run was given up, down to its last nested call.
struct PureCallsOff {
  PureCallsOff();
  ~PureCallsOff();
  PureCallsOff(const PureCallsOff&) = delete;
  PureCallsOff& operator=(const PureCallsOff&) = delete;
};

// Calls nest through the C++ stack: a guard stops them well before it
// could run out, by depth and by the stack left (which differs between
// builds), keeping room for nested groups within the deepest call.
constexpr int MAX_DEPTH = 2000;
constexpr unsigned long CALL_STACK_KEPT = 1ul << 20;
// The guard of nested calls: true when one more function running at
// `depth` (functions already running) would exceed the limits.
inline bool call_too_deep(int depth) { return depth >= MAX_DEPTH || pile_epuisee(CALL_STACK_KEPT); }
