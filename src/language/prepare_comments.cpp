// Stage 1: the source goes into the first region without its comments,
// every newline becoming a line mark. Strings are copied first, so that
// "/*" inside one stays.
#include <cstring>

#include "kernel/report.h"
#include "language/prepare_stages.h"

namespace {

struct Lecture {
  const char* p;
  const char* fin;
  int ligne = 1;
};

// Bytes 2 and 3 are marks in prepared text: in a source they are blanks.
char propre(char c) { return c == MARQUE_LIGNE || c == MARQUE_ORIGINE ? ' ' : c; }

// A string through its closing quote, a backslash and the byte behind it
// as a pair. -1 after INCOMPLETE STRING when the text ends first.
int copier_chaine(Lecture& L, Sortie& o) {
  ecrire(o, *L.p++);
  while (L.p < L.fin) {
    char c = *L.p++;
    if (c == '\n') L.ligne++;
    ecrire(o, propre(c));
    if (c == '"') return 0;
    if (c != '\\' || L.p == L.fin) continue;
    if (*L.p == '\n') L.ligne++;
    ecrire(o, propre(*L.p++));
  }
  voir_message(0, MES_INCOMPLETE_STRING);
  return -1;
}

// "/*" to "*/", counting lines but marking none.
int sauter_bloc(Lecture& L) {
  for (L.p += 2; L.p + 1 < L.fin; L.p++) {
    if (L.p[0] == '*' && L.p[1] == '/') {
      L.p += 2;
      return 0;
    }
    if (*L.p == '\n') L.ligne++;
  }
  err_commentaire(nullptr);
  return -1;
}

// "//" to the newline, then every newline, blank and tab behind it.
int sauter_ligne(Lecture& L) {
  const char* nl = static_cast<const char*>(std::memchr(L.p, '\n', static_cast<size_t>(L.fin - L.p)));
  if (!nl) {
    err_commentaire(nullptr);
    return -1;
  }
  for (L.p = nl; L.p < L.fin && (*L.p == '\n' || *L.p == ' ' || *L.p == '\t'); L.p++)
    if (*L.p == '\n') L.ligne++;
  return 0;
}

int copier_element(Lecture& L, Sortie& o) {
  char c = *L.p;
  char suivant = L.p + 1 < L.fin ? L.p[1] : 0;
  if (c == '"') return copier_chaine(L, o);
  if (c == '/' && suivant == '*') return sauter_bloc(L);
  if (c == '/' && suivant == '/') return sauter_ligne(L);
  if (c == '\r' && suivant == '\n') c = *++L.p;  // one line end, whatever the system
  if (c == '\n')
    marquer_ligne(o, L.ligne++);
  else
    ecrire(o, propre(c));
  L.p++;
  return 0;
}

}  // namespace

int passe_commentaires(Passe& P) {
  Lecture L{P.source, P.source + P.source_len};
  P.courante = 1;  // writes the first region
  Sortie o = sortie_suivante(P);
  marquer_ligne(o, L.ligne);
  while (L.p < L.fin) {
    if (o.plein) return debordement(P);
    if (copier_element(L, o) < 0) return echec(P, o.debut, o.p);
  }
  return basculer(P, o);
}
