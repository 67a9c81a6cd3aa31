// libFuzzer target: any bytes read as the text of a "DAT" table. A table
// taken is whole: rows times columns numbers.
#include <cstdint>
#include <cstdlib>

#include "device/dat_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  TableDatas t;
  const bool ok = lire_table_datas(reinterpret_cast<const char*>(data), size, &t, 4096);
  if (ok && (t.lignes < 1 || t.colonnes < 1 ||
             t.valeurs.size() != static_cast<size_t>(t.lignes) * static_cast<size_t>(t.colonnes)))
    std::abort();
  if (!ok && t.ligne_fautive < 1) std::abort();
  return 0;
}
