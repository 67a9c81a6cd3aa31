// The compiler: prepared text of a function, a local object or a console
// line becomes a compiled bloc (tag -1021) in the object's `code` field;
// the link step resolves calls and jumps in place.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

constexpr int KIND_FUNC = 48;     // `func` objects
constexpr int KIND_LOCAL = 69;    // `local` functions of scene objects
constexpr int KIND_CONSOLE = -1015;

// Compiles `obj`; 0 on success, negative after a report. Does nothing and
// returns 0 when the `compile` switch is below 1.
int a_compile(Objet* obj);
// Compiles when there is no code, then links calls and jumps.
int lier_fonction(Objet* obj);
// Compiles every function, then links every function; negative when one failed.
int compiler_tout();
int lier_tout();

// Prints a compiled stream: level 1 as source-like text, 2 with the kinds
// of the variable tokens; `linked` prints jumps and record offsets.
// `stream` is the first token; `table` the symbol table of the code.
void lister_code(const word* stream, const word* table, int level, bool linked);
