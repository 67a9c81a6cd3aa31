#include "render/text.h"

#include <GL/freeglut.h>

#include <cstring>

#include "kernel/keywords.h"
#include "render/cmd_args.h"
#include "scene/volume.h"

namespace {

void rectangle(GLenum kind, float x0, float y0, float x1, float y1) {
  glBegin(kind);
  glVertex2f(x0, y0);
  glVertex2f(x1, y0);
  glVertex2f(x1, y1);
  glVertex2f(x0, y1);
  glEnd();
}

}  // namespace

void message_volume(Objet* o, const DisplayRecord& r, int mode) {
  const word* m = r[L_message];
  if (!m || tag(m) != T_CHAR) return;
  const char* s = text(m);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  float at[3] = {0, 0, 0};
  if (const word* poi = r[R_poi]; poi && np(poi) > 0)
    for (int i = 0; i < 3 && i < stride(poi); i++) at[i] = getf(poi, i);
  // Text units: pixels of the window's font, standing up.
  const float w = 9.0f * static_cast<float>(std::strlen(s)), h = 15.0f;
  float back[3] = {0, 0, 0};
  const bool has_back = floats_into(r[L_back_message], back, 3) > 0;
  glPushMatrix();
  glTranslatef(at[0], at[1], at[2]);
  if (has_back) {
    glColor3fv(back);
    rectangle(GL_POLYGON, -2, 4, w + 2, -h);
  }
  float col[3] = {1, 1, 1};
  if (mode == 0) {
    glColor3fv(col);
    rectangle(GL_LINE_LOOP, -2, 4, w + 2, -h);
  }
  if (float frame[3]; floats_into(r[L_col_frame], frame, 3) == 3) {
    glColor3fv(frame);
    rectangle(GL_LINE_LOOP, -4, 6, w + 4, -h - 2);
  }
  floats_into(r[L_col_message], col, 3);
  glColor3fv(col);
  glRasterPos3f(0, 0, 0);
  for (const char* c = s; *c; c++) glutBitmapCharacter(GLUT_BITMAP_9_BY_15, *c);
  glPopMatrix();
  glEnable(GL_DEPTH_TEST);
  (void)o;
}
