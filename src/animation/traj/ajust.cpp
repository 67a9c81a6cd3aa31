#include "animation/traj/ajust.h"

#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "scene/law.h"

namespace {

constexpr float PI_F = 3.14159265f;
// Two cumulative lengths closer than this make a segment of no length.
constexpr float LONGUEUR_NULLE = 0.0001f;

float distance(const float* a, const float* b, int dim) {
  float s = 0;
  for (int k = 0; k < dim; k++) s += (b[k] - a[k]) * (b[k] - a[k]);
  return std::sqrt(s);
}

// Rows equally spaced in each segment: ni/(n-1) rows a segment, the
// remainder on the last; the end of a segment is the start of the next.
void par_segments(const std::vector<float>& p, int n, int dim, int ni, std::vector<float>& out) {
  const int segs = n - 1;
  const int per = ni / segs;
  int row = 0;
  for (int j = 0; j < segs; j++) {
    const bool last = j == segs - 1;
    const int m = last ? ni - row : per;
    for (int r = 0; r < m; r++, row++) {
      const float f = last ? (m > 1 ? static_cast<float>(r) / static_cast<float>(m - 1) : 1.0f)
                           : static_cast<float>(r) / static_cast<float>(m);
      for (int k = 0; k < dim; k++) out[row * dim + k] = p[j * dim + k] + f * (p[(j + 1) * dim + k] - p[j * dim + k]);
    }
  }
}

}  // namespace

float position_loi(const LoiTraj& loi, float L, float t) {
  switch (loi.kind) {
    case 0: return L * t;
    case KW_acc: return L - L * std::cos(t * PI_F / 2);
    case KW_dec: return L * std::sin(t * PI_F / 2);
    case KW_pend: return (L - L * std::cos(t * PI_F)) / 2;
    case -KW_pend: return L * (1 - std::acos(std::clamp(2 * t - 1, -1.0f, 1.0f)) / PI_F);
    case KW_law: case KW_anc: case KW_adjust: {
      const int n = static_cast<int>(loi.curve.size() / 3);
      if (n < 1) return L * t;
      const float x0 = loi.curve[0], xl = loi.curve[(n - 1) * 3];
      const float y0 = loi.curve[1], yl = loi.curve[(n - 1) * 3 + 1];
      if (loi.kind == KW_adjust) {
        // t over the curve's range, y brought to 0..L.
        const float y = read_law(loi.curve.data(), n, 3, x0 + t * (xl - x0));
        return yl != y0 ? (y - y0) * L / (yl - y0) : L * t;
      }
      const float y = read_law(loi.curve.data(), n, 3, t * xl);
      return yl != 0 ? y * L / yl : L * t;
    }
    default: return L * t;
  }
}


std::vector<float> ajust_1(const std::vector<float>& keys, int dim, const Ajustement& a) {
  const int ni = std::max(a.ni, 2);
  std::vector<float> out(static_cast<size_t>(ni * dim), 0.0f);
  std::vector<float> p = keys;
  int n = static_cast<int>(p.size()) / dim;
  if (n < 1) return out;
  if (a.close && n > 1 && !a.ext) {
    p.insert(p.end(), keys.begin(), keys.begin() + dim);
    n++;
  }
  if (n == 1) {
    for (int r = 0; r < ni; r++) std::copy(p.begin(), p.begin() + dim, out.begin() + r * dim);
    return out;
  }
  if (a.interpol && n - 1 <= ni) {
    par_segments(p, n, dim, ni, out);
    return out;
  }
  if (a.ext) {
    p = courbe_ext(p, dim, a.ext_steps, a.ext_tension, a.close);
    n = static_cast<int>(p.size()) / dim;
  }
  std::vector<float> cumul(static_cast<size_t>(n), 0.0f);
  for (int i = 1; i < n; i++) cumul[i] = cumul[i - 1] + distance(&p[(i - 1) * dim], &p[i * dim], dim);
  const float L = cumul[n - 1];
  std::copy(p.begin(), p.begin() + dim, out.begin());
  std::copy(p.end() - dim, p.end(), out.end() - dim);
  int j = 0;  // the first length not below s: s grows with k for every law but a curve's
  for (int k = 1; k < ni - 1; k++) {
    const float s = position_loi(a.loi, L, static_cast<float>(k) / static_cast<float>(ni - 1));
    if (j > 0 && cumul[j - 1] >= s) j = 0;
    while (j < n && cumul[j] < s) j++;
    float* row = &out[k * dim];
    if (j == 0) {
      std::copy(p.begin(), p.begin() + dim, row);
    } else if (j == n) {
      std::copy(p.end() - dim, p.end(), row);
    } else if (cumul[j] - cumul[j - 1] >= LONGUEUR_NULLE) {
      const float f = (s - cumul[j - 1]) / (cumul[j] - cumul[j - 1]);
      for (int c = 0; c < dim; c++) row[c] = p[(j - 1) * dim + c] + f * (p[j * dim + c] - p[(j - 1) * dim + c]);
    } else {
      std::copy(p.begin() + (j - 1) * dim, p.begin() + j * dim, row);
    }
  }
  return out;
}

std::vector<float> elargit_format(const std::vector<float>& values, int format) {
  std::vector<float> p;
  if (format == 1) {
    for (size_t i = 0; i < values.size(); i++) p.insert(p.end(), {values[i], static_cast<float>(i), 0.0f});
  } else {
    for (size_t i = 0; i < values.size(); i += 2)
      p.insert(p.end(), {values[i], i + 1 < values.size() ? values[i + 1] : 0.0f, 0.0f});
  }
  return p;
}

std::vector<float> retrecit_format(const std::vector<float>& rows, int format) {
  std::vector<float> out;
  for (size_t i = 0; i + 2 < rows.size(); i += 3)
    for (int k = 0; k < format; k++) out.push_back(rows[i + static_cast<size_t>(k)]);
  return out;
}
