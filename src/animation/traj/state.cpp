// The state of the trajectories and finding one by number.
#include <algorithm>

#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "kernel/chains.h"

namespace {
// Numbers up to this are remembered; larger ones are looked up each time.
constexpr int NUMEROS_RETENUS = 1 << 16;
}  // namespace

TrajState& traj_state() {
  static TrajState s;
  return s;
}

Objet* trajectoire(int id) {
  TrajState& s = traj_state();
  const bool retenu = id >= 0 && id < NUMEROS_RETENUS;
  if (retenu && id < static_cast<int>(s.par_numero.size())) {
    Objet* o = objet_ref(s.par_numero[static_cast<size_t>(id)]);
    if (o && o->id == id && o->kind == KW_traj && o->valid) return o;
  }
  Objet* o = premier_objet(chaine_classe(KW_traj), [id](Objet* x) { return x->kind == KW_traj && x->id == id; });
  if (o && retenu) {
    if (id >= static_cast<int>(s.par_numero.size())) s.par_numero.resize(static_cast<size_t>(id) + 1);
    s.par_numero[static_cast<size_t>(id)] = ref_objet(o);
  }
  return o;
}

void nouvelle_image() {
  TrajState& s = traj_state();
  s.image = s.image >= (1 << 23) ? 1 : s.image + 1;
}

void calcule_max_order() {
  int m = 1;
  for (Objet* t = chaine_classe(KW_traj)->next; t; t = t->next)
    if (t->kind == KW_traj) m = std::max(m, order(t));
  traj_state().Max_order = m;
}
