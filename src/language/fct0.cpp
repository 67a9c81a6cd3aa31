// fct0: a first walk over the items (bare `char` and `float`, `puls`,
// items that belong to another vocabulary), then the worker chosen by the
// first item's code. Most codes get their argument evaluated first; an
// empty argument gives NIL without reaching the worker.
#include "language/fct0.h"

#include <cstring>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/commands.h"
#include "language/eval.h"

namespace {

struct Entry {
  int code;
  Fct0Worker worker;
  bool evaluated;  // the argument goes through get_evaluation first
};

constexpr Entry TABLE[] = {
    {KW_abs, fct0_abs, true},         {KW_acos, fct0_map, true},
    {KW_acosh, fct0_shaped, true},    {KW_arc, fct0_arc, true},
    {KW_ascii, fct0_ascii, true},     {KW_asin, fct0_map, true},
    {KW_asinh, fct0_shaped, true},    {KW_atan, fct0_map, true},
    {KW_atanh, fct0_shaped, true},    {KW_atof, fct0_ato, true},
    {KW_atoi, fct0_ato, true},        {KW_average, fct0_average, true},
    {KW_char, fct0_typed, false},     {KW_cos, fct0_map, true},
    {KW_cosh, fct0_map, true},        {KW_dist, fct0_dist, true},
    {KW_directory, fct0_directory, false}, {KW_ent, fct0_map, true},
    {KW_error, fct0_error, false},    {KW_exp, fct0_map, true},
    {KW_fclose, FCLOSE_a, false},   {KW_float, fct0_typed, false},
    {KW_fopen, FOPEN_a, false},    {KW_format, fct0_format, true},
    {KW_fread, FREAD_a, false},    {KW_func, fct0_func, false},
    {KW_fwrite, FWRITE_a, false},   {KW_getline, fct0_getline, false},
    {KW_getword, fct0_getline, false}, {KW_grep, fct0_grep, false},
    {KW_inclu, fct0_inclu, true},     {KW_int, fct0_map, true},
    {KW_inv, fct0_inv, true},         {KW_log, fct0_log, true},
    {KW_max, fct0_extreme, true},     {KW_min, fct0_extreme, true},
    {KW_module, fct0_module, true},   {KW_precision, fct0_error, false},
    {KW_product, fct0_product, true}, {KW_rand, fct0_random, true},
    {KW_randf, fct0_random, true},    {KW_rand2f, fct0_random, true},
    {KW_rand2, fct0_random, true},    {KW_scalar, fct0_scalar, true},
    {KW_sin, fct0_map, true},         {KW_sinh, fct0_map, true},
    {KW_sum, fct0_sum, true},         {KW_sqrt, fct0_sqrt, true},
    {KW_string, fct0_string, true},   {KW_stringf, fct0_string, true},
    {KW_tan, fct0_map, true},         {KW_tanh, fct0_map, true},
    {KW_unit, fct0_unit, true},       {KW_vector, fct0_vector, true},
    {KW_wait, fct0_wait, true},
};

const Entry* entry_of(int code) {
  for (const Entry& e : TABLE)
    if (e.code == code) return &e;
  return nullptr;
}

constexpr int WALK_ON = -1000;  // the walk lets the second step run

// The first walk: returns WALK_ON, or the handler's status when the walk
// itself ends the command (1 when the record is left alone).
int walk(Fct0Call& c) {
  bool rand_seen = false;
  word* item = first_item(c.record);
  for (int i = 0; i < item_count(c.record); i++, item = next_item(item)) {
    if (item[1] != 0) return 1;
    if (i == 1) c.second = item;
    switch (item[2]) {
      case KW_char:
        if (item[0] == 3) return build_float(c.record, c.limit, static_cast<float>(T_CHAR));
        break;
      case KW_float:
        if (item[0] == 3) return build_float(c.record, c.limit, static_cast<float>(T_FLOAT));
        break;
      case KW_error: c.error = true; break;
      case KW_time: c.time = true; break;
      case KW_puls: return PULS_a(c.record, c.limit);
      case KW_rand: rand_seen = true; break;
      case KW_var:
        if (rand_seen) return 1;
        break;
      default: break;
    }
  }
  return WALK_ON;
}

// Evaluates the argument; false after a report. A missing argument has
// no elements.
bool evaluate(Fct0Call& c) {
  if (!c.arg) return true;
  c.v = get_evaluation(c.arg);
  if (!c.v) return false;
  c.n = value_length(c.v);
  return true;
}

}  // namespace

const word* fct0_argument(Fct0Call& c) { return c.arg ? get_evaluation(c.arg) : nullptr; }

int fct0(word* record, const word* limit) {
  Fct0Call c;
  c.record = record;
  c.limit = limit;
  c.first = first_item(record);
  c.out = record + record[0];
  int r = walk(c);
  if (r != WALK_ON) return r;
  const Entry* e = entry_of(c.first[2]);
  if (!e) return 1;
  c.arg = item_value(c.first);
  if (e->evaluated) {
    if (!evaluate(c)) {
      TRACE_FAIL("fct0()");
      return -1;
    }
    if (c.n == 0) return build_nil(record);
  }
  r = e->worker(c);
  if (r != 0) {
    if (r < 0) TRACE_FAIL("fct0()");
    return r;
  }
  memmove(record, c.out, static_cast<size_t>(size(c.out)) * sizeof(word));
  return 0;
}

// ---- results ------------------------------------------------------------

int copy_result(Fct0Call& c, const word* value) { return set_result(c.out, value, c.limit); }

int wrong_kind(Fct0Call& c) {
  voir_mot(c.first[2]);
  voir_message(0, MES_ILLEGAL);
  return -1;
}

TextOut text_begin(Fct0Call& c) {
  TextOut t;
  t.block = c.out;
  if (c.out + 5 > c.limit) {
    t.full = true;
    return t;
  }
  t.p = text(c.out);
  t.end = reinterpret_cast<char*>(const_cast<word*>(c.limit)) - 1;
  return t;
}

bool text_add(TextOut& t, const char* s, size_t n) {
  if (t.full) return false;
  if (static_cast<size_t>(t.end - t.p) < n) {
    t.full = true;
    return false;
  }
  memcpy(t.p, s, n);
  t.p += n;
  return true;
}

int text_end(TextOut& t) {
  if (t.full) return build_overflow();
  size_t len = static_cast<size_t>(t.p - text(t.block));
  int words = static_cast<int>(len / 4 + 5);
  memset(t.p, 0, static_cast<size_t>(words - 4) * 4 - len);
  build_head(t.block, words, T_CHAR, words - 4);
  return 0;
}

// ---- average, max, min over several items ---------------------------------

namespace {

float combine(int code, float acc, float x) {
  if (code == KW_max) return x > acc ? x : acc;
  if (code == KW_min) return x < acc ? x : acc;
  return acc + x;
}

}  // namespace

int MIN_MAX_a(word* record, const word* limit) {
  if (item_count(record) < 2) return fct0(record, limit);
  int code = first_item(record)[2];
  // The longest vector fixes the length; element i combines every item
  // that has an element i (and the mean divides by their number).
  int longest = 0;
  word* item = first_item(record);
  for (int i = 0; i < item_count(record); i++, item = next_item(item)) {
    if (item[1] != 0) return 1;
    const word* v = item_value(item);
    if (v && tag(v) == T_FLOAT && elements(v) > longest) longest = elements(v);
  }
  if (longest == 0) return build_nil(record);
  word* out = record + record[0];
  if (out + 4 + 2 * longest > limit) {
    err_dim_ev(nullptr);
    return -12;
  }
  word* counts = out + 4 + longest;
  for (int k = 0; k < longest; k++) counts[k] = 0;
  item = first_item(record);
  for (int i = 0; i < item_count(record); i++, item = next_item(item)) {
    const word* v = item_value(item);
    if (!v || tag(v) != T_FLOAT) continue;
    for (int k = 0; k < elements(v); k++) {
      float x = getf(v, k);
      out[4 + k] = fw(counts[k]++ == 0 ? x : combine(code, wf(out[4 + k]), x));
    }
  }
  if (code == KW_average)
    for (int k = 0; k < longest; k++) out[4 + k] = fw(wf(out[4 + k]) / static_cast<float>(counts[k]));
  build_head(out, 4 + longest, T_FLOAT, longest);
  memmove(record, out, static_cast<size_t>(out[0]) * sizeof(word));
  return 0;
}
