// The genetics' commands: `generate genetic` (a random population, or
// generations until the population passes the bar), `validate genetic`,
// `cut genetic`, `meta rand genetic` / `meta alea genetic` and `var
// genetic`, and the rows of the dispatch.
#include <algorithm>
#include <vector>

#include "adaptive/genetic.h"
#include "adaptive/genetic_commands.h"
#include "adaptive/genetic_state.h"
#include "adaptive/net_commands.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "persist/object_file.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/unsaved.h"

std::vector<Objet*> genetiques_ou_crees(word* s) {
  const word* sel = arg_of(s, KW_genetic);
  if (!sel) return objets_commande(s, KW_genetic);
  std::vector<Objet*> out;
  Objet* head = chaine_classe(KW_genetic);
  for (int k = 0; k < nb_selection(sel); k++) {
    Objet* o = get_objet_simple(head, sel, k);
    if (!o) o = set_objet_simple(head, KW_genetic / KW_PER_VOC, KW_genetic, sel, k);
    if (o) out.push_back(o);
  }
  return out;
}

namespace {

int creation(word* s, const word* lim) {
  const Source src = has_word(s, KW_alea) ? Source::table : Source::process;
  float nl[2];
  const bool sized = arg_floats(s, KW_particle, nl, 2) == 2;
  for (Objet* o : genetiques_ou_crees(s))
    if (population_aleatoire(o, sized, sized ? entier(nl[0]) : 0, sized ? entier(nl[1]) : 0, arg_text(s, KW_alphabet), src) < 0) {
      TRACE_FAIL("GENERATE_GENETIC()");
      return -1;
    }
  return build_nil(s, lim);
}

// The mean of `scale particle` over the indices in range (all of them
// for an empty list), 0 when none is counted.
float moyenne(Objet* o, const std::vector<int>& list) {
  const word* v = o->local ? get_val_2(o->local, KW_scale, KW_particle) : nullptr;
  const std::vector<float> fit = v && tag(v) == T_FLOAT ? floats_of(v) : std::vector<float>();
  const int n = static_cast<int>(fit.size());
  float sum = 0;
  int count = 0;
  auto add = [&](int i) {
    if (i >= 1 && i <= n) sum += fit[static_cast<size_t>(i - 1)], count++;
  };
  if (list.empty())
    for (int i = 1; i <= n; i++) add(i);
  for (int i : list) add(i);
  return count ? sum / static_cast<float>(count) : 0.0f;
}

int generate_genetic(word* s, const word* lim) {
  genetics_restart();
  if (has_word(s, KW_particle) && (has_word(s, KW_rand) || has_word(s, KW_alea))) return creation(s, lim);
  const std::vector<Objet*> objs = objets_commande(s, KW_genetic);
  if (objs.empty()) return build_nil(s, lim);
  const int generations = std::max(1, arg_int(s, KW_generate, 1));
  const float bar = 1.0f - arg_float(s, KW_error, 0.01f);
  const bool adjust = has_word(s, KW_adjust);
  const TauxAuto adj = lit_ajustement(arg_floats(s, KW_adjust));
  std::vector<float> rates(objs.size(), adj.start);
  // Held by reference: a fitness function may remove objects.
  std::vector<RefObjet> refs;
  for (Objet* o : objs) refs.push_back(ref_objet(o));
  int total = 0;
  for (int g = 0; g < generations; g++) {
    total = 0;
    for (size_t k = 0; k < refs.size(); k++) {
      Objet* o = objet_ref(refs[k]);
      const int r = o ? generation_genetique(o, bar, adjust ? &adj : nullptr, &rates[k]) : 0;
      if (r < 0) {
        TRACE_FAIL("GENERATE_GENETIC()");
        return -1;
      }
      total += r;
    }
    if (total == 0) break;
  }
  if (adjust) return build_floats(s, lim, rates);
  if (has_word(s, KW_meta)) {
    std::vector<float> means;
    for (RefObjet r : refs) means.push_back(objet_ref(r) ? moyenne(objet_ref(r), {}) : 0.0f);
    return build_floats(s, lim, means);
  }
  return build_float(s, lim, static_cast<float>(total));
}

int generate_shape(word* s, const word* ob, word*, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_genetic);
  if (!*done) return 0;
  marque_objets_commande(s);
  return generate_genetic(s, lim);
}

// `validate genetic(ids) particle(list) [func(f)]`: the fitness of the
// listed individuals (all without a list), their values in order. A
// second `validate` is the networks' test pass.
int validate_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_genetic);
  if (!*done) return 0;
  if (word_count(s, KW_validate) > 1) return VALIDATE_NETWORK(s, ob, st, lim);
  marque_objets_commande(s);
  const std::vector<int> list = arg_ints(s, KW_particle);
  std::vector<float> values;
  std::vector<RefObjet> refs;
  for (Objet* o : objets_commande(s, KW_genetic)) refs.push_back(ref_objet(o));
  const int r = pour_chaque_objet_vivant(refs, [&](Objet* o) {
    Fitness f;
    if (lit_fitness(o, arg_of(s, KW_func), &f) < 0) return -1;
    return valider_genetique_1(o, o->local ? get_val_1(o->local, KW_particle) : nullptr, f, list, &values);
  });
  if (r < 0) {
    TRACE_FAIL("VALIDATE_GENETIC()");
    return -1;
  }
  return build_floats_or_nil(s, lim, values);
}

// `cut genetic(ids)`: the crossover log of each object (cut, parent a,
// parent b for each child); `cut(n)` child n's triple.
int cut_shape(word* s, const word* ob, word*, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_genetic);
  if (!*done) return 0;
  const bool one = arg_of(s, KW_cut) != nullptr;
  const int k = arg_int(s, KW_cut, 0);
  std::vector<float> out;
  for (Objet* o : objets_commande(s, KW_genetic)) {
    const word* log = o->local ? get_val_1(o->local, KW_cut) : nullptr;
    const std::vector<float> v = log && tag(log) == T_FLOAT ? floats_of(log) : std::vector<float>();
    const int n = static_cast<int>(v.size()) / 3;
    if (!one) {
      out.insert(out.end(), v.begin(), v.begin() + 3 * n);
      continue;
    }
    if (k < 1 || k > n) {
      voir_int2("%d %d ", 1, n);
      voir_int("%d > ", k);
      voir_message(0, MES_ILLEGAL);
      return -1;
    }
    out.insert(out.end(), v.begin() + 3 * (k - 1), v.begin() + 3 * k);
  }
  return build_floats_or_nil(s, lim, out, 3);
}

// `meta rand genetic(ids)` or `meta alea genetic(ids)`: the rates of
// each object (crossover, mutation), read or written. Written, each
// object takes the next pair, the last pair repeated; one object takes
// up to four numbers (base and spread of the mutation rate after them).
int meta_shape(word* s, const word* ob, word*, const word* lim, bool* done) {
  const int second = second_word(s);
  *done = (second == KW_rand || second == KW_alea) && (has_word(s, KW_genetic) || item_count(s) == 2);
  if (!*done) return 0;
  if (!has_word(s, KW_genetic)) {
    voir_mot(KW_meta);
    voir_mot(KW_genetic);
    voir_texte("rand|alea (ids) [= crossover, mutation, ...]\a\n");
    return -1;
  }
  const std::vector<Objet*> objs = objets_commande(s, KW_genetic);
  if (!ob) {
    std::vector<float> out;
    for (Objet* o : objs) {
      const word* v = o->local ? get_val_2(o->local, KW_meta, KW_rand) : nullptr;
      if (!v && o->local) v = get_val_2(o->local, KW_meta, KW_alea);
      out.push_back(value_at(v, 0, 1.0f));
      out.push_back(value_at(v, 1, 0.001f));
    }
    return build_floats_or_nil(s, lim, out, 2);
  }
  const std::vector<float> f = floats_of(ob);
  if (f.empty()) {
    voir_mot(KW_meta);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  marque_objets_commande(s);
  const int other = second == KW_rand ? KW_alea : KW_rand;
  for (size_t k = 0; k < objs.size(); k++) {
    std::vector<float> rates;
    if (objs.size() == 1) {
      rates.assign(f.begin(), f.begin() + static_cast<long>(std::min<size_t>(f.size(), 4)));
    } else {
      const size_t pairs = (f.size() + 1) / 2;
      const size_t at = 2 * std::min(k, pairs - 1);
      rates.assign(f.begin() + static_cast<long>(at), f.begin() + static_cast<long>(std::min(at + 2, f.size())));
    }
    if (rates.size() < 2) rates.push_back(0.001f);
    const std::vector<word> v = valeur_floats(rates.data(), static_cast<int>(rates.size()));
    const int keys[2] = {KW_meta, second};
    if ((!objs[k]->local && !local_ini(objs[k])) || !set_propr_k(objs[k], 2, keys, v.data())) return -1;
    rem_propr_2(objs[k], KW_meta, other);
  }
  return build_nil(s, lim);
}

// `var genetic(ids) particle(list)`: the mean fitness of each object.
int var_shape(word* s, const word* ob, word*, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_genetic);
  if (!*done) return 0;
  const std::vector<int> list = arg_ints(s, KW_particle);
  std::vector<float> out;
  for (Objet* o : objets_commande(s, KW_genetic)) out.push_back(moyenne(o, list));
  return build_floats_or_nil(s, lim, out);
}

}  // namespace

void install_genetic_commands() {
  register_graphic_handler({KW_genetic}, GENETIC_b);
  register_graphic_shape(KW_generate, generate_shape);
  register_graphic_shape(KW_validate, validate_shape);
  register_graphic_shape(KW_cut, cut_shape);
  register_graphic_shape(KW_meta, meta_shape);
  register_graphic_shape(KW_var, var_shape);
}

void install_genetic() {
  install_genetic_commands();
  // An evolved population is work, as a taught network is.
  suivre_travail(KW_genetic, 0, 0, " Populations have not been saved, leave (0,1) ?\a", ".gen");
}
