// Generators of vertex arrays and facet lists shared by the primitives,
// and the count of what a volume will take, made before it is built.
#pragma once
#include <initializer_list>
#include <vector>

#include "kernel/word.h"

// A vertex array (FLOAT of stride 3) and a facet list (HYBRIDE of LONG
// facets) under construction; the facets are kept as the entries of the
// list will be, one after another.
struct Sommets {
  std::vector<float> xyz;
  int count() const { return static_cast<int>(xyz.size() / 3); }
  void add(float x, float y, float z) { xyz.insert(xyz.end(), {x, y, z}); }
};
struct Facettes {
  std::vector<word> mots;  // [4 + k, LONG, 1, k, k vertex numbers] a facet
  int count = 0;
  void add(std::initializer_list<int> f) { add(f.begin(), f.size()); }
  void add(const std::vector<int>& f) { add(f.data(), f.size()); }
  void add(const int* v, size_t k) {
    mots.insert(mots.end(), {static_cast<word>(4 + k), T_LONG, 1, static_cast<word>(k)});
    mots.insert(mots.end(), v, v + k);
    count++;
  }
  // Each facet's vertex numbers: f(first, count).
  template <class F>
  void pour_chaque(F&& f) const {
    for (size_t i = 0; i < mots.size(); i += static_cast<size_t>(mots[i])) f(&mots[i + 4], mots[i + 3]);
  }
};

// What a volume will take: vertices, facets, and the words of the facets
// with their headers. Counted in double, so that no number a user gives
// can overflow the count.
struct Taille {
  double sommets = 0, facettes = 0, mots_facettes = 0;
  void quadrilateres(double n) {
    facettes += n;
    mots_facettes += 8 * n;
  }
  void facette(double k) {
    facettes += 1;
    mots_facettes += 4 + k;
  }
  // The bytes of the vertex block and the facet block.
  double octets() const { return 4 * ((4 + 3 * sommets) + (4 + mots_facettes)); }
};
// Whether `copies` volumes of that size can be made: each block must
// fit a block, and the memory must be there for the building, which
// holds about three copies. Otherwise "MALLOC ERROR" with the bytes of
// the blocks, under `name`, and false.
bool volume_possible(const Taille& t, int copies, const char* name);
// The sizes of the generators below.
inline double facettes_close(double nx, double ny) { return nx * ny; }
inline double facettes_grid(double nx, double ny, double nz) { return nx * ny * (nz + 1) + nx * (ny + 1) * nz; }

// The profile turned about y: `n` steps of angle/n from `phase`, `n`
// positions when closed, n+1 otherwise; profile point first, position
// second. An empty profile gives the positions of the origin.
Sommets gen_poi_rev(const Sommets& profile, float angle, float phase, int n, bool close);
// nx*ny quadrilaterals over rows of nx vertices, each row closed.
Facettes gen_fac_close(int nx, int ny);
// Quadrilaterals over a lattice of (nx+1) x (ny+1) x (nz+1) vertices:
// each layer, then the walls between layers.
Facettes gen_fac_grid(int nx, int ny, int nz);
// One facet through the n positions of a revolved single point.
Facettes gen_fac_fan(int n);

// The blocks, as properties store them.
std::vector<word> bloc_sommets(const Sommets& s);
std::vector<word> bloc_facettes(const Facettes& f);
