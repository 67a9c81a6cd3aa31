// The normals the lit display needs: the volume's generated `normal fac`
// (one to a facet) and `normal vertex` (three floats to a vertex),
// computed again when the vertices have changed.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"
#include "scene/vol_generate.h"

int nb_facettes(const word* fac);
const float* normales_fac(Objet* o);
const float* normales_vertex(Objet* o);
