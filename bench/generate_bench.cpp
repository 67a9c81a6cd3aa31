// The generators on `ball(1) secx(512) secy(256)` (131,584 vertices,
// 131,072 facets), each made again after a null translation made it
// stale; the translation alone is timed too. Best of several rounds.
#include "bench_console.h"

int main() {
  if (!bench::start()) return 1;
  if (!bench::run("ball(1) secx(512) secy(256);")) return 1;
  struct Cas {
    const char* nom;
    const char* texte;
  };
  const Cas cas[] = {
      {"null translation alone", "tran(0,0,0) vol(1);"},
      {"normal fac", "tran(0,0,0) vol(1); generate normal fac vol(1);"},
      {"normal vertex", "tran(0,0,0) vol(1); generate normal vertex vol(1);"},
      {"coord vertex", "tran(0,0,0) vol(1); generate coord vertex vol(1);"},
      {"near vertex (and dist)", "tran(0,0,0) vol(1); generate near vertex vol(1);"},
      {"frac, one level", "tran(0,0,0) vol(1); generate frac vol(1);"},
      {"limit, CG and radius", "tran(0,0,0) vol(1); limit vol(1); CG vol(1); radius vol(1);"},
  };
  double ms[std::size(cas)];
  for (size_t i = 0; i < std::size(cas); i++)
    if ((ms[i] = bench::best_ms(cas[i].texte, 5)) < 0) return 1;
  bench::stop();
  for (size_t i = 0; i < std::size(cas); i++) printf("%-24s %8.2f ms\n", cas[i].nom, ms[i]);
  return 0;
}
