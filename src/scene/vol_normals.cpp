// Normals of a volume: one per facet, one per vertex.
#include <algorithm>
#include <array>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

void normale_facette(const float* poi, int d, int nv, const word* v, int n, float r[3]) {
  r[0] = r[1] = r[2] = 0;
  // Newell's sum: the same direction as (b-a)x(c-a) for a convex facet
  // turning counter-clockwise, and sound for warped or degenerate ones.
  for (int i = 0; i < n; i++) {
    const int a = v[i], b = v[(i + 1) % n];
    if (a < 1 || a > nv || b < 1 || b > nv) continue;
    const float* p = poi + (a - 1) * d;
    const float* q = poi + (b - 1) * d;
    r[0] += (p[1] - q[1]) * (p[2] + q[2]);
    r[1] += (p[2] - q[2]) * (p[0] + q[0]);
    r[2] += (p[0] - q[0]) * (p[1] + q[1]);
  }
  mat::normalise(r);
}

namespace {

std::vector<float> normales_facettes(const word* poi, const word* fac) {
  std::vector<float> n(static_cast<size_t>(fac ? fac[2] : 0) * 3, 0.0f);
  const float* p = reinterpret_cast<const float*>(poi + 4);
  pour_chaque_entree(fac, [&](int i, const word* v, int count) {
    normale_facette(p, stride(poi), poi[2], v, count, &n[static_cast<size_t>(i) * 3]);
  });
  return n;
}

}  // namespace

bloc gen_normal_fac(Objet* o) {
  const word* poi = poi_requis(o, "gen_normal_fac()");
  if (!poi) return nullptr;
  const int keys[] = {KW_normal, KW_fac};
  return stocke_floats(o, 2, keys, normales_facettes(poi, fac_vol(o)), 3);
}

// Vertices at the same place (the poles of a ball, the seams of a
// revolution) form one point: its normal is the mean over the facets
// around the point, whichever copy they use.
std::vector<int> points_confondus(const word* poi) {
  const int nv = poi[2], d = stride(poi);
  const float* p = reinterpret_cast<const float*>(poi + 4);
  auto point = [&](int a) { return std::array<float, 3>{p[a * d], d > 1 ? p[a * d + 1] : 0, d > 2 ? p[a * d + 2] : 0}; };
  std::vector<int> ordre(static_cast<size_t>(nv));
  for (int a = 0; a < nv; a++) ordre[static_cast<size_t>(a)] = a;
  std::stable_sort(ordre.begin(), ordre.end(), [&](int a, int b) { return point(a) < point(b); });
  std::vector<int> groupe(static_cast<size_t>(nv));
  for (size_t i = 0; i < ordre.size(); i++) {
    const bool meme = i > 0 && point(ordre[i]) == point(ordre[i - 1]);
    groupe[static_cast<size_t>(ordre[i])] = meme ? groupe[static_cast<size_t>(ordre[i - 1])] : ordre[i];
  }
  return groupe;
}

bloc gen_normal_vertex(Objet* o) {
  const word* poi = poi_requis(o, "gen_normal_vertex()");
  if (!poi) return nullptr;
  const word* fac = fac_vol(o);
  const std::vector<float> nf = normales_facettes(poi, fac);
  const std::vector<int> groupe = points_confondus(poi);
  const size_t nv = groupe.size();
  std::vector<float> n(nv * 3, 0.0f);
  std::vector<int> vue(nv, -1);  // the last facet counted at a point
  pour_chaque_entree(fac, [&](int i, const word* v, int count) {
    for (int k = 0; k < count; k++) {
      if (v[k] < 1 || v[k] > static_cast<int>(nv)) continue;
      const size_t g = static_cast<size_t>(groupe[static_cast<size_t>(v[k] - 1)]);
      if (vue[g] == i) continue;  // a point twice in a facet counts once
      vue[g] = i;
      for (size_t c = 0; c < 3; c++) n[g * 3 + c] += nf[static_cast<size_t>(i) * 3 + c];
    }
  });
  for (size_t a = 0; a < nv; a++) {
    const size_t g = static_cast<size_t>(groupe[a]);
    std::copy(&n[g * 3], &n[g * 3] + 3, &n[a * 3]);  // g <= a: already summed
    mat::normalise(&n[a * 3]);
  }
  const int keys[] = {KW_normal, KW_vertex};
  return stocke_floats(o, 2, keys, n, 3);
}
