// The floor for the display benchmark: 50 balls of 64 x 32 facets, lit,
// drawn 100 times in a GLUT window with the same immediate-mode calls as
// the display (one GL_POLYGON a facet, its normal, its vertices).
#include <GL/freeglut.h>

#include <chrono>
#include <cstdio>

#include "plain_ball.h"

int main(int argc, char** argv) {
  glutInit(&argc, argv);
  glutInitWindowSize(768, 576);
  glutInitWindowPosition(0, 0);
  glutInitDisplayMode(GLUT_DOUBLE | GLUT_DEPTH | GLUT_RGBA);
  glutCreateWindow("plain");
  glDrawBuffer(GL_FRONT);
  const bench::Ball b = bench::ball(20, 64, 32);
  bench::projection();
  const auto t0 = std::chrono::steady_clock::now();
  for (int image = 0; image < 100; image++) {
    bench::draw_balls(b);
    glFlush();
  }
  glFinish();
  const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  const double facets = 100.0 * 50 * (b.fac.size() / 4);
  std::printf("plain: %.3f s, %.0f facets a second\n", s, facets / s);
  return 0;
}
