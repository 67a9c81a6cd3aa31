// Property commands whose keys are fixed by the word that calls them
// rather than by the whole command: a keyword's own current values, and
// one-, two- and three-key properties on selected objects.
#include <algorithm>
#include <cstring>
#include <vector>

#include "kernel/access.h"
#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/selection.h"

namespace {

struct Cible {
  Objet* head = nullptr;
  const word* selector = nullptr;
};

// The last object word with parameters among `objects`, skipping the
// fixed keys.
Cible cible(word* s, bool (*objects)(int)) {
  Cible c;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (objects(item[2]) && item_value(item)) {
      c.head = chaine_classe(item[2]);
      c.selector = item_value(item);
    }
  return c;
}

// Reads or writes the property with these keys on every selected object.
// A write of a value of the stored size, or shorter, goes in place with
// the rest zeroed; `remplace` replaces a value of another size whole.
int propriete_cles(word* s, word* st, const word* lim, const word* ob, const std::vector<int>& keys,
                   bool (*objects)(int)) {
  const Cible c = cible(s, objects);
  if (build_nil(st, lim) < 0) return -12;
  const int n = static_cast<int>(keys.size());
  for (int i = 0, count = nb_selection(c.selector); i < count; i++) {
    Objet* o = get_objet_simple(c.head, c.selector, i);
    if (!o) continue;
    if (!o->local && !local_ini(o)) return -1;
    int slot = 0;
    bloc p = get_propr_k(o->local, n, keys.data(), &slot);
    if (!ob) {
      if (!p) continue;
      const word* v = propr_val(p);
      if (tag(v) == T_CHAR) {
        if (set_result(st, v, lim) < 0) return -12;
        continue;
      }
      if (tag(st) != T_FLOAT) {
        build_head(st, 4, T_FLOAT, 0, std::max(dimp(v), 1));
      }
      if (val_append(st, lim, v) < 0) return -12;
      continue;
    }
    if (tag(ob) == T_NIL) continue;
    bloc v = p ? propr_val(p) : nullptr;
    const bool en_place = v && tag(v) == tag(ob) && (tag(v) == T_FLOAT || tag(v) == T_LONG) &&
                          elements(ob) <= elements(v) && dimp(v) > 0;
    if (en_place) {
      const int k = elements(ob);
      std::memcpy(v + 4, ob + 4, static_cast<size_t>(k) * sizeof(word));
      std::fill(v + 4 + k, v + 4 + elements(v), 0);
      continue;
    }
    if (p) rem_propr_k(o, n, keys.data());
    bloc q = ajoute_propriete(o, 2 * n + 4 + size(ob));
    if (!q) return -1;
    q[0] = 2 * n + 4 + size(ob);
    propr_key_k(q, n, keys.data());
    copie_bloc(propr_val(q), ob);
  }
  if (ob) return 0;
  return resultat(s, st, lim);
}

bool brush_ou_vol(int code) { return code == KW_brush || code == KW_vol; }
bool image_seule(int code) { return code == KW_image; }

// Key words of a command: the words that are not object words.
std::vector<int> mots_cles(word* s, bool (*objects)(int), size_t most) {
  std::vector<int> keys;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s) && keys.size() < most; i++, item = next_item(item))
    if (item[2] >= 0 && !objects(item[2])) keys.push_back(item[2]);
  return keys;
}

}  // namespace

int set_get_val_com(word* s, const word* lim, const word* ob) {
  const int code = first_item(s)[2];
  int count = 0;
  float* values = val_com(code / KW_PER_VOC, code, &count);
  if (!values) return -1;
  const word* v = ob ? ob : command_argument(s);
  if (v && tag(v) == T_FLOAT) {
    const int k = std::min(elements(v), count);
    for (int i = 0; i < count; i++) values[i] = i < k ? getf(v, i) : 0.0f;
  }
  if (ob) return 0;
  return build_floats(s, lim, count, values);
}

int COM1_COM2_OBJ(word* s, word* st, const word* lim, const word* ob, int code1, int code2) {
  return propriete_cles(s, st, lim, ob, {code1, code2}, mot_objet);
}

int SET_GET_BLOC(word* s, word* st, const word* lim, const word* ob) {
  return propriete_cles(s, st, lim, ob, {first_item(s)[2]}, mot_objet);
}

int SIMPLE_PROPERTY_OBJ(word* s, word* st, const word* lim, const word* ob) {
  std::vector<int> keys = mots_cles(s, brush_ou_vol, 2);
  if (keys.empty()) return build_nil(s);
  return propriete_cles(s, st, lim, ob, keys, brush_ou_vol);
}

int PROPR_OBJ(word* s, word* st, const word* lim, const word* ob) {
  if (find_item(s, KW_brush)) return bloc_0(s, ob, st, lim);
  std::vector<int> keys = mots_cles(s, image_seule, 3);
  if (keys.empty()) return build_nil(s);
  return propriete_cles(s, st, lim, ob, keys, image_seule);
}
