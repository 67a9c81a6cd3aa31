// The mouse of the window and the manual motions. Positions are kept in
// pixels from the window's centre, y down (the toolkit's y less half the
// height). A left press in the loop designates what the designation mode
// moves: the nearest volume (tran 350, rota 322, rotx 323, roty 324, rotz
// 325) or its nearest vertex (pull 313); each drag then moves it by the
// pointer's motion times `coe`. Modes 5, 6 and 7 move the eye (the menu's
// "dep(eyey)", "rotxy(eye)", "rotxz(eye)"), 26, 27 and 28 the aim.
#include <cmath>
#include <cstring>

#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/handles.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/args.h"
#include "render/frame.h"
#include "render/lights.h"
#include "render/view.h"
#include "render/window.h"
#include "scene/scene_state.h"
#include "scene/volume.h"

namespace {

constexpr int EYE_TRAN = 5, EYE_ROTXY = 6, EYE_ROTXZ = 7;
constexpr int AIM_TRAN = 26, AIM_ROTXY = 27, AIM_ROTXZ = 28;
constexpr float PORTEE = 80;  // pixels: a press farther from every object designates nothing

void centre(int x, int y, int out[2]) {
  const WindowState& w = win();
  out[0] = x - w.Dimx / 2;
  out[1] = y - w.Dimy / 2;
}

// A point of the scene on the screen, in the frame of the mouse (the
// projection counts y down from the top, as the toolkit does).
bool ecran(const float p[3], float out[2]) {
  float w[3];
  if (!projette_point(p, w)) return false;
  out[0] = w[0] - win().Dimx * 0.5f;
  out[1] = w[1] - win().Dimy * 0.5f;
  return true;
}

// The displacement of the scene parallel to the screen that moves the
// point p by (dx, dy) pixels on it: along the view's right and up.
bool deplacement(const float p[3], float dx, float dy, float d[3]) {
  const ViewState& vs = views();
  if (!vs.P_eye || !vs.P_aim) return false;
  float v[3], up[3] = {0, 1, 0}, r[3], u[3];
  for (int k = 0; k < 3; k++) v[k] = vs.P_aim[k] - vs.P_eye[k];
  if (vs.P_axis && (vs.P_axis[0] != 0 || vs.P_axis[1] != 0 || vs.P_axis[2] != 0))
    for (int k = 0; k < 3; k++) up[k] = vs.P_axis[k];
  r[0] = v[1] * up[2] - v[2] * up[1], r[1] = v[2] * up[0] - v[0] * up[2], r[2] = v[0] * up[1] - v[1] * up[0];
  u[0] = r[1] * v[2] - r[2] * v[1], u[1] = r[2] * v[0] - r[0] * v[2], u[2] = r[0] * v[1] - r[1] * v[0];
  const float nr = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
  const float nu = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
  if (nr == 0 || nu == 0) return false;
  float s0[2], sr[2], su[2], pr[3], pu[3];
  for (int k = 0; k < 3; k++) pr[k] = p[k] + r[k] / nr, pu[k] = p[k] + u[k] / nu;
  if (!ecran(p, s0) || !ecran(pr, sr) || !ecran(pu, su)) return false;
  // (dx, dy) = a J_r + b J_u
  const float a11 = sr[0] - s0[0], a21 = sr[1] - s0[1], a12 = su[0] - s0[0], a22 = su[1] - s0[1];
  const float det = a11 * a22 - a12 * a21;
  if (std::fabs(det) < 1e-9f) return false;
  const float a = (dx * a22 - a12 * dy) / det, b = (a11 * dy - a21 * dx) / det;
  for (int k = 0; k < 3; k++) d[k] = a * r[k] / nr + b * u[k] / nu;
  return true;
}

// Where a volume stands: its translation plus the mean of its vertices.
void position(Objet* o, float p[3]) {
  const float* t = get_matrix_vol(o);
  for (int k = 0; k < 3; k++) p[k] = t ? t[TR_TRAN + k] + t[TR_DELTA + TR_TRAN + k] : 0;
  const word* poi = poi_vol(o);
  if (!poi || np(poi) < 1) return;
  const float* v = reinterpret_cast<const float*>(poi + 4);
  const int d = stride(poi), n = np(poi);
  float m[3] = {0, 0, 0};
  for (int i = 0; i < n; i++)
    for (int k = 0; k < 3 && k < d; k++) m[k] += v[i * d + k];
  for (int k = 0; k < 3; k++) p[k] += m[k] / static_cast<float>(n);
}

void designe(int mx, int my) {
  InteractionState& L = loop();
  L.designe = 0;
  L.sommet = 0;
  float best = PORTEE * PORTEE;
  for (Objet* o = chaine_classe(KW_vol)->next; o; o = o->next) {
    if (o->kind != KW_vol || o->valid <= 0) continue;
    float p[3], s[2];
    position(o, p);
    if (!ecran(p, s)) continue;
    const float d = (s[0] - mx) * (s[0] - mx) + (s[1] - my) * (s[1] - my);
    if (L.Mode_designation != KW_pull && d < best) {
      best = d;
      L.designe = objet_handle(o);
    }
    if (L.Mode_designation != KW_pull) continue;
    // The nearest vertex over every volume.
    const word* poi = poi_vol(o);
    const float* t = get_matrix_vol(o);
    for (int i = 0; poi && t && i < np(poi); i++) {
      const float* v = reinterpret_cast<const float*>(poi + 4) + i * stride(poi);
      float q[3];
      for (int k = 0; k < 3; k++) q[k] = (k < stride(poi) ? v[k] : 0) + t[TR_TRAN + k];
      if (!ecran(q, s)) continue;
      const float dv = (s[0] - mx) * (s[0] - mx) + (s[1] - my) * (s[1] - my);
      if (dv < best) {
        best = dv;
        L.designe = objet_handle(o);
        L.sommet = i + 1;
      }
    }
  }
}

// The eye or the aim carried by the drag.
void bouge_vue(int mode, float dx, float dy) {
  ViewState& vs = views();
  vue_active();
  if (!vs.P_eye || !vs.P_aim) return;
  const float coe = loop().coe;
  float* e = vs.P_eye;
  float* a = vs.P_aim;
  const bool oeil = mode == EYE_TRAN || mode == EYE_ROTXY || mode == EYE_ROTXZ;
  if (mode == EYE_TRAN || mode == AIM_TRAN) {
    float d[3];
    if (!deplacement(a, dx * coe, dy * coe, d)) return;
    for (int k = 0; k < 3; k++) {
      if (oeil) e[k] -= d[k];
      a[k] -= d[k];
    }
  } else {
    // A turn of the eye about the aim (or of the aim about the eye) in the
    // plane xy or xz, half a degree a pixel.
    float* mobile = oeil ? e : a;
    const float* fixe = oeil ? a : e;
    const int k2 = mode == EYE_ROTXY || mode == AIM_ROTXY ? 1 : 2;
    const float ang = dx * coe * 0.5f / DEGRES;
    const float x = mobile[0] - fixe[0], y = mobile[k2] - fixe[k2];
    mobile[0] = fixe[0] + x * std::cos(ang) - y * std::sin(ang);
    mobile[k2] = fixe[k2] + x * std::sin(ang) + y * std::cos(ang);
  }
  CAL_VIEW(vue_active(), 1);
}

void bouge_objet(float dx, float dy) {
  InteractionState& L = loop();
  Objet* o = L.designe ? handle_objet(L.designe) : nullptr;
  if (!o || o->kind != KW_vol) return;
  float* t = get_matrix_vol(o);
  if (!t) return;
  const float coe = L.coe;
  float p[3], d[3];
  position(o, p);
  switch (L.Mode_designation) {
    case KW_tran:
      if (deplacement(p, dx * coe, dy * coe, d))
        for (int k = 0; k < 3; k++) t[TR_TRAN + k] += d[k];
      break;
    case KW_rotx: case KW_roty: case KW_rotz:
      t[TR_ROTX + L.Mode_designation - KW_rotx] += dx * coe * 0.5f;
      break;
    case KW_rota:
      t[TR_ROTA] += dx * coe * 0.5f;
      break;
    case KW_pull: {
      bloc poi = poi_vol(o);
      if (!poi || L.sommet < 1 || L.sommet > np(poi) || !deplacement(p, dx * coe, dy * coe, d)) break;
      float* v = sommets(poi) + (L.sommet - 1) * stride(poi);
      for (int k = 0; k < 3 && k < stride(poi); k++) v[k] += d[k] / (t[TR_DILA + k] != 0 ? t[TR_DILA + k] : 1);
      invalide_caches(o);
      break;
    }
    default: break;
  }
}

void applique(float dx, float dy) {
  const int m = loop().Mode_designation;
  if (m == EYE_TRAN || m == EYE_ROTXY || m == EYE_ROTXZ || m == AIM_TRAN || m == AIM_ROTXY || m == AIM_ROTXZ)
    bouge_vue(m, dx, dy);
  else
    bouge_objet(dx, dy);
}

}  // namespace

// The pointer as MOD_b's mouse factors read it.
void pointeur_scene() {
  const InteractionState& L = loop();
  ScenePointer& p = scene().pointeur;
  p.x = static_cast<float>(L.survol[0]);
  p.y = static_cast<float>(L.survol[1]);
  p.down = L.enfonce != 0;
  p.window_w = win().Dimx;
  p.window_h = win().Dimy;
  p.on = gl_on();
}

void cadre_souris(const float f[4]) {
  const float r[4] = {f[0], -f[3], f[2], -f[1]}, blanc[3] = {1, 1, 1};
  outline_rectangle(r, blanc);
}

void bouton_souris(int button, int state, int x, int y) {
  InteractionState& L = loop();
  int c[2];
  centre(x, y, c);
  L.survol[0] = c[0];
  L.survol[1] = c[1];
  if (state == 0) {
    L.bouton = button;
    L.enfonce = 1;
    L.premier_appui = 1;
    L.hit_continue = 1;
    L.glisse[0] = L.appui[0] = c[0];
    L.glisse[1] = L.appui[1] = c[1];
    scene().pointeur.presses++;
    if (button == 0 && kernel().Mode_idle == KW_interaction &&
        (L.Mode_designation == KW_pull || L.Mode_designation == KW_tran ||
         (L.Mode_designation >= KW_rota && L.Mode_designation <= KW_rotz)))
      designe(c[0], c[1]);
  } else {
    L.bouton = -1;
    L.enfonce = 0;
  }
  pointeur_scene();
}

void glisse_souris(int x, int y) {
  InteractionState& L = loop();
  int c[2];
  centre(x, y, c);
  const float dx = static_cast<float>(c[0] - L.glisse[0]), dy = static_cast<float>(c[1] - L.glisse[1]);
  L.dep[0] = c[0] - L.glisse[0];
  L.dep[1] = c[1] - L.glisse[1];
  L.glisse[0] = L.survol[0] = c[0];
  L.glisse[1] = L.survol[1] = c[1];
  if (kernel().Mode_idle == KW_interaction && L.bouton == 0 && L.Mode_designation) applique(dx, dy);
  pointeur_scene();
}

void survol_souris(int x, int y) {
  InteractionState& L = loop();
  centre(x, y, L.survol);
  L.dep[0] = L.dep[1] = 0;
  pointeur_scene();
}

// A press is taken at the next image even when the button was released
// before it: a quick click counts.
void souris_image() {
  InteractionState& L = loop();
  if (L.premier_appui) {
    L.clic[0] = L.appui[0];
    L.clic[1] = L.appui[1];
    L.premier_appui = 0;
    L.clic_pris[0] = 1;
  }
  if (L.enfonce) L.clic_pris[1] = 1;
}

int preset_oeil(int code) {
  const float foc = 0.825f, aim[3] = {0, 0, 0};
  float eye[3] = {0, 0, 0};
  switch (code) {
    case KW_above: eye[1] = -896, eye[2] = 1; break;
    case KW_behind: eye[2] = 896; break;
    case KW_below: eye[1] = 896, eye[2] = 1; break;
    case KW_front: eye[2] = -896; break;
    default: return -1;
  }
  place_vue(eye, aim, &foc);
  return 0;
}

// `interaction interaction("rotx")`, with numbers for "rota", "tran_eye",
// "tran_aim", "rotx_eye", "roty_eye"; `coe(k)`, `col(r,g,b)`, `limit(...)`,
// `pull`, and the presets `above`, `behind`, `below`, `front`.
int mouvement_manuel(word* s, const word* lim) {
  InteractionState& L = loop();
  for (int code : {KW_above, KW_behind, KW_below, KW_front})
    if (has_word(s, code)) {
      preset_oeil(code);
      return build_nil(s);
    }
  if (has_word(s, KW_coe)) {
    if (!arg_of(s, KW_coe)) return build_float(s, lim, L.coe);
    arg_floats(s, KW_coe, &L.coe, 1);
  }
  if (has_word(s, KW_col)) arg_floats(s, KW_col, L.limite_col, 3);
  if (has_word(s, KW_limit)) {
    L.limite_on = arg_floats(s, KW_limit, L.limite, 4) == 4 ? 1 : 0;
  }
  if (has_word(s, KW_pull)) L.Mode_designation = KW_pull;
  // The motion's name: the value of the second `interaction`.
  word* item = next_item(first_item(s));
  const word* v = nullptr;
  for (int i = 1; i < item_count(s); i++, item = next_item(item))
    if (item[2] == KW_interaction) v = item_value(item);
  const char* t = nullptr;
  float n[4] = {0, 0, 0, 0};
  int nn = 0;
  if (v && tag(v) == T_HYBRIDE) {
    t = value_text(sous_bloc(v, 0));
    for (int k = 1; k < np(v) && nn < 4; k++) nn += floats_of(sous_bloc(v, k), n + nn, 4 - nn);
  } else {
    t = value_text(v);
  }
  if (!t) return build_nil(s);
  struct Motion {
    const char* name;
    int mode;
  };
  static const Motion MOTIONS[] = {
      {"pull", KW_pull},       {"rota", KW_rota},          {"rotx", KW_rotx},          {"roty", KW_roty},
      {"rotz", KW_rotz},       {"tran", KW_tran},          {"tran_eye", EYE_TRAN},     {"rotxy_eye", EYE_ROTXY},
      {"rotxz_eye", EYE_ROTXZ}, {"tran_aim", AIM_TRAN},    {"rotxy_aim", AIM_ROTXY},   {"rotxz_aim", AIM_ROTXZ},
  };
  if (std::strcmp(t, "ini") == 0) {
    L.Mode_designation = 3;
    L.designe = 0;
    vue_initiale();
    SET_LIGHT_1(nullptr, 0, nullptr);
  } else if (std::strcmp(t, "ini_view") == 0) {
    vue_initiale();
  } else if (std::strcmp(t, "displ") == 0) {
    L.Mode_designation = 0;
  } else if (std::strcmp(t, "swap") == 0 || std::strcmp(t, "noswap") == 0) {
    L.swap = t[0] == 's';
  } else if (nn >= 3 && (std::strcmp(t, "tran_eye") == 0 || std::strcmp(t, "tran_aim") == 0)) {
    if (t[5] == 'e') place_vue(n, nullptr, nullptr);
    else place_vue(nullptr, n, nullptr);
  } else if (nn >= 1 && (std::strcmp(t, "rotx_eye") == 0 || std::strcmp(t, "roty_eye") == 0)) {
    // A turn of the eye about the aim, about x or y, in degrees.
    ViewState& vs = views();
    vue_active();
    if (vs.P_eye && vs.P_aim) {
      const int a = t[3] == 'x' ? 1 : 0, b = 2;
      const float ang = n[0] / DEGRES;
      float* e = vs.P_eye;
      const float* c = vs.P_aim;
      const float u = e[a] - c[a], w = e[b] - c[b];
      e[a] = c[a] + u * std::cos(ang) - w * std::sin(ang);
      e[b] = c[b] + u * std::sin(ang) + w * std::cos(ang);
      CAL_VIEW(vue_active(), 1);
    }
  } else {
    bool known = false;
    for (const Motion& m : MOTIONS)
      if (std::strcmp(t, m.name) == 0) {
        L.Mode_designation = m.mode;
        known = true;
      }
    if (!known) {
      VOIR_CHAR("%s: ", t);
      voir_message(0, MES_UNKNOWN);
      return -1;
    }
    if (L.Mode_designation == KW_rota && nn >= 4) {
      // The axis and the angle of the designated volume's turn.
      Objet* o = L.designe ? handle_objet(L.designe) : nullptr;
      if (float* b = o ? get_matrix_vol(o) : nullptr) {
        b[TR_ROTA] = n[3];
        for (int k = 0; k < 3; k++) b[TR_ROTA + 1 + k] = n[k];
      }
    }
  }
  return build_nil(s);
}

void EXEC_DESIGNE() {
  InteractionState& L = loop();
  if (L.Mode_designation >= 9 && L.Mode_designation <= 14) {
    L.preset = L.Mode_designation;
    // The axes from the origin: x red, y green, z blue.
    const float o[3] = {0, 0, 0};
    float so[2];
    if (!ecran(o, so)) return;
    for (int k = 0; k < 3; k++) {
      float p[3] = {0, 0, 0}, sp[2];
      p[k] = 100;
      if (!ecran(p, sp)) continue;
      const float col[3] = {k == 0 ? 1.0f : 0.0f, k == 1 ? 1.0f : 0.0f, k == 2 ? 1.0f : 0.0f};
      const float seg[4] = {so[0], so[1], sp[0], sp[1]};
      line_segment(seg, col);
    }
    return;
  }
  Objet* d = L.designe ? handle_objet(L.designe) : nullptr;
  if (!d || d->kind != KW_vol) return;
  float p[3], s[2];
  position(d, p);
  if (!ecran(p, s)) return;
  const float mark[4] = {s[0] - 6, s[1] - 6, s[0] + 6, s[1] + 6}, col[3] = {1, 1, 0};
  outline_rectangle(mark, col);
}
