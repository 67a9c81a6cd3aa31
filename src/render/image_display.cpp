#include "render/image_display.h"

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "render/cmd_args.h"
#include "render/picture.h"
#include "render/window.h"
#include "scene/image_object.h"

void DISPLAY_IMAGE(const std::vector<Objet*>& images) {
  for (Objet* o : images) {
    const word* px = pixels_lecture(o);
    if (!px) continue;
    float at[2] = {0, static_cast<float>(win().Dimy - image_ny(o))};
    floats_into(get_val_1(o->local, KW_poi), at, 2);
    dessine_pixels(octets(px), image_nx(o), image_ny(o), static_cast<int>(at[0]), static_cast<int>(at[1]));
  }
}

void DISPLAY_IMAGE_VISIBLES() {
  static std::vector<Objet*> shown;  // kept from image to image
  shown.clear();
  for (Objet* o = chaine_images()->next; o; o = o->next)
    if (image_visible(o)) shown.push_back(o);
  DISPLAY_IMAGE(shown);
}
