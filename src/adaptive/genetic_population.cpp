// The population block, the alphabet, the rates, and the making of a
// random population.
#include <cstring>
#include <string>

#include "adaptive/genetic.h"
#include "adaptive/genetic_state.h"
#include "adaptive/net_internal.h"
#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "language/args.h"

bool lit_population(const word* v, Population* p) {
  if (!v || v[0] < 4 || tag(v) != T_CHAR || np(v) < 0 || dimp(v) < 1) return false;
  const long long bytes = static_cast<long long>(np(v)) * dimp(v);
  if (bytes > static_cast<long long>(v[0] - 4) * 4) return false;
  p->n = np(v);
  p->L = dimp(v);
  p->bytes = const_cast<char*>(text(v));
  p->size = static_cast<size_t>(v[0] - 4) * 4;
  return true;
}

bloc cree_population(Objet* o, int code, int n, int L) {
  const long long bytes = static_cast<long long>(n) * L;
  if (n < 0 || L < 1 || bytes > POPULATION_MAX) {
    voir_int2("%d %d ", n, L);
    voir_message(0, MES_ILLEGAL);
    return nullptr;
  }
  if (!o->local && !local_ini(o)) return nullptr;
  const int words = static_cast<int>((bytes + 3) / 4);
  bloc v = installe_valeur_1(o, code, words);
  if (!v) return nullptr;
  v[1] = T_CHAR, v[2] = n, v[3] = L;
  std::memset(v + 4, 0, static_cast<size_t>(words) * 4);
  return v;
}

const char* alphabet_de(Objet* o, int* len) {
  const word* a = o->local ? get_val_1(o->local, KW_alphabet) : nullptr;
  const char* t = value_text(a);
  if (!t || !*t) t = "01";
  *len = static_cast<int>(t == text(a) ? text_bytes(a) : std::strlen(t));
  return t;
}

Taux lit_taux(Objet* o) {
  Taux t;
  const word* v = o->local ? get_val_2(o->local, KW_meta, KW_rand) : nullptr;
  if (!v && o->local && (v = get_val_2(o->local, KW_meta, KW_alea))) t.source = Source::table;
  float f[4] = {1.0f, 0.001f, 0.0f, 0.0f};
  const int k = floats_of(v, f, 4);
  t.crossover = f[0];
  t.mutation = k >= 3 ? f[2] + tire(t.source) * f[3] : f[1];
  if (t.mutation < 0) t.mutation = 0.001f;
  return t;
}

int population_aleatoire(Objet* o, bool sized, int n, int L, const char* alphabet, Source s) {
  Population old;
  const bool exists = o->local && lit_population(get_val_1(o->local, KW_particle), &old);
  if (!sized) {
    if (!exists) {
      rapport_manque(o, KW_particle);
      return -1;
    }
    n = old.n, L = old.L;
  }
  int len = 0;
  if (alphabet && *alphabet) {
    if (!o->local && !local_ini(o)) return -1;
    const std::vector<word> a = valeur_texte(alphabet, std::strlen(alphabet));
    if (!set_propr_1(o, KW_alphabet, a.data())) return -1;
  }
  const char* alpha = alphabet_de(o, &len);
  // The letters are copied: a new population may move the alphabet.
  const std::string letters(alpha, static_cast<size_t>(len));
  bloc v = cree_population(o, KW_particle, n, L);
  if (!v) return -1;
  Population p;
  lit_population(v, &p);
  for (int i = 0; i < n; i++) {
    char* d = p.individu(i);
    for (int k = 0; k < L - 1; k++) d[k] = letters[static_cast<size_t>(tire_entier(s, len))];
    if (Yes(KW_debug) > 0) voir_texte("+");
  }
  // The fitness of the old strings no longer holds.
  rem_propr_2(o, KW_scale, KW_particle);
  return 0;
}
