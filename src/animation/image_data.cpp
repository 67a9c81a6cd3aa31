// The per-image resets: the volumes' generated data, and the forces that
// accumulate anew at each image.
#include <algorithm>

#include "animation/stages.h"
#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "scene/volume.h"

namespace {

// Sets the first `n` floats of a plain FLOAT value to 0.
void zero(bloc v, int n) {
  if (!v || tag(v) != T_FLOAT || dimp(v) < 0) return;
  const int k = std::min(n, elements(v));
  for (int i = 0; i < k; i++) setf(v, i, 0.0f);
}

// Sets every float of every point of a FLOAT value to 0, whatever its
// layout (plain, entries opening with their length, slots of a table).
void zero_points(bloc v) {
  if (!v || tag(v) != T_FLOAT) return;
  for (int i = 1; i <= np(v); i++) {
    int kind = 0, d = 0;
    const word* p = nullptr;
    if (get_point(v, i, &kind, &d, &p) < 0) return;
    word* w = const_cast<word*>(p);
    for (int k = 0; k < d; k++) w[k] = fw(0.0f);
  }
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
      zero_points(get_val_2(o->local, KW_force, KW_add));
      // Of `force rota` only the moment goes: its damping is a setting.
      zero(get_val_2(o->local, KW_force, KW_rota), 1);
      zero_points(get_val_3(o->local, KW_force, KW_rota, KW_add));
      zero_points(get_val_2(o->local, KW_force, KW_vertex));
    });
  return 0;
}
