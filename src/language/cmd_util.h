// Small helpers shared by the command handlers: writing a FLOAT result
// in place of the record, and a few more. Arguments are read by args.h.
#pragma once
#include <string>
#include <vector>

#include "kernel/word.h"
#include "language/args.h"
#include "language/commands.h"

// Writes a FLOAT of `np` elements of width `width` in place of the
// record; -12 after message 12 when it does not fit.
int set_result_floats(word* record, const word* limit, const std::vector<float>& f, int width = 1);
// Writes a CHAR; an empty text gives NIL.
int set_result_text(word* record, const std::string& s);
// "keyword name NOT FOUND" for a name that names nothing.
void not_found(int code, const char* name);
// Blank, tab or comma separated words of a text.
std::vector<std::string> split_words(const char* s);
