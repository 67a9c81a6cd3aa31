// Properties: SEGMENTS blocks keyed by keyword codes, each holding one
// value, hung by handle from the PROPRIETES list in an object's `local`.
// Lookups scan the slots in order, skip empty ones, stop at the first
// match, and never reorder the list: the word index a lookup stores is
// used right after it to replace the slot in place.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Empty list for an object: [4, PROPRIETES, 0, 1].
bloc local_ini(Objet* o);
// A property of n words appended to the object's list (created or grown
// by one slot); only its size word is set. Null on failure.
bloc ajoute_propriete(Objet* o, int n);

// A fresh property of `size` words (only its size word set) in the slot
// at word `ind` of the list, where `old` (released) stood, or appended
// when `old` is null. Null on failure.
bloc installe_propriete(Objet* o, bloc old, int ind, int size);

// A one-key property whose value has `words` data words, in the slot of
// the old one with that key (released) or appended; its value returned
// with only the size word set. Null on failure.
bloc installe_valeur_1(Objet* o, int code, int words);

// Value of the first property with these keys, or null (also for a null
// list or a block that is not a list). The key count must match for one
// and two keys; get_val_3 and get_val_4 compare the leading codes only.
bloc get_val_1(const word* list, int c1);
bloc get_val_2(const word* list, int c1, int c2);
bloc get_val_3(const word* list, int c1, int c2, int c3);
bloc get_val_4(const word* list, int c1, int c2, int c3, int c4);
bloc get_val_n(const word* list, int n, const int* codes);
// The same with the key count always checked, for any n.
bloc get_val_k(const word* list, int n, const int* codes);

// The property itself, key count checked.
bloc get_propr_1(const word* list, int c1);
bloc get_propr_2(const word* list, int c1, int c2);
bloc get_propr_3(const word* list, int c1, int c2, int c3);
bloc get_propr_4(const word* list, int c1, int c2, int c3, int c4);
// The same, storing the word position of its slot in the list.
bloc get_propr_ind_1(const word* list, int c1, int* ind);
bloc get_propr_ind_2(const word* list, int c1, int c2, int* ind);
bloc get_propr_ind_3(const word* list, int c1, int c2, int c3, int* ind);
bloc get_propr_ind_4(const word* list, int c1, int c2, int c3, int c4, int* ind);
// Any number of keys, taken from n command segments; `ind` may be null.
bloc get_propr_n(const word* list, int n, const word* segs, int* ind);
// Any number of keys as plain codes.
bloc get_propr_k(const word* list, int n, const int* codes, int* ind);

// A property with these keys holding a FLOAT of n points, returned as
// its value. An existing one with np n is kept as it is, values
// included; otherwise a zeroed one takes its slot. Null on failure.
bloc set_val_1(Objet* o, int c1, int n);
bloc set_val_2(Objet* o, int c1, int c2, int n);
bloc set_val_3(Objet* o, int c1, int c2, int c3, int n);
// A one-key property holding a copy of `value`, overwritten in place
// when its size is unchanged. Returns the property, or null.
bloc set_propr_1(Objet* o, int code, const word* value);
// The same with n keys: the slot is rewritten in place when the size is
// unchanged, replaced otherwise.
bloc set_propr_k(Objet* o, int n, const int* codes, const word* value);
// A new two-key property holding a zeroed FLOAT of np points of dimp,
// appended without looking for an old one. Returns its value, or null.
bloc set_matrix_2(Objet* o, int c1, int c2, int np, int dimp);
// The same with n keys.
bloc set_matrix_k(Objet* o, int n, const int* codes, int np, int dimp);

// Tag, value offset and key pairs of a property, from segments or codes.
void propr_keys(bloc p, int n, const word* segs);
void propr_key_1(bloc p, int c1);
void propr_key_2(bloc p, int c1, int c2);
void propr_key_3(bloc p, int c1, int c2, int c3);
void propr_key_k(bloc p, int n, const int* codes);

// Removal by keys: 1 when removed, 0 when absent, -1 on failure.
int rem_propr_1(Objet* o, int c1);
int rem_propr_2(Objet* o, int c1, int c2);
int rem_propr_3(Objet* o, int c1, int c2, int c3);
int rem_propr_4(Objet* o, int c1, int c2, int c3, int c4);
int rem_propr_k(Objet* o, int n, const int* codes);
int rem_propr_n(Objet* o, int n, const word* segs);

// 1 when both properties have the same key count and key pairs, else 0.
int egal_keys(const word* p1, const word* p2);

// Appends `added` as new points of the value of the property with these
// keys (created from it when absent). `added` is flattened in place.
// Returns 0, or negative on failure.
int grow_val(Objet* o, int n, const int* codes, bloc added);
