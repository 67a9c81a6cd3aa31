// Stage 5: every word directly followed by ":" is a label, except `case`
// and `default`. Strings are not stepped over: a label-like word inside
// one is entered too, which does no harm.
#include <cstring>

#include "language/lang_state.h"
#include "language/prepare_stages.h"

namespace {

bool est_etiquette(const char* mot, const char* apres) {
  return *apres == ':' && std::strcmp(mot, "case") != 0 && std::strcmp(mot, "default") != 0;
}

int entrer(Passe& P, const char* mot) {
  if (symb_find(&P.table, C_LABEL, mot) >= 0) return 0;
  return symb_add(&P.table, C_LABEL, mot) < 0 ? -1 : 0;
}

}  // namespace

int passe_etiquettes(Passe& P) {
  if (symb_ini(&P.table, lang().symbol_capacity) < 0) return echec(P, texte(P), texte(P));
  char mot[LONG_MOT];
  for (const char* p = texte(P); *p;) {
    if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
      p = sauter_marque(p);
      continue;
    }
    const char* q = p;
    int n = lire_mot(mot, &q, LONG_MOT);
    if (n < 0 || (n > 1 && est_etiquette(mot, q) && entrer(P, mot) < 0)) return echec(P, texte(P), p);
    p = q;
    if (n <= 1 && *p && *p != MARQUE_LIGNE && *p != MARQUE_ORIGINE) p++;
  }
  return 0;
}
