// The rules of the rewriting stage for words, tried in order: case,
// default, labels, goto, the commands that take bare words, control
// heads, else, auto, postfix ++ and --, and any other word.
#include <cstdio>
#include <cstring>

#include "kernel/report.h"
#include "language/prepare_rewrite.h"

namespace {

bool egal(const char* a, const char* b) { return std::strcmp(a, b) == 0; }
bool blanc(char c) { return c == ' ' || c == '\t'; }
bool ouvrante(char c) { return c == '(' || c == '[' || c == '{'; }
bool fin_de_ligne(char c) { return !c || c == MARQUE_LIGNE || c == MARQUE_ORIGINE || c == '\n'; }

void ecrire_nombre(Sortie& o, int n) {
  char t[16];
  std::snprintf(t, sizeof t, "%d", n);
  ecrire_texte(o, t);
}

// case expression ":" -> ":" expression ";". The expression runs to the
// next ":" or ";" outside quotes.
int reecrire_case(Reecriture& r) {
  const char* debut = sauter_blancs(r.p);
  const char* p = debut;
  while (*p != ':' && *p != ';') {
    bool complet = true;
    if (fin_de_ligne(*p)) break;
    p = (*p == '"' || *p == '\'') ? fin_citation(p, &complet) : p + 1;
    if (!complet) break;
  }
  const char* fin = p;
  while (fin > debut && blanc(fin[-1])) fin--;
  if ((*p != ':' && *p != ';') || fin == debut) {
    voir_message(0, MES_CASE_USAGE);
    return -1;
  }
  ecrire(r.o, ':');
  ecrire_n(r.o, debut, static_cast<size_t>(fin - debut));
  ecrire(r.o, ';');
  r.p = p + 1;
  return 0;
}

int reecrire_goto(Reecriture& r) {
  char nom[LONG_MOT];
  int n = lire_mot(nom, &r.p, LONG_MOT);
  if (n < 0) return -1;
  int ordinal = n > 1 ? symb_find(&r.P.table, C_LABEL, nom) : -1;
  if (ordinal < 0) {
    VOIR_CHAR("%s: ", nom);
    voir_message(0, MES_NO_LABEL_FOUND);
    return -1;
  }
  ecrire_texte(r.o, "goto ");
  ecrire_nombre(r.o, ordinal);
  return 0;
}

// demo, help, status: the rest of the statement as it stands.
void copier_arguments(Reecriture& r, const char* mot) {
  ecrire_texte(r.o, mot);
  ecrire(r.o, ' ');
  r.p = sauter_blancs(r.p);
  const char* fin = r.p;
  while (*fin != ';' && !fin_de_ligne(*fin)) fin++;
  ecrire_n(r.o, r.p, static_cast<size_t>(fin - r.p));
  r.p = fin;
}

// for, while, if, switch: the head through its ")", then no blank, tab or
// line mark before what follows.
int copier_tete(Reecriture& r, const char* mot) {
  ecrire_texte(r.o, mot);
  const char* p = sauter_blancs(r.p);
  if (*p != '(') {
    ecrire(r.o, ' ');
    return 0;
  }
  r.p = p;
  if (copier_groupe(r) < 0) return -1;
  while (blanc(*r.p) || *r.p == MARQUE_LIGNE || *r.p == MARQUE_ORIGINE)
    r.p = blanc(*r.p) ? r.p + 1 : sauter_marque(r.p);
  return 0;
}

// auto a,b=2,c; -> a=0;b=2;c=0;
int reecrire_auto(Reecriture& r) {
  bool nom = false, valeur = false;
  for (;;) {
    char c = *r.p;
    bool fin = c == ';' || fin_de_ligne(c);
    if (fin || c == ',') {
      if (nom) ecrire_texte(r.o, valeur ? ";" : "=0;");
      nom = valeur = false;
      if (c == ';' || c == ',') r.p++;
      if (fin) return 0;
    } else if (blanc(c)) {
      r.p++;
    } else if (ouvrante(c)) {
      if (copier_groupe(r) < 0) return -1;
      nom = true;
    } else {
      valeur = valeur || c == '=';
      copier_unite(r);
      nom = true;
    }
    if (r.o.plein || r.fini) return 0;
  }
}

// Any other word: a bracket group behind it goes with it, else one blank.
int copier_mot(Reecriture& r, const char* mot) {
  ecrire_texte(r.o, mot);
  const char* p = sauter_blancs(r.p);
  if (!ouvrante(*p)) {
    ecrire(r.o, ' ');
    r.p = p;
    return 0;
  }
  r.p = p;
  return copier_groupe(r);
}

bool suffixe(const char* p) { return (p[0] == '+' || p[0] == '-') && p[1] == p[0]; }

}  // namespace

int reecrire_mot(Reecriture& r, const char* mot) {
  if (egal(mot, "case")) return reecrire_case(r);
  if (egal(mot, "default") && *sauter_blancs(r.p) == ':') {
    ecrire_texte(r.o, "::");
    r.p = sauter_blancs(r.p) + 1;
    return 0;
  }
  if (*r.p == ':') {
    int ordinal = symb_find(&r.P.table, C_LABEL, mot);
    if (ordinal >= 0) {
      ecrire(r.o, 'E');
      ecrire_nombre(r.o, ordinal);
      ecrire(r.o, ':');
      r.p++;
      return 0;
    }
  }
  if (egal(mot, "goto")) return reecrire_goto(r);
  if (egal(mot, "demo") || egal(mot, "help") || egal(mot, "status")) {
    copier_arguments(r, mot);
    return 0;
  }
  if (egal(mot, "for") || egal(mot, "while") || egal(mot, "if") || egal(mot, "switch"))
    return copier_tete(r, mot);
  if (egal(mot, "else")) {
    ecrire_texte(r.o, "else ");
    return 0;
  }
  if (egal(mot, "auto")) return reecrire_auto(r);
  if (suffixe(r.p)) {
    ecrire(r.o, '(');
    ecrire_texte(r.o, mot);
    ecrire_n(r.o, r.p, 2);
    ecrire(r.o, ')');
    r.p += 2;
    return 0;
  }
  return copier_mot(r, mot);
}
