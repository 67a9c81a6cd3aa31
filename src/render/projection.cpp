// Loading GL's projection and model-view from a view, or the
// orthographic camera of Param_ortho.
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "render/lights.h"
#include "render/view.h"
#include "render/window.h"

namespace {

void lire(Objet* v, int code, float* out, int n) {
  const word* b = v ? get_val_1(v->local, code) : nullptr;
  if (!b || tag(b) != T_FLOAT) return;
  for (int i = 0; i < n && i < elements(b); i++) out[i] = getf(b, i);
}

void plans(double& near, double& far) {
  const ViewState& vs = views();
  near = vs.P_cut ? vs.P_cut[0] : 10.0;
  far = vs.P_cut ? vs.P_cut[1] : 32000.0;
}

// Steps common to both perspective loaders: the projection, then the up
// vector turned by the roll. The vector of sight takes aim.y - eye.z for
// its y: a rolling camera tilts by this rule.
void perspective(const float eye[3], const float aim[3], float foc, float roll, double up[3]) {
  const WindowState& w = win();
  double near, far;
  plans(near, far);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluPerspective(foc * 57.75, static_cast<double>(w.Dimx) / w.Dimy, near, far);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  up[0] = 0;
  up[1] = -1;
  up[2] = 0;
  if (roll == 0) return;
  double k[3] = {aim[0] - eye[0], aim[1] - eye[2], aim[2] - eye[2]};
  const double l = std::sqrt(k[0] * k[0] + k[1] * k[1] + k[2] * k[2]);
  if (l <= 0) return;
  for (double& c : k) c /= l;
  const double c = std::cos(roll), s = std::sin(roll);
  const double kxu[3] = {k[1] * up[2] - k[2] * up[1], k[2] * up[0] - k[0] * up[2], k[0] * up[1] - k[1] * up[0]};
  const double kdu = k[0] * up[0] + k[1] * up[1] + k[2] * up[2];
  double r[3];
  for (int i = 0; i < 3; i++) r[i] = up[i] * c + kxu[i] * s + k[i] * kdu * (1 - c);
  for (int i = 0; i < 3; i++) up[i] = r[i];
}

void regarde(const float e[3], const float a[3], const double up[3]) {
  gluLookAt(e[0], e[1], e[2], a[0], a[1], a[2], up[0], up[1], up[2]);
}

}  // namespace

void Projection_vue(Objet* v) {
  if (!gl_on()) return;
  float eye[3] = {0, 0, -896}, aim[3] = {0, 0, 0}, axis[3] = {0, 0, 0}, foc = 1, roll = 0;
  lire(v, KW_eye, eye, 3);
  lire(v, KW_aim, aim, 3);
  lire(v, KW_axis, axis, 3);
  lire(v, KW_foc, &foc, 1);
  lire(v, KW_roll, &roll, 1);
  double up[3];
  perspective(eye, aim, foc, roll, up);
  if (v && v->subkind == KW_axis) {
    for (int i = 0; i < 3; i++) aim[i] = eye[i] + axis[i];
    if (bloc b = set_val_1(v, KW_aim, 3))
      for (int i = 0; i < 3; i++) setf(b, i, aim[i]);
  } else if (v && v->subkind != KW_aim) {
    voir_objet(v);
    voir_mot(v->subkind);
    voir_texte("\n");
    v->subkind = KW_aim;
  }
  regarde(eye, aim, up);
  if (v) vue_courante(v);
  glPushMatrix();
  views().pushed++;
  SET_LIGHT_1(nullptr, 0, nullptr);
}

void Projection_ortho() {
  if (!gl_on()) return;
  const WindowState& w = win();
  const int* p = views().Param_ortho;
  double near, far;
  plans(near, far);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, w.Dimx - 1, 0, w.Dimy - 1, near, far);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  gluLookAt(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8]);
}

void Projection(int reset) {
  if (!gl_on()) return;
  ViewState& vs = views();
  if (reset) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
  }
  if (vs.Type_projection == KW_normal) {
    Projection_ortho();
  } else {
    Objet* v = vue_active();
    if (!v || !vs.P_eye || !vs.P_aim) return;
    double up[3];
    perspective(vs.P_eye, vs.P_aim, vs.P_foc ? *vs.P_foc : 1.0f, vs.P_roll ? *vs.P_roll : 0.0f, up);
    regarde(vs.P_eye, vs.P_aim, up);
  }
  glPushMatrix();
  vs.pushed++;
}

void pop_projections() {
  ViewState& vs = views();
  if (!gl_on()) {
    vs.pushed = 0;
    return;
  }
  glMatrixMode(GL_MODELVIEW);
  for (; vs.pushed > 0; vs.pushed--) glPopMatrix();
}
