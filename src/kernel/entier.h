// A user's float as an integer: the one conversion every command uses,
// so that NaN and huge values never reach the processor's conversion
// (undefined behaviour in C++).
#pragma once
#include <algorithm>
#include <climits>

// Truncated toward zero; NaN gives 0, values out of the int range give
// INT_MAX or -INT_MAX, so that the result can always be negated.
inline int entier(float f) {
  if (f != f) return 0;
  if (f >= 2147483648.0f) return INT_MAX;
  if (f <= -2147483648.0f) return -INT_MAX;
  return static_cast<int>(f);
}

// The same held within [lo, hi], for a count, a size or an index that
// has its own bounds.
inline int entier_borne(float f, int lo, int hi) { return std::clamp(entier(f), lo, hi); }
