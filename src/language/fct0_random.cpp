// Random numbers of fct0: `rand(k)` integers between 0 and k, `randf(x)`
// floats between 0 and x, and their two-bound forms over pairs (a, b).
// rand() here has the range 0 to 32767 that the randf arithmetic assumes.
#include <cmath>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/random_table.h"
#include "kernel/report.h"
#include "language/fct0.h"

int rand_int() { return static_cast<int>(random_uniform() * 32768.0f) & 32767; }

namespace {

// k > 0: 0 to k-1; k < 0: -k+1 to 0; 0: 0.
float rand_of(int k) {
  if (k > 0) return static_cast<float>(rand_int() % k);
  if (k < 0) return static_cast<float>(-(rand_int() % -k));
  return 0.0f;
}

float randf_of(float x) {
  float ax = std::fabs(x);
  if (ax < 0.0001f) return 0.0f;
  float s = 32767.0f / ax;
  int m = entier(ax * s);
  if (m == 0) return 0.0f;
  float r = static_cast<float>(rand_int() % m) / s;
  return x < 0 ? -r : r;
}

float rand2_of(float a, float b) {
  int ia = entier(a), ib = entier(b);
  return static_cast<float>(ia) + rand_of(entier(static_cast<float>(ib) - static_cast<float>(ia)));
}

float rand2f_of(float a, float b) { return randf_of(b - a) + a; }

}  // namespace

int fct0_random(Fct0Call& c) {
  if (tag(c.v) != T_FLOAT) return wrong_kind(c);
  const int code = c.first[2];
  if (code == KW_rand || code == KW_randf) {
    word* r = build_zeros(c.out, c.limit, c.n);
    if (!r) return -12;
    for (int i = 0; i < c.n; i++) {
      float x = getf(c.v, i);
      setf(r, i, code == KW_rand ? rand_of(entier(x)) : randf_of(x));
    }
    return 0;
  }
  int pairs = c.n / 2;
  if (pairs == 0) {
    voir_mot(code);
    voir_texte("(x,y)");
    voir_texte("\n");
    return -1;
  }
  word* r = build_zeros(c.out, c.limit, pairs);
  if (!r) return -12;
  for (int i = 0; i < pairs; i++) {
    float a = getf(c.v, 2 * i), b = getf(c.v, 2 * i + 1);
    setf(r, i, code == KW_rand2 ? rand2_of(a, b) : rand2f_of(a, b));
  }
  return 0;
}
