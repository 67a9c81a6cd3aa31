// Stage 3: #include. A name ended by "(" inserts the body of a function in
// memory, any other name a whole file. The stage runs again while a run
// expanded something, so that nested includes resolve; a text that keeps
// including itself stops at INCLUDE_MAX runs.
#include <cstring>
#include <string>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/functions.h"
#include "language/prepare_stages.h"
#include "platform/process.h"

namespace {

constexpr int INCLUDE_MAX = 64;

struct Inclusion {
  Passe& P;
  const char* p;   // reading position in the including text
  Sortie o;
  int ligne = 1;   // number of the last line mark passed
  int faites = 0;  // includes expanded by this run
};

// Included text: its "/*" comments dropped, its newlines made line marks
// that carry the including text's counter.
int copier_inclus(Inclusion& I, const char* p, const char* fin) {
  while (p < fin && !I.o.plein) {
    if (*p == '"') {
      bool complet;
      const char* q = fin_citation(p, &complet);
      ecrire_n(I.o, p, static_cast<size_t>(q - p));
      p = q;
    } else if (p[0] == '/' && p + 1 < fin && p[1] == '*') {
      const char* q = static_cast<const char*>(memmem(p + 2, static_cast<size_t>(fin - p - 2), "*/", 2));
      if (!q) {
        err_commentaire(nullptr);
        return -1;
      }
      p = q + 2;
    } else if (*p == '\n' || (p[0] == '\r' && p + 1 < fin && p[1] == '\n')) {
      marquer_ligne(I.o, I.ligne);
      p += *p == '\r' ? 2 : 1;
    } else {
      ecrire(I.o, *p == MARQUE_LIGNE || *p == MARQUE_ORIGINE ? ' ' : *p);
      p++;
    }
  }
  return 0;
}

// The body of a function: between its first "{" and the matching "}"
// (the end of the text when there is none).
bool corps(const char* s, const char** debut, const char** fin) {
  const char* p = std::strchr(s, '{');
  if (!p) return false;
  *debut = ++p;
  for (int niveau = 1; *p;) {
    bool complet;
    if (*p == '"') {
      p = fin_citation(p, &complet);
      continue;
    }
    if (*p == '{') niveau++;
    if (*p == '}' && --niveau == 0) break;
    p++;
  }
  *fin = p;
  return true;
}

int inclure_fonction(Inclusion& I, const char* nom) {
  const char* source = source_of(get_fonction(nom));
  const char *debut, *fin;
  if (!source || !corps(source, &debut, &fin)) {
    voir_mot(KW_func);
    VOIR_CHAR("%s", nom);
    err_pas_trouve(nullptr);
    return -1;
  }
  marquer_origine(I.o, nom);
  return copier_inclus(I, debut, fin);
}

int inclure_fichier(Inclusion& I, const char* nom) {
  std::string contenu;
  if (!file_read_all(nom, contenu)) {
    err_lecture(nom);
    return -1;
  }
  marquer_origine(I.o, nom);
  return copier_inclus(I, contenu.c_str(), contenu.c_str() + std::strlen(contenu.c_str()));
}

bool fin_de_nom(char c) {
  return !c || c == '"' || c == '>' || c == '\n' || c == '(' || c == MARQUE_LIGNE ||
         c == MARQUE_ORIGINE;
}

// At the name after "include"; the rest of the directive's line goes.
int inclure(Inclusion& I) {
  const char* p = sauter_blancs(I.p);
  if (*p == '"' || *p == '<') p++;
  const char* debut = p;
  while (!fin_de_nom(*p)) p++;
  const char* fin = p;
  while (fin > debut && (fin[-1] == ' ' || fin[-1] == '\t')) fin--;
  if (fin - debut >= LONG_MOT) {
    err_debordement(nullptr);
    return -1;
  }
  std::string nom(debut, fin);
  while (*p && *p != MARQUE_LIGNE) p++;
  I.p = p;
  I.faites++;
  return *fin == '(' ? inclure_fonction(I, nom.c_str()) : inclure_fichier(I, nom.c_str());
}

// At a "#": directives other than include are copied back unchanged.
int directive(Inclusion& I) {
  const char* q = I.p + 1;
  char mot[LONG_MOT];
  if (lire_mot(mot, &q, LONG_MOT) < 0) return -1;
  if (std::strcmp(mot, "include") == 0) {
    I.p = q;
    return inclure(I);
  }
  if (std::strcmp(mot, "define") && std::strcmp(mot, "ifdef") && std::strcmp(mot, "endif")) {
    VOIR_CHAR("%s: ", mot);
    voir_message(0, MES_UNKNOWN_DIRECTIVE);
    return -1;
  }
  ecrire(I.o, *I.p++);
  return 0;
}

int copier_element(Inclusion& I) {
  char c = *I.p;
  if (c == MARQUE_LIGNE) I.ligne = numero_ligne(I.p);
  if (c == MARQUE_LIGNE || c == MARQUE_ORIGINE) {
    copier_marque(I.o, I.p);
  } else if (c == '"') {
    bool complet;
    const char* q = fin_citation(I.p, &complet);
    ecrire_n(I.o, I.p, static_cast<size_t>(q - I.p));
    I.p = q;
  } else if (c == '#') {
    return directive(I);
  } else {
    ecrire(I.o, c);
    I.p++;
  }
  return 0;
}

// One run: the text into the other region. Returns the includes expanded.
int inclure_passe(Passe& P) {
  Inclusion I{P, texte(P), sortie_suivante(P)};
  while (*I.p) {
    if (I.o.plein) return debordement(P);
    if (copier_element(I) < 0) return echec(P, texte(P), I.p);
  }
  if (basculer(P, I.o) < 0) return -1;
  return I.faites;
}

}  // namespace

int passe_includes(Passe& P) {
  for (int run = 0;; run++) {
    if (run == INCLUDE_MAX) {
      err_debordement("#include");
      return echec(P, texte(P), texte(P));
    }
    int faites = inclure_passe(P);
    if (faites <= 0) return faites;
  }
}
