// Reading a command's items: the value of a word, its floats with
// defaults, its text. Shared by the window, view, light and display
// commands.
#pragma once
#include <algorithm>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "language/cmd_util.h"
#include "language/commands.h"

// The value of the first item of that word, or null (also when absent).
inline const word* arg_of(word* s, int code) {
  word* it = find_item(s, code);
  return it ? item_value(it) : nullptr;
}
inline bool has_word(word* s, int code) { return find_item(s, code) != nullptr; }

// Up to n floats of a FLOAT or LONG value into out; the count read. The
// entries past it keep what the caller put there.
int floats_into(const word* v, float* out, int n);
// Element i of a FLOAT or LONG value, `dflt` past its end or for any
// other kind.
float value_at(const word* v, int i, float dflt = 0);
// The same for the first item of that word.
inline int arg_floats(word* s, int code, float* out, int n) { return floats_into(arg_of(s, code), out, n); }
// The objects that the first item of that kind word names, found in the
// kind's chain; names of nothing are left out.
std::vector<Objet*> nommes(word* s, int kind);
// Of the value, element i as an integer, or `dflt`.
int arg_int(word* s, int code, int i, int dflt);
