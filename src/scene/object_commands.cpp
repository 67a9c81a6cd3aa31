// The object store's commands: duplication, clean-up, `ini` of a kind,
// names and numbers, user types, listing and printing of objects.
#include <cstring>
#include <string>
#include <vector>

#include "kernel/access.h"
#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/removal.h"
#include "scene/selection.h"
#include "scene/user_types.h"
#include "scene/volume.h"
#include "language/eval.h"

namespace {

// The first object word of the command and its parameters.
word* objet_item(word* s, bool (*objects)(int)) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (objects(item[2])) return item;
  return nullptr;
}

// The objects an object word names: its selection, or with no parameters
// every object of its kind.
std::vector<Objet*> objets_de(word* s, bool (*objects)(int)) {
  std::vector<Objet*> out;
  Selection sel;
  WalkEnd w = lire_selection(s, sel, objects);
  if (w == WalkEnd::Objects) {
    pour_chaque_objet(sel, [&](Objet* o) { out.push_back(o); });
    return out;
  }
  if (w == WalkEnd::Quiet) return out;
  if (word* item = objet_item(s, objects))
    for (Objet* o = chaine_classe(item[2])->next; o; o = o->next)
      if (o->kind == item[2] && (!sel.user_type || o->user_type == sel.user_type)) out.push_back(o);
  return out;
}

/* Duplication */

void usage_dup() {
  voir_mot(KW_dup);
  voir_texte("obj(id1,id2)\a\n");
}

// A copy of the object numbered or named by element i of the selector.
int duplique(Objet* source, const word* selector, int i) {
  int number = 0;
  char name[256] = "";
  int r = element_selection(selector, i, &number, name);
  if (r < 0) return -1;
  Objet* d = dup_objet(source);
  if (!d) return -1;
  libere_mem(d->name);
  d->name = nullptr;
  d->id = r == 0 ? number : 0;
  if (r == 1 && !(d->name = copie_nom(name))) {
    rem_objet(d);
    return -1;
  }
  Objet* head = source->head;
  if (!head) {
    for (head = source; head->prev; head = head->prev) {}
  }
  lie_en_queue(head, d);
  return 0;
}

// `dup poi vol(1,2,3)`: the vertices of volume 1 copied into volumes 2
// and 3, which keep their other properties; their derived data is stale.
int duplique_sommets(word* s, const Selection& sel, Objet* source) {
  const word* poi = get_val_1(source->local, KW_poi);
  if (!poi) {
    err_vide("DUP_b()", source);
    return -1;
  }
  const std::vector<Objet*> all = objets_selection(sel);
  for (size_t i = 1; i < all.size(); i++) {
    Objet* o = all[i];
    if (!o || o == source) continue;
    if (!o->local && !local_ini(o)) return -1;
    if (!set_propr_1(o, KW_poi, poi)) return -1;
    invalide_caches(o);
  }
  return build_nil(s);
}

/* Clean-up */

// The slot at word `at` taken out of the object's list.
int retire_slot(Objet* o, int at) {
  bloc old = o->local;
  bloc list = alloue_bloc(old[0] - 1);
  if (!list) return -1;
  std::memcpy(list + 1, old + 1, 3 * sizeof(word));
  list[2] = old[2] - 1;
  std::memcpy(list + 4, old + 4, static_cast<size_t>(at - 4) * sizeof(word));
  std::memcpy(list + at, old + at + 1, static_cast<size_t>(old[0] - at - 1) * sizeof(word));
  libere_valeur(handle_bloc(old[at]));
  o->local = list;
  libere_bloc(old);
  return 0;
}

// Of two properties with the same keys, the second goes; the search
// starts over after each removal.
void clean_obj(Objet* o) {
  for (bool again = true; again && o->local && tag(o->local) == T_PROPRIETES;) {
    again = false;
    const int end = 4 + o->local[2];
    for (int a = 4; a < end && !again; a++)
      for (int b = a + 1; b < end && !again; b++) {
        const word* pa = handle_bloc(o->local[a]);
        const word* pb = handle_bloc(o->local[b]);
        if (pa && pb && egal_keys(pa, pb)) again = retire_slot(o, b) == 0;
      }
  }
}

/* Names, numbers and types */

int lit_noms(word* s, const std::vector<Objet*>& objets) {
  std::string names;
  for (Objet* o : objets)
    if (o->name) names += (names.empty() ? "" : " ") + std::string(o->name);
  return build_text_or_nil(s, eval_limit(), names);
}

int lit_types(word* s, const std::vector<Objet*>& objets) {
  std::string names;
  for (Objet* o : objets) {
    const char* n = user_type_name(o->user_type);
    if (!n && o->user_type > 0 && o->user_type < NB_CODES) n = vocab().name[o->user_type];
    if (n) names += (names.empty() ? "" : " ") + std::string(n);
  }
  return build_text_or_nil(s, eval_limit(), names);
}

int renomme(Objet* o, const char* name) {
  char* copy = *name ? copie_nom(name) : nullptr;
  if (*name && !copy) return -1;
  libere_mem(o->name);
  o->name = copy;
  return 0;
}

// A property's keys and the shape of its value, on one line.
void voir_propriete(const word* p) {
  voir_texte("   ");
  for (int k = 0; k < p[3]; k++) voir_mot(p[5 + 2 * k]);
  const word* v = propr_val(p);
  voir_int2(": np = %d dimp = %d\n", np(v), dimp(v));
}

}  // namespace

int DUP_b(word* s, const word* ob, word* st, const word* lim) {
  (void)ob;
  (void)st;
  (void)lim;
  Selection sel;
  lire_selection(s, sel, mot_objet_rem);
  if (!sel.selector || nb_selection(sel.selector) < 2) {
    usage_dup();
    return -1;
  }
  Objet* source = sel.user_type ? get_objet_type(sel.chaine, sel.selector, 0, sel.user_type)
                                : get_objet_simple(sel.chaine, sel.selector, 0);
  if (!source) {
    err_objet(sel.object_code, sel.selector, 0, 0, nullptr);
    return -1;
  }
  const int n = nb_selection(sel.selector);
  if (find_item(s, KW_poi)) return duplique_sommets(s, sel, source);
  for (int i = 1; i < n; i++)
    if (duplique(source, sel.selector, i) < 0) {
      TRACE_FAIL("DUP_b()");
      return -1;
    }
  return build_nil(s);
}

bloc DUP_BLOC(Objet* o, const word* value, int code) {
  word header[4] = {4, value[1], value[2], value[3]};
  return set_propr_1(o, code, header);
}

int CLEAN_b(word* s, const word* ob, word* st, const word* lim) {
  (void)ob;
  (void)st;
  (void)lim;
  if (objet_item(s, mot_objet_rem)) {
    for (Objet* o : objets_de(s, mot_objet_rem)) clean_obj(o);
    return build_nil(s);
  }
  // The generic chain: objects that hold nothing go.
  for (Objet* o = chaine_generique()->next; o;) o = o->local ? o->next : rem_objet(o);
  return build_nil(s);
}

int INI_b(word* s, const word* ob, word* st, const word* lim) {
  word* item = first_item(s);
  bool kinds = false;
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) {
    if (!mot_objet_rem(item[2])) continue;
    if (item_value(item)) return bloc_0(s, ob, st, lim);
    rem_tous(chaine_classe(item[2]), item[2], 0);
    kinds = true;
  }
  return kinds ? build_nil(s) : bloc_0(s, ob, st, lim);
}

int NUM_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  const bool names = first_item(s)[2] == KW_name;
  std::vector<Objet*> objets = objets_de(s, mot_objet_rem);
  if (!ob) {
    if (names) return lit_noms(s, objets);
    std::vector<float> ids;
    for (Objet* o : objets) ids.push_back(static_cast<float>(o->id));
    return ids.empty() ? build_nil(s) : build_floats(s, lim, ids);
  }
  if (names) {
    if (tag(ob) != T_CHAR) {
      err_syntaxe(MES_COMMAND_USAGE, KW_name, " obj(id)=\"name\"\n");
      return -1;
    }
    for (size_t i = 0; i < objets.size(); i++) {
      char w[256];
      if (mot_i(text(ob), static_cast<int>(i), w, sizeof w) < 0 && mot_i(text(ob), 0, w, sizeof w) < 0) w[0] = 0;
      if (renomme(objets[i], w) < 0) return -1;
    }
    return 0;
  }
  const std::vector<float> ids = floats_of(ob);
  if (ids.empty()) {
    err_syntaxe(MES_COMMAND_USAGE, KW_number, " obj(id)=n\n");
    return -1;
  }
  for (size_t i = 0; i < objets.size(); i++) objet_numero(objets[i], entier(ids[i < ids.size() ? i : ids.size() - 1]));
  return 0;
}

int TYPE_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  (void)lim;
  const word* named = command_argument(s);
  // The object word's own selection, not filtered by the type being set.
  std::vector<Objet*> objets;
  word* item = objet_item(s, mot_objet_rem);
  if (!item) return bloc_0(s, ob, st, lim);
  const word* selector = item_value(item);
  Objet* head = chaine_classe(item[2]);
  if (selector) {
    for (int i = 0, n = nb_selection(selector); i < n; i++)
      if (Objet* o = get_objet_simple(head, selector, i)) objets.push_back(o);
  } else {
    for (Objet* o = head->next; o; o = o->next) objets.push_back(o);
  }
  const word* value = ob ? ob : named;
  if (!value) return lit_types(s, objets);
  if (tag(value) != T_CHAR) {
    err_syntaxe(MES_COMMAND_USAGE, KW_type, "(\"name\") obj(id)\n");
    return -1;
  }
  const int t = type_utilisateur_cree(text(value));
  for (Objet* o : objets) o->user_type = t;
  return ob ? 0 : build_nil(s);
}

// `list vol` prints each volume; `LIST vol(1)` and `status vol(1)` also
// the keys of every property and the shape of its value.
int LIST_b(word* s, const word* ob, word* st, const word* lim) {
  (void)ob;
  (void)st;
  const int first = first_item(s)[2];
  // Windows are listed though `rem` does not take them.
  auto listable = [](int code) { return code == KW_win || mot_objet_rem(code); };
  if (!objet_item(s, listable)) {
    if (first == KW_status) return a_status(s, lim);
    err_syntaxe(MES_COMMAND_USAGE, first, "func, var, (\"define\") or an object word: vol, vol(id)...\n");
    return -1;
  }
  const bool full = first != KW_list;
  for (Objet* o : objets_de(s, listable)) {
    voir_objet(o);
    if (!full || !o->local || tag(o->local) != T_PROPRIETES) continue;
    for (int i = 0; i < o->local[2]; i++)
      if (const word* p = handle_bloc(o->local[4 + i])) voir_propriete(p);
  }
  return build_nil(s);
}

int b_status(word* s, const word* ob, word* st, const word* lim) { return LIST_b(s, ob, st, lim); }

// `print col vol(1)`: the rest of the command is run, and its value
// printed.
int PRINT_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  if (item_count(s) < 2) return PRINT_a(s, lim);
  word* first = first_item(s);
  const int cut = first[0];
  std::memmove(first, first + cut, static_cast<size_t>(s[0] - 4 - cut) * sizeof(word));
  s[0] -= cut;
  s[2] -= 1;
  int r = evaluer_1(s, ob, s + s[0], lim);
  if (r < 0) return r;
  if (print_value(s) < 0) return -1;
  return build_nil(s);
}
