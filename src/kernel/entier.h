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

// The same on 64 bits, for a value whose low bits are kept (a byte, a
// 16- or 32-bit field of a datagram): NaN gives 0, values beyond 2^62
// are held there.
inline long long entier_long(float f) {
  if (f != f) return 0;
  if (f >= 4611686018427387904.0f) return 4611686018427387904LL;
  if (f <= -4611686018427387904.0f) return -4611686018427387904LL;
  return static_cast<long long>(f);
}

// The same held within [lo, hi], for a count, a size or an index that
// has its own bounds.
inline int entier_borne(float f, int lo, int hi) { return std::clamp(entier(f), lo, hi); }
