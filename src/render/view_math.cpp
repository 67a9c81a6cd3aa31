// The matrices of a view, computed on plain values.
#include <cmath>
#include <cstring>

#include "render/view.h"
#include "scene/matrix.h"

using mat::identite;

// Row-major arrays read as column-major are the transposes: the product
// of the transposes in the other order is the transpose of a.b.
void produit_4x4(const float a[16], const float b[16], float out[16]) { mat::produit(b, a, out); }

bool inverse_4x4(const float m[16], float out[16]) {
  // Gauss-Jordan with partial pivoting, in double.
  double a[4][8];
  for (int i = 0; i < 4; i++)
    for (int j = 0; j < 8; j++) a[i][j] = j < 4 ? m[i * 4 + j] : (j - 4 == i ? 1.0 : 0.0);
  for (int c = 0; c < 4; c++) {
    int p = c;
    for (int r = c + 1; r < 4; r++)
      if (std::fabs(a[r][c]) > std::fabs(a[p][c])) p = r;
    if (std::fabs(a[p][c]) < 1e-30) return false;
    if (p != c)
      for (int j = 0; j < 8; j++) std::swap(a[p][j], a[c][j]);
    const double d = a[c][c];
    for (int j = 0; j < 8; j++) a[c][j] /= d;
    for (int r = 0; r < 4; r++) {
      if (r == c) continue;
      const double f = a[r][c];
      for (int j = 0; j < 8; j++) a[r][j] -= f * a[c][j];
    }
  }
  for (int i = 0; i < 4; i++)
    for (int j = 0; j < 4; j++) out[i * 4 + j] = static_cast<float>(a[i][j + 4]);
  return true;
}

bool view_matrices(const float eye[3], const float aim[3], float foc, float roll, int dimx, int dimy,
                   float coe_foc, bool with_pers, ViewMatrices& m) {
  float E[3] = {eye[0], eye[1], eye[2]};
  // A vertical view is kept away from the degenerate frame.
  if (E[0] == 0 && E[2] == 0) E[2] = E[1] <= 0 ? 1.0f : -1.0f;
  float f = foc * 1.28f;
  if (coe_foc != 0) f *= coe_foc;
  if (std::fabs(f) < 0.0001f) return false;
  float w[3] = {aim[0] - E[0], aim[1] - E[1], aim[2] - E[2]};
  const float dist = std::sqrt(w[0] * w[0] + w[1] * w[1] + w[2] * w[2]);
  if (dist > 0.0000001f)
    for (float& c : w) c /= dist;
  const float h = dist * f;
  m.dist = dist;
  m.coe_pers = (2 * dist - h) * h;
  float u[3] = {w[2], 0, -w[0]};
  const float lu = std::sqrt(u[0] * u[0] + u[2] * u[2]);
  if (lu > 0.0000001f || lu < -0.0000001f) {
    u[0] /= lu;
    u[2] /= lu;
  }
  const float v[3] = {w[1] * u[2], u[0] * w[2] - w[0] * u[2], -u[0] * w[1]};
  const float c = std::cos(roll), s = std::sin(roll);

  // abs eye: the roll in the plane x,y, after the frame u,v,w, after the
  // translation by -E.
  float rot[16], tr[16], rl[16];
  identite(rot);
  identite(tr);
  identite(rl);
  for (int j = 0; j < 3; j++) {
    rot[0 * 4 + j] = u[j];
    rot[1 * 4 + j] = v[j];
    rot[2 * 4 + j] = w[j];
    tr[j * 4 + 3] = -E[j];
  }
  rl[0] = c;
  rl[1] = -s;
  rl[4] = s;
  rl[5] = c;
  produit_4x4(rot, tr, m.abs_eye);
  produit_4x4(rl, m.abs_eye, m.abs_eye);

  if (with_pers) {
    const float d = ((dimx + dimy) * 0.5f) / f;
    const float K = 1 - d / 32000.0f;
    std::memset(m.eye_pers, 0, sizeof m.eye_pers);
    m.eye_pers[0] = m.eye_pers[5] = 1;
    m.eye_pers[10] = 1 / (d * K);
    m.eye_pers[11] = -1 / K;
    m.eye_pers[14] = 1 / d;
  }
  produit_4x4(m.eye_pers, m.abs_eye, m.abs_pers);

  // eye abs: the opposite roll, then the frame's transpose, then E.
  float rlt[16], rott[16], tre[16];
  identite(rlt);
  identite(rott);
  identite(tre);
  rlt[0] = c;
  rlt[1] = s;
  rlt[4] = -s;
  rlt[5] = c;
  for (int i = 0; i < 3; i++)
    for (int j = 0; j < 3; j++) rott[i * 4 + j] = rot[j * 4 + i];
  for (int j = 0; j < 3; j++) tre[j * 4 + 3] = E[j];
  produit_4x4(rott, rlt, m.eye_abs);
  produit_4x4(tre, m.eye_abs, m.eye_abs);
  if (!inverse_4x4(m.abs_pers, m.pers_abs)) identite(m.pers_abs);
  return true;
}
