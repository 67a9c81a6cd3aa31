// `dynamic` followed by a word of its own, and `mass image`:
//   `dynamic image(ids)=v`, `dynamic brush(ids)=v`, `dynamic audio(ids)=v`
//      the objects' `dynamic` value; an image becomes of type dynamic when
//      v is above 0 and stops being so otherwise (the step leaves out an
//      object whose value is at or under 0). Read, each object's value:
//      an image of type dynamic with no value of its own answers 2, the
//      default; an object with neither gets message 103.
//   `dynamic mouse`: the pointer as the dynamics sees it at each image:
//      x, y (pixels from the window's centre, y up), its speed and its
//      acceleration in pixels an image; zeros without a window.
//   `mass image(ids)=m`: the images' mass, which makes them dynamic; read,
//      their masses (message 101 for an image with none).
#include <vector>

#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/dyn_state.h"
#include "animation/dynamics/dynamics.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "scene/graphic.h"
#include "scene/image_object.h"
#include "scene/scene_state.h"
#include "scene/vol_commands.h"

namespace {

// Writes `code` = v on each object named, or reads it (message `absent`
// for an object without it). `marque` is called on each written object
// with the value; `defaut` gives a value for an object without one, or
// false.
template <class Marque, class Defaut>
int valeur_des_objets(word* s, const word* ob, const word* lim, int code, int absent, Marque&& marque,
                      Defaut&& defaut) {
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets, ob)) return 0;
  std::vector<float> lu;
  for (Objet* o : objets) {
    if (ob) {
      if (elements(ob) < 1) continue;
      const float v = value_at(ob, 0, 0);
      word w[5] = {5, T_FLOAT, 1, 1, fw(v)};
      if (!set_propr_1(o, code, w)) return -1;
      marque(o, v);
      continue;
    }
    float v = 0;
    if (const word* x = get_val_1(o->local, code); elements(x) > 0) v = value_at(x, 0, 0);
    else if (!defaut(o, &v)) return manque_propriete(o, absent);
    lu.push_back(v);
  }
  return ob ? 0 : build_floats(s, lim, lu, 1);
}

int DYNAMIC_TYPE(word* s, const word* ob, const word* lim) {
  return valeur_des_objets(
      s, ob, lim, KW_dynamic, 103,
      [](Objet* o, float v) {
        if (o->kind == KW_image) set_type_dynamique(o, v > 0);
      },
      [](const Objet* o, float* v) {
        if (o->kind != KW_image || !image_dynamique(o)) return false;
        *v = 2.0f;
        return true;
      });
}

int DYNAMIC_MOUSE(word* s, const word* lim) {
  const DynState& d = dynamique();
  return build_floats(s, lim, std::vector<float>(d.souris, d.souris + 6), 2);
}

// `dynamic` with a second word; alone it is the keyword's value (read in
// the dispatch).
int DYNAMIC_COM(word* s, const word* ob, word* st, const word* lim) {
  switch (second_word(s)) {
    case KW_image: case KW_brush: case KW_audio: return DYNAMIC_TYPE(s, ob, lim);
    case KW_mouse: return DYNAMIC_MOUSE(s, lim);
    default: return bloc_0(s, ob, st, lim);
  }
}

}  // namespace

int MASS_IMAGE(word* s, const word* ob, const word* lim) {
  return valeur_des_objets(
      s, ob, lim, KW_mass, 101, [](Objet* o, float) { set_type_dynamique(o); },
      [](const Objet*, float*) { return false; });
}

void DynState::echantillonne_souris() {
  const ScenePointer& p = scene().pointeur;
  if (!p.on) {
    for (float& x : souris) x = 0;
    vu = false;
    return;
  }
  const float x = p.x, y = -p.y;
  const float vx = vu ? x - souris[0] : 0, vy = vu ? y - souris[1] : 0;
  const float s[6] = {x, y, vx, vy, vu ? vx - souris[2] : 0, vu ? vy - souris[3] : 0};
  for (int a = 0; a < 6; a++) souris[a] = s[a];
  vu = true;
}

DynState& dynamique() {
  static DynState d;
  return d;
}

void install_dynamic_commands() { register_graphic_handler({KW_dynamic}, DYNAMIC_COM); }
