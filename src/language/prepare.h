// Source preparation, the first compile pass: from a function's source or
// a console text to one NUL-terminated prepared text, with comments gone,
// includes, aliases and macros expanded, labels numbered, `case`, `default`,
// `auto`, `++` and `--` rewritten, and every source line still known
// through line marks (language/lexer.h).
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Words of the work area: past this size a compile that still overflows
// is refused with OVERFLOW instead of doubling again.
constexpr int DIM_COM_MAX = 1 << 28;

// Writes the prepared text of `obj` from word 4 of `work` on, never at or
// past `limit`, and stores in work[0] the words used. Returns 0, or a
// negative value: with *status -1 the area was too small (double it and
// start again; that is no error), with *status 0 an error was reported.
int compile_passe_1(Objet* obj, bloc work, word* limit, int* status);

// Where a compile failed: "func name line n" (line 0 for a console text),
// then the source line between two rules, with as many lines of context
// on each side as the value of `error` when it is 1 or more.
void report_compile_line(const Objet* obj, int line);

// The names that #ifdef tests. A compile adds its #define names only when
// it succeeds, so they are seen from the next compile on.
bool nom_defini(const char* name);
int ajouter_nom_defini(const char* name);
void vider_noms_definis();
