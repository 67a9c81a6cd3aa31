// Stage 2: a text made of nothing but line marks and directive lines has
// no statement to compile. It is reported and reduced to its line marks.
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/prepare_stages.h"

namespace {

// Past the line marks and the directive lines ("#" to the next line mark)
// at the start of the text.
const char* sauter_directives(const char* p) {
  for (;;) {
    if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
      p = sauter_marque(p);
    } else if (*p == '#') {
      while (*p && *p != MARQUE_LIGNE) p++;
    } else {
      return p;
    }
  }
}

// Keeps the line marks of the text alone, in place.
void garder_marques(char* t) {
  Sortie o = sortie_sur(t, t + std::strlen(t) + 1);
  for (const char* p = t; *p;) {
    if (*p == MARQUE_LIGNE)
      copier_marque(o, p);
    else
      p = *p == MARQUE_ORIGINE ? sauter_marque(p) : p + 1;
  }
  terminer(o);
}

}  // namespace

int passe_directives_initiales(Passe& P) {
  if (*sauter_directives(texte(P))) return 0;
  voir_mot(KW_error);
  voir_texte("INCLUDE\n");
  garder_marques(texte(P));
  return 1;
}
