// The window toolkit's errors and the X server's are messages, never the
// end of the process: checked against a private X server.
#include "render/window.h"
#include "support/capture.h"
#include "window/live_session.h"

// After the test framework: Xlib's macros (None, Bool) would clash with it.
#include <GL/freeglut.h>
#include <GL/glx.h>
#include <X11/Xlib.h>

namespace {

TEST(WindowToolkit, ErrorsOfTheToolkitAndOfTheServerAreMessages) {
  REQUIRE_LIVE_TOOLS();
  minimal_kernel();
  XServer x;
  ASSERT_FALSE(x.display.empty());
  setenv("DISPLAY", x.display.c_str(), 1);
  // Mesa unloads its GL driver when the toolkit resets, and what the
  // driver kept is then lost to the leak checker (not ours to free). A
  // connection of the test's own, with GLX in use, keeps it loaded.
  static Display* keep = XOpenDisplay(x.display.c_str());
  ASSERT_NE(keep, nullptr);
  int rgba[] = {GLX_RGBA, None};
  XFree(glXChooseVisual(keep, 0, rgba));
  Capture out;
  ASSERT_TRUE(toolkit_start());
  EXPECT_EQ(glutGet(GLUT_INIT_STATE), 1);
  // With no window the toolkit's loop reports an error, which would end
  // the process, then returns, the toolkit reset for another start.
  glutMainLoop();
  const std::string said = out.take();
  EXPECT_NE(said.find("freeglut: "), std::string::npos) << said;
  EXPECT_NE(said.find("glutMainLoop called with no windows created"), std::string::npos) << said;
  EXPECT_EQ(glutGet(GLUT_INIT_STATE), 0);

  // A request the server refuses, on any connection of the process.
  Display* d = XOpenDisplay(x.display.c_str());
  ASSERT_NE(d, nullptr);
  XMapWindow(d, 0x1fffff);
  XSync(d, False);
  XCloseDisplay(d);
  const std::string refused = out.take();
  EXPECT_NE(refused.find("X error: BadWindow"), std::string::npos) << refused;
}

}  // namespace
