#include "platform/offscreen.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace {

struct Offscreen {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLConfig config = nullptr;
  EGLContext context = EGL_NO_CONTEXT;
  EGLSurface surface = EGL_NO_SURFACE;
};

Offscreen& off() {
  static Offscreen o;
  return o;
}

// The configuration a window of the toolkit gets under Mesa: 8 bits of
// red, green and blue, no alpha, a 24-bit depth buffer and no stencil.
// EGL sorts deeper colours first, so the exact one is searched for.
bool choose_config(EGLDisplay d, EGLConfig* chosen) {
  const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                           EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8, EGL_DEPTH_SIZE, 24, EGL_NONE};
  EGLConfig configs[64];
  EGLint n = 0;
  if (!eglChooseConfig(d, wanted, configs, 64, &n) || n < 1) return false;
  int best = -1, best_score = 1 << 30;
  for (int i = 0; i < n; i++) {
    EGLint r = 0, g = 0, b = 0, a = 0, depth = 0, stencil = 0;
    eglGetConfigAttrib(d, configs[i], EGL_RED_SIZE, &r);
    eglGetConfigAttrib(d, configs[i], EGL_GREEN_SIZE, &g);
    eglGetConfigAttrib(d, configs[i], EGL_BLUE_SIZE, &b);
    eglGetConfigAttrib(d, configs[i], EGL_ALPHA_SIZE, &a);
    eglGetConfigAttrib(d, configs[i], EGL_DEPTH_SIZE, &depth);
    eglGetConfigAttrib(d, configs[i], EGL_STENCIL_SIZE, &stencil);
    if (r != 8 || g != 8 || b != 8) continue;
    const int score = a * 4 + (depth - 24) * 2 + stencil;
    if (score < best_score) {
      best = i;
      best_score = score;
    }
  }
  if (best < 0) return false;
  *chosen = configs[best];
  return true;
}

EGLSurface surface_of(int w, int h) {
  const EGLint size[] = {EGL_WIDTH, w, EGL_HEIGHT, h, EGL_NONE};
  return eglCreatePbufferSurface(off().display, off().config, size);
}

}  // namespace

bool offscreen_start(int w, int h, std::string* why) {
  Offscreen& o = off();
  auto platform_display =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (!platform_display) {
    *why = "EGL has no platform displays (libegl1 and libegl-mesa0 are needed)";
    return false;
  }
  o.display = platform_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  EGLint major = 0, minor = 0;
  if (o.display == EGL_NO_DISPLAY || !eglInitialize(o.display, &major, &minor)) {
    *why = "Mesa's surfaceless EGL platform cannot be opened (libegl-mesa0 is needed)";
    o.display = EGL_NO_DISPLAY;
    return false;
  }
  if (!choose_config(o.display, &o.config) || !eglBindAPI(EGL_OPENGL_API)) {
    *why = "EGL offers no OpenGL configuration with 8-bit colours and a depth buffer";
    return false;
  }
  o.context = eglCreateContext(o.display, o.config, EGL_NO_CONTEXT, nullptr);
  o.surface = o.context == EGL_NO_CONTEXT ? EGL_NO_SURFACE : surface_of(w, h);
  if (o.surface == EGL_NO_SURFACE || !eglMakeCurrent(o.display, o.surface, o.surface, o.context)) {
    *why = "no EGL OpenGL context could be made";
    return false;
  }
  return true;
}

bool offscreen_resize(int w, int h) {
  Offscreen& o = off();
  EGLSurface s = surface_of(w, h);
  if (s == EGL_NO_SURFACE || !eglMakeCurrent(o.display, s, s, o.context)) {
    if (s != EGL_NO_SURFACE) eglDestroySurface(o.display, s);
    eglMakeCurrent(o.display, o.surface, o.surface, o.context);
    return false;
  }
  eglDestroySurface(o.display, o.surface);
  o.surface = s;
  return true;
}

bool offscreen_on() { return off().surface != EGL_NO_SURFACE; }
