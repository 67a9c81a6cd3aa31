#include "render/picture.h"

#include <GL/gl.h>

#include <cstddef>

#include "render/window.h"

std::vector<uint8_t> pixels_fenetre(int* w, int* h) {
  const WindowState& ws = win();
  *w = ws.Dimx;
  *h = ws.Dimy;
  if (!gl_on()) return {};
  std::vector<uint8_t> px(static_cast<size_t>(ws.Dimx) * ws.Dimy * 4);
  glFinish();
  // The buffer that commands drew in: the front one between images.
  glReadBuffer(ws.drawn_front ? GL_FRONT : GL_BACK);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, ws.Dimx, ws.Dimy, GL_RGBA, GL_UNSIGNED_BYTE, px.data());
  return px;
}
