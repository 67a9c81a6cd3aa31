// The balls of the display benchmarks, made as a `ball(id) dim(r)
// secx(nx) secy(ny)` volume is: vertices by rings, quadrilateral facets
// numbered from 1, one normal a facet.
#pragma once
#include <GL/freeglut.h>

#include <cmath>
#include <vector>

namespace bench {

struct Ball {
  std::vector<float> poi;   // vertices, stride 3
  std::vector<int> fac;     // four vertex numbers from 1 per facet
  std::vector<float> nf;    // one normal a facet
};

inline Ball ball(float r, int nx, int ny) {
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

// The projection of the start-up view of the scripts: an eye at
// (0,0,-1000) looking at the origin.
inline void projection() {
  glMatrixMode(GL_PROJECTION);
  gluPerspective(57.75, 768.0 / 576.0, 10, 32000);
  glMatrixMode(GL_MODELVIEW);
}

// One image: 50 red balls in five rows of ten, lit by one light, each
// facet one GL_POLYGON with its normal and its four vertices.
inline void draw_balls(const Ball& b) {
  const float light[4] = {-336, -504, -672, 1}, white[4] = {1, 1, 1, 1}, red[4] = {1, 0, 0, 1};
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
}

}  // namespace bench
