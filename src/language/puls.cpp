// `puls`: pulse objects and an oscillator.
//
// `puls("name") dim(start, length)` (length 1 by default) keeps a named
// object of the `puls` chain whose `var` property holds four floats:
// start, end = start + length, the time t in steps, and the current
// output. The output is 1 while start <= t < end and 0 outside; with a
// `sin` item (kept in the object's type word) it is the smooth bump
// sin(pi (t - start) / length) over the same interval. `puls("name")`
// alone returns the current output and steps the object: t grows by 1.
//
// `puls(t, a, b, p, ph, e)`: an oscillator between a and b of period p
// and phase ph, sharpened or flattened by the exponent e.
#include <cmath>
#include <cstring>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "language/eval.h"
#include "language/fct0.h"

namespace {

enum PulsVar { START, END, TIME, OUTPUT, PULS_VARS };

float oscillator(const word* v) {
  float x[6] = {};
  for (int i = 0; i < 6 && i < value_length(v); i++) x[i] = getf(v, i);
  float t = x[0], a = x[1], b = x[2], p = x[3], ph = x[4], e = x[5];
  if (std::fabs(p) < 0.0001f) return a;
  float s = std::sin(t * 6.2831855f / p + ph);
  if (e > 0 && std::fabs(s) >= 0.0001f) {
    float power = e * std::log(std::fabs(s));
    if (power < -11350.0f) power = -11350.0f;
    if (power > 43.0f) power = 43.0f;
    s = (s > 0 ? 1.0f : -1.0f) * std::exp(power);
  }
  return (s + 1) * (b - a) * 0.5f + a;
}

Objet* find_puls(const char* name) {
  for (Objet* o = chaine_de(0, KW_puls)->next; o; o = o->next)
    if (o->kind == KW_puls && o->name && std::strcmp(o->name, name) == 0) return o;
  return nullptr;
}

float output_at(const Objet* o, const word* var) {
  float start = getf(var, START), end = getf(var, END), t = getf(var, TIME);
  if (t < start || t >= end) return 0.0f;
  if (o->subkind != KW_sin) return 1.0f;
  return std::sin(3.14159265f * (t - start) / (end - start));
}

// Defines (or redefines) the pulse from the `dim` item.
int define(word* record, const char* name, const word* dim) {
  int n = dim ? value_length(dim) : 0;
  float start = n > 0 ? getf(dim, 0) : 0.0f;
  float length = n > 1 ? getf(dim, 1) : 1.0f;
  Objet* o = find_puls(name);
  if (!o) o = cre_objet(chaine_de(0, KW_puls), KW_puls, 0, nullptr, name, 0);
  word* var = o ? set_val_1(o, KW_var, PULS_VARS) : nullptr;
  if (!var) {
    TRACE_FAIL("PULS_a()");
    return -1;
  }
  o->subkind = find_item(record, KW_sin) ? KW_sin : 0;
  setf(var, START, start);
  setf(var, END, start + length);
  setf(var, TIME, 0.0f);
  setf(var, OUTPUT, output_at(o, var));
  return build_nil(record);
}

// Returns the current output and steps the pulse.
int step(word* record, const word* limit, Objet* o) {
  word* var = get_val_1(o->local, KW_var);
  if (!var || tag(var) != T_FLOAT || np(var) < PULS_VARS) {
    err_vide("PULS_a", o);
    return -1;
  }
  float out = getf(var, OUTPUT);
  setf(var, TIME, getf(var, TIME) + 1.0f);
  setf(var, OUTPUT, output_at(o, var));
  return build_float(record, limit, out);
}

}  // namespace

int PULS_a(word* record, const word* limit) {
  word* item = find_item(record, KW_puls);
  const word* v = item && item_value(item) ? get_evaluation(item_value(item)) : nullptr;
  if (v && tag(v) == T_FLOAT && value_length(v) >= 2) return build_float(record, limit, oscillator(v));
  if (!v || tag(v) != T_CHAR || !text(v)[0]) {
    voir_mot(KW_puls);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  const word* d = arg_of(record, KW_dim);
  if (has_word(record, KW_dim)) return define(record, text(v), d && tag(d) == T_FLOAT ? d : nullptr);
  Objet* o = find_puls(text(v));
  if (!o) {
    err_objet(KW_puls, v, -1, 0, nullptr);
    return -1;
  }
  return step(record, limit, o);
}
