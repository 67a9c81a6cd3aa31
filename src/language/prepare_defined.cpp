// The list of defined names that #ifdef tests: entries [word count, name],
// a zero word behind the last; it doubles as it fills.
#include <cstring>

#include "kernel/bloc.h"
#include "language/lang_state.h"
#include "language/prepare.h"

namespace {

constexpr int CAPACITE_INITIALE = 10000;

int mots_utilises(const word* t) {
  int n = 0;
  while (t[n] > 0) n += t[n];
  return n;
}

int reserver(int mots) {
  LanguageState& L = lang();
  int utilises = L.defined_names ? mots_utilises(L.defined_names) : 0;
  int capacite = L.defined_capacity > 0 ? L.defined_capacity : CAPACITE_INITIALE;
  while (utilises + mots + 1 > capacite) capacite *= 2;
  if (L.defined_names && capacite == L.defined_capacity) return utilises;
  auto* t = static_cast<bloc>(alloue_mem(static_cast<size_t>(capacite) * sizeof(word)));
  if (!t) return -1;
  t[0] = 0;
  if (L.defined_names) std::memcpy(t, L.defined_names, static_cast<size_t>(utilises + 1) * sizeof(word));
  libere_mem(L.defined_names);
  L.defined_names = t;
  L.defined_capacity = capacite;
  return utilises;
}

}  // namespace

bool nom_defini(const char* name) {
  const word* t = lang().defined_names;
  for (int i = 0; t && t[i] > 0; i += t[i])
    if (std::strcmp(reinterpret_cast<const char*>(t + i + 1), name) == 0) return true;
  return false;
}

int ajouter_nom_defini(const char* name) {
  size_t octets = std::strlen(name) + 1;
  int mots = 1 + static_cast<int>((octets + sizeof(word) - 1) / sizeof(word));
  int fin = reserver(mots);
  if (fin < 0) return -1;
  word* e = lang().defined_names + fin;
  std::memset(e, 0, static_cast<size_t>(mots + 1) * sizeof(word));
  e[0] = mots;
  std::memcpy(e + 1, name, octets);
  return 0;
}

void vider_noms_definis() {
  if (lang().defined_names) lang().defined_names[0] = 0;
}
