// The handle slots of a list block (PROPRIETES, OBJETS, MALLOCS), as the
// deep release, the duplication and the memory check walk them.
#pragma once
#include <algorithm>

#include "kernel/word.h"

// Calls f(pos) for the word position of every slot, null ones included:
// np times |dimp| flat slots (np for MALLOCS, whose dimp is unused), or,
// with dimp 0, entries opening with their own length word, a negative
// length counting by its absolute value and 0 ending the table.
// f returns a negative number to stop. Returns 0, or -1 when stopped or
// when an entry overruns the block.
template <class F>
int pour_chaque_slot(const word* list, F f) {
  const long end = list[0];
  if (list[1] != T_MALLOCS && list[3] == 0) {
    for (long pos = 4; pos < end;) {
      const long len = list[pos] < 0 ? -static_cast<long>(list[pos]) : list[pos];
      if (len == 0) break;
      if (pos + len > end) return -1;
      for (long k = 1; k < len; k++)
        if (f(static_cast<int>(pos + k)) < 0) return -1;
      pos += len;
    }
    return 0;
  }
  const long stride = list[1] == T_MALLOCS ? 1 : std::abs(static_cast<long>(list[3]));
  const long n = std::min(static_cast<long>(list[2]) * stride, end - 4);
  for (long i = 0; i < n; i++)
    if (f(static_cast<int>(4 + i)) < 0) return -1;
  return 0;
}
