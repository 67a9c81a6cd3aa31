// Stage 8: one walk that rewrites statements into shapes the compiler
// reads in one pass. Between words: ";" is written once with the blanks
// and semicolons behind it reduced, "#" drops the rest of a directive
// line, "++x" becomes "(++x)", origin marks go and line marks stay.
#include <cstring>

#include "language/prepare_rewrite.h"

namespace {

bool chiffre(char c) { return c >= '0' && c <= '9'; }

bool copie_telle_quelle(char c) {
  return c == ' ' || c == '\t' || chiffre(c) || (c && std::strchr("!$%&()*,./<=>[]^{|}~", c));
}

void point_virgule(Reecriture& r) {
  ecrire(r.o, ';');
  bool blanc = false;
  for (r.p++;; r.p++) {
    char c = *r.p;
    if (c == ' ' || c == '\t') {
      if (!blanc) ecrire(r.o, ' ');
      blanc = true;
    } else if (c == MARQUE_LIGNE || c == MARQUE_ORIGINE) {
      copier_unite(r);
      r.p--;
    } else if (c != ';') {
      return;
    }
  }
}

// "++" or "--" directly before a word.
int prefixe(Reecriture& r) {
  char mot[LONG_MOT];
  const char* q = r.p + 2;
  int n = (*q == ' ' || *q == '\t') ? 0 : lire_mot(mot, &q, LONG_MOT);
  if (n < 0) return -1;
  if (n <= 1) {
    ecrire_n(r.o, r.p, 2);
    r.p += 2;
    return 0;
  }
  ecrire(r.o, '(');
  ecrire_n(r.o, r.p, 2);
  ecrire_texte(r.o, mot);
  ecrire(r.o, ')');
  r.p = q;
  return 0;
}

int mot(Reecriture& r) {
  char mot[LONG_MOT];
  const char* q = r.p;
  int n = lire_mot(mot, &q, LONG_MOT);
  if (n < 0) return -1;
  if (n <= 1) {
    copier_unite(r);
    return 0;
  }
  r.p = q;
  return reecrire_mot(r, mot);
}

int element(Reecriture& r) {
  char c = *r.p;
  if (c == ';') {
    point_virgule(r);
  } else if (c == '#') {
    while (*r.p && *r.p != MARQUE_LIGNE) r.p++;
  } else if ((c == '+' || c == '-') && r.p[1] == c) {
    return prefixe(r);
  } else if (copie_telle_quelle(c) || c == MARQUE_LIGNE || c == MARQUE_ORIGINE || c == '"' || c == '\'') {
    copier_unite(r);
  } else {
    return mot(r);
  }
  return 0;
}

}  // namespace

int passe_reecriture(Passe& P) {
  Reecriture r{P, texte(P), sortie_suivante(P)};
  while (*r.p && !r.fini) {
    if (r.o.plein) return debordement(P);
    if (element(r) < 0) return echec(P, texte(P), r.p);
  }
  return basculer(P, r.o);
}
