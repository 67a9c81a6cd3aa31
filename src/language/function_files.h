// Functions kept in text files: "name.func" loaded on demand, `read func`
// and `write func`.
#pragma once
#include <string>
#include <vector>

#include "kernel/objet.h"

// One function of a text: its source and the comments above it.
struct FunctionPiece {
  std::string source;
  std::string comment;
};
// Cuts a text into its functions; how many, or -1 after the bracket
// message for an unclosed "{".
int function_pieces(const std::string& text, std::vector<FunctionPiece>& pieces);
// The comments a file gives above a function go with it.
void keep_function_comment(const std::string& name, const std::string& comment);
// Defines every function of a text (one or more "name(formals){...}",
// comments allowed between them); returns how many, or -1 after a report.
// `from_file`: the text is a file's, so the functions are saved as they are.
// `check`: each is compiled once at once, so that its mistakes are told.
int define_functions(const std::string& text, bool from_file = false, bool check = true);
// Reads a file of functions; -1 after a report.
int read_functions_file(const std::string& path);
// Writes the named functions (all when `names` is empty) to a file; they
// are marked saved once the file is complete.
int write_functions_file(const std::vector<std::string>& names, const std::string& path);
// True when a function was defined or changed and is in no file since.
bool functions_unsaved();
// Writes those functions to a file; false after the message.
bool write_unsaved_functions(const std::string& path);
// Loads "name.func" from the working folder, then from the functions
// folder (option `fun=`); the function, or null.
Objet* load_function_from_disk(const char* name);
