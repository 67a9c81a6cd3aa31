// TRANSF_POI: one loop over the vertices with the values of the
// transformation made ready once (sines, matrices), or per vertex along a
// list with a law of gradation.
#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/random_table.h"
#include "scene/law.h"
#include "scene/matrix.h"
#include "scene/transform.h"

int& graine_alea() {
  static int seed = 0;
  return seed;
}

int nb_valeurs(int kind) {
  switch (kind) {
    case KW_tran: case KW_dila: case KW_alea: case KW_rand: case KW_symx: case KW_symy: case KW_symz: case KW_syma:
      return 3;
    default:
      return 1;
  }
}

namespace {

float defaut(int kind) {
  switch (kind) {
    case KW_dila: case KW_dilx: case KW_dily: case KW_dilz: case KW_hom: return 1.0f;
    default: return 0.0f;
  }
}

// The values made ready for the vertex loop.
struct Pret {
  int kind;
  float v[3];
  float c[3];
  float axis[3];
  float cs = 1, sn = 0;
  float m[16];
};

void prepare(Pret& p, const Transformation& t, const float v[3]) {
  p.kind = t.kind;
  std::copy(v, v + 3, p.v);
  std::copy(t.centre, t.centre + 3, p.c);
  std::copy(t.axis, t.axis + 3, p.axis);
  p.cs = std::cos(v[0]);
  p.sn = std::sin(v[0]);
  if (t.kind == KW_rota) mat::rotation(p.m, v[0], t.axis, t.centre);
}

// A random value from -a to a: the language's generator, or the table
// from the seed on.
struct Hasard {
  bool table;
  int k = 0;
  float operator()(float a) {
    const float u = table ? random_table_at(graine_alea() + k++) : random_uniform();
    return (2 * u - 1) * a;
  }
};

// Turns (a,b) about their centre by the prepared angle.
inline void tourne(float& a, float& b, float ca, float cb, float cs, float sn) {
  const float x = a - ca, y = b - cb;
  a = ca + x * cs - y * sn;
  b = cb + y * cs + x * sn;
}

inline float coupe(float x, float c, float k) {
  if (k == 0) return c;
  if (k > 0) return x > c ? c : x;
  return x < c ? c : x;
}

// One vertex; the kind is a template argument so that the loop over the
// vertices holds no choice.
template <int K>
inline void applique(const Pret& p, const float* s, float* d, Hasard& h) {
  float x = s[0], y = s[1], z = s[2];
  const float* c = p.c;
  switch (K) {
    case KW_tran: x += p.v[0], y += p.v[1], z += p.v[2]; break;
    case KW_dila: x = c[0] + p.v[0] * (x - c[0]), y = c[1] + p.v[1] * (y - c[1]), z = c[2] + p.v[2] * (z - c[2]); break;
    case KW_dilx: x = c[0] + p.v[0] * (x - c[0]); break;
    case KW_dily: y = c[1] + p.v[0] * (y - c[1]); break;
    case KW_dilz: z = c[2] + p.v[0] * (z - c[2]); break;
    case KW_hom: x = c[0] + p.v[0] * (x - c[0]), y = c[1] + p.v[0] * (y - c[1]), z = c[2] + p.v[0] * (z - c[2]); break;
    case KW_symx: x = 2 * p.v[0] - x; break;
    case KW_symy: y = 2 * p.v[1] - y; break;
    case KW_symz: z = 2 * p.v[2] - z; break;
    case KW_syma: x = 2 * p.v[0] - x, y = 2 * p.v[1] - y, z = 2 * p.v[2] - z; break;
    case KW_rotx: tourne(y, z, c[1], c[2], p.cs, p.sn); break;
    case KW_roty: tourne(z, x, c[2], c[0], p.cs, p.sn); break;
    case KW_rotz: tourne(x, y, c[0], c[1], p.cs, p.sn); break;
    case KW_rota: {
      const float q[3] = {x, y, z};
      float r[3];
      mat::point(p.m, q, r);
      x = r[0], y = r[1], z = r[2];
      break;
    }
    case KW_distort: {
      // A twist: the turn about the axis grows with the distance along it.
      float u[3] = {p.axis[0], p.axis[1], p.axis[2]};
      mat::normalise(u);
      const float q[3] = {x - c[0], y - c[1], z - c[2]};
      float m[16], r[3];
      mat::rotation(m, p.v[0] * mat::scalaire(q, u), u, c);
      const float at[3] = {x, y, z};
      mat::point(m, at, r);
      x = r[0], y = r[1], z = r[2];
      break;
    }
    case KW_alea: case KW_rand: x += h(p.v[0]), y += h(p.v[1]), z += h(p.v[2]); break;
    case KW_alex: x += h(p.v[0]); break;
    case KW_aley: y += h(p.v[0]); break;
    case KW_alez: z += h(p.v[0]); break;
    case KW_cutx: x = coupe(x, c[0], p.v[0]); break;
    case KW_cuty: y = coupe(y, c[1], p.v[0]); break;
    case KW_cutz: z = coupe(z, c[2], p.v[0]); break;
    default: break;
  }
  d[0] = x, d[1] = y, d[2] = z;
}

#define ORVELA_KINDS(X)                                                                                     \
  X(KW_tran) X(KW_dila) X(KW_dilx) X(KW_dily) X(KW_dilz) X(KW_hom) X(KW_symx) X(KW_symy) X(KW_symz) X(KW_syma) \
  X(KW_rotx) X(KW_roty) X(KW_rotz) X(KW_rota) X(KW_distort) X(KW_alea) X(KW_rand) X(KW_alex) X(KW_aley)         \
  X(KW_alez) X(KW_cutx) X(KW_cuty) X(KW_cutz)

template <int K>
void boucle(const Pret& p, const float* src, float* dst, int n, int d, Hasard& h) {
  for (int i = 0; i < n; i++) applique<K>(p, src + static_cast<long>(i) * d, dst + static_cast<long>(i) * d, h);
}

void toutes(const Pret& p, const float* src, float* dst, int n, int d, Hasard& h) {
  switch (p.kind) {
#define ORVELA_CASE(k) \
  case k:              \
    return boucle<k>(p, src, dst, n, d, h);
    ORVELA_KINDS(ORVELA_CASE)
#undef ORVELA_CASE
    default:
      return;
  }
}

void une(const Pret& p, const float* src, float* dst, Hasard& h) { toutes(p, src, dst, 1, 3, h); }

// The values of the transformation, mouse factors applied; symmetries
// take theirs as the centre, missing ones from the centre.
void uniformes(const Transformation& t, float v[3]) {
  const bool sym = t.kind == KW_symx || t.kind == KW_symy || t.kind == KW_symz || t.kind == KW_syma;
  for (int j = 0; j < 3; j++)
    v[j] = j < static_cast<int>(t.par.size()) ? t.par[static_cast<size_t>(j)] : (sym ? t.centre[j] : defaut(t.kind));
  v[0] *= t.factor[0];
  if (nb_valeurs(t.kind) > 1) v[1] *= t.factor[1];
}

// Along a list: each value goes from its start (at the first vertex, where
// the law gives 1) to its end (where it gives 0).
void graduees(const Transformation& t, float tt, float v[3]) {
  const float f = t.law == KW_law ? read_law(t.curve.data(), static_cast<int>(t.curve.size() / 3), 3, tt) : loi(t.law, tt);
  for (int j = 0; j < 3; j++) {
    const size_t a = 2 * static_cast<size_t>(j);
    const float start = a < t.par.size() ? t.par[a] : defaut(t.kind);
    const float end = a + 1 < t.par.size() ? t.par[a + 1] : start;
    v[j] = end + f * (start - end);
  }
  v[0] *= t.factor[0];
  if (nb_valeurs(t.kind) > 1) v[1] *= t.factor[1];
}

}  // namespace

void TRANSF_POI(const float* src, float* dst, int n, int d, const Transformation& t) {
  Hasard h{t.alea || t.kind == KW_alea || t.kind == KW_alex || t.kind == KW_aley || t.kind == KW_alez};
  Pret p;
  float v[3];
  if (t.vertices.empty()) {
    uniformes(t, v);
    prepare(p, t, v);
    toutes(p, src, dst, n, d, h);
    return;
  }
  const int m = static_cast<int>(t.vertices.size());
  if (!t.law) {
    uniformes(t, v);
    prepare(p, t, v);
  }
  for (int i = 0; i < m; i++) {
    const int k = t.vertices[static_cast<size_t>(i)];
    if (k < 1 || k > n) continue;  // out of range: skipped
    if (t.law) {
      graduees(t, m > 1 ? static_cast<float>(i) / static_cast<float>(m - 1) : 0.0f, v);
      prepare(p, t, v);
    }
    une(p, src + static_cast<long>(k - 1) * d, dst + static_cast<long>(k - 1) * d, h);
  }
}
