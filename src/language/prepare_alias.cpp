// Stage 7: with `alias` on and an alias table present, every word named in
// the table is replaced. The table is a text of lines "name=replacement".
// Strings and marks are copied as they stand.
#include <cstring>
#include <string>

#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/lang_state.h"
#include "language/prepare_stages.h"

namespace {

// The replacement of `mot` in the table, or false.
bool chercher_alias(const std::string& table, const char* mot, std::string& r) {
  size_t n = std::strlen(mot);
  for (size_t debut = 0; debut < table.size();) {
    size_t fin = table.find('\n', debut);
    if (fin == std::string::npos) fin = table.size();
    if (fin - debut > n && table.compare(debut, n, mot) == 0 && table[debut + n] == '=') {
      r.assign(table, debut + n + 1, fin - debut - n - 1);
      if (!r.empty() && r.back() == '\r') r.pop_back();
      return true;
    }
    debut = fin + 1;
  }
  return false;
}

// One mark, string, word or other character.
int copier_element(const char*& p, Sortie& o) {
  char mot[LONG_MOT];
  std::string r;
  if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
    copier_marque(o, p);
    return 0;
  }
  const char* q = p;
  int n = *p == '"' || *p == ' ' || *p == '\t' ? 1 : lire_mot(mot, &q, LONG_MOT);
  if (n < 0) return -1;
  if (*p == '"') {
    bool complet;
    q = fin_citation(p, &complet);
  } else if (n <= 1) {
    q = p + 1;
  } else if (chercher_alias(lang().alias_text, mot, r)) {
    ecrire_texte(o, r.c_str());
    p = q;
    return 0;
  }
  ecrire_n(o, p, static_cast<size_t>(q - p));
  p = q;
  return 0;
}

}  // namespace

int passe_alias(Passe& P) {
  if (Yes(KW_alias) <= 0 || !lang().alias_exists) return 0;
  Sortie o = sortie_suivante(P);
  for (const char* p = texte(P); *p;) {
    if (o.plein) return debordement(P);
    if (copier_element(p, o) < 0) return echec(P, texte(P), p);
  }
  return basculer(P, o);
}
