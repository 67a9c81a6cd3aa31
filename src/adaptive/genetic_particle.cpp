// `genetic(id) particle(i1, i2, ...)`: individuals read, concatenated in
// one text, or written from a text (index 0 appends one; the first write
// makes the population with the text's length as its strings' length).
// Other words after `genetic(id)` become properties of the object, made
// when absent and kept when it exists (as a network is).
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "adaptive/genetic.h"
#include "adaptive/genetic_commands.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/vol_build.h"
#include "scene/unsaved.h"

namespace {

void index_illegal(int i) {
  voir_int("%d ", i);
  voir_message(0, MES_ILLEGAL);
}

int lecture(word* s, const word* lim) {
  const std::vector<int> wanted = arg_ints(s, KW_particle);
  std::string all;
  for (Objet* o : arg_objects(s, KW_genetic)) {
    Population p;
    if (!o->local || !lit_population(get_val_1(o->local, KW_particle), &p)) continue;
    std::vector<int> list = wanted;
    if (list.empty())
      for (int i = 1; i <= p.n; i++) list.push_back(i);
    for (int i : list) {
      if (i < 1 || i > p.n) {
        index_illegal(i);
        return -1;
      }
      const char* t = p.individu(i - 1);
      all.append(t, strnlen(t, static_cast<size_t>(p.L)));
    }
  }
  return build_text(s, lim, all.data(), all.size());
}

// The text written at index i (0 appends; checked) of the object's
// population.
int ecrit(Objet* o, int i, const char* t, size_t len) {
  Population p;
  const bool exists = o->local && lit_population(get_val_1(o->local, KW_particle), &p);
  if (i == 0) {
    const int L = exists ? p.L : static_cast<int>(std::min<size_t>(len, POPULATION_MAX - 1)) + 1;
    const std::vector<char> old = exists ? std::vector<char>(p.bytes, p.bytes + static_cast<size_t>(p.n) * p.L)
                                         : std::vector<char>();
    bloc v = cree_population(o, KW_particle, (exists ? p.n : 0) + 1, L);
    if (!v) return -1;
    lit_population(v, &p);
    std::copy(old.begin(), old.end(), p.bytes);
    i = p.n;
  }
  // A longer text is cut to the strings' length, a shorter one ends in NULs.
  char* d = p.individu(i - 1);
  std::memset(d, 0, static_cast<size_t>(p.L));
  std::memcpy(d, t, std::min(len, static_cast<size_t>(p.L - 1)));
  return 0;
}

int ecriture(word* s, const word* ob) {
  const char* t = value_text(ob);
  if (!t) {
    voir_mot(KW_particle);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  const size_t len = static_cast<size_t>(text_bytes(ob));
  const std::string copy(t, len);  // the value may stand in a block that moves
  std::vector<int> list = arg_ints(s, KW_particle);
  if (list.empty()) list.push_back(0);
  marque_objets_commande(s);
  for (Objet* o : genetiques_ou_crees(s)) {
    // Every index checked before anything is written.
    Population p;
    const int n = o->local && lit_population(get_val_1(o->local, KW_particle), &p) ? p.n : 0;
    for (int i : list)
      if (i < 0 || i > n) {
        index_illegal(i);
        return -1;
      }
    for (int i : list)
      if (ecrit(o, i, copy.data(), copy.size()) < 0) return -1;
    // The fitness of the old strings no longer holds.
    rem_propr_2(o, KW_scale, KW_particle);
  }
  return 0;
}

}  // namespace

int GENETIC_b(word* s, const word* ob, word* st, const word* lim) {
  const word* sel = command_argument(s);
  if (ob && !sel) return bloc_0(s, ob, st, lim);
  if (!sel) return OBJET_b(s, ob, st, lim);
  if (item_count(s) != 2 || second_word(s) != KW_particle) {
    if (ob) return bloc_0(s, ob, st, lim);
    marque_objets_commande(s);
    for (Objet* o : genetiques_ou_crees(s))
      if (set_propriete_vol_b(o, s) < 0) {
        TRACE_FAIL("GENETIC_b()");
        return -1;
      }
    return build_nil(s);
  }
  if (!ob) return lecture(s, lim);
  if (ecriture(s, ob) < 0) {
    TRACE_FAIL("GENETIC_b()");
    return -1;
  }
  return build_nil(s);
}
