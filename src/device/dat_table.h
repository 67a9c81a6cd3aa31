// The text of a "DAT" file as a table of numbers: one row a line, the
// numbers split by blanks, tabs, commas or semicolons. The first row
// sets the number of columns; blank lines are passed over.
#pragma once
#include <cstddef>
#include <vector>

constexpr int DAT_LIGNE_MAX = 257;  // characters a line, its end included

struct TableDatas {
  std::vector<float> valeurs;  // row after row
  int colonnes = 0;
  int lignes = 0;
  int ligne_fautive = 0;  // the line (from 1) found wrong, 0 when none
};

// Reads `n` bytes of text. False, with ligne_fautive set, for a line
// longer than DAT_LIGNE_MAX, a word that is no number, or a row whose
// count differs from the first's; also for a table of no row or of more
// than `max_valeurs` numbers (ligne_fautive is then the line reached).
bool lire_table_datas(const char* texte, size_t n, TableDatas* t, size_t max_valeurs);
