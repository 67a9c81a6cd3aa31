// Limits: distances and positions held within bounds between the steps
// of an image. EXEC_LIMIT_DYNAMIC writes forces before the dynamics;
// EXEC_LIMIT moves positions before the display. install_limits registers
// both stages and the commands `limit` and `inside`.
//
// Which value selects which form:
//   limit dist CG force (d1,d2,a,b,ids)  forces on the other volumes
//   limit dist vertex vertex             two floats (d1,d2) a pair (i,j)
//                                        of neighbours at (n-1)i+j (from
//                                        0): forces always; with more than
//                                        6 values the pair is also moved
//                                        back within its bounds
//   limit dist secx, secy (d1,d2)        forces between neighbours along
//                                        the rows (secx) or the columns
//                                        (secy), then limit_column on them
//   limit dist vertex (d1,d2)            forces between all neighbours
//   limit speed vertex                   the speed of each vertex
//   limit dist roty (a, ids)             roty = a + the other's roty
//   limit dist CG (d1,d2,ids)            the other volumes put on the shell
//   limit CG matrix (x,y,z,r[,axis])     the volume within (or outside) r
//   limit tran (x1,y1,z1,x2,y2,z2)       the translation within the box;
//                                        the speed bounces on its walls by
//                                        the restitution of `collision coe`
//   limit tran poi (box)                 each vertex within the box
//   limit tran vertex (a box a vertex)   each vertex within its own box;
//                                        `limit tran vertex(k...)` writes
//                                        or reads the boxes of vertices k
//   limit tran poi force (box, k)        k times the way back to the box
//                                        added to `force vertex`
//   limit ball (x,y,z,r)                 each vertex within r of the point
//                                        (outside -r when r is negative)
//   limit rota (a1[,a2])                 the angle of `rota`, in radians
//   limit near vertex vertex (d1,d2)     each neighbour put back within
//                                        d1..d2 of its vertex
// The bounds the command `limit` reads (no value given):
//   limit vol(ids), limit ext vol(id)    the box of the volumes, its size
//   limit poi, secx(j), secy(i), vertex(k) vol(id)  the box of vertices
//   limit line(x1,y1,...) [inside(n)]    the box of the points of a line
//   limit image(id)                      left, bottom, right, top of the
//                                        box it is drawn in on the window
//   limit light(ids), limit view(ids)    the box of their eyes
//   limit fog(ids)                       least start, greatest end
//   limit menu(id), limit genetic(id)    the empty block: a menu has no
//                                        place on the window, and genetic
//                                        objects are not built
// `add force vertex` is cleared by EXEC_LIMIT_DYNAMIC on a volume that
// has a distance bound on vertices, before the bounds add to it.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"
#include "scene/near_lists.h"

void install_limits();

// The stages, on the volumes or (the second) on the brushes.
int EXEC_LIMIT_DYNAMIC_VOL();
int EXEC_LIMIT_DYNAMIC_BRUSH();
int EXEC_LIMIT_DYNAMIC(int kind);
int EXEC_LIMIT();
int EXEC_LIMIT_1(int kind);
int EXEC_LIMIT_2(Objet* o);

// Along `count` vertices from `first`, `step` apart (vertex numbers from
// 0, stride d floats): each vertex put at d1 from the one before when
// nearer, at d2 when further, along their line.
void limit_column(float* P, int d, int first, int count, int step, float d1, float d2);

// Rows of w floats a stored vertex under the keys, zeroed when missing or
// shorter. Null after a report.
float* rangees_cree(Objet* o, int nkeys, const int* keys, int n, int w);

// The neighbours of each vertex: `near vertex vertex`, built from the
// facets when missing. One list a vertex, led by its own size (that entry
// counted); a negative size skips the vertex's list, and a size that does
// not fit ends the walk, as the dynamics reads them.
struct Voisins {
  const float* v = nullptr;
  int total = 0;
  // f(i, j) for each neighbour j of vertex i (both from 0), i under n.
  template <class F>
  void pour_chaque(int n, F f) const {
    CurseurVoisins c(v, total);
    for (int i = 0; i < n && !c.fini(); i++) {
      const CurseurVoisins::Liste l = c.suivante();
      for (int m = l.debut; m < l.fin; m++) f(i, c.voisin(m) - 1);
    }
  }
};
bool voisins(Objet* o, Voisins& nv);

// The state of the limits: the image number the stages write, counted by
// EXEC_LIMIT from the start of the program.
struct LimitState {
  int image = 0;
};
LimitState& limit_state();

// `inside line(x1,y1,...) poi(x,y)`: the even-odd test of a point
// against a polygon of n points of dimension dim: 1 inside, 0 outside.
// Without `close` the polygon has only the edges between consecutive
// points; with it, the edge from the last back to the first too.
int INSIDE_LINE(const float* line, int n, int dim, const float poi[2], bool close);
// The same in space: the polygon and the point (dimension 3) seen along
// the axis nearest the polygon's normal.
int INSIDE_POI_LINE_3D(const float* line, int n, const float poi[3], bool close);
// The command `inside`.
int INSIDE_b(word* s, const word* ob, word* st, const word* lim);
