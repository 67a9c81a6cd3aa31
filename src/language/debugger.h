// The debugger: stopping points set by `STOP("f",line)` hand the console
// to the user inside the running function (its variables in reach) until
// `GO`; with `debug` on, each function entry is traced.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// At a line of a running function: holds the dialogue when a stopping
// point is set there. `area` is free evaluation space for typed lines.
void debug_line(int line, word* area);
// At the entry of a function, with `debug` above 0 and not 2.
void debug_entry(const Objet* f);
// True when stopping points exist (a cheap test for the run loop).
bool debug_points_set();
