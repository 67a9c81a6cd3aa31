#include "scene/vol_build.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "kernel/access.h"
#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "scene/image_object.h"
#include "scene/selection.h"
#include "scene/transform.h"

namespace {

using Words = std::vector<word>;

// The property with one key and a value of `v` words: replaced whole, in
// the same slot, or added.
int pose(Objet* o, int code, const word* v) { return set_propr_1(o, code, v) ? 0 : -1; }

// `n` vertices from `values` (3 each, missing coordinates 0) appended to
// `poi`, whose own stride is kept.
int ajoute_sommets(Objet* o, int n, const float* values, int count) {
  const word* old = get_val_1(o->local, KW_poi);
  const int d = old ? std::max(dimp(old), 1) : 3;
  // Built in a vector, then copied into the property.
  if (!bloc_possible((old ? size(old) : 4) + static_cast<double>(n) * d, 3, "ajoute_sommets()")) return -1;
  Words v;
  if (old)
    v.assign(old, old + size(old));
  else
    v = {4, T_FLOAT, 0, 3};
  for (int i = 0; i < n; i++)
    for (int c = 0; c < d; c++) {
      const int at = 3 * i + c;
      v.push_back(fw(c < 3 && at < count ? values[at] : 0.0f));
    }
  v[0] = static_cast<word>(v.size());
  v[2] += n;
  return pose(o, KW_poi, v.data());
}

Words facette(const std::vector<int>& numbers) {
  Words f{static_cast<word>(4 + numbers.size()), T_LONG, 1, static_cast<word>(numbers.size())};
  f.insert(f.end(), numbers.begin(), numbers.end());
  return f;
}

std::vector<int> entiers(const word* v) {
  std::vector<int> out;
  if (tag(v) == T_FLOAT)
    for (int i = 0; i < elements(v); i++) out.push_back(entier(getf(v, i)));
  else if (tag(v) == T_LONG)
    for (int i = 0; i < elements(v); i++) out.push_back(v[4 + i]);
  return out;
}

// The facet list with `f` appended, or put in place of facet k.
int ecrit_facette(Objet* o, int code, const Words& f, int k) {
  const word* old = get_val_1(o->local, code);
  Words list{4, T_HYBRIDE, 0, 0};
  if (old && tag(old) == T_HYBRIDE) list.assign(old, old + size(old));
  if (k == 0) {
    list.insert(list.end(), f.begin(), f.end());
    list[2] += 1;
    if (Yes(KW_edit) > 0) voir_int("+%d\n", list[2]);
  } else if (k >= 1 && k <= list[2]) {
    const word* part = sous_bloc(list.data(), k - 1);
    const long at = part - list.data();
    list.erase(list.begin() + at, list.begin() + at + part[0]);
    list.insert(list.begin() + at, f.begin(), f.end());
  } else {
    voir_int("%d ", k);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  list[0] = static_cast<word>(list.size());
  return pose(o, code, list.data());
}

// A simple property fitted to its keyword's size: long values cut, short
// ones padded with zeros. `envelope`, `meta` and `vertex` add a further
// property under the same key each time.
int propriete_simple(Objet* o, int code, const word* value) {
  Words v(value, value + size(value));
  const int dim = Dim_propriete(code);
  if (dim && (tag(value) == T_FLOAT || tag(value) == T_LONG)) {
    v.resize(4 + dim, 0);
    v[0] = 4 + dim;
    v[2] = 1;
    v[3] = dim;
  }
  if (code == KW_envelope || code == KW_meta || code == KW_vertex) {
    bloc p = ajoute_propriete(o, 6 + v[0]);
    if (!p) return -1;
    p[0] = 6 + v[0];
    propr_key_1(p, code);
    std::memcpy(propr_val(p), v.data(), v.size() * sizeof(word));
    return 0;
  }
  return pose(o, code, v.data());
}

}  // namespace

int Dim_propriete(int code) { return code >= 0 && code < NB_CODES ? std::max(vocab().dim[code], 0) : 0; }

int ajou_fac(Objet* o, int code, const word* value, int facet) {
  if (tag(value) == T_HYBRIDE) {
    for (int i = 0; i < np(value); i++)
      if (const word* part = sous_bloc(value, i); part && ajou_fac(o, code, part, facet ? facet + i : 0) < 0) return -1;
    return 0;
  }
  std::vector<int> numbers = entiers(value);
  if (numbers.empty()) return 0;
  return ecrit_facette(o, code, facette(numbers), facet);
}

int ajou_propriete_simple(Objet* o, const word* item) {
  const int code = item[2];
  const word* v = item_value(item);
  if (code == KW_particle) o->subkind = KW_particle;
  if (!v) return 0;
  // A mass makes an image dynamic.
  if (code == KW_mass && o->kind == KW_image) set_type_dynamique(o);
  if (!o->local && !local_ini(o)) return -1;
  switch (code) {
    case KW_name: {
      if (tag(v) != T_CHAR) return 0;
      char* copy = copie_nom(text(v));
      libere_mem(o->name);
      o->name = copy;
      return 0;
    }
    case KW_NP: {
      std::vector<int> n = entiers(v);
      return n.empty() || n[0] <= 0 ? 0 : ajoute_sommets(o, n[0], nullptr, 0);
    }
    case KW_NF: {
      std::vector<int> n = entiers(v);
      if (n.empty() || n[0] <= 0) return 0;
      if (!bloc_possible(4.0 + n[0], 4, "NF")) return -1;
      std::vector<int> numbers(static_cast<size_t>(n[0]));
      for (int i = 0; i < n[0]; i++) numbers[static_cast<size_t>(i)] = i + 1;
      return ecrit_facette(o, KW_fac, facette(numbers), 0);
    }
    case KW_poi: {
      if (tag(v) != T_FLOAT) return 0;
      const int k = elements(v);
      std::vector<float> f(static_cast<size_t>(k));
      for (int i = 0; i < k; i++) f[static_cast<size_t>(i)] = getf(v, i);
      return ajoute_sommets(o, (k + 2) / 3, f.data(), k);
    }
    case KW_fac: case KW_lattice:
      return ajou_fac(o, code, v, 0);
    default:
      return propriete_simple(o, code, v);
  }
}

int set_propriete_vol_b(Objet* o, word* s) {
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    const word* v = item_value(item);
    int first = 0;
    if (v && tag(v) == T_FLOAT && elements(v) > 0) first = entier(getf(v, 0));
    switch (item[2]) {
      case KW_close: o->work[4] = v ? first : 1; break;
      case KW_secx: o->work[0] = first; break;
      case KW_secy: o->work[1] = first; break;
      case KW_secz: o->work[2] = first; break;
      case KW_type:
        if (v && tag(v) == T_CHAR) o->user_type = type_utilisateur_cree(text(v));
        break;
      default:
        if (mot_transformation(item[2])) break;  // MOD_b's words, not properties
        if (ajou_propriete_simple(o, item) < 0) return -1;
    }
  }
  return 0;
}
