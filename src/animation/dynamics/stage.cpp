// DYNAMIC_b, the stage: the families of objects in their order (fields,
// images of type dynamic, lights, brushes, objects, volumes), then the
// views and the particles. The pointer's place is taken once an image.
#include "animation/dynamics/dynamics.h"
#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/dyn_state.h"
#include "animation/dynamics/particles.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/image_object.h"
#include "scene/vol_local.h"
#include "scene/volume.h"

namespace {

// Left out of every list: `displ` at 0, or under -3 and not -5 (an
// image's displ is its Visible word: it is stepped while shown).
bool saute(Objet* o) {
  const int d = mot_displ(o);
  return d == 0 || (d < -3 && d != -5);
}

template <class F>
int DYNAMIC_LIST(int kind, F&& f) {
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
    if (o->kind == kind && !saute(o) && f(o) < 0) {
      TRACE_FAIL("DYNAMIC_LIST()");
      return -1;
    }
  return 0;
}

// A scene object other than a volume is stepped when its code word is
// free or already holds a transformation block.
int pas_objet(Objet* o) {
  if (o->code && (o->code[0] != 4 + TRANSF_SIZE || o->code[1] != T_FLOAT)) return 0;
  return DYNAMIC_2(o);
}

// One value of a view moved by its force: `force X` (n values and a
// damping), `speed X`, `acc X`, with r the inverse of the view's mass.
int pas_vue_valeur(Objet* v, int code, int n, float r) {
  float* x = flottants(get_val_1(v->local, code), n);
  const float* f = flottants(get_val_2(v->local, KW_force, code), n);
  if (!x || !f) return 0;
  float* s = flottants(get_val_2(v->local, KW_speed, code), n);
  if (!s) s = flottants(set_val_2(v, KW_speed, code, n), n);
  float* a = flottants(get_val_2(v->local, KW_acc, code), n);
  if (!a) a = flottants(set_val_2(v, KW_acc, code, n), n);
  s = flottants(get_val_2(v->local, KW_speed, code), n);
  if (!s || !a) {
    TRACE_FAIL("DYNAMIC_VIEW()");
    return -1;
  }
  const float c = value_at(get_val_2(v->local, KW_force, code), n, 0);
  for (int i = 0; i < n; i++) {
    a[i] = c * s[i] + r * f[i];
    s[i] += a[i];
    x[i] += s[i];
  }
  return 0;
}

int DYNAMIC_VIEW(Objet* v) {
  const float m = value_at(get_val_1(v->local, KW_mass), 0, 0);
  if (m <= 0 || !v->local) return 0;
  const struct {
    int code, n;
  } valeurs[] = {{KW_eye, 3}, {KW_aim, 3}, {KW_foc, 1}, {KW_roll, 1}};
  for (const auto& x : valeurs)
    if (pas_vue_valeur(v, x.code, x.n, 1 / m) < 0) return -1;
  return 0;
}

}  // namespace

int DYNAMIC_b() {
  // Each field's first local function runs before any force is read.
  if (DYNAMIC_LIST(KW_field, [](Objet* f) { return f->child ? exec_locales(f, 1) : 0; }) < 0) return -1;
  dynamique().echantillonne_souris();
  if (DYNAMIC_LIST(KW_image, DYNAMIC_IMAGE) < 0) return -1;
  if (DYNAMIC_LIST(KW_light, pas_objet) < 0) return -1;
  if (Yes(KW_brush) > 0 && DYNAMIC_LIST(KW_brush, pas_objet) < 0) return -1;
  if (Yes(KW_object) > 0 && DYNAMIC_LIST(KW_object, pas_objet) < 0) return -1;
  if (DYNAMIC_LIST(KW_vol, DYNAMIC_2) < 0) return -1;
  if (DYNAMIC_LIST(KW_view, DYNAMIC_VIEW) < 0) return -1;
  if (Yes(KW_particle) > 0 && inc_particule() < 0) return -1;
  return 0;
}
