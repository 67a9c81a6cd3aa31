#include "platform/display.h"

#include <X11/Xlib.h>

#include <cstdlib>

bool display_available() {
  const char* name = std::getenv("DISPLAY");
  if (!name || !*name) return false;
  Display* d = XOpenDisplay(name);
  if (!d) return false;
  XCloseDisplay(d);
  return true;
}
