// The vertices of a led volume: `poi anc`, the vertex array through the
// 4x4 matrix `matrix anc`, which is made from the transformation block's
// matrix on first demand and kept afterwards.
#include <algorithm>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

bool matrice_valide(const word* m) { return m && m[1] == T_FLOAT && m[2] * std::max<int>(m[3], 1) == 16 && m[0] == 20; }

// `matrix anc`, made when missing or malformed.
const float* matrice_anc(Objet* o) {
  bloc m = get_val_2(o->local, KW_matrix, KW_anc);
  if (matrice_valide(m)) return reinterpret_cast<const float*>(m + 4);
  if (m) rem_propr_2(o, KW_matrix, KW_anc);
  const float* t = get_matrix_vol(o);
  if (!t || !(m = set_matrix_2(o, KW_matrix, KW_anc, 4, 4))) {
    TRACE_FAIL("matrice_anc()");
    return nullptr;
  }
  std::copy(t + TR_MATRIX, t + TR_MATRIX + 16, reinterpret_cast<float*>(m + 4));
  return reinterpret_cast<const float*>(m + 4);
}

}  // namespace

bloc gen_poi_anc(Objet* o) {
  const word* poi = poi_requis(o, "gen_poi_anc()");
  const float* m = poi ? matrice_anc(o) : nullptr;
  if (!m) return nullptr;
  poi = poi_vol(o);  // the list may have moved as the matrix was added
  const int n = poi[2], d = stride(poi);
  const float* p = reinterpret_cast<const float*>(poi + 4);
  std::vector<float> f(p, p + static_cast<size_t>(n) * static_cast<size_t>(d));
  for (int i = 0; i < n && d >= 3; i++) mat::point(m, &f[static_cast<size_t>(i * d)], &f[static_cast<size_t>(i * d)]);
  const int keys[] = {KW_poi, KW_anc};
  return stocke_floats(o, 2, keys, f, d);
}

bloc get_poi_vol(Objet* o) {
  if (Yes(KW_anc) > 0 && o && get_val_1(o->local, KW_lead)) {
    const int keys[] = {KW_poi, KW_anc};
    // Made once an image: the per-image reset clears the vertices' word.
    const word* etat = get_val_2(o->local, KW_meta, KW_generate);
    bloc v = derive_valide(o, 2, keys);
    if (v && etat && np(etat) >= 2 && etat[5] != 0) return v;
    if ((v = gen_poi_anc(o))) {
      if (bloc e = set_val_2(o, KW_meta, KW_generate, 2)) setf(e, 1, 1.0f);
      return derive_valide(o, 2, keys);
    }
  }
  return poi_vol(o);
}
