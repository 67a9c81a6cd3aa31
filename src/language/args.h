// Reading a command's arguments: the one reader every handler uses, from
// the interpreter's commands up to the scene, display and image ones.
// A command record holds items [size, class, keyword code, value]; the
// value of a word is the value of its first item.
//
// Numbers are read by one rule: the elements of a FLOAT, those of a LONG
// converted, and in a HYBRIDE the numbers of its FLOAT and LONG parts in
// order; any other kind has none. The buffer forms allocate nothing.
#pragma once
#include <vector>

#include "kernel/word.h"
#include "language/commands.h"

// The first item's value, or null.
inline const word* command_argument(word* record) { return item_value(first_item(record)); }
// The value of the first item of word `code`, or null (also when absent).
inline const word* arg_of(word* s, int code) {
  word* it = find_item(s, code);
  return it ? item_value(it) : nullptr;
}
inline bool has_word(word* s, int code) { return find_item(s, code) != nullptr; }
// How many items of word `code` the command has.
inline int word_count(word* s, int code) {
  int n = 0;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) n += item[2] == code;
  return n;
}
// The keyword code of the second word, or 0 when the command has one word.
inline int second_word(word* s) { return item_count(s) > 1 ? next_item(first_item(s))[2] : 0; }

// Up to n numbers of a value into out; the count read. The entries past
// it keep what the caller put there.
int floats_of(const word* v, float* out, int n);
// All the numbers of a value.
std::vector<float> floats_of(const word* v);
// Number i of a value, `dflt` when it has none such.
float value_at(const word* v, int i, float dflt = 0);
// The text of a CHAR value, or null.
inline const char* value_text(const word* v) { return v && tag(v) == T_CHAR ? text(v) : nullptr; }

// The same for the value of word `code` in the command.
inline int arg_floats(word* s, int code, float* out, int n) { return floats_of(arg_of(s, code), out, n); }
// `present` tells whether the word was given at all, with or without a value.
std::vector<float> arg_floats(word* s, int code, bool* present = nullptr);
// The numbers of every item of word `code`, in order.
std::vector<std::vector<float>> arg_floats_all(word* s, int code);
// Number i of the word, `dflt` when it has none such.
float arg_float(word* s, int code, float dflt, int i = 0);
// The same as an integer, through `entier`.
int arg_int(word* s, int code, int dflt, int i = 0);
// All the numbers of the word as integers, through `entier`.
std::vector<int> arg_ints(word* s, int code);
inline const char* arg_text(word* s, int code) { return value_text(arg_of(s, code)); }
