// The graphic window: its size and place, the background, the clearing
// counters, the buffer that commands draw in, and the window's life
// (creation, callbacks, the idle slice that runs the console).
#pragma once
#include <vector>

#include "kernel/word.h"

// What the window shows in the interpreter's mode, kept as what made it
// so that it can be drawn again when the window is exposed, resized or
// made again: the colour of the last clear, then the display of the scene
// when one followed it. Text and pixels drawn over it are not kept.
struct ShownPicture {
  float back[3] = {0, 0, 0.75f};
  bool scene = false;
  std::vector<word> command;  // the `displ` command; empty: the whole scene
  std::vector<word> replay;   // the command copied for drawing it again
};

struct WindowState {
  int Graphique = 0;              // 0: no window, every GL call is skipped
  int Dimx_ecran = 1024, Dimy_ecran = 768;
  int Dimx = 768, Dimy = 576;
  int Orx = 0, Ory = 0;
  int Dimx_sauve = 0, Dimy_sauve = 0, Orx_sauve = 0, Ory_sauve = 0;
  float Coe_ecran_x = 1, Coe_ecran_y = 1;
  int Nb_efface = 0, cpt_efface = 0;
  int Nb_efface_z = 0, cpt_efface_z = 0;
  int Mode_soft = 1;              // 0 no volumes, 2 software, else OpenGL
  int window = 0;                 // the toolkit's window number; 0 while there is none
  bool toolkit = false;           // initialised: it forgets everything when its last window closes
  bool egl = false;               // no window system: an off-screen EGL surface stands for the window
  bool recreating = false;        // our own re-creation destroys the window: no close
  bool exposed = false;           // the window was shown since it was made
  bool repaint = false;           // exposed or resized: drawn again at the next idle slice
  ShownPicture shown;
  bool drawn_front = true;        // commands draw in the front buffer
  bool clear_colour = true;       // the image cycle asks for colour clears
  bool text_only = false;
  // Input stored by the callbacks for the interaction.
  int key = 0, mouse_x = 0, mouse_y = 0, mouse_button = -1, mouse_state = 0;
  // The software depth buffer of `zbuf(n)`: n words a pixel.
  int zbuf_mode = 0;
  unsigned char* zbuffer = nullptr;
};

WindowState& win();

// The background: r,g,b from 0 to 1, then the same times 255; the
// current values of the keyword `back`.
float* Back();

// True when GL calls may be made: there is a window, so a context.
inline bool gl_on() { return win().Graphique != 0 && win().window != 0; }
// True when there is a window of the toolkit: its calls (events, swap,
// menus, cursor, sub-windows) may be made. Off-screen there is none.
inline bool glut_on() { return gl_on() && !win().egl; }

// Opens the toolkit and creates the window (mode 0). Returns false, after
// one line saying so, when no window can be had: the system then runs as
// with gra=0.
bool window_start();
// Creates or re-creates the window: 0 at start-up, 1 restores the first
// size, 2 re-registers the callbacks after a resize.
int init_ecran(int mode);
// The off-screen surface in place of the window (offscreen_window.cpp),
// made or brought to the window's size: init_ecran's step after the
// sizes. 0 when the new window's set-up follows, 1 when a resize (mode 2)
// is all, -1 after a message when no surface can be had.
int offscreen_window(int mode);
// Hands the thread to the window toolkit; never returns.
[[noreturn]] void window_main_loop();

// One idle slice: the hook of the image loops (render/frame.h), or the
// console's step.
void Idle_Func();
// The console's step: one line when one is complete, without blocking.
void console_step();
void Reshape_Func(int w, int h);

// The window's life beside its callbacks (window_life.cpp).
// Initialises the toolkit, its errors and warnings turned into messages;
// false, after one line saying so, when there is no display.
bool toolkit_start();
// Shows a window just made: waits (boundedly) until it is on the screen,
// then draws its picture.
void window_shown();
// The window took a new size: the sizes, the orthographic camera, the
// views' matrices and the software depth buffer follow it.
void window_resized(int w, int h);
// The toolkit closed the window (its manager's close request) and has
// forgotten everything: the questions of `bye`, then, for a user who
// stays, the window made again with its scene. False when no window can
// be had again: the session goes on without one.
bool window_closed();

// The picture of the window (repaint.cpp): what made it is recorded, so
// that it can be drawn again.
void picture_cleared(const float colour[3]);
void picture_scene(const word* command);
// The image cycle clears with the background, then displays the scene.
void picture_image();
void repaint_window();

// Clears the window at the start of an image, as the counters say.
void Efface_image();
// The fog of a `fog` property's values (r,g,b,start,end,mode,density).
void set_fog(const float* v, int n);

// The side effect on GL of `yes X` / `no X`.
void sem_gl(int code);
// The switches of `yes` given again to a new context.
void sem_gl_reprise();

// The software depth buffer of mode n at the window's size; false after
// a report of the size (the former buffer is then gone).
bool zbuffer_alloue(int n);
