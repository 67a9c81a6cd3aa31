// "LIR": the file name + ".dat", read anew at each read. With `float` its
// bytes are 4-byte floats, mapped; with `char` its text. Writing replaces
// the file.
#include <algorithm>
#include <string>

#include "device/device_util.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "platform/files.h"
#include "platform/safe_write.h"

namespace {

std::string chemin(const Periph& p) { return p.Nom + ".dat"; }

// The room of the evaluation area in values of `mot` words a value.
int place(const Lecture& l, int par_mot) {
  const long mots = l.lim - l.v - 5;
  return mots > 0 ? static_cast<int>(std::min<long>(mots * par_mot, 1 << 28)) : 0;
}

}  // namespace

int ouvrir_fichier(Periph& p, int, word*, const word*) {
  if (p.Nom.empty()) {
    err_pas_trouve(".dat");
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  return 0;
}

int lire_fichier(Periph& p, Lecture& l) {
  const std::string path = chemin(p);
  OsFile* f = os_open(path.c_str());
  if (!f) {
    err_pas_trouve(path.c_str());
    voir_message(0, MES_ILLEGAL);
    return build_nil(l.v, l.lim);
  }
  // The bytes or floats go straight into the value's data, as many as it
  // has room for; its header closes it after.
  const bool flottants = l.format == T_FLOAT;
  int n = std::max(0, flottants ? place(l, 1) : place(l, 4) - 1);
  if (l.n > 0) n = std::min(n, l.n);
  char* dest = reinterpret_cast<char*>(l.v + 4);
  const size_t lu = os_read(f, dest, static_cast<size_t>(n) * (flottants ? 4 : 1));
  os_close(f);
  if (!flottants) return lu ? build_text_in_place(l.v, l.lim, lu) : build_nil(l.v, l.lim);
  const int k = static_cast<int>(lu / 4);
  if (k == 0) return build_nil(l.v, l.lim);
  build_head(l.v, 4 + k, T_FLOAT, k);  // the floats read stand in place
  for (int i = 0; i < k; i++) setf(l.v, i, mappe(p, getf(l.v, i)));
  return 0;
}

int ecrire_fichier(Periph& p, int, const word* v) {
  const unsigned char* data = nullptr;
  size_t n = 0;
  if (!octets_de_valeur(p, v, false, &data, &n)) return -1;
  const std::string path = chemin(p);
  if (safe_write_file(path, data, n) != WriteFault::none) {
    err_ecriture(path.c_str());
    return -1;
  }
  return 0;
}
