#include "render/picture.h"

#include <GL/freeglut.h>

#include <cstddef>

#include "render/text.h"
#include "render/window.h"

bool taille_fenetre(int* w, int* h) {
  const WindowState& ws = win();
  *w = ws.Dimx;
  *h = ws.Dimy;
  if (!gl_on()) return false;
  // The size of the window now: one resized from outside and not yet
  // reported must not be read past its edges.
  if (glut_on()) {
    *w = glutGet(GLUT_WINDOW_WIDTH);
    *h = glutGet(GLUT_WINDOW_HEIGHT);
  }
  return *w >= 1 && *h >= 1;
}

bool pixels_rgb(uint8_t* rgb, int w, int h, bool back) {
  if (!gl_on()) return false;
  glReadBuffer(back ? GL_BACK : GL_FRONT);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, w, h, GL_RGB, GL_UNSIGNED_BYTE, rgb);
  return true;
}

std::vector<uint8_t> pixels_fenetre(int* w, int* h) {
  const WindowState& ws = win();
  if (!taille_fenetre(w, h)) return {};
  std::vector<uint8_t> px(static_cast<size_t>(*w) * *h * 4);
  glFinish();
  // The buffer that commands drew in: the front one between images.
  glReadBuffer(ws.drawn_front ? GL_FRONT : GL_BACK);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, *w, *h, GL_RGBA, GL_UNSIGNED_BYTE, px.data());
  return px;
}

void dessine_pixels(const uint8_t* px, int w, int h, int x, int y) {
  if (!gl_on() || !px || w <= 0 || h <= 0) return;
  const WindowState& ws = win();
  glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_PIXEL_MODE_BIT);
  repere_pixels(true);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glDrawBuffer(ws.drawn_front ? GL_FRONT : GL_BACK);
  // A raster position outside the window would be invalid: start from
  // the origin and move by a null bitmap.
  glRasterPos2i(0, 0);
  glBitmap(0, 0, 0, 0, static_cast<GLfloat>(x), static_cast<GLfloat>(y), nullptr);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glDrawPixels(w, h, GL_RGBA, GL_UNSIGNED_BYTE, px);
  glFlush();
  repere_pixels(false);
  glPopAttrib();
}
