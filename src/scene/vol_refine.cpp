// `poi generate` and `fac generate`: a copy of the volume refined
// (`frac`) or given a thickness (`ext`), for the display and the
// dynamics to use in place of `poi` and `fac`.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "kernel/access.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "scene/vol_gen.h"
#include "scene/vol_generate.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

constexpr int MAX_FRAC = 4;  // each level multiplies the facets by about 4

struct Maillage {
  std::vector<float> p;                 // x,y,z per vertex
  std::vector<std::vector<int>> f;      // vertex numbers from 1
  int ajoute(const float* q) {
    p.insert(p.end(), q, q + 3);
    return static_cast<int>(p.size() / 3);
  }
  const float* sommet(int k) const { return &p[static_cast<size_t>(k - 1) * 3]; }
};

// An edge as one key, whichever way it is walked.
uint64_t arete(int a, int b) {
  return static_cast<uint64_t>(static_cast<uint32_t>(std::min(a, b))) << 32 | static_cast<uint32_t>(std::max(a, b));
}

Maillage maillage_vol(const word* poi, const word* fac) {
  Maillage m;
  const int d = stride(poi);
  const float* p = reinterpret_cast<const float*>(poi + 4);
  for (int i = 0; i < poi[2]; i++) {
    const float q[3] = {p[i * d], d > 1 ? p[i * d + 1] : 0, d > 2 ? p[i * d + 2] : 0};
    m.ajoute(q);
  }
  const int nv = poi[2];
  pour_chaque_facette(fac, [&](const word* v, int n) {
    std::vector<int> f;
    for (int i = 0; i < n; i++)
      if (v[i] >= 1 && v[i] <= nv) f.push_back(v[i]);
    if (!f.empty()) m.f.push_back(std::move(f));
  });
  return m;
}

// The size of m refined `niveaux` times, counted before refining. The
// first level splits each edge of the facets of 3 vertices or more and
// adds a centre to each, making one quadrilateral a vertex; each later
// level does the same to quadrilaterals: V += E + F, E = 2E + 4F, F = 4F.
// Facets of fewer vertices are carried as they are.
Taille taille_raffinee(const Maillage& m, int niveaux) {
  std::unordered_set<uint64_t> aretes;
  double grandes = 0, sommets_grandes = 0;
  Taille petites;
  for (const std::vector<int>& f : m.f) {
    const size_t n = f.size();
    if (n < 3) {
      petites.facette(static_cast<double>(n));
      continue;
    }
    grandes++;
    sommets_grandes += static_cast<double>(n);
    for (size_t i = 0; i < n; i++) aretes.insert(arete(f[i], f[(i + 1) % n]));
  }
  double v = static_cast<double>(m.p.size() / 3) + static_cast<double>(aretes.size()) + grandes;
  double e = 2.0 * static_cast<double>(aretes.size()) + sommets_grandes, q = sommets_grandes;
  for (int l = 1; l < niveaux; l++) {
    v += e + q;
    e = 2 * e + 4 * q;
    q *= 4;
  }
  Taille t = petites;
  t.sommets = v;
  t.quadrilateres(q);
  return t;
}

// One level: every facet of m >= 3 vertices becomes m quadrilaterals
// (a vertex, the middle of its next edge, the facet's centre, the middle
// of its previous edge), in the facet's own turning direction. Edge
// middles are shared by the facets on both sides. The shape is unchanged.
Maillage raffine(const Maillage& in) {
  Maillage out;
  out.p = in.p;
  std::unordered_map<uint64_t, int> milieux;
  auto milieu = [&](int a, int b) {
    const uint64_t k = arete(a, b);
    if (auto it = milieux.find(k); it != milieux.end()) return it->second;
    float q[3];
    for (int c = 0; c < 3; c++) q[c] = (out.sommet(a)[c] + out.sommet(b)[c]) / 2;
    return milieux[k] = out.ajoute(q);
  };
  for (const std::vector<int>& f : in.f) {
    interrupt_check();
    const int n = static_cast<int>(f.size());
    if (n < 3) {
      out.f.push_back(f);
      continue;
    }
    float c[3] = {0, 0, 0};
    for (int v : f)
      for (int k = 0; k < 3; k++) c[k] += out.sommet(v)[k] / static_cast<float>(n);
    const int centre = out.ajoute(c);
    for (int i = 0; i < n; i++) {
      const int a = f[static_cast<size_t>(i)];
      const int suivant = f[static_cast<size_t>((i + 1) % n)], precedent = f[static_cast<size_t>((i + n - 1) % n)];
      out.f.push_back({a, milieu(a, suivant), centre, milieu(precedent, a)});
    }
  }
  return out;
}

// The surface and a copy moved by `t` along the vertex normals: the copy
// keeps the facets' direction, the surface is turned inside, and each
// edge used by one facet only is closed by a quadrilateral.
Maillage epaissit(const Maillage& in, const word* normales, float t) {
  Maillage out = in;
  const int n = static_cast<int>(in.p.size() / 3);
  for (int i = 1; i <= n; i++) {
    float q[3];
    for (int c = 0; c < 3; c++) q[c] = in.sommet(i)[c] + t * wf(normales[4 + (i - 1) * 3 + c]);
    out.ajoute(q);
  }
  std::unordered_map<uint64_t, int> usage;
  for (const std::vector<int>& f : in.f)
    for (size_t i = 0; i < f.size(); i++) usage[arete(f[i], f[(i + 1) % f.size()])]++;
  out.f.clear();
  for (const std::vector<int>& f : in.f) {
    interrupt_check();
    std::vector<int> haut(f), bas(f.rbegin(), f.rend());
    for (int& v : haut) v += n;
    out.f.push_back(haut);
    out.f.push_back(bas);
  }
  for (const std::vector<int>& f : in.f)
    for (size_t i = 0; f.size() > 1 && i < f.size(); i++) {
      const int a = f[i], b = f[(i + 1) % f.size()];
      if (a != b && usage[arete(a, b)] == 1) out.f.push_back({a, b, b + n, a + n});
    }
  return out;
}

std::vector<word> liste_facettes(const Maillage& m) {
  std::vector<word> h{0, T_HYBRIDE, static_cast<word>(m.f.size()), 0};
  for (const std::vector<int>& f : m.f) {
    h.push_back(static_cast<word>(4 + f.size()));
    h.push_back(T_LONG);
    h.push_back(1);
    h.push_back(static_cast<word>(f.size()));
    h.insert(h.end(), f.begin(), f.end());
  }
  h[0] = static_cast<word>(h.size());
  return h;
}

// Stores the result, the choice that made it, and marks the per-image
// state: facets and vertices valid.
int stocke(Objet* o, const Maillage& m, Cible c) {
  const int kp[] = {KW_poi, KW_generate}, kf[] = {KW_fac, KW_generate}, kg[] = {KW_generate};
  const std::vector<word> fac = liste_facettes(m);
  if (!stocke_floats(o, 2, kp, m.p, 3) || !stocke_derive(o, 2, kf, fac.data()) ||
      !stocke_floats(o, 1, kg, {static_cast<float>(c.code), c.param}, 2))
    return -1;
  bloc etat = set_val_2(o, KW_meta, KW_generate, 2);
  if (!etat) return -1;
  setf(etat, 0, 1.0f);
  setf(etat, 1, 1.0f);
  return 0;
}

}  // namespace

Cible cible_vol(Objet* o) {
  const word* g = o ? get_val_1(o->local, KW_generate) : nullptr;
  Cible c{KW_frac, 1};
  if (g && g[1] == T_FLOAT && g[0] >= 6) {
    const int code = entier(getf(g, 0));
    if (code == KW_frac || code == KW_ext) c = {code, getf(g, 1)};
  }
  return c;
}

int generer_cible(Objet* o, Cible c) {
  const word* poi = poi_requis(o, "generer_cible()");
  if (!poi) return -1;
  Maillage m = maillage_vol(poi, fac_vol(o));
  if (c.code == KW_ext) {
    const int kn[] = {KW_normal, KW_vertex};
    const word* n = derive_vol(o, 2, kn);
    if (!n) return -1;
    const float t = c.param != 0 ? c.param : det_rayon(o, nullptr) / 10;
    // At most: every edge a border.
    Taille epais;
    epais.sommets = 2.0 * static_cast<double>(m.p.size() / 3);
    for (const std::vector<int>& f : m.f) {
      epais.facette(static_cast<double>(f.size()));
      epais.facette(static_cast<double>(f.size()));
      epais.quadrilateres(static_cast<double>(f.size()));
    }
    if (!volume_possible(epais, 2, "generer_cible()")) return -1;
    m = epaissit(m, n, t);
  } else {
    const int niveaux = std::clamp(entier(c.param), 1, MAX_FRAC);
    c.param = static_cast<float>(niveaux);
    // Held as lists of lists while refined: about twice the blocks more.
    if (!volume_possible(taille_raffinee(m, niveaux), 2, "generer_cible()")) return -1;
    for (int i = 0; i < niveaux; i++) m = raffine(m);
  }
  if (stocke(o, m, c) < 0) {
    TRACE_FAIL("generer_cible()");
    return -1;
  }
  return 0;
}
