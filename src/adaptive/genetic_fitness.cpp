// Fitness: the function of an object, the evaluation of one individual,
// and valider_genetique_1 over a population.
#include <cmath>
#include <cstring>
#include <vector>

#include "adaptive/genetic.h"
#include "adaptive/net_internal.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/call.h"
#include "language/functions.h"

int lit_fitness(Objet* o, const word* func, Fitness* f) {
  *f = Fitness{};
  f->object = o->id;
  const word* v = func ? func : o->local ? get_val_1(o->local, KW_func) : nullptr;
  if (const char* name = value_text(v)) {
    f->fn = get_fonction(name);
    if (!f->fn) {
      err_fonction(name, 48);
      return -1;
    }
    return 0;
  }
  float n = 0;
  if (floats_of(v, &n, 1) < 1) {
    rapport_manque(o, KW_func);
    return -1;
  }
  f->builtin = entier(n);
  return 0;
}

float fitness_1(const char* block, size_t bytes, int i, int L) {
  float sum = 0, power = 1;
  const size_t words = bytes / 4;
  for (int k = 0; k < L - 1; k++, power *= 2) {
    const size_t w = static_cast<size_t>(i - 1) * L + k;
    if (w >= words) break;
    float e;
    std::memcpy(&e, block + w * 4, 4);
    sum += power * e;
  }
  return sum;
}

int evalue(const Fitness& f, const char* block, size_t bytes, int i, int L, float* out) {
  if (f.fn) {
    const char* s = block + static_cast<size_t>(i - 1) * L;
    if (run_function_number_text(f.fn, static_cast<float>(f.object), s, strnlen(s, L), out) < 0) {
      TRACE_FAIL("valider_genetique_1()");
      return -1;
    }
    return 0;
  }
  if (f.builtin == 1) *out = fitness_1(block, bytes, i, L);
  return 0;
}

int valider_genetique_1(Objet* o, const word* pop, const Fitness& f, const std::vector<int>& indices,
                        std::vector<float>* values) {
  Population p;
  if (!lit_population(pop, &p)) {
    rapport_manque(o, KW_particle);
    return -1;
  }
  // The strings and the values are worked on in copies: a language
  // function may change the object while it runs.
  const std::vector<char> copy(p.bytes, p.bytes + p.size);
  const RefObjet ref = ref_objet(o);
  const word* old = o->local ? get_val_2(o->local, KW_scale, KW_particle) : nullptr;
  std::vector<float> fit(static_cast<size_t>(p.n), 0.0f);
  if (old && tag(old) == T_FLOAT && elements(old) == p.n) floats_of(old, fit.data(), p.n);
  auto one = [&](int i) {
    if (evalue(f, copy.data(), copy.size(), i, p.L, &fit[static_cast<size_t>(i - 1)]) < 0) return false;
    if (values) values->push_back(fit[static_cast<size_t>(i - 1)]);
    return true;
  };
  int r = 0;
  if (indices.empty()) {
    for (int i = 1; i <= p.n && r == 0; i++) r = one(i) ? 0 : -1;
  } else {
    for (int i : indices)
      if (i >= 1 && i <= p.n && r == 0) r = one(i) ? 0 : -1;
  }
  if (r < 0) return -1;
  if (!objet_ref(ref)) return 0;  // removed by the function
  bloc scale = set_val_2(o, KW_scale, KW_particle, p.n);
  if (!scale) return -1;
  for (int i = 0; i < p.n; i++) setf(scale, i, fit[static_cast<size_t>(i)]);
  return 0;
}
