// `win`, `graphic`, `back`, `screen` and `zbuf`.
#include <GL/freeglut.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "render/commands.h"
#include "render/view.h"
#include "render/window.h"
#include "render/windows.h"
#include "scene/graphic.h"

namespace {

// The commands that the `graphic("...")` language knows, by exact text.
struct Switch {
  const char* name;
  GLenum cap;
};
constexpr Switch CAPS[] = {
    {"GL_DEPTH_TEST", GL_DEPTH_TEST}, {"GL_FOG", GL_FOG},         {"GL_LIGHTING", GL_LIGHTING},
    {"GL_BLEND", GL_BLEND},           {"GL_POINT_SMOOTH", GL_POINT_SMOOTH},
    {"GL_TEXTURE_2D", GL_TEXTURE_2D}, {"GL_STENCIL_TEST", GL_STENCIL_TEST},
};

int syntaxe() {
  err_syntaxe(MES_TOO_MANY, KW_graphic, "(\"glEnable(GL_FOG)\")\n");
  return -1;
}

// Runs one text of the language; 1 when it answered a value into `out`.
int texte_graphique(const char* t, float* out) {
  std::string name, arg;
  const char* open = std::strchr(t, '(');
  if (open) {
    name.assign(t, std::min<size_t>(open - t, 40));
    const char* close = std::strrchr(open, ')');
    if (!close) return syntaxe();
    arg.assign(open + 1, std::min<size_t>(close - open - 1, 41));
  } else {
    name.assign(t, std::min<size_t>(std::strlen(t), 120));
  }
  WindowState& w = win();
  const bool on = gl_on();
  if (std::strcmp(t, "glDrawBuffer(GL_BACK)") == 0 || name == "back") {
    if (on) glDrawBuffer(GL_BACK);
    w.drawn_front = false;
  } else if (std::strcmp(t, "glutShowWindow()") == 0 || name == "show") {
    if (glut_on()) glutShowWindow();
  } else if (std::strcmp(t, "glDrawBuffer(GL_FRONT)") == 0 || name == "front") {
    if (on) glDrawBuffer(GL_FRONT);
    w.drawn_front = true;
  } else if (std::strcmp(t, "glutSwapBuffers()") == 0 || name == "swap") {
    if (glut_on()) glutSwapBuffers();
  } else if (name == "glEnable" || name == "glDisable") {
    for (const Switch& c : CAPS)
      if (arg == c.name) {
        if (on) name == "glEnable" ? glEnable(c.cap) : glDisable(c.cap);
        return 0;
      }
    return syntaxe();
  } else if (name == "glutAttachMenu" || name == "glutDetachMenu") {
    if (arg != "GLUT_RIGHT_BUTTON") return syntaxe();
    // No menu is built yet: nothing to attach.
  } else if (name == "glBlendFunc") {
    if (arg == "GL_SRC_ALPHA") {
      if (on) glBlendFunc(GL_SRC_ALPHA, GL_SRC_ALPHA);
    } else if (arg == "GL_ONE_MINUS_SRC_ALPHA") {
      if (on) glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    } else {
      return syntaxe();
    }
  } else if (name == "glPointSize") {
    if (!open) {
      *out = 1;
      if (on) glGetFloatv(GL_POINT_SIZE, out);
      return 1;
    }
    if (on) glPointSize(static_cast<float>(std::atof(arg.c_str())));
  } else if (name == "glViewport") {
    int v[4];
    if (std::sscanf(arg.c_str(), "%d,%d,%d,%d", &v[0], &v[1], &v[2], &v[3]) != 4) return syntaxe();
    if (on) glViewport(v[0], v[1], v[2], v[3]);
  } else if (name == "glLightModel") {
    // Its argument is read and not used.
  } else {
    return syntaxe();
  }
  return 0;
}

}  // namespace

int GRAPHIC_b(word* s, const word* ob, word* st, const word* lim) {
  const word* v = ob ? ob : arg_of(s, KW_graphic);
  if (item_count(s) > 1 && !v) return bloc_0(s, ob, st, lim);
  if (const char* t = value_text(v)) {
    float answer = 0;
    const int r = texte_graphique(t, &answer);
    if (r < 0) return r;
    return r == 1 ? build_float(s, lim, answer) : build_nil(s);
  }
  float f[4];
  const int n = floats_of(v, f, 4);
  if (n == 0) return set_get_val_com(s, lim, ob);
  WindowState& w = win();
  if (n >= 2) {
    w.Dimx = entier(f[0]);
    w.Dimy = entier(f[1]);
  }
  if (n >= 4) {
    w.Orx = entier(f[2]);
    w.Ory = entier(f[3]);
  }
  init_ecran(2);
  init_param_ortho();
  return build_nil(s);
}

int WIN_b(word* s, const word* ob, word* st, const word* lim) {
  if (ob) return bloc_0(s, ob, st, lim);
  for (int code : {KW_win, KW_foc, KW_below})
    if (const char* name = value_text(arg_of(s, code))) return SOUS_FENETRE(s, lim, name);
  WindowState& w = win();
  float d[2] = {static_cast<float>(w.Dimx), static_cast<float>(w.Dimy)};
  if (const char* t = value_text(arg_of(s, KW_dim))) {
    if (std::strcmp(t, "full") == 0) {
      d[0] = static_cast<float>(w.Dimx_ecran);
      d[1] = static_cast<float>(w.Dimy_ecran);
    } else if (std::strcmp(t, "video") == 0) {
      d[0] = 768;
      d[1] = 576;
    } else {
      VOIR_CHAR("%s: ", t);
      voir_message(0, MES_ILLEGAL);
      return -1;
    }
  } else {
    arg_floats(s, KW_dim, d, 2);
  }
  float p[2] = {static_cast<float>(-d[0] / 2), static_cast<float>(-d[1] / 2)};
  const bool placed = arg_floats(s, KW_poi, p, 2) > 0;
  if (!has_word(s, KW_dim) && !placed) {
    const std::vector<float> now = {static_cast<float>(w.Dimx), static_cast<float>(w.Dimy),
                                    static_cast<float>(w.Orx), static_cast<float>(w.Ory)};
    return build_floats(s, lim, now);
  }
  w.Dimx = entier(d[0]);
  w.Dimy = entier(d[1]);
  // A place is given from the screen's centre.
  w.Orx = entier(p[0]) + w.Dimx_ecran / 2;
  w.Ory = entier(p[1]) + w.Dimy_ecran / 2;
  init_ecran(2);
  init_param_ortho();
  return build_nil(s);
}

int BACK_b(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_vol) || (ob && item_count(s) > 1)) return bloc_0(s, ob, st, lim);
  float* b = Back();
  if (has_word(s, KW_ini)) {
    int n = 0;
    const float* d = def_com(KW_back / KW_PER_VOC, KW_back, &n);
    for (int i = 0; i < 3 && i < n; i++) b[i] = d[i];
  }
  const word* v = ob ? ob : arg_of(s, KW_back);
  const bool given = floats_of(v, b, 3) > 0 || has_word(s, KW_ini);
  for (int i = 0; i < 3; i++) b[3 + i] = b[i] * 255.0f;
  if (given && gl_on()) {
    glClearColor(b[0], b[1], b[2], 1);
    glFlush();
  }
  return build_floats(s, lim, {b[0], b[1], b[2]});
}

int SCREEN_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  if (has_word(s, KW_image)) return bloc_0(s, ob, st, lim);
  WindowState& w = win();
  const float* b = Back();
  float c[3] = {b[0], b[1], b[2]};
  if (const word* v = ob ? ob : arg_of(s, KW_screen)) {
    c[0] = c[1] = c[2] = 0;
    floats_of(v, c, 3);
  }
  if (gl_on() && w.Mode_soft < 2) {
    Projection_ortho();
    glDrawBuffer(GL_FRONT);
    w.drawn_front = true;
    glClearColor(c[0], c[1], c[2], 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glFlush();
    picture_cleared(c);
  }
  (void)lim;
  return build_nil(s);
}

bool zbuffer_alloue(int n) {
  WindowState& w = win();
  std::free(w.zbuffer);
  w.zbuffer = nullptr;
  if (n) {
    const double bytes = static_cast<double>(w.Dimx) * w.Dimy * (n == 1 ? 2.0 : 2.0 * n);
    if (!memoire_possible(bytes, "zbuf")) return false;
    w.zbuffer = static_cast<unsigned char*>(std::calloc(static_cast<size_t>(bytes), 1));
    if (!w.zbuffer) {
      err_malloc("zbuf", bytes);
      return false;
    }
  }
  w.zbuf_mode = n;
  return true;
}

int ZBUF_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  WindowState& w = win();
  float f = 0;
  if (floats_of(ob ? ob : arg_of(s, KW_zbuf), &f, 1) == 0) return build_float(s, lim, static_cast<float>(w.zbuf_mode));
  const int n = entier(f);
  if (n < 0) {
    voir_int("%d ", n);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  if ((n != w.zbuf_mode || (n && !w.zbuffer)) && !zbuffer_alloue(n)) return -1;
  if (n == 0) voir_texte("zbuffer off\n");
  else if (n == 1) voir_texte("zbuffer 16 bits\n");
  else if (n == 2) voir_texte("zbuffer 32 bits\n");
  else voir_int("zbuffer = %d shorts\n", n);
  return build_nil(s);
}
