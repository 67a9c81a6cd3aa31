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
// What a textured pass adds to the lit polygons: texture coordinates,
// two to a vertex; the pass's alpha (negative: the `illum` one); and for
// `texture fac` the image of each facet, bound before its polygon.
struct Texturage {
  const float* uv = nullptr;
  int nuv = 0;
  float alpha = -1;
  const word* images_fac = nullptr;
};

// Lit polygons: one normal to the facet for modes -1..1, one to the
// vertex otherwise; textured when `tx` is given.
int DISPLAY_1(Objet* o, const DisplayRecord& r, int mode, bool generated, const Texturage* tx = nullptr);
// The textured members: 1 when drawn, 0 when the texture value names no
// image (the plain member then draws), negative after a report.
int DISPLAY_TEXTURE(Objet* o, const DisplayRecord& r, int mode, bool generated);
