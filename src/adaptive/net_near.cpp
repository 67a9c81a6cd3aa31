// One reward pass of a recurrent `near` network: the reward of each pair
// of consecutive patterns, the recurrent run of the earlier one, and a
// move of the weights towards the best copy when the reward is negative.
#include <algorithm>
#include <cmath>

#include "adaptive/net_internal.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"

namespace {

float moyenne(const word* v) {
  const int n = elements(v);
  if (n < 1) return 0;
  float s = 0;
  for (int i = 0; i < n; i++) s += getf(v, i);
  return s / static_cast<float>(n);
}

// The centre of gravity as fractions of nx and ny: (0, 0) when the values
// sum to nearly 0.
void centre(const word* v, float* gx, float* gy) {
  const int nx = dimp(v) > 0 ? dimp(v) : 1, ny = std::max(np(v), 1);
  const int n = elements(v);
  float sum = 0;
  for (int i = 0; i < n; i++) sum += getf(v, i);
  *gx = *gy = 0;
  if (std::fabs(sum) <= 0.0001f) return;
  for (int i = 0; i < n; i++) {
    const float p = getf(v, i) / sum;
    *gx += p * static_cast<float>(i % nx);
    *gy += p * static_cast<float>(i / nx);
  }
  *gx /= static_cast<float>(nx);
  *gy /= static_cast<float>(ny);
}

// The motion of the centre from a to b, of length 1 when over 0.0001.
void mouvement(const word* a, const word* b, float m[2]) {
  float ax, ay, bx, by;
  centre(a, &ax, &ay);
  centre(b, &bx, &by);
  m[0] = bx - ax;
  m[1] = by - ay;
  const float len = std::sqrt(m[0] * m[0] + m[1] * m[1]);
  if (len > 0.0001f) m[0] /= len, m[1] /= len;
}

float difference_moyenne(const word* a, const word* b) { return moyenne(b) - moyenne(a); }

}  // namespace

void passe_recurrente(Reseau& r, const word* pattern) {
  const word* first = *Parties{r.fac}.begin();
  const int n = std::min(elements(first), elements(pattern));
  for (int k = 0; k < n; k++) ecrit(neurone(r, first[4 + k], NR_OUTPUT), getf(pattern, k));
  bool skip = true;
  for (const word* l : Parties{r.fac}) {
    if (skip) {
      skip = false;
      continue;
    }
    for (int a = 0; a < elements(l); a++) {
      const int j = l[4 + a];
      float s = 0;
      for (int i = 1; i <= r.N; i++)
        if (i != j) s += lit(poids(r, j, i)) * lit(neurone(r, i, NR_OUTPUT));
      s /= static_cast<float>(r.N);
      ecrit(neurone(r, j, NR_INPUT), s);
      ecrit(neurone(r, j, NR_OUTPUT), activation(r, j, s));
    }
  }
}

int recompenses(Reseau& r, std::vector<float>& out) {
  std::vector<const word*> m, l;
  for (const word* e : Parties{r.motif}) m.push_back(e);
  for (const word* e : Parties{r.law}) l.push_back(e);
  const size_t n = std::min(m.size(), l.size());
  out.assign(n > 0 ? n - 1 : 0, 0.0f);
  for (size_t k = 1; k < n; k++) {
    if (r.o->kind2 == KW_CG) {
      float a[2], b[2];
      mouvement(m[k - 1], m[k], a);
      mouvement(l[k - 1], l[k], b);
      out[k - 1] = a[0] * b[0] + a[1] * b[1];
    } else {
      out[k - 1] = difference_moyenne(m[k - 1], m[k]) * difference_moyenne(l[k - 1], l[k]);
    }
  }
  const std::vector<word> v = valeur_floats(out.data(), static_cast<int>(out.size()));
  const int keys[] = {KW_motif, KW_law, KW_dist};
  return set_propr_k(r.o, 3, keys, v.data()) ? 0 : -1;
}

int passe_near(Reseau& r, float coef, const NetOptions& opt, float* largest) {
  std::vector<float> reward;
  if (recompenses(r, reward) < 0) return -1;
  r = trouve_reseau(r.o);
  std::vector<const word*> m;
  for (const word* e : Parties{r.motif}) m.push_back(e);
  const word* first = *Parties{r.fac}.begin();
  const word* last = first;
  for (const word* l : Parties{r.fac}) last = l;
  int count = 0;
  for (size_t k = 1; k <= reward.size(); k++) {
    if (opt.time > 0 && static_cast<int>(k) != opt.time) continue;
    passe_recurrente(r, m[k - 1]);
    if (reward[k - 1] >= 0) continue;
    const float s = coef * reward[k - 1];
    *largest = std::max(*largest, std::fabs(s));
    for (int a = 0; a < elements(first); a++)
      for (int b = 0; b < elements(last); b++) {
        const int i = first[4 + a], j = last[4 + b];
        word* w = poids(r, j, i);
        const float d = lit(poids_de(r.best, r.N, j, i)) - lit(w);
        if (std::fabs(d) > opt.error) ecrit(w, lit(w) + d * s);
        else ecrit(w, lit(w) + tirage(-opt.error, opt.error));
      }
    count++;
  }
  // Validated on every pattern, each law receiving the outputs.
  int k = 0;
  for (const word* e : Parties{r.motif}) {
    const word* law = sous_bloc(r.law, k++);
    if (law && valider_motif_reseau(r.o, e, const_cast<word*>(law), law + size(law), nullptr) < 0) return -1;
  }
  std::copy(r.matrix + 4, r.matrix + 4 + r.N * r.N, r.best + 4);
  return count;
}
