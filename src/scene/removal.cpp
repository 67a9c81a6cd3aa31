// `rem`: objects by kind and selector, properties by key.
#include "scene/removal.h"

#include <vector>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/scene_state.h"
#include "scene/selection.h"
#include "scene/vol_local.h"

namespace {

bool est_fonction(const Objet* o) {
  return o->kind == KW_func || o->subkind == KW_func || o->kind2 == KW_func;
}

// Lights and menus hold resources outside their record.
void libere_ressources(Objet* o) {
  const SceneEvents& ev = scene().events;
  if (o->kind == KW_light && ev.light_release) ev.light_release(o->id);
  if (o->kind == KW_menu && ev.menu_release) ev.menu_release(o);
}

// Removes, for each element of the selector, the first object it finds,
// and goes over the selector again until nothing is found: two objects
// bearing one name both go.
void rem_selection(const Selection& sel) {
  for (bool found = true; found;) {
    found = false;
    const int n = nb_objets(sel);
    for (int i = 0; i < n; i++) {
      Objet* o = objet_selection(sel, i);
      if (!o) continue;
      libere_ressources(o);
      rem_objet(o);
      found = true;
    }
  }
}

// `rem vol(1)`, `rem vol`, `rem type("chair") object`.
int REM_OBJECT(word* s) {
  Selection sel;
  WalkEnd w = lire_selection(s, sel, mot_objet_rem);
  if (w == WalkEnd::Quiet) return build_nil(s);
  if (sel.user_type == 0 && arg_of(s, KW_type))
    return build_nil(s);  // an unknown type removes nothing
  int kind = sel.object_code;
  if (!kind) {
    // An object word without parameters names its whole chain.
    word* item = first_item(s);
    for (int i = 0; i < item_count(s) && !kind; i++, item = next_item(item))
      if (mot_objet_rem(item[2])) kind = item[2];
  }
  if (!kind) {
    err_warning("REM_OBJECT_b");
    return -1;
  }
  if (!sel.selector || nb_selection(sel.selector) == 0)
    rem_tous(chaine_classe(kind), kind, sel.user_type);
  else
    rem_selection(sel);
  return build_nil(s);
}

// The keys of `rem col vol(1)`: every word but `rem` and the object word.
int rem_propriete_objets(word* s, int code) {
  Selection sel;
  if (lire_selection(s, sel, mot_objet) != WalkEnd::Objects) return build_nil(s);
  std::vector<int> keys;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) {
    if (item[2] == code || item[2] < 0) continue;
    if (mot_objet(item[2]) && item_value(item)) continue;
    keys.push_back(item[2]);
  }
  if (keys.empty()) return build_nil(s);
  pour_chaque_objet(sel, [&](Objet* o) {
    if (o->local && tag(o->local) == T_PROPRIETES) rem_propr_k(o, static_cast<int>(keys.size()), keys.data());
  });
  return build_nil(s);
}

}  // namespace

Objet* rem_objet_simple(Objet* o) {
  if (!o) return nullptr;
  if (est_fonction(o)) return o->next;
  return rem_objet(o);
}

void rem_chaine(Objet* head, const word* selector) {
  if (!selector) {
    for (Objet* o = head->next; o;) {
      if (o->kind == -1056) o->child = nullptr;
      o = rem_objet_simple(o);
    }
    return;
  }
  const int n = nb_selection(selector);
  for (int i = 0; i < n; i++)
    if (Objet* o = get_objet_simple(head, selector, i)) rem_objet_simple(o);
}

int rem_tous(Objet* head, int kind, int user_type) {
  int count = 0;
  for (Objet* o = head->next; o;) {
    if ((kind && o->kind != kind) || (user_type && o->user_type != user_type)) {
      o = o->next;
      continue;
    }
    libere_ressources(o);
    o = rem_objet(o);
    count++;
  }
  return count;
}

void rem_kind(int classe, int kind) { rem_tous(chaine_de(classe, kind), kind, 0); }

void rem_objet_id(int kind, int id) {
  Objet* head = chaine_classe(kind);
  for (Objet* o = head->next; o;) {
    if (o->kind != kind || o->id != id) {
      o = o->next;
      continue;
    }
    if (kind == KW_vol && scene().events.vol_release) scene().events.vol_release(o);
    o = rem_objet(o);
  }
}

int REM_PROPRIETE(word* s, int code) { return rem_propriete_objets(s, code); }

int REM_b(word* s, const word* ob, word* st, const word* lim) {
  (void)ob;
  (void)st;
  (void)lim;
  // `rem vol(1)`, and `rem type("chair") object`.
  word* item = next_item(first_item(s));
  if (item_count(s) > 2 && item[2] == KW_local) return REM_LOCALE(s);
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    if (mot_objet_rem(item[2])) return REM_OBJECT(s);
    if (item[2] != KW_type) break;
  }
  return REM_PROPRIETE(s, KW_rem);
}
