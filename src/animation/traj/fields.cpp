// The fields and properties of a trajectory: attaching it to objects,
// its own properties, and PROPR_TRAJ, which reads or writes its fields.
#include <algorithm>
#include <cstring>
#include <vector>

#include "animation/traj/ajust.h"
#include "animation/traj/command.h"
#include "animation/traj/lists.h"
#include "animation/traj/traj.h"
#include "kernel/bloc.h"
#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/lookup.h"
#include "kernel/object_store.h"
#include "scene/property_rw.h"

bool mot_attache(int code) {
  switch (code) {
    case KW_vol: case KW_object: case KW_image: case KW_brush: case KW_field: case KW_fog: case KW_menu:
    case KW_memory: case KW_network: case KW_device: case KW_genetic: case KW_light: case KW_view:
      return true;
    default:
      return false;
  }
}

namespace {

bool contient(const word* list, int id) {
  if (!list) return false;
  for (int i = 0; i < elements(list); i++)
    if (entier(value_at(list, i, -1)) == id) return true;
  return false;
}

// Attaches t to the objects of the items `keep` accepts.
template <class F>
int attache_si(word* s, Objet* t, F&& keep) {
  int codes[2] = {KW_traj, 0};
  const int n = has_word(s, KW_vertex) ? (codes[1] = KW_vertex, 2) : has_word(s, KW_fac) ? (codes[1] = KW_fac, 2) : 1;
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    const word* sel = item_value(item);
    if (!sel || !keep(item[2])) continue;
    for (int k = 0; k < nb_selection(sel); k++) {
      Objet* o = get_objet_simple(chaine_classe(item[2]), sel, k);
      if (!o) {
        err_objet(item[2], sel, k, 0, nullptr);
        return -1;
      }
      if (contient(get_val_n(o->local, n, codes), t->id)) continue;
      word added[5];
      build_float(added, nullptr, static_cast<float>(t->id));
      if (grow_val(o, n, codes, added) < 0) return -1;
      o->unsaved = 1;
    }
  }
  return 0;
}

// A property of one key holding the floats of `v`, or 1 when the word
// has no value.
int propriete(Objet* t, int code, const word* v) {
  word one[5];
  if (!v) build_float(one, nullptr, 1.0f), v = one;
  return set_propr_1(t, code, v) ? 0 : -1;
}

// Resamples the table to n rows along the rows it has.
int change_lignes(Objet* t, int n) {
  bloc v = table_traj(t);
  n = std::max(n, 2);
  if (n > MAX_LIGNES || (v && static_cast<long long>(n) * std::max(dimp(v), 1) > MAX_FLOTTANTS)) {
    hors_limite(n);
    return -1;
  }
  if (!v) {
    ni(t) = n;
    return 0;
  }
  const int d = std::max(dimp(v), 1);
  std::vector<float> rows(reinterpret_cast<const float*>(v + 4), reinterpret_cast<const float*>(v + 4) + np(v) * d);
  Ajustement a;
  a.ni = n;
  const std::vector<float> out = ajust_1(rows, d, a);
  int codes[3] = {KW_var, kind_1(t), kind_2(t)};
  const int nk = kind_2(t) ? 3 : 2;
  rem_propr_k(t, nk, codes);
  bloc nv = set_matrix_k(t, nk, codes, n, d);
  if (!nv) return -1;
  std::copy(out.begin(), out.end(), reinterpret_cast<float*>(nv + 4));
  ni(t) = n;
  cpt(t) = std::min(cpt(t), n - 1);
  return 0;
}

// The value of a read word, written in place of the command.
int lit_champ(word* s, word* item, Objet* t, const word* lim) {
  const int code = item[2];
  bloc table = table_traj(t);
  switch (code) {
    case KW_NP: return build_float(s, lim, static_cast<float>(ni(t)));
    case KW_period: return build_float(s, lim, static_cast<float>(period(t)));
    case KW_animate: return build_floats(s, lim, {static_cast<float>(ni(t)), static_cast<float>(order(t))});
    case KW_dim: return build_float(s, lim, table ? static_cast<float>(std::max(dimp(table), 1)) : 0.0f);
    case KW_var:
      if (!table) return build_nil(s);
      return set_result(s, table, lim);
    case KW_edit:
      montre_table(t);
      return build_nil(s);
    case KW_abs: {
      const int k = entier(value_at(item_value(item), 0, 1));  // from 1
      if (!table || k < 1 || k > np(table)) {
        hors_limite(k);
        return -1;
      }
      const int row = k - 1;
      const int d = std::max(dimp(table), 1);
      std::vector<float> f(reinterpret_cast<const float*>(table + 4) + row * d,
                           reinterpret_cast<const float*>(table + 4) + (row + 1) * d);
      return build_floats(s, lim, f);
    }
    default: {
      const word* v = get_val_1(t->local, code);
      return v ? set_result(s, v, lim) : build_nil(s);
    }
  }
}

}  // namespace

int attache(word* s, Objet* t) {
  return attache_si(s, t, [](int code) { return mot_attache(code) && code != KW_light && code != KW_view; }) < 0
             ? -1
             : TRAJ_LIGHT_VIEW(s, t);
}

int TRAJ_LIGHT_VIEW(word* s, Objet* t) {
  return attache_si(s, t, [](int code) { return code == KW_light || code == KW_view; });
}

int proprietes_traj(word* s, Objet* t) {
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    const int code = item[2];
    const word* v = item_value(item);
    switch (code) {
      case KW_debug: case KW_precision: case KW_format: case KW_time: case KW_add: case KW_STOP:
        if (propriete(t, code, v) < 0) return -1;
        break;
      case KW_number: case KW_vertex: case KW_fac:
        if (v && propriete(t, code, v) < 0) return -1;
        break;
      case KW_name:
        if (const char* n = value_text(v)) {
          libere_mem(t->name);
          t->name = copie_nom(n);
          noms_traj_changes();
        }
        break;
      default: break;
    }
  }
  return 0;
}

int limite_axe(word* s, Objet* t) {
  const word* v = arg_of(s, KW_axis);
  if (!v) v = arg_of(s, KW_limit);
  float f[6] = {-1, -1, -1, 1, 1, 1};
  floats_of(v, f, 6);
  bloc p = set_val_2(t, KW_limit, KW_axis, 6);
  if (!p) return -1;
  for (int k = 0; k < 6; k++) setf(p, k, f[k]);
  return 0;
}

void montre_table(Objet* t) {
  if (const word* v = table_traj(t)) print_value(v);
}

int PROPR_TRAJ(word* s, const word* ob, Objet* t, const word* lim) {
  word* item = next_item(first_item(s));
  word* read = nullptr;
  bool wrote = false;
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    const int code = item[2];
    const word* v = ob && i == item_count(s) - 1 ? ob : item_value(item);
    if (code == KW_limit && i + 1 < item_count(s) && next_item(item)[2] == KW_axis) {
      if (limite_axe(s, t) < 0) return -1;
      item = next_item(item), i++;
      wrote = true;
      continue;
    }
    if (mot_attache(code) || code == KW_vertex || code == KW_fac) continue;
    if (code == KW_abs || !v) {
      if (!read && code != KW_ini) read = item;
      if (code == KW_ini) cpt(t) = 0, end(t) = 0, inc(t) = std::abs(inc(t)) ? std::abs(inc(t)) : 1;
      continue;
    }
    wrote = wrote || code != KW_abs;
    float f[2] = {0, 0};
    const int n = floats_of(v, f, 2);
    switch (code) {
      case KW_period:
        if (n > 0) period(t) = entier(f[0]);
        if (n > 1 && entier(f[1]) != 0) inc(t) = std::clamp(entier(f[1]), -MAX_LIGNES, MAX_LIGNES);
        end(t) = 0;
        break;
      case KW_animate:
        if (n > 1) order(t) = std::clamp(entier(f[1]), 1, MAX_ORDRE);
        if (n > 0 && change_lignes(t, entier(f[0])) < 0) return -1;
        calcule_max_order();
        break;
      case KW_format:
        if (n > 0 && (f[0] < 1 || f[0] > 3)) {
          voir_int("(%d) != 1,2\a\n", entier(f[0]));
          return -1;
        }
        if (propriete(t, code, v) < 0) return -1;
        break;
      case KW_debug: case KW_precision: case KW_time: case KW_add: case KW_STOP: case KW_number:
        if (propriete(t, code, v) < 0) return -1;
        break;
      case KW_name:
        if (proprietes_traj(s, t) < 0) return -1;
        break;
      default:
        read = item;
        break;
    }
  }
  if (wrote) t->unsaved = 1;
  if (read) return lit_champ(s, read, t, lim);
  return build_nil(s);
}
