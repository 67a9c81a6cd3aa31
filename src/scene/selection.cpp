#include "scene/selection.h"

#include <string>
#include <unordered_map>

#include "kernel/chains.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "scene/lookup.h"
#include "scene/scene_state.h"
#include "scene/user_types.h"

bool mot_objet(int code) {
  switch (code) {
    case KW_brush: case KW_device: case KW_field: case KW_fog: case KW_genetic: case KW_image:
    case KW_light: case KW_memory: case KW_menu: case KW_network: case KW_object: case KW_traj:
    case KW_view: case KW_vol: case KW_scale: case KW_win:
      return true;
    default:
      return false;
  }
}

bool mot_objet_rem(int code) {
  if (code == KW_win) return false;
  return mot_objet(code) || code == KW_audio || code == KW_message || code == KW_stock;
}

bool mot_sous_element(int code) {
  switch (code) {
    case KW_fac: case KW_lattice: case KW_neuron: case KW_pixel: case KW_poi: case KW_vertex:
      return true;
    default:
      return false;
  }
}

bool mot_qualificatif(int code) {
  switch (code) {
    case KW_func: case KW_list: case KW_ext: case KW_foc: case KW_force: case KW_mass: case KW_meta:
    case KW_roll: case KW_spring:
      return true;
    default:
      return false;
  }
}

int type_utilisateur(const char* name) {
  if (!name || !*name) return 0;
  int voc = 0, code = 0;
  if (cherche_mot(name, &voc, &code) == 0) return code;
  return user_type_find(name);
}

int type_utilisateur_cree(const char* name) {
  int t = type_utilisateur(name);
  return t ? t : user_type_make(name);
}

namespace {

// `message` after `col`, `frame` or `rectangle` carries three values,
// after `poi` two; elsewhere it is the object word of message objects.
int largeur_message(int previous) {
  switch (previous) {
    case KW_col: case KW_frame: case KW_rectangle: return 3;
    case KW_poi: return 2;
    default: return 0;
  }
}

}  // namespace

WalkEnd lire_selection(word* s, Selection& sel, bool (*objects)(int)) {
  sel = Selection{};
  word* item = first_item(s);
  int previous = -1;
  for (int i = 0; i < item_count(s); i++, previous = item[2], item = next_item(item)) {
    const int code = item[2];
    const word* value = item_value(item);
    if (item[1] > 1) return WalkEnd::Quiet;
    if (code == KW_message && largeur_message(previous)) {
      sel.message_width = largeur_message(previous);
      sel.object_code = KW_message;
      sel.chaine = chaine_de(0, KW_message);
      sel.selector = value;
      continue;
    }
    if (objects(code) || code == KW_message) {
      if (!value) continue;  // a key word, not a selection
      sel.object_code = code;
      sel.chaine = chaine_classe(code);
      sel.selector = value;
      continue;
    }
    if (code == KW_type && value && tag(value) == T_CHAR) {
      sel.user_type = type_utilisateur(text(value));
      if (!sel.user_type) return WalkEnd::Nil;
      sel.chaine = chaine_classe(KW_object);
      sel.object_code = KW_object;
      continue;
    }
    if (code == KW_see) {
      sel.fixed = kernel().Text_courant;
      return sel.fixed ? WalkEnd::Objects : WalkEnd::Nil;
    }
    if (code == KW_sphere) {
      sel.fixed = scene().sphere;
      return sel.fixed ? WalkEnd::Objects : WalkEnd::Nil;
    }
    if (mot_sous_element(code)) {
      sel.sub = code;
      sel.sub_value = value;
    } else if (mot_qualificatif(code)) {
      sel.code2 = code;
      continue;
    }
    sel.last = code;
    sel.last_value = value;
  }
  return sel.selector ? WalkEnd::Objects : WalkEnd::Nil;
}

int nb_objets(const Selection& sel) {
  if (sel.fixed) return 1;
  return nb_selection(sel.selector);
}

Objet* objet_selection(const Selection& sel, int i) {
  if (sel.fixed) return sel.fixed;
  if (sel.user_type) return get_objet_type(sel.chaine, sel.selector, i, sel.user_type);
  return get_objet_simple(sel.chaine, sel.selector, i);
}

namespace {

const char* sans_marque(const char* name) {
  return name[0] == '!' || name[0] == '.' || name[0] == '=' || name[0] == '>' ? name + 1 : name;
}

}  // namespace

std::vector<Objet*> objets_selection(const Selection& sel) {
  const int n = nb_objets(sel);
  std::vector<Objet*> out(static_cast<size_t>(n), nullptr);
  if (sel.fixed || n < SELECTION_EN_UNE_MARCHE) {
    for (int i = 0; i < n; i++) out[static_cast<size_t>(i)] = objet_selection(sel, i);
    return out;
  }
  // The first record of each number and of each name, in chain order.
  std::unordered_map<int, Objet*> by_number;
  std::unordered_map<std::string, Objet*> by_name;
  Objet* unnumbered = nullptr;
  for (Objet* o = sel.chaine->next; o; o = o->next) {
    if (sel.user_type && o->user_type != sel.user_type) continue;
    if (o->id == 0 && !unnumbered) unnumbered = o;
    if (o->id != 0) by_number.emplace(o->id, o);
    if (o->name) by_name.emplace(sans_marque(o->name), o);
  }
  for (int i = 0; i < n; i++) {
    int number = 0;
    char name[256];
    const int r = element_selection(sel.selector, i, &number, name);
    if (r == 0) {
      if (number == 0) {
        out[static_cast<size_t>(i)] = unnumbered;
      } else if (auto it = by_number.find(number); it != by_number.end()) {
        out[static_cast<size_t>(i)] = it->second;
      }
    } else if (r == 1) {
      if (auto it = by_name.find(name); it != by_name.end()) out[static_cast<size_t>(i)] = it->second;
    }
  }
  return out;
}
