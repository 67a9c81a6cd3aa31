#include "render/window.h"

#include <GL/freeglut.h>

#include <algorithm>

#include "kernel/console.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/screen.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"
#include "platform/display.h"
#include "platform/line_editor.h"
#include "render/frame.h"
#include "render/view.h"
#include "render/windows.h"

WindowState& win() {
  static WindowState w;
  return w;
}

float* Back() {
  int n = 0;
  static float fallback[6] = {0, 0, 0.75f, 0, 0, 191.25f};
  float* v = val_com(KW_back / KW_PER_VOC, KW_back, &n);
  return v && n >= 6 ? v : fallback;
}

namespace {

// Nothing is drawn here: the picture is drawn again in the next idle slice.
void Display_Func() {
  win().exposed = true;
  win().repaint = true;
}
void Visibility_Func(int) {}

void Keyboard_Func(unsigned char key, int x, int y) {
  WindowState& w = win();
  w.key = key;
  w.mouse_x = x;
  w.mouse_y = y;
  if (window_hooks().key) window_hooks().key(key, x, y);
}

void Mouse_Func(int button, int state, int x, int y) {
  WindowState& w = win();
  w.mouse_button = button;
  w.mouse_state = state;
  w.mouse_x = x;
  w.mouse_y = y;
  if (window_hooks().button) window_hooks().button(button, state, x, y);
}

void Motion_Func(int x, int y) {
  win().mouse_x = x;
  win().mouse_y = y;
  if (window_hooks().drag) window_hooks().drag(x, y);
}

void Passive_Func(int x, int y) {
  win().mouse_x = x;
  win().mouse_y = y;
  if (window_hooks().hover) window_hooks().hover(x, y);
}

// The window is gone (the toolkit's main loop then returns, and
// window_closed asks as `bye` does); not so when we destroy it ourselves.
void Close_Func() {
  WindowState& w = win();
  if (!w.recreating) w.window = 0;
}

void register_callbacks() {
  glutIdleFunc(Idle_Func);
  glutDisplayFunc(Display_Func);
  glutReshapeFunc(Reshape_Func);
  glutKeyboardFunc(Keyboard_Func);
  glutMouseFunc(Mouse_Func);
  glutMotionFunc(Motion_Func);
  glutPassiveMotionFunc(Passive_Func);
  glutVisibilityFunc(Visibility_Func);
  glutCloseFunc(Close_Func);
}

}  // namespace

// The console's step: the prompt once, then a line when one is complete.
// The wait is short so that the window keeps its events.
void console_step() {
  if (win().repaint && kernel().Mode_idle == 0) repaint_window();
  ConsoleState& con = console();
  if (!con.prompt_shown) {
    print_prompt(MES_PROMPT);
    con.prompt_shown = 1;
  }
  if (!in_wait_line(10)) return;
  con.nonblocking = 1;
  try {
    lire_executer(1, MES_PROMPT, kernel().eval_stack, 0);
  } catch (const Abandon&) {
  }
  con.nonblocking = 0;
  con.prompt_shown = 0;
}

void Reshape_Func(int w, int h) {
  if (w < 1 || h < 1) {
    voir_int2("Warning Reshape_Func(%d, %d)\n", w, h);
    return;
  }
  glViewport(0, 0, w, h);
  window_resized(w, h);
}

void Idle_Func() {
  if (window_hooks().idle) window_hooks().idle();
  else console_step();
}

bool window_start() {
  WindowState& w = win();
  ScreenState& sc = screen();
  w.Graphique = sc.gra;
  if (!w.Graphique) return false;
  if (sc.egl) {
    w.egl = true;
    sem_hook = sem_gl;
    if (init_ecran(0) == 0 && w.window) return true;
    w.egl = false;
    w.Graphique = sc.gra = 0;
    return false;
  }
  if (!toolkit_start()) {
    w.Graphique = sc.gra = 0;
    return false;
  }
  sem_hook = sem_gl;
  return init_ecran(0) == 0;
}

int init_ecran(int mode) {
  WindowState& w = win();
  // Without the toolkit (while the questions of a closed window are
  // asked), a new size waits for the window to be made again.
  if (!w.Graphique || (!w.toolkit && !w.egl)) return 0;
  ScreenState& sc = screen();
  if (mode == 0) {
    // Off-screen, the screen is the largest one the options allow.
    w.Dimx_ecran = w.egl ? 0 : glutGet(GLUT_SCREEN_WIDTH);
    w.Dimy_ecran = w.egl ? 0 : glutGet(GLUT_SCREEN_HEIGHT);
    if (w.Dimx_ecran < 1) w.Dimx_ecran = sc.max_width;
    if (w.Dimy_ecran < 1) w.Dimy_ecran = sc.max_height;
    w.Dimy_ecran -= sc.dy;
    if (sc.dy) w.Ory = -sc.dy;
    w.Dimx = sc.width;
    w.Dimy = sc.height;
    if (w.Dimx == 0) w.Dimx = sc.frac_x > 0 ? static_cast<int>(sc.frac_x * w.Dimx_ecran) : w.Dimx_ecran;
    if (w.Dimy == 0) w.Dimy = sc.frac_y > 0 ? static_cast<int>(sc.frac_y * w.Dimy_ecran) : w.Dimy_ecran;
    if (w.Dimy < 0) w.Dimy += w.Dimy_ecran;
    w.Orx = sc.orx;
    w.Ory = sc.ory;
    w.Dimx_sauve = w.Dimx;
    w.Dimy_sauve = w.Dimy;
    w.Orx_sauve = w.Orx;
    w.Ory_sauve = w.Ory;
  } else if (mode == 1) {
    w.Dimx = w.Dimx_sauve;
    w.Dimy = w.Dimy_sauve;
    w.Orx = w.Orx_sauve;
    w.Ory = w.Ory_sauve;
  }
  w.Dimx = std::clamp(w.Dimx, 1, w.Dimx_ecran);
  w.Dimy = std::clamp(w.Dimy, 1, w.Dimy_ecran);
  w.Coe_ecran_x = static_cast<float>(w.Dimx) / w.Dimx_ecran;
  w.Coe_ecran_y = static_cast<float>(w.Dimy) / w.Dimy_ecran;
  if (w.egl) {
    const int r = offscreen_window(mode);
    if (r != 0) return r < 0 ? -1 : 0;
  } else {
    if (w.window) {
      if (mode == 2) {
        glutSetWindow(w.window);
        glutReshapeWindow(w.Dimx, w.Dimy);
        glutPositionWindow(std::max(w.Orx, 0), std::max(w.Ory, 0));
        register_callbacks();
        objet_fenetre_principale();
        return 0;
      }
      w.recreating = true;
      glutDestroyWindow(w.window);
      w.recreating = false;
      w.window = 0;
    }
    glutInitWindowSize(w.Dimx, w.Dimy);
    glutInitDisplayMode(GLUT_DOUBLE | GLUT_DEPTH | GLUT_RGBA);
    // With no window manager the toolkit's default place is off the screen.
    glutInitWindowPosition(std::max(w.Orx, 0), std::max(w.Ory, 0));
    w.window = glutCreateWindow("ORVELA");
    w.exposed = false;
    register_callbacks();
  }
  objet_fenetre_principale();
  glEnable(GL_DEPTH_TEST);
  glDepthFunc(GL_LESS);
  glDrawBuffer(GL_FRONT);
  w.drawn_front = true;
  const float* b = Back();
  glClearColor(b[0], b[1], b[2], 1);
  if (mode != 2) {
    init_param_ortho();
    picture_cleared(b);
  }
  window_shown();
  return 0;
}

void window_main_loop() {
  line_editor_start();
  kernel().Mode_idle = -276;
  // Off-screen there are no events: the idle calls follow one another.
  if (win().egl)
    for (;;) Idle_Func();
  // The toolkit's loop returns only when its last window went away.
  do {
    if (win().window) glutMainLoop();
  } while (window_closed());
  for (;;) Idle_Func();
}
