// One pass of a self-organising map (`texture`): each pattern's closest
// output neuron and its neighbours on the grid move towards the pattern.
#include <algorithm>
#include <cmath>

#include "adaptive/net_internal.h"
#include "kernel/keywords.h"
#include "kernel/report.h"

int voisinage(int pass, int passes) {
  const float step = passes > 1 ? 9.0f / static_cast<float>(passes - 1) : 0.0f;
  return std::max(1, entier(9.0f - step * static_cast<float>(pass - 1)));
}

int gagnant(const Reseau& r, const word* pattern, float* distance) {
  const word* in = *Parties{r.fac}.begin();
  const word* out = in;
  for (const word* l : Parties{r.fac}) out = l;
  float bar = 1000000.0f;
  int winner = 0;
  for (int a = 0; a < elements(out); a++) {
    const int j = out[4 + a];
    float d = 0;
    for (int b = 0; b < elements(in); b++) {
      const float x = getf(pattern, b) - lit(poids(r, j, in[4 + b]));
      d += std::sqrt(x * x);
    }
    if (d < bar) {
      bar = d;
      winner = j;
    }
  }
  *distance = bar;
  return winner;
}

int passe_texture(Reseau& r, float coef, int pass, const NetOptions& opt, float* largest) {
  const word* in = *Parties{r.fac}.begin();
  const int n = elements(in);
  int k = 0;
  for (const word* pattern : Parties{r.motif}) {
    k++;
    if (tag(pattern) != T_FLOAT || elements(pattern) != n) {
      voir_mot(KW_motif);
      voir_int("%d: ", k);
      rapport_taille_element(pattern, n);
      return -1;
    }
  }
  const int vois = voisinage(pass, opt.passes);
  voir_int2("*** passe %d vois %d ***\n", pass, vois);
  int count = 0;
  k = 0;
  for (const word* pattern : Parties{r.motif}) {
    k++;
    float d = 0;
    const int winner = gagnant(r, pattern, &d);
    if (!winner) {
      voir_int("Pas de vainqueur pour motif %d\a\n", k);
      return -1;
    }
    if (d > opt.error) count++;
    *largest = std::max(*largest, d);
    if (opt.debug) {
      voir_int("motif %d", k);
      voir_int("\tvainqueur %d\n", winner);
    }
    const word* row = r.near ? r.near + 4 + static_cast<long>(winner - 1) * 9 : nullptr;
    for (int e = 0; row && e < std::min(vois, 9); e++) {
      const int j = row[e];
      if (j < 1 || j > r.N) continue;
      for (int b = 0; b < n; b++) {
        const int i = in[4 + b];
        word* w = poids(r, j, i);
        const float old = lit(w);
        const float x = getf(pattern, b) - old;
        if (std::fabs(x) <= opt.error) continue;
        const float nw = std::clamp(old + coef * x, -opt.max, opt.max);
        ecrit(w, nw);
        if (opt.debug) {
          voir_int2("poids[%d->%d]: ", i, j);
          voir_float("%f->", old);
          voir_float("%f\n", nw);
        }
      }
    }
  }
  return count;
}
