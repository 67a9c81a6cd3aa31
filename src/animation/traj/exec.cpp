// The stage EXEC_TRAJ: the trajectories' own trajectories first, higher
// orders before lower ones; then every object of the lists takes the rows
// of the trajectories it names, all reading the same row; then the
// counters of order 1 step, and through them the higher orders.
#include <algorithm>

#include "animation/traj/apply.h"
#include "animation/traj/lists.h"
#include "animation/traj/traj.h"
#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/cmd_util.h"
#include "language/args.h"
#include "render/lights.h"
#include "kernel/chains.h"
#include "scene/lookup.h"
#include "scene/volume.h"

namespace {

// Each trajectory of the list `which` of o, f(trajectory, by name). A
// trajectory the list names and that does not exist (removed since, or
// never made) is reported with the object that names it, and stops the
// stage.
template <class F>
int pour_chaque_traj(Objet* o, ListeTraj which, const word* list, F&& f) {
  if (!list) return 0;
  const ListeLue l = lis_liste(o, which, list);
  for (int i = 0; i < l.n; i++) {
    Objet* t = element_liste(l, i);
    if (!t) {
      err_objet(KW_traj, list, i, 0, nullptr);
      voir_objet(o);
      TRACE_FAIL("EXEC_TRAJ_OBJ_1(()");
      return -1;
    }
    if (const int r = f(t, l.by_name); r < 0) return r;
  }
  return 0;
}

// A table of a form the objects cannot read: reported, no effect.
bool forme_lisible(Objet* t, int d) {
  if (kind_1(t) == KW_interpol || d == 1 || d == 2 || d == 3 || d == 4 || (d == 6 && kind_1(t) == KW_limit)) return true;
  voir_objet(t);
  err_bloc("EXEC_TRAJ_OBJ_1(()");
  return false;
}

// `traj vertex`: the vertices listed in the trajectory's `vertex` move
// with it, from their place when first moved (kept as `poi traj`).
int EXEC_TRAJ_OBJ_VERTEX(Objet* o, Objet* t) {
  int d = 0;
  const float* r = ligne_courante(t, &d);
  const word* liste = get_val_1(t->local, KW_vertex);
  bloc poi = poi_vol(o);
  if (!r || !liste || !poi || kind_1(t) != KW_tran || d < 3) return 0;
  const int codes[2] = {KW_poi, KW_traj};
  bloc saved = get_val_2(o->local, KW_poi, KW_traj);
  if (!saved || saved[0] != poi[0]) {
    rem_propr_k(o, 2, codes);
    saved = set_matrix_k(o, 2, codes, np(poi), stride(poi));
    if (!saved) return -1;
    std::copy(poi + 4, poi + poi[0], saved + 4);
  }
  const float* B = get_matrix_vol(t);
  const int s = stride(poi);
  float* p = sommets(poi);
  const float* p0 = sommets(saved);
  for (int i = 0; i < elements(liste); i++) {
    const int k = entier(value_at(liste, i, 0));
    if (k < 1 || k > np(poi) || s < 3) continue;
    for (int c = 0; c < 3; c++) p[(k - 1) * s + c] = p0[(k - 1) * s + c] + (B ? B[TR_TRAN + c] : 0.0f) + r[c];
  }
  invalide_caches(o);
  return 0;
}

// `traj fac`: the facets listed in the trajectory's `fac` take the row as
// their colour in `col fac`, made from the volume's `col` when missing.
int EXEC_TRAJ_OBJ_FAC(Objet* o, Objet* t) {
  int d = 0;
  const float* r = ligne_courante(t, &d);
  const word* liste = get_val_1(t->local, KW_fac);
  const word* fac = fac_vol(o);
  if (!r || !liste || !fac || kind_1(t) != KW_col || d < 3) return 0;
  const int nf = np(fac);
  bloc cf = get_val_2(o->local, KW_col, KW_fac);
  if (!cf || tag(cf) != T_FLOAT || elements(cf) < 3 * nf) {
    const int codes[2] = {KW_col, KW_fac};
    float col[3] = {1, 1, 1};
    floats_of(get_val_1(o->local, KW_col), col, 3);
    rem_propr_k(o, 2, codes);
    cf = set_matrix_k(o, 2, codes, nf, 3);
    if (!cf) return -1;
    for (int i = 0; i < nf * 3; i++) setf(cf, i, col[i % 3]);
  }
  for (int i = 0; i < elements(liste); i++) {
    const int k = entier(value_at(liste, i, 0));
    if (k < 1 || k > nf) continue;
    for (int c = 0; c < 3; c++) setf(cf, (k - 1) * 3 + c, r[c]);
  }
  return 0;
}

// The `interpol` form: a volume of as many vertex floats takes the row as
// its vertices.
int morphe(Objet* o, const float* r, int d) {
  bloc poi = o->kind == KW_vol ? poi_vol(o) : nullptr;
  if (!poi || np(poi) * stride(poi) != d) return 0;
  std::copy(r, r + d, sommets(poi));
  invalide_caches(o);
  raz_generate(o, 2);
  return 0;
}

bool actif(int flag) { return Yes(flag) > 0; }

// Every object of a kind's chain.
int chaine(int kind) {
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
    if (o->kind == kind && o->local)
      if (const int r = EXEC_TRAJ_OBJ(o); r < 0) return r;
  return 0;
}

}  // namespace

int EXEC_TRAJ_OBJ_1_1(Objet* o, Objet* t) {
  if (const word* stop = get_val_1(t->local, KW_STOP); stop && value_at(stop, 0, 1) < 1) return 0;
  int d = 0;
  const float* r = ligne_courante(t, &d);
  if (!r || !forme_lisible(t, d)) return 0;
  if (kind_1(t) == KW_interpol) return morphe(o, r, d);
  // Volumes (EXEC_TRAJ_VOL), fields (EXEC_TRAJ_FIELD) and the other
  // objects share the table of kinds; a volume whose placement changed
  // has its generated data made again.
  if (applique_ligne(o, t, r, d) && o->kind == KW_vol) raz_generate(o, 2);
  return 0;
}

int EXEC_TRAJ_OBJ(Objet* o) {
  const word* tl = get_val_1(o->local, KW_traj);
  const word* ta = get_val_2(o->local, KW_traj, KW_animate);
  const word* tv = get_val_2(o->local, KW_traj, KW_vertex);
  const word* tf = get_val_2(o->local, KW_traj, KW_fac);
  if (!tl && !ta && !tv && !tf) return 0;
  // A trajectory named by its name steps its counter where it is applied,
  // and not again at the end of the image.
  auto une = [o](Objet* t, bool by_name) {
    if (EXEC_TRAJ_OBJ_1_1(o, t) < 0) return -1;
    if (!by_name) return 0;
    marque_pas(t);
    return INC_TRAJ_1(t);
  };
  if (pour_chaque_traj(o, LT_TRAJ, tl, une) < 0 || pour_chaque_traj(o, LT_ANIMATE, ta, une) < 0 ||
      pour_chaque_traj(o, LT_VERTEX, tv, [o](Objet* t, bool) { return EXEC_TRAJ_OBJ_VERTEX(o, t); }) < 0 ||
      pour_chaque_traj(o, LT_FAC, tf, [o](Objet* t, bool) { return EXEC_TRAJ_OBJ_FAC(o, t); }) < 0)
    return -1;
  if (o->kind == KW_light && SET_LIGHT_1(o, 0, nullptr) < 0) {
    TRACE_FAIL("EXEC_TRAJ_OBJ()");
    return -1;
  }
  return 0;
}

int EXEC_TRAJ_1(Objet* t) {
  const word* tl = t->local ? get_val_1(t->local, KW_traj) : nullptr;
  // Children that change the table, the row into the block, then the
  // children that offset the block.
  if (tl && EXEC_TRAJ_TRAJ_0(t, tl, true) < 0) return -1;
  if (ni(t) > 0 && cpt(t) >= 0 && cpt(t) < ni(t) && !table_traj(t) && kind_1(t)) {
    err_vide("MATRIX_POS()", t);
    return -1;
  }
  MATRIX_POS(t);
  if (tl && EXEC_TRAJ_TRAJ_0(t, tl, false) < 0) return -1;
  return 0;
}

int EXEC_TRAJ() {
  nouvelle_image();
  Objet* head = chaine_classe(KW_traj);
  // From the highest order down, through the orders in use only.
  for (int o = traj_state().Max_order; o >= 1;) {
    int below = 0;
    for (Objet* t = head->next; t; t = t->next) {
      if (t->kind != KW_traj) continue;
      if (order(t) == o && EXEC_TRAJ_1(t) < 0) return -1;
      if (order(t) < o) below = std::max(below, order(t));
    }
    o = below;
  }
  if ((actif(KW_brush) && chaine(KW_brush) < 0) || chaine(KW_memory) < 0 || (actif(KW_field) && chaine(KW_field) < 0) ||
      (actif(KW_image) && chaine(KW_image) < 0) || chaine(KW_light) < 0 || chaine(KW_object) < 0 ||
      chaine(KW_view) < 0 || chaine(KW_vol) < 0)
    return -1;
  for (Objet* t = head->next; t; t = t->next)
    if (t->kind == KW_traj && order(t) == 1 && !pas_fait(t) && INC_TRAJ_1(t) < 0) return -1;
  return 0;
}
