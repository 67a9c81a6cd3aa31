#include "render/cmd_args.h"

#include "kernel/access.h"
#include "kernel/chains.h"
#include "scene/lookup.h"

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
  return arg_floats(s, code, f, 16) > i ? entier(f[i]) : dflt;
}

float value_at(const word* v, int i, float dflt) {
  if (!v || i < 0 || i >= value_elements(v) || i >= size(v) - 4) return dflt;
  if (tag(v) == T_FLOAT) return getf(v, i);
  if (tag(v) == T_LONG) return static_cast<float>(v[4 + i]);
  return dflt;
}

std::vector<Objet*> nommes(word* s, int kind) {
  std::vector<Objet*> out;
  const word* sel = arg_of(s, kind);
  for (int i = 0; sel && i < nb_selection(sel); i++)
    if (Objet* o = get_objet_simple(chaine_classe(kind), sel, i)) out.push_back(o);
  return out;
}
