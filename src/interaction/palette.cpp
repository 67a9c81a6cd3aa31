// palette_Idle_Func: the paint palette's image, the same list of stages as
// the interaction loop's with the palette's own user functions and its
// tool at the end. The palette (subsystem of the tools) registers its
// functions in the loop's state; what it has not registered is skipped.
#include "animation/cycle.h"
#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "render/frame.h"
#include "render/window.h"

namespace {

int etape_palette(Stage s) {
  const InteractionState& L = loop();
  int n = 0;
  switch (s) {
    case STAGE_F1: n = 1; break;
    case STAGE_F2: n = 2; break;
    case STAGE_F3: n = 3; break;
    case STAGE_F4: n = 4; break;
    default: return 0;
  }
  return L.fonction_palette ? L.fonction_palette(n) : 0;
}

void arret(const char* label) {
  if (Yes(KW_error) > 0) {
    VOIR_CHAR("%s\n", label);
    voir_texte("palette_Idle_Func()\n");
  }
  kernel().Mode_idle = 0;
  draw_in_back(false);
}

}  // namespace

void palette_Idle_Func() {
  const InteractionState& L = loop();
  draw_in_back(true);
  Efface_image();
  if (run_stages({LOOP_PALETTE, 1, etape_palette}) < 0) {
    arret(failed_stage_label());
    return;
  }
  if (L.outil_palette && L.outil_palette() < 0) {
    arret("palette");
    return;
  }
  swap_image();
}
