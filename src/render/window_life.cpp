// The window's life beside its callbacks: starting the toolkit with its
// errors turned into messages, showing a window just made, following a
// size given from outside, and the window closed by its manager.
#include <GL/freeglut.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "kernel/bye.h"
#include "kernel/console.h"
#include "kernel/interrupt.h"
#include "kernel/report.h"
#include "kernel/screen.h"
#include "platform/clock.h"
#include "platform/display.h"
#include "platform/process.h"
#include "render/textures.h"
#include "render/view.h"
#include "render/window.h"
#include "render/windows.h"

namespace {

// freeglut ends the process after an error unless a function of ours
// takes it: an error or a warning is a message, and the session goes on.
void toolkit_message(const char* format, va_list args, const char* end) {
  char text[512];
  std::vsnprintf(text, sizeof text, format, args);
  VOIR_CHAR("freeglut: %s", text);
  voir_texte(end);
}
void toolkit_error(const char* format, va_list args) { toolkit_message(format, args, "\a\n"); }
void toolkit_warning(const char* format, va_list args) { toolkit_message(format, args, "\n"); }

void toolkit_handlers() {
  glutInitErrorFunc(toolkit_error);
  glutInitWarningFunc(toolkit_warning);
}

// So do the X server's errors on the window (a size it refuses...).
void x_error(const char* text) {
  voir_texte(text);
  voir_texte("\a\n");
}

// A window manager may take a moment to show a new window.
constexpr double SHOW_WAIT_SECONDS = 2.0;

}  // namespace

bool toolkit_start() {
  if (!display_available()) {
    voir_texte("no graphic display available: running with gra=0\n");
    return false;
  }
  display_errors_to(x_error);
  toolkit_handlers();
  int argc = 1;
  char name[] = "orvela";
  char* argv[] = {name, nullptr};
  glutInit(&argc, argv);
  toolkit_handlers();
  // Closing the window goes through window_closed rather than exit().
  glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_CONTINUE_EXECUTION);
  win().toolkit = true;
  return true;
}

void window_shown() {
  WindowState& w = win();
  // A new window has a new context: no texture of the old one is valid,
  // and the switches of `yes` start from GL's defaults.
  textures_oubliees();
  sem_gl_reprise();
  fenetres_refaites();
  // Drawn before the window is on the screen, the picture would be lost;
  // and the first exposure must not wipe what the first commands draw.
  // An off-screen surface is there at once, at its size.
  if (w.egl) {
    w.exposed = true;
    Reshape_Func(w.Dimx, w.Dimy);
  }
  const double end = seconds_since_start() + SHOW_WAIT_SECONDS;
  while (w.window && !w.exposed && seconds_since_start() < end) {
    glutMainLoopEvent();
    if (!w.exposed) sleep_ms(2);
  }
  if (w.window) repaint_window();
}

void window_resized(int width, int height) {
  // Also after `graphic(w,h)`, which set the sizes before the window took them.
  WindowState& w = win();
  const int old_w = w.Dimx, old_h = w.Dimy;
  w.Dimx = width;
  w.Dimy = height;
  w.Coe_ecran_x = static_cast<float>(w.Dimx) / std::max(w.Dimx_ecran, 1);
  w.Coe_ecran_y = static_cast<float>(w.Dimy) / std::max(w.Dimy_ecran, 1);
  param_ortho_suit(old_w, old_h);
  vues_a_la_taille();
  if (w.zbuffer) zbuffer_alloue(w.zbuf_mode);
  objet_fenetre_principale();
  // The toolkit made the main window current for its callback.
  focus_reprise();
}

bool window_closed() {
  WindowState& w = win();
  w.window = 0;
  // The toolkit's loop resets the toolkit as it returns; a window closed
  // while it was being shown, before the loop ran, leaves it initialised.
  w.toolkit = glutGet(GLUT_INIT_STATE) != 0;
  ConsoleState& con = console();
  try {
    bye(false);
  } catch (const Abandon&) {
    // The interrupt's dialogue abandoned the questions: the user stays.
  }
  con.prompt_shown = 0;
  if ((w.toolkit || toolkit_start()) && init_ecran(2) == 0) return true;
  w.Graphique = screen().gra = 0;
  return false;
}
