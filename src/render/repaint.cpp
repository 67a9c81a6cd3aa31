// The window's picture drawn again from what made it, when the window was
// exposed, resized or made again: the colour of the last clear, then the
// scene as the last display showed it, at the window's present size.
#include <GL/freeglut.h>

#include <algorithm>

#include "render/display.h"
#include "render/image_display.h"
#include "render/view.h"
#include "render/window.h"
#include "render/windows.h"

namespace {

// Only what is drawn in the main window is its picture; a sub-window that
// has the focus keeps its own.
bool dans_la_principale() { return gl_on() && (win().egl || glutGetWindow() == win().window); }

}  // namespace

void picture_cleared(const float colour[3]) {
  if (!dans_la_principale()) return;
  ShownPicture& p = win().shown;
  std::copy(colour, colour + 3, p.back);
  p.scene = false;
  p.command.clear();
}

void picture_scene(const word* command) {
  if (!dans_la_principale()) return;
  ShownPicture& p = win().shown;
  p.scene = true;
  p.command.assign(command, command + size(command));
}

void picture_image() {
  ShownPicture& p = win().shown;
  const float* b = Back();
  std::copy(b, b + 3, p.back);
  p.scene = true;
  p.command.clear();
}

void repaint_window() {
  WindowState& w = win();
  w.repaint = false;
  if (!gl_on()) return;
  ShownPicture& p = w.shown;
  if (glut_on()) glutSetWindow(w.window);
  // Mesa's software renderer takes a new window size at its next finish,
  // and what is drawn before that is lost (so was the first `screen`
  // after a resize).
  glFinish();
  Projection_ortho();
  glClearColor(p.back[0], p.back[1], p.back[2], 1);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  if (p.scene) {
    // A copy: the display may run commands that record a new one.
    p.replay = p.command;
    DISPLAY_VOL(p.replay.empty() ? nullptr : p.replay.data());
    DISPLAY_IMAGE_VISIBLES();
  }
  glFlush();
  focus_reprise();
}
