#include "scene/property_rw.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "kernel/access.h"
#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "scene/lookup.h"
#include "scene/scene_state.h"

namespace {

using Words = std::vector<word>;

// The keyword's own count of values decides the shape of what is stored.
int dim_de(const Cles& k) {
  if (k.width) return k.width;
  const int c = k.codes.empty() ? -1 : k.codes[0];
  return c >= 0 && c < NB_CODES ? std::max(vocab().dim[c], 0) : 0;
}

// A FLOAT becomes one point of all its numbers, fitted to `dim` when the
// keyword has one: short values padded with zeros, long ones cut.
void prepare(const word* v, int dim, Words& out) {
  out.assign(v, v + size(v));
  if (tag(v) != T_FLOAT) return;
  int n = elements(v);
  if (dim) {
    out.resize(4 + dim, 0);
    if (n < dim) std::fill(out.begin() + 4 + n, out.end(), 0);
    n = dim;
  } else {
    out.resize(4 + n);
  }
  out[0] = 4 + n;
  out[2] = n ? 1 : 0;
  out[3] = n ? n : 1;
}

bool valeur_plate(const word* v) {
  switch (tag(v)) {
    case T_FLOAT: case T_LONG: case T_CHAR: case T_NIL: case T_SHORT: case T_HYBRIDE: return true;
    default: return false;
  }
}

bloc propriete(Objet* o, int slot) { return handle_bloc(o->local[slot]); }

void voir_cles(const Cles& k) {
  voir_texte("+");
  for (int c : k.codes) voir_mot(c);
  voir_texte("\n");
}

// The property's value replaced by `v`: in place when the size holds and
// the old value owns no blocks, otherwise in a new property put in the
// same slot of the list.
int remplace(Objet* o, int slot, const word* v) {
  bloc p = propriete(o, slot);
  const int header = p[2];
  const int n = header + size(v);
  if (p[0] == n && valeur_plate(propr_val(p))) {
    std::memmove(propr_val(p), v, static_cast<size_t>(size(v)) * sizeof(word));
    return 0;
  }
  bloc q = alloue_bloc(n);
  if (!q) {
    TRACE_FAIL("set_bloc_b()");
    return -1;
  }
  std::memcpy(q + 1, p + 1, static_cast<size_t>(header - 1) * sizeof(word));
  std::memcpy(q + header, v, static_cast<size_t>(size(v)) * sizeof(word));
  o->local[slot] = bloc_handle(q);
  libere_valeur(p);
  return 0;
}

// Appends `v` as one more part of a HYBRIDE; the old value becomes its
// first part unless it was empty. `envelope` keeps its parts as LONG.
Words ajoute_element(const word* old, const Words& v, bool en_long) {
  Words out{4, T_HYBRIDE, 0, 1};
  if (tag(old) == T_HYBRIDE) {
    out.assign(old, old + size(old));
  } else if (size(old) > 4 && np(old) > 0) {
    out.insert(out.end(), old, old + size(old));
    out[2] = 1;
  }
  Words part = v;
  if (en_long && tag(part.data()) == T_FLOAT) {
    part[1] = T_LONG;
    for (size_t i = 4; i < part.size(); i++) part[i] = entier(wf(part[i]));
  }
  out.insert(out.end(), part.begin(), part.end());
  out[0] = static_cast<word>(out.size());
  out[2] += 1;
  return out;
}

// Appends `v` as a new point of width `dim` to a flat value.
Words ajoute_point(const word* old, const Words& v, int dim) {
  Words out{4, T_FLOAT, 0, dim};
  if ((tag(old) == T_FLOAT || tag(old) == T_LONG) && np(old) > 0 && dimp(old) == dim)
    out.assign(old, old + size(old));
  const bool en_long = tag(out.data()) == T_LONG;
  for (int i = 0; i < dim; i++) {
    word w = i < static_cast<int>(v.size()) - 4 ? v[4 + i] : 0;
    out.push_back(en_long ? entier(wf(w)) : w);
  }
  out[0] = static_cast<word>(out.size());
  out[2] += 1;
  return out;
}

// Point k of a flat value, or part k of a HYBRIDE, overwritten.
Words remplace_point(const word* old, const Words& v, int k) {
  Words out(old, old + size(old));
  if (tag(old) == T_HYBRIDE) {
    const word* part = sous_bloc(old, k - 1);
    const long at = part - old;
    out.erase(out.begin() + at, out.begin() + at + part[0]);
    out.insert(out.begin() + at, v.begin(), v.end());
    out[0] = static_cast<word>(out.size());
    return out;
  }
  const int d = std::max(dimp(old), 1);
  const bool en_long = tag(old) == T_LONG;
  for (int i = 0; i < d; i++) {
    word w = i < static_cast<int>(v.size()) - 4 ? v[4 + i] : (en_long ? 0 : fw(0.0f));
    out[4 + (k - 1) * d + i] = en_long && tag(v.data()) == T_FLOAT ? entier(wf(w)) : w;
  }
  return out;
}

int ecrit_points(Objet* o, const Cles& k, int slot, const Words& v, int dim) {
  for (int e : numeros(k.params)) {
    const word* old = propr_val(propriete(o, slot));
    const bool hybride = tag(old) == T_HYBRIDE;
    const bool plat = tag(old) == T_FLOAT || tag(old) == T_LONG;
    Words nv;
    if (e == 0 && dim == 0)
      nv = ajoute_element(old, v, k.codes[0] == KW_envelope);
    else if (e == 0)
      nv = ajoute_point(old, v, dim);
    else if (e >= 1 && e <= np(old) && (hybride || (plat && dimp(old) > 0)))
      nv = remplace_point(old, v, e);
    else {
      hors_limite(e);
      continue;
    }
    if (remplace(o, slot, nv.data()) < 0) return -1;
  }
  return 0;
}

/* Tables of sub-elements */

// The number of elements of the object that a sub-element word counts.
int nb_elements(Objet* o, int sub) {
  const word* v = get_val_1(o->local, sub == KW_vertex ? KW_poi : sub);
  return v ? np(v) : -1;
}

// A table without `dim`: a PROPRIETES value of `count` slots, each a
// block of its own. Enlarged to `count` when shorter, new slots empty.
Words table_blocs(const word* old, int count) {
  Words out{4 + count, T_PROPRIETES, count, 1};
  out.resize(4 + count, 0);
  if (tag(old) == T_PROPRIETES) {
    const int have = std::min(np(old), size(old) - 4);
    std::copy(old + 4, old + 4 + std::min(have, count), out.begin() + 4);
    if (have > count) {
      out.insert(out.end(), old + 4 + count, old + 4 + have);
      out[0] = 4 + have;
      out[2] = have;
    }
  }
  return out;
}

// A table with `dim`: a FLOAT of `count` slots of stride dim+1 (negative
// dimp); a slot's first word is dim+1 once written, 0 while empty.
Words table_slots(const word* old, int count, int dim) {
  const int stride = dim + 1;
  Words out{4, T_FLOAT, count, -stride};
  out.resize(4 + static_cast<size_t>(count) * stride, 0);
  if (tag(old) == T_FLOAT && dimp(old) == -stride) {
    const int have = std::min(np(old), (size(old) - 4) / stride);
    if (have > count) out.resize(4 + static_cast<size_t>(have) * stride, 0);
    std::copy(old + 4, old + 4 + static_cast<long>(have) * stride, out.begin() + 4);
    out[2] = std::max(have, count);
  }
  out[0] = static_cast<word>(out.size());
  return out;
}

int ecrit_sous_element(Objet* o, const Cles& k, int slot, const Words& v, int dim) {
  const int count = nb_elements(o, k.sub);
  if (count < 0) {
    err_vide("set_bloc_b()", o);
    return -1;
  }
  std::vector<int> targets;
  std::vector<int> asked = k.sub_value ? numeros(k.sub_value) : std::vector<int>{0};
  for (int e : asked) {
    if (e == 0) {
      for (int i = 1; i <= count; i++) targets.push_back(i);
    } else if (e >= 1 && e <= count) {
      targets.push_back(e);
    } else {
      hors_limite(e);
    }
  }
  const word* old = propr_val(propriete(o, slot));
  if (dim) {
    Words t = table_slots(old, count, dim);
    const int stride = dim + 1;
    for (int e : targets) {
      word* s = t.data() + 4 + static_cast<long>(e - 1) * stride;
      s[0] = stride;
      for (int i = 0; i < dim; i++) s[1 + i] = i < static_cast<int>(v.size()) - 4 ? v[4 + i] : 0;
    }
    return remplace(o, slot, t.data());
  }
  // Blocks: the table's own slots are handed over to the new table, so
  // the old table must not release them.
  Words t = table_blocs(old, count);
  bloc p = propriete(o, slot);
  if (tag(old) == T_PROPRIETES) propr_val(p)[2] = 0;
  for (int e : targets) {
    bloc copy = dup_bloc(v.data());
    if (!copy) {
      TRACE_FAIL("set_bloc_b()");
      break;
    }
    libere_valeur(handle_bloc(t[3 + e]));
    t[3 + e] = bloc_handle(copy);
  }
  return remplace(o, slot, t.data());
}

}  // namespace

void hors_limite(int k) {
  voir_int("%d ", k);
  voir_message(0, MES_ILLEGAL);
}

// The numbers of a parameter value; an element that is no number is
// reported and skipped.
std::vector<int> numeros(const word* params) {
  std::vector<int> out;
  const int n = nb_selection(params);
  for (int i = 0; i < n; i++) {
    int number = 0;
    char name[256];
    if (element_selection(params, i, &number, name) == 0) out.push_back(number);
  }
  return out;
}

int cree_propriete_vide(Objet* o, const Cles& k) {
  const int n = static_cast<int>(k.codes.size());
  bloc p = ajoute_propriete(o, 2 * n + 8);
  if (!p) return -1;
  p[0] = 2 * n + 8;
  propr_key_k(p, n, k.codes.data());
  bloc v = propr_val(p);
  build_head(v, 4, T_FLOAT, 0);
  return 4 + o->local[2] - 1;
}

int set_bloc_b(Objet* o, const Cles& k, int slot, const word* value) {
  if (!value || tag(value) == T_NIL) return 0;
  const int dim = dim_de(k);
  Pret<word> pret(scene().valeurs);
  Words& v = pret.v;
  prepare(value, dim, v);
  if (k.sub) return ecrit_sous_element(o, k, slot, v, dim);
  if (k.params) return ecrit_points(o, k, slot, v, dim);
  if (remplace(o, slot, v.data()) < 0) return -1;
  if (Yes(KW_edit) >= 2) voir_cles(k);
  return 0;
}

/* Reading */

namespace {

// Text values are read whole; two texts join with a blank.
int ajoute_texte(word* st, const word* lim, const word* v) {
  if (tag(st) != T_CHAR) {
    if (np(st) > 0 && tag(st) != T_NIL) return 0;
    return build_text(st, lim, text(v));
  }
  std::string joined = std::string(text(st)) + " " + text(v);
  return build_text(st, lim, joined.data(), joined.size());
}

bool numerique(const word* v) {
  return tag(v) == T_FLOAT || tag(v) == T_LONG || tag(v) == T_HYBRIDE;
}

// The result becomes a FLOAT of points of width d, unless it holds points.
void debut_flottants(word* st, int d) {
  if (tag(st) == T_FLOAT && np(st) > 0) return;
  build_head(st, 4, T_FLOAT, 0, std::max(d, 1));
}

int largeur(const word* v) {
  if (tag(v) == T_HYBRIDE) return 1;
  if (dimp(v) < 0) return -dimp(v) - 1;
  return std::max(dimp(v), 1);
}

int lit_points(const word* v, const word* params, word* st, const word* lim) {
  if (!numerique(v)) return tag(v) == T_CHAR ? ajoute_texte(st, lim, v) : 0;
  debut_flottants(st, largeur(v));
  if (!params) return val_append(st, lim, v) < 0 ? -12 : 0;
  for (int e : numeros(params)) {
    if (e < 1 || e > np(v)) {
      hors_limite(e);
      continue;
    }
    int r = val_concat_point(st, lim, v, e);
    if (r == -12) return -12;
  }
  return 0;
}

// A table of blocks: the slots its parameters select (all for none or 0).
int lit_table(const word* v, const word* params, word* st, const word* lim) {
  const int count = std::min(np(v), size(v) - 4);
  std::vector<int> asked = params ? numeros(params) : std::vector<int>{0};
  for (int e : asked) {
    if (e != 0 && (e < 1 || e > count)) {
      hors_limite(e);
      continue;
    }
    for (int i = e ? e : 1; i <= (e ? e : count); i++) {
      const word* b = handle_bloc(v[3 + i]);
      if (b && lit_points(b, nullptr, st, lim) == -12) return -12;
    }
  }
  return 0;
}

}  // namespace

int get_bloc_b(const Cles& k, const word* property, word* st, const word* lim) {
  const word* v = propr_val(property);
  if (tag(v) == T_PROPRIETES) return lit_table(v, k.sub ? k.sub_value : k.params, st, lim);
  const word* params = k.sub ? k.sub_value : k.params;
  if (params && nb_selection(params) == 1) {
    int e = 0;
    char name[256];
    if (element_selection(params, 0, &e, name) == 0 && e == 0) params = nullptr;
  }
  return lit_points(v, params, st, lim);
}
