// The learning of `generate network`: what a run needs is built, passes
// run with their coefficient until the patterns are learned, and a
// layered network is checked and keeps its best weights.
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <string>

#include "adaptive/net_internal.h"
#include "adaptive/net_state.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "scene/law.h"

void rapport_manque(const Objet* o, int code) {
  voir_mot(o->kind);
  if (o->name) VOIR_CHAR("%s ", o->name);
  else voir_int("%d ", o->id);
  VOIR_CHAR("%s", vocab().name[code]);
  voir_message(0, MES_MISSING);
}

namespace {

// A FLOAT pattern list made a list of one pattern.
int en_liste(Objet* o, int code) {
  const word* v = get_val_1(o->local, code);
  if (!v || tag(v) == T_HYBRIDE) return 0;
  if (tag(v) != T_FLOAT) return 0;
  std::vector<word> l = liste_vide();
  liste_ajoute(l, v);
  return set_propr_1(o, code, l.data()) ? 0 : -1;
}

// The sizes of the layers' ends against the patterns: "(k) n != nx * ny"
// after `fac` and the list's keyword.
int accorde(const word* layer, const word* list, int code) {
  int k = 0;
  for (const word* e : Parties{list}) {
    k++;
    if (elements(e) == elements(layer)) continue;
    voir_mot(KW_fac);
    voir_mot(code);
    char buf[96];
    std::snprintf(buf, sizeof buf, "(%d) %d != %d * %d\a\n", k, elements(layer), dimp(e) > 0 ? dimp(e) : 1, np(e));
    voir_texte(buf);
    return -1;
  }
  return 0;
}

float coefficient(const NetOptions& opt, float start, float end, int pass) {
  const float t = opt.passes > 1 ? static_cast<float>(pass - 1) / static_cast<float>(opt.passes - 1) : 0.0f;
  if (opt.curve.size() >= 3) return read_law(opt.curve.data(), static_cast<int>(opt.curve.size() / 3), 3, t);
  const float step = opt.passes > 1 ? (end - start) / static_cast<float>(opt.passes - 1) : 0.0f;
  return start + step * static_cast<float>(pass - 1);
}

void copie_matrice(const word* from, bloc to) {
  std::memcpy(to + 4, from + 4, static_cast<size_t>(elements(from)) * sizeof(word));
}

const word* derniere(const word* fac) {
  const word* last = nullptr;
  for (const word* l : Parties{fac}) last = l;
  return last;
}

}  // namespace

int complete_reseau(Objet* o, const NetOptions& opt, bool resume) {
  if (en_liste(o, KW_motif) < 0 || en_liste(o, KW_law) < 0 || egalise_listes(o) < 0) return -1;
  Reseau r = trouve_reseau(o);
  if (!r.fac && generer_fac_reseau(o, 1) < 0) return -1;
  r = trouve_reseau(o);
  if (!r.fac) return -1;
  if (!r.inv_fac && set_inv_fac(o) < 0) return -1;
  if (!get_val_1(o->local, KW_func) && !get_val_2(o->local, KW_func, KW_neuron)) {
    const float f[2] = {1.0f, 1.0f};
    if (!set_propr_1(o, KW_func, valeur_floats(f, 2).data())) return -1;
  }
  r = trouve_reseau(o);
  if (!r.law) {
    std::vector<word> l = liste_vide();
    const int m = elements(derniere(r.fac));
    const std::vector<float> zeros(static_cast<size_t>(m), 0.0f);
    for (const word* e : Parties{r.motif}) {
      (void)e;
      liste_ajoute(l, valeur_floats(zeros.data(), m, m).data());
    }
    if (!set_propr_1(o, KW_law, l.data())) return -1;
  }
  if (!r.matrix) {
    const std::vector<float> zeros(static_cast<size_t>(r.N) * r.N, 0.0f);
    if (!set_propr_1(o, KW_matrix, valeur_floats(zeros.data(), r.N * r.N, r.N).data())) return -1;
    r = trouve_reseau(o);
    if (opt.read) go_rand(r, opt.mass[0], opt.mass[1], opt.mass[2], opt.alea_given ? opt.alea : -2);
    else go_rand(r, -0.5f, 0.5f, 0.01f, opt.alea_given ? opt.alea : graine_horloge());
  }
  if (!r.best && !set_propr_1(o, -KW_matrix, r.matrix)) return -1;
  if (!r.neuron) {
    if (resume) {
      rapport_manque(o, KW_neuron);
      return -1;
    }
    if (cree_neurones(o) < 0) return -1;
  }
  r = trouve_reseau(o);
  if (r.kind() == KW_texture && !r.near) {
    const int n = elements(*Parties{r.fac}.begin());
    const std::vector<int> t = table_voisins(n, r.N - n);
    if (!set_propr_1(o, KW_near, valeur_longs(t.data(), static_cast<int>(t.size()), 9).data())) return -1;
  }
  r = trouve_reseau(o);
  if (accorde(*Parties{r.fac}.begin(), r.motif, KW_motif) < 0) return -1;
  if (r.kind() != KW_texture && accorde(derniere(r.fac), r.law, KW_law) < 0) return -1;
  return 0;
}

float passe_controle(Reseau& r, const NetOptions& opt, int* count) {
  const word* out = derniere(r.fac);
  float largest = 0;
  *count = 0;
  int k = 0;
  Parties::It law = Parties{r.law}.begin();
  for (const word* pattern : Parties{r.motif}) {
    const word* expected = *law;
    ++law;
    k++;
    if (propage(r, pattern) < 0) return -1;
    std::string marks;
    if (opt.edit) voir_int("motif %d\n", k);
    for (int a = 0; a < elements(out); a++) {
      const int j = out[4 + a];
      const float o = lit(neurone(r, j, NR_OUTPUT));
      const float e = o - getf(expected, a);
      ecrit(neurone(r, j, NR_ERROR), e);
      largest = std::max(largest, std::fabs(e));
      const bool beyond = std::fabs(e) > opt.error;
      if (beyond) ++*count;
      if (beyond && opt.edit) {  // the marks are only for the report
        marks.resize(static_cast<size_t>(a) * 9, ' ');
        marks += " ********";
      }
      if (opt.edit) voir_float("%9.4f", o);
    }
    if (!opt.edit) continue;
    voir_texte("\n");
    for (int a = 0; a < elements(out); a++) voir_float("%9.4f", getf(expected, a));
    voir_texte("\n");
    if (!marks.empty()) VOIR_CHAR("%s\n", marks.c_str());
  }
  if (opt.edit) {
    voir_int("%d ********, ", *count);
    voir_float("max %f\n", largest);
  }
  return largest;
}

int rafraichit_validate(Reseau& r) {
  // Buffers kept from call to call: a pass of the learning screen takes
  // no memory once the first has run.
  std::vector<word>& list = networks().liste_validate;
  std::vector<word>& out = networks().motif_validate;
  liste_vide(list);
  for (const word* pattern : Parties{r.motif}) {
    const word* law = sous_bloc(r.law, 0);
    out.assign(static_cast<size_t>(8 + std::max(r.N, elements(pattern)) + (law ? elements(law) : 0)), 0);
    if (valider_motif_reseau(r.o, pattern, out.data(), out.data() + out.size(), nullptr) < 0) return -1;
    liste_ajoute(list, out.data());
  }
  if (!set_propr_1(r.o, KW_validate, list.data())) return -1;
  r = trouve_reseau(r.o);
  return 0;
}

int generer_reseau_1(Objet* o, const NetOptions& opt, NetResult* res) {
  *res = NetResult{};
  const int kind = network_kind(o);
  if (o->local && (en_liste(o, KW_motif) < 0 || en_liste(o, KW_law) < 0)) return -1;
  Reseau r = trouve_reseau(o);
  if (!r.motif) {
    rapport_manque(o, KW_motif);
    return 1;
  }
  if (!r.law && (kind != KW_texture || !r.fac)) {
    rapport_manque(o, KW_law);
    return 1;
  }
  const bool resume = opt.start > 0;
  // The third value of `validate` is kept with a map, for nothing yet.
  if (kind == KW_texture && opt.third) o->work[NW_TROISIEME] = opt.third;
  if (complete_reseau(o, opt, resume) < 0) {
    TRACE_FAIL("generer_reseau_1()");
    return -1;
  }
  r = trouve_reseau(o);
  float start = 1.0f, end = 0.01f;
  if (opt.coe_given) {
    start = opt.coe_start, end = opt.coe_end;
  } else if (const word* c = get_val_1(o->local, KW_coe); c && elements(c) >= 2) {
    start = value_at(c, 0), end = value_at(c, 1);
  }
  NetworkState& S = networks();
  float largest = 0;
  if (!(resume && opt.start > opt.passes)) {
    int lowest = INT_MAX;
    const int first = resume ? opt.start : 1, last = resume ? opt.start : opt.passes;
    for (int p = first; p <= last; p++) {
      const float coef = coefficient(opt, start, end, p);
      largest = 0;  // the result is the last pass's
      int count;
      if (kind == KW_texture) count = passe_texture(r, coef, p, opt, &largest);
      else if (kind == KW_near) count = passe_near(r, coef, opt, &largest);
      else count = passe_retropropagation(r, coef, opt, S.work);
      if (count < 0) {
        TRACE_FAIL("generer_reseau_1()");
        return -1;
      }
      r = trouve_reseau(o);
      res->passes = p;
      if (count < lowest) {
        lowest = count;
        copie_matrice(r.matrix, r.best);
      }
      if (count == 0) {
        res->converged = 1;
        break;
      }
    }
  } else {
    res->converged = 1;
  }
  if (kind == KW_fac) {
    int count = 0;
    largest = passe_controle(r, opt, &count);
    if (largest < 0) return -1;
    if (!resume) copie_matrice(r.best, r.matrix);
  }
  res->max_error = largest;
  if (kind != KW_near && rafraichit_validate(r) < 0) return -1;
  return 0;
}

int valider_motif_reseau(Objet* o, const word* motif, bloc out, const word* lim, const word* limits) {
  Reseau r = trouve_reseau(o);
  if (!r.fac || !r.matrix) {
    rapport_manque(o, !r.fac ? KW_fac : KW_matrix);
    return -1;
  }
  if (!r.neuron) {
    if (cree_neurones(o) < 0) return -1;
    r = trouve_reseau(o);
  }
  std::vector<word> converted;
  if (tag(motif) == T_LONG) {
    const std::vector<float> f = floats_of(motif);
    converted = valeur_floats(f.data(), static_cast<int>(f.size()), dimp(motif));
    motif = converted.data();
  }
  const word* last = derniere(r.fac);
  const word* first = *Parties{r.fac}.begin();
  int n = 0, nx = 1;
  if (r.kind() == KW_texture) {
    if (elements(motif) < elements(first)) return propage(r, motif);  // the size report
    float d;
    const int winner = gagnant(r, motif, &d);
    if (!winner) {
      voir_int("Pas de vainqueur pour motif %d\a\n", 1);
      return -1;
    }
    n = elements(first);
    nx = dimp(motif) > 0 ? dimp(motif) : 1;
    if (!build_fits(out, 4L + n, lim)) return build_overflow();
    for (int b = 0; b < n; b++) out[4 + b] = *poids(r, winner, first[4 + b]);
  } else {
    if (r.kind() == KW_near) {
      if (elements(motif) < elements(first)) return propage(r, motif);
      passe_recurrente(r, motif);
    } else if (propage(r, motif) < 0) {
      return -1;
    }
    n = elements(last);
    const word* law = r.law ? sous_bloc(r.law, 0) : nullptr;
    nx = law && elements(law) == n && dimp(law) > 0 ? dimp(law) : n;
    if (!build_fits(out, 4L + n, lim)) return build_overflow();
    for (int a = 0; a < n; a++) out[4 + a] = *neurone(r, last[4 + a], NR_OUTPUT);
  }
  build_head(out, 4 + n, T_FLOAT, n / std::max(nx, 1), std::max(nx, 1));
  const int pairs = limits ? elements(limits) / 2 : 0;
  for (int a = 0; a < std::min(n, pairs); a++) {
    const float lo = value_at(limits, 2 * a), hi = value_at(limits, 2 * a + 1);
    setf(out, a, std::clamp(getf(out, a), lo, std::max(lo, hi)));
  }
  return 0;
}

const word* requete_inverse(const std::vector<Objet*>& nets, const word* v) {
  const std::vector<float> x = floats_of(v);
  const word* found = nullptr;
  float best = 0;
  for (Objet* o : nets) {
    const Reseau r = trouve_reseau(o);
    if (!r.law || !r.motif) continue;
    const int motifs = hybride_parts(r.motif);
    int k = 0;
    for (const word* l : Parties{r.law}) {
      const int n = std::min(static_cast<int>(x.size()), elements(l));
      float d = 0;
      for (int i = 0; i < n; i++) {
        const float e = value_at(l, i) - x[static_cast<size_t>(i)];
        d += e * e;
      }
      if (!found || d < best) {
        best = d;
        found = sous_bloc(r.motif, std::min(k, motifs - 1));
      }
      k++;
    }
  }
  return found;
}

int GENERATE_INV_NETWORK(Objet* first, Objet* second, int h, const NetOptions& opt, NetResult* res) {
  if (first == second) {  // it would lose its own structure and weights
    voir_mot(KW_network);
    voir_int("%d", first->id);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  bloc m = get_propr_1(first->local, KW_motif);
  bloc l = get_propr_1(first->local, KW_law);
  if (!m || !l) {
    rapport_manque(first, !m ? KW_motif : KW_law);
    return 1;
  }
  // The codes are exchanged in the first network's own lists.
  m[5] = KW_law;
  l[5] = KW_motif;
  const word* mv = get_val_1(first->local, KW_motif);
  const word* lv = get_val_1(first->local, KW_law);
  const std::vector<word> motif(mv, mv + size(mv)), law(lv, lv + size(lv));
  for (int code : {static_cast<int>(KW_fac), static_cast<int>(KW_matrix), -static_cast<int>(KW_matrix), static_cast<int>(KW_neuron), static_cast<int>(KW_validate), static_cast<int>(KW_near)}) rem_propr_1(second, code);
  rem_propr_2(second, KW_inv, KW_fac);
  if (!set_propr_1(second, KW_motif, motif.data()) || !set_propr_1(second, KW_law, law.data())) return -1;
  if (en_liste(second, KW_motif) < 0 || en_liste(second, KW_law) < 0 || generer_fac_reseau(second, h) < 0) {
    TRACE_FAIL("GENERATE_INV_NETWORK()");
    return -1;
  }
  return generer_reseau_1(second, opt, res);
}
