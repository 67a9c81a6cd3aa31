// The phases of the parenthesising, each copying a whole stream.
#pragma once
#include "language/compile_internal.h"

// Statements wrapped, control words expanded.
int phase_statements(Compilation& c, const Tokens& in, Tokens& out);
// Calls and commands given their argument groups.
int phase_arguments(Compilation& c, const Tokens& in, Tokens& out);
// Every group rewritten to binary form by precedence.
int phase_precedence(Compilation& c, const Tokens& in, Tokens& out);
