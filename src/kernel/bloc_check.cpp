// The memory check: a block's sizes must add up, down to its last
// nested block.
#include <cstdlib>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/report.h"
#include "kernel/slots.h"

namespace {

constexpr int PROFONDEUR_MAX = 64;

int mal_forme(long pos, word dim) {
  voir_int("%d: ", static_cast<int>(pos));
  VOIR_CHAR("%s", "BLOC MAL FORMATE\n");
  voir_int("dim = %d\n", dim);
  return -1;
}

int verifie(const word* b, long pos, int depth);

// One element of a sequence: a block, or, with `skip` 3, a command
// segment whose words after the third, if any, are one value block.
int verifie_element(const word* e, long pos, int skip, int depth) {
  if (!skip) return verifie(e, pos, depth);
  if (e[0] == skip) return 0;
  if (e[skip] != e[0] - skip) return mal_forme(pos, e[0]);
  return verifie(e + skip, pos + skip, depth);
}

// `count` elements in sequence must fill words [4, end) exactly.
int verifie_suite(const word* b, long end, long count, int skip, long pos, int depth) {
  long at = 4;
  for (long i = 0; i < count; i++) {
    if (at >= end || b[at] < (skip ? skip : 4) || at + b[at] > end) return mal_forme(pos + at, b[0]);
    if (verifie_element(b + at, pos + at, skip, depth) < 0) return -1;
    at += b[at];
  }
  return at == end ? 0 : mal_forme(pos, b[0]);
}

// Flat values: np points of dimp words, of |dimp| slots, or np entries
// opening with their own length.
int verifie_plat(const word* b, long n, long pos) {
  const long np = b[2], dimp = b[3];
  if (np < 0) return mal_forme(pos, b[0]);
  if (dimp != 0) return 4 + np * std::labs(static_cast<long>(dimp)) == n ? 0 : mal_forme(pos, b[0]);
  long at = 4;
  for (long i = 0; i < np; i++) {
    if (at >= n || b[at] < 1 || at + b[at] > n) return mal_forme(pos + at, b[0]);
    at += b[at];
  }
  return at == n ? 0 : mal_forme(pos, b[0]);
}

int verifie_liste(const word* b, long n, long pos, int depth) {
  if (b[3] != 0 && static_cast<long>(b[2]) * std::labs(static_cast<long>(b[3])) > n - 4) return mal_forme(pos, b[0]);
  int r = 0;
  const int walk = pour_chaque_slot(b, [&](int at) {
    if (b[at] == 0 || b[1] != T_PROPRIETES) return 0;
    const word* child = handle_bloc(b[at]);
    r = child ? verifie(child, pos + at, depth + 1) : mal_forme(pos + at, b[at]);
    return r;
  });
  if (r < 0) return r;
  return walk < 0 ? mal_forme(pos, b[0]) : 0;
}

int verifie(const word* b, long pos, int depth) {
  const long n = b[0] < 0 ? -static_cast<long>(b[0]) : b[0];
  if (n < 4 || depth > PROFONDEUR_MAX) return mal_forme(pos, b[0]);
  switch (b[1]) {
    case T_FLOAT: case T_LONG: return verifie_plat(b, n, pos);
    case T_HYBRIDE: return verifie_suite(b, n, b[2], 0, pos, depth);
    case T_PROPRIETES: case T_OBJETS: case T_MALLOCS: return verifie_liste(b, n, pos, depth);
    case 0: case 1:
      if (est_propriete(b)) return verifie(propr_val(b), pos + b[2], depth);
      return mal_forme(pos, b[0]);
    case T_SEGMENTS:
      if (est_propriete(b)) return verifie(propr_val(b), pos + b[2], depth);
      if (b[3] == 0) return verifie_suite(b, n, b[2], 3, pos, depth);
      return mal_forme(pos, b[0]);
    default: return 0;
  }
}

}  // namespace

int verifie_bloc(const word* b) {
  if (!b || b[0] == 0) return 0;
  return verifie(b, 0, 0);
}
