#include "scene/law.h"

#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "language/args.h"
#include "scene/lookup.h"

namespace {

// The tangent of key i: (next - previous) x tension / 2, one-sided at the
// ends of an open curve.
void tangente(const std::vector<float>& p, int n, int dim, int i, float tension, bool closed, float* t) {
  int a = i - 1, b = i + 1;
  if (closed) {
    a = (a + n) % n;
    b %= n;
  } else {
    a = std::max(a, 0);
    b = std::min(b, n - 1);
  }
  const float scale = closed || (i > 0 && i < n - 1) ? tension / 2 : tension;
  for (int k = 0; k < dim; k++) t[k] = (p[b * dim + k] - p[a * dim + k]) * scale;
}

}  // namespace

std::vector<float> courbe_ext(const std::vector<float>& keys, int dim, int steps, float tension, bool closed) {
  const int n = static_cast<int>(keys.size()) / dim;
  if (n < 2 || steps < 1) return keys;
  const int segs = closed ? n : n - 1;
  std::vector<float> out;
  out.reserve(static_cast<size_t>((segs * steps + 1) * dim));
  std::vector<float> t0(static_cast<size_t>(dim)), t1(static_cast<size_t>(dim));
  for (int j = 0; j < segs; j++) {
    const int b = (j + 1) % n;
    tangente(keys, n, dim, j, tension, closed, t0.data());
    tangente(keys, n, dim, b, tension, closed, t1.data());
    for (int r = 0; r < steps; r++) {
      const float u = static_cast<float>(r) / static_cast<float>(steps);
      const float u2 = u * u, u3 = u2 * u;
      const float h00 = 2 * u3 - 3 * u2 + 1, h10 = u3 - 2 * u2 + u, h01 = -2 * u3 + 3 * u2, h11 = u3 - u2;
      for (int k = 0; k < dim; k++)
        out.push_back(h00 * keys[j * dim + k] + h10 * t0[k] + h01 * keys[b * dim + k] + h11 * t1[k]);
    }
  }
  const int last = closed ? 0 : n - 1;
  out.insert(out.end(), keys.begin() + last * dim, keys.begin() + (last + 1) * dim);
  return out;
}

float read_law(const float* p, int n, int d, float v) {
  if (n <= 0) return 0.0f;
  if (n == 1) return p[1];
  const float first = p[0], last = p[(n - 1) * d];
  int i = 0;
  if (last < first && v < first) {
    while (i + 1 < n && v < p[(i + 1) * d]) i++;
  } else if (last >= first && v > first) {
    while (i + 1 < n && v > p[(i + 1) * d]) i++;
  } else {
    return p[1];
  }
  if (i >= n - 1) return p[(n - 1) * d + 1];
  const float x = p[i * d], step = p[(i + 1) * d] - x;
  const float f = step > 0.0001f ? (v - x) / step : step;
  return p[i * d + 1] + f * (p[(i + 1) * d + 1] - p[i * d + 1]);
}

float loi(int code, float t) {
  constexpr float PI_F = 3.14159265f;
  switch (code) {
    case KW_cos: return std::cos(t * PI_F / 2);
    case KW_sin: return std::sin(t * PI_F / 2);
    case KW_acc: return std::sqrt(std::max(0.0f, 1 - t * t));
    case KW_dec: return std::sqrt(std::max(0.0f, 1 - (t - 1) * (t - 1)));
    case KW_pend: return std::cos(t * PI_F);
    default: return 1.0f;
  }
}

bool courbe_loi(const word* ids, std::vector<float>& curve) {
  Objet* o = ids ? get_objet_simple(chaine_classe(KW_law), ids, 0) : nullptr;
  const word* p = o ? get_val_1(o->local, KW_poi) : nullptr;
  if (!p || tag(p) != T_FLOAT || dimp(p) < 2) {
    err_objet(KW_law, ids, 0, 0, nullptr);
    return false;
  }
  std::vector<float> points;
  for (int i = 0; i < np(p); i++)
    for (int k = 0; k < 3; k++) points.push_back(k < dimp(p) ? getf(p, i * dimp(p) + k) : 0.0f);
  // A law with tangents, `ext(steps, tension)`, is read along its smoothed curve.
  if (const word* ext = get_val_1(o->local, KW_ext)) {
    float e[2] = {8, 1};
    floats_of(ext, e, 2);
    points = courbe_ext(points, 3, entier_borne(e[0], 1, 1000), e[1], false);
  }
  curve.insert(curve.end(), points.begin(), points.end());
  return true;
}
