// Drawing with no window system: an OpenGL context of EGL on Mesa's
// surfaceless platform, drawing into an off-screen surface of a given
// size (one colour buffer, RGB 8 bits each, depth 24, as the window's).
#pragma once
#include <string>

// Makes the context current at w by h. False with the reason in *why.
bool offscreen_start(int w, int h, std::string* why);
// A new surface of the new size, current in place of the old one; the
// context, with its textures and its state, stays.
bool offscreen_resize(int w, int h);
bool offscreen_on();
