// `displ` as a command: the display, the displ words of objects, and
// the exec menu's buttons.
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "render/commands.h"
#include "render/display.h"
#include "render/image_display.h"
#include "render/window.h"
#include "scene/graphic.h"
#include "scene/image_object.h"
#include "scene/lookup.h"

namespace {

// `displ vol(1)=n` (also of `object`, `light`, `view`, `image`) writes
// the objects' displ word; `displ light(2)` and `displ view(2)` answer it.
int mot_displ(word* s, const word* ob, const word* lim, int kind) {
  std::vector<Objet*> objs = arg_objects(s, kind);
  if (!ob) {
    std::vector<float> words;
    for (Objet* o : objs) words.push_back(static_cast<float>(mot_displ(o)));
    return words.empty() ? build_nil(s) : build_floats(s, lim, words);
  }
  float n = 0;
  if (floats_of(ob, &n, 1) != 1) {
    err_illegal("displ");
    return -1;
  }
  for (Objet* o : objs) mot_displ(o) = static_cast<int>(n);
  return build_nil(s);
}

}  // namespace

int DISPL_b(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_fog)) return bloc_0(s, ob, st, lim);
  for (int kind : {KW_view, KW_light})
    if (has_word(s, kind)) return mot_displ(s, ob, lim, kind);
  for (int kind : {KW_vol, KW_object, KW_image})
    if (ob && has_word(s, kind)) return mot_displ(s, ob, lim, kind);
  if (ob) return bloc_0(s, ob, st, lim);
  if (has_word(s, KW_exec)) return DISPLAY_EXEC(s, lim);
  // `displ image(1,2)` draws those images now.
  if (has_word(s, KW_image)) {
    DISPLAY_IMAGE(arg_objects(s, KW_image));
    return build_nil(s);
  }
  if (DISPLAY_VOL(s) < 0) {
    TRACE_FAIL("DISPLAY_VOL()");
    return -1;
  }
  picture_scene(s);
  // The visible images lie over the scene, as at each image.
  DISPLAY_IMAGE_VISIBLES();
  return build_nil(s);
}
