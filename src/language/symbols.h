// Symbol tables of the compiler: a word list of entries ended by a zero
// word. An entry's kind is a code of the compiled stream (C_LABEL,
// C_MACRO, R_UNDEFINED for a call, C_FORMEL, C_STATIC). An entry is
//   [word count, kind, ordinal (stored as 0 or below), function handle,
//    name words + 2, name bytes (NUL-ended, padded to a word) ...]
// optionally followed by a value bloc. A macro entry (kind C_MACRO) has
// 2 as its third word, and its name is followed by a length word and the
// replacement text. An entry's ordinal is its position among all entries,
// counted from 0.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"
#include "language/code.h"

struct Symboles {
  bloc table = nullptr;  // the words; table[0] == 0 when empty
  int capacity = 0;      // words allocated
  int used = 0;          // words before the final zero
  int count = 0;         // entries
};

// Allocates `capacity` words with a zero first word; -1 on failure.
int symb_ini(Symboles* s, int capacity);
void symb_free(Symboles* s);
// Adds an entry; returns its ordinal, or -1 after a report (a name that
// begins with "+" or "-" is refused with message 60). A table that fills
// is doubled in place, reported as a reallocation when `edit` is above 1.
int symb_add(Symboles* s, int kind, const char* name, const word* value = nullptr, Objet* function = nullptr);
int symb_add_macro(Symboles* s, const char* name, const char* replacement);
// Ordinal of the first entry of that kind (0 for any) and name, or -1.
int symb_find(const Symboles* s, int kind, const char* name);
// Entry of an ordinal, or null.
word* symb_entry(const Symboles* s, int ordinal);
inline word symb_kind(const word* e) { return e[1]; }
const char* symb_name(const word* e);
// Replacement text of a macro entry.
const char* symb_macro_text(const word* e);
// Value bloc behind the name, or null.
bloc symb_value(word* e);
