#include "render/image_display.h"

#include "kernel/chains.h"
#include "kernel/entier.h"
#include "scene/image_object.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "language/args.h"
#include "render/picture.h"
#include "render/window.h"

namespace {

// Where an image is drawn: its `poi`, by default the top left corner.
void image_origin(Objet* o, float at[2]) {
  at[0] = 0;
  at[1] = static_cast<float>(win().Dimy - image_ny(o));
  floats_of(get_val_1(o->local, KW_poi), at, 2);
}

}  // namespace

bool image_placement(Objet* o, float box[4]) {
  int nx = 0, ny = 0;
  if (!GET_DIM_IMAGE(o, &nx, &ny)) return false;
  image_origin(o, box);
  box[0] = static_cast<float>(entier(box[0]));
  box[1] = static_cast<float>(entier(box[1]));
  box[2] = box[0] + static_cast<float>(nx);
  box[3] = box[1] + static_cast<float>(ny);
  return true;
}

void DISPLAY_IMAGE(const std::vector<Objet*>& images) {
  for (Objet* o : images) {
    const word* px = pixels_lecture(o);
    if (!px) continue;
    float at[2];
    image_origin(o, at);
    dessine_pixels(octets(px), image_nx(o), image_ny(o), entier(at[0]), entier(at[1]));
  }
}

void DISPLAY_IMAGE_VISIBLES() {
  static std::vector<Objet*> shown;  // kept from image to image
  shown.clear();
  for (Objet* o = chaine_images()->next; o; o = o->next)
    if (image_visible(o)) shown.push_back(o);
  DISPLAY_IMAGE(shown);
}
