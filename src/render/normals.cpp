#include "render/normals.h"

#include <cmath>
#include <vector>

#include "kernel/keywords.h"
#include "scene/volume.h"

int nb_facettes(const word* fac) {
  int n = 0;
  pour_chaque_facette(fac, [&](const word*, int) { n++; });
  return n;
}

void normale_facette(const float* poi, int d, int n, const word* v, int m, float out[3]) {
  double s[3] = {0, 0, 0};
  for (int i = 0; i < m; i++) {
    const int a = v[i], b = v[(i + 1) % m];
    if (a < 1 || a > n || b < 1 || b > n) continue;
    const float* p = poi + (a - 1) * d;
    const float* q = poi + (b - 1) * d;
    s[0] += (static_cast<double>(p[1]) - q[1]) * (static_cast<double>(p[2]) + q[2]);
    s[1] += (static_cast<double>(p[2]) - q[2]) * (static_cast<double>(p[0]) + q[0]);
    s[2] += (static_cast<double>(p[0]) - q[0]) * (static_cast<double>(p[1]) + q[1]);
  }
  const double l = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
  for (int i = 0; i < 3; i++) out[i] = l > 0 ? static_cast<float>(s[i] / l) : 0.0f;
}

const float* normales_fac(Objet* o, const word* poi, const word* fac) {
  static const int keys[2] = {KW_normal, KW_fac};
  const int nf = nb_facettes(fac);
  bool valid = false;
  bloc c = cache_vol(o, 2, keys, nf, 3, &valid);
  if (!c) return nullptr;
  float* out = reinterpret_cast<float*>(c + 4);
  if (valid) return out;
  const float* p = reinterpret_cast<const float*>(poi + 4);
  const int d = stride(poi);
  float* w = out;
  pour_chaque_facette(fac, [&](const word* v, int m) {
    normale_facette(p, d, poi[2], v, m, w);
    w += 3;
  });
  cache_valide(o, 2, keys);
  return out;
}

const float* normales_vertex(Objet* o, const word* poi, const word* fac) {
  static const int keys[2] = {KW_normal, KW_vertex};
  const int n = poi[2];
  const int d = stride(poi);
  bool valid = false;
  bloc c = cache_vol(o, 2, keys, n, d, &valid);
  if (!c) return nullptr;
  float* out = reinterpret_cast<float*>(c + 4);
  if (valid) return out;
  const float* fn = normales_fac(o, poi, fac);
  if (!fn) return nullptr;
  // The cache of facet normals may have moved the list: read the block again.
  c = cache_vol(o, 2, keys, n, d, &valid);
  if (!c) return nullptr;
  out = reinterpret_cast<float*>(c + 4);
  std::vector<double> sum(static_cast<size_t>(n) * 3, 0.0);
  const float* f = fn;
  pour_chaque_facette(fac, [&](const word* v, int m) {
    for (int i = 0; i < m; i++)
      if (v[i] >= 1 && v[i] <= n)
        for (int k = 0; k < 3; k++) sum[(v[i] - 1) * 3 + k] += f[k];
    f += 3;
  });
  for (int i = 0; i < n; i++) {
    const double* s = &sum[i * 3];
    const double l = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
    for (int k = 0; k < d; k++) out[i * d + k] = k < 3 && l > 0 ? static_cast<float>(s[k] / l) : 0.0f;
  }
  cache_valide(o, 2, keys);
  return out;
}
