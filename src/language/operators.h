// The operators of the language on resolved values: FLOAT vectors (single
// precision), CHAR strings, NIL and HYBRIDE lists. Results are written as
// complete blocs on the evaluation area.
#pragma once
#include "kernel/word.h"

// Applies binary operator `op` (an operator code of the compiled code;
// compound assignments already mapped to their base) to `left` and
// `right`, writing the result bloc at `dest`, never at or past `limit`.
// `dest` does not overlap the operands. Returns 0; -12 past the limit
// (message 12 reported); -1 after a report (56 division by zero, 66
// illegal operands...), reports being printed only when `error` is on.
int eval_binary(const word* left, word op, const word* right, word* dest, const word* limit);

// Base operator of a compound assignment code (`+=` gives `+`, `,=` gives
// `,`...), or 0 for any other code.
word compound_base(word op);

// Logical not: each element 1.0 when exactly 0, else 0.0; a non-FLOAT
// gives NIL.
int eval_not(const word* v, word* dest, const word* limit);

// A divisor this close to 0 stops `/` and `%` (message 56).
inline bool near_zero(float b) { return b > -0.0001f && b < 0.0001f; }

// Number of words a bloc takes (size word), or 2 for a two-word token.
inline int item_words(const word* v) { return v[0] < 0 ? 2 : v[0]; }
