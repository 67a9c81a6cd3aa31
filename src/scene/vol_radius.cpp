// Radius of a volume about the mean point of its vertices.
#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

float det_rayon(Objet* o, const std::vector<int>* liste) {
  const int keys[] = {KW_radius};
  bool valide = false;
  bloc cache = nullptr;
  if (!liste && (cache = cache_vol(o, 1, keys, 1, 1, &valide)) && valide) return getf(cache, 0);
  const word* poi = poi_requis(o, "det_rayon()");
  if (!poi) return -1;
  const int n = std::min(det_np(o), static_cast<int>(poi[2]));
  const int d = stride(poi);
  const float* p = reinterpret_cast<const float*>(poi + 4);
  float c[3];
  mat::moyenne(p, n, d, c);
  float r2 = 0;
  auto mesure = [&](int i) {
    const float q[3] = {p[i * d], d > 1 ? p[i * d + 1] : 0, d > 2 ? p[i * d + 2] : 0};
    r2 = std::max(r2, mat::distance2(c, q));
  };
  if (liste) {
    for (int k : *liste)
      if (k >= 1 && k <= n) mesure(k - 1);
  } else {
    for (int i = 0; i < n; i++) mesure(i);
  }
  const float r = std::sqrt(r2);
  if (cache) {
    setf(cache, 0, r);
    cache_valide(o, 1, keys);
  }
  return r;
}
