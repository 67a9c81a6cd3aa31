// One generation: selection by a random bar over the fitness, crossover
// of two parents at a random cut with mutation of every character, the
// fitness of the new population, and the automatic mutation rate.
#include <algorithm>
#include <cstring>
#include <string>

#include "adaptive/genetic.h"
#include "adaptive/genetic_state.h"
#include "adaptive/net_internal.h"
#include "kernel/entier.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"

char mute(char c, const char* alphabet, int len, const Taux& t) {
  if (len < 2) return c;
  if (tire(t.source) > t.mutation) return c;
  if (len == 2) return c == alphabet[0] ? alphabet[1] : alphabet[0];
  // A new letter until it differs; when the draws keep giving the same
  // letter (a table that repeats, an alphabet of one repeated letter),
  // the next different letter after it, or the letter itself.
  for (int tries = 0; tries < 64; tries++) {
    const char d = alphabet[tire_entier(t.source, len)];
    if (d != c) return d;
  }
  const char* at = static_cast<const char*>(std::memchr(alphabet, c, static_cast<size_t>(len)));
  const int from = at ? static_cast<int>(at - alphabet) + 1 : 0;
  for (int k = 0; k < len; k++)
    if (alphabet[(from + k) % len] != c) return alphabet[(from + k) % len];
  return c;
}

int selection(const float* fit, int n, float mean, Source s) {
  GeneticState& g = genetics();
  const float bar = tire(s) * mean;
  g.recorded.resize(static_cast<size_t>(std::max(n, 1)));
  int pos = g.position >= 0 && g.position < n ? g.position : 0;
  // The position moves before the value is read: until the walk wraps,
  // the number recorded is one past the value that passed.
  const float* p = fit + pos;
  int k = 0;
  for (int step = 0; step < n; step++) {
    if (++pos >= n) pos = 0, p = fit;
    if (*p++ > bar) g.recorded[static_cast<size_t>(k++)] = pos;
  }
  g.position = k > 0 ? g.recorded[static_cast<size_t>(tire_entier(Source::process, k))]
                     : tire_entier(Source::process, n);
  return g.position;
}

TauxAuto lit_ajustement(const std::vector<float>& v) {
  TauxAuto a;
  if (v.empty()) return a;
  a.lo = v[0];
  a.hi = v.size() > 1 ? v[1] : 0.001f;
  a.start = v.size() > 2 ? v[2] : (a.lo + a.hi) / 2;
  a.spread = v.size() > 3 ? v[3] : 0.125f;
  return a;
}

float ajuste(const TauxAuto& a, const float* fit, int n, float* meta) {
  if (n < 1) return a.start;
  float lowest = fit[0], highest = fit[0], sum = 0;
  for (int i = 0; i < n; i++) {
    lowest = std::min(lowest, fit[i]);
    highest = std::max(highest, fit[i]);
    sum += fit[i];
  }
  const float mean = sum / static_cast<float>(n);
  const bool improved = mean > *meta;
  *meta = mean;
  if (improved || highest - lowest > a.spread) return a.start;
  float m = (a.lo - a.hi) * mean + a.hi;
  if (m > a.hi) m = a.hi;
  if (m < a.lo) m = a.lo;
  return m;
}

namespace {

// What a generation works on, copied out of the object's properties.
struct Lieux {
  Objet* o;
  int n, L;
  const char* alpha;
  int alen;
  Taux taux;
  Fitness f;
};

// Child c of the next generation from parents a and b (from 0).
int croise(const Lieux& G, int a, int b, int c) {
  GeneticState& g = genetics();
  const int L = G.L, Lp = L - 1;
  const int cut = tire_entier(Source::process, Lp);
  float* log = g.log.data() + 3 * static_cast<size_t>(c);
  log[0] = static_cast<float>(cut), log[1] = static_cast<float>(a + 1), log[2] = static_cast<float>(b + 1);
  const char* pa = g.pop.data() + static_cast<size_t>(a) * L;
  const char* pb = g.pop.data() + static_cast<size_t>(b) * L;
  char* child = g.next.data() + static_cast<size_t>(c) * L;
  const bool cross = G.taux.crossover >= 1.0f || tire(G.taux.source) < G.taux.crossover;
  if (!cross) {
    std::memcpy(child, pa, static_cast<size_t>(L));
    return 0;
  }
  char* c1 = g.dup.data();
  char* c2 = c1 + L;
  for (int k = 0; k < Lp; k++) c1[k] = mute(k < cut ? pa[k] : pb[k], G.alpha, G.alen, G.taux);
  for (int k = 0; k < Lp; k++) c2[k] = mute(k < cut ? pb[k] : pa[k], G.alpha, G.alen, G.taux);
  c1[Lp] = c2[Lp] = '\0';
  float f1 = 0, f2 = 0;
  if (evalue(G.f, g.dup.data(), g.dup.size(), 1, L, &f1) < 0 || evalue(G.f, g.dup.data(), g.dup.size(), 2, L, &f2) < 0)
    return -1;
  std::memcpy(child, f1 <= f2 ? c2 : c1, static_cast<size_t>(L));
  return 0;
}

// A property made to the size a generation needs, when it is not.
bool a_la_taille(Objet* o, int code, int n, int L) {
  Population p;
  if (lit_population(get_val_1(o->local, code), &p) && p.n == n && p.L == L) return true;
  return cree_population(o, code, n, L) != nullptr;
}

// The work of a generation back into the object: -particle, the
// candidates and the log, and with `done` the population and its fitness.
int rend(Objet* o, int n, int L, bool done) {
  GeneticState& g = genetics();
  Population next, dup;
  if (!a_la_taille(o, -KW_particle, n, L) || !a_la_taille(o, -KW_dup, 2, L)) return -1;
  lit_population(get_val_1(o->local, -KW_particle), &next);
  lit_population(get_val_1(o->local, -KW_dup), &dup);
  std::memcpy(next.bytes, g.next.data(), next.size);
  std::memcpy(dup.bytes, g.dup.data(), dup.size);
  const std::vector<word> log = valeur_floats(g.log.data(), 3 * n, 3);
  if (!set_propr_1(o, KW_cut, log.data())) return -1;
  if (!done) return 0;
  Population pop;
  if (!a_la_taille(o, KW_particle, n, L)) return -1;
  lit_population(get_val_1(o->local, KW_particle), &pop);
  std::memcpy(pop.bytes, g.next.data(), pop.size);
  bloc scale = set_val_2(o, KW_scale, KW_particle, n);
  if (!scale) return -1;
  for (int i = 0; i < n; i++) setf(scale, i, g.fit[static_cast<size_t>(i)]);
  return 0;
}

}  // namespace

int generation_genetique(Objet* o, float bar, const TauxAuto* adj, float* rate) {
  GeneticState& g = genetics();
  // A fitness function that runs generations itself would work in the
  // buffers of the generation that called it.
  if (g.busy) {
    voir_mot(KW_generate);
    voir_mot(KW_genetic);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  struct Busy {
    bool& b;
    explicit Busy(bool& x) : b(x) { b = true; }
    ~Busy() { b = false; }
  } busy(g.busy);
  Population p;
  if (!o->local || !lit_population(get_val_1(o->local, KW_particle), &p)) {
    rapport_manque(o, KW_particle);
    return -1;
  }
  // A language function may remove the object: nothing is written back
  // to an object that is gone.
  const RefObjet ref = ref_objet(o);
  Lieux G{o, p.n, p.L, nullptr, 0, lit_taux(o), {}};
  if (lit_fitness(o, nullptr, &G.f) < 0) return -1;
  if (!get_val_1(o->local, KW_alphabet)) {
    const std::vector<word> a = valeur_texte("01", 2);
    if (!set_propr_1(o, KW_alphabet, a.data())) return -1;
  }
  const std::string alphabet = [&] {
    int len = 0;
    const char* t = alphabet_de(o, &len);
    return std::string(t, static_cast<size_t>(len));
  }();
  G.alpha = alphabet.data(), G.alen = static_cast<int>(alphabet.size());
  const word* scale = get_val_2(o->local, KW_scale, KW_particle);
  if (!scale || tag(scale) != T_FLOAT || elements(scale) != p.n) {
    if (valider_genetique_1(o, get_val_1(o->local, KW_particle), G.f, {}) < 0) return -1;
    if (!objet_ref(ref)) return 0;
    scale = get_val_2(o->local, KW_scale, KW_particle);
    if (!lit_population(get_val_1(o->local, KW_particle), &p) || p.n != G.n || p.L != G.L) {
      rapport_manque(o, KW_particle);
      return -1;
    }
  }
  const int n = G.n, L = G.L;
  g.pop.assign(p.bytes, p.bytes + p.size);
  // Children not made when a fitness call fails keep what -particle had.
  Population before;
  if (lit_population(get_val_1(o->local, -KW_particle), &before) && before.size == p.size)
    g.next.assign(before.bytes, before.bytes + before.size);
  else
    g.next.assign(p.size, '\0');
  g.dup.assign(static_cast<size_t>((2LL * L + 3) / 4 * 4), '\0');
  g.fit.resize(static_cast<size_t>(n));
  floats_of(scale, g.fit.data(), n);
  g.log.assign(3 * static_cast<size_t>(n), 0.0f);
  float sum = 0;
  for (float v : g.fit) sum += v;
  const float mean = n > 0 ? sum / static_cast<float>(n) : 0.0f;
  for (int c = 0; c < n; c++) {
    const int a = selection(g.fit.data(), n, mean, G.taux.source);
    const int b = selection(g.fit.data(), n, mean, G.taux.source);
    if (croise(G, a, b, c) < 0) {
      if (objet_ref(ref)) rend(o, n, L, false);
      TRACE_FAIL("generation_genetique()");
      return -1;
    }
  }
  for (int i = 1; i <= n; i++)
    if (evalue(G.f, g.next.data(), g.next.size(), i, L, &g.fit[static_cast<size_t>(i - 1)]) < 0) {
      if (objet_ref(ref)) rend(o, n, L, false);
      TRACE_FAIL("generation_genetique()");
      return -1;
    }
  if (!objet_ref(ref)) return 0;
  if (rend(o, n, L, true) < 0) return -1;
  if (adj) {
    const word* m = get_val_1(o->local, KW_meta);
    float meta = value_at(m, 0, 0.0f);
    *rate = ajuste(*adj, g.fit.data(), n, &meta);
    bloc v = set_val_1(o, KW_meta, 1);
    if (!v) return -1;
    setf(v, 0, meta);
  }
  int below = 0;
  for (float v : g.fit) below += v < bar;
  return below;
}
