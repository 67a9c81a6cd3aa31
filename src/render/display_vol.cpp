// DISPLAY_VOL and the display of one volume, DISPLAY_VOL_1: the record of
// its properties, its matrix, the choice of the drawing member, then its
// followers within its matrix.
#include <GL/gl.h>

#include <algorithm>
#include <vector>

#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "render/cmd_args.h"
#include "render/display.h"
#include "render/draw.h"
#include "render/lights.h"
#include "render/text.h"
#include "render/textures.h"
#include "render/view.h"
#include "render/window.h"
#include "scene/lookup.h"
#include "scene/selection.h"
#include "scene/volume.h"

int& nb_affiches() {
  static int n = 0;
  return n;
}

namespace {

Objet* volume(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }

int premier_entier(const word* v, int dflt) {
  float f = static_cast<float>(dflt);
  return floats_into(v, &f, 1) ? static_cast<int>(f) : dflt;
}

// Vertex k (from 1) of a volume, false when it has none such.
bool sommet_de(const Objet* o, int k, float out[3]) {
  const word* poi = poi_vol(o);
  if (!poi || k < 1 || k > np(poi)) return false;
  const float* p = reinterpret_cast<const float*>(poi + 4) + (k - 1) * stride(poi);
  for (int i = 0; i < 3; i++) out[i] = i < stride(poi) ? p[i] : 0.0f;
  return true;
}

// The numbers of a list value (the followers of `follow`, a view's
// volumes), held in the frame: the display allocates nothing.
struct Numeros {
  float f[256];
  int n;
  explicit Numeros(const word* v) : n(floats_into(v, f, 256)) {}
  struct It {
    const float* p;
    int operator*() const { return entier(*p); }
    It& operator++() {
      ++p;
      return *this;
    }
    bool operator!=(const It& o) const { return p != o.p; }
  };
  It begin() const { return {f}; }
  It end() const { return {f + n}; }
};
Numeros numeros(const word* v) { return Numeros(v); }

// The leader's vertex that a follower is attached to; false without one.
bool sommet_meneur(const DisplayRecord& r, float out[3]) {
  if (!r[R_lead] || !r[L_vertex_lead]) return false;
  Objet* lead = volume(premier_entier(r[R_lead], 0));
  return lead && sommet_de(lead, premier_entier(r[L_vertex_lead], 0), out);
}

bool sommet_suiveur(const Objet* o, const DisplayRecord& r, float out[3]) {
  return r[L_vertex_follow] && sommet_de(o, premier_entier(r[L_vertex_follow], 0), out);
}

// Step 10: `poi`, `dila`, `rotx`, `roty`, `rotz` of the command replace
// the block's values, all at once when any is given.
void valeurs_commande(word* command, float* t) {
  if (!command) return;
  float tran[3] = {0, 0, 0}, dila[3] = {1, 1, 1}, rot[3] = {0, 0, 0};
  bool any = false;
  any |= arg_floats(command, KW_poi, tran, 3) > 0;
  const int nd = arg_floats(command, KW_dila, dila, 3);
  if (nd == 1) dila[1] = dila[2] = dila[0];
  any |= nd > 0;
  const int codes[3] = {KW_rotx, KW_rotx + 1, KW_rotx + 2};
  for (int i = 0; i < 3; i++) any |= arg_floats(command, codes[i], &rot[i], 1) > 0;
  if (!any) return;
  std::copy_n(tran, 3, t + TR_TRAN);
  std::copy_n(dila, 3, t + TR_DILA);
  for (int i = 0; i < 3; i++) t[TR_ROTX + i] = rot[i] * DEGRES;
}

float s(const float* t, int i) { return t[i] + t[TR_DELTA + i]; }

void rotations(const float* t) {
  glRotatef(s(t, TR_ROTA), s(t, TR_ROTA + 1), s(t, TR_ROTA + 2), s(t, TR_ROTA + 3));
  glRotatef(s(t, TR_ROTX + 2), 0, 0, 1);
  glRotatef(s(t, TR_ROTX), 1, 0, 0);
  glRotatef(s(t, TR_ROTX + 1), 0, 1, 0);
}

// The drawing member by the lighting mode, the texture and generation.
int dessine(Objet* o, const DisplayRecord& r, int mode) {
  bool generated = false;
  if (Yes(KW_ext) > 0 || Yes(KW_frac) > 0) {
    const word* g = Yes(KW_ext) > 0 && r[R_ext] ? r[R_ext] : (Yes(KW_frac) > 0 ? r[R_frac] : nullptr);
    generated = g && premier_entier(g, 0) >= 1 && r[R_poi_generate] && r[R_fac_generate];
  }
  if (mode != 0 && Yes(KW_texture) > 0 && (r[R_texture] || r[R_texture_fac])) {
    glEnable(GL_TEXTURE_2D);
    const int t = DISPLAY_TEXTURE(o, r, mode, generated);
    glDisable(GL_TEXTURE_2D);
    if (t != 0) return t < 0 ? t : 0;
  }
  if (mode == 0) return DISPLAY_0(o, r, generated);
  if (mode >= -3 && mode <= 3) return DISPLAY_1(o, r, mode, generated);
  return 0;  // any other mode draws nothing
}

int affiche_suiveurs(Objet* o, const DisplayRecord& r, word* command) {
  if (!r[R_follow]) return 0;
  int result = 0;
  for (int id : numeros(r[R_follow])) {
    Objet* f = volume(id);
    if (!f || f == o) continue;
    glPushMatrix();
    if (DISPLAY_VOL_1(f, command) < 0) result = -1;
    glPopMatrix();
  }
  return result;
}

// The objects named by `vol(id)` or `object(id)` of the command.
std::vector<Objet*> objets_nommes(word* command) {
  std::vector<Objet*> out = nommes(command, KW_vol);
  for (Objet* o : nommes(command, KW_object)) out.push_back(o);
  return out;
}

// The volumes of one user type.
std::vector<Objet*> objets_du_type(const char* name) {
  std::vector<Objet*> out;
  const int type = type_utilisateur(name);
  Objet* head = chaine_classe(KW_vol);
  for (Objet* o = head ? head->next : nullptr; o; o = o->next)
    if (type && o->user_type == type) out.push_back(o);
  return out;
}

// The matrices of every volume that no other leads.
void Calcul_matrices() {
  Objet* head = chaine_classe(KW_vol);
  for (Objet* o = head ? head->next : nullptr; o; o = o->next) {
    if (o->kind != KW_vol || get_val_1(o->local, KW_lead)) continue;
    glPushMatrix();
    glLoadIdentity();
    CAL_MATRIX_1(o);
    glPopMatrix();
  }
}

// A view's `col` keeps only those channels: the two views of `stereo`.
void masque_vue(Objet* v) {
  float c[3] = {1, 1, 1};
  const int n = floats_into(get_val_1(v->local, KW_col), c, 3);
  if (n == 0) glColorMask(1, 1, 1, 1);
  else glColorMask(c[0] > 0, c[1] > 0, c[2] > 0, 1);
}

int passe(word* command, const std::vector<Objet*>& chosen, bool filtered) {
  if (!filtered) return DISPLAY_VOL_0(nullptr, 0, command);
  return DISPLAY_VOL_0(const_cast<Objet**>(chosen.data()), static_cast<int>(chosen.size()), command);
}

// A wall of views: n x n cells, each drawing the scene seen by the view
// its item names (the current one when the item is no number).
int mur_de_vues(Objet* wall, word* command) {
  const WindowState& w = win();
  const int n = wall->work[0];
  const word* items = get_val_1(wall->local, KW_write);
  std::vector<std::string> parts;
  if (items && tag(items) == T_CHAR) {
    std::string t = text(items), cur;
    for (char c : t) {
      if (c == ';') {
        parts.push_back(cur);
        cur.clear();
      } else cur += c;
    }
    parts.push_back(cur);
  }
  int result = 0;
  for (int i = 0; i < n * n; i++) {
    const int cx = i % n, cy = n - 1 - i / n;
    glViewport(cx * w.Dimx / n, cy * w.Dimy / n, w.Dimx / n, w.Dimy / n);
    const int id = i < static_cast<int>(parts.size()) ? std::atoi(parts[i].c_str()) : 0;
    Objet* v = id > 0 ? get_objet_id(chaine_classe(KW_view), KW_view, id) : nullptr;
    if (v && v != wall) Projection_vue(v);
    else Projection_vue(vue_active());
    if (DISPLAY_VOL_0(nullptr, 0, command) < 0) result = -1;
  }
  glViewport(0, 0, w.Dimx, w.Dimy);
  return result;
}

}  // namespace

int CAL_MATRIX_1(Objet* o) {
  if (!gl_on()) return 0;
  float* t = get_matrix_vol(o);
  if (!t) return -1;
  DisplayRecord r;
  remplit_record(o, r);
  glTranslatef(s(t, TR_TRAN), s(t, TR_TRAN + 1), s(t, TR_TRAN + 2));
  if (Yes(KW_anc) > 0 && r[R_lead] && r[L_vertex_lead]) {
    float p[3];
    if (!sommet_meneur(r, p)) {
      voir_objet(o);
      voir_mot(KW_lead);
      voir_texte("\n");
      TRACE_FAIL("CAL_MATRIX_1()");
      return -1;
    }
    glTranslatef(p[0], p[1], p[2]);
  }
  rotations(t);
  glScalef(s(t, TR_DILA), s(t, TR_DILA + 1), s(t, TR_DILA + 2));
  if (float f[3]; sommet_suiveur(o, r, f)) glTranslatef(-f[0], -f[1], -f[2]);
  glGetFloatv(GL_MODELVIEW_MATRIX, t + TR_MATRIX);
  for (int id : numeros(r[R_follow])) {
    Objet* f = volume(id);
    if (!f || f == o) continue;
    glPushMatrix();
    const int rr = CAL_MATRIX_1(f);
    glPopMatrix();
    if (rr < 0) return rr;
  }
  return 0;
}

int DISPLAY_VOL_1(Objet* o, word* command) {
  if (Yes(KW_displ) == 0) return 0;
  if (!o || o->valid == -2 || !o->local) return 0;
  DisplayRecord r;
  remplit_record(o, r);
  if (Yes(KW_fog) > 0 && r[L_fog_zbuf]) {
    float f[7];
    const int n = floats_into(r[L_fog_zbuf], f, 7);
    if (n > 0) set_fog(f, n);
  }
  float* t = get_matrix_vol(o);
  if (!t) return -1;
  if (!r[R_poi]) return 0;
  nb_affiches()++;
  valeurs_commande(command, t);
  if (command)
    if (const word* v = arg_of(command, KW_view)) {
      const int id = premier_entier(v, 0);
      if (Objet* view = get_objet_id(chaine_classe(KW_view), KW_view, id)) Projection_vue(view);
    }
  const int displ = o->valid;
  if (Yes(KW_anc) >= 0) {
    float lead[3] = {0, 0, 0};
    if (Yes(KW_anc) > 0) sommet_meneur(r, lead);
    glTranslatef(s(t, TR_TRAN) + lead[0], s(t, TR_TRAN + 1) + lead[1], s(t, TR_TRAN + 2) + lead[2]);
  }
  if (displ < 2) {
    glScalef(s(t, TR_DILA), s(t, TR_DILA + 1), s(t, TR_DILA + 2));
    rotations(t);
  }
  if (float f[3]; sommet_suiveur(o, r, f)) glTranslatef(-f[0], -f[1], -f[2]);
  if (displ == -1) return 0;
  int result = 0;
  if (displ != 0) {
    int mode = static_cast<int>(illum_de(r[R_illum]).mode);
    if (Yes(KW_illum) == 0) {
      mode = 0;
      glDisable(GL_LIGHTING);
    }
    const float behind = r[L_behind] && tag(r[L_behind]) == T_FLOAT && np(r[L_behind]) > 0 ? getf(r[L_behind], 0) : 0;
    if (Yes(KW_behind) < 1 || behind < 0) {
      glEnable(GL_CULL_FACE);
      glCullFace(GL_BACK);
    } else {
      glDisable(GL_CULL_FACE);
    }
    if (displ != -5 && r[R_fac] && dessine(o, r, mode) < 0) result = -1;
    if (r[L_message]) message_volume(o, r, mode);
  }
  if (affiche_suiveurs(o, r, command) < 0) result = -1;
  // One flush ends the whole display (DISPLAY_VOL): a flush for each
  // object would stop the renderer from batching its work.
  if (result < 0) TRACE_FAIL("DISPLAY_VOL_1()");
  return result;
}

int DISPLAY_VOL_0(Objet** list, int n, word* command) {
  int result = 0;
  if (list) {
    for (int i = 0; i < n; i++) {
      if (!list[i] || list[i]->valid == 0) continue;
      glPushMatrix();
      if (DISPLAY_VOL_1(list[i], command) < 0) result = -1;
      glPopMatrix();
    }
    return result;
  }
  Objet* head = chaine_classe(KW_vol);
  for (Objet* o = head ? head->next : nullptr; o; o = o->next) {
    if (o->kind != KW_vol || get_val_1(o->local, KW_lead)) continue;
    // A hidden object still places its followers.
    if (o->valid == 0 && !get_val_1(o->local, KW_follow)) continue;
    glPushMatrix();
    if (DISPLAY_VOL_1(o, command) < 0) result = -1;
    glPopMatrix();
  }
  return result;
}

int DISPLAY_VOL(word* command) {
  nb_affiches() = 0;
  const int mode = command ? arg_int(command, KW_displ, 0, 1) : 1;
  WindowState& w = win();
  if (mode == 0 || !gl_on()) return 0;
  if (mode == 2 || w.Mode_soft == 2 || w.Mode_soft == 0) return 0;  // no software path
  textures_orphelines();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LESS);
  if (Yes(KW_zbuf) > 0) glClear(GL_DEPTH_BUFFER_BIT);
  glEnable(GL_LIGHTING);
  glEnable(GL_NORMALIZE);
  glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1);
  lights_enable();

  std::vector<Objet*> chosen;
  bool filtered = false;
  if (command) {
    if (const char* type = value_text(arg_of(command, KW_type))) {
      chosen = objets_du_type(type);
      filtered = true;
    }
    if (has_word(command, KW_vol) || has_word(command, KW_object)) {
      chosen = objets_nommes(command);
      filtered = true;
    }
  }
  int result = 0;
  if (Yes(KW_pers) < 1) {
    Projection_ortho();
    SET_LIGHT_1(nullptr, 0, nullptr);
    result = passe(command, chosen, filtered);
  } else {
    Objet* head = chaine_classe(KW_view);
    if (!premier_objet(head, [](Objet* v) { return v->kind == KW_view; })) vue_active();
    bool first = true;
    for (Objet* v = head ? head->next : nullptr; v; v = v->next) {
      if (v->kind != KW_view || v->valid <= 0) continue;
      if (v->subkind == KW_write && v->work[0] > 1) {
        result = mur_de_vues(v, command);
        break;
      }
      if (!first && Yes(KW_zbuf) > 0) glClear(GL_DEPTH_BUFFER_BIT);
      first = false;
      glPushMatrix();
      Calcul_matrices();
      glPopMatrix();
      Projection_vue(v);
      glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      masque_vue(v);
      if (const word* list = get_val_1(v->local, KW_vol)) {
        static std::vector<Objet*> own;  // kept from image to image
        own.clear();
        for (int id : numeros(list))
          if (Objet* o = volume(id); o && o->valid > 0) own.push_back(o);
        if (passe(command, own, true) < 0) result = -1;
        for (Objet* o : own) o->valid = 2;
      } else if (passe(command, chosen, filtered) < 0) {
        result = -1;
      }
    }
    glColorMask(1, 1, 1, 1);
  }
  pop_projections();
  glFlush();
  if (result < 0) TRACE_FAIL("DISPLAY_VOL()");
  return result;
}
