// The normals the lit display needs, kept as the cached properties
// `normal fac` (one to a plain facet) and `normal vertex` (one to a
// vertex), computed again when their validity word was cleared.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

int nb_facettes(const word* fac);
// Newell's normal of one facet of vertex numbers from 1, unit length
// (0,0,0 for a degenerate one). Numbers outside 1..n are passed over.
void normale_facette(const float* poi, int d, int n, const word* v, int m, float out[3]);
const float* normales_fac(Objet* o, const word* poi, const word* fac);
const float* normales_vertex(Objet* o, const word* poi, const word* fac);
