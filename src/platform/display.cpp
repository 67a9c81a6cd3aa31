#include "platform/display.h"

#include <X11/Xlib.h>

#include <cstdio>
#include <cstdlib>

namespace {

void (*x_error_report)(const char* text) = nullptr;

// Xlib's own handler ends the process at the first protocol error.
int on_x_error(Display* d, XErrorEvent* e) {
  char what[160];
  XGetErrorText(d, e->error_code, what, sizeof what);
  char line[240];
  std::snprintf(line, sizeof line, "X error: %s (request %d.%d)", what, e->request_code, e->minor_code);
  if (x_error_report) x_error_report(line);
  return 0;
}

}  // namespace

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

void display_errors_to(void (*report)(const char* text)) {
  x_error_report = report;
  XSetErrorHandler(on_x_error);
}
