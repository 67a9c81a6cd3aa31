// The stages that draw the image, and the objects' local functions.
#include "animation/stages.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "render/display.h"
#include "render/frame.h"
#include "render/image_display.h"
#include "render/lights.h"
#include "render/view.h"
#include "scene/vol_local.h"

int locales_cycle() { return EXEC_LOCALE_TOUT(); }

// The display composes the objects' matrices on the model-view; the
// projection loads its own matrix and leaves the model-view current.
int modelview_identite() {
  modelview_identity();
  return 0;
}

int projection_image() {
  views().Type_projection = Yes(KW_pers) < 1 ? KW_normal : KW_pers;
  Projection(1);
  return 0;
}

int images_image() {
  DISPLAY_IMAGE_VISIBLES();
  return 0;
}

int lumieres_image() {
  COMPUTE_LIGHT();
  return 0;
}

// The saves of the model-view that the projection made go back also when
// the display drew nothing.
int volumes_image() {
  const int r = DISPLAY_VOL(nullptr);
  pop_projections();
  return r;
}
