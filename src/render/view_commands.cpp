// `view`, `eye`, `aim`, `foc`, `roll`, `pers`, `stereo`, `depth`.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "render/commands.h"
#include "render/lights.h"
#include "render/view.h"
#include "render/window.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/matrix.h"
#include "scene/vol_build.h"
#include "scene/volume.h"

namespace {

// The objects of `view(...)` or `light(...)` in the command.
// A 3-float property written from `f` (missing coordinates 0).
bool ecrit3(Objet* o, int code, const float* f) {
  bloc b = set_val_1(o, code, 3);
  if (!b) return false;
  for (int i = 0; i < 3; i++) setf(b, i, f[i]);
  return true;
}

int lit(Objet* o, int code, float* out, int n) { return floats_of(get_val_1(o->local, code), out, n); }

// `eye poi(x,y,z) view(id)` and `eye vol(id) view(id)`, the same for aim:
// the named views' eye (or aim) moves to the point or the volume's place,
// or with `spring(k,c)` is pulled toward it by a spring; `dist(d)` bounds
// the distance moved by one call.
int vers_vol_poi(word* s, int code) {
  float target[3] = {0, 0, 0};
  bool found = arg_floats(s, KW_poi, target, 3) > 0;
  if (const word* sel = arg_of(s, KW_vol); sel && !found) {
    if (Objet* v = get_objet_simple(chaine_classe(KW_vol), sel, 0)) {
      const float* t = get_matrix_vol(v);
      for (int i = 0; i < 3 && t; i++) target[i] = t[TR_TRAN + i] + t[TR_DELTA + TR_TRAN + i];
      found = t != nullptr;
    }
  }
  std::vector<Objet*> views_named = arg_objects(s, KW_view);
  if (!found || views_named.empty()) {
    voir_mot(code);
    voir_mot(KW_poi);
    voir_mot(KW_vol);
    voir_texte("(id_vol) ");
    voir_mot(KW_view);
    voir_texte("(id_vue)\n");
    return -1;
  }
  float spring[2] = {0, 0}, dist = 0;
  arg_floats(s, KW_spring, spring, 2);
  arg_floats(s, KW_dist, &dist, 1);
  // With a spring, the step of the dynamics pulls the point toward the
  // target, with the view's mass (1 when it has none).
  const bool ressort = spring[0] > 0 && views().spring_move;
  for (Objet* v : views_named) {
    float p[3] = {0, 0, 0};
    lit(v, code, p, 3);
    float q[3] = {p[0], p[1], p[2]};
    if (ressort) {
      const float m = value_at(get_val_1(v->local, KW_mass), 0, 0);
      if (views().spring_move(v, code, target, q, spring[0], spring[1], m > 0 ? m : 1) < 0) return -1;
    } else {
      std::copy(target, target + 3, q);
    }
    if (dist > 0) {
      const float d[3] = {q[0] - p[0], q[1] - p[1], q[2] - p[2]};
      const float l = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
      if (l > dist)
        for (int i = 0; i < 3; i++) q[i] = p[i] + d[i] * dist / l;
    }
    if (!ecrit3(v, code, q)) return -1;
    CAL_VIEW(v, 1);
  }
  return build_nil(s);
}

}  // namespace

int SET_VIEW_WRITE(const word* sel, int n, const char* t) {
  int items = 1;
  for (const char* c = t; *c; c++) items += *c == ';';
  if (n < 1 || items != n * n) {
    voir_mot(KW_view);
    voir_texte("(id) ");
    voir_mot(KW_dim);
    voir_int("%d ", n);
    voir_mot(KW_write);
    VOIR_CHAR("%s ", t);
    voir_int2("%d != %d\n", items, n * n);
    return -1;
  }
  int id = 0;
  char name[256];
  const int k = element_selection(sel, 0, &id, name);
  if (k < 0) return -1;
  Objet* v = CRE_VIEW(k == 0 ? id : 0, k == 1 ? name : nullptr);
  if (!v) return -1;
  v->subkind = KW_write;
  v->work[0] = v->work[1] = n;
  const size_t len = std::strlen(t);
  std::vector<word> value(4 + (len + 4) / 4, 0);
  build_head(value.data(), static_cast<word>(value.size()), T_CHAR, static_cast<word>(len + 1));
  std::memcpy(value.data() + 4, t, len);
  return set_propr_1(v, KW_write, value.data()) ? 0 : -1;
}

int EYE_VOL_POI(word* s) { return vers_vol_poi(s, KW_eye); }
int AIM_VOL_POI(word* s) { return vers_vol_poi(s, KW_aim); }

int SET_VIEW_b(word* s, const word* ob, word* st, const word* lim) {
  const word* sel = command_argument(s);
  if (ob || !sel) return bloc_0(s, ob, st, lim);
  if (const char* t = value_text(arg_of(s, KW_write))) {
    if (SET_VIEW_WRITE(sel, arg_int(s, KW_dim, 2), t) < 0) return -1;
    return build_nil(s);
  }
  for (int i = 0; i < nb_selection(sel); i++) {
    int id = 0;
    char name[256];
    const int k = element_selection(sel, i, &id, name);
    if (k < 0) return -1;
    Objet* v = CRE_VIEW(k == 0 ? id : 0, k == 1 ? name : nullptr);
    if (!v || set_propriete_vol_b(v, s) < 0) {
      TRACE_FAIL("SET_VIEW()");
      return -1;
    }
    if (float d; arg_floats(s, KW_displ, &d, 1)) v->valid = entier(d);
    CAL_VIEW(v, 1);
  }
  return build_nil(s);
}

int AIM_EYE_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  const int code = first_item(s)[2];
  if (has_word(s, KW_poi) || has_word(s, KW_vol)) return code == KW_eye ? EYE_VOL_POI(s) : AIM_VOL_POI(s);
  const word* v = ob ? ob : command_argument(s);
  float f[3] = {0, 0, 0};
  const int n = floats_of(v, f, 3);
  for (int kind : {KW_view, KW_light}) {
    if (!has_word(s, kind)) continue;
    std::vector<Objet*> objs;
    const word* sel = arg_of(s, kind);
    for (int i = 0; sel && i < nb_selection(sel); i++) {
      Objet* o = get_objet_simple(chaine_classe(kind), sel, i);
      if (!o && n > 0) o = set_objet_simple(chaine_classe(kind), kind / KW_PER_VOC, kind, sel, i);
      if (o) objs.push_back(o);
    }
    if (n == 0) {
      float r[3] = {0, 0, 0};
      if (!objs.empty()) lit(objs[0], code, r, 3);
      return build_floats(s, lim, {r[0], r[1], r[2]});
    }
    for (Objet* o : objs) {
      if (!ecrit3(o, code, f)) return -1;
      if (kind == KW_view) CAL_VIEW(o, 1);
      else SET_LIGHT_1(o, code == KW_eye ? KW_eye : 0, nullptr);
    }
    return build_nil(s);
  }
  vue_active();
  ViewState& vs = views();
  float* p = code == KW_eye ? vs.P_eye : code == KW_aim ? vs.P_aim : vs.P_axis;
  if (!p) return -1;
  if (n == 0) return build_floats(s, lim, {p[0], p[1], p[2]});
  for (int i = 0; i < 3; i++) p[i] = f[i];
  if (code == KW_eye) CAL_VIEW(nullptr, 1);
  return build_nil(s);
}

int FOC_ROLL_b(word* s, const word* ob, word* st, const word* lim) {
  const int code = first_item(s)[2];
  // `foc win("name")`: the focus goes to that window.
  if (code == KW_foc && has_word(s, KW_win)) return WIN_b(s, ob, st, lim);
  if (has_word(s, KW_view) || has_word(s, KW_light) || has_word(s, KW_attach) || has_word(s, KW_win))
    return bloc_0(s, ob, st, lim);
  vue_active();
  ViewState& vs = views();
  float* p = code == KW_foc ? vs.P_foc : vs.P_roll;
  if (!p) return -1;
  float f = 0;
  if (floats_of(ob ? ob : command_argument(s), &f, 1) > 0) {
    const float before = *p;
    *p = f;
    if (CAL_VIEW(nullptr, 1) < 0) {
      *p = before;  // the former matrices stay, and so does the value
      return -1;
    }
  }
  return build_float(s, lim, *p);
}

int PERS_b(word* s, const word* ob, word* st, const word* lim) {
  ViewState& vs = views();
  for (int second : {KW_eye, KW_screen})
    if (has_word(s, second)) return COM1_COM2_OBJ(s, st, lim, ob, KW_pers, second);
  if (has_word(s, KW_normal)) {
    float f[9];
    if (floats_of(ob ? ob : arg_of(s, KW_normal), f, 9) == 9)
      for (int i = 0; i < 9; i++) vs.Param_ortho[i] = entier(f[i]);
    std::vector<float> out(vs.Param_ortho, vs.Param_ortho + 9);
    return build_floats(s, lim, out);
  }
  if (has_word(s, KW_vol)) {
    std::vector<float> out;
    const word* verts = arg_of(s, KW_vertex);
    for (Objet* o : arg_objects(s, KW_vol)) {
      const word* poi = poi_vol(o);
      const float* m = get_matrix_vol(o);
      if (!poi || !m) continue;
      std::vector<float> ks(static_cast<size_t>(np(poi)));
      int nk = verts ? floats_of(verts, ks.data(), static_cast<int>(ks.size())) : 0;
      if (!verts)
        for (int i = 0; i < np(poi); i++) ks[nk++] = static_cast<float>(i + 1);
      for (int i = 0; i < nk; i++) {
        const int k = entier(ks[i]);
        if (k < 1 || k > np(poi)) continue;
        const float* p = reinterpret_cast<const float*>(poi + 4) + (k - 1) * stride(poi);
        float a[3], r[3] = {0, 0, 0};
        mat::point(m + TR_MATRIX, p, a);
        projette_point(a, r);
        out.insert(out.end(), r, r + 3);
      }
    }
    return build_floats(s, lim, out);
  }
  const word* v = ob ? ob : command_argument(s);
  const int n = v ? elements(v) : 0;
  if (n == 0) return build_float(s, lim, static_cast<float>(Yes(KW_pers)));
  std::vector<float> f(static_cast<size_t>(n));
  floats_of(v, f.data(), n);
  if (n < 3) {
    if (set_sem(KW_pers, entier(f[0])) < 0) return -1;
    return build_nil(s);
  }
  std::vector<float> out(f.size(), 0.0f);
  for (int i = 0; i + 2 < n; i += 3) projette_point(&f[i], &out[i]);
  return build_floats(s, lim, out);
}

int STEREO_b(word* s, const word* ob, word* st, const word* lim) {
  (void)ob;
  (void)st;
  (void)lim;
  vue_active();
  ViewState& vs = views();
  float E[3] = {0, 0, -100}, A[3] = {0, 0, 0}, X[3] = {0, 1, 0};
  // Both eyes see with the current view's focal.
  const float foc = vs.P_foc ? *vs.P_foc : 1.0f;
  if (vs.P_eye) std::copy_n(vs.P_eye, 3, E);
  if (vs.P_aim) std::copy_n(vs.P_aim, 3, A);
  if (vs.P_axis) std::copy_n(vs.P_axis, 3, X);
  arg_floats(s, KW_eye, E, 3);
  arg_floats(s, KW_aim, A, 3);
  arg_floats(s, KW_axis, X, 3);
  float d = E[2] / 16;
  arg_floats(s, KW_dist, &d, 1);
  float cols[6] = {1, 0, 0, 0, 1, 0};
  int nc = 0;
  word* it = first_item(s);
  for (int i = 0; i < item_count(s); i++, it = next_item(it))
    if (it[2] == KW_col && nc < 2) floats_of(item_value(it), cols + 3 * nc++, 3);
  const float sv[3] = {A[0] - E[0], A[1] - E[1], A[2] - E[2]};
  float off[3] = {d, 0, 0};
  if (std::fabs(sv[2]) >= 0.0001f) {
    const float a = std::atan(-sv[0] / sv[2]);
    off[0] = d * std::cos(a);
    off[2] = d * std::sin(a);
  } else if (std::fabs(sv[0]) >= 0.0001f) {
    off[0] = 0;
    off[2] = d;
  }
  for (int k = 0; k < 2; k++) {
    Objet* v = CRE_VIEW_DEFAUT(k + 1);
    if (!v) return -1;
    const float sign = k == 0 ? -1.0f : 1.0f;
    const float e[3] = {E[0] + sign * off[0], E[1] + sign * off[1], E[2] + sign * off[2]};
    if (!ecrit3(v, KW_eye, e) || !ecrit3(v, KW_aim, A) || !ecrit3(v, KW_axis, X) ||
        !ecrit3(v, KW_col, cols + 3 * k))
      return -1;
    if (bloc b = set_val_1(v, KW_foc, 1)) setf(b, 0, foc);
    CAL_VIEW(v, 1);
  }
  set_sem(KW_view, 1);
  return build_nil(s);
}

int DEPTH_b(word* s, const word* ob, word* st, const word* lim) {
  if (item_count(s) > 1) return bloc_0(s, ob, st, lim);
  return set_get_val_com(s, lim, ob);
}
