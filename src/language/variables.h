// Variables of the language: object records of a negative kind (formal
// -1042, local -14, static -102, extern -41, global -53) whose `local`
// holds the value, or null while the variable has none. Formals, statics
// and locals live in the private chain `locals` of their function.
#pragma once
#include "kernel/objet.h"

enum VarKind : int {
  V_FORMEL = -1042,
  V_AUTO = -14,
  V_STATIC = -102,
  V_EXTERN = -41,
  V_GLOBAL = -53,
  V_TYPE_FUNC = -1004,   // kind of a formal declared `func`
  V_BY_ADDRESS = -1051,  // subkind of a formal declared `address`
  V_ADDRESS = -1056,     // a variable made a reference to another
};

// The kind a variable was declared with, also once it became a reference
// (its declared kind is then kept in work[5], the target in work[6]).
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
