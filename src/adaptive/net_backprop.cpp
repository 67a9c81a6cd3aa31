// The forward pass of a layered network and one pass of
// back-propagation over every pattern.
#include <algorithm>
#include <cmath>

#include "adaptive/net_internal.h"
#include "adaptive/net_state.h"
#include "kernel/keywords.h"
#include "kernel/report.h"

float activation(const Reseau& r, int j, float input) {
  int kind;
  float param;
  if (r.func_global) {
    kind = r.func_kind;
    param = r.func_param;
  } else {
    kind = entier(lit(neurone(r, j, NR_KIND)));
    param = lit(neurone(r, j, NR_PARAM));
  }
  if (kind == 0) return param <= input ? 1.0f : 0.0f;
  return 1.0f / (1.0f + std::exp(-param * input));
}

int propage(Reseau& r, const word* pattern) {
  const word* first = *Parties{r.fac}.begin();
  const int n1 = elements(first);
  const int nv = tag(pattern) == T_FLOAT ? elements(pattern) : 0;
  if (nv < n1) {
    voir_mot(KW_fac);
    voir_int("(%d) > ", n1);
    voir_mot(KW_motif);
    voir_int2("(%d * %d)\a\n", dimp(pattern) > 0 ? dimp(pattern) : 1, np(pattern));
    return -1;
  }
  for (int k = 0; k < n1; k++) *neurone(r, first[4 + k], NR_OUTPUT) = pattern[4 + k];
  std::vector<float>& in = networks().sorties;
  const word* prev = nullptr;
  for (const word* l : Parties{r.fac}) {
    if (prev) {
      const int np_ = elements(prev);
      sorties_couche(r, prev, in);
      const int i0 = suite(prev);
      for (int a = 0; a < elements(l); a++) {
        const int j = l[4 + a];
        const word* row = poids(r, j, 1);
        float s = 0;
        if (i0) {
          const word* w = row + i0 - 1;
          for (int b = 0; b < np_; b++) s += wf(w[b]) * in[static_cast<size_t>(b)];
        } else {
          for (int b = 0; b < np_; b++) s += wf(row[prev[4 + b] - 1]) * in[static_cast<size_t>(b)];
        }
        ecrit(neurone(r, j, NR_INPUT), s);
        ecrit(neurone(r, j, NR_OUTPUT), activation(r, j, s));
      }
    }
    prev = l;
  }
  return 0;
}

void sorties_couche(const Reseau& r, const word* layer, std::vector<float>& out) {
  const int n = elements(layer);
  if (static_cast<int>(out.size()) < n) out.resize(static_cast<size_t>(n));
  for (int b = 0; b < n; b++) out[static_cast<size_t>(b)] = lit(neurone(r, layer[4 + b], NR_OUTPUT));
}

int suite(const word* layer) {
  for (int b = 1; b < elements(layer); b++)
    if (layer[4 + b] != layer[4] + b) return 0;
  return layer[4];
}

namespace {

// The neuron's name, the list's keyword and "(%d) != %d" for a pattern
// whose size differs from its layer's.
int taille_motifs(const Reseau& r, const word* list, int code, int n) {
  int k = 0;
  for (const word* e : Parties{list}) {
    k++;
    if (elements(e) != n || tag(e) != T_FLOAT) {
      if (r.o->name) VOIR_CHAR("%s ", r.o->name);
      else voir_int("%d ", r.o->id);
      voir_mot(code);
      voir_int2("(%d) != %d\a\n", k, n);
      return -1;
    }
  }
  return 0;
}

const word* derniere_couche(const Reseau& r) {
  const word* last = nullptr;
  for (const word* l : Parties{r.fac}) last = l;
  return last;
}

}  // namespace

int verifie_tailles(const Reseau& r) {
  const word* first = *Parties{r.fac}.begin();
  if (taille_motifs(r, r.motif, KW_motif, elements(first)) < 0) return -1;
  return taille_motifs(r, r.law, KW_law, elements(derniere_couche(r)));
}

int passe_retropropagation(Reseau& r, float coef, const NetOptions& opt, std::vector<float>& work) {
  if (verifie_tailles(r) < 0) {
    TRACE_FAIL("passe_retropropagation()");
    return -1;
  }
  int L = 0;
  for (const word* l : Parties{r.fac}) L = std::max(L, elements(l));
  work.resize(static_cast<size_t>(L) * L);
  for (int j = 1; j <= r.N; j++) ecrit(neurone(r, j, NR_DELTA), 0);
  const word* out = derniere_couche(r);
  const float tol = opt.error, wmax = opt.max;
  int count = 0;
  Parties::It law = Parties{r.law}.begin();
  for (const word* pattern : Parties{r.motif}) {
    const word* expected = *law;
    ++law;
    if (propage(r, pattern) < 0) return -1;
    bool above = false;
    for (int a = 0; a < elements(out); a++) {
      const int j = out[4 + a];
      const float e = getf(expected, a) - lit(neurone(r, j, NR_OUTPUT));
      ecrit(neurone(r, j, NR_ERROR), e);
      if (std::fabs(e) > tol) above = true;
    }
    if (!above) continue;
    count++;
    // From the last layer back to the second, each with the one before it.
    Parties::It it = Parties{r.inv_fac}.begin(), end = Parties{r.inv_fac}.end();
    while (it != end) {
      const word* J = *it;
      ++it;
      if (!(it != end)) break;
      const word* I = *it;
      const int nj = elements(J), ni = elements(I);
      for (int a = 0; a < nj; a++) {
        const int j = J[4 + a];
        const float o = lit(neurone(r, j, NR_OUTPUT));
        ecrit(neurone(r, j, NR_DELTA), (1 - o) * o * lit(neurone(r, j, NR_ERROR)));
      }
      std::vector<float>& oi = networks().sorties;
      sorties_couche(r, I, oi);
      const int i0 = suite(I);
      for (int a = 0; a < nj; a++) {
        const int j = J[4 + a];
        const float d = lit(neurone(r, j, NR_DELTA));
        word* row = poids(r, j, 1);
        float* products = work.data() + static_cast<size_t>(a) * L;
        if (i0 && !opt.debug) {
          // Side by side: the loop the compiler can widen.
          word* w = row + i0 - 1;
          for (int b = 0; b < ni; b++) {
            const float old = wf(w[b]);
            products[b] = d * old;
            w[b] = fw(std::clamp(old + coef * d * oi[static_cast<size_t>(b)], -wmax, wmax));
          }
          continue;
        }
        for (int b = 0; b < ni; b++) {
          word* wp = row + I[4 + b] - 1;
          const float w = wf(*wp);
          products[b] = d * w;
          const float nw = std::clamp(w + coef * d * oi[static_cast<size_t>(b)], -wmax, wmax);
          *wp = fw(nw);
          if (opt.debug) {
            voir_int2("poids[%d->%d]: ", I[4 + b], j);
            voir_float("%f->", w);
            voir_float("%f\n", nw);
          }
        }
      }
      for (int b = 0; b < ni; b++) {
        float s = 0;
        for (int a = 0; a < nj; a++) s += work[static_cast<size_t>(a) * L + b];
        ecrit(neurone(r, I[4 + b], NR_ERROR), s);
      }
    }
  }
  return count;
}
