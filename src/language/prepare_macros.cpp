// Stage 6: #define and #ifdef, in place; no byte moves. A definition is
// expanded at once with the macros known so far and itself, scan after
// scan until one replaces nothing. A macro that expands to itself would
// never end: a scan beyond the count of known macros, or an expansion past
// EXPANSION_MAX bytes, is refused with OVERFLOW.
#include <cstring>
#include <string>

#include "kernel/report.h"
#include "language/lang_state.h"
#include "language/prepare.h"
#include "language/prepare_stages.h"

namespace {

constexpr size_t EXPANSION_MAX = 1 << 16;

bool fin_de_ligne(char c) { return !c || c == MARQUE_LIGNE || c == MARQUE_ORIGINE || c == '\n'; }

// The rest of the line: strings kept, a backslash inside one dropped and
// the byte behind it kept.
std::string remplacement(const char* p) {
  std::string r;
  bool chaine = false;
  for (p = sauter_blancs(p); !fin_de_ligne(*p); p++) {
    if (chaine && *p == '\\' && !fin_de_ligne(p[1])) p++;
    else if (*p == '"') chaine = !chaine;
    r += *p;
  }
  while (!r.empty() && (r.back() == ' ' || r.back() == '\t')) r.pop_back();
  return r;
}

// Expansion of `texte`, the new macro `nom` included; -1 after OVERFLOW.
int developper(const Passe& P, const char* nom, std::string& texte) {
  int tours = lang().macros_globales.count + P.table.count + 1;
  std::string tampon(EXPANSION_MAX + 1, '\0');
  const std::string brut = texte;
  for (int tour = 0;; tour++) {
    Sortie o = sortie_sur(tampon.data(), tampon.data() + tampon.size());
    int remplaces = 0;
    if (substituer(P, texte.c_str(), o, nom, brut.c_str(), &remplaces) < 0) return -1;
    if (remplaces == 0) return 0;
    if (o.plein || tour == tours) {
      err_debordement(nom);
      return -1;
    }
    texte.assign(o.debut, o.p);
  }
}

int definir_symbole(Passe& P, const char* p) {
  p = sauter_blancs(p);
  const char* fin = p;
  while (!fin_de_ligne(*fin) && *fin != ' ' && *fin != '\t') fin++;
  if (fin == p) {
    voir_message(0, MES_DIRECTIVE_ERROR);
    return -1;
  }
  if (fin - p >= LONG_MOT) {
    err_debordement(nullptr);
    return -1;
  }
  std::string nom(p, fin);
  P.definis.push_back(nom);
  Symboles* table = P.console ? &lang().macros_globales : &P.table;
  if (symb_find(table, C_MACRO, nom.c_str()) >= 0) return 0;
  std::string texte = remplacement(fin);
  if (developper(P, nom.c_str(), texte) < 0) return -1;
  return symb_add_macro(table, nom.c_str(), texte.c_str()) < 0 ? -1 : 0;
}

// The #endif that closes the region opened at p: its start, and *fin past
// it. Null when the text ends first.
char* chercher_endif(char* p, char** fin) {
  char mot[LONG_MOT];
  while (*p) {
    bool complet;
    if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
      p += longueur_marque(p);
    } else if (*p == '"') {
      p = const_cast<char*>(fin_citation(p, &complet));
    } else if (*p == '#') {
      const char* q = p + 1;
      if (lire_mot(mot, &q, LONG_MOT) < 0) return nullptr;
      if (std::strcmp(mot, "endif") == 0) {
        *fin = const_cast<char*>(q);
        return p;
      }
      p++;
    } else {
      p++;
    }
  }
  err_manque("#endif");
  return nullptr;
}

// A name that is not defined blanks everything from the "#" of #ifdef to
// the end of its #endif, line marks included.
int tester(char* diese, const char* p, char** suite) {
  char nom[LONG_MOT];
  int n = lire_mot(nom, &p, LONG_MOT);
  if (n < 0) return -1;
  if (n <= 1) {
    voir_message(0, MES_DIRECTIVE_ERROR);
    return -1;
  }
  *suite = const_cast<char*>(p);
  if (nom_defini(nom)) return 0;
  char* fin;
  if (!chercher_endif(const_cast<char*>(p), &fin)) return -1;
  std::memset(diese, ' ', static_cast<size_t>(fin - diese));
  *suite = fin;
  return 0;
}

// At a "#": returns where the walk goes on, or null after a report.
char* directive(Passe& P, char* diese) {
  const char* q = diese + 1;
  char mot[LONG_MOT];
  if (lire_mot(mot, &q, LONG_MOT) < 0) return nullptr;
  char* suite = const_cast<char*>(q);
  if (std::strcmp(mot, "define") == 0 && definir_symbole(P, q) < 0) return nullptr;
  if (std::strcmp(mot, "ifdef") == 0 && tester(diese, q, &suite) < 0) return nullptr;
  return suite;
}

}  // namespace

int passe_macros(Passe& P) {
  for (char* p = texte(P); *p;) {
    bool complet;
    if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
      p += longueur_marque(p);
    } else if (*p == '"') {
      p = const_cast<char*>(fin_citation(p, &complet));
    } else if (*p == '#') {
      char* suite = directive(P, p);
      if (!suite) return echec(P, texte(P), p);
      p = suite;
    } else {
      p++;
    }
  }
  return 0;
}
