// Word scanners, the keyword lookup and the marks of prepared text. The
// separator sets of the scanners differ on purpose: each is what its
// callers have always relied on.
#include "language/lexer.h"

#include <cstring>

#include "kernel/report.h"
#include "kernel/vocab.h"

namespace {

bool dans(const char* ensemble, unsigned char c) { return c != 0 && std::strchr(ensemble, c) != nullptr; }

bool blanc(unsigned char c) { return c == ' ' || c == '\t'; }

// lire_mot: a word never starts here...
bool mot_vide(unsigned char c) {
  return c == 0 || c == MARQUE_ORIGINE || c == '\n' || c == ';' || c == '{';
}

// ...and ends before these. Byte 2 ends it too, so that a word never runs
// into an origin mark.
bool fin_lire_mot(unsigned char c) {
  return c == 0 || c == MARQUE_LIGNE || c == MARQUE_ORIGINE || c == '\t' || c == '\n' ||
         c == ' ' || dans("!#%&()*+,-/:;<=>[]^{|}", c);
}

bool fin_sauter_mot(unsigned char c) {
  return c == 0 || c == MARQUE_LIGNE || c == MARQUE_ORIGINE || c == '\t' || c == '\n' ||
         c == ' ' || dans("!#%&()*+,-/;<=>[]^{|}~", c);
}

// comparer_mot: where the word may end...
bool fin_comparee(unsigned char c) {
  return c == 0 || c == '\t' || c == '\n' || c == ' ' || dans("!%&()*+,-/;<=>[]^{|}", c);
}

// ...against what the text may hold there.
bool suite_comparee(unsigned char c) { return c == '\t' || c == '\n' || c == ' ' || c == '('; }

}  // namespace

const char* sauter_blancs(const char* s) {
  while (blanc(*s)) s++;
  return s;
}

int lire_mot(char* dest, const char** s, int capacite) {
  const char* p = sauter_blancs(*s);
  *s = p;
  dest[0] = 0;
  if (mot_vide(static_cast<unsigned char>(*p))) return 0;
  int n = 0;
  while (!fin_lire_mot(static_cast<unsigned char>(p[n]))) {
    if (n >= capacite - 1) {
      err_debordement(nullptr);
      return -1;
    }
    dest[n] = p[n];
    n++;
  }
  dest[n] = 0;
  *s = p + n;
  return n + 1;
}

const char* sauter_mot(const char* s) {
  while (!fin_sauter_mot(static_cast<unsigned char>(*s))) s++;
  return s;
}

int comparer_mot(const char* mot, const char* texte) {
  const auto* a = reinterpret_cast<const unsigned char*>(mot);
  const auto* b = reinterpret_cast<const unsigned char*>(texte);
  while (*a && *a == *b) a++, b++;
  if (*a == *b) return 0;
  if (fin_comparee(*a) && suite_comparee(*b)) return 0;
  return *a < *b ? -1 : 1;
}

const char* sauter_commentaires(const char* s, int* ligne) {
  for (;;) {
    if (blanc(*s)) {
      s++;
    } else if (*s == '\n') {
      (*ligne)++;
      s++;
    } else if (s[0] == '/' && s[1] == '*') {
      for (s += 2; *s && !(s[0] == '*' && s[1] == '/'); s++)
        if (*s == '\n') (*ligne)++;
      if (!*s) break;
      s += 2;
    } else if (s[0] == '/' && s[1] == '/') {
      while (*s && *s != '\n') s++;
      if (!*s) break;
    } else {
      return s;
    }
  }
  err_commentaire(nullptr);
  return nullptr;
}

int chercher_commande(const char* mot, int* voc, int* code) {
  if (cherche_mot(mot, voc, code) < 0) return -1;
  return *code;
}

/* Writer */

Sortie sortie_sur(char* debut, char* fin) {
  Sortie o;
  o.debut = o.p = debut;
  o.fin = fin > debut ? fin - 1 : debut;
  return o;
}

void ecrire(Sortie& o, char c) {
  if (o.p < o.fin)
    *o.p++ = c;
  else
    o.plein = true;
}

void ecrire_n(Sortie& o, const char* s, size_t n) {
  if (n > libre(o)) {
    o.plein = true;
    return;
  }
  std::memcpy(o.p, s, n);
  o.p += n;
}

void ecrire_texte(Sortie& o, const char* s) { ecrire_n(o, s, std::strlen(s)); }

bool terminer(Sortie& o) {
  if (o.p > o.fin) {
    o.plein = true;
    return false;
  }
  *o.p = 0;  // the byte kept behind fin
  return true;
}

/* Marks */

void marquer_ligne(Sortie& o, int ligne) {
  if (ligne > LIGNE_MAX) ligne = LIGNE_MAX;
  if (ligne < 0) ligne = 0;
  if (ligne >= 3 && o.marque && o.marque + LONG_MARQUE_LIGNE == o.p) o.p = o.marque;
  char m[LONG_MARQUE_LIGNE] = {MARQUE_LIGNE};
  for (int i = 4, n = ligne; i >= 1; i--, n /= 10) m[i] = static_cast<char>(n % 10 + 1);
  char* debut = o.p;
  ecrire_n(o, m, LONG_MARQUE_LIGNE);
  o.marque = o.plein ? nullptr : debut;
}

void marquer_origine(Sortie& o, const char* nom) {
  char m[LONG_MARQUE_ORIGINE];
  std::memset(m, ' ', sizeof m);
  m[0] = MARQUE_ORIGINE;
  for (int i = 0; i < LONG_MARQUE_ORIGINE - 2; i++) {
    unsigned char c = static_cast<unsigned char>(nom[i]);
    if (c <= ' ' || c == '(') break;
    m[i + 1] = static_cast<char>(c);
  }
  ecrire_n(o, m, LONG_MARQUE_ORIGINE);
}

int numero_ligne(const char* p) {
  int n = 0;
  for (int i = 1; i <= 4; i++) {
    int chiffre = static_cast<unsigned char>(p[i]) - 1;
    n = n * 10 + (chiffre >= 0 && chiffre <= 9 ? chiffre : 0);
  }
  return n;
}

int longueur_marque(const char* p) {
  int n = *p == MARQUE_LIGNE ? LONG_MARQUE_LIGNE : *p == MARQUE_ORIGINE ? LONG_MARQUE_ORIGINE : 0;
  for (int i = 1; i < n; i++)
    if (!p[i]) return i;
  return n;
}

int ligne_avant(const char* debut, const char* fin, int defaut) {
  int ligne = defaut;
  for (const char* p = debut; p < fin && *p;) {
    int n = longueur_marque(p);
    if (n == LONG_MARQUE_LIGNE && *p == MARQUE_LIGNE) ligne = numero_ligne(p);
    p += n ? n : 1;
  }
  return ligne;
}
