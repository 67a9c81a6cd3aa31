// The command `collision`: the properties of collision written on each
// volume named and read from the first; the state; the tests of a pair.
#include <cmath>
#include <vector>

#include "animation/collision/collision.h"
#include "animation/cycle.h"
#include "animation/whole_property.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "scene/graphic.h"
#include "scene/matrix.h"
#include "scene/selection.h"
#include "scene/vol_commands.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

// Walks no further than this up a chain of `lead` links.
constexpr int MAILLONS_MAX = 1000;

// The head of the volume's chain: its leader's leader, and so on.
Objet* tete(Objet* o) {
  Objet* c = o;
  for (int i = 0; i < MAILLONS_MAX; i++) {
    const word* l = get_val_1(c->local, KW_lead);
    Objet* m = elements(l) ? volume_numero(value_at(l, 0, 0)) : nullptr;
    if (!m || m == o) return c;
    c = m;
  }
  return c;
}

// The two volumes of `vol(a) vol(b)` or `vol(a,b)`; false after a report.
bool paire(word* s, Objet* v[2]) {
  std::vector<float> ids;
  for (const std::vector<float>& l : arg_floats_all(s, KW_vol)) ids.insert(ids.end(), l.begin(), l.end());
  if (ids.size() < 2) {
    voir_mot(KW_collision);
    voir_texte("vol(id1) vol(id2)\a\n");
    return false;
  }
  for (int i = 0; i < 2; i++)
    if (!(v[i] = volume_numero(ids[i]))) {
      const word f[5] = {5, T_FLOAT, 1, 1, fw(ids[i])};
      err_objet(KW_vol, f, 0, 0, nullptr);
      return false;
    }
  return true;
}

// `collision near vol(a) vol(b)`: the distance of the nearest vertices of
// the two volumes where the scene places them, and their numbers.
int COLLISION_NEAR(word* s, const word* lim) {
  Objet* v[2];
  Absolus a, b;
  if (!paire(s, v)) return -1;
  if (!absolus(v[0], a) || !absolus(v[1], b)) return build_nil(s);
  float best = -1, p[3], q[3];
  int bi = 0, bj = 0;
  for (int i = 0; i < a.n; i++) {
    a.at(i, p);
    for (int j = 0; j < b.n; j++) {
      b.at(j, q);
      const float d2 = mat::distance2(p, q);
      if (best < 0 || d2 < best) best = d2, bi = i + 1, bj = j + 1;
    }
  }
  return build_floats(s, lim, {std::sqrt(best), static_cast<float>(bi), static_cast<float>(bj)});
}

// `collision vol(a) vol(b)`: the test of `collision vol` on the pair:
// 1 when the distance of their `tran` is under the sum of their radii,
// else 0; then that distance and that sum.
int COLLISION_VOL_VOL(word* s, const word* lim) {
  Objet* v[2];
  if (!paire(s, v)) return -1;
  const float r = det_rayon(v[0], nullptr) + det_rayon(v[1], nullptr);
  const float* a = get_matrix_vol(v[0]);
  const float* b = get_matrix_vol(v[1]);
  if (!a || !b) return -1;
  const float D = std::sqrt(mat::distance2(a + TR_TRAN, b + TR_TRAN));
  return build_floats(s, lim, {D < r ? 1.0f : 0.0f, D, r});
}

// What the command writes beside a path: `collision -poi` with `collision
// poi`, and `collision lead` on the head of the chain with `collision anc`.
int apres(Objet* o, const std::vector<int>& k, const word* ob) {
  if (k.size() == 2 && k[1] == KW_poi) {
    const int copie[2] = {KW_collision, -KW_poi};
    if (!set_propr_k(o, 2, copie, ob)) return -1;
  }
  if (k.size() == 2 && k[1] == KW_anc) {
    Objet* h = tete(o);
    const word id[5] = {5, T_FLOAT, 1, 1, fw(static_cast<float>(h->id))};
    const int lead[2] = {KW_collision, KW_lead};
    if (!set_propr_k(h, 2, lead, id)) return -1;
  }
  return 0;
}

int COLLISION_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  int avec_valeur = 0;
  word* it = first_item(s);
  for (int i = 0; i < item_count(s); i++, it = next_item(it))
    if (it[2] == KW_vol && item_value(it)) avec_valeur++;
  const bool deux_vol = avec_valeur >= 2;
  if (has_word(s, KW_near)) return COLLISION_NEAR(s, lim);
  if (deux_vol) return COLLISION_VOL_VOL(s, lim);
  // `collision collision` is the state.
  std::vector<int> k = chemin_commande(s);
  if (k.size() == 2 && k[1] == KW_collision) k.pop_back();
  if (propriete_entiere(s, ob, lim, k, apres) < 0) {
    TRACE_FAIL("COLLISION_b()");
    return -1;
  }
  return 0;
}

}  // namespace

void install_collisions() {
  register_stage(STAGE_EXEC_COLLISION_ANC, EXEC_COLLISION_ANC);
  register_stage(STAGE_EXEC_COLLISION, EXEC_COLLISION);
  register_graphic_handler({KW_collision}, COLLISION_b);
}
