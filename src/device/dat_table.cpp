#include "device/dat_table.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

bool separateur(char c) { return c == ' ' || c == '\t' || c == ',' || c == ';' || c == '\r'; }

// The numbers of one line (no line end inside, at most DAT_LIGNE_MAX
// bytes) appended to `out`; false for a word that is no number.
bool nombres(const char* a, const char* b, std::vector<float>& out, int* compte) {
  char mot[DAT_LIGNE_MAX + 1];
  *compte = 0;
  while (a < b) {
    while (a < b && separateur(*a)) a++;
    const char* debut = a;
    while (a < b && !separateur(*a)) a++;
    if (a == debut) break;
    const size_t len = static_cast<size_t>(a - debut);
    std::memcpy(mot, debut, len);
    mot[len] = '\0';
    char* fin = nullptr;
    errno = 0;
    const float f = std::strtof(mot, &fin);
    if (fin != mot + len) return false;
    out.push_back(f);
    ++*compte;
  }
  return true;
}

}  // namespace

bool lire_table_datas(const char* texte, size_t n, TableDatas* t, size_t max_valeurs) {
  *t = TableDatas{};
  const char* p = texte;
  const char* end = texte + n;
  for (int ligne = 1; p < end; ligne++) {
    const void* nl = std::memchr(p, '\n', static_cast<size_t>(end - p));
    const char* fin = nl ? static_cast<const char*>(nl) : end;
    const char* suite = nl ? fin + 1 : end;
    if (suite - p > DAT_LIGNE_MAX) {
      t->ligne_fautive = ligne;
      return false;
    }
    int compte = 0;
    const size_t avant = t->valeurs.size();
    if (!nombres(p, fin, t->valeurs, &compte) || t->valeurs.size() > max_valeurs) {
      t->ligne_fautive = ligne;
      return false;
    }
    p = suite;
    if (compte == 0) continue;
    if (t->colonnes == 0) t->colonnes = compte;
    if (compte != t->colonnes) {
      t->valeurs.resize(avant);
      t->ligne_fautive = ligne;
      return false;
    }
    t->lignes++;
  }
  if (t->lignes == 0) {
    t->ligne_fautive = 1;
    return false;
  }
  return true;
}
