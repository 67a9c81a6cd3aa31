// The window with no window system: an off-screen EGL surface at the
// window's size, the one colour buffer standing for both of its buffers.
#include "kernel/report.h"
#include "platform/offscreen.h"
#include "render/window.h"
#include "render/windows.h"

namespace {

// What stands for the toolkit's window number off-screen.
constexpr int OFFSCREEN_WINDOW = 1;

}  // namespace

int offscreen_window(int mode) {
  WindowState& w = win();
  if (!w.window) {
    std::string why;
    if (!offscreen_start(w.Dimx, w.Dimy, &why)) {
      VOIR_CHAR("no off-screen drawing: %s: running with gra=0\n", why.c_str());
      return -1;
    }
    w.window = OFFSCREEN_WINDOW;
    return 0;
  }
  if (!offscreen_resize(w.Dimx, w.Dimy)) {
    voir_int2("no off-screen surface of %d by %d\a\n", w.Dimx, w.Dimy);
    return -1;
  }
  if (mode != 2) return 0;
  // As the toolkit's reshape of a window that took a new size, and its
  // exposure: the new surface is blank until the picture is drawn again.
  Reshape_Func(w.Dimx, w.Dimy);
  objet_fenetre_principale();
  w.repaint = true;
  return 1;
}
