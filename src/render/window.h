// The graphic window: its size and place, the background, the clearing
// counters, the buffer that commands draw in, and the window's life
// (creation, callbacks, the idle slice that runs the console).
#pragma once

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
  int window = 0;                 // the toolkit's window number
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

// True when GL calls may be made.
inline bool gl_on() { return win().Graphique != 0; }

// Opens the toolkit and creates the window (mode 0). Returns false, after
// one line saying so, when no window can be had: the system then runs as
// with gra=0.
bool window_start();
// Creates or re-creates the window: 0 at start-up, 1 restores the first
// size, 2 re-registers the callbacks after a resize.
int init_ecran(int mode);
// Hands the thread to the window toolkit; never returns.
[[noreturn]] void window_main_loop();

// One idle slice: the hook of the image loops (render/frame.h), or the
// console's step.
void Idle_Func();
// The console's step: one line when one is complete, without blocking.
void console_step();
void Reshape_Func(int w, int h);

// Clears the window at the start of an image, as the counters say.
void Efface_image();
// The fog of a `fog` property's values (r,g,b,start,end,mode,density).
void set_fog(const float* v, int n);

// The side effect on GL of `yes X` / `no X`.
void sem_gl(int code);
