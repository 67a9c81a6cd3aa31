// Small helpers shared by the command handlers: reading an argument as
// floats or text, and writing a FLOAT result in place of the record.
#pragma once
#include <string>
#include <vector>

#include "kernel/word.h"
#include "language/commands.h"

// Element count of a flat value (np times the element width); 0 for null.
inline int value_elements(const word* v) { return v ? np(v) * (dimp(v) > 0 ? dimp(v) : 1) : 0; }

// The first item's argument, or null.
inline const word* command_argument(word* record) { return item_value(first_item(record)); }

// The floats of a FLOAT value; false for any other kind.
inline bool value_floats(const word* v, std::vector<float>& out) {
  if (!v || tag(v) != T_FLOAT) return false;
  out.clear();
  for (int i = 0; i < value_elements(v); i++) out.push_back(getf(v, i));
  return true;
}

// The text of a CHAR value, or null.
inline const char* value_text(const word* v) { return v && tag(v) == T_CHAR ? text(v) : nullptr; }

// Writes a FLOAT of `np` elements of width `width` in place of the
// record; -12 after message 12 when it does not fit.
int set_result_floats(word* record, const word* limit, const std::vector<float>& f, int width = 1);
// Writes a CHAR; an empty text gives NIL.
int set_result_text(word* record, const std::string& s);
// "keyword name NOT FOUND" for a name that names nothing.
void not_found(int code, const char* name);
// Blank, tab or comma separated words of a text.
std::vector<std::string> split_words(const char* s);
