// Strings and balanced groups of the rewriting stage. In a string a
// backslash and a double quote become byte 1 (the compiler turns it back
// into a quote); \n, \t and \b their characters; a backslash and digits
// the character of that decimal code; "\(" stays. Any other escaped
// character is written and then read again, so \q gives qq and \\n a
// backslash then a newline.
#include "kernel/report.h"
#include "language/prepare_rewrite.h"

namespace {

bool chiffre(char c) { return c >= '0' && c <= '9'; }

// The escape at p (a backslash); returns where reading goes on.
const char* echappement(Sortie& o, const char* p) {
  char c = p[1];
  switch (c) {
    case '"': ecrire(o, 1); return p + 2;
    case 'n': ecrire(o, '\n'); return p + 2;
    case 't': ecrire(o, '\t'); return p + 2;
    case 'b': ecrire(o, '\b'); return p + 2;
    case '(': ecrire_n(o, p, 2); return p + 2;
    case 0: return p + 1;
    default: break;
  }
  if (!chiffre(c)) {
    ecrire(o, c);
    return p + 1;
  }
  int code = 0;
  for (p++; chiffre(*p); p++) code = (code * 10 + (*p - '0')) % 256;
  if (code) ecrire(o, static_cast<char>(code));  // a NUL would cut the text
  return p;
}

}  // namespace

void reecrire_chaine(Reecriture& r) {
  ecrire(r.o, *r.p++);
  while (!r.o.plein) {
    char c = *r.p;
    if (!c) {
      r.fini = true;
      return;
    }
    if (c == '\\') {
      r.p = echappement(r.o, r.p);
      continue;
    }
    ecrire(r.o, c);
    r.p++;
    if (c == '"') return;
  }
}

void copier_unite(Reecriture& r) {
  char c = *r.p;
  if (c == MARQUE_LIGNE || c == MARQUE_ORIGINE) {
    if (c == MARQUE_LIGNE) copier_marque(r.o, r.p);
    else r.p = sauter_marque(r.p);
  } else if (c == '"') {
    reecrire_chaine(r);
  } else if (c == '\'') {
    bool complet;
    const char* fin = fin_citation(r.p, &complet);
    ecrire_n(r.o, r.p, static_cast<size_t>(fin - r.p));
    r.p = fin;
  } else {
    ecrire(r.o, c);
    r.p++;
  }
}

int copier_groupe(Reecriture& r) {
  int niveau = 0;
  do {
    char c = *r.p;
    if (!c || r.fini) {
      voir_message(0, MES_SYNTAX_ERROR);
      return -1;
    }
    if (c == '(' || c == '[' || c == '{') niveau++;
    if (c == ')' || c == ']' || c == '}') niveau--;
    copier_unite(r);
  } while (niveau > 0 && !r.o.plein);
  return 0;
}
