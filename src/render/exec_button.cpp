// DISPLAY_EXEC: a text button of the `exec` menu, placed in window pixels
// from the top left corner, the frame of the mouse's coordinates.
//   displ exec("text") poi(x,y) col(r,g,b) frame(r,g,b) rectangle(r,g,b)
//         font(f) mouse displ(n)
// `frame` alone takes white; `rectangle` fills the box behind the text.
// With `mouse` the answer is 1 when the mouse stands on the button, else
// 0; `displ(0)` asks that without drawing. Only while `yes menu`.
#include <GL/gl.h>

#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/commands.h"
#include "language/args.h"
#include "render/commands.h"
#include "render/text.h"
#include "render/window.h"

namespace {

// The value of `displ(n)` after the command's own `displ`, or 1.
int affichage(word* s) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (i > 0 && item[2] == KW_displ && item_value(item)) {
      float n = 1;
      floats_of(item_value(item), &n, 1);
      return static_cast<int>(n);
    }
  return 1;
}

}  // namespace

int DISPLAY_EXEC(word* s, const word* lim) {
  const char* label = value_text(arg_of(s, KW_exec));
  if (Yes(KW_menu) <= 0 || !label) return build_nil(s);
  TextBox box;
  box.text = label;
  box.font = police(arg_of(s, KW_font));
  float at[2] = {10, 10 + hauteur_texte(box.font)};
  arg_floats(s, KW_poi, at, 2);
  arg_floats(s, KW_col, box.col, 3);
  float frame[3] = {1, 1, 1}, back[3] = {0, 0, 0};
  if (has_word(s, KW_frame)) {
    arg_floats(s, KW_frame, frame, 3);
    box.frame = frame;
  }
  if (has_word(s, KW_rectangle)) {
    arg_floats(s, KW_rectangle, back, 3);
    box.back = back;
  }
  if (affichage(s) != 0 && gl_on()) {
    repere_pixels(true);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glTranslatef(at[0], static_cast<float>(win().Dimy) - at[1], 0);
    dessine_texte(box);
    glEnable(GL_DEPTH_TEST);
    repere_pixels(false);
    glFlush();
  }
  if (!has_word(s, KW_mouse)) return build_nil(s);
  const float w = largeur_texte(box.font, label), h = hauteur_texte(box.font);
  const WindowState& ws = win();
  const bool inside = ws.mouse_x >= at[0] - 4 && ws.mouse_x <= at[0] + w + 4 && ws.mouse_y >= at[1] - h - 2 &&
                      ws.mouse_y <= at[1] + 6;
  return build_float(s, lim, inside ? 1.0f : 0.0f);
}
