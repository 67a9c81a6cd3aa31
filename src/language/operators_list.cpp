// The list operator ",". A NIL on either side gives the other side; FLOAT
// with FLOAT and CHAR with CHAR concatenate; any other pair, or a HYBRIDE
// on either side, builds a HYBRIDE list part by part, a part merging with
// the one before it when both are FLOAT, both CHAR or both NIL.
#include <algorithm>
#include <cstring>

#include "language/operators.h"
#include "language/operators_internal.h"

namespace {

// FLOAT of the elements of a then of b (b may be null) at v, flat. `a` may
// be v itself: its elements are then already in place.
int put_floats(word* v, const word* limit, const word* a, const word* b) {
  const int na = elements(a), nb = b ? elements(b) : 0;
  if (!fits(v, 4 + na + nb, limit)) return ops_overflow();
  if (a != v) std::copy_n(a + 4, na, v + 4);
  if (nb > 0) std::copy_n(b + 4, nb, v + 4 + na);
  build_head(v, 4 + na + nb, T_FLOAT, na + nb);
  return 0;
}

// CHAR of the text of a then of b (b may be null) at v, in whole words
// with a zero padding; np counts the words. `a` may be v itself.
int put_chars(word* v, const word* limit, const word* a, const word* b) {
  const size_t la = text_bytes(a), lb = b ? text_bytes(b) : 0;
  const size_t len = la + lb;
  const int words = static_cast<int>(len / sizeof(word) + 1);
  if (!fits(v, 4 + words, limit)) return ops_overflow();
  char* t = text(v);
  if (a != v) std::memcpy(t, text(a), la);
  if (lb > 0) std::memcpy(t + la, text(b), lb);
  std::memset(t + len, 0, words * sizeof(word) - len);
  build_head(v, 4 + words, T_CHAR, words);
  return 0;
}

int nil_value(word* v, const word* limit) {
  if (!fits(v, 4, limit)) return ops_overflow();
  build_head(v, 4, T_NIL, 0);
  return 0;
}

// A value copied word for word; the two-word NIL becomes a NIL bloc.
int put_copy(word* v, const word* limit, const word* a) {
  if (value_kind(a) == T_NIL) return nil_value(v, limit);
  const int n = item_words(a);
  if (!fits(v, n, limit)) return ops_overflow();
  std::copy_n(a, n, v);
  return 0;
}

bool mergeable(word kind) { return kind == T_FLOAT || kind == T_CHAR || kind == T_NIL; }

// a then b (null for a alone) as one part at v.
int put_part(word* v, const word* limit, const word* a, const word* b) {
  switch (value_kind(a)) {
    case T_FLOAT: return put_floats(v, limit, a, b);
    case T_CHAR: return put_chars(v, limit, a, b);
    case T_NIL: return nil_value(v, limit);
    default: return put_copy(v, limit, a);
  }
}

// A HYBRIDE under construction at `head`; `last` is its last part.
struct List {
  word* head;
  word* last;
  const word* limit;
};

int append(List& l, const word* part) {
  const word kind = value_kind(part);
  if (l.last && mergeable(kind) && value_kind(l.last) == kind) {
    if (put_part(l.last, l.limit, l.last, part) < 0) return -12;
  } else {
    word* at = l.head + l.head[0];
    if (put_part(at, l.limit, part, nullptr) < 0) return -12;
    l.last = at;
    l.head[2]++;
  }
  l.head[0] = static_cast<word>(l.last - l.head) + l.last[0];
  return 0;
}

// A HYBRIDE side gives its parts one by one, any other side itself.
int append_side(List& l, const word* side) {
  if (value_kind(side) != T_HYBRIDE) return append(l, side);
  const word* end = side + side[0];
  const word* p = side + 4;
  for (int i = 0; i < side[2] && p < end && p[0] != 0; i++, p += item_words(p))
    if (append(l, p) < 0) return -12;
  return 0;
}

}  // namespace

int eval_list(const word* left, const word* right, word* dest, const word* limit) {
  const word kl = value_kind(left), kr = value_kind(right);
  if (kr == T_NIL) return put_copy(dest, limit, left);
  if (kl == T_NIL) return put_copy(dest, limit, right);
  if (kl == kr && (kl == T_FLOAT || kl == T_CHAR)) return put_part(dest, limit, left, right);
  if (!fits(dest, 4, limit)) return ops_overflow();
  build_head(dest, 4, T_HYBRIDE, 0);
  List l{dest, nullptr, limit};
  if (append_side(l, left) < 0 || append_side(l, right) < 0) return -12;
  return 0;
}
