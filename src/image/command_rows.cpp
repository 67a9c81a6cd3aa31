// The image commands' rows of the graphic dispatch. `dim`, `near` and
// `generate speed` are image commands only when they name images; the
// scene answers their other shapes.
#include "image/image_command.h"
#include "kernel/keywords.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"

namespace {

int dim_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = commande_image(s);
  return *done ? DIM_IMAGE(s, ob, st, lim) : 0;
}

int near_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = commande_image(s);
  if (!*done) return 0;
  const int second = second_word(s);
  if (second == KW_matrix || second == KW_number) return NEAR_IMAGE_EG(s, ob, st, lim);
  return NEAR_IMAGE(s, ob, st, lim);
}

int generate_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = second_word(s) == KW_speed && commande_image(s);
  return *done ? GENERATE_SPEED_IMAGE(s, ob, st, lim) : 0;
}

}  // namespace

void install_image_commands() {
  register_graphic_handler({KW_image}, IMAGE_1);
  register_graphic_handler({KW_smooth}, SMOOTH_b);
  register_graphic_handler({KW_disk}, DISK_IMAGE);
  register_graphic_handler({KW_interpol}, INTERPOL_b);
  register_graphic_shape(KW_dim, dim_shape);
  register_graphic_shape(KW_near, near_shape);
  register_graphic_shape(KW_generate, generate_shape);
}
