#include "render/normals.h"

#include "kernel/keywords.h"
#include "scene/volume.h"

int nb_facettes(const word* fac) {
  int n = 0;
  pour_chaque_facette(fac, [&](const word*, int) { n++; });
  return n;
}

static const float* derive(Objet* o, int second) {
  const int keys[2] = {KW_normal, second};
  bloc v = derive_vol(o, 2, keys);
  return v && v[1] == T_FLOAT ? reinterpret_cast<const float*>(v + 4) : nullptr;
}

const float* normales_fac(Objet* o) { return derive(o, KW_fac); }
const float* normales_vertex(Objet* o) { return derive(o, KW_vertex); }
