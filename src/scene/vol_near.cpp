// Neighbours of each vertex along the facet edges, the edge lengths at
// rest, and the radius of each vertex derived from them.
#include <algorithm>
#include <cmath>
#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

using Voisins = std::vector<std::vector<int>>;

// The vertices joined by an edge of some facet, the closing edge
// included; a vertex repeated in a facet is no neighbour of itself.
Voisins voisins(const word* poi, const word* fac) {
  const int nv = poi[2];
  Voisins v(static_cast<size_t>(nv));
  pour_chaque_facette(fac, [&](const word* f, int n) {
    for (int i = 0; i < n; i++) {
      const int a = f[i], b = f[(i + 1) % n];
      if (a == b || a < 1 || b < 1 || a > nv || b > nv) continue;
      v[static_cast<size_t>(a - 1)].push_back(b);
      v[static_cast<size_t>(b - 1)].push_back(a);
    }
  });
  for (std::vector<int>& s : v) {
    std::sort(s.begin(), s.end());
    s.erase(std::unique(s.begin(), s.end()), s.end());
  }
  return v;
}

float distance(const word* poi, int a, int b) {
  const float* p = reinterpret_cast<const float*>(poi + 4);
  const int d = stride(poi);
  return std::sqrt(mat::distance2(p + (a - 1) * d, p + (b - 1) * d));
}

// One list a vertex, its first entry its own size (the entry itself
// counted), then its neighbours' numbers or the edge lengths.
std::vector<float> listes(const word* poi, const Voisins& v, bool longueurs) {
  std::vector<float> f;
  for (size_t a = 0; a < v.size(); a++) {
    f.push_back(static_cast<float>(v[a].size() + 1));
    for (int b : v[a]) f.push_back(longueurs ? distance(poi, static_cast<int>(a) + 1, b) : static_cast<float>(b));
  }
  return f;
}

}  // namespace

bloc gen_near_vertex(Objet* o, int which) {
  const word* poi = poi_requis(o, "gen_near_vertex()");
  if (!poi) return nullptr;
  const Voisins v = voisins(poi, fac_vol(o));
  const int kv[] = {KW_near, KW_vertex, KW_vertex};
  const int kd[] = {KW_near, KW_vertex, KW_dist};
  // Both are made together: the dynamics reads them side by side.
  if (!stocke_floats(o, 3, kv, listes(poi, v, false), 1)) return nullptr;
  if (!stocke_floats(o, 3, kd, listes(poi, v, true), 1)) return nullptr;
  return derive_valide(o, 3, which == KW_dist ? kd : kv);
}

bloc gen_near_dist(Objet* o, const word* near) {
  const word* poi = poi_requis(o, "gen_near_vertex()");
  if (!poi) return nullptr;
  const int n = elements(near), nv = np(poi);
  std::vector<float> f(static_cast<size_t>(n), 0.0f);
  for (int i = 0, a = 1; i < n && a <= nv; a++) {
    const int s = entier(value_at(near, i, 0));
    const int len = std::abs(s);
    if (len < 1 || i + len > n) break;
    f[static_cast<size_t>(i)] = static_cast<float>(s);
    for (int j = 1; j < len; j++) {
      const int b = entier(value_at(near, i + j, 0));
      if (b >= 1 && b <= nv) f[static_cast<size_t>(i + j)] = distance(poi, a, b);
    }
    i += len;
  }
  const int kd[] = {KW_near, KW_vertex, KW_dist};
  return stocke_floats(o, 3, kd, f, 1);
}

bloc gen_radius_near(Objet* o) {
  const word* poi = poi_requis(o, "gen_radius_near()");
  if (!poi) return nullptr;
  const Voisins v = voisins(poi, fac_vol(o));
  std::vector<float> r(v.size(), 0.0f);
  for (size_t a = 0; a < v.size(); a++) {
    float m = -1;
    for (int b : v[a]) {
      const float l = distance(poi, static_cast<int>(a) + 1, b);
      if (m < 0 || l < m) m = l;
    }
    r[a] = m > 0 ? m / 2 : 0.0f;
  }
  const int keys[] = {KW_radius, KW_near, KW_vertex};
  return stocke_floats(o, 3, keys, r, 1);
}
