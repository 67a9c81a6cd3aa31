// Centres of gravity of volumes.
#include <algorithm>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "scene/matrix.h"
#include "scene/vol_generate.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

int det_cg_vol(Objet* o, float c[3]) {
  const int keys[] = {KW_CG};
  const word* old = o->local ? get_val_1(o->local, KW_CG) : nullptr;
  const bool premier = !old || old[1] != T_FLOAT || old[2] != 3 || old[3] != 3;
  bool valide = false;
  if (!poi_requis(o, "det_cg_vol()")) return -1;
  bloc v = cache_vol(o, 1, keys, 3, 3, &valide);
  if (!v) return -1;
  float* g = reinterpret_cast<float*>(v + 4);
  if (!valide) {
    const word* poi = poi_vol(o);
    const int n = std::min(det_np(o), static_cast<int>(poi[2]));
    mat::moyenne(reinterpret_cast<const float*>(poi + 4), n, stride(poi), g);
    if (premier) std::copy(g, g + 3, g + 3), std::copy(g, g + 3, g + 6);
    cache_valide(o, 1, keys);
  }
  std::copy(g, g + 3, c);
  return 0;
}

namespace {

// The origin of a 4x4 matrix: its position column.
void origine(const float* m, float c[3]) { std::copy(m + 12, m + 15, c); }

int centre_objet(Objet* o, ModeCG mode, float c[3]) {
  const float* t = mode == ModeCG::Local ? nullptr : get_matrix_vol(o);
  float m[16];
  if (t) matrice_du_bloc(o, m);
  switch (mode) {
    case ModeCG::Local:
      return det_cg_vol(o, c);
    case ModeCG::Abs:
      if (!t || det_cg_vol(o, c) < 0) return -1;
      mat::point(m, c, c);
      return 0;
    case ModeCG::Anc:
      if (!t) return -1;
      origine(m, c);
      return 0;
    case ModeCG::Matrix: {
      const word* m = get_val_2(o->local, KW_matrix, KW_anc);
      if (m && m[1] == T_FLOAT && m[0] == 20) origine(reinterpret_cast<const float*>(m + 4), c);
      else if (t) origine(t + TR_MATRIX, c);
      else return -1;
      return 0;
    }
  }
  return -1;
}

}  // namespace

bool CG_VOL(const std::vector<Objet*>& objets, ModeCG mode, float c[3]) {
  float somme[3] = {0, 0, 0};
  int n = 0;
  for (Objet* o : objets) {
    float g[3];
    if (!o || centre_objet(o, mode, g) < 0) continue;
    for (int k = 0; k < 3; k++) somme[k] += g[k];
    n++;
  }
  if (n == 0) return false;
  for (int k = 0; k < 3; k++) c[k] = somme[k] / static_cast<float>(n);
  return true;
}
