// Commands that read the shape of a value or compute on its elements:
// number, NP, dim, type, limit and CG. The 4x4 matrices are in
// cmd_matrix.cpp.
#include <cstdlib>
#include <string>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"

namespace {

// The kind of a value as `status` numbers it.
int type_code(const word* v) {
  switch (tag(v)) {
    case T_CHAR: return 1;
    case T_LONG: return 2;
    case T_FLOAT: return 3;
    case T_HYBRIDE: return 4;
    default: return 0;
  }
}

}  // namespace

// `number("1 2,3")`: one float per word of the text (0 for a word that
// is no number). `number(v)` of any other value: its element count.
int NUMBER_a(word* record, const word* limit) {
  const word* v = command_argument(record);
  if (!v) return build_float(record, limit, 0.0f);
  if (const char* s = value_text(v)) {
    std::vector<float> f;
    for (const std::string& w : split_words(s)) f.push_back(std::strtof(w.c_str(), nullptr));
    if (f.empty()) return build_nil(record);
    return build_floats(record, limit, f);
  }
  if (tag(v) == T_HYBRIDE || tag(v) == T_NIL) return build_float(record, limit, static_cast<float>(np(v)));
  return build_float(record, limit, static_cast<float>(elements(v)));
}

// `NP(v)`: the np word of the value: points of a FLOAT, parts of a
// HYBRIDE, characters of a CHAR, 0 for NIL.
int NP_a(word* record, const word* limit) {
  const word* v = command_argument(record);
  if (!v || tag(v) == T_NIL) return build_float(record, limit, 0.0f);
  if (const char* s = value_text(v)) return build_float(record, limit, static_cast<float>(std::string(s).size()));
  return build_float(record, limit, static_cast<float>(np(v)));
}

// `dim(v)`: the element width (dimp) and the size in words of the value.
int DIM_a(word* record, const word* limit) {
  const word* v = command_argument(record);
  if (!v) {
    err_syntaxe(MES_COMMAND_USAGE, KW_dim, "(v)\n");
    return -1;
  }
  return build_floats(record, limit, {static_cast<float>(dimp(v)), static_cast<float>(size(v))});
}

// `type(v)`: 0 NIL, 1 CHAR, 2 LONG, 3 FLOAT, 4 HYBRIDE, printing nothing.
int TYPE_a(word* record, const word* limit) {
  if (has_other_vocabulary(record)) return 1;
  const word* v = arg_of(record, KW_type);
  return build_float(record, limit, v ? static_cast<float>(type_code(v)) : 0.0f);
}

// `limit(v) dim(min,max)`: each element held between the two bounds
// (given in either order); `dim(m)` alone holds it between -m and m.
int LIMIT_a(word* record, const word* limit) {
  // `limit line(...)` and the other graphic forms without `dim` are the
  // scene's.
  if (!find_item(record, KW_dim) && has_other_vocabulary(record)) return 1;
  const word* arg = command_argument(record);
  std::vector<float> v = floats_of(arg);
  const std::vector<float> bounds = floats_of(arg_of(record, KW_dim));
  if (!arg || tag(arg) != T_FLOAT || bounds.empty()) {
    err_syntaxe(MES_COMMAND_USAGE, KW_limit, "(v) dim(min,max)\n");
    return -1;
  }
  float lo = bounds.size() > 1 ? bounds[0] : -bounds[0];
  float hi = bounds.size() > 1 ? bounds[1] : bounds[0];
  if (lo > hi) std::swap(lo, hi);
  for (float& x : v) x = x < lo ? lo : x > hi ? hi : x;
  return build_floats(record, limit, v);
}

// `CG(x1,y1,z1, ...)`: the mean point of the points of 3 elements of v,
// missing coordinates of a last point counting 0; at least one point.
int CG_a(word* record, const word* limit) {
  std::vector<float> v;
  const word* arg = command_argument(record);
  if (arg && tag(arg) == T_NIL) return build_nil(record);
  v = floats_of(arg);
  if (v.size() < 3) {
    voir_mot(KW_CG);
    voir_texte("x1,y1,z1, ...\a\n");
    return -1;
  }
  size_t points = (v.size() + 2) / 3;
  std::vector<float> c(3, 0.0f);
  for (size_t i = 0; i < v.size(); i++) c[i % 3] += v[i];
  for (float& x : c) x /= static_cast<float>(points);
  return build_floats(record, limit, c, 3);
}
