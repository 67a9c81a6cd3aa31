// bloc_0: any sequence of keywords is a property of any object. The
// object word with parameters selects the objects; the words before the
// last one form the key, so `col vol(1)` finds what `col vol(1)=1,0,0`
// stored. Parameters of key words address points, not keys.
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "scene/graphic.h"
#include "scene/property_rw.h"
#include "scene/scene_state.h"
#include "scene/selection.h"

namespace {

// The keys of the command, their codes in `codes` (lent by the caller).
Cles cles_de(word* s, const Selection& sel, std::vector<int>& codes) {
  Cles k;
  word* item = first_item(s);
  const int n = item_count(s) - 1;
  codes.clear();
  for (int i = 0; i < n; i++, item = next_item(item)) {
    if (i == 0) k.params = item_value(item);
    codes.push_back(item[2]);
  }
  k.codes = codes;
  k.sub = sel.sub;
  k.sub_value = sel.sub_value;
  k.width = sel.message_width;
  return k;
}

bool contient(word* s, int code) { return find_item(s, code) != nullptr; }

// What a write sets off: brushes and lights are recomputed, a field's
// function is recompiled, dependents inherit the property.
void apres_ecriture(word* s, Objet* o, const Cles& k) {
  const SceneEvents& ev = scene().events;
  if (contient(s, KW_brush) && ev.brush_changed) ev.brush_changed(o);
  if (contient(s, KW_field) && first_item(s)[2] == KW_func) {
    rem_chaine_privee(o->locals);
    o->locals = nullptr;
  }
  if (contient(s, KW_light) && ev.light_changed) ev.light_changed(o);
  if (o->hook && ev.inherit) ev.inherit(o, static_cast<int>(k.codes.size()), k.codes.data());
}

int propriete_objet(Objet* o, const Cles& k, const word* ob, word* st, const word* lim, word* s) {
  if (!o->local && !local_ini(o)) return -1;
  if (tag(o->local) != T_PROPRIETES) return 0;
  int slot = 0;
  const int n = static_cast<int>(k.codes.size());
  bloc p = get_propr_k(o->local, n, k.codes.data(), &slot);
  if (!ob) {
    if (!p) return 0;
    int r = get_bloc_b(k, p, st, lim);
    if (r == -12) err_dim_ev("bloc_0()");
    return r;
  }
  if (!p && (slot = cree_propriete_vide(o, k)) < 0) return -1;
  if (set_bloc_b(o, k, slot, ob) < 0) return -1;
  apres_ecriture(s, o, k);
  return 0;
}

}  // namespace

int resultat(word* s, const word* v, const word* lim) {
  if (!v) return build_nil(s);
  return set_result(s, v, lim);
}

int bloc_0(word* s, const word* ob, word* st, const word* lim) {
  if (st && build_nil(st, lim) < 0) return -12;
  if (item_count(s) == 1 && first_item(s)[2] == KW_matrix) return MATRIX_a(s, lim);
  Selection sel;
  if (lire_selection(s, sel, mot_objet) != WalkEnd::Objects || item_count(s) < 2)
    return ob ? 0 : build_nil(s);
  Pret<int> codes(scene().cles);
  const Cles k = cles_de(s, sel, codes.v);
  const int r = pour_chaque_objet(sel, [&](Objet* o) { return propriete_objet(o, k, ob, st, lim, s); });
  if (r < 0) return r;
  if (ob) return 0;
  return resultat(s, st, lim);
}
