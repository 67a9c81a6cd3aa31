// Function objects: kind `func` (48), subkind 0, whose `local` holds the
// source text as a CHAR value ("name(formals){ ... }") and whose `code`
// holds the compiled form.
#pragma once
#include <string>

#include "kernel/objet.h"
#include "kernel/word.h"

// The function of that name: its source text cut at the first "(".
Objet* get_fonction(const char* name);
// Source text of a function or local object, or null.
const char* source_of(const Objet* o);
// The name at the head of a source text: up to "(" or a blank.
std::string function_name(const char* source);
// A CHAR value holding a copy of the source text, or null.
bloc source_value(const char* source);
// Creates or replaces the function whose source is `text` (its name is the
// text up to the first "("); the old code is released. Null on failure.
// A function read from a file is saved as it stands; one given otherwise
// is unsaved work unless its text is the one it already had.
Objet* define_function(const char* text, bool from_file = false);
// True when the name is a keyword of a loaded vocabulary: a call by that
// name runs the keyword, never the function.
bool nom_mot_cle(const char* name);
// A new definition is compiled once at once, so that its mistakes (a
// keyword for a name, a text that does not compile) are told then; the
// function is kept either way, and compiled for use at its first call.
void check_definition(Objet* f);
// The report of a function name that names nothing: `func`, the name and
// "NOT FOUND".
void err_fonction_inconnue(const char* name);
