// `matrix`: 4x4 matrices of 16 floats, row after row.
//   matrix                   the identity
//   matrix(m)                m checked (16 elements) and shaped 4 by 4
//   matrix(a,b) product      the product a.b
//   matrix(m) transp         the transpose
//   matrix(m,x,y,z,...) vector   the points (x,y,z,1) transformed by m
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"

namespace {

using Floats = std::vector<float>;

Floats identity() {
  Floats m(16, 0.0f);
  for (int i = 0; i < 4; i++) m[static_cast<size_t>(i * 5)] = 1.0f;
  return m;
}

Floats product(const Floats& v) {
  Floats c(16, 0.0f);
  for (size_t i = 0; i < 4; i++)
    for (size_t j = 0; j < 4; j++)
      for (size_t k = 0; k < 4; k++) c[i * 4 + j] += v[i * 4 + k] * v[16 + k * 4 + j];
  return c;
}

Floats transpose(const Floats& v) {
  Floats t(16);
  for (size_t i = 0; i < 4; i++)
    for (size_t j = 0; j < 4; j++) t[j * 4 + i] = v[i * 4 + j];
  return t;
}

Floats apply(const Floats& v) {
  Floats out;
  for (size_t p = 16; p + 3 <= v.size(); p += 3)
    for (size_t i = 0; i < 3; i++)
      out.push_back(v[i * 4] * v[p] + v[i * 4 + 1] * v[p + 1] + v[i * 4 + 2] * v[p + 2] + v[i * 4 + 3]);
  return out;
}

int usage() {
  err_syntaxe(MES_COMMAND_USAGE, KW_matrix, "(16 floats) [product transp vector]\n");
  return -1;
}

}  // namespace

int MATRIX_a(word* record, const word* limit) {
  Floats v;
  const word* arg = command_argument(record);
  if (!arg) return build_floats(record, limit, identity(), 4);
  v = floats_of(arg);
  if (v.size() < 16) return usage();
  if (find_item(record, KW_product)) return v.size() == 32 ? build_floats(record, limit, product(v), 4) : usage();
  if (find_item(record, KW_vector)) {
    if ((v.size() - 16) % 3 != 0) return usage();
    return v.size() == 16 ? build_nil(record) : build_floats(record, limit, apply(v), 3);
  }
  if (v.size() != 16) return usage();
  if (find_item(record, KW_transp)) return build_floats(record, limit, transpose(v), 4);
  return build_floats(record, limit, v, 4);
}
