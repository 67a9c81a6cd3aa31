// grow_val: new points appended to the value of a property, the property
// being reallocated and put back in its own slot.
#include <algorithm>
#include <cstring>

#include "kernel/access.h"
#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "kernel/values.h"

static bool plat(const word* b) { return b[1] == T_FLOAT || b[1] == T_LONG; }

// One point of np*dimp words.
static void aplatit_un(bloc b) {
  b[3] = b[2] * b[3];
  b[2] = 1;
}

static void aplatit(bloc added) {
  if (added[1] == T_HYBRIDE) {
    bloc sub = added + 4;
    for (int i = 0; i < added[2] && sub < added + added[0] && sub[0] > 0; i++, sub += sub[0])
      if (plat(sub)) aplatit_un(sub);
  } else if (plat(added) && added[2] > 1) {
    aplatit_un(added);
  }
}

// A word of kind `from` as kind `to`: FLOAT and LONG convert, other kinds
// are copied as they are.
static word convertit(word w, word from, word to) {
  if (from == T_FLOAT && to == T_LONG) return entier(wf(w));
  if (from == T_LONG && to == T_FLOAT) return fw(static_cast<float>(w));
  return w;
}

static void copie_convertie(word* dst, const word* src, int n, word from, word to) {
  for (int i = 0; i < n; i++) dst[i] = convertit(src[i], from, to);
}

// A copy of property p `extra` words longer, its size words raised, put
// in slot `ind` of the list in place of p, which is released.
static bloc agrandit(Objet* o, bloc p, int ind, int extra) {
  const int n = p[0];
  bloc q = alloue_bloc(n + extra);
  if (!q) return nullptr;
  std::memcpy(q, p, static_cast<size_t>(n) * sizeof(word));
  q[0] = n + extra;
  propr_val(q)[0] += extra;
  o->local[ind] = bloc_handle(q);
  libere_valeur(p);
  return q;
}

// A HYBRIDE value gains one LONG sub-block per added point: the added
// value itself, or each sub-block of an added HYBRIDE.
static int grow_hybride(Objet* o, bloc p, int ind, const word* added) {
  const bool liste = added[1] == T_HYBRIDE;
  const word* first = liste ? added + 4 : added;
  const int count = liste ? added[2] : 1;
  int extra = 0;
  const word* sub = first;
  for (int i = 0; i < count; i++, sub += sub[0]) {
    if (sub >= added + added[0] || sub[0] < 4 || !plat(sub)) {
      err_illegal(nullptr);
      return -1;
    }
    extra += sub[0];
  }
  const int end = p[0];
  bloc q = agrandit(o, p, ind, extra);
  if (!q) return -1;
  bloc at = q + end;
  sub = first;
  for (int i = 0; i < count; i++, at += at[0], sub += sub[0]) {
    build_head(at, sub[0], T_LONG, 1, sub[0] - 4);
    copie_convertie(at + 4, sub + 4, sub[0] - 4, sub[1], T_LONG);
  }
  bloc v = propr_val(q);
  v[2] += count;
  if (Yes(KW_edit) >= 2) voir_int("+%d\n", v[2]);
  return 0;
}

static void voir_ajout(int first, int last) {
  if (Yes(KW_edit) < 2) return;
  if (first == last)
    voir_int("+ %d\n", last);
  else
    voir_int2("+ [%d,%d]\n", first, last);
}

// Entries of differing length: the new one opens with its own length.
static int grow_entree(Objet* o, bloc p, int ind, const word* added) {
  const int len = added[0] - 3;
  const int end = p[0];
  bloc q = agrandit(o, p, ind, len);
  if (!q) return -1;
  bloc v = propr_val(q);
  q[end] = len;
  copie_convertie(q + end + 1, added + 4, len - 1, added[1], v[1]);
  v[2] += 1;
  voir_ajout(v[2], v[2]);
  return 0;
}

// Points of |dimp| words: the addition is rounded to whole points, at
// least one, padded with zeros or cut.
static int grow_points(Objet* o, bloc p, int ind, const word* added) {
  const int stride = std::abs(propr_val(p)[3]);
  const int words = added[0] - 4;
  const int points = std::max(1, words / stride);
  const int end = p[0];
  bloc q = agrandit(o, p, ind, points * stride);
  if (!q) return -1;
  bloc v = propr_val(q);
  const int copied = std::min(words, points * stride);
  copie_convertie(q + end, added + 4, copied, added[1], v[1]);
  std::fill(q + end + copied, q + q[0], 0);
  v[2] += points;
  voir_ajout(v[2] - points + 1, v[2]);
  return 0;
}

// An absent property is made from the added value.
static int cree(Objet* o, int n, const int* codes, const word* added) {
  bloc p = ajoute_propriete(o, 2 * n + 4 + bloc_len(added));
  if (!p) return -1;
  propr_key_k(p, n, codes);
  copie_bloc(propr_val(p), added);
  return 0;
}

int grow_val(Objet* o, int n, const int* codes, bloc added) {
  if (!added || added[0] < 4) {
    err_illegal(nullptr);
    return -1;
  }
  aplatit(added);
  int ind = 0;
  bloc p = get_propr_k(o->local, n, codes, &ind);
  int r;
  if (!p)
    r = cree(o, n, codes, added);
  else if (p[0] < 1 || !est_propriete(p) || p[2] + propr_val(p)[0] != p[0]) {
    err_illegal(nullptr);
    r = -1;
  } else if (propr_val(p)[1] == T_HYBRIDE)
    r = grow_hybride(o, p, ind, added);
  else if (propr_val(p)[3] == 0)
    r = grow_entree(o, p, ind, added);
  else
    r = grow_points(o, p, ind, added);
  if (r < 0) TRACE_FAIL("grow_val()");
  return r;
}
