// The family of drawing members: each takes the object and the record of
// its properties, fetches `poi` and `fac`, and hands the facets to GL.
#pragma once
#include "kernel/objet.h"
#include "render/display.h"

// Five values of `illum`: mode, diffuse, specular, shininess, transparency.
struct Illum {
  float mode = 1, diffuse = 1, specular = 0, shininess = 0, transp = 0;
};
Illum illum_de(const word* v);

// The colour times diffuse with alpha to glColor4fv and GL_DIFFUSE, the
// specular as a grey, the shininess. `both` lights both faces.
void set_material(const float* col, float diffuse, float specular, float shininess, float alpha,
                  bool both);

// Wire frame, no lighting (mode 0).
int DISPLAY_0(Objet* o, const DisplayRecord& r, bool generated);
// Lit polygons: one normal to the facet for modes -1..1, one to the
// vertex otherwise.
int DISPLAY_1(Objet* o, const DisplayRecord& r, int mode, bool generated);
// The textured members: 0 while no image can be bound, so that the
// plain member draws.
int DISPLAY_TEXTURE(Objet* o, const DisplayRecord& r, int mode, bool generated);
