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
