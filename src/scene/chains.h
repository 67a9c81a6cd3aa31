// The chain heads of every object kind: one record per chain, whose `next`
// is the first object. Kinds with no chain of their own use the generic
// chain; failing lines clear the chain of temporaries.
#pragma once
#include "kernel/objet.h"

constexpr int KIND_EXTERN = -41;  // the chain of external variables

// Head by class and keyword code; the generic chain for codes without one.
Objet* chaine_de(int classe, int code);
// The same with the class taken from the code (code / 200).
Objet* chaine_classe(int code);
Objet* chaine_generique();
Objet* chaine_temporaires();
// Initialises every head (start-up).
void chaines_ini();
