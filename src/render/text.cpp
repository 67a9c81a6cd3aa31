#include "render/text.h"

#include <GL/glu.h>

#include <cstring>

#include "kernel/keywords.h"
#include "language/args.h"
#include "render/font_tables.h"
#include "render/window.h"
#include "scene/volume.h"

namespace {

void rectangle(GLenum kind, float x0, float y0, float x1, float y1) {
  glBegin(kind);
  glVertex2f(x0, y0);
  glVertex2f(x1, y0);
  glVertex2f(x1, y1);
  glVertex2f(x0, y1);
  glEnd();
}

// The box height of each font of the tables, in their order.
constexpr float HAUTEURS[NB_BITMAP_FONTS] = {13, 15, 10, 24, 10, 12, 18};

int rang(const BitmapFont* font) {
  for (int i = 0; i < NB_BITMAP_FONTS; i++)
    if (&BITMAP_FONTS[i] == font) return i;
  return FONT_9_BY_15;
}

}  // namespace

const BitmapFont* police(const word* font) {
  if (const char* name = value_text(font)) {
    for (const BitmapFont& p : BITMAP_FONTS)
      if (std::strcmp(p.name, name) == 0) return &p;
  } else if (float n; floats_of(font, &n, 1) == 1 && n >= 0 && n < NB_BITMAP_FONTS) {
    return &BITMAP_FONTS[static_cast<int>(n)];
  }
  return &BITMAP_FONTS[FONT_9_BY_15];
}

float largeur_texte(const BitmapFont* font, const char* text) {
  return static_cast<float>(bitmap_length(BITMAP_FONTS[rang(font)], text));
}

float hauteur_texte(const BitmapFont* font) { return HAUTEURS[rang(font)]; }

void dessine_texte(const TextBox& box) {
  const BitmapFont* font = &BITMAP_FONTS[rang(box.font)];
  const float w = largeur_texte(font, box.text), h = hauteur_texte(font);
  // The box reaches 4 pixels under the base line for descenders.
  if (box.back) {
    glColor3fv(box.back);
    rectangle(GL_POLYGON, -2, -4, w + 2, h);
  }
  if (box.outline) {
    glColor3fv(box.outline);
    rectangle(GL_LINE_LOOP, -2, -4, w + 2, h);
  }
  if (box.frame) {
    glColor3fv(box.frame);
    rectangle(GL_LINE_LOOP, -4, -6, w + 4, h + 2);
  }
  glColor3fv(box.col);
  glRasterPos2f(0, 0);
  bitmap_text(*font, box.text);
}

void repere_pixels(bool on) {
  const double bottom_left[4] = {0, static_cast<double>(win().Dimx), 0, static_cast<double>(win().Dimy)};
  repere_plan(on, bottom_left);
}

void repere_plan(bool on, const double box[4]) {
  glMatrixMode(GL_PROJECTION);
  if (on) {
    glPushMatrix();
    glLoadIdentity();
    gluOrtho2D(box[0], box[1], box[2], box[3]);
  } else {
    glPopMatrix();
  }
  glMatrixMode(GL_MODELVIEW);
  if (on) {
    glPushMatrix();
    glLoadIdentity();
  } else {
    glPopMatrix();
  }
}

void message_volume(Objet*, const DisplayRecord& r, int mode) {
  const word* m = r[L_message];
  if (!m || tag(m) != T_CHAR) return;
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  float at[3] = {0, 0, 0};
  if (const word* poi = r[R_poi]; poi && np(poi) > 0)
    for (int i = 0; i < 3 && i < stride(poi); i++) at[i] = getf(poi, i);
  TextBox box;
  box.text = text(m);
  box.font = police(r[L_font_message]);
  float back[3] = {0, 0, 0}, white[3] = {1, 1, 1}, frame[3];
  if (floats_of(r[L_back_message], back, 3) > 0) box.back = back;
  if (mode == 0) box.outline = white;
  if (floats_of(r[L_col_frame], frame, 3) == 3) box.frame = frame;
  floats_of(r[L_col_message], box.col, 3);
  // The box stands in window pixels where the point falls on the screen.
  double model[16], proj[16], wx, wy, wz;
  int viewport[4];
  glGetDoublev(GL_MODELVIEW_MATRIX, model);
  glGetDoublev(GL_PROJECTION_MATRIX, proj);
  glGetIntegerv(GL_VIEWPORT, viewport);
  if (gluProject(at[0], at[1], at[2], model, proj, viewport, &wx, &wy, &wz) == GL_TRUE) {
    repere_pixels(true);
    glTranslatef(static_cast<float>(wx), static_cast<float>(wy), 0);
    dessine_texte(box);
    repere_pixels(false);
  }
  glEnable(GL_DEPTH_TEST);
}
