#include "scene/law.h"

#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/chains.h"
#include "scene/lookup.h"

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
  for (int i = 0; i < np(p); i++)
    for (int k = 0; k < 3; k++) curve.push_back(k < dimp(p) ? getf(p, i * dimp(p) + k) : 0.0f);
  return true;
}
