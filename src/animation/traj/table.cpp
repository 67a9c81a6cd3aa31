// The table of a trajectory: its keys laid out as points by kind,
// resampled by ajust_1 and kept as the property `var K` (`var K K2`).
#include <algorithm>

#include "animation/traj/ajust.h"
#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "scene/volume.h"

bool kind_une_valeur(int kind) {
  switch (kind) {
    case KW_foc: case KW_dilx: case KW_dily: case KW_dilz: case KW_hom: case KW_luminance: case KW_roll:
    case KW_rota: case KW_rotx: case KW_roty: case KW_rotz: case KW_texture: case KW_transp: case KW_validate:
      return true;
    default:
      return false;
  }
}

bool kind_angle(int kind) { return kind == KW_rota || kind == KW_rotx || kind == KW_roty || kind == KW_rotz; }

bloc table_traj(Objet* t) {
  if (!t || !t->local) return nullptr;
  bloc v = kind_2(t) ? get_val_3(t->local, KW_var, kind_1(t), kind_2(t)) : get_val_2(t->local, KW_var, kind_1(t));
  return v && tag(v) == T_FLOAT ? v : nullptr;
}

const float* ligne_courante(Objet* t, int* dim) {
  if (ni(t) < 1 || cpt(t) < 0 || cpt(t) >= ni(t)) return nullptr;
  bloc v = table_traj(t);
  if (!v) return nullptr;
  const int d = std::max(dimp(v), 1);
  if (cpt(t) >= np(v)) return nullptr;
  *dim = d;
  return reinterpret_cast<const float*>(v + 4) + cpt(t) * d;
}

namespace {

// The keys as points of `dim` floats: (i, v, 0) for a one-value kind
// (angles brought to degrees), (i, a, b) for pairs, four floats for
// `quat`, triples otherwise; a short last key is completed with 0.
std::vector<float> points_cles(int kind, const std::vector<float>& keys, int* dim) {
  std::vector<float> p;
  const size_t nk = keys.size();
  if (kind_une_valeur(kind)) {
    const float f = kind_angle(kind) ? DEGRES : 1.0f;
    for (size_t i = 0; i < nk; i++) p.insert(p.end(), {static_cast<float>(i), keys[i] * f, 0.0f});
    *dim = 3;
  } else if (kind == KW_dim || kind == KW_radius) {
    for (size_t i = 0; i < nk; i += 2)
      p.insert(p.end(), {static_cast<float>(i / 2), keys[i], i + 1 < nk ? keys[i + 1] : 0.0f});
    *dim = 3;
  } else {
    *dim = kind == KW_quat ? 4 : 3;
    const size_t d = static_cast<size_t>(*dim);
    for (size_t i = 0; i < nk; i += d)
      for (size_t k = 0; k < d; k++) p.push_back(i + k < nk ? keys[i + k] : 0.0f);
  }
  return p;
}

// The table stored under the keys, replacing the former one.
int range_table(Objet* t, int n, const int* codes, const std::vector<float>& rows, int rows_n, int dim) {
  rem_propr_k(t, n, codes);
  bloc v = set_matrix_k(t, n, codes, rows_n, dim);
  if (!v) {
    TRACE_FAIL("SET_VAR_1()");
    return -1;
  }
  std::copy(rows.begin(), rows.end(), reinterpret_cast<float*>(v + 4));
  return 0;
}

int table_de(int n_rows, Objet* t, int n, const int* codes, int kind, const std::vector<float>& keys,
             const Ajustement& a, int format) {
  Ajustement aj = a;
  aj.ni = std::max(n_rows, 2);
  if (format == 1 || format == 2) {
    const std::vector<float> rows = retrecit_format(ajust_1(elargit_format(keys, format), 3, aj), format);
    return range_table(t, n, codes, rows, aj.ni, format);
  }
  int dim = 3;
  const std::vector<float> p = points_cles(kind, keys, &dim);
  return range_table(t, n, codes, ajust_1(p, dim, aj), aj.ni, dim);
}

}  // namespace

int SET_VAR_1(int n_rows, Objet* t, int kind, const std::vector<float>& keys, const Ajustement& a, int format) {
  const int codes[2] = {KW_var, kind};
  return table_de(n_rows, t, 2, codes, kind, keys, a, format);
}

int SET_VAR_2(int n_rows, Objet* t, int kind, int kind2, const std::vector<float>& keys, const Ajustement& a,
              int format) {
  const int codes[3] = {KW_var, kind, kind2};
  return table_de(n_rows, t, 3, codes, kind, keys, a, format);
}

int SET_VAR_FORMES(int n_rows, Objet* t, const std::vector<float>& shapes, int dim, const Ajustement& a) {
  Ajustement aj = a;
  aj.ni = std::max(n_rows, 2);
  aj.interpol = true;
  const int codes[2] = {KW_var, KW_interpol};
  return range_table(t, 2, codes, ajust_1(shapes, dim, aj), aj.ni, dim);
}

int SET_VAR_3(int n_rows, Objet* t, int kind2, const std::vector<float>& keys, const Ajustement& a) {
  // Keys of six values: the first triples make one table, the second
  // triples the other; the rows hold both, 6 floats each.
  std::vector<float> first, second;
  for (size_t i = 0; i < keys.size(); i += 6)
    for (size_t k = 0; k < 6; k++) (k < 3 ? first : second).push_back(i + k < keys.size() ? keys[i + k] : 0.0f);
  Ajustement aj = a;
  aj.ni = std::max(n_rows, 2);
  const std::vector<float> ta = ajust_1(first, 3, aj), tb = ajust_1(second, 3, aj);
  std::vector<float> rows;
  for (int r = 0; r < aj.ni; r++) {
    rows.insert(rows.end(), ta.begin() + r * 3, ta.begin() + r * 3 + 3);
    rows.insert(rows.end(), tb.begin() + r * 3, tb.begin() + r * 3 + 3);
  }
  const int codes3[3] = {KW_var, KW_limit, kind2};
  const int codes2[2] = {KW_var, KW_limit};
  return kind2 ? range_table(t, 3, codes3, rows, aj.ni, 6) : range_table(t, 2, codes2, rows, aj.ni, 6);
}
