#include "scene/matrix.h"

#include <cmath>
#include <cstring>

namespace mat {

void identite(float m[16]) {
  for (int i = 0; i < 16; i++) m[i] = i % 5 == 0 ? 1.0f : 0.0f;
}

void produit(const float a[16], const float b[16], float r[16]) {
  float t[16];
  for (int c = 0; c < 4; c++)
    for (int row = 0; row < 4; row++) {
      float s = 0;
      for (int k = 0; k < 4; k++) s += a[k * 4 + row] * b[c * 4 + k];
      t[c * 4 + row] = s;
    }
  std::memcpy(r, t, sizeof t);
}

void point(const float m[16], const float p[3], float r[3]) {
  const float x = p[0], y = p[1], z = p[2];
  for (int row = 0; row < 3; row++) r[row] = m[row] * x + m[4 + row] * y + m[8 + row] * z + m[12 + row];
}

void echelle(float m[16], float kx, float ky, float kz) {
  identite(m);
  m[0] = kx;
  m[5] = ky;
  m[10] = kz;
}

void rotation(float m[16], float a, const float axis[3], const float c[3]) {
  identite(m);
  float u[3] = {axis[0], axis[1], axis[2]};
  const float len = std::sqrt(scalaire(u, u));
  if (len < 0.0001f) return;
  for (float& x : u) x /= len;
  const float co = std::cos(a), si = std::sin(a), t = 1.0f - co;
  // The turn about the unit axis (Rodrigues), then the centre moved back.
  const float r[3][3] = {{t * u[0] * u[0] + co, t * u[0] * u[1] - si * u[2], t * u[0] * u[2] + si * u[1]},
                         {t * u[0] * u[1] + si * u[2], t * u[1] * u[1] + co, t * u[1] * u[2] - si * u[0]},
                         {t * u[0] * u[2] - si * u[1], t * u[1] * u[2] + si * u[0], t * u[2] * u[2] + co}};
  for (int row = 0; row < 3; row++) {
    for (int col = 0; col < 3; col++) m[col * 4 + row] = r[row][col];
    m[12 + row] = c[row] - (r[row][0] * c[0] + r[row][1] * c[1] + r[row][2] * c[2]);
  }
}

float scalaire(const float a[3], const float b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

void moyenne(const float* p, int n, int d, float r[3]) {
  double s[3] = {0, 0, 0};
  for (int i = 0; i < n; i++)
    for (int k = 0; k < 3 && k < d; k++) s[k] += p[i * d + k];
  for (int k = 0; k < 3; k++) r[k] = n > 0 ? static_cast<float>(s[k] / n) : 0.0f;
}

void vectoriel(const float a[3], const float b[3], float r[3]) {
  const float x = a[1] * b[2] - a[2] * b[1];
  const float y = a[2] * b[0] - a[0] * b[2];
  const float z = a[0] * b[1] - a[1] * b[0];
  r[0] = x, r[1] = y, r[2] = z;
}

void vectoriel_points(const float a[3], const float b[3], const float c[3], float r[3]) {
  const float u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const float v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  vectoriel(u, v, r);
}

void normalise(float v[3]) {
  const float len = std::sqrt(scalaire(v, v));
  if (len <= 0.0000001f) return;
  for (int k = 0; k < 3; k++) v[k] /= len;
}

void unitaire(const float a[3], const float b[3], float r[3]) {
  for (int k = 0; k < 3; k++) r[k] = b[k] - a[k];
  normalise(r);
}

float distance2(const float a[3], const float b[3]) {
  const float x = b[0] - a[0], y = b[1] - a[1], z = b[2] - a[2];
  return x * x + y * y + z * z;
}

}  // namespace mat
