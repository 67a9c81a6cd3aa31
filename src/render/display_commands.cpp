// `displ` as a command: the display, the displ words of objects, and
// the exec menu's buttons.
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "render/cmd_args.h"
#include "render/commands.h"
#include "render/display.h"
#include "scene/chains.h"
#include "scene/graphic.h"
#include "scene/lookup.h"

namespace {

// The objects that the items of one kind word name.
std::vector<Objet*> nommes(word* s, int kind) {
  std::vector<Objet*> out;
  const word* sel = arg_of(s, kind);
  for (int i = 0; sel && i < nb_selection(sel); i++)
    if (Objet* o = get_objet_simple(chaine_classe(kind), sel, i)) out.push_back(o);
  return out;
}

// `displ vol(1)=n` (also of `object`, `light`, `view`) writes the
// objects' displ word; `displ light(2)` and `displ view(2)` answer it.
int mot_displ(word* s, const word* ob, const word* lim, int kind) {
  std::vector<Objet*> objs = nommes(s, kind);
  if (!ob) {
    std::vector<float> words;
    for (Objet* o : objs) words.push_back(static_cast<float>(o->valid));
    return words.empty() ? set_result_nil(s) : set_result_floats(s, lim, words);
  }
  float n = 0;
  if (floats_into(ob, &n, 1) != 1) {
    err_illegal("displ");
    return -1;
  }
  for (Objet* o : objs) o->valid = static_cast<int>(n);
  return set_result_nil(s);
}

}  // namespace

int DISPL_b(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_fog)) return bloc_0(s, ob, st, lim);
  for (int kind : {KW_view, KW_light})
    if (has_word(s, kind)) return mot_displ(s, ob, lim, kind);
  for (int kind : {KW_vol, KW_object})
    if (ob && has_word(s, kind)) return mot_displ(s, ob, lim, kind);
  if (ob) return bloc_0(s, ob, st, lim);
  if (has_word(s, KW_exec)) return DISPLAY_EXEC(s, lim);
  if (DISPLAY_VOL(s) < 0) {
    TRACE_FAIL("DISPLAY_VOL()");
    return -1;
  }
  return set_result_nil(s);
}
