// The floors of the loop benchmarks: a plain GLUT program whose idle
// callback draws one image and swaps, as the interaction loop does.
//   plain_loop balls N   the 50 lit balls of the display benchmark
//   plain_loop swap N    nothing but the swap
//   plain_loop clear N   the clear of colour and depth, and the swap
// It prints the images a second over N images after ten to warm up.
#include <GL/freeglut.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "plain_ball.h"

namespace {

bench::Ball balls;
bool draw = false, clear = false;
const char* mode = "swap";
int images = 0, count = 100;
std::chrono::steady_clock::time_point t0;

void idle() {
  if (draw || clear) glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  if (draw) bench::draw_balls(balls);
  glutSwapBuffers();
  if (++images == 10) t0 = std::chrono::steady_clock::now();
  if (images < 10 + count) return;
  const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  std::printf("plain %s: %.1f images a second\n", mode, count / s);
  std::exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  glutInit(&argc, argv);
  if (argc > 1) mode = argv[1];
  draw = std::strcmp(mode, "balls") == 0;
  clear = std::strcmp(mode, "clear") == 0;
  if (argc > 2) count = std::atoi(argv[2]);
  glutInitWindowSize(768, 576);
  glutInitWindowPosition(0, 0);
  glutInitDisplayMode(GLUT_DOUBLE | GLUT_DEPTH | GLUT_RGBA);
  glutCreateWindow("plain");
  glDrawBuffer(GL_BACK);
  if (draw) {
    balls = bench::ball(20, 64, 32);
    bench::projection();
  }
  glutDisplayFunc([] {});
  glutIdleFunc(idle);
  glutMainLoop();
}
