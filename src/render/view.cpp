// View objects: creation with their ten properties, the current view, and
// CAL_VIEW, which stores the matrices computed by view_matrices.
#include "render/view.h"

#include <cstring>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "render/window.h"
#include "scene/lookup.h"

namespace {

// The orthographic camera of a window of w x h pixels: the scene's
// origin in the middle of the window.
void param_ortho(int* p, int w, int h) {
  const int q[9] = {-w / 2, h / 2, -1000, -w / 2, h / 2, 0, 0, -1, 0};
  std::memcpy(p, q, sizeof q);
}

}  // namespace

ViewState& views() {
  // Until a window sets it, the camera of the window's start-up size.
  static ViewState v = [] {
    ViewState s;
    param_ortho(s.Param_ortho, win().Dimx, win().Dimy);
    return s;
  }();
  return v;
}

namespace {

struct Slot {
  int c1, c2, n;  // keys (c2 0 for one) and float count
};
// The ten properties of a view, in the order of its table.
constexpr Slot SLOTS[10] = {
    {KW_eye, 0, 3},        {KW_aim, 0, 3},         {KW_axis, 0, 3},        {KW_foc, 0, 1},
    {KW_roll, 0, 1},       {KW_abs, KW_eye, 16},   {KW_eye, KW_pers, 16},  {KW_abs, KW_pers, 16},
    {KW_eye, KW_abs, 16},  {KW_pers, KW_abs, 16},
};
enum { S_EYE, S_AIM, S_AXIS, S_FOC, S_ROLL, S_ABS_EYE, S_EYE_PERS, S_ABS_PERS, S_EYE_ABS, S_PERS_ABS };

float* floats(bloc v) { return reinterpret_cast<float*>(v + 4); }

// The value of a slot when it holds at least its floats, else null.
float* valeur(Objet* v, const Slot& s) {
  bloc b = s.c2 ? get_val_2(v->local, s.c1, s.c2) : get_val_1(v->local, s.c1);
  if (!b || tag(b) != T_FLOAT || np(b) * (dimp(b) > 0 ? dimp(b) : 1) < s.n) return nullptr;
  return floats(b);
}

float* cree_slot(Objet* v, const Slot& s) {
  bloc b = s.c2 ? set_val_2(v, s.c1, s.c2, s.n) : set_val_1(v, s.c1, s.n);
  return b ? floats(b) : nullptr;
}

// The defaults of the keyword table for the first five slots.
void defaut(const Slot& s, float* out) {
  int n = 0;
  const float* d = s.c1 == KW_roll ? nullptr : def_com(s.c1 / KW_PER_VOC, s.c1, &n);
  for (int i = 0; i < s.n; i++) out[i] = d && i < n ? d[i] : 0.0f;
  if (s.c1 == KW_foc && (!d || n < 1)) out[0] = 1.0f;
  if (s.c1 == KW_axis && (!d || n < 3)) out[1] = 1.0f;
}

int complete(Objet* v) {
  if (!v->local && !local_ini(v)) return -1;
  for (int i = 0; i < 10; i++) {
    if (valeur(v, SLOTS[i])) continue;
    float* f = cree_slot(v, SLOTS[i]);
    if (!f) return -1;
    if (i < 5) defaut(SLOTS[i], f);
    else
      for (int k = 0; k < 16; k++) f[k] = (k % 5 == 0) ? 1.0f : 0.0f;
  }
  return 0;
}

}  // namespace

Objet* CRE_VIEW(int id, const char* name) {
  Objet* head = chaine_classe(KW_view);
  Objet* v = name ? get_objet_nom(head, name) : get_objet_id(head, KW_view, id);
  if (!v) v = cre_objet_nom(head, KW_view / KW_PER_VOC, KW_view, name ? 0 : id, name);
  if (!v) {
    TRACE_FAIL("CRE_VIEW()");
    return nullptr;
  }
  if (!v->subkind) v->subkind = KW_aim;
  v->valid = 1;
  if (complete(v) < 0) {
    voir_objet(v);
    TRACE_FAIL("CRE_VIEW()");
    return nullptr;
  }
  CAL_VIEW(v, 1);
  return v;
}

Objet* CRE_VIEW_DEFAUT(int id) {
  Objet* v = CRE_VIEW(id, nullptr);
  if (v) {
    v->subkind = KW_aim;
    vue_courante(v);
  }
  return v;
}

void vue_courante(Objet* v) {
  ViewState& vs = views();
  int n = 0;
  vs.P_cut = val_com(KW_cut / KW_PER_VOC, KW_cut, &n);
  if (!v || complete(v) < 0) return;
  vs.Vue_courante = v;
  vs.current_id = v->id;
  vs.P_eye = valeur(v, SLOTS[S_EYE]);
  vs.P_aim = valeur(v, SLOTS[S_AIM]);
  vs.P_axis = valeur(v, SLOTS[S_AXIS]);
  vs.P_foc = valeur(v, SLOTS[S_FOC]);
  vs.P_roll = valeur(v, SLOTS[S_ROLL]);
}

Objet* vue_active() {
  ViewState& vs = views();
  Objet* v = get_objet_id(chaine_classe(KW_view), KW_view, vs.current_id);
  if (!v) v = CRE_VIEW_DEFAUT(vs.current_id > 0 ? vs.current_id : 1);
  else vue_courante(v);
  return v;
}

void vue_initiale() {
  Objet* v = vue_active();
  if (!v) return;
  for (int i = 0; i < 5; i++)
    if (float* f = valeur(v, SLOTS[i])) defaut(SLOTS[i], f);
  CAL_VIEW(v, 1);
}

void place_vue(const float* eye, const float* aim, const float* foc) {
  Objet* v = vue_active();
  ViewState& vs = views();
  for (int i = 0; i < 3; i++) {
    if (eye && vs.P_eye) vs.P_eye[i] = eye[i];
    if (aim && vs.P_aim) vs.P_aim[i] = aim[i];
  }
  if (foc && vs.P_foc) *vs.P_foc = *foc;
  CAL_VIEW(v, 1);
}

int CAL_VIEW(Objet* v, int flag) {
  if (!v) {
    v = get_objet_id(chaine_classe(KW_view), KW_view, 1);
    if (!v) return CRE_VIEW_DEFAUT(1) ? 0 : -1;
  }
  if (!v->local && !local_ini(v)) return -1;
  float* p[10];
  for (int i = 0; i < 10; i++) {
    p[i] = valeur(v, SLOTS[i]);
    if (p[i]) continue;
    if (i == S_FOC) {
      err_warning("foc");
      p[i] = cree_slot(v, SLOTS[i]);
      if (p[i]) *p[i] = 1.0f;
    }
    if (!p[i]) {
      voir_objet(v);
      voir_message(1, MESG_BADLY_FORMATTED_VIEW);
      TRACE_FAIL("CAL_VIEW()");
      return -1;
    }
  }
  ViewMatrices m;
  std::memcpy(m.eye_pers, p[S_EYE_PERS], sizeof m.eye_pers);
  const WindowState& w = win();
  if (!view_matrices(p[S_EYE], p[S_AIM], *p[S_FOC], *p[S_ROLL], w.Dimx, w.Dimy, views().Coe_foc,
                     flag != 0, m)) {
    voir_message(1, MESG_OPENING_ZERO);
    TRACE_FAIL("CAL_VIEW()");
    return -1;
  }
  ViewState& vs = views();
  vs.Dist_eye_aim = m.dist;
  vs.Coe_pers = m.coe_pers;
  std::memcpy(p[S_ABS_EYE], m.abs_eye, sizeof m.abs_eye);
  std::memcpy(p[S_EYE_PERS], m.eye_pers, sizeof m.eye_pers);
  std::memcpy(p[S_ABS_PERS], m.abs_pers, sizeof m.abs_pers);
  std::memcpy(p[S_EYE_ABS], m.eye_abs, sizeof m.eye_abs);
  std::memcpy(p[S_PERS_ABS], m.pers_abs, sizeof m.pers_abs);
  return 0;
}

void init_param_ortho() { param_ortho(views().Param_ortho, win().Dimx, win().Dimy); }

void param_ortho_suit(int old_w, int old_h) {
  int former[9];
  param_ortho(former, old_w, old_h);
  if (std::memcmp(former, views().Param_ortho, sizeof former) == 0) init_param_ortho();
}

void vues_a_la_taille() {
  // Views whose values are given by functions (text) are computed when
  // they are used; the current view last, as its values are the ones kept.
  auto well_formed = [](Objet* v) {
    if (!v || v->kind != KW_view || !v->local) return false;
    for (const Slot& s : SLOTS)
      if (!valeur(v, s)) return false;
    return true;
  };
  Objet* head = chaine_classe(KW_view);
  Objet* current = head ? get_objet_id(head, KW_view, views().current_id) : nullptr;
  for (Objet* v = head ? head->next : nullptr; v; v = v->next)
    if (v != current && well_formed(v)) CAL_VIEW(v, 1);
  if (well_formed(current)) CAL_VIEW(current, 1);
}

bool projette_point(const float p[3], float out[3]) {
  Objet* v = vue_active();
  if (!v) return false;
  const float* m = valeur(v, SLOTS[S_ABS_PERS]);
  if (!m) return false;
  float r[4];
  for (int i = 0; i < 4; i++) r[i] = m[i * 4] * p[0] + m[i * 4 + 1] * p[1] + m[i * 4 + 2] * p[2] + m[i * 4 + 3];
  if (r[3] == 0) return false;
  const WindowState& w = win();
  out[0] = r[0] / r[3] + w.Dimx * 0.5f;
  out[1] = r[1] / r[3] + w.Dimy * 0.5f;
  out[2] = r[2] / r[3];
  return true;
}
