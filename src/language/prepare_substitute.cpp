// Stage 9: the text goes back with its macros replaced, the global table
// first, then the text's own. Quoted text is copied untouched.
#include <cstring>

#include "language/lang_state.h"
#include "language/prepare_stages.h"

const char* macro_de(const Passe& P, const char* mot) {
  const Symboles* tables[] = {&lang().macros_globales, &P.table};
  for (const Symboles* t : tables) {
    int ordinal = symb_find(t, C_MACRO, mot);
    if (ordinal >= 0) return symb_macro_text(symb_entry(t, ordinal));
  }
  return nullptr;
}

int substituer(const Passe& P, const char* p, Sortie& o, const char* nom, const char* remplacement,
               int* remplaces) {
  char mot[LONG_MOT];
  while (*p && !o.plein) {
    const char* q = p;
    if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
      copier_marque(o, p);
      continue;
    }
    if (*p == '"' || *p == '\'') {
      bool complet;
      q = fin_citation(p, &complet);
    } else if (*p == ' ' || *p == '\t') {
      q = p + 1;
    } else {
      int n = lire_mot(mot, &q, LONG_MOT);
      if (n < 0) return -1;
      const char* r = n <= 1 ? nullptr : (nom && std::strcmp(mot, nom) == 0) ? remplacement : macro_de(P, mot);
      if (n <= 1) q = p + 1;
      if (r) {
        ecrire_texte(o, r);
        (*remplaces)++;
        p = q;
        continue;
      }
    }
    ecrire_n(o, p, static_cast<size_t>(q - p));
    p = q;
  }
  return 0;
}

int passe_substitution(Passe& P) {
  Sortie o = sortie_suivante(P);
  int remplaces = 0;
  if (substituer(P, texte(P), o, nullptr, nullptr, &remplaces) < 0) return echec(P, texte(P), texte(P));
  return basculer(P, o);
}
