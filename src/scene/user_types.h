// User types: names the user gives to kinds of objects, numbered from
// NB_CODES up so that they never meet a keyword code, which `type` also
// accepts.
#pragma once

// The number of a registered name, or 0.
int user_type_find(const char* name);
// The number of the name, registered on first use; 0 for an empty name.
int user_type_make(const char* name);
// The name of a registered user type; null for keyword codes and 0.
const char* user_type_name(int number);
void user_types_clear();
