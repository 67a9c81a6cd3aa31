// A trajectory's own transformation block: MATRIX_POS puts the current
// row in its deltas, the trajectories it carries turn its table or offset
// its block, and CAL_MATRIX_TRAJ makes the matrix of each block.
#include <algorithm>
#include <cmath>

#include "animation/traj/traj.h"
#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "render/cmd_args.h"
#include "kernel/chains.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

// The scales of the block hold the row as a factor of the trajectory's
// own scale, so that its matrix scales by the row.
// Degrees to radians for the turn of a table.
constexpr float RADIANS = 0.017453f;

// The row of the trajectory with this number, when it has one.
const float* ligne_de(Objet* u, int* d) { return u ? ligne_courante(u, d) : nullptr; }

// `var tran` of t turned about x by `deg`, from its saved copy
// `var tran validate` made at the first turn.
void tourne_table(Objet* t, float deg) {
  bloc table = get_val_2(t->local, KW_var, KW_tran);
  if (!table || tag(table) != T_FLOAT) return;
  const int codes[3] = {KW_var, KW_tran, KW_validate};
  bloc saved = get_val_3(t->local, KW_var, KW_tran, KW_validate);
  if (!saved || saved[0] != table[0]) {
    rem_propr_k(t, 3, codes);
    saved = set_matrix_k(t, 3, codes, np(table), std::max(dimp(table), 1));
    if (!saved) return;
    table = get_val_2(t->local, KW_var, KW_tran);  // the list may have moved
    std::copy(table + 4, table + table[0], saved + 4);
  }
  const int d = std::max(dimp(table), 1);
  if (d < 3) return;
  const float a = deg * RADIANS, c = std::cos(a), s = std::sin(a);
  for (int i = 0; i < np(table); i++) {
    const float y = getf(saved, i * d + 1), z = getf(saved, i * d + 2);
    setf(table, i * d, getf(saved, i * d));
    setf(table, i * d + 1, y * c - z * s);
    setf(table, i * d + 2, y * s + z * c);
  }
}

}  // namespace

void MATRIX_POS(Objet* t) {
  const int k = kind_1(t);
  if (ni(t) <= 0 || k == KW_format || k == KW_name || k == KW_interpol) return;
  int d = 0;
  const float* r = ligne_courante(t, &d);
  float* B = r ? get_matrix_vol(t) : nullptr;
  if (!B) return;
  float* D = B + TR_DELTA;
  const float v = valeur_ligne(r, d);
  switch (k) {
    case KW_axis: {
      float a[3] = {r[0], d > 1 ? r[1] : 0.0f, d > 2 ? r[2] : 1.0f};
      if (const word* l = get_val_2(t->local, KW_limit, KW_axis); l && value_elements(l) >= 6)
        for (int c = 0; c < 3; c++) a[c] = std::clamp(a[c], getf(l, c), getf(l, 3 + c));
      const float n = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
      for (int c = 0; c < 3 && n > 0; c++) D[TR_ROTA + 1 + c] = a[c] / n - B[TR_ROTA + 1 + c];
      break;
    }
    case KW_dila:
      for (int c = 0; c < 3 && c < d; c++) D[TR_DILA + c] = B[TR_DILA + c] * (r[c] - 1);
      break;
    case KW_dilx: case KW_dily: case KW_dilz: D[TR_DILA + (k - KW_dilx)] = B[TR_DILA + (k - KW_dilx)] * (v - 1); break;
    case KW_hom:
      for (int c = 0; c < 3; c++) D[TR_DILA + c] = B[TR_DILA + c] * (v - 1);
      break;
    case KW_tran: case KW_move:
      for (int c = 0; c < 3 && c < d; c++) D[TR_TRAN + c] = r[c];
      break;
    case KW_rota: D[TR_ROTA] = v; break;
    case KW_rotx: case KW_roty: case KW_rotz: D[TR_ROTX + (k - KW_rotx)] = v; break;
    default: break;
  }
}

int EXEC_TRAJ_TRAJ_1(Objet* t, Objet* u, bool step) {
  if (ni(u) < 1 || cpt(u) < 1 || cpt(u) > ni(u)) return 0;
  int d = 0;
  const float* r = ligne_de(u, &d);
  if (r && kind_1(u) == KW_rotz) tourne_table(t, valeur_ligne(r, d));
  int dt = 0;
  if (r && kind_1(u) == KW_tran && d >= 3 && ligne_courante(t, &dt)) {
    // Offset by the child's position and those of `traj animate`.
    float* B = get_matrix_vol(t);
    if (!B) return -1;
    for (int c = 0; c < 3; c++) B[TR_DELTA + TR_TRAN + c] += r[c];
    if (const word* anim_list = get_val_2(t->local, KW_traj, KW_animate))
      for (int i = 0; i < value_elements(anim_list); i++) {
        int da = 0;
        const float* ra = ligne_de(trajectoire(entier(value_at(anim_list, i, -1))), &da);
        for (int c = 0; ra && da >= 3 && c < 3; c++) B[TR_DELTA + TR_TRAN + c] += ra[c];
      }
  }
  if (step && INC_TRAJ_1(u) < 0) return -1;
  return 0;
}

int EXEC_TRAJ_TRAJ_0(Objet* t, const word* children, bool tables) {
  const word* animate = get_val_2(t->local, KW_traj, KW_animate);
  for (int i = 0; i < value_elements(children); i++) {
    Objet* u = trajectoire(entier(value_at(children, i, -1)));
    if (!u) {
      err_objet(KW_traj, children, i, 0, nullptr);
      return -1;
    }
    if (u == t || (kind_1(u) == KW_rotz) != tables) continue;
    bool step = false;
    for (int k = 0; animate && k < value_elements(animate); k++)
      step = step || entier(value_at(animate, k, -1)) == u->id;
    if (EXEC_TRAJ_TRAJ_1(t, u, step) < 0) return -1;
  }
  return 0;
}

int CAL_MATRIX_TRAJ() {
  for (Objet* t = chaine_classe(KW_traj)->next; t; t = t->next) {
    if (t->kind != KW_traj) continue;
    float* B = get_matrix_vol(t);
    if (!B) return -1;
    float m[16];
    matrice_du_bloc(t, m);
    std::copy(m, m + 16, B + TR_MATRIX);
  }
  return 0;
}
