// Properties written whole: the value as given, with no per-vertex
// tables, on each object a command names, and read from the first. The
// collision and limit commands keep their paths so, since the stages
// read them as plain arrays.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// The words of the path: every word but the object word that selects
// (`collision vol vol(4)`: the first `vol` is of the path).
std::vector<int> chemin_commande(word* s);

// Called after the value is written on each object.
using ApresEcriture = int (*)(Objet* o, const std::vector<int>& keys, const word* value);

// With `ob`, writes it under `keys` on each object (replaced when the size
// differs), then calls `apres` when given; without, answers the first
// object's value, or an empty NIL.
int propriete_entiere(word* s, const word* ob, const word* lim, const std::vector<int>& keys,
                      ApresEcriture apres = nullptr);
