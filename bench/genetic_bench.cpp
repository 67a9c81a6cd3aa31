// Generations a second of a population of 1000 strings of 64 letters:
// `generate genetic` with the built-in fitness and with a fitness written
// in the language, against a plain loop doing the same selection,
// crossover and mutation on arrays with the built-in fitness. The plain
// loop draws the same random numbers in the same order, so its population
// after the generations must equal the object's. Best of three rounds.
#include <algorithm>
#include <cstring>
#include <vector>

#include "adaptive/genetic.h"
#include "bench_console.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/random_table.h"
#include "scene/lookup.h"

namespace {

constexpr int N = 1000, L = 65, G_BUILTIN = 20, G_LANGUAGE = 3;
constexpr float RATE = 0.001f;

struct Plain {
  std::vector<char> pop, next, dup;
  std::vector<float> fit;
  std::vector<int> rec;
  int position = 0;

  static int draw(int n) {
    if (n < 2) return 0;
    return std::clamp(static_cast<int>(random_uniform() * static_cast<float>(n)), 0, n - 1);
  }
  static float score(const char* block, size_t bytes, int i) {
    float sum = 0, power = 1;
    for (int k = 0; k < L - 1; k++, power *= 2) {
      const size_t w = static_cast<size_t>(i) * L + k;
      if ((w + 1) * 4 > bytes) break;
      float e;
      std::memcpy(&e, block + w * 4, 4);
      sum += power * e;
    }
    return sum;
  }
  int select(float mean) {
    const float bar = random_uniform() * mean;
    int pos = position, k = 0;
    const float* p = fit.data() + pos;
    for (int s = 0; s < N; s++) {
      if (++pos >= N) pos = 0, p = fit.data();
      if (*p++ > bar) rec[static_cast<size_t>(k++)] = pos;
    }
    return position = k > 0 ? rec[static_cast<size_t>(draw(k))] : draw(N);
  }
  static char mutate(char c) { return random_uniform() > RATE ? c : c == '0' ? '1' : '0'; }
  void generation() {
    float sum = 0;
    for (float f : fit) sum += f;
    const float mean = sum / N;
    for (int c = 0; c < N; c++) {
      const int a = select(mean), b = select(mean);
      const int cut = draw(L - 1);
      const char* pa = pop.data() + static_cast<size_t>(a) * L;
      const char* pb = pop.data() + static_cast<size_t>(b) * L;
      char* c1 = dup.data();
      char* c2 = c1 + L;
      for (int k = 0; k < L - 1; k++) c1[k] = mutate(k < cut ? pa[k] : pb[k]);
      for (int k = 0; k < L - 1; k++) c2[k] = mutate(k < cut ? pb[k] : pa[k]);
      c1[L - 1] = c2[L - 1] = 0;
      const float f1 = score(dup.data(), dup.size(), 0), f2 = score(dup.data(), dup.size(), 1);
      std::memcpy(next.data() + static_cast<size_t>(c) * L, f1 <= f2 ? c2 : c1, L);
    }
    for (int i = 0; i < N; i++) fit[static_cast<size_t>(i)] = score(next.data(), next.size(), i);
    pop = next;
  }
};

Population population() {
  Population p;
  Objet* o = get_objet_id(chaine_classe(KW_genetic), KW_genetic, 1);
  lit_population(o ? get_val_1(o->local, KW_particle) : nullptr, &p);
  return p;
}

}  // namespace

int main() {
  if (!bench::start()) return 1;
  random_seed(17);
  if (!bench::run("genetic(1) func(1); generate genetic(1) particle(1000, 65) rand; validate genetic(1)")) return 1;
  // The plain loop starts from the object's population and fitness.
  Plain plain;
  const Population p0 = population();
  plain.pop.assign(p0.bytes, p0.bytes + p0.size);
  plain.next = plain.pop;
  plain.dup.assign((2 * L + 3) / 4 * 4, 0);
  plain.rec.assign(N, 0);
  plain.fit.resize(N);
  for (int i = 0; i < N; i++) plain.fit[static_cast<size_t>(i)] = Plain::score(plain.pop.data(), plain.pop.size(), i);
  // A bar no value reaches: every generation runs.
  const double builtin_ms = bench::best_ms(1, [] {
    random_seed(99);
    return bench::run("generate(20) genetic(1) error(-1e30)");
  });
  const double plain_ms = bench::best_ms(1, [&] {
    random_seed(99);
    plain.position = 0;
    for (int g = 0; g < G_BUILTIN; g++) plain.generation();
    return true;
  });
  const Population p1 = population();
  const bool same = p1.size == plain.pop.size() && std::memcmp(p1.bytes, plain.pop.data(), p1.size) == 0;
  // Further rounds for the best time, from where the first ones left.
  const double builtin_best = std::min(builtin_ms, bench::best_ms("generate(20) genetic(1) error(-1e30)", 2));
  const double plain_best = std::min(plain_ms, bench::best_ms(2, [&] {
    for (int g = 0; g < G_BUILTIN; g++) plain.generation();
    return true;
  }));
  if (!bench::run("func=\"ones(o,s){ a = ascii(s); n = 0; for(k = 0, NP(a) - 1) { if(a[k] == 49) { n = n + 1; } } "
                  "return(n / NP(a)); }\"; genetic(1) func(\"ones\"); validate genetic(1)"))
    return 1;
  const double language_ms = bench::best_ms("generate(3) genetic(1) error(-1e30)", 3);
  bench::stop();
  if (builtin_best < 0 || language_ms < 0) return 1;
  const double gps_builtin = G_BUILTIN * 1000.0 / builtin_best, gps_plain = G_BUILTIN * 1000.0 / plain_best,
               gps_language = G_LANGUAGE * 1000.0 / language_ms;
  printf("genetic population, %d strings of %d letters, crossover 1, mutation %g\n", N, L - 1, RATE);
  printf("built-in fitness:  %8.2f ms a generation, %7.1f generations a second\n", builtin_best / G_BUILTIN, gps_builtin);
  printf("language fitness:  %8.2f ms a generation, %7.1f generations a second\n", language_ms / G_LANGUAGE, gps_language);
  printf("plain loop:        %8.2f ms a generation, %7.1f generations a second\n", plain_best / G_BUILTIN, gps_plain);
  printf("built-in / plain loop: %.2f; language / plain loop: %.1f; populations after %d generations %s\n",
         builtin_best / plain_best, (language_ms / G_LANGUAGE) / (plain_best / G_BUILTIN), G_BUILTIN,
         same ? "identical" : "DIFFERENT");
  return same ? 0 : 1;
}
