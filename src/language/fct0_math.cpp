// Arithmetic workers of fct0 on FLOAT vectors: element-wise functions in
// double precision stored as single, reductions to one element, lengths,
// products and the points of an arc.
#include <cmath>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/fct0.h"
#include "language/handlers.h"

namespace {

double clamped_acos(double x) { return std::acos(x < -1 ? -1 : x > 1 ? 1 : x); }
double clamped_asin(double x) { return std::asin(x < -1 ? -1 : x > 1 ? 1 : x); }
double truncated(double x) { return std::trunc(x); }
// Nearest integer, halves away from zero: -0.5 gives -1.
double nearest(double x) { return x > 0 ? std::trunc(x + 0.5) : std::trunc(x - 0.5); }

struct Map {
  int code;
  double (*f)(double);
};

constexpr Map MAPS[] = {
    {KW_acos, clamped_acos}, {KW_asin, clamped_asin},
    {KW_atan, [](double x) { return std::atan(x); }},
    {KW_cos, [](double x) { return std::cos(x); }},
    {KW_cosh, [](double x) { return std::cosh(x); }},
    {KW_exp, [](double x) { return std::exp(x); }},
    {KW_sin, [](double x) { return std::sin(x); }},
    {KW_sinh, [](double x) { return std::sinh(x); }},
    {KW_tan, [](double x) { return std::tan(x); }},
    {KW_tanh, [](double x) { return std::tanh(x); }},
    {KW_ent, nearest}, {KW_int, truncated},
};

// The FLOAT argument, or null after the wrong-kind report.
const word* floats(Fct0Call& c) {
  if (tag(c.v) == T_FLOAT) return c.v;
  wrong_kind(c);
  return nullptr;
}

// Element i of v, 0 past its end.
float at(const word* v, int n, int i) { return i < n ? getf(v, i) : 0.0f; }

int one_float(Fct0Call& c, float f) {
  word* r = build_zeros(c.out, c.limit, 1);
  if (!r) return -12;
  setf(r, 0, f);
  return 0;
}

}  // namespace

int fct0_map(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  double (*f)(double) = nullptr;
  for (const Map& m : MAPS)
    if (m.code == c.first[2]) f = m.f;
  word* r = build_zeros(c.out, c.limit, c.n);
  if (!r || !f) return -12;
  for (int i = 0; i < c.n; i++) setf(r, i, static_cast<float>(f(getf(v, i))));
  return 0;
}

// acosh, asinh and atanh have a result of the argument's shape and no
// computation; the elements are left at zero so that nothing is unset.
int fct0_shaped(Fct0Call& c) {
  if (!floats(c)) return -1;
  return build_zeros(c.out, c.limit, c.n) ? 0 : -12;
}

int fct0_abs(Fct0Call& c) {
  if (tag(c.v) == T_CHAR) return copy_result(c, c.v);
  const word* v = floats(c);
  if (!v) return -1;
  word* r = build_zeros(c.out, c.limit, c.n);
  if (!r) return -12;
  for (int i = 0; i < c.n; i++) setf(r, i, std::fabs(getf(v, i)));
  return 0;
}

int fct0_sqrt(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  word* r = build_zeros(c.out, c.limit, c.n);
  if (!r) return -12;
  for (int i = 0; i < c.n; i++) {
    float x = getf(v, i);
    if (x < 0) {
      voir_message(0, MES_SQUARE_ROOT_NEGATIVE);
      x = 0;
    }
    setf(r, i, static_cast<float>(std::sqrt(static_cast<double>(x))));
  }
  return 0;
}

int fct0_log(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  word* r = build_zeros(c.out, c.limit, c.n);
  if (!r) return -12;
  for (int i = 0; i < c.n; i++) {
    float x = getf(v, i);
    if (x < 0) {
      voir_message(0, MES_LOG_NEGATIVE);
      return -1;
    }
    setf(r, i, static_cast<float>(std::log(static_cast<double>(x))));
  }
  return 0;
}

int fct0_average(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  float s = 0;
  for (int i = 0; i < c.n; i++) s += getf(v, i);
  return one_float(c, s / static_cast<float>(c.n));
}

int fct0_sum(Fct0Call& c) {
  float s = 0;
  if (tag(c.v) == T_CHAR) {
    for (int i = 0; i < c.n; i++) s += static_cast<signed char>(text(c.v)[i]);
    return one_float(c, s);
  }
  const word* v = floats(c);
  if (!v) return -1;
  for (int i = 0; i < c.n; i++) s += getf(v, i);
  return one_float(c, s);
}

// max and min: a FLOAT starts from -1e9 or 1e9; a CHAR gives its extreme
// signed byte as a one-character string.
int fct0_extreme(Fct0Call& c) {
  bool max = c.first[2] == KW_max;
  if (tag(c.v) == T_CHAR) {
    signed char best = static_cast<signed char>(text(c.v)[0]);
    for (int i = 1; i < c.n; i++) {
      signed char b = static_cast<signed char>(text(c.v)[i]);
      if (max ? b > best : b < best) best = b;
    }
    char one = static_cast<char>(best);
    return build_text(c.out, c.limit, &one, 1);
  }
  const word* v = floats(c);
  if (!v) return -1;
  float best = max ? -1000000000.0f : 1000000000.0f;
  for (int i = 0; i < c.n; i++) {
    float x = getf(v, i);
    if (max ? x > best : x < best) best = x;
  }
  return one_float(c, best);
}

int fct0_scalar(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  int half = c.n / 2;
  float s = 0;
  for (int i = 0; i < half; i++) s += getf(v, i) * getf(v, half + i);
  return one_float(c, s);
}

// FLOAT: length of the polyline through the points of 3 elements. CHAR:
// 1 minus the share of equal bytes at equal places of the two halves.
int fct0_dist(Fct0Call& c) {
  if (c.time) return TIME_DIST_a(c.record, c.limit);
  if (tag(c.v) == T_CHAR) {
    int half = c.n / 2;
    if (half == 0) return one_float(c, 1.0f);
    const char* s = text(c.v);
    int equal = 0;
    for (int i = 0; i < half; i++)
      if (s[i] == s[half + i]) equal++;
    return one_float(c, 1.0f - static_cast<float>(equal) / static_cast<float>(half));
  }
  const word* v = floats(c);
  if (!v) return -1;
  double length = 0;
  for (int p = 3; p < c.n; p += 3) {
    double dx = at(v, c.n, p) - at(v, c.n, p - 3);
    double dy = at(v, c.n, p + 1) - at(v, c.n, p - 2);
    double dz = at(v, c.n, p + 2) - at(v, c.n, p - 1);
    length += std::sqrt(dx * dx + dy * dy + dz * dz);
  }
  return one_float(c, static_cast<float>(length));
}

int fct0_module(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  int groups = (c.n - 1) / 3 + 1;
  word* r = build_zeros(c.out, c.limit, groups);
  if (!r) return -12;
  for (int g = 0; g < groups; g++) {
    double x = at(v, c.n, 3 * g), y = at(v, c.n, 3 * g + 1), z = at(v, c.n, 3 * g + 2);
    setf(r, g, static_cast<float>(std::sqrt(x * x + y * y + z * z)));
  }
  return 0;
}

int fct0_unit(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  double squares = 0;
  for (int i = 0; i < c.n; i++) squares += static_cast<double>(getf(v, i)) * getf(v, i);
  double length = squares < 0.0000001 ? 1.0 : std::sqrt(squares);
  word* r = build_zeros(c.out, c.limit, c.n);
  if (!r) return -12;
  for (int i = 0; i < c.n; i++) setf(r, i, static_cast<float>(getf(v, i) / length));
  return 0;
}

int fct0_vector(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  float a[3], b[3];
  for (int i = 0; i < 3; i++) {
    a[i] = at(v, c.n, i);
    b[i] = at(v, c.n, 3 + i);
  }
  word* r = build_zeros(c.out, c.limit, 3);
  if (!r) return -12;
  setf(r, 0, a[1] * b[2] - a[2] * b[1]);
  setf(r, 1, a[2] * b[0] - a[0] * b[2]);
  setf(r, 2, a[0] * b[1] - a[1] * b[0]);
  return 0;
}

namespace {

// The sizes of `product ... format(x1, y1, x2, y2)`, absent ones x1.
bool matrix_sizes(const word* item, int size[4]) {
  const word* f = item ? (item[0] > 3 ? item + 3 : nullptr) : nullptr;
  if (!f || tag(f) != T_FLOAT || elements(f) < 1) return false;
  int n = elements(f);
  for (int i = 0; i < 4; i++) size[i] = entier(getf(f, i < n ? i : 0));
  return true;
}

// Matrices of x columns by y rows, row after row: A (x1 by y1) times
// B (x2 by y2), which needs x1 == y2; the result has y1 rows of x2.
int matrix_product(Fct0Call& c, const word* v, const int s[4]) {
  int x1 = s[0], y1 = s[1], x2 = s[2], y2 = s[3];
  if (x1 < 1 || y1 < 1 || x2 < 1 || y2 < 1 || c.n != x1 * y1 + x2 * y2 || x1 != y2) {
    voir_mot(KW_product);
    err_incoherent(nullptr);
    return -1;
  }
  word* r = build_zeros(c.out, c.limit, y1 * x2);
  if (!r) return -12;
  const int b0 = x1 * y1;
  for (int i = 0; i < y1; i++)
    for (int j = 0; j < x2; j++) {
      float s = 0;
      for (int k = 0; k < x1; k++) s += getf(v, i * x1 + k) * getf(v, b0 + k * x2 + j);
      setf(r, i * x2 + j, s);
    }
  return 0;
}

}  // namespace

int fct0_product(Fct0Call& c) {
  const word* v = floats(c);
  if (!v) return -1;
  int s[4];
  if (c.second && c.second[2] == KW_format && matrix_sizes(c.second, s)) return matrix_product(c, v, s);
  float p = 1.0f;
  for (int i = 0; i < c.n; i++) p *= getf(v, i);
  return one_float(c, p);
}

// `arc(r, a, da, n)`: n points of the circle of radius r about the origin
// in the plane z = 0, the first at angle a, each next one da further
// (degrees, counter-clockwise): r cos(a + k da), r sin(a + k da), 0.
int fct0_arc(Fct0Call& c) {
  if (tag(c.v) != T_FLOAT || c.n < 4 || getf(c.v, 3) < 1 || getf(c.v, 3) > 1e7f) {
    voir_message(0, MES_ARC_USAGE);
    return -1;
  }
  double radius = getf(c.v, 0), a = getf(c.v, 1), da = getf(c.v, 2);
  int points = entier(getf(c.v, 3));
  word* r = build_zeros(c.out, c.limit, 3 * points);
  if (!r) return -12;
  const double rad = 3.14159265358979323846 / 180.0;
  for (int k = 0; k < points; k++) {
    double angle = (a + k * da) * rad;
    setf(r, 3 * k, static_cast<float>(radius * std::cos(angle)));
    setf(r, 3 * k + 1, static_cast<float>(radius * std::sin(angle)));
  }
  return 0;
}

namespace {

// Inverse of a 4 by 4 matrix by Gauss-Jordan with partial pivoting;
// false when it is singular.
bool invert4(const float m[16], float out[16]) {
  double a[4][8];
  for (int i = 0; i < 4; i++)
    for (int j = 0; j < 4; j++) {
      a[i][j] = m[4 * i + j];
      a[i][4 + j] = i == j ? 1.0 : 0.0;
    }
  for (int col = 0; col < 4; col++) {
    int pivot = col;
    for (int i = col + 1; i < 4; i++)
      if (std::fabs(a[i][col]) > std::fabs(a[pivot][col])) pivot = i;
    if (std::fabs(a[pivot][col]) < 1e-12) return false;
    for (int j = 0; j < 8; j++) std::swap(a[col][j], a[pivot][j]);
    double d = a[col][col];
    for (int j = 0; j < 8; j++) a[col][j] /= d;
    for (int i = 0; i < 4; i++) {
      if (i == col) continue;
      double f = a[i][col];
      for (int j = 0; j < 8; j++) a[i][j] -= f * a[col][j];
    }
  }
  for (int i = 0; i < 4; i++)
    for (int j = 0; j < 4; j++) out[4 * i + j] = static_cast<float>(a[i][4 + j]);
  return true;
}

int inverse_matrix(Fct0Call& c) {
  float m[16], inv[16];
  for (int i = 0; i < 16; i++) m[i] = getf(c.v, i);
  if (!invert4(m, inv)) {
    voir_mot(KW_inv);
    err_incoherent(nullptr);
    return -1;
  }
  word* r = build_zeros(c.out, c.limit, 16);
  if (!r) return -12;
  r[2] = 4;
  r[3] = 4;
  for (int i = 0; i < 16; i++) setf(r, i, inv[i]);
  return 0;
}

}  // namespace

// `inv`: with a `matrix` item, the inverse of a 4 by 4 matrix; otherwise
// the value reversed (CHAR bytes, or FLOAT groups of `format` elements,
// 3 by default, a tail that fills no group dropped).
int fct0_inv(Fct0Call& c) {
  if (tag(c.v) == T_CHAR) {
    TextOut t = text_begin(c);
    for (int i = c.n - 1; i >= 0; i--) text_put(t, text(c.v)[i]);
    return text_end(t);
  }
  const word* v = floats(c);
  if (!v) return -1;
  if (c.second && c.second[2] == KW_matrix && c.n == 16) return inverse_matrix(c);
  int group = 3;
  if (c.second && c.second[2] == KW_format && c.second[0] > 3 && tag(c.second + 3) == T_FLOAT &&
      value_length(c.second + 3) > 0)
    group = entier(getf(c.second + 3, 0));
  if (group < 1) group = 1;
  int groups = c.n / group;
  word* r = build_zeros(c.out, c.limit, groups * group);
  if (!r) return -12;
  for (int g = 0; g < groups; g++)
    for (int k = 0; k < group; k++) setf(r, g * group + k, getf(v, (groups - 1 - g) * group + k));
  return 0;
}
