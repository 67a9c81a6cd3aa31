// Graphic start-up settings: window size and place, colour depth, depth
// buffer, random table size, animation period. Filled by the graphic
// option parser; read by the window code.
#pragma once

struct ScreenState {
  int gra = 1;               // graphic processor on
  int width = 768, height = 576;   // video size by default
  float frac_x = 0, frac_y = 0;    // sizes given as fractions of the screen
  int max_width = 1024, max_height = 768;  // screen size when no display tells it
  int orx = 0, ory = 0;      // top-left corner of the window
  int origin_y = 0;          // cam= first value
  int image_height = 0;      // cam= negated second value
  float cx = 1.0f, cy = -1.0f;
  int dy = 0;                // bottom of the window raised by this much
  int hei_w = 0, hei_h = 0;  // high-definition image size
  int rvb = 8;
  int zbu = 1;
  int ale = 10000;
  int PER = 75;
  int ful = 0, vid = 0, see = 0;
  int egl = 0;               // draw off-screen through EGL, with no X server
  int colour_range = 255;
  int image_width = 0, window_width = 0, window_height = 0;
  float unit = 0;            // width / 40
};

ScreenState& screen();
