// The list of stages and its walk.
#include "animation/cycle.h"

#include "animation/stages.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/lang_state.h"

namespace {

// How an entry is done: by its own function, or by the loop's step.
enum How : unsigned char { BY_FUNCTION, BY_LOOP };

struct Entry {
  const char* label;     // failure label
  How how;
  unsigned loops;        // the loops that take it
  bool needs_avance;     // skipped while the image does not advance
  int flag1, flag2;      // switches that must be above 0 (0: none)
  int palette_flag;      // a further switch in the palette loop (0: none)
  StageFunc func;
};

constexpr unsigned BOTH = LOOP_INTERACTION | LOOP_PALETTE;
constexpr unsigned INTER = LOOP_INTERACTION;
constexpr const char* USER = "exec_fonc_obj";

// In the order of Stage.
Entry table[STAGE_COUNT] = {
    {"executer_fonc", BY_FUNCTION, INTER, false, 0, 0, 0, executer_fonc},
    {"ZER_DATAS", BY_FUNCTION, BOTH, false, 0, 0, 0, ZER_DATAS},
    {USER, BY_LOOP, BOTH, false, 0, 0, 0, nullptr},
    {"cin", BY_LOOP, INTER, false, 0, 0, 0, nullptr},
    {"force", BY_FUNCTION, INTER, false, KW_dynamic, KW_force, 0, efface_forces_volumes},
    {"play", BY_FUNCTION, INTER, true, 0, 0, 0, nullptr},
    {"CAL_MATRIX_TRAJ", BY_FUNCTION, BOTH, true, KW_traj, 0, KW_brush, nullptr},
    {"EXEC_TRAJ", BY_FUNCTION, BOTH, true, KW_traj, 0, KW_brush, nullptr},
    {USER, BY_LOOP, BOTH, false, 0, 0, 0, nullptr},
    {"EXEC_COLISION_ANC", BY_FUNCTION, BOTH, false, KW_collision, 0, 0, nullptr},
    {"EXEC_LIMIT_DYNAMIC", BY_FUNCTION, BOTH, true, 0, 0, 0, nullptr},
    {"EXEC_LIMIT_DYNAMIC", BY_FUNCTION, BOTH, true, KW_brush, 0, 0, nullptr},
    {"EXEC_META", BY_FUNCTION, BOTH, true, KW_meta, 0, 0, nullptr},
    {"DYNAMIC_b", BY_FUNCTION, BOTH, true, KW_dynamic, 0, 0, nullptr},
    {"ZER_FORCE", BY_FUNCTION, BOTH, true, KW_dynamic, KW_force, 0, ZER_FORCE},
    {"EXEC_COLISION", BY_FUNCTION, BOTH, true, KW_collision, 0, 0, nullptr},
    {USER, BY_LOOP, BOTH, false, 0, 0, 0, nullptr},
    {USER, BY_LOOP, INTER, false, 0, 0, 0, nullptr},
    {USER, BY_LOOP, BOTH, false, 0, 0, 0, nullptr},
    {"EXEC_LOCALE_TOUT", BY_FUNCTION, BOTH, false, KW_local, 0, 0, locales_cycle},
    {"glLoadIdentity", BY_FUNCTION, BOTH, false, 0, 0, 0, modelview_identite},
    {"EXEC_LIMIT", BY_FUNCTION, BOTH, false, 0, 0, 0, nullptr},
    {"Projection", BY_FUNCTION, BOTH, false, 0, 0, 0, projection_image},
    {"DISPLAY_IMAGE", BY_FUNCTION, BOTH, false, KW_image, 0, 0, images_image},
    {"COMPUTE_LIGHT", BY_FUNCTION, BOTH, false, KW_light, 0, 0, lumieres_image},
    {"DISPLAY_VOL", BY_FUNCTION, BOTH, false, 0, 0, 0, volumes_image},
};

const char* failed = "";

bool off(int flag) { return flag && Yes(flag) <= 0; }

}  // namespace

void register_stage(Stage s, StageFunc f) {
  if (s >= 0 && s < STAGE_COUNT && table[s].how == BY_FUNCTION) table[s].func = f;
}

const char* failed_stage_label() { return failed; }

int run_stages(const LoopSteps& steps) {
  for (int i = 0; i < STAGE_COUNT; i++) {
    const Entry& e = table[i];
    if (e.how == BY_FUNCTION && !e.func) continue;
    if (!(e.loops & steps.loop) || (e.needs_avance && !steps.avance)) continue;
    if (off(e.flag1) || off(e.flag2) || (steps.loop == LOOP_PALETTE && off(e.palette_flag))) continue;
    const int r = e.how == BY_LOOP ? steps.step(static_cast<Stage>(i)) : e.func();
    if (r < 0) {
      failed = e.label;
      return r;
    }
    if (r == STAGE_REST_TAKEN) return r;
  }
  return 0;
}

void install_cycle() { lang().run_schedule = executer_fonc; }
