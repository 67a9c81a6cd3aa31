// Generators of vertex arrays and facet lists shared by the primitives.
#pragma once
#include <vector>

#include "kernel/word.h"

// A vertex array (FLOAT of stride 3) and a facet list (HYBRIDE of LONG
// facets) under construction.
struct Sommets {
  std::vector<float> xyz;
  int count() const { return static_cast<int>(xyz.size() / 3); }
  void add(float x, float y, float z) { xyz.insert(xyz.end(), {x, y, z}); }
};
struct Facettes {
  std::vector<std::vector<int>> list;
  void add(std::initializer_list<int> f) { list.emplace_back(f); }
};

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
