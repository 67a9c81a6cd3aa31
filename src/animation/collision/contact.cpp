// The contacts of a volume with its planes: a new contact reflects the
// speed and moves the volume out; a resting one puts the vertex back on
// the plane and clears the speed.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/call.h"
#include "language/functions.h"
#include "scene/matrix.h"
#include "scene/volume.h"

namespace {

constexpr float NORMALE_DEFAUT[3] = {0, -1, 0};

void debug_contact(const float* etat, int vertex, int plan, const float C[3]) {
  voir_int("collision = %d\n", static_cast<int>(etat[0]));
  char b[160];
  std::snprintf(b, sizeof b, "old = (%d %d) (%f %f %f\n", static_cast<int>(etat[6]), static_cast<int>(etat[7]),
                static_cast<double>(etat[8]), static_cast<double>(etat[9]), static_cast<double>(etat[10]));
  voir_texte(b);
  std::snprintf(b, sizeof b, "new = (%d %d) (%f %f %f\n", vertex, plan, static_cast<double>(C[0]),
                static_cast<double>(C[1]), static_cast<double>(C[2]));
  voir_texte(b);
}

// `collision func`: the function named, called with the volume's number.
int appelle_func(Objet* o, const word* nom) {
  const char* n = value_text(nom);
  Objet* f = n ? get_fonction(n) : nullptr;
  if (!f) {
    err_objet(KW_func, nom, 0, 0, nullptr);
    return -1;
  }
  const float id = static_cast<float>(o->id);
  return run_function_apart(f, &id);
}

}  // namespace

int EXEC_COLLISION_POI(Objet* o, const word* plans, float* etat, CollProps& c) {
  const int n = elements(plans) / 3;
  const float restitution = value_at(c[C_coe], 0, 0);
  float* speed = flottants(c[C_speed], 3);
  if (!speed && (speed = cree_floats(o, KW_speed, 0, 3))) {
    // The list grew: its values are found again.
    lire_collision(o, c);
    etat = flottants(c[C_state], COLL_STATE);
  }
  float* T = get_matrix_vol(o);
  Absolus a;
  if (!speed || !T) {
    TRACE_FAIL("EXEC_COLLISION_POI()");
    return -1;
  }
  if (!etat || !absolus(o, a, c) || n < 1) return 0;
  a.place(collision_state().places);
  const int s = static_cast<int>(etat[0]);
  const word* normales = c[C_normal];
  const int nn = elements(normales) / 3;
  const word* liste = c[C_vertex];
  const bool suit = value_at(c[C_follow], 0, 0) != 0;
  const bool debug = value_at(c[C_debug], 0, 0) != 0;
  const float* force = flottants(c[C_force], 3);
  float* force_rota = flottants(c[C_force_rota], 1);
  const word* cf = c[C_force_coll];
  bool contact = false, appele = false;
  for (int j = 0; j < n; j++) {
    float N[3], Q[3], P[3], C[3];
    for (int k = 0; k < 3; k++) {
      N[k] = nn ? value_at(normales, (j % nn) * 3 + k, 0) : NORMALE_DEFAUT[k];
      Q[k] = value_at(plans, j * 3 + k, 0);
    }
    const int sommet = MAX_POI_ANC(a, liste, N, P);
    if (!sommet) continue;
    const float v[3] = {Q[0] - P[0], Q[1] - P[1], Q[2] - P[2]};
    if (mat::scalaire(v, N) <= 0 || !coupe_plan(P, speed, Q, N, C)) continue;
    contact = true;
    const int plan = j + 1;
    if (debug) debug_contact(etat, sommet, plan, C);
    float K[3] = {0, 0, 0};
    if (s == 0 || sommet != static_cast<int>(etat[6]) || plan != static_cast<int>(etat[7])) {
      if (suit) K[1] = etat[9] - P[1];
      etat[0] = 1, etat[1] = static_cast<float>(sommet), etat[2] = static_cast<float>(plan);
      std::copy(C, C + 3, etat + 3);
      std::copy(C, C + 3, etat + 8);
      if (force && force_rota && value_at(cf, 0, 0) != 0)
        EXEC_COLLISION_ROTA(o, etat, a, force, value_at(cf, 0, 0), value_at(cf, 1, 0), force_rota);
      if (restitution <= 0.0001f) {
        std::fill(speed, speed + 3, 0.0f);
      } else {
        // The speed reflected on the plane, then damped by the restitution;
        // the volume is moved out by it once, and once more by its share.
        const float d = 2 * mat::scalaire(speed, N);
        for (int k = 0; k < 3; k++) speed[k] = (speed[k] - d * N[k]) * restitution;
        for (int k = 0; k < 3; k++) K[k] += speed[k] + restitution * speed[k];
      }
      if (const word* f = c[C_func]) {
        if (appelle_func(o, f) < 0) {
          TRACE_FAIL("EXEC_COLLISION_POI()");
          return -1;
        }
        // The function may have rewritten any property of the volume: the
        // state and the block are found again, and the planes left wait
        // for the next image.
        appele = true;
        lire_collision(o, c);
        etat = flottants(c[C_state], COLL_STATE);
        T = get_matrix_vol(o);
        if (!etat || !T) return 1;
      }
    } else {
      for (int k = 0; k < 3; k++) K[k] = (suit ? etat[8 + k] : C[k]) - P[k];
      etat[0] = 2;
      std::fill(speed, speed + 3, 0.0f);
    }
    if (bloc copie = c[C_copy]; copie && np(copie) > 0) np(copie) = -1;
    for (int k = 0; k < 3; k++) T[TR_TRAN + k] += K[k];
    etat[6] = etat[1], etat[7] = etat[2];
    if (appele) break;
  }
  return contact ? 1 : 0;
}
