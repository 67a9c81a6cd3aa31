// Data generated from a volume's vertices and facets, each kept as a
// property whose validity word is 1 while it holds (0 once the vertices
// change, through invalide_caches): computed on demand, not before.
//
//   normal fac          FLOAT nf x 3: the unit normal of each facet
//   normal vertex       FLOAT n x 3: the unit mean of the normals of
//                       the facets around each vertex, vertices at one
//                       place (a ball's poles) counting as one point
//   coord vertex        FLOAT n x 2: texture coordinates
//   near vertex vertex  FLOAT: one list a vertex, its first entry its own
//                       size (itself counted), then the vertices joined
//                       to it by a facet edge, ascending; a negative size
//                       marks a list to skip
//   near vertex dist    FLOAT: the lengths of those edges, same layout
//   radius near vertex  FLOAT n x 1: half the shortest of those edges
//   poi anc             FLOAT n x d: the vertices through `matrix anc`,
//                       made again at each reading by a command, and
//                       once an image for the animation (get_poi_vol)
//   poi generate        FLOAT, fac generate HYBRIDE: the volume refined
//                       (`frac`) or given a thickness (`ext`)
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "scene/volume.h"

// The value of a generated property, computed when stale; null when the
// keys name none (`*connu` false) or after a report.
bloc derive_vol(Objet* o, int n, const int* keys, bool* connu = nullptr);
bool est_derive(int n, const int* keys);

// The stored value when its validity word is 1, else null.
bloc derive_valide(Objet* o, int n, const int* keys);
// Stores a copy of `value` under the keys, valid. Returns the stored value.
bloc stocke_derive(Objet* o, int n, const int* keys, const word* value);
// The same for floats, `dimp` to a point.
bloc stocke_floats(Objet* o, int n, const int* keys, const std::vector<float>& f, int dimp);

// The vertex array of a volume; reported as empty under `name` when it
// has no vertex.
const word* poi_requis(Objet* o, const char* name);

// The generators. Each stores and returns its property.
bloc gen_normal_fac(Objet* o);
bloc gen_normal_vertex(Objet* o);
bloc gen_coord_vertex(Objet* o);
// Texture coordinates of any vertex array mapped around its centre (the
// generated vertices, which have no sections).
std::vector<float> coord_spheriques(const word* poi);
bloc gen_near_vertex(Objet* o, int which);  // KW_vertex or KW_dist
// `near vertex dist` made from the lists `near` (a user's, in the layout
// above) and the present distances; an unreadable rest of `near` gets 0.
bloc gen_near_dist(Objet* o, const word* near);
bloc gen_radius_near(Objet* o);
bloc gen_poi_anc(Objet* o);

// How `poi generate` and `fac generate` are made: `frac` refines every
// facet `param` times (at most 4), `ext` gives the surface a thickness
// of `param` along the vertex normals (a tenth of the radius when 0).
// The choice is kept in the property `generate` for later recomputation.
struct Cible {
  int code = 0;  // KW_frac or KW_ext
  float param = 0;
};
int generer_cible(Objet* o, Cible c);
// The choice last made for the volume, by default one refinement.
Cible cible_vol(Objet* o);

// The vertices the animation reads: `poi anc` while the `anc` switch is
// on and the volume has `lead`, else `poi`.
bloc get_poi_vol(Objet* o);

// The unit normal of a polygon of n vertex numbers (from 1) by Newell's
// sum, numbers outside 1..nv counting as absent; 0,0,0 when degenerate.
void normale_facette(const float* poi, int d, int nv, const word* v, int n, float r[3]);
// Each entry of a facet list as one polygon: a compound facet stands as
// its first (outer) facet. f(index from 0, vertex numbers, count).
template <class F>
void pour_chaque_entree(const word* fac, F&& f) {
  pour_chaque_bloc(fac, [&](int i, const word* p) {
    const word* q = facette_composee(p) && p[2] > 0 && p[0] > 8 ? p + 4 : p;
    if (q[1] == T_LONG) f(i, q + 4, q[0] - 4);
    else f(i, q, 0);
  });
}
