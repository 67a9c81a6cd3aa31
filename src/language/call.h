// Calls of user functions.
#pragma once
#include <cstddef>

#include "kernel/objet.h"
#include "kernel/word.h"

// Runs the call record (or `func` formal token) at `p` with its argument
// groups, leaving the value at `dest`; the cursor after the groups, or null.
const word* call_function(const word* p, word* dest, int* status);
// A formal declared `func`: the command or function it was given.
const word* call_command_formal(const word* p, word* dest, bool lvalue, int* status);
// Runs a function object (a `func` or a local function of a scene
// object), its value left at `dest` on the evaluation area; `arg`, when
// not null, is its one argument. 0, or negative after a report.
int run_function_object(Objet* f, word* dest, const float* arg = nullptr);
// The same outside any console line (the image cycle), on an evaluation
// area of its own that is made once and reused; a call from within such a
// run gets a fresh area.
int run_function_apart(Objet* f, const float* arg = nullptr);
// The same with one FLOAT argument of n elements; the first `nout`
// elements of the value go to `out` (0 past its end or for another kind).
int run_function_vector(Objet* f, const float* arg, int n, float* out, int nout);
// The same with two arguments, a number and a text (`len` bytes); the
// first element of a FLOAT value goes to `out` (0 for another kind).
int run_function_number_text(Objet* f, float a, const char* s, size_t len, float* out);
// The same with one argument of any kind, a whole value copied.
int run_function_value(Objet* f, const word* arg);
// Restores every saved frame (after an abandoned line).
void unwind_frames();
