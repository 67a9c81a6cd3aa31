// GENERATE_SPEED_IMAGE: `generate speed image(ids)` gives images a speed
// per pixel. With a second list `image(ids2)` the speed of each pixel is
// (image 1 - image 2) * coe for R, G and B (the second list's last image
// serves the rest of the first list); without it GENERATE_SPEED_IMAGE_1
// draws it from `rand(a,b)` or `alea(a,b)` between a and b, a single
// value g meaning -g..g (also given by `generate(g)`, default 1), times
// coe. The first call keeps the pixels as the previous copy. `format`,
// `meta` and `period` are read by the animation, not here.
#include <algorithm>

#include "image/image_command.h"
#include "image/image_edit.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/primitives.h"

namespace {

// The parameters of the second `image` word, or null.
const word* seconde_liste(word* s) {
  word* item = first_item(s);
  bool premier = false;
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (item[2] == KW_image) {
      if (premier) return item_value(item);
      premier = true;
    }
  return nullptr;
}

int difference(Objet* o, Objet* o2, float c) {
  if (image_nx(o) != image_nx(o2) || image_ny(o) != image_ny(o2)) {
    err_tailles(o, o2);
    return -1;
  }
  bloc v = speed_image(o);
  if (!v) return -1;
  const uint8_t* a = pixels_image(o);
  const uint8_t* b = pixels_image(o2);
  par_tranches(static_cast<size_t>(np(v)), [&](size_t i0, size_t i1) {
    for (size_t i = i0; i < i1; i++)
      for (int k = 0; k < 3; k++)
        setf(v, static_cast<int>(i) * 3 + k, static_cast<float>(a[i * 4 + k] - b[i * 4 + k]) * c);
  });
  return 0;
}

}  // namespace

// GENERATE_SPEED_IMAGE_1: random speeds from lo to hi, times c.
static int GENERATE_SPEED_IMAGE_1(Objet* o, float lo, float hi, float c, Tirage& t) {
  bloc v = speed_image(o);
  if (!v) return -1;
  par_tranches(static_cast<size_t>(np(v)) * 3, [&](size_t i0, size_t i1) {
    for (size_t i = i0; i < i1; i++) setf(v, static_cast<int>(i), (lo + (hi - lo) * t()) * c);
  });
  return 0;
}

int GENERATE_SPEED_IMAGE(word* s, const word* ob, word* st, const word* lim) {
  (void)ob, (void)st, (void)lim;
  const word* ids = images_commande(s, nullptr);
  if (!ids) {
    voir_mot(KW_generate);
    voir_mot(KW_speed);
    voir_mot(KW_image);
    voir_texte("(id) [image(id2)] coe(c) format(f) generate(g) rand(a,b) alea(a,b) meta period\a\n");
    return -1;
  }
  const float c = arg_float(s, KW_coe, 1);
  const word* ids2 = seconde_liste(s);
  Tirage t;
  std::vector<float> ab = arg_floats(s, KW_rand);
  if (find_item(s, KW_alea)) t.table = true, ab = arg_floats(s, KW_alea);
  if (ab.size() < 2) {
    const float g = ab.empty() ? arg_float(s, KW_generate, 1) : ab[0];
    ab = {-g, g};
  }
  int i = 0;
  const int r = pour_chaque_image(ids, "GENERATE_SPEED_IMAGE()", [&](Objet* o) {
    if (!get_val_1(o->local, -KW_image) && !pixels_precedents(o, true)) return -1;
    if (!ids2) return GENERATE_SPEED_IMAGE_1(o, ab[0], ab[1], c, t);
    Objet* o2 = image_operande(ids2, std::min(i++, nb_images(ids2) - 1));
    return o2 ? difference(o, o2, c) : -1;
  });
  return r < 0 ? -1 : build_nil(s);
}
