// GL state kept by the window: clearing at each image, fog, and the side
// effects of `yes` and `no` on GL's switches.
#include <GL/freeglut.h>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "render/view.h"
#include "render/window.h"

namespace {

// Clears `bit` when the counter reaches `every` (0: at each image).
bool a_effacer(int every, int& counter) {
  if (every == 0) return true;
  if (++counter < every) return false;
  counter = 0;
  return true;
}

}  // namespace

void Efface_image() {
  WindowState& w = win();
  if (!gl_on()) return;
  GLbitfield bits = 0;
  if (!w.text_only && w.clear_colour && Yes(KW_screen) > 0 && a_effacer(w.Nb_efface, w.cpt_efface)) {
    const float* b = Back();
    glClearColor(b[0], b[1], b[2], 1);
    bits |= GL_COLOR_BUFFER_BIT;
  }
  if (Yes(KW_zbuf) > 0 && a_effacer(w.Nb_efface_z, w.cpt_efface_z)) bits |= GL_DEPTH_BUFFER_BIT;
  if (bits) glClear(bits);
  glFlush();
  picture_image();
}

void set_fog(const float* v, int n) {
  if (!gl_on()) return;
  float f[7] = {0, 0, 0, 1000.0f, 2000.0f, 0, 1.0f};
  for (int i = 0; i < n && i < 7; i++) f[i] = v[i];
  if (n < 1 || f[0] < 0) {
    glDisable(GL_FOG);
    return;
  }
  glEnable(GL_FOG);
  const int mode = entier(f[5]);
  glFogi(GL_FOG_MODE, mode == 1 ? GL_EXP : mode == 2 ? GL_EXP2 : GL_LINEAR);
  const float col[4] = {f[0], f[1], f[2], 1};
  glFogfv(GL_FOG_COLOR, col);
  glFogf(GL_FOG_START, f[3]);
  glFogf(GL_FOG_END, f[4]);
  glFogf(GL_FOG_DENSITY, f[6] * 0.003f);
}

void sem_gl(int code) {
  if (!gl_on()) return;
  const int v = Yes(code);
  switch (code) {
    case KW_behind:
      if (v < 1) {
        glEnable(GL_CULL_FACE);
        glCullFace(GL_BACK);
      } else {
        glDisable(GL_CULL_FACE);
      }
      break;
    case KW_transp:
      if (v == 0) glDisable(GL_BLEND);
      else {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      }
      break;
    case KW_pers:
      views().Type_projection = v ? KW_pers : KW_normal;
      Projection(1);
      pop_projections();
      break;
    case KW_fog:
      // The common fog: the background's colour from 1000 to 2000.
      if (v > 0) {
        const float* b = Back();
        const float f[3] = {b[0], b[1], b[2]};
        set_fog(f, 3);
      } else {
        glDisable(GL_FOG);
      }
      break;
    case KW_bitmap: case KW_graphic: case KW_mouse:
      if (glut_on()) glutSetCursor(v < 1 ? GLUT_CURSOR_NONE : GLUT_CURSOR_INHERIT);
      break;
    default:
      break;
  }
}

void sem_gl_reprise() {
  for (int code : {KW_transp, KW_fog})
    if (Yes(code) > 0) sem_gl(code);
}
