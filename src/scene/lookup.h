// Finding objects in chains, and creating them from selectors. Every walk
// starts at the head's `next`; chains are unsorted and lookups linear.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// Number of elements of a selector value: the numbers of a FLOAT or LONG,
// the blank-separated names of a CHAR, the parts of a HYBRIDE.
int nb_selection(const word* selector);

// The objects that the value of the kind word `kind` in a command names,
// found in the kind's chain; names of nothing are left out.
std::vector<Objet*> arg_objects(word* s, int kind);
// The same, and with the word alone or absent every valid object of the
// kind, in chain order.
std::vector<Objet*> objets_commande(word* s, int kind);

// Element `index`: 0 with a number, 1 with a name (of up to 255 bytes in
// `name`), -1 after a report when there is none.
int element_selection(const word* selector, int index, int* number, char* name);

// The object addressed by element `index` of the selector: a number
// (0 finds the first unnumbered object) or a name (markers ! . = > at
// the start of a stored name are skipped). Null when absent.
Objet* get_objet_simple(Objet* head, const word* selector, int index);
// The same among the objects of one user type (0 for any).
Objet* get_objet_type(Objet* head, const word* selector, int index, int user_type);
// The same, on a mixed chain, among the records of one kind.
Objet* get_objet_kind(Objet* head, const word* selector, int index, int kind);
Objet* get_objet_id(Objet* head, int kind, int id);
Objet* get_objet_nom(Objet* head, const char* name);
Objet* get_objet_kind_nom(Objet* head, int kind, const char* name);
// General search from `start` (a head or an object): by name when id is
// 0, by id when name is null, by both otherwise; subkind 0 matches any.
Objet* get_objet(Objet* start, int kind, int subkind, int id, const char* name);
// An external variable, then a variable of the running function.
Objet* get_extern(const char* name);
// The highest id among objects of that kind, or -1000000000.
int num_max(int classe, int code);

// Name comparison that skips a stored leading marker.
bool nom_egal(const char* stored, const char* wanted);

// Creates an object named or numbered by element `index` of the
// selector (none: no name, no number), with an empty `local`.
Objet* set_objet_simple(Objet* head, int classe, int kind, const word* selector, int index);
Objet* cre_objet_nom(Objet* head, int classe, int kind, int id, const char* name);
