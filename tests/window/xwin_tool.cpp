// What the window tests do to a window from outside that xdotool cannot:
// the window manager's close request, and a picture of what the X server
// shows (which may differ from what GL reads back).
//   xwin_tool wait TITLE SECONDS   waits until the window is viewable, prints its id
//   xwin_tool close TITLE          sends WM_DELETE_WINDOW as a window manager does
//   xwin_tool grab TITLE FILE      writes the window's pixels as a 24-bit BMP
// Exit status 0 on success, 1 on failure (with a line on stderr).
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

int fail(const char* what) {
  std::fprintf(stderr, "xwin_tool: %s\n", what);
  return 1;
}

// The window whose WM_NAME is `title`, searched depth first from `w`.
Window find(Display* d, Window w, const char* title) {
  char* name = nullptr;
  if (XFetchName(d, w, &name) && name) {
    const bool same = std::strcmp(name, title) == 0;
    XFree(name);
    if (same) return w;
  }
  Window root, parent, *kids = nullptr;
  unsigned n = 0;
  if (!XQueryTree(d, w, &root, &parent, &kids, &n)) return 0;
  Window found = 0;
  for (unsigned i = 0; i < n && !found; i++) found = find(d, kids[i], title);
  if (kids) XFree(kids);
  return found;
}

bool viewable(Display* d, Window w) {
  XWindowAttributes a;
  return XGetWindowAttributes(d, w, &a) && a.map_state == IsViewable;
}

double now() {
  timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return t.tv_sec + t.tv_nsec * 1e-9;
}

int wait_for(Display* d, const char* title, double seconds) {
  const double end = now() + seconds;
  for (;;) {
    Window w = find(d, DefaultRootWindow(d), title);
    if (w && viewable(d, w)) {
      std::printf("%lu\n", w);
      return 0;
    }
    if (now() > end) return fail("no viewable window of that title");
    timespec pause = {0, 20 * 1000 * 1000};
    nanosleep(&pause, nullptr);
  }
}

int close_window(Display* d, const char* title) {
  Window w = find(d, DefaultRootWindow(d), title);
  if (!w) return fail("no window of that title");
  XEvent e = {};
  e.xclient.type = ClientMessage;
  e.xclient.window = w;
  e.xclient.message_type = XInternAtom(d, "WM_PROTOCOLS", False);
  e.xclient.format = 32;
  e.xclient.data.l[0] = static_cast<long>(XInternAtom(d, "WM_DELETE_WINDOW", False));
  e.xclient.data.l[1] = CurrentTime;
  XSendEvent(d, w, False, NoEventMask, &e);
  XSync(d, False);
  return 0;
}

void le32(std::vector<unsigned char>& out, size_t at, unsigned v) {
  for (int i = 0; i < 4; i++) out[at + i] = static_cast<unsigned char>(v >> (8 * i));
}

// Rows bottom first with no padding, as the program's own writer makes
// them and tests/window/window_run.h reads them.
int grab(Display* d, const char* title, const char* file) {
  Window w = find(d, DefaultRootWindow(d), title);
  XWindowAttributes a;
  if (!w || !XGetWindowAttributes(d, w, &a)) return fail("no window of that title");
  XImage* im = XGetImage(d, w, 0, 0, a.width, a.height, AllPlanes, ZPixmap);
  if (!im) return fail("the window's pixels cannot be read");
  const size_t n = static_cast<size_t>(a.width) * a.height * 3;
  std::vector<unsigned char> out(54 + n);
  out[0] = 'B';
  out[1] = 'M';
  le32(out, 2, static_cast<unsigned>(out.size()));
  le32(out, 10, 54);
  le32(out, 14, 40);
  le32(out, 18, a.width);
  le32(out, 22, a.height);
  out[26] = 1;
  out[28] = 24;
  for (int y = 0; y < a.height; y++)
    for (int x = 0; x < a.width; x++) {
      const unsigned long p = XGetPixel(im, x, y);
      unsigned char* o = &out[54 + (static_cast<size_t>(a.height - 1 - y) * a.width + x) * 3];
      o[0] = p & 0xff;
      o[1] = (p >> 8) & 0xff;
      o[2] = (p >> 16) & 0xff;
    }
  XDestroyImage(im);
  std::ofstream f(file, std::ios::binary);
  f.write(reinterpret_cast<const char*>(out.data()), static_cast<std::streamsize>(out.size()));
  return f ? 0 : fail("the picture cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return fail("usage: xwin_tool wait|close|grab TITLE [SECONDS|FILE]");
  Display* d = XOpenDisplay(nullptr);
  if (!d) return fail("no X display");
  const std::string cmd = argv[1];
  int r;
  if (cmd == "wait" && argc == 4) r = wait_for(d, argv[2], std::atof(argv[3]));
  else if (cmd == "close") r = close_window(d, argv[2]);
  else if (cmd == "grab" && argc == 4) r = grab(d, argv[2], argv[3]);
  else r = fail("unknown command");
  XCloseDisplay(d);
  return r;
}
