// "DAT": a table of numbers loaded once from a text file; each read gives
// `Dim` rows from the current one, which then moves by the step of
// `time(row, step)`, round the table.
#include <string>

#include "device/dat_table.h"
#include "device/device_util.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "platform/process.h"

namespace {

// More numbers than this is a table no evaluation area holds.
constexpr size_t DAT_MAX_VALEURS = size_t{1} << 24;

}  // namespace

int ouvrir_datas(Periph& p, int, word* s, const word*) {
  const char* nom = arg_text(s, KW_number);
  if (nom) p.Nom = nom;
  std::string contenu;
  if (p.Nom.empty() || !file_read_all(p.Nom, contenu)) {
    err_pas_trouve(p.Nom.c_str());
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  TableDatas t;
  if (!lire_table_datas(contenu.data(), contenu.size(), &t, DAT_MAX_VALEURS)) {
    voir_message(0, MES_BADLY_FORMATTED_FILE);
    VOIR_CHAR("%s ", p.Nom.c_str());
    voir_int("ligne %d\a\n", t.ligne_fautive);
    return -1;
  }
  p.Colonnes = t.colonnes;
  p.Lignes = t.lignes;
  p.Bloc.assign(4 + t.valeurs.size(), 0);
  p.Bloc[0] = static_cast<word>(p.Bloc.size());
  p.Bloc[1] = T_FLOAT;
  p.Bloc[2] = t.lignes;
  p.Bloc[3] = t.colonnes;
  for (size_t i = 0; i < t.valeurs.size(); i++) setf(p.Bloc.data(), static_cast<int>(i), t.valeurs[i]);
  if (p.Dim <= 0) p.Dim = 1;
  p.Ligne = 1;
  if (p.Pas == 0) p.Pas = 1;
  return 0;
}

int lire_datas(Periph& p, Lecture& l) {
  if (p.Lignes <= 0) return build_nil(l.v, l.lim);
  const int rangs = l.n > 0 ? l.n : p.Dim;
  const long n = static_cast<long>(rangs) * p.Colonnes;
  if (rangs <= 0 || l.lim - l.v < 4 + n) return -12;
  build_zeros(l.v, l.lim, static_cast<int>(n));
  l.v[3] = p.Colonnes;
  l.v[2] = rangs;
  int r = ((p.Ligne - 1) % p.Lignes + p.Lignes) % p.Lignes;
  for (int k = 0; k < rangs; k++, r = (r + 1) % p.Lignes)
    for (int c = 0; c < p.Colonnes; c++)
      setf(l.v, k * p.Colonnes + c, mappe(p, getf(p.Bloc.data(), r * p.Colonnes + c)));
  const long suivante = (static_cast<long>(p.Ligne) - 1 + p.Pas) % p.Lignes;
  p.Ligne = static_cast<int>((suivante + p.Lignes) % p.Lignes) + 1;
  return 0;
}
