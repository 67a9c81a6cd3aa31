// `displ` as a command.
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "render/cmd_args.h"
#include "render/commands.h"
#include "render/display.h"
#include "scene/graphic.h"

int DISPL_b(word* s, const word* ob, word* st, const word* lim) {
  if (ob) return bloc_0(s, ob, st, lim);
  for (int code : {KW_view, KW_light, KW_fog})
    if (has_word(s, code)) return bloc_0(s, ob, st, lim);
  if (DISPLAY_VOL(s) < 0) {
    TRACE_FAIL("DISPLAY_VOL()");
    return -1;
  }
  return set_result_nil(s);
}
