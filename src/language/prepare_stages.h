// The stages of source preparation and what they share. The work area is
// cut in two regions; each copying stage reads the text in one and writes
// the other.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "kernel/objet.h"
#include "language/lexer.h"
#include "language/symbols.h"

struct Passe {
  Objet* obj = nullptr;
  bool console = false;         // a console text rather than a function
  const char* source = nullptr;
  size_t source_len = 0;
  char* zone[2] = {};
  char* zone_fin[2] = {};
  int courante = 0;             // region that holds the text
  Symboles table;               // labels, then the macros of this text
  std::vector<std::string> definis;  // names of its #define lines
  bool plein = false;           // a region was too small
  int ligne = 1;                // line of the fault
};

inline char* texte(Passe& P) { return P.zone[P.courante]; }
inline Sortie sortie_suivante(Passe& P) {
  return sortie_sur(P.zone[1 - P.courante], P.zone_fin[1 - P.courante]);
}
// Ends a copying stage: NUL, and the written region holds the text.
int basculer(Passe& P, Sortie& o);
// Records where a reported fault lies: the last line mark before `lieu`.
int echec(Passe& P, const char* debut, const char* lieu);
int debordement(Passe& P);

// Stages, in order. 0 to go on, 1 when the text is complete, negative on
// failure (reported, or P.plein).
int passe_commentaires(Passe& P);
int passe_directives_initiales(Passe& P);
int passe_includes(Passe& P);
int passe_parentheses(Passe& P);
int passe_etiquettes(Passe& P);
int passe_macros(Passe& P);
int passe_alias(Passe& P);
int passe_reecriture(Passe& P);
int passe_substitution(Passe& P);

// Shared scanning.
// Past the quoted text that opens at p (" or '); *complet tells whether
// the closing quote was found (else the result is at the NUL). A single
// quote also ends at a line mark or newline.
const char* fin_citation(const char* p, bool* complet);
// Copies the mark at p and moves past it; a line mark goes through
// marquer_ligne, so that it may collapse onto the one before. A mark cut
// short by the NUL is dropped.
void copier_marque(Sortie& o, const char*& p);
// Macro replacement of a word: the global table, then the text's own.
const char* macro_de(const Passe& P, const char* mot);
// Copies `texte` into `o`, replacing the words that name macros (and
// `nom` by `remplacement` when nom is not null); quoted text is kept.
// *remplaces counts the replacements. -1 after a report.
int substituer(const Passe& P, const char* texte, Sortie& o, const char* nom,
               const char* remplacement, int* remplaces);
