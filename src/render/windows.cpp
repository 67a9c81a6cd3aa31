#include "render/windows.h"

#include <GL/freeglut.h>

#include <cstring>

#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "render/window.h"
#include "scene/lookup.h"

namespace {

Objet* chaine() { return chaine_classe(KW_win); }

void note_taille(Objet* o, int w, int h, int x, int y) {
  o->work[WW_W] = w;
  o->work[WW_H] = h;
  o->work[WW_X] = x;
  o->work[WW_Y] = y;
}

// A fresh window shows the background.
void efface(int number) {
  glutSetWindow(number);
  const float* b = Back();
  glClearColor(b[0], b[1], b[2], 1);
  glDrawBuffer(GL_FRONT);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glFlush();
}

void affichage_vide() {}

// Makes the sub-window of `o` at its recorded size and place.
void cree(Objet* o) {
  o->work[WW_NUMBER] = glutCreateSubWindow(win().window, o->work[WW_X], o->work[WW_Y], o->work[WW_W], o->work[WW_H]);
  glutDisplayFunc(affichage_vide);
  efface(o->work[WW_NUMBER]);
}

void focus(Objet* o) {
  Objet* main = objet_fenetre_principale();
  if (main) main->work[WW_FOCUS] = o->work[WW_NUMBER];
  glutSetWindow(o->work[WW_NUMBER]);
}

int usage() {
  voir_mot(KW_win);
  voir_texte("(\"name\") ");
  voir_mot(KW_dim);
  voir_texte("(w,h) ");
  voir_mot(KW_poi);
  voir_texte("(x,y)\n");
  return -1;
}

}  // namespace

Objet* objet_fenetre_principale() {
  const WindowState& ws = win();
  if (!ws.window) return nullptr;
  Objet* o = fenetre_nommee("ORVELA");
  if (!o) o = cre_objet_nom(chaine(), KW_win / 200, KW_win, 0, "ORVELA");
  if (!o) return nullptr;
  o->work[WW_NUMBER] = ws.window;
  if (!o->work[WW_FOCUS]) o->work[WW_FOCUS] = ws.window;
  note_taille(o, ws.Dimx, ws.Dimy, ws.Orx, ws.Ory);
  return o;
}

Objet* fenetre_nommee(const char* name) { return get_objet_kind_nom(chaine(), KW_win, name); }

int SOUS_FENETRE(word* s, const word* lim, const char* name) {
  WindowState& ws = win();
  Objet* o = fenetre_nommee(name);
  const bool focus_asked = has_word(s, KW_foc), below_asked = has_word(s, KW_below);
  if (focus_asked || below_asked) {
    if (!o) {
      VOIR_CHAR("%s: ", name);
      voir_message(0, MES_UNKNOWN);
      return -1;
    }
    // Off-screen a sub-window is only its record.
    if (!glut_on()) return build_nil(s);
    if (focus_asked) focus(o);
    if (below_asked) {
      glutSetWindow(o->work[WW_NUMBER]);
      glutPushWindow();
      glutSetWindow(objet_fenetre_principale()->work[WW_FOCUS]);
    }
    return build_nil(s);
  }
  float d[2] = {o ? static_cast<float>(o->work[WW_W]) : ws.Dimx / 2.0f,
                o ? static_cast<float>(o->work[WW_H]) : ws.Dimy / 2.0f};
  const bool sized = arg_floats(s, KW_dim, d, 2) > 0;
  float p[2] = {-d[0] / 2, -d[1] / 2};
  const bool placed = arg_floats(s, KW_poi, p, 2) > 0;
  if (o && !sized && !placed) {
    const std::vector<float> now = {static_cast<float>(o->work[WW_W]), static_cast<float>(o->work[WW_H]),
                                    static_cast<float>(o->work[WW_X]), static_cast<float>(o->work[WW_Y])};
    return build_floats(s, lim, now);
  }
  // The X server takes sides of 1 to 32767 pixels.
  if (!(d[0] >= 1 && d[1] >= 1 && d[0] <= 32767 && d[1] <= 32767)) return usage();
  const int w = entier(d[0]), h = entier(d[1]);
  const int x = ws.Dimx / 2 + entier(p[0]), y = ws.Dimy / 2 + entier(p[1]);
  if (!o) {
    o = cre_objet_nom(chaine(), KW_win / 200, KW_win, 0, name);
    if (!o) return -1;
  }
  note_taille(o, w, h, x, y);
  if (!glut_on()) return build_nil(s);
  Objet* main = objet_fenetre_principale();
  if (!o->work[WW_NUMBER]) {
    cree(o);
  } else {
    glutSetWindow(o->work[WW_NUMBER]);
    glutPositionWindow(x, y);
    glutReshapeWindow(w, h);
  }
  glutSetWindow(main ? main->work[WW_FOCUS] : ws.window);
  return build_nil(s);
}

void fenetres_refaites() {
  Objet* main = objet_fenetre_principale();
  if (!main || !glut_on()) return;
  const int focus = main->work[WW_FOCUS];
  main->work[WW_FOCUS] = win().window;
  for (Objet* o = chaine()->next; o; o = o->next) {
    if (o == main || o->kind != KW_win || !o->work[WW_NUMBER]) continue;
    const bool had_focus = o->work[WW_NUMBER] == focus;
    cree(o);
    if (had_focus) main->work[WW_FOCUS] = o->work[WW_NUMBER];
  }
  focus_reprise();
}

void focus_reprise() {
  const WindowState& ws = win();
  if (!glut_on()) return;
  const Objet* main = fenetre_nommee("ORVELA");
  const int focus = main && main->work[WW_FOCUS] ? main->work[WW_FOCUS] : ws.window;
  if (glutGetWindow() != focus) glutSetWindow(focus);
}
