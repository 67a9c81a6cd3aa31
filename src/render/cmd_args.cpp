#include "render/cmd_args.h"

int floats_into(const word* v, float* out, int n) {
  if (!v) return 0;
  const int count = std::min(value_elements(v), n);
  if (tag(v) == T_FLOAT) {
    for (int i = 0; i < count; i++) out[i] = getf(v, i);
    return count;
  }
  if (tag(v) == T_LONG || tag(v) == T_SHORT) {
    for (int i = 0; i < count && tag(v) == T_LONG; i++) out[i] = static_cast<float>(v[4 + i]);
    return tag(v) == T_LONG ? count : 0;
  }
  return 0;
}

int arg_int(word* s, int code, int i, int dflt) {
  float f[16];
  if (i >= 16) return dflt;
  return arg_floats(s, code, f, 16) > i ? static_cast<int>(f[i]) : dflt;
}
