#include "render/frame.h"

#include <GL/freeglut.h>

#include <cstring>

#include "platform/process.h"
#include "render/font_tables.h"
#include "render/text.h"
#include "render/window.h"

WindowHooks& window_hooks() {
  static WindowHooks h;
  return h;
}

void modelview_identity() {
  if (!gl_on()) return;
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

// Off-screen the one colour buffer is both front and back: nothing to swap.
void swap_image() {
  if (glut_on()) glutSwapBuffers();
  else if (gl_on()) glFlush();
}

void draw_in_back(bool back) {
  // Leaving a loop: its last image was swapped to the screen, where GL
  // cannot read it back; it is drawn again in the front buffer at the
  // next console step, so that the window's picture is what it shows.
  if (!back && !win().drawn_front) win().repaint = true;
  win().drawn_front = !back;
  if (gl_on()) glDrawBuffer(back ? GL_BACK : GL_FRONT);
}

void loop_gl_start(bool no_cull) {
  if (!gl_on()) return;
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  if (!no_cull) {
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
  }
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LESS);
  draw_in_back(true);
}

void loop_gl_stop() {
  if (!gl_on()) return;
  for (GLenum cap : {GL_AUTO_NORMAL, GL_NORMALIZE, GL_LINE_SMOOTH, GL_BLEND, GL_POLYGON_SMOOTH, GL_CULL_FACE, GL_FOG,
                     GL_DEPTH_TEST, GL_LIGHTING, GL_VERTEX_ARRAY, GL_COLOR_MATERIAL, GL_TEXTURE_2D})
    glDisable(cap);
}

void depth_test_off() {
  if (gl_on()) glDisable(GL_DEPTH_TEST);
}

void flush_window() {
  if (!gl_on()) return;
  if (win().drawn_front || !glut_on()) glFlush();
  else glutSwapBuffers();
}

void window_events(int ms) {
  if (!gl_on()) return;
  if (glut_on()) glutMainLoopEvent();
  sleep_ms(ms);
}

void full_screen() {
  if (glut_on()) glutFullScreen();
}

namespace {

// The window's pixels with the origin at its centre, for what follows;
// the former matrices and switches come back with `false`.
void centre_frame(bool on) {
  const WindowState& w = win();
  const double centre[4] = {-w.Dimx / 2.0, w.Dimx / 2.0, w.Dimy / 2.0, -w.Dimy / 2.0};
  if (on) {
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glDisable(GL_FOG);
  }
  repere_plan(on, centre);
  if (!on) glPopAttrib();
}

void rectangle(GLenum kind, const float r[4], const float col[3]) {
  if (!gl_on()) return;
  centre_frame(true);
  glColor3fv(col);
  glBegin(kind);
  glVertex2f(r[0], r[1]);
  glVertex2f(r[2], r[1]);
  glVertex2f(r[2], r[3]);
  glVertex2f(r[0], r[3]);
  glEnd();
  centre_frame(false);
}

}  // namespace

void outline_rectangle(const float r[4], const float col[3]) { rectangle(GL_LINE_LOOP, r, col); }

void line_segment(const float seg[4], const float col[3]) {
  if (!gl_on()) return;
  centre_frame(true);
  glColor3fv(col);
  glBegin(GL_LINES);
  glVertex2f(seg[0], seg[1]);
  glVertex2f(seg[2], seg[3]);
  glEnd();
  centre_frame(false);
}

void fill_rectangle(const float r[4], const float col[3]) { rectangle(GL_POLYGON, r, col); }

void text_at(const char* text, float x, float y, const float col[3]) {
  if (!gl_on()) return;
  centre_frame(true);
  glColor3fv(col);
  glRasterPos2f(x, y);
  bitmap_text(BITMAP_FONTS[FONT_9_BY_15], text);
  centre_frame(false);
}

float text_width(const char* text) {
  return static_cast<float>(bitmap_length(BITMAP_FONTS[FONT_9_BY_15], text));
}

float text_unit() { return 9.0f; }

int menu_new(void (*select)(int code)) { return glut_on() ? glutCreateMenu(select) : 0; }

void menu_entry(const char* text, int code) {
  if (glut_on()) glutAddMenuEntry(text, code);
}

void menu_submenu(const char* text, int menu) {
  if (glut_on()) glutAddSubMenu(text, menu);
}

void menu_attach_right() {
  if (glut_on()) glutAttachMenu(GLUT_RIGHT_BUTTON);
}

void menu_free(int menu) {
  if (glut_on() && menu > 0) glutDestroyMenu(menu);
}
