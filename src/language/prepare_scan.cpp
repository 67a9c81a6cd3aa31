// Scanning shared by the stages: quoted text, marks, region switching and
// the recording of a fault's place.
#include "language/prepare_stages.h"

int basculer(Passe& P, Sortie& o) {
  if (o.plein || !terminer(o)) return debordement(P);
  P.courante = 1 - P.courante;
  return 0;
}

int echec(Passe& P, const char* debut, const char* lieu) {
  P.ligne = ligne_avant(debut, lieu, 1);
  return -1;
}

int debordement(Passe& P) {
  P.plein = true;
  return -1;
}

const char* fin_citation(const char* p, bool* complet) {
  const char guillemet = *p++;
  for (;;) {
    char c = *p;
    if (c == guillemet) {
      *complet = true;
      return p + 1;
    }
    bool fin_ligne = guillemet == '\'' && (c == MARQUE_LIGNE || c == '\n');
    if (!c || fin_ligne) {
      *complet = false;
      return p;
    }
    p += (c == '\\' && p[1]) ? 2 : 1;
  }
}

void copier_marque(Sortie& o, const char*& p) {
  int n = longueur_marque(p);
  if (*p == MARQUE_LIGNE && n == LONG_MARQUE_LIGNE)
    marquer_ligne(o, numero_ligne(p));
  else if (*p == MARQUE_ORIGINE && n == LONG_MARQUE_ORIGINE)
    ecrire_n(o, p, static_cast<size_t>(n));
  p += n ? n : 1;
}
