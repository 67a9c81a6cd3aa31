// Variables of the language: object records whose kind is the code of
// their declaration (C_FORMEL, C_AUTO, C_STATIC, C_EXTERN, C_GLOBAL, and
// C_TYPE_FUNC for a formal declared `func`; a formal declared `address`
// has the subkind C_AD_GLB, and a variable made a reference to another
// the kind T_ADDRESS), whose `local` holds the value, or null while the
// variable has none. Formals, statics and locals live in the private
// chain `locals` of their function.
#pragma once
#include "kernel/objet.h"
#include "language/code.h"

// The owner words (Objet::work) of a variable.
enum VariableWord {
  VAR_DECLARED = 5,  // the declared kind, while the kind is T_ADDRESS
  VAR_TARGET = 6,    // what it stands for once bound: the handle of the
                     // variable it refers to or of the function a formal
                     // holds, or the code of the command a formal names
};
// The owner words of a function: what its compilation found and what its
// calls do.
enum FunctionWord {
  FN_FORMALS = 0,        // the formal count
  FN_FAIL_LINE = 1,      // the line of the last failure
  FN_ADDRESS = 2,        // 1 when a formal is declared `address`
  FN_REFERENCES = 3,     // 1 while a formal refers to a caller's variable
};

// The kind a variable was declared with, also once it became a reference
// (its declared kind is then kept in VAR_DECLARED, the target in
// VAR_TARGET).
int var_kind(const Objet* v);
// Makes the variable a reference to the variable of handle `target`.
void var_make_address(Objet* v, word target);

// First variable of that kind (0: any) and name (null: any) in a chain.
Objet* var_find(const Objet* head, int kind, const char* name);
// Appends a variable with no value; null after a report.
Objet* var_create(Objet* head, int kind, const char* name);
// The private chain of an object's locals, created when missing.
Objet* locals_of(Objet* owner);
// The global table of extern variables.
Objet* extern_table();
