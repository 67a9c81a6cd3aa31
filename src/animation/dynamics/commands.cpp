// The commands of dynamics: `mass`, `force`, `speed` and `acc` with their
// per-vertex forms, and `lead`, `follow`, `anc`, `reanc` that link
// volumes in chains. Every other form is the generic property command.
#include <algorithm>
#include <vector>

#include "animation/dynamics/dyn_props.h"
#include "animation/dynamics/dyn_state.h"
#include "animation/dynamics/dynamics.h"
#include "animation/cycle.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/args.h"
#include "render/view.h"
#include "kernel/chains.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/property_rw.h"
#include "scene/selection.h"
#include "scene/vol_commands.h"
#include "scene/vol_generate.h"
#include "scene/volume.h"

namespace {

// The vertex numbers (from 1) a command names with `vertex(...)`, or by
// rows of a grid with `secy(j...)` (row j from 1, `secx` + 1 vertices
// long), or all n of them when it names none or 0; in `k`, whose memory is
// kept from call to call.
void sommets_nommes(word* s, Objet* o, int n, std::vector<int>& k) {
  k.clear();
  const word* l = arg_of(s, KW_vertex);
  for (int i = 0; l && i < elements(l); i++) {
    const int v = entier(value_at(l, i, 0));
    if (v == 0) {
      k.clear();
      break;
    }
    k.push_back(v);
  }
  const word* rows = arg_of(s, KW_secy);
  const int len = vol_secx(o) + 1;
  for (int i = 0; rows && i < elements(rows); i++) {
    const int j = entier(value_at(rows, i, 0));
    for (int v = (j - 1) * len + 1; j >= 1 && v <= j * len && v <= n; v++) k.push_back(v);
  }
  if (k.empty())
    for (int i = 1; i <= n; i++) k.push_back(i);
}

// f on each object the command names, in order, asking for no memory: a
// user function may give these commands at every image. False (the value
// NIL when reading) when it names none.
template <class F>
bool pour_les_objets(word* s, const word* ob, F&& f) {
  Selection sel;
  bool any = false;
  if (lire_selection(s, sel, mot_objet) == WalkEnd::Objects &&
      pour_chaque_objet(sel, [&](Objet* o) { return any = true, f(o); }) < 0)
    return false;
  if (!any && !ob) build_nil(s);
  return any;
}

// `KEY vertex(i...) vol(id)`: rows of w floats, one a stored vertex,
// the property made when missing with each row at `init`. Writing puts
// the value in each named row (a value of w floats for each named vertex
// gives each its own); reading gives the named rows. A volume without the
// property when read is reported with message `absent`.
int rangees_sommets(word* s, const word* ob, const word* lim, int code, int w, const float* init, int absent) {
  Pret<int> numeros(dynamique().sommets);
  std::vector<int>& k = numeros.v;
  std::vector<float> lu;
  int r = 0;
  const bool any = pour_les_objets(s, ob, [&](Objet* o) {
    const word* poi = poi_vol(o);
    if (!poi) {
      err_vide("FORCE_VERTEX()", o);
      return r = -1;
    }
    const int n = np(poi);
    const int keys[] = {code, KW_vertex};
    float* rows = flottants(get_val_2(o->local, code, KW_vertex), n * w);
    if (!ob && !rows) return r = manque_propriete(o, absent);
    if (!rows) {
      bool valide = false;
      rows = flottants(cache_vol(o, 2, keys, n, w, &valide), n * w);
      if (!rows) return r = -1;
      cache_valide(o, 2, keys);
      for (int i = 0; i < n; i++) std::copy(init, init + w, rows + i * w);
      // The masses of the vertices start at the volume's.
      if (code == KW_mass) std::fill(rows, rows + n, value_at(get_val_1(o->local, KW_mass), 0, 0));
    }
    sommets_nommes(s, o, n, k);
    const int e = ob ? elements(ob) : 0;
    const bool chacun = e >= w * static_cast<int>(k.size()) && k.size() > 1;
    for (size_t j = 0; j < k.size(); j++) {
      if (k[j] < 1 || k[j] > n) {
        hors_limite(k[j]);
        continue;
      }
      float* row = rows + (k[j] - 1) * w;
      if (!ob) {
        lu.insert(lu.end(), row, row + w);
        continue;
      }
      for (int a = 0; a < w && a < e; a++) row[a] = value_at(ob, chacun ? static_cast<int>(j) * w + a : a, 0);
    }
    return 0;
  });
  if (r < 0) return r;
  if (!any || ob) return 0;
  return lu.empty() ? build_nil(s) : build_floats(s, lim, lu, w);
}

int MASS_VERTEX(word* s, const word* ob, const word* lim) {
  const float zero = 0;
  return rangees_sommets(s, ob, lim, KW_mass, 1, &zero, 101);
}

int MASS_b(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_vertex)) return MASS_VERTEX(s, ob, lim);
  if (has_word(s, KW_image)) return MASS_IMAGE(s, ob, lim);
  return bloc_0(s, ob, st, lim);
}

// `force CG vol(id)=fx,fy,fz[,c]`: the force shared among the vertices
// that count, added to their `force vertex`.
int FORCE_VERTEX_CG(word* s, const word* ob, word* st, const word* lim) {
  if (!ob) return bloc_0(s, ob, st, lim);
  int r = 0;
  pour_les_objets(s, ob, [&](Objet* o) {
    const word* poi = poi_vol(o);
    const int n = poi ? std::min(det_np(o), static_cast<int>(np(poi))) : 0;
    if (n < 1) return 0;
    const int stored = np(poi), keys[] = {KW_force, KW_vertex};
    float* rows = flottants(get_val_2(o->local, KW_force, KW_vertex), stored * 4);
    if (!rows) {
      bool valide = false;
      if (!(rows = flottants(cache_vol(o, 2, keys, stored, 4, &valide), stored * 4))) return r = -1;
      cache_valide(o, 2, keys);
    }
    for (int i = 0; i < n; i++) {
      for (int a = 0; a < 3; a++) rows[i * 4 + a] += value_at(ob, a, 0) / static_cast<float>(n);
      if (elements(ob) > 3) rows[i * 4 + 3] = value_at(ob, 3, 0);
    }
    return 0;
  });
  return r;
}

int FORCE_b(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_CG)) return FORCE_VERTEX_CG(s, ob, st, lim);
  if ((has_word(s, KW_vertex) || has_word(s, KW_secy)) && item_count(s) == 3) {
    const float zero[4] = {0, 0, 0, 0};
    return rangees_sommets(s, ob, lim, KW_force, 4, zero, 103);
  }
  return bloc_0(s, ob, st, lim);
}

int SPEED_b(word* s, const word* ob, word* st, const word* lim) {
  const int code = first_item(s)[2];
  if (has_word(s, KW_vertex) && item_count(s) == 3) {
    const float zero[3] = {0, 0, 0};
    return rangees_sommets(s, ob, lim, code, 3, zero, 81);
  }
  return bloc_0(s, ob, st, lim);
}

Objet* vol_id(float id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, static_cast<int>(id)); }

// b leaves the `follow` list of its former leader.
int delie(Objet* b) {
  Objet* c = vol_id(value_at(get_val_1(b->local, KW_lead), 0, 0));
  const word* f = c ? get_val_1(c->local, KW_follow) : nullptr;
  if (!f) return 0;
  std::vector<float> reste;
  for (int i = 0; i < elements(f); i++)
    if (static_cast<int>(value_at(f, i, 0)) != b->id) reste.push_back(value_at(f, i, 0));
  if (static_cast<int>(reste.size()) == elements(f)) return 0;
  if (reste.empty()) return rem_propr_1(c, KW_follow) < 0 ? -1 : 0;
  std::vector<word> v{4 + static_cast<int>(reste.size()), T_FLOAT, static_cast<int>(reste.size()), 1};
  for (float x : reste) v.push_back(fw(x));
  return set_propr_1(c, KW_follow, v.data()) ? 0 : -1;
}

// b is led by a: `lead` of b is a, and b joins a's `follow` once; a
// former leader's list no longer holds b.
int lie(Objet* a, Objet* b) {
  if (a == b) return 0;
  if (static_cast<int>(value_at(get_val_1(b->local, KW_lead), 0, 0)) != a->id && delie(b) < 0) return -1;
  word v[5];
  build_float(v, nullptr, static_cast<float>(a->id));
  if (!set_propr_1(b, KW_lead, v)) return -1;
  const word* f = get_val_1(a->local, KW_follow);
  for (int i = 0; i < elements(f); i++)
    if (static_cast<int>(value_at(f, i, 0)) == b->id) return 0;
  word w[5];
  build_float(w, nullptr, static_cast<float>(b->id));
  const int keys[] = {KW_follow};
  return grow_val(a, 1, keys, w);
}

// `lead vol(b)=a`, `follow vol(a)=b1,b2...`: both ends of each link are
// written. Reading is the generic one. `anc vol(id)` gives the vertices in
// absolute coordinates; `reanc vol(id)` takes the present placement as
// the new anchor (`matrix anc` made again from it).
int LEAD_FOLLOW(word* s, const word* ob, word* st, const word* lim) {
  const int code = first_item(s)[2];
  if (code == KW_anc || code == KW_reanc) {
    if (item_count(s) < 2) return set_get_val_com(s, lim, ob);
    Selection sel;
    std::vector<Objet*> objets;
    if (!objets_commande(s, sel, objets, ob)) return 0;
    std::vector<float> lu;
    for (Objet* o : objets) {
      if (code == KW_reanc) rem_propr_2(o, KW_matrix, KW_anc);
      const word* a = gen_poi_anc(o);
      if (!a) return -1;
      for (int i = 0; i < elements(a); i++) lu.push_back(value_at(a, i, 0));
    }
    // In an assignment the right side lies just above the command: the
    // vertices written over it would destroy the value being assigned.
    if (ob) return 0;
    return build_floats(s, lim, lu, 3);
  }
  if (!ob || item_count(s) != 2) return bloc_0(s, ob, st, lim);
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets, ob)) return 0;
  for (Objet* o : objets)
    for (int i = 0; i < elements(ob); i++) {
      Objet* g = vol_id(value_at(ob, i, 0));
      if (!g) {
        err_objet(KW_vol, ob, i, 0, nullptr);
        return -1;
      }
      if ((code == KW_lead ? lie(g, o) : lie(o, g)) < 0) return -1;
    }
  return 0;
}

}  // namespace

void install_dynamics() {
  register_stage(STAGE_DYNAMIC, DYNAMIC_b);
  views().spring_move = [](Objet* v, int code, const float from[3], float to[3], float k, float c, float m) {
    return SPRING_MOVE(v, from, to, k, c, m, code == KW_aim ? KW_aim : 0);
  };
  register_graphic_handler({KW_mass}, MASS_b);
  register_graphic_handler({KW_force}, FORCE_b);
  register_graphic_handler({KW_speed, KW_acc, KW_dec, KW_pend}, SPEED_b);
  register_graphic_handler({KW_lead, KW_follow, KW_anc, KW_reanc}, LEAD_FOLLOW);
  install_fields();
  install_dynamic_commands();
}
