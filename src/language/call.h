// Calls of user functions.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Runs the call record (or `func` formal token) at `p` with its argument
// groups, leaving the value at `dest`; the cursor after the groups, or null.
const word* call_function(const word* p, word* dest, int* status);
// A formal declared `func`: the command or function it was given.
const word* call_command_formal(const word* p, word* dest, bool lvalue, int* status);
// Runs a function object (a `func` or a local function of a scene
// object) with no argument, its value left at `dest` on the evaluation
// area. 0, or negative after a report.
int run_function_object(Objet* f, word* dest);
// Restores every saved frame (after an abandoned line).
void unwind_frames();
