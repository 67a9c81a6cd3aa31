// The textured members of the drawing family. Each is a lit member with
// texture coordinates: `texture` draws one pass for each image of its
// list, `texture fac` one pass in which each facet binds its own image;
// both on the plain or the generated geometry, with facet or vertex
// normals by the mode, as the plain members do.
#include <GL/gl.h>

#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "language/args.h"
#include "render/draw.h"
#include "render/textures.h"
#include "scene/vol_generate.h"

namespace {

// The image numbers of a `texture` value; empty when they are all 0. The
// list is kept from one call to the next.
const std::vector<int>& images_de(const word* v) {
  static std::vector<int> ids;
  ids.clear();
  bool any = false;
  for (int i = 0; v && i < elements(v); i++) {
    ids.push_back(entier(value_at(v, i)));
    any = any || ids.back() > 0;
  }
  if (!any) ids.clear();
  return ids;
}

// Texture coordinates, two to a vertex: the stored ones, or made from
// the vertices (by sections, or around the centre for generated ones).
struct Coordonnees {
  std::vector<float> own;
  const float* uv = nullptr;
  int n = 0;
};

bool coordonnees(Objet* o, const DisplayRecord& r, bool generated, Coordonnees& c) {
  const word* stored = generated ? r[R_coord_vertex_generate] : r[R_coord_vertex];
  if (!stored || tag(stored) != T_FLOAT || dimp(stored) < 2) {
    if (generated) {
      const word* poi = r[R_poi_generate];
      if (!poi || tag(poi) != T_FLOAT) return false;
      c.own = coord_spheriques(poi);
      c.uv = c.own.data();
      c.n = np(poi);
      return true;
    }
    stored = gen_coord_vertex(o);
    if (!stored) return false;
  }
  if (dimp(stored) == 2) {
    c.uv = reinterpret_cast<const float*>(stored + 4);
  } else {  // a wider stride: the first two of each vertex
    for (int k = 0; k < np(stored); k++) {
      c.own.push_back(getf(stored, k * dimp(stored)));
      c.own.push_back(getf(stored, k * dimp(stored) + 1));
    }
    c.uv = c.own.data();
  }
  c.n = np(stored);
  return true;
}

}  // namespace

int DISPLAY_TEXTURE(Objet* o, const DisplayRecord& r, int mode, bool generated) {
  const word* fac_images = generated ? r[R_texture_fac_generate] : r[R_texture_fac];
  const std::vector<int>& passes = images_de(r[R_texture]);
  bool any_facet = false;
  for (int i = 0; fac_images && i < elements(fac_images) && !any_facet; i++)
    any_facet = image_facette(fac_images, i) > 0;
  if (!any_facet) fac_images = nullptr;
  if (!fac_images && passes.empty()) return 0;
  Coordonnees c;
  if (!coordonnees(o, r, generated, c)) return 0;
  Texturage tx;
  tx.uv = c.uv;
  tx.nuv = c.n;
  if (fac_images) {
    tx.images_fac = fac_images;
    const int res = DISPLAY_1(o, r, mode, generated, &tx);
    return res < 0 ? res : 1;
  }
  // Passes after the first lie over it: no depth test among them. An
  // image that is gone makes no pass; with none, the plain member draws.
  int res = 0, drawn = 0;
  for (size_t p = 0; p < passes.size() && res >= 0; p++) {
    if (!lie_texture(passes[p])) continue;
    if (drawn == 1) glDisable(GL_DEPTH_TEST);
    tx.alpha = r[R_transp_texture] ? 1 - value_at(r[R_transp_texture], static_cast<int>(p)) : -1;
    res = DISPLAY_1(o, r, mode, generated, &tx);
    drawn++;
  }
  if (drawn > 1) glEnable(GL_DEPTH_TEST);
  if (res < 0) return res;
  return drawn > 0 ? 1 : 0;
}
