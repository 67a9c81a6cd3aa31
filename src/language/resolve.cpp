// Variables, references and plain values on the evaluation area:
// reading through variable tokens, collecting references, segments.
#include <cmath>
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/entier.h"
#include "kernel/handles.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "kernel/values.h"
#include "language/code.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "language/variables.h"

namespace {

constexpr int MAX_ADDRESS_HOPS = 16;

// The words of a CHAR value separated by blanks, tabs or commas:
// start offset and length of word `i`, false when there is none.
bool char_word(const char* s, int i, int* start, int* len) {
  int pos = 0, n = 0;
  for (;;) {
    while (s[pos] == ' ' || s[pos] == '\t' || s[pos] == ',') pos++;
    if (!s[pos]) return false;
    int b = pos;
    while (s[pos] && s[pos] != ' ' && s[pos] != '\t' && s[pos] != ',') pos++;
    if (n++ == i) {
      *start = b;
      *len = pos - b;
      return true;
    }
  }
}

int char_words(const char* s) {
  int n = 0, a = 0, b = 0;
  while (char_word(s, n, &a, &b)) n++;
  return n;
}

// Number of indexable elements of a value for "[...]" or "{...}".
int index_range(const word* v, bool brace) {
  switch (tag(v)) {
    case T_FLOAT: return brace ? elements(v) / 3 : elements(v);
    case T_CHAR: return brace ? char_words(text(v)) : static_cast<int>(strlen(text(v)));
    case T_HYBRIDE: return np(v);
    default: return -1;
  }
}

const word* hybride_part(const word* v, int i) {
  const word* e = v + 4;
  while (i-- > 0) e += item_words(e);
  return e;
}

}  // namespace

Objet* variable_of(const word* item) {
  Objet* v = token_variable(item);
  for (int hops = 0; v && v->kind == T_ADDRESS && hops < MAX_ADDRESS_HOPS; hops++) v = handle_objet(v->work[VAR_TARGET]);
  return v && v->kind == T_ADDRESS ? nullptr : v;
}

// A variable with no value gets a NIL bloc on the spot.
static const word* variable_value(Objet* v) {
  if (!v->local) {
    v->local = alloue_bloc(4);
    if (!v->local) return nullptr;
    build_nil(v->local);
  }
  return v->local;
}

const word* get_evaluation(const word* item) {
  if (is_variable_token(item)) {
    Objet* v = variable_of(item);
    if (v) return variable_value(v);
  } else if (item[0] > 0 && (tag(item) == T_FLOAT || tag(item) == T_CHAR || tag(item) == T_NIL ||
                             tag(item) == T_HYBRIDE || tag(item) == T_LONG)) {
    return item;
  }
  if (Yes(KW_error) > 0) voir_message(0, MES_ERROR);
  return nullptr;
}

// ---- references --------------------------------------------------------------

// Collects a reference into a plain value at `dest`.
static int collect(const word* ref, word* dest) {
  Objet* v = handle_objet(ref[4]);
  const word* value = v ? variable_value(v) : nullptr;
  if (!value) return -1;
  int count = ref[2];
  const word* idx = ref + 5;
  bool brace = tag(ref) == T_REF_BRACE;
  if (tag(value) == T_FLOAT) {
    int per = brace ? 3 : 1;
    if (!room(dest, 4 + static_cast<long>(count) * per)) return -12;
    build_head(dest, 4 + count * per, T_FLOAT, count * per);
    for (int i = 0; i < count; i++)
      for (int k = 0; k < per; k++) dest[4 + i * per + k] = value[4 + idx[i] * per + k];
    return 0;
  }
  // Characters, or whole words copied one after the other, written in
  // place without any allocation.
  const char* src = text(value);
  if (!room(dest, 5)) return -12;
  char* out = text(dest);
  size_t n = 0;
  for (int i = 0; i < count; i++) {
    int a = idx[i], len = 1;
    if (brace && !char_word(src, idx[i], &a, &len)) continue;
    if (!room(dest, 5 + static_cast<long>((n + static_cast<size_t>(len)) / 4))) return -12;
    memcpy(out + n, src + a, static_cast<size_t>(len));
    n += static_cast<size_t>(len);
  }
  int words = static_cast<int>(n / 4 + 5);
  memset(out + n, 0, static_cast<size_t>(words - 4) * 4 - n);
  build_head(dest, words, T_CHAR, words - 4);
  return 0;
}

const word* value_of_other(const word* item, word* scratch) {
  if (item[0] > 0 && (tag(item) == T_REF_SQUARE || tag(item) == T_REF_BRACE))
    return collect(item, scratch) < 0 ? nullptr : scratch;
  return get_evaluation(item);
}

// ---- segments -----------------------------------------------------------------

int generer_segm(const word* value, word* dest) {
  if (!value || tag(value) != T_FLOAT || elements(value) < 1) {
    voir_message(0, MES_INTERVAL_USAGE);
    return -1;
  }
  int n = elements(value);
  float a = getf(value, 0);
  float b = n > 1 ? getf(value, 1) : a;
  float c = n > 2 ? getf(value, 2) : 1.0f;
  if (c == 0.0f) c = 1.0f;
  if ((b - a) * c < 0) c = -c;
  double steps = std::round(static_cast<double>(b - a) / c);  // halves away from zero
  if (!(steps >= 0 && steps <= 1e8)) {  // NaN bounds fail here too
    voir_message(0, MES_INTERVAL_USAGE);
    return -1;
  }
  long count = static_cast<long>(steps) + 1;
  if (!room(dest, 4 + count)) return -12;
  build_head(dest, static_cast<word>(4 + count), T_FLOAT, static_cast<word>(count));
  float x = a;
  for (long i = 0; i < count; i++, x += c) dest[4 + i] = fw(x);
  return 0;
}

const word* segment_mark(const word* next, word* dest, word opener) {
  if (opener == '(') return next;
  const word* v = value_of(dest, dest + item_words(dest));
  if (!v) return nullptr;
  word* out = dest + item_words(dest);
  if (v == out) out += size(out);
  if (generer_segm(v, out) < 0) return nullptr;
  memmove(dest, out, static_cast<size_t>(size(out)) * sizeof(word));
  return next;
}

// ---- indexing ----------------------------------------------------------------

// Builds at `dest` the reference of the variable `v` by the index list
// `index`, or a copy for the parts of a HYBRIDE.
static int make_reference(Objet* v, const word* index, bool brace, word* dest) {
  const word* value = variable_value(v);
  if (!value) return -1;
  int range = index_range(value, brace);
  int count = elements(index);
  for (int i = 0; i < count; i++) {
    int k = entier(getf(index, i));
    if (range < 0 || k < 0 || k >= range) {
      voir_int("%d", k);
      voir_message(0, MES_ILLEGAL_INDEX);
      return -1;
    }
  }
  if (tag(value) == T_HYBRIDE) {
    const word* part = hybride_part(value, entier(getf(index, 0)));
    if (!room(dest, item_words(part))) return -12;
    memmove(dest, part, static_cast<size_t>(item_words(part)) * sizeof(word));
    return 0;
  }
  if (!room(dest, 5 + count)) return -12;
  dest[0] = 5 + count;
  dest[1] = brace ? T_REF_BRACE : T_REF_SQUARE;
  dest[2] = count;
  dest[3] = tag(value);
  dest[4] = objet_handle(v);
  for (int i = 0; i < count; i++) dest[5 + i] = entier(getf(index, i));
  return 0;
}

// Indexing a plain value gives a copy of the elements.
static int index_value(word* at, const word* index, bool brace) {
  // Work space behind both the value and the index list.
  word* out = const_cast<word*>(index) + item_words(index);
  if (out < at + item_words(at)) out = at + item_words(at);
  const word* v = value_of(at, out);
  if (!v) return -1;
  if (v == out) out += size(out);
  int range = index_range(v, brace);
  int count = elements(index);
  if (tag(v) == T_HYBRIDE) {
    int k = count > 0 ? entier(getf(index, 0)) : -1;
    if (k < 0 || k >= range) {
      voir_int("%d", k);
      voir_message(0, MES_ILLEGAL_INDEX);
      return -1;
    }
    const word* part = hybride_part(v, k);
    memmove(at, part, static_cast<size_t>(item_words(part)) * sizeof(word));
    return 0;
  }
  if (range < 0) {
    voir_message(0, MES_ILLEGAL_INDEX);
    return -1;
  }
  // A temporary variable-free reference: gather element by element.
  int per = brace && tag(v) == T_FLOAT ? 3 : 1;
  std::string s;
  if (tag(v) == T_FLOAT && !room(out, 4 + static_cast<long>(count) * per)) return -12;
  for (int i = 0; i < count; i++) {
    int k = entier(getf(index, i));
    if (k < 0 || k >= range) {
      voir_int("%d", k);
      voir_message(0, MES_ILLEGAL_INDEX);
      return -1;
    }
    if (tag(v) == T_FLOAT) {
      for (int j = 0; j < per; j++) out[4 + i * per + j] = v[4 + k * per + j];
    } else if (!brace) {
      s.push_back(text(v)[k]);
    } else {
      int a = 0, n = 0;
      char_word(text(v), k, &a, &n);
      s.append(text(v) + a, static_cast<size_t>(n));
    }
  }
  if (tag(v) == T_FLOAT) {
    build_head(out, 4 + count * per, T_FLOAT, count * per);
  } else if (build_text(out, eval_limit(), s.data(), s.size()) < 0) {
    return -12;
  }
  memmove(at, out, static_cast<size_t>(size(out)) * sizeof(word));
  return 0;
}

// Evaluates the index group at `q` into `index` as a FLOAT list; the
// cursor after it, or null after message 61.
static const word* index_list(const word* q, word* index, int* status) {
  q = eval_group(q, index, false, status);
  if (!q) return nullptr;
  const word* list = value_of(index, index + item_words(index));
  if (!list || tag(list) != T_FLOAT) {
    voir_message(0, MES_ILLEGAL_INDEX);
    return nullptr;
  }
  if (list != index) memmove(index, list, static_cast<size_t>(size(list)) * sizeof(word));
  return q;
}

static bool opens_index(const word* q) { return q[0] == C_OPER && (q[1] == '[' || q[1] == '{'); }

const word* subscripts(const word* q, word* dest, int* status) {
  while (opens_index(q)) {
    bool brace = q[1] == '{';
    word* index = dest + item_words(dest);
    q = index_list(q, index, status);
    if (!q || index_value(dest, index, brace) < 0) return nullptr;
  }
  return q;
}

// A variable with "[...]" or "{...}" becomes a reference that can be
// assigned; further indices apply to the value it collects.
const word* variable_operand(const word* p, word* dest, bool lvalue, int* status) {
  (void)lvalue;
  if (!room(dest, 2)) return nullptr;
  dest[0] = p[0];
  dest[1] = p[1];
  const word* q = p + 2;
  if (!opens_index(q)) return q;
  bool brace = q[1] == '{';
  word* index = dest + 2;
  q = index_list(q, index, status);
  Objet* v = q ? variable_of(dest) : nullptr;
  if (!v) return nullptr;
  word* out = index + size(index);
  if (make_reference(v, index, brace, out) < 0) return nullptr;
  memmove(dest, out, static_cast<size_t>(item_words(out)) * sizeof(word));
  if (!opens_index(q)) return q;
  if (dest[0] > 0 && (tag(dest) == T_REF_SQUARE || tag(dest) == T_REF_BRACE)) {
    word* collected = dest + item_words(dest);
    if (collect(dest, collected) < 0) return nullptr;
    memmove(dest, collected, static_cast<size_t>(size(collected)) * sizeof(word));
  }
  return subscripts(q, dest, status);
}
