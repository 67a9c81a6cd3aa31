#include "render/lights.h"

#include <GL/gl.h>

#include <cmath>
#include <cstdlib>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "render/window.h"

namespace {

// GL's lights that the last pass switched on, so that they go off when
// their object goes.
unsigned used_mask = 0;

int max_lights() {
  static int n = 0;
  if (!n) {
    glGetIntegerv(GL_MAX_LIGHTS, &n);
    if (n < 1 || n > 32) n = 8;
  }
  return n;
}

int lire(Objet* o, int c1, int c2, float* out, int n) {
  const word* b = c2 ? get_val_2(o->local, c1, c2) : get_val_1(o->local, c1);
  if (!b || tag(b) != T_FLOAT) return 0;
  int k = 0;
  for (; k < n && k < np(b) * (dimp(b) > 0 ? dimp(b) : 1); k++) out[k] = getf(b, k);
  return k;
}

float place_defaut() {
  const WindowState& w = win();
  return (w.Dimx + w.Dimy) * 0.5f;
}

// The light that stands when no light object is in use: above left and
// in front of the scene, as a missing `eye` of a light would be.
void lumiere_defaut() {
  const float s = place_defaut();
  const float pos[4] = {-s / 2, -0.75f * s, -s, 1};
  const float white[4] = {1, 1, 1, 1};
  const float ambient[4] = {0.2f, 0.2f, 0.2f, 1};
  glLightfv(GL_LIGHT0, GL_POSITION, pos);
  glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
  glLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
  glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 180);
  glLightf(GL_LIGHT0, GL_CONSTANT_ATTENUATION, 1);
  glLightf(GL_LIGHT0, GL_LINEAR_ATTENUATION, 0);
  glLightf(GL_LIGHT0, GL_QUADRATIC_ATTENUATION, 0);
  glEnable(GL_LIGHT0);
  used_mask |= 1;
}

int une_lumiere(Objet* o, int code) {
  if (o->id < 1 || o->id > LIGHT_LIMIT) {
    voir_mot(KW_light);
    voir_int2("%d > %d\n", o->id, LIGHT_LIMIT);
    return -1;
  }
  if (o->id > max_lights()) return 0;  // beyond what GL offers: not shown
  const GLenum gl = GL_LIGHT0 + static_cast<GLenum>(o->id - 1);
  o->work[0] = static_cast<int>(gl);
  glEnable(gl);
  used_mask |= 1u << (o->id - 1);
  float eye[4] = {0, 0, 0, 1};
  if (!o->local && !local_ini(o)) return -1;
  if (lire(o, KW_eye, 0, eye, 3) < 3) {
    const float s = place_defaut();
    bloc b = set_val_1(o, KW_eye, 3);
    if (!b) return -1;
    setf(b, 0, eye[0] = -s / 2);
    setf(b, 1, eye[1] = -0.75f * s);
    setf(b, 2, eye[2] = -s);
  }
  if (!code || code == KW_eye) glLightfv(gl, GL_POSITION, eye);
  if (!code || code == KW_col) {
    float col[4] = {1, 1, 1, 1};
    lire(o, KW_col, 0, col, 3);
    glLightfv(gl, GL_DIFFUSE, col);
  }
  if (!code || code == KW_ambiance) {
    float amb[4] = {0, 0, 0, 1};
    if (lire(o, KW_ambiance, 0, amb, 3) > 0) glLightfv(gl, GL_AMBIENT, amb);
  }
  if (!code || code == KW_coe) {
    float coe[3] = {1, 0, 0};
    lire(o, KW_coe, 0, coe, 3);
    if (get_val_2(o->local, KW_coe, KW_illum))
      for (float& c : coe) c += static_cast<float>(std::rand()) / static_cast<float>(RAND_MAX);
    glLightf(gl, GL_CONSTANT_ATTENUATION, coe[0]);
    glLightf(gl, GL_LINEAR_ATTENUATION, coe[1]);
    glLightf(gl, GL_QUADRATIC_ATTENUATION, coe[2]);
  }
  if (code) return 0;
  float dir[3] = {0, 0, 1};
  if (o->subkind == KW_axis) {
    lire(o, KW_axis, 0, dir, 3);
  } else {
    float aim[3] = {0, 0, 0};
    lire(o, KW_aim, 0, aim, 3);
    const float d[3] = {aim[0] - eye[0], aim[1] - eye[1], aim[2] - eye[2]};
    const float l = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    if (l > 0)
      for (int i = 0; i < 3; i++) dir[i] = d[i] / l;
  }
  glLightfv(gl, GL_SPOT_DIRECTION, dir);
  float roll = 180;
  lire(o, KW_roll, 0, &roll, 1);
  float ab[2];
  const int n = lire(o, KW_meta, KW_roll, ab, 2);
  if (n > 0) {
    float foc = 1;
    lire(o, KW_foc, 0, &foc, 1);
    if (foc < 0.0001f) {
      voir_float("%f\n", foc);
      return -1;
    }
    meta_roll_cutoff(ab, n, foc, 0.0001f, &roll);
  }
  if (roll != 180) roll = std::fabs(roll) > 90 ? 90 : std::fabs(roll);
  float expo = 0;
  lire(o, KW_coe, KW_roll, &expo, 1);
  glLightf(gl, GL_SPOT_CUTOFF, roll);
  glLightf(gl, GL_SPOT_EXPONENT, std::fmin(std::fmax(expo, 0.0f), 128.0f));
  return 0;
}

}  // namespace

bool meta_roll_cutoff(const float* ab, int n, float f, float floor, float* roll) {
  if (n < 1 || ab[0] < 0) return false;
  if (f < floor) f = floor;
  float div = n >= 2 ? std::pow(f, ab[1]) : f;
  if (div < floor) div = floor;
  *roll = ab[0] / div;
  return true;
}

int SET_LIGHT_1(Objet* light, int code, const word* arg) {
  (void)arg;
  if (!gl_on()) return 0;
  if (light) return une_lumiere(light, code);
  const unsigned before = used_mask;
  used_mask = 0;
  int r = 0;
  Objet* head = chaine_classe(KW_light);
  for (Objet* o = head ? head->next : nullptr; o; o = o->next)
    if (o->kind == KW_light && o->valid > 0 && une_lumiere(o, code) < 0) r = -1;
  if (!used_mask) lumiere_defaut();
  for (int i = 0; i < 32 && i < max_lights(); i++)
    if ((before & (1u << i)) && !(used_mask & (1u << i))) glDisable(GL_LIGHT0 + static_cast<GLenum>(i));
  if (r < 0) TRACE_FAIL("SET_LIGHT_1()");
  return r;
}

void lights_enable() {
  if (!gl_on()) return;
  Objet* head = chaine_classe(KW_light);
  for (Objet* o = head ? head->next : nullptr; o; o = o->next) {
    if (o->kind != KW_light || o->id < 1 || o->id > max_lights()) continue;
    const GLenum gl = GL_LIGHT0 + static_cast<GLenum>(o->id - 1);
    if (o->valid > 0) glEnable(gl);
    else glDisable(gl);
  }
}

void COMPUTE_LIGHT() {
  if (!gl_on()) return;
  Objet* head = chaine_classe(KW_light);
  for (Objet* o = head ? head->next : nullptr; o; o = o->next) {
    if (o->kind != KW_light || o->valid <= 0 || o->id < 1 || o->id > max_lights()) continue;
    float ab[2], foc = 1, roll = 180;
    const int n = lire(o, KW_meta, KW_roll, ab, 2);
    if (n < 1) continue;
    lire(o, KW_foc, 0, &foc, 1);
    if (!meta_roll_cutoff(ab, n, foc, 0.001f, &roll)) continue;
    if (bloc b = set_val_1(o, KW_roll, 1)) setf(b, 0, roll);
    glLightf(GL_LIGHT0 + static_cast<GLenum>(o->id - 1), GL_SPOT_CUTOFF,
             roll == 180 ? 180 : std::fmin(std::fabs(roll), 90.0f));
  }
}
