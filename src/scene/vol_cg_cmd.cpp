// CG_b: centres of gravity. `CG vol(id)` gives the mean of the volumes'
// centres; the other words ask for a centre of a part of each volume,
// one point per part, the volumes' answers following each other:
//   vertex(n1,n2...)  the mean of these vertices (all without numbers)
//   fac(f1,f2...)     the centre of each facet (each facet without numbers)
//   secy(j...)        the centre of the ring of vertices j of a sectioned
//                     volume, from 0 to secy (every ring without numbers)
//   secx(i...)        the centre of column i, from 0 (every column)
//   coe(w1,w2...)     the mean of the vertices weighted by w1, w2... (by
//                     the volume's `coe` values without numbers); the
//                     vertices past the weights weigh nothing
//   animate           how far the centre moved since it was first computed
//   image(id)         the centre of an image's pixels weighted by their
//                     brightness, in pixels from the first pixel
// and the modes `abs` (the centre where the volume is drawn), `anc` (the
// origin of its matrix) and `matrix` (the origin of `matrix anc`).
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/property_rw.h"
#include "scene/vol_commands.h"
#include "scene/vol_generate.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

using Points = std::vector<float>;

struct Somme {
  double s[3] = {0, 0, 0};
  double poids = 0;
  void ajoute(const float* p, int d, double w = 1) {
    for (int k = 0; k < 3 && k < d; k++) s[k] += w * p[k];
    poids += w;
  }
  void vers(Points& out) const {
    if (poids == 0) return;
    for (double x : s) out.push_back(static_cast<float>(x / poids));
  }
};

const float* sommet(const word* poi, int k) { return reinterpret_cast<const float*>(poi + 4) + (k - 1) * stride(poi); }

// The vertex numbers asked, or 1..n without numbers.
std::vector<int> demandes(const word* v, int n) {
  if (v) return numeros(v);
  std::vector<int> tous;
  for (int k = 1; k <= n; k++) tous.push_back(k);
  return tous;
}

int cg_vertex(Objet* o, const word* poi, const word* v, Points& out) {
  Somme m;
  for (int k : demandes(v, poi[2])) {
    if (k < 1 || k > poi[2]) hors_limite(k);
    else m.ajoute(sommet(poi, k), stride(poi));
  }
  (void)o;
  m.vers(out);
  return 0;
}

int cg_fac(Objet* o, const word* poi, const word* v, Points& out) {
  const word* fac = fac_vol(o);
  const int nf = fac ? fac[2] : 0;
  std::vector<std::vector<int>> facettes(static_cast<size_t>(nf));
  pour_chaque_entree(fac, [&](int i, const word* f, int n) { facettes[static_cast<size_t>(i)].assign(f, f + n); });
  for (int k : demandes(v, nf)) {
    if (k < 1 || k > nf) {
      hors_limite(k);
      continue;
    }
    Somme m;
    for (int a : facettes[static_cast<size_t>(k - 1)])
      if (a >= 1 && a <= poi[2]) m.ajoute(sommet(poi, a), stride(poi));
    m.vers(out);
  }
  return 0;
}

// Rings (secy) hold the m vertices of one profile point; columns (secx)
// one vertex of each ring.
int cg_sections(Objet* o, const word* poi, const word* v, bool anneaux, Points& out) {
  if (vol_secx(o) < 1) {
    voir_objet(o);
    voir_message(1, MESG_NOT_A_GRID);
    return -1;
  }
  const int m = vol_close(o) ? vol_secx(o) : vol_secx(o) + 1;
  const int lignes = (poi[2] + m - 1) / m;
  for (int k : demandes(v, anneaux ? lignes : m)) {
    if (v) k++;  // rings and columns are numbered from 0
    if (k < 1 || k > (anneaux ? lignes : m)) {
      hors_limite(k - 1);
      continue;
    }
    Somme s;
    for (int a = 1; a <= poi[2]; a++)
      if ((anneaux ? (a - 1) / m : (a - 1) % m) == k - 1) s.ajoute(sommet(poi, a), stride(poi));
    s.vers(out);
  }
  return 0;
}

int cg_secx(Objet* o, const word* poi, const word* v, Points& out) { return cg_sections(o, poi, v, false, out); }
int cg_secy(Objet* o, const word* poi, const word* v, Points& out) { return cg_sections(o, poi, v, true, out); }

int cg_coe(Objet* o, const word* poi, const word* v, Points& out) {
  const word* w = v ? v : get_val_1(o->local, KW_coe);
  const std::vector<float> poids = floats_of(w);
  Somme m;
  for (size_t i = 0; i < poids.size() && i < static_cast<size_t>(poi[2]); i++)
    m.ajoute(sommet(poi, static_cast<int>(i) + 1), stride(poi), poids[i]);
  if (m.poids == 0) {
    voir_mot(KW_coe);
    voir_message(0, MES_DIVISION_BY_ZERO);
    return -1;
  }
  m.vers(out);
  return 0;
}

int cg_animate(Objet* o, const word*, const word*, Points& out) {
  float c[3];
  if (det_cg_vol(o, c) < 0) return -1;
  const word* g = get_val_1(o->local, KW_CG);
  for (int k = 0; k < 3; k++) out.push_back(c[k] - getf(g, 3 + k));
  return 0;
}

struct FormeCG {
  int code;
  int (*f)(Objet*, const word* poi, const word* params, Points&);
};
const FormeCG FORMES[] = {{KW_vertex, cg_vertex}, {KW_fac, cg_fac}, {KW_secx, cg_secx},
                          {KW_secy, cg_secy},     {KW_coe, cg_coe}, {KW_animate, cg_animate}};

int par_parties(word* s, const FormeCG& forme, const std::vector<Objet*>& objets, const word* lim) {
  Points out;
  const word* params = arg_of(s, forme.code);
  for (Objet* o : objets) {
    const word* poi = poi_requis(o, "CG_b()");
    if (!poi || forme.f(o, poi, params, out) < 0) {
      TRACE_FAIL("CG_b()");
      return -1;
    }
  }
  return build_floats_or_nil(s, lim, out, 3);
}

// The brightness-weighted centre of the pixels of each image.
int cg_images(word* s, const std::vector<Objet*>& objets, const word* lim) {
  Points out;
  for (Objet* o : objets) {
    const word* px = get_val_1(o->local, KW_image);
    if (!px || tag(px) != T_IMAGE || np(px) < 1) {
      err_vide("CG_b()", o);
      return -1;
    }
    const int n = np(px);
    const int nx = o->work[0] > 0 && n % o->work[0] == 0 ? o->work[0] : static_cast<int>(std::sqrt(n));
    const auto* octets = reinterpret_cast<const unsigned char*>(px + 4);
    Somme m;
    for (int i = 0; i < n; i++) {
      const float xy[2] = {static_cast<float>(i % std::max(nx, 1)), static_cast<float>(i / std::max(nx, 1))};
      m.ajoute(xy, 2, (octets[4 * i] + octets[4 * i + 1] + octets[4 * i + 2]) / 765.0);
    }
    if (m.poids == 0) m.s[0] = (nx - 1) / 2.0, m.s[1] = (n / std::max(nx, 1) - 1) / 2.0, m.poids = 1;
    m.vers(out);
  }
  return build_floats_or_nil(s, lim, out, 3);
}

ModeCG mode_de(word* s) {
  if (find_item(s, KW_abs)) return ModeCG::Abs;
  if (find_item(s, KW_anc)) return ModeCG::Anc;
  if (find_item(s, KW_matrix)) return ModeCG::Matrix;
  return ModeCG::Local;
}

}  // namespace

int CG_b(word* s, const word* ob, word* st, const word* lim) {
  if (ob) return bloc_0(s, ob, st, lim);
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  if (sel.object_code == KW_image) return cg_images(s, objets, lim);
  for (const FormeCG& f : FORMES)
    if (find_item(s, f.code)) return par_parties(s, f, objets, lim);
  float c[3];
  if (!CG_VOL(objets, mode_de(s), c)) return build_nil(s);
  return build_floats_or_nil(s, lim, {c[0], c[1], c[2]}, 3);
}
