// The properties a dynamic object reads, found by one walk of its
// property list: each path of the table below is a key sequence, and the
// walk leaves the value of each one present (or null) in a DynProps.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

enum DynPath : int {
  D_dynamic, D_mass, D_force, D_force_add, D_speed, D_acc,
  D_limit_force, D_limit_speed, D_inv_speed,
  D_force_rota, D_force_rota_add, D_speed_rota, D_acc_rota,
  D_limit_rota, D_limit_rota_rotz, D_limit_speed_rota, D_limit_acc_rota, D_limit_force_rota,
  D_spring_rota, D_rota_dup, D_spring_ang, D_coe_force_rota, D_limit_axis_rota, D_limit_axis,
  D_law_speed_rota,
  D_force_vertex, D_mass_vertex, D_speed_vertex, D_acc_vertex, D_add_force_vertex, D_col_vertex,
  D_limit_force_vertex, D_limit_speed_vertex, D_limit_dist_vertex_poi, D_limit_dist_force,
  D_limit_dist,
  D_spring, D_spring_vertex, D_near_vertex_vertex, D_near_vertex_dist, D_meta_spring_poi_vertex,
  D_poi_dup, D_poi_anc, D_CG_animate, D_radius_tran,
  D_lead, D_follow, D_vertex_follow, D_field, D_law, D_simple, D_envelope, D_poi, D_fac,
  D_time, D_time_vertex, D_meta,
  D_COUNT
};

struct DynProps {
  bloc v[D_COUNT];
  bloc operator[](DynPath p) const { return v[p]; }
  bloc& operator[](DynPath p) { return v[p]; }
};

// Fills `d` from the object's list: one pass over its properties.
void lire_props(const Objet* o, DynProps& d);

// A path of up to four keys.
struct CheminProp {
  int n;
  int codes[4];
};
// The same walk for another table: out[k] is the value of chemins[k], or
// null when the object has no such property.
void lire_chemins(const Objet* o, const CheminProp* chemins, int count, bloc* out);

// The value of path `p`, made when missing (or holding fewer than
// np x dimp floats) as a zeroed FLOAT of np points of dimp, and recorded
// in `d`. Null after a report.
bloc cree_prop(Objet* o, DynProps& d, DynPath p, int np, int dimp);

// The report of a property an object lacks: the object, then message
// `num` of vocabulary 1 (101 a mass, 81 a speed, 103 a dynamic). -1.
int manque_propriete(const Objet* o, int num);

// The keys of a path: their count, and the codes in `codes`.
int cles_prop(DynPath p, const int** codes);

// The floats of a FLOAT value that holds at least n of them, else null.
float* flottants(bloc v, int n);

// A value of one row a vertex, as the step reads it: plain rows of `w`
// floats, or the tables the generic property command writes for
// `KEY vertex vol(id)=...` (slots of a FLOAT of negative dimp, or a
// PROPRIETES table of one value a vertex). An empty slot, or a vertex past
// the table, reads as absent.
struct Rangees {
  const word* v = nullptr;
  const float* plain = nullptr;
  int w = 0;
  int n = 0;  // the rows the value holds
  explicit operator bool() const { return v != nullptr; }
  // Element a of row i, or `dflt`. Plain rows are read inline.
  float at(int i, int a, float dflt = 0) const {
    if (plain) return i >= 0 && i < n && a < w ? plain[i * w + a] : dflt;
    return v ? at_table(i, a, dflt) : dflt;
  }
  // Whether row i is given.
  bool has(int i) const { return plain ? i >= 0 && i < n : v && has_table(i); }
  // Row i: its floats in place, or copied to buf (w floats); null when
  // not given.
  const float* row(int i, float* buf) const {
    if (plain) return i >= 0 && i < n ? plain + i * w : nullptr;
    if (!has(i)) return nullptr;
    for (int a = 0; a < w; a++) buf[a] = at_table(i, a, 0);
    return buf;
  }

 private:
  float at_table(int i, int a, float dflt) const;
  bool has_table(int i) const;
};
Rangees rangees(const word* v, int w);
