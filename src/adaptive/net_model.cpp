// A network's structure: its sub-properties found by code, its layers,
// its weights drawn at random by kind, its neuron records.
#include <algorithm>
#include <cmath>

#include "adaptive/net_internal.h"
#include "adaptive/net_state.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/functions.h"
#include "platform/clock.h"

NetworkState& networks() {
  static NetworkState s;
  return s;
}

int network_kind(const Objet* o) {
  const int k = o ? o->subkind : 0;
  return k == KW_near || k == KW_texture ? k : KW_fac;
}
int Reseau::kind() const { return network_kind(o); }

namespace {

bool liste(const word* v) { return v && tag(v) == T_HYBRIDE && size(v) > 4 && np(v) >= 1; }

// The largest neuron number of the layers, 0 when a layer is not a list
// of numbers from 1.
int compte_neurones(const word* fac) {
  int n = 0;
  for (const word* l : Parties(fac)) {
    if (tag(l) != T_LONG || elements(l) < 1) return 0;
    for (int k = 0; k < elements(l); k++) {
      if (l[4 + k] < 1 || l[4 + k] > NEURONES_MAX) return 0;
      n = std::max(n, l[4 + k]);
    }
  }
  return n;
}

}  // namespace

Reseau trouve_reseau(Objet* o) {
  Reseau r;
  r.o = o;
  const word* L = o ? o->local : nullptr;
  if (!L) return r;
  r.motif = get_val_1(L, KW_motif);
  r.law = get_val_1(L, KW_law);
  if (!liste(r.motif)) r.motif = nullptr;
  if (!liste(r.law)) r.law = nullptr;
  r.fac = get_val_1(L, KW_fac);
  r.inv_fac = get_val_2(L, KW_inv, KW_fac);
  if (!liste(r.fac) || hybride_parts(r.fac) < 2) r.fac = nullptr;
  if (!liste(r.inv_fac)) r.inv_fac = nullptr;
  r.N = r.fac ? compte_neurones(r.fac) : 0;
  if (!r.N) r.fac = nullptr;
  const long nn = static_cast<long>(r.N) * r.N;
  r.matrix = get_val_1(L, KW_matrix);
  if (!r.matrix || tag(r.matrix) != T_FLOAT || elements(r.matrix) != nn || !r.N) r.matrix = nullptr;
  r.best = get_val_1(L, -KW_matrix);
  if (!r.best || tag(r.best) != T_FLOAT || elements(r.best) != nn || !r.N) r.best = nullptr;
  r.neuron = get_val_1(L, KW_neuron);
  if (!r.neuron || tag(r.neuron) != T_FLOAT || elements(r.neuron) != r.N * NR_WORDS || !r.N) r.neuron = nullptr;
  r.func = get_val_1(L, KW_func);
  r.func_global = r.func && tag(r.func) == T_FLOAT && elements(r.func) >= 1;
  if (r.func_global) {
    r.func_kind = entier(getf(r.func, 0));
    r.func_param = elements(r.func) >= 2 ? getf(r.func, 1) : 1.0f;
  }
  r.near = get_val_1(L, KW_near);
  if (!r.near || tag(r.near) != T_LONG || elements(r.near) != r.N * 9) r.near = nullptr;
  if (r.inv_fac && hybride_parts(r.inv_fac) != hybride_parts(r.fac)) r.inv_fac = nullptr;
  return r;
}

int graine_horloge() {
  int t[6];
  date_time(t);
  return static_cast<int>(seconds_since_start() * 1000.0) ^ (t[3] * 3600 + t[4] * 60 + t[5]) ^ 0x5bd1e995;
}

float tirage(float lo, float hi) {
  const float u = static_cast<float>(networks().rng() >> 8) * (1.0f / 16777216.0f);
  return lo + (hi - lo) * u;
}

float poids_min(float v, float min) {
  if (v >= 0 && v < min) return min;
  if (v > -min && v <= 0) return min;
  return v;
}

void go_rand(Reseau& r, float lo, float hi, float min, int mode) {
  if (!r.matrix || !r.fac) return;
  if (mode != -2 && mode != -3) networks().rng.seed(static_cast<unsigned>(mode));
  auto tire = [&](int j, int i) {
    const float v = mode == -3 ? lo : tirage(lo, hi);
    setf(r.matrix, (j - 1) * r.N + (i - 1), poids_min(v, min));
  };
  std::fill(r.matrix + 4, r.matrix + 4 + r.N * r.N, 0);
  const int kind = r.kind();
  if (kind == KW_near) {
    for (int j = 1; j <= r.N; j++)
      for (int i = 1; i <= r.N; i++)
        if (i != j) tire(j, i);
    return;
  }
  const word* prev = nullptr;
  const word* first = nullptr;
  for (const word* l : Parties(r.fac)) {
    if (!first) {
      first = prev = l;
      continue;
    }
    const word* from = kind == KW_texture ? first : prev;
    for (int a = 0; a < elements(l); a++)
      for (int b = 0; b < elements(from); b++) tire(l[4 + a], from[4 + b]);
    if (kind == KW_texture)
      for (int a = 0; a < elements(l); a++)
        for (int b = 0; b < elements(l); b++)
          if (a != b) tire(l[4 + a], l[4 + b]);
    prev = l;
  }
}

int set_fac_tailles(Objet* o, const std::vector<int>& sizes) {
  long total = 0;
  for (int n : sizes) total += std::max(n, 1);
  if (total > NEURONES_MAX) {
    voir_mot(KW_fac);
    voir_int("%d ", static_cast<int>(std::min<long>(total, 2147483647L)));
    voir_int("> %d\a\n", NEURONES_MAX);
    return -1;
  }
  std::vector<word> fac = liste_vide();
  int next = 1;
  for (int n : sizes) {
    std::vector<int> numbers;
    for (int k = 0; k < std::max(n, 1); k++) numbers.push_back(next++);
    liste_ajoute(fac, valeur_longs(numbers.data(), static_cast<int>(numbers.size())).data());
  }
  if (!set_propr_1(o, KW_fac, fac.data())) return -1;
  return set_inv_fac(o);
}

int set_inv_fac(Objet* o) {
  const word* fac = get_val_1(o->local, KW_fac);
  if (!liste(fac)) return -1;
  std::vector<const word*> parts;
  for (const word* l : Parties(fac)) parts.push_back(l);
  std::vector<word> inv = liste_vide();
  for (auto it = parts.rbegin(); it != parts.rend(); ++it) liste_ajoute(inv, *it);
  const int keys[] = {KW_inv, KW_fac};
  return set_propr_k(o, 2, keys, inv.data()) ? 0 : -1;
}

namespace {

// "k: (nx * ny) size != n" and the list's keyword for an element of
// another size than the first.
int taille_uniforme(int code, const word* list, int* n) {
  int k = 0;
  *n = -1;
  for (const word* e : Parties(list)) {
    k++;
    const int s = elements(e);
    if (*n < 0) *n = s;
    if (s != *n) {
      voir_mot(code);
      voir_int("%d: ", k);
      rapport_taille_element(e, *n);
      return -1;
    }
  }
  return *n > 0 ? 0 : -1;
}

}  // namespace

void rapport_taille_element(const word* e, int n) {
  char buf[96];
  std::snprintf(buf, sizeof buf, "(%d * %d) %d != %d\a\n", dimp(e) > 0 ? dimp(e) : 1, np(e), elements(e), n);
  voir_texte(buf);
}

int generer_fac_reseau(Objet* o, int h) {
  Reseau r = trouve_reseau(o);
  int n = 0, m = 0;
  if (!r.motif || !r.law) {
    rapport_manque(o, !r.motif ? KW_motif : KW_law);
    return -1;
  }
  if (taille_uniforme(KW_motif, r.motif, &n) < 0 || taille_uniforme(KW_law, r.law, &m) < 0) {
    TRACE_FAIL("generer_fac_reseau()");
    return -1;
  }
  h = std::max(h, 1);
  std::vector<int> sizes{n};
  for (int k = 0; k < h; k++) sizes.push_back(std::max(1, (n + m) / h));
  sizes.push_back(m);
  return set_fac_tailles(o, sizes);
}

int NETWORK_DIM(Objet* o, int n_in, int n_out, int h) {
  n_in = std::max(n_in, 1);
  n_out = std::max(n_out, 1);
  h = std::max(h, 0);
  std::vector<int> sizes{n_in};
  for (int k = 0; k < h; k++) sizes.push_back(std::max(1, (n_in + n_out) / (h + 1)));
  sizes.push_back(n_out);
  return set_fac_tailles(o, sizes);
}

std::vector<int> table_voisins(int inputs, int outputs) {
  std::vector<int> t(static_cast<size_t>(inputs + outputs) * 9, 0);
  int s = static_cast<int>(std::sqrt(static_cast<double>(outputs)));
  while (s * s > outputs) s--;
  while ((s + 1) * (s + 1) <= outputs) s++;
  if (s < 1) return t;
  // Cell (row, col) of the grid: its neuron number, 0 off the grid.
  auto cellule = [&](int row, int col) {
    if (row < 0 || col < 0 || col >= s) return 0;
    const int c = row * s + col;
    return c < outputs ? inputs + c + 1 : 0;
  };
  static constexpr int DR[9] = {0, -1, -1, 0, 1, 1, 1, 0, -1};
  static constexpr int DC[9] = {0, 0, 1, 1, 1, 0, -1, -1, -1};
  for (int c = 0; c < outputs; c++) {
    const int row = c / s, col = c % s;
    for (int k = 0; k < 9; k++) t[static_cast<size_t>(inputs + c) * 9 + k] = cellule(row + DR[k], col + DC[k]);
  }
  return t;
}

int cree_neurones(Objet* o) {
  Reseau r = trouve_reseau(o);
  if (!r.N) return -1;
  const word* per = get_val_2(o->local, KW_func, KW_neuron);
  std::vector<float> rec(static_cast<size_t>(r.N) * NR_WORDS, 0.0f);
  for (int k = 0; k < r.N; k++) {
    float* n = rec.data() + static_cast<size_t>(k) * NR_WORDS;
    n[NR_NUMBER] = static_cast<float>(k + 1);
    n[NR_KIND] = r.func_global ? static_cast<float>(r.func_kind) : 1.0f;
    n[NR_PARAM] = r.func_global ? r.func_param : 1.0f;
    const word* e = liste(per) ? sous_bloc(per, std::min(k, hybride_parts(per) - 1)) : nullptr;
    if (e && tag(e) == T_CHAR) {
      Objet* f = get_fonction(text(e));
      if (!f) {
        err_fonction(text(e), 48);
        return -1;
      }
      n[NR_FUNC] = static_cast<float>(objet_handle(f));
    } else if (e && (tag(e) == T_FLOAT || tag(e) == T_LONG)) {
      float kp[2] = {1.0f, 1.0f};
      floats_of(e, kp, 2);
      n[NR_KIND] = kp[0];
      n[NR_PARAM] = kp[1];
    }
  }
  const std::vector<word> v = valeur_floats(rec.data(), static_cast<int>(rec.size()), NR_WORDS);
  return set_propr_1(o, KW_neuron, v.data()) ? 0 : -1;
}

int egalise_listes(Objet* o) {
  Reseau r = trouve_reseau(o);
  if (!r.motif || !r.law) return 0;
  const int a = hybride_parts(r.motif), b = hybride_parts(r.law);
  if (a == b || a < 1 || b < 1) return 0;
  const int code = a < b ? KW_motif : KW_law;
  const word* short_list = a < b ? r.motif : r.law;
  std::vector<word> v(short_list, short_list + size(short_list));
  const word* last = sous_bloc(short_list, std::min(a, b) - 1);
  const std::vector<word> part(last, last + size(last));
  for (int k = std::min(a, b); k < std::max(a, b); k++) liste_ajoute(v, part.data());
  return set_propr_1(o, code, v.data()) ? 0 : -1;
}
