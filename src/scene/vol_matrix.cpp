// The matrix of a volume from the values of its transformation block.
#include "kernel/keywords.h"
#include "scene/matrix.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

constexpr float ORIGINE[3] = {0, 0, 0};

// m = m.r, r a rotation of `degres` about the axis.
// A turn of 0 leaves m as it is, and is skipped.
void tourne(float m[16], float degres, float x, float y, float z) {
  if (degres == 0) return;
  const float axe[3] = {x, y, z};
  float r[16];
  mat::rotation(r, degres / DEGRES, axe, ORIGINE);
  mat::produit(m, r, m);
}

}  // namespace

void matrice_du_bloc(Objet* o, float m[16]) {
  mat::identite(m);
  const float* b = get_matrix_vol(o);
  if (!b) return;
  float v[13];
  for (int i = 0; i < 13; i++) v[i] = b[i] + b[TR_DELTA + i];
  m[12] = v[TR_TRAN], m[13] = v[TR_TRAN + 1], m[14] = v[TR_TRAN + 2];
  tourne(m, v[TR_ROTA], v[TR_ROTA + 1], v[TR_ROTA + 2], v[TR_ROTA + 3]);
  tourne(m, v[TR_ROTX + 2], 0, 0, 1);
  tourne(m, v[TR_ROTX], 1, 0, 0);
  tourne(m, v[TR_ROTX + 1], 0, 1, 0);
  if (v[TR_DILA] == 1 && v[TR_DILA + 1] == 1 && v[TR_DILA + 2] == 1) return;
  float s[16];
  mat::echelle(s, v[TR_DILA], v[TR_DILA + 1], v[TR_DILA + 2]);
  mat::produit(m, s, m);
}
