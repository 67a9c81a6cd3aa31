// The command `traj`: `traj(id) KIND(keys) animate(ni, order) period(p, inc)
// ... vol(id)` makes a trajectory (replacing the one of that number) and
// attaches it to the objects named; a command with no kind word reads or
// writes the fields of existing trajectories (PROPR_TRAJ).
#include <algorithm>
#include <vector>

#include "animation/traj/ajust.h"
#include "animation/traj/command.h"
#include "animation/traj/lists.h"
#include "animation/traj/traj.h"
#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/graphic.h"
#include "scene/law.h"
#include "scene/lookup.h"
#include "kernel/object_store.h"
#include "scene/property_rw.h"
#include "scene/volume.h"

namespace {

// The words that are not kinds: fields, options, properties, reads.
bool mot_de_champ(int code) {
  switch (code) {
    case KW_traj: case KW_animate: case KW_period: case KW_acc: case KW_dec: case KW_pend: case KW_law:
    case KW_anc: case KW_adjust: case KW_ext: case KW_close: case KW_NP: case KW_abs: case KW_debug:
    case KW_precision: case KW_format: case KW_time: case KW_name: case KW_var: case KW_ini: case KW_edit:
    case KW_vertex: case KW_fac: case KW_add: case KW_number: case KW_STOP:
      return true;
    default:
      return mot_attache(code);
  }
}

// `dim` is a read when it has no value, else a kind.
bool lecture(word* item) {
  const int code = item[2];
  if (code == KW_abs) return true;
  return (code == KW_dim || code == KW_NP || code == KW_period || code == KW_var) && !item_value(item);
}

struct Creation {
  int kind1 = 0, kind2 = 0;
  const word* keys = nullptr;
  bool limit_axis = false;
  Ajustement aj;
  int ni = 0, order = 1, period = 0, inc = 1, format = 3;
  bool animate = false, ini = false;
};

// Reads the words that shape the table; -1 after a report.
int lit_creation(word* s, Creation& c) {
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item)) {
    const int code = item[2];
    const word* v = item_value(item);
    if (code == KW_limit && i + 1 < item_count(s) && next_item(item)[2] == KW_axis) {
      c.limit_axis = true;
      item = next_item(item), i++;
      continue;
    }
    if (!mot_de_champ(code) && !lecture(item)) {
      if (!c.kind1) c.kind1 = code;
      else if (!c.kind2) c.kind2 = code;
      if (!c.keys && v) c.keys = v;
      continue;
    }
    float f[2] = {0, 0};
    const int n = floats_of(v, f, 2);
    switch (code) {
      case KW_animate:
        c.animate = true;
        c.ni = n > 0 ? entier(f[0]) : 2;
        if (n > 1) c.order = std::clamp(entier(f[1]), 1, MAX_ORDRE);
        break;
      case KW_period:
        c.period = n > 0 ? entier(f[0]) : 1;
        if (n > 1) c.inc = std::clamp(entier(f[1]), -MAX_LIGNES, MAX_LIGNES);
        break;
      case KW_acc: case KW_dec: case KW_pend:
        if (n > 0 && f[0] == 0) c.aj.loi.kind = 0;
        else c.aj.loi.kind = code == KW_pend && n > 0 && f[0] < 0 ? -KW_pend : code;
        break;
      case KW_law:
        if (!courbe_loi(v, c.aj.loi.curve)) return -1;
        if (c.aj.loi.kind != KW_adjust) c.aj.loi.kind = KW_law;
        break;
      case KW_anc: if (c.aj.loi.kind == KW_law) c.aj.loi.kind = KW_anc; break;
      case KW_adjust: c.aj.loi.kind = KW_adjust; break;
      case KW_ext:
        c.aj.ext = true;
        if (n > 0) c.aj.ext_steps = std::clamp(entier(f[0]), 1, 1000);
        if (n > 1) c.aj.ext_tension = f[1];
        break;
      case KW_close: c.aj.close = n == 0 || f[0] != 0; break;
      case KW_ini: c.ini = true; break;
      case KW_format:
        c.format = n > 0 ? entier(f[0]) : 3;
        if (c.format < 1 || c.format > 3) {
          voir_int("(%d) != 1,2\a\n", c.format);
          return -1;
        }
        break;
      default: break;
    }
  }
  return 0;
}

// `interpol(v1, v2, ...)`: the vertices of those volumes, one shape a
// key, all of the same size. The floats of a shape, or -1 after a report.
int formes(const word* ids, std::vector<float>& shapes) {
  int dim = 0;
  for (int i = 0; ids && i < nb_selection(ids); i++) {
    Objet* v = get_objet_simple(chaine_classe(KW_vol), ids, i);
    const word* poi = v ? poi_vol(v) : nullptr;
    if (!poi) {
      err_objet(KW_vol, ids, i, 0, nullptr);
      return -1;
    }
    const int n = np(poi) * stride(poi);
    if (dim && n != dim) {
      err_incoherent("TRAJ_b()");
      return -1;
    }
    dim = n;
    const float* f = reinterpret_cast<const float*>(poi + 4);
    shapes.insert(shapes.end(), f, f + n);
  }
  if (dim == 0) err_manque("TRAJ_b()");
  return dim > 0 ? dim : -1;
}

// Removes the trajectories of that element of the selector.
void retire_anciennes(const word* sel, int index) {
  while (Objet* o = get_objet_simple(chaine_classe(KW_traj), sel, index)) rem_objet(o);
}

int cree_une(word* s, const Creation& c, const word* sel, int index) {
  retire_anciennes(sel, index);
  Objet* t = set_objet_simple(chaine_classe(KW_traj), KW_traj / KW_PER_VOC, KW_traj, sel, index);
  if (!t) {
    TRACE_FAIL("TRAJ_b()");
    return -1;
  }
  std::vector<float> keys;
  int shape = 0;
  if (c.kind1 == KW_interpol) {
    if ((shape = formes(c.keys, keys)) < 0) {
      rem_objet(t);
      TRACE_FAIL("TRAJ_b()");
      return -1;
    }
  } else {
    keys = floats_of(c.keys);
  }
  noms_traj_changes();
  t->unsaved = 1;
  kind_1(t) = c.kind1;
  kind_2(t) = c.kind2;
  anim(t) = c.animate ? KW_animate : 0;
  traj_ini(t) = c.ini ? 1 : 0;
  int per_key = kind_une_valeur(c.kind1) ? 1 : c.kind1 == KW_dim || c.kind1 == KW_radius ? 2 : c.kind1 == KW_quat ? 4 : 3;
  if (c.format == 1 || c.format == 2) per_key = c.format;
  if (c.kind1 == KW_limit) per_key = 6;
  if (shape) per_key = shape;
  const int n_keys = static_cast<int>((keys.size() + static_cast<size_t>(per_key) - 1) / static_cast<size_t>(per_key));
  ni(t) = std::max(c.animate ? c.ni : n_keys, 2);
  if (ni(t) > MAX_LIGNES || static_cast<long long>(ni(t)) * std::max(per_key, 6) > MAX_FLOTTANTS) {
    hors_limite(ni(t));
    rem_objet(t);
    TRACE_FAIL("TRAJ_b()");
    return -1;
  }
  cpt(t) = 0;
  period(t) = c.period;
  order(t) = c.order;
  inc(t) = c.inc != 0 ? c.inc : 1;
  end(t) = 0;
  if (!keys.empty()) {
    int r = 0;
    if (shape) r = SET_VAR_FORMES(ni(t), t, keys, shape, c.aj);
    else if (c.kind1 == KW_limit) r = SET_VAR_3(ni(t), t, c.kind2, keys, c.aj);
    else if (c.kind2) r = SET_VAR_2(ni(t), t, c.kind1, c.kind2, keys, c.aj, c.format);
    else r = SET_VAR_1(ni(t), t, c.kind1, keys, c.aj, c.format);
    if (r < 0) {
      TRACE_FAIL("TRAJ_b()");
      return -1;
    }
  }
  // The properties of the command, as on any object.
  if (proprietes_traj(s, t) < 0 || (c.limit_axis && limite_axe(s, t) < 0)) return -1;
  if (find_item(s, KW_debug) || find_item(s, KW_edit)) montre_table(t);
  return 0;
}

}  // namespace

int TRAJ_b(word* s, const word* ob, word* st, const word* lim) {
  word* first = first_item(s);
  const word* sel = item_value(first);
  if (!sel) {
    // `traj` alone does nothing visible; `traj vol(1)` is the property.
    if (item_count(s) == 1 && !ob) return build_nil(s);
    return bloc_0(s, ob, st, lim);
  }
  Creation c;
  if (!ob && lit_creation(s, c) < 0) {
    TRACE_FAIL("TRAJ_b()");
    return -1;
  }
  const int n = nb_selection(sel);
  if (c.kind1) {
    for (int i = 0; i < n; i++)
      if (cree_une(s, c, sel, i) < 0) return -1;
    calcule_max_order();
  }
  // Attachment, then the fields of each trajectory named.
  std::vector<Objet*> trajs;
  for (int i = 0; i < n; i++) {
    Objet* t = get_objet_simple(chaine_classe(KW_traj), sel, i);
    if (!t && !c.kind1 && item_count(s) == 1 && !ob) {
      // `traj(id)` alone makes an empty trajectory, given a table later.
      t = set_objet_simple(chaine_classe(KW_traj), KW_traj / KW_PER_VOC, KW_traj, sel, i);
      if (t) order(t) = 1, inc(t) = 1, noms_traj_changes();
    }
    if (!t) {
      err_objet(KW_traj, sel, i, 0, nullptr);
      return -1;
    }
    trajs.push_back(t);
  }
  for (Objet* t : trajs)
    if (attache(s, t) < 0) {
      TRACE_FAIL("TRAJ_b()");
      return -1;
    }
  if (c.kind1) return build_nil(s);
  return PROPR_TRAJ(s, ob, trajs.front(), lim);
}
