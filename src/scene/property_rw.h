// Reading and writing one property of an object as the generic property
// command does: whole values fitted to the keyword's size, single points
// addressed by the first key's parameters, and per-element tables for
// the sub-element words (`vertex`, `poi`, `fac`, `lattice`, `neuron`,
// `pixel`).
#pragma once
#include <span>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

struct Cles {
  std::span<const int> codes;     // keyword codes of the path, in order
  const word* params = nullptr;   // parameters of the first key, if any
  int sub = 0;                    // sub-element word and its parameters
  const word* sub_value = nullptr;
  int width = 0;                  // forced point width, 0 for the keyword's
};

// Writes `value` into the property at word `slot` of the object's list.
// A NIL value changes nothing. 0, or negative on failure (reported).
int set_bloc_b(Objet* o, const Cles& k, int slot, const word* value);
// Appends the property's value, or the points its parameters select, to
// the result growing at `st` (an empty NIL at first). 0, -12 past `lim`.
int get_bloc_b(const Cles& k, const word* property, word* st, const word* lim);

// A property with these keys holding an empty FLOAT, appended to the
// object's list; returns its slot, or -1.
int cree_propriete_vide(Objet* o, const Cles& k);

// A point number out of range: the number, then ILLEGAL.
void hors_limite(int k);
// The numbers of a parameter value; an element that is no number is
// reported and skipped.
std::vector<int> numeros(const word* params);
