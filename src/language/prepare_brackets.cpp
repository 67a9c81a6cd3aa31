// Stage 4: no closing bracket may come before its opening one. Brackets
// left open are the compiler's to find.
#include "kernel/report.h"
#include "language/prepare_stages.h"

namespace {

struct Compteurs {
  int parentheses = 0, crochets = 0, accolades = 0;
};

// The counter a bracket moves, and by how much.
int* compteur(Compteurs& n, char c, int* pas) {
  *pas = (c == '(' || c == '[' || c == '{') ? 1 : -1;
  switch (c) {
    case '(': case ')': return &n.parentheses;
    case '[': case ']': return &n.crochets;
    case '{': case '}': return &n.accolades;
    default: return nullptr;
  }
}

// One message for all three kinds, after the pair of the first counter
// that is off.
void signaler(const Compteurs& n) {
  voir_texte(n.parentheses ? "()" : n.crochets ? "[]" : "{}");
  voir_message(0, MES_PARENTHESIS_ERROR);
}

}  // namespace

int passe_parentheses(Passe& P) {
  Compteurs n;
  for (const char* p = texte(P); *p;) {
    int pas;
    int* c = compteur(n, *p, &pas);
    if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) {
      p = sauter_marque(p);
    } else if (*p == '"') {
      bool complet;
      const char* fin = fin_citation(p, &complet);
      if (!complet) {
        voir_message(0, MES_INCOMPLETE_STRING);
        return echec(P, texte(P), p);
      }
      p = fin;
    } else if (c && (*c += pas) < 0) {
      signaler(n);
      return echec(P, texte(P), p);
    } else {
      p++;
    }
  }
  return 0;
}
