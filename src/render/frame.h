// The window's part in the image loops: the buffers and the swap, the GL
// state taken on entering the loop and given back on leaving it, full
// screen, outlines and texts in window pixels, the menus of the right
// button, and the hooks through which the loop receives the window's idle
// calls and input.
#pragma once

// glMatrixMode(GL_MODELVIEW), glLoadIdentity.
void modelview_identity();
void swap_image();
// Drawing in the back buffer (the loop) or the front one (the console);
// pictures of the window read the same buffer.
void draw_in_back(bool back);
// On entering the loop: blending by alpha, culling of back faces unless
// `no_cull`, the depth test with GL_LESS, drawing in the back buffer.
void loop_gl_start(bool no_cull);
// On leaving it: the twelve switches off (GL_AUTO_NORMAL, GL_NORMALIZE,
// GL_LINE_SMOOTH, GL_BLEND, GL_POLYGON_SMOOTH, GL_CULL_FACE, GL_FOG,
// GL_DEPTH_TEST, GL_LIGHTING, GL_VERTEX_ARRAY, GL_COLOR_MATERIAL,
// GL_TEXTURE_2D).
void loop_gl_stop();
void depth_test_off();
// Shows what was drawn: a flush in the front buffer, a swap in the back.
void flush_window();
// Takes the window's waiting events (their callbacks run), then waits up
// to `ms` milliseconds.
void window_events(int ms);
void full_screen();

// Outlines and texts are placed in pixels from the window's centre, y
// down, as the mouse's positions are kept.
// A line loop around the rectangle (x0, y0, x1, y1).
void outline_rectangle(const float r[4], const float col[3]);
// A line from (x0, y0) to (x1, y1), same frame.
void line_segment(const float seg[4], const float col[3]);
// A filled rectangle, same frame.
void fill_rectangle(const float r[4], const float col[3]);
// A text with its base line's start at (x, y) pixels from the window's
// centre, in the 9 by 15 font.
void text_at(const char* text, float x, float y, const float col[3]);
// Width of a text and of one character unit, in pixels, in that font.
float text_width(const char* text);
float text_unit();

// Menus of the toolkit: a new menu whose selections go to `select`, its
// entries and submenus, the current menu attached to the right button.
int menu_new(void (*select)(int code));
void menu_entry(const char* text, int code);
void menu_submenu(const char* text, int menu);
void menu_attach_right();
void menu_free(int menu);

// What the window's callbacks hand on. The idle call runs `idle` when it is
// set (else the console's step); the input callbacks store the key and the
// position as always and then call these.
struct WindowHooks {
  void (*idle)() = nullptr;
  void (*key)(unsigned char key, int x, int y) = nullptr;
  void (*button)(int button, int state, int x, int y) = nullptr;
  void (*drag)(int x, int y) = nullptr;
  void (*hover)(int x, int y) = nullptr;
};
WindowHooks& window_hooks();
