// EXEC_COLLISION: each volume against its planes and its spheres, after
// the dynamics of the image.
#include <algorithm>
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "scene/matrix.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

// The share of `collision force` that a change of contact gives as torque.
constexpr float COE_CHANGEMENT = 0.001f;
// Bounds the walks up and down the chains, which a user can make circular.
constexpr int MAILLONS_MAX = 1000;

// The moments of the volume cleared before its tests; the damping stays.
void ZER_FORCE_ROTA(const CollProps& c) {
  if (float* f = flottants(c[C_force_rota], 1)) f[0] = 0;
}

// t added to `force rota add` of each leader up the `lead` links (sign
// +1) or of each object down the first `follow` links (sign -1), t
// multiplied by q at each link.
void le_long_de_la_chaine(Objet* o, int lien, float t, float q, float signe) {
  Objet* c = o;
  for (int i = 0; i < MAILLONS_MAX; i++) {
    const word* l = get_val_1(c->local, lien);
    Objet* suivant = elements(l) ? volume_numero(value_at(l, 0, 0)) : nullptr;
    if (!suivant || suivant == o) return;
    if (float* m = flottants(get_val_3(suivant->local, KW_force, KW_rota, KW_add), 1)) m[0] += signe * t;
    t *= q;
    c = suivant;
  }
}

bool particule(const Objet* o) { return o->subkind == KW_particle; }

}  // namespace

void EXEC_COLLISION_ROTA(Objet* o, const float* etat, const Absolus& a, const float* force, float k, float q,
                         float* moment) {
  float G[3];
  a.centre(G);
  const float r[3] = {etat[3] - G[0], etat[4] - G[1], etat[5] - G[2]};
  const float t = k * angle_vecteurs(r, force);
  moment[0] += k * t;
  le_long_de_la_chaine(o, KW_lead, t, q, 1);
  le_long_de_la_chaine(o, KW_follow, t, q, -1);
}

void COLLISION_ROTA(Objet* o, const float* etat, float k) {
  const float* speed = flottants(get_val_1(o->local, KW_speed), 3);
  float* add = flottants(get_val_3(o->local, KW_force, KW_rota, KW_add), 1);
  Absolus a;
  if (k == 0 || !speed || !add || !absolus(o, a)) return;
  float G[3];
  a.centre(G);
  const float r[3] = {etat[3] - G[0], etat[4] - G[1], etat[5] - G[2]};
  const float t = k * angle_vecteurs(speed, r);
  add[0] += t;
  le_long_de_la_chaine(o, KW_lead, t, 1, 1);
}

int COLLISION_VOL(Objet* o, const word* liste) {
  const float r1 = det_rayon(o, nullptr);
  float* T = get_matrix_vol(o);
  if (r1 < 0 || !T) {
    TRACE_FAIL("COLLISION_VOL()");
    return -1;
  }
  for (int i = 0; i < elements(liste); i++) {
    Objet* b = volume_numero(value_at(liste, i, 0));
    if (!b) {
      err_objet(KW_vol, liste, i, 0, nullptr);
      return -1;
    }
    if (b == o) continue;
    const float r2 = det_rayon(b, nullptr);
    const float* TB = get_matrix_vol(b);
    if (r2 < 0 || !TB) {
      TRACE_FAIL("COLLISION_VOL()");
      return -1;
    }
    float u[3] = {T[TR_TRAN] - TB[TR_TRAN], T[TR_TRAN + 1] - TB[TR_TRAN + 1], T[TR_TRAN + 2] - TB[TR_TRAN + 2]};
    const float D = std::sqrt(mat::scalaire(u, u));
    // Coincident centres give no direction: the volume is left where it is.
    if (D >= r1 + r2 || D <= 0) continue;
    for (int k = 0; k < 3; k++) T[TR_TRAN + k] = TB[TR_TRAN + k] + (r1 + r2) * u[k] / D;
  }
  return 0;
}

int EXEC_COLLISION_1(Objet* o) {
  CollProps c;
  lire_collision(o, c);
  return EXEC_COLLISION_1(o, c);
}

int EXEC_COLLISION_1(Objet* o, CollProps& c) {
  const word* poi = c[C_poi];
  const word* center = c[C_center];
  if (particule(o)) {
    if (poi && EXEC_COLLISION_PARTICLE(o, poi) < 0) return -1;
    if (center && EXEC_COLLISION_PARTICLE(o, center) < 0) return -1;
    return 0;
  }
  float* etat = (poi || center) ? flottants(c[C_state], COLL_STATE) : nullptr;
  if ((poi || center) && !etat) {
    if (!(etat = cree_floats(o, KW_collision, 0, COLL_STATE))) return -1;
    lire_collision(o, c);
  }
  // The values are found again after each test: a test may change the list.
  int contact = 0;
  if (poi && (contact = EXEC_COLLISION_POI(o, c[C_poi], etat, c)) < 0) return -1;
  if (center && c[C_center]) {
    const int r = EXEC_COLLISION_POI(o, c[C_center], flottants(c[C_state], COLL_STATE), c);
    if (r < 0) return -1;
    contact |= r;
  }
  // No plane of either set gave a contact in this image: no contact.
  if ((poi || center) && !contact)
    if (float* e = flottants(c[C_state], COLL_STATE)) e[0] = 0;
  if (const word* vols = c[C_vol]; vols && COLLISION_VOL(o, vols) < 0) return -1;
  etat = flottants(c[C_state], COLL_STATE);
  if (etat && etat[0] != 0 && (etat[1] != etat[6] || etat[2] != etat[7])) {
    etat[0] = 1;
    std::copy(etat + 1, etat + 6, etat + 6);
    COLLISION_ROTA(o, etat, COE_CHANGEMENT * value_at(c[C_force_coll], 0, 0));
  }
  return 0;
}

int EXEC_COLLISION() {
  CollProps c;
  for (Objet* o = chaine_classe(KW_vol)->next; o; o = o->next) {
    if (o->kind != KW_vol || !(o->valid > 0 || o->valid == -5) || !o->local) continue;
    lire_collision(o, c);
    if (c[C_lead]) continue;
    ZER_FORCE_ROTA(c);
    if (EXEC_COLLISION_1(o, c) < 0) {
      TRACE_FAIL("EXEC_COLLISION()");
      return -1;
    }
  }
  return 0;
}
