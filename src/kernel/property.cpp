#include "kernel/property.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "kernel/values.h"

static int taille(const word* b) { return b[0] < 0 ? -b[0] : b[0]; }

/* Lookup */

// Codes compared from the key pairs; with `exact` the key count too.
static bool cles_egales(const word* p, int n, const int* codes, bool exact) {
  if (!mot_validite(p[1]) || (exact && p[3] != n)) return false;
  for (int k = 0; k < n; k++) {
    const int at = 5 + 2 * k;
    if (at >= taille(p) || p[at] != codes[k]) return false;
  }
  return true;
}

static bloc trouve(const word* list, int n, const int* codes, bool exact, int* ind) {
  if (!list || list[1] != T_PROPRIETES) return nullptr;
  const int slots = std::min(list[2], taille(list) - 4);
  for (int i = 0; i < slots; i++) {
    bloc p = handle_bloc(list[4 + i]);
    if (!p || !cles_egales(p, n, codes, exact)) continue;
    if (ind) *ind = 4 + i;
    return p;
  }
  return nullptr;
}

static bloc valeur(bloc p) { return p ? propr_val(p) : nullptr; }

bloc get_val_1(const word* list, int c1) { return valeur(trouve(list, 1, &c1, true, nullptr)); }
bloc get_val_2(const word* list, int c1, int c2) {
  const int c[] = {c1, c2};
  return valeur(trouve(list, 2, c, true, nullptr));
}
bloc get_val_3(const word* list, int c1, int c2, int c3) {
  const int c[] = {c1, c2, c3};
  return valeur(trouve(list, 3, c, false, nullptr));
}
bloc get_val_4(const word* list, int c1, int c2, int c3, int c4) {
  const int c[] = {c1, c2, c3, c4};
  return valeur(trouve(list, 4, c, false, nullptr));
}
bloc get_val_n(const word* list, int n, const int* codes) {
  if (n < 1 || n > 4) return nullptr;
  return valeur(trouve(list, n, codes, n <= 2, nullptr));
}

bloc get_val_k(const word* list, int n, const int* codes) { return valeur(trouve(list, n, codes, true, nullptr)); }

bloc get_propr_k(const word* list, int n, const int* codes, int* ind) {
  return trouve(list, n, codes, true, ind);
}
bloc get_propr_1(const word* list, int c1) { return get_propr_k(list, 1, &c1, nullptr); }
bloc get_propr_2(const word* list, int c1, int c2) {
  const int c[] = {c1, c2};
  return get_propr_k(list, 2, c, nullptr);
}
bloc get_propr_3(const word* list, int c1, int c2, int c3) {
  const int c[] = {c1, c2, c3};
  return get_propr_k(list, 3, c, nullptr);
}
bloc get_propr_4(const word* list, int c1, int c2, int c3, int c4) {
  const int c[] = {c1, c2, c3, c4};
  return get_propr_k(list, 4, c, nullptr);
}
bloc get_propr_ind_1(const word* list, int c1, int* ind) { return get_propr_k(list, 1, &c1, ind); }
bloc get_propr_ind_2(const word* list, int c1, int c2, int* ind) {
  const int c[] = {c1, c2};
  return get_propr_k(list, 2, c, ind);
}
bloc get_propr_ind_3(const word* list, int c1, int c2, int c3, int* ind) {
  const int c[] = {c1, c2, c3};
  return get_propr_k(list, 3, c, ind);
}
bloc get_propr_ind_4(const word* list, int c1, int c2, int c3, int c4, int* ind) {
  const int c[] = {c1, c2, c3, c4};
  return get_propr_k(list, 4, c, ind);
}

// Keyword codes of n segments in sequence.
static std::vector<int> codes_segments(int n, const word* segs) {
  std::vector<int> codes;
  for (int i = 0; i < n && segs[0] >= 3; i++, segs += segs[0]) codes.push_back(segs[2]);
  return codes;
}

bloc get_propr_n(const word* list, int n, const word* segs, int* ind) {
  const std::vector<int> codes = codes_segments(n, segs);
  if (static_cast<int>(codes.size()) != n) return nullptr;
  return get_propr_k(list, n, codes.data(), ind);
}

int egal_keys(const word* p1, const word* p2) {
  if (p1[3] != p2[3]) return 0;
  return std::equal(p1 + 4, p1 + 4 + 2 * p1[3], p2 + 4) ? 1 : 0;
}

/* The list */

bloc local_ini(Objet* o) {
  bloc list = alloue_bloc(4);
  if (!list) {
    TRACE_FAIL("local_ini()");
    return nullptr;
  }
  build_head(list, list[0], T_PROPRIETES, 0);
  o->local = list;
  return list;
}

// Every addition reallocates the list one slot longer: lists are short.
bloc ajoute_propriete(Objet* o, int n) {
  if (!o->local && !local_ini(o)) return nullptr;
  bloc old = o->local;
  if (old[1] != T_PROPRIETES) {
    err_bloc("ajoute_propriete");
    return nullptr;
  }
  bloc p = alloue_bloc(n);
  const int count = old[2];
  bloc list = p ? alloue_bloc(count + 5) : nullptr;
  if (!list) {
    libere_bloc(p);
    TRACE_FAIL("ajoute_propriete()");
    return nullptr;
  }
  o->local = list;
  old[0] = count + 5;
  old[2] = count + 1;
  std::memcpy(list, old, static_cast<size_t>(count + 4) * sizeof(word));
  list[count + 4] = bloc_handle(p);
  libere_bloc(old);
  return p;
}

bloc installe_propriete(Objet* o, bloc old, int ind, int size) {
  if (!old) return ajoute_propriete(o, size);
  bloc p = alloue_bloc(size);
  if (!p) return nullptr;
  o->local[ind] = bloc_handle(p);
  libere_valeur(old);
  return p;
}

/* Keys */

void propr_key_k(bloc p, int n, const int* codes) {
  build_head(p, p[0], T_SEGMENTS, 2 * n + 4, n);
  for (int k = 0; k < n; k++) {
    p[4 + 2 * k] = codes[k] / KW_PER_VOC;
    p[5 + 2 * k] = codes[k];
  }
}
void propr_keys(bloc p, int n, const word* segs) {
  const std::vector<int> codes = codes_segments(n, segs);
  propr_key_k(p, static_cast<int>(codes.size()), codes.data());
}
void propr_key_1(bloc p, int c1) { propr_key_k(p, 1, &c1); }
void propr_key_2(bloc p, int c1, int c2) {
  const int c[] = {c1, c2};
  propr_key_k(p, 2, c);
}
void propr_key_3(bloc p, int c1, int c2, int c3) {
  const int c[] = {c1, c2, c3};
  propr_key_k(p, 3, c);
}

/* Creation and replacement */

// A zeroed FLOAT of np points of dimp words.
static void float_zero(bloc v, int np, int dimp) {
  build_head(v, 4 + np * dimp, T_FLOAT, np, dimp);
  std::fill(v + 4, v + v[0], 0);
}

static bloc set_val(Objet* o, int k, const int* codes, int n) {
  if (n < 0) {
    err_illegal(nullptr);
    return nullptr;
  }
  int ind = 0;
  bloc old = trouve(o->local, k, codes, true, &ind);
  if (old && propr_val(old)[2] == n) return propr_val(old);
  bloc p = installe_propriete(o, old, ind, 2 * k + 8 + n);
  if (!p) {
    TRACE_FAIL("set_val()");
    return nullptr;
  }
  propr_key_k(p, k, codes);
  float_zero(propr_val(p), n, 1);
  return propr_val(p);
}

bloc installe_valeur_1(Objet* o, int code, int words) {
  int ind = 0;
  bloc old = get_propr_ind_1(o->local, code, &ind);
  bloc p = installe_propriete(o, old, ind, 6 + 4 + words);
  if (!p) return nullptr;
  propr_key_1(p, code);
  bloc v = propr_val(p);
  v[0] = 4 + words;
  return v;
}

bloc set_val_1(Objet* o, int c1, int n) { return set_val(o, 1, &c1, n); }
bloc set_val_2(Objet* o, int c1, int c2, int n) {
  const int c[] = {c1, c2};
  return set_val(o, 2, c, n);
}
bloc set_val_3(Objet* o, int c1, int c2, int c3, int n) {
  const int c[] = {c1, c2, c3};
  return set_val(o, 3, c, n);
}

bloc set_propr_k(Objet* o, int n, const int* codes, const word* value) {
  if (!value || n < 1) {
    err_illegal(nullptr);
    return nullptr;
  }
  const int size = 4 + 2 * n + bloc_len(value);
  int ind = 0;
  bloc p = trouve(o->local, n, codes, true, &ind);
  if (!p || p[0] != size) p = installe_propriete(o, p, ind, size);
  if (!p) {
    TRACE_FAIL("set_propr_1()");
    return nullptr;
  }
  propr_key_k(p, n, codes);
  copie_bloc(propr_val(p), value);
  return p;
}

bloc set_propr_1(Objet* o, int code, const word* value) { return set_propr_k(o, 1, &code, value); }

bloc set_matrix_k(Objet* o, int n, const int* codes, int np, int dimp) {
  if (np < 0 || dimp < 1) {
    err_illegal(nullptr);
    return nullptr;
  }
  bloc p = ajoute_propriete(o, 8 + 2 * n + np * dimp);
  if (!p) {
    TRACE_FAIL("set_matrix_2()");
    return nullptr;
  }
  propr_key_k(p, n, codes);
  float_zero(propr_val(p), np, dimp);
  return propr_val(p);
}

bloc set_matrix_2(Objet* o, int c1, int c2, int np, int dimp) {
  const int codes[2] = {c1, c2};
  return set_matrix_k(o, 2, codes, np, dimp);
}

/* Removal */

static void voir_cles(const word* p) {
  for (int k = 0; k < p[3]; k++) voir_mot(p[5 + 2 * k]);
  voir_texte("\n");
}

int rem_propr_k(Objet* o, int n, const int* codes) {
  int ind = 0;
  bloc old = o->local;
  bloc p = trouve(old, n, codes, true, &ind);
  if (!p) return 0;
  bloc list = alloue_bloc(old[0] - 1);
  if (!list) {
    TRACE_FAIL("rem_propr()");
    return -1;
  }
  std::memcpy(list + 1, old + 1, 3 * sizeof(word));
  list[2] = old[2] - 1;
  std::copy(old + 4, old + ind, list + 4);
  std::copy(old + ind + 1, old + old[0], list + ind);
  o->local = list;
  if (Yes(KW_edit) >= 2) voir_cles(p);
  libere_valeur(p);
  libere_bloc(old);
  return 1;
}

int rem_propr_1(Objet* o, int c1) { return rem_propr_k(o, 1, &c1); }
int rem_propr_2(Objet* o, int c1, int c2) {
  const int c[] = {c1, c2};
  return rem_propr_k(o, 2, c);
}
int rem_propr_3(Objet* o, int c1, int c2, int c3) {
  const int c[] = {c1, c2, c3};
  return rem_propr_k(o, 3, c);
}
int rem_propr_4(Objet* o, int c1, int c2, int c3, int c4) {
  const int c[] = {c1, c2, c3, c4};
  return rem_propr_k(o, 4, c);
}
int rem_propr_n(Objet* o, int n, const word* segs) {
  const std::vector<int> codes = codes_segments(n, segs);
  if (static_cast<int>(codes.size()) != n) return 0;
  return rem_propr_k(o, n, codes.data());
}
