// The floor for the display benchmark: 50 balls of 64 x 32 facets, lit,
// drawn 100 times in a GLUT window with the same immediate-mode calls as
// the display (one GL_POLYGON a facet, its normal, its vertices).
#include <GL/freeglut.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

struct Ball {
  std::vector<float> poi;   // vertices, stride 3
  std::vector<int> fac;     // four vertex numbers from 1 per facet
  std::vector<float> nf;    // one normal a facet
};

Ball ball(float r, int nx, int ny) {
  Ball b;
  const float pi = 3.14159265f;
  for (int k = 0; k <= ny; k++) {
    const float phi = pi / 2 - k * pi / ny;
    const float x = k == 0 || k == ny ? 0 : r * std::cos(phi), y = r * std::sin(phi);
    for (int i = 0; i < nx; i++) {
      const float a = i * 2 * pi / nx;
      b.poi.insert(b.poi.end(), {x * std::cos(a), y, x * std::sin(a)});
    }
  }
  for (int row = 0; row < ny; row++) {
    const int k = 1 + row * nx;
    for (int i = 0; i < nx; i++) {
      const int a = k + i, c = i + 1 < nx ? k + i + 1 : k;
      b.fac.insert(b.fac.end(), {a, c, c + nx, a + nx});
    }
  }
  for (size_t f = 0; f < b.fac.size(); f += 4) {
    double s[3] = {0, 0, 0};
    for (int i = 0; i < 4; i++) {
      const float* p = &b.poi[(b.fac[f + i] - 1) * 3];
      const float* q = &b.poi[(b.fac[f + (i + 1) % 4] - 1) * 3];
      s[0] += (p[1] - q[1]) * (p[2] + q[2]);
      s[1] += (p[2] - q[2]) * (p[0] + q[0]);
      s[2] += (p[0] - q[0]) * (p[1] + q[1]);
    }
    const double l = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
    for (double c : s) b.nf.push_back(l > 0 ? static_cast<float>(c / l) : 0.0f);
  }
  return b;
}

}  // namespace

int main(int argc, char** argv) {
  glutInit(&argc, argv);
  glutInitWindowSize(768, 576);
  glutInitWindowPosition(0, 0);
  glutInitDisplayMode(GLUT_DOUBLE | GLUT_DEPTH | GLUT_RGBA);
  glutCreateWindow("plain");
  glDrawBuffer(GL_FRONT);
  const Ball b = ball(20, 64, 32);
  glMatrixMode(GL_PROJECTION);
  gluPerspective(57.75, 768.0 / 576.0, 10, 32000);
  glMatrixMode(GL_MODELVIEW);
  const float light[4] = {-336, -504, -672, 1}, white[4] = {1, 1, 1, 1}, red[4] = {1, 0, 0, 1};
  const auto t0 = std::chrono::steady_clock::now();
  for (int image = 0; image < 100; image++) {
    glClear(GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    gluLookAt(0, 0, -1000, 0, 0, 0, 0, -1, 0);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE);
    glLightfv(GL_LIGHT0, GL_POSITION, light);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
    glEnable(GL_LIGHT0);
    for (int v = 0; v < 50; v++) {
      glPushMatrix();
      glTranslatef(static_cast<float>((v % 10) * 60 - 270), static_cast<float>((v / 10) * 60 - 120), 0);
      glColor4fv(red);
      glMaterialfv(GL_FRONT, GL_DIFFUSE, red);
      for (size_t f = 0; f < b.fac.size(); f += 4) {
        glBegin(GL_POLYGON);
        glNormal3fv(&b.nf[f / 4 * 3]);
        for (int i = 0; i < 4; i++) glVertex3fv(&b.poi[(b.fac[f + i] - 1) * 3]);
        glEnd();
      }
      glPopMatrix();
    }
    glFlush();
  }
  glFinish();
  const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  const double facets = 100.0 * 50 * (b.fac.size() / 4);
  std::printf("plain: %.3f s, %.0f facets a second\n", s, facets / s);
  return 0;
}
