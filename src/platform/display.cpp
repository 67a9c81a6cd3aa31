#include "platform/display.h"

#include <X11/Xlib.h>

#include <cstdlib>

// The connection that answered stays open: an X server resets when its
// last client leaves, and a connection made during the reset fails, as
// the toolkit's own would right after this one closed.
bool display_available() {
  static Display* kept = nullptr;
  if (kept) return true;
  const char* name = std::getenv("DISPLAY");
  if (!name || !*name) return false;
  kept = XOpenDisplay(name);
  return kept != nullptr;
}
