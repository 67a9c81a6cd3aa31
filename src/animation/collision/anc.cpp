// EXEC_COLLISION_ANC: pairs of volumes kept within d1..d2 of each other by
// their centres, through a constant force k whatever the depth.
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "scene/matrix.h"

namespace {

// `collision limit` by default.
constexpr float D1 = 100.0f, D2 = 100.0f, K = 0.5f;

bool suit(const Objet* o) { return value_at(get_val_2(o->local, KW_collision, KW_follow), 0, 0) != 0; }

// The force f added to `force` of each of the volume's `follow` objects.
void partage(Objet* o, const float f[3]) {
  const word* l = get_val_1(o->local, KW_follow);
  for (int i = 0; i < elements(l); i++) {
    Objet* g = volume_numero(value_at(l, i, 0));
    float* fg = g && g != o ? cree_floats(g, KW_force, 0, 4) : nullptr;
    if (fg)
      for (int k = 0; k < 3; k++) fg[k] += f[k];
  }
}

// With `collision follow` on both: what each of the pair received goes on
// to its followers.
void EXEC_COLLISION_FOLLOW(Objet* a, Objet* b, const float fa[3]) {
  const float fb[3] = {-fa[0], -fa[1], -fa[2]};
  partage(a, fa);
  partage(b, fb);
}

}  // namespace

int EXEC_COLLISION_ANC() {
  for (Objet* o = chaine_classe(KW_vol)->next; o; o = o->next) {
    const word* liste = o->kind == KW_vol ? get_val_2(o->local, KW_collision, KW_anc) : nullptr;
    Absolus a;
    if (!liste || !absolus(o, a)) continue;
    float G[3];
    a.centre(G);
    const word* lim = get_val_2(o->local, KW_collision, KW_limit);
    const float d1 = value_at(lim, 0, D1), d2 = value_at(lim, 1, D2), k = value_at(lim, 2, K);
    float* force = cree_floats(o, KW_force, 0, 4);
    if (!force) {
      TRACE_FAIL("EXEC_COLLISION_ANC()");
      return -1;
    }
    force[0] = 0;
    liste = get_val_2(o->local, KW_collision, KW_anc);
    for (int i = 0; i < elements(liste); i++) {
      Objet* b = volume_numero(value_at(liste, i, 0));
      if (!b) {
        err_objet(KW_vol, liste, i, 0, nullptr);
        return -1;
      }
      Absolus ab;
      if (b == o || !absolus(b, ab)) continue;
      float* fb = cree_floats(b, KW_force, 0, 4);
      if (!fb) {
        TRACE_FAIL("EXEC_COLLISION_ANC()");
        return -1;
      }
      float H[3];
      ab.centre(H);
      float u[3] = {H[0] - G[0], H[1] - G[1], H[2] - G[2]};
      const float D = std::sqrt(mat::scalaire(u, u));
      mat::normalise(u);
      const float s = D < d1 ? -k : D > d2 ? k : 0;
      if (s == 0) continue;
      const float f[3] = {s * u[0], s * u[1], s * u[2]};
      for (int c = 0; c < 3; c++) force[c] += f[c], fb[c] -= f[c];
      if (suit(o) && suit(b)) EXEC_COLLISION_FOLLOW(o, b, f);
    }
  }
  return 0;
}
