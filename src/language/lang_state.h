// State of the language layer that outlives one compile or one line.
#pragma once
#include <string>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "language/symbols.h"

struct LanguageState {
  int Dim_com = 200000;         // words of a compile work buffer; doubles on overflow
  int symbol_capacity = 200000; // words a symbol table starts with; keeps its doublings
  Symboles macros_globales;     // macros defined outside any function
  // Names tested by #ifdef: entries [word count, name bytes], zero-ended.
  bloc defined_names = nullptr;
  int defined_capacity = 0;
  // Alias table, lines "name=replacement"; used when `alias` is on.
  std::string alias_text;
  bool alias_exists = false;

  int listing = 0;              // compile listing level (0 off, 1 source-like, 2 with kinds)
  int listing_link = 0;         // listing after linking
  int compile_failed = 0;       // -1 after a failed function compile
  int link_state = 0;           // 1 linked, -1 failed
  int function_serial = 0;      // numbers given to compiled functions
  Objet* running_function = nullptr;  // the function being executed, if any
  std::vector<Objet*> extern_list;    // extern declarations of this compile
  // Runs the initial text of a `static` at compile time, storing its value
  // (a new heap bloc) in *value; installed by the interpreter.
  int (*static_runner)(const char* text, bloc* value) = nullptr;
  int system_value = 0;         // set by `system(n)`
  // Runs the functions of the exec schedule; installed by the cycle.
  int (*run_schedule)() = nullptr;
  // The object whose `global` variables a `local` function sees, or null.
  Objet* (*local_root)(Objet* local_function) = nullptr;
};

// The one state of the language layer, reached through lang().
extern LanguageState the_language_state;
inline LanguageState& lang() { return the_language_state; }
