// Small helpers shared by the command handlers. Arguments are read by
// args.h, results written by the builders of kernel/values.h.
#pragma once
#include <string>
#include <vector>

#include "kernel/word.h"
#include "language/args.h"
#include "language/commands.h"

// "keyword name NOT FOUND" for a name that names nothing.
void not_found(int code, const char* name);
// Blank, tab or comma separated words of a text.
std::vector<std::string> split_words(const char* s);
