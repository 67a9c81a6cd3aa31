// The object store: records, chains, creation, duplication, removal.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// A chain head is a record with every field cleared and kind CHAINE.
void chaine_ini(Objet* head);

// Creates an object at the tail of the chain, with a copy of `value` as
// `local` and of `name`; valid is 1. Null on failure (reported).
Objet* cre_objet(Objet* head, int kind, int subkind, const word* value, const char* name, int id);

// Gives a record a new number, keeping its chain's list in step.
void objet_numero(Objet* o, int id);

// Takes a record out of its chain, keeping it.
void delie_objet(Objet* o);
// Moves a record to the tail of another chain.
void deplace_objet(Objet* o, Objet* head);

// Links an unlinked record at the tail of the chain.
void lie_en_queue(Objet* head, Objet* o);

// Removes the object and returns what followed it, so that a walk can
// go on from the return value.
Objet* rem_objet(Objet* o);

// An unlinked copy of a record: name, local and code duplicated, the
// links (child, locals, hook, next, prev) cleared.
Objet* dup_objet(const Objet* o);

// A new private chain: a head record, counted as an object.
Objet* cre_chaine_privee();
// A private chain as a whole, head included.
void rem_chaine_privee(Objet* head);
Objet* dup_chaine_privee(const Objet* head);

// A copy of a name counted in the live blocks; null for an empty name.
char* copie_nom(const char* name);

// Language objects keep a raw value or text in `local`.
bool est_objet_langage(int kind);
