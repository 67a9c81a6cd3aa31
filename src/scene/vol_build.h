// Building an object from the words of its creating command: vertices,
// facets, names and simple properties.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Number of values a simple property holds; 0 when the value decides.
int Dim_propriete(int code);

// One word of a creating command added to the object: `name`, `NP(n)`,
// `NF(n)`, `poi(...)`, `fac(...)`, `lattice(...)` or any other property,
// sized by Dim_propriete. 0, or negative on failure.
int ajou_propriete_simple(Objet* o, const word* item);
// A facet (the vertex numbers of the value, or one facet per part of a
// HYBRIDE) appended when `facet` is 0, or replacing facet `facet`.
int ajou_fac(Objet* o, int code, const word* value, int facet);
// Every word after the first of a creating command, on a volume.
int set_propriete_vol_b(Objet* o, word* s);
