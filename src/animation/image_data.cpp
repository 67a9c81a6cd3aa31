// The per-image resets: the volumes' generated data, and the forces that
// accumulate anew at each image.
#include <algorithm>

#include "animation/stages.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "scene/chains.h"
#include "scene/volume.h"

namespace {

// Sets the first `n` floats (all with n < 0) of a FLOAT value to 0.
void zero(bloc v, int n) {
  if (!v || tag(v) != T_FLOAT) return;
  const int count = std::min(np(v) * std::max(dimp(v), 1), size(v) - 4);
  const int k = n < 0 ? count : std::min(n, count);
  for (int i = 0; i < k; i++) setf(v, i, 0.0f);
}

template <class F>
void each(int kind, F&& f) {
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
    if (o->kind == kind && o->local) f(o);
}

}  // namespace

int ZER_DATAS() {
  each(KW_vol, [](Objet* o) { raz_generate(o, 0); });
  return 0;
}

int efface_forces_volumes() {
  each(KW_vol, [](Objet* o) { zero(get_val_1(o->local, KW_force), 3); });
  return 0;
}

int ZER_FORCE() {
  for (int kind : {KW_fog, KW_light, KW_brush, KW_traj, KW_vol, KW_view})
    each(kind, [](Objet* o) {
      zero(get_val_2(o->local, KW_force, KW_add), -1);
      zero(get_val_2(o->local, KW_force, KW_rota), -1);
      zero(get_val_3(o->local, KW_force, KW_rota, KW_add), -1);
      zero(get_val_2(o->local, KW_force, KW_vertex), -1);
    });
  return 0;
}
