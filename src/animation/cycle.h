// The stages of one image, in their fixed order: one list that both image
// loops (the interaction loop and the paint palette) walk. Each entry
// holds its failure label, the switches (`Yes[X]`) that gate it and the
// function that does it. The loops supply their own steps (user
// functions, the device's input, the image period) through `LoopSteps`;
// the stages of later subsystems (trajectories, collisions, limits, meta
// objects, dynamics, play) are filled in by those subsystems with
// register_stage. A stage with no function, or switched off, costs one
// test.
#pragma once

enum Stage : int {
  STAGE_EXECUTER_FONC,      // the `exec` timetable
  STAGE_ZER_DATAS,          // per-image reset of the volumes' generated data
  STAGE_F1,                 // loop step: user function 1
  STAGE_CIN,                // loop step: device input and the recorded mouse path
  STAGE_FORCE_CLEAR,        // `force` of the volumes cleared
  STAGE_PLAY,               // the play step: returns STAGE_REST_TAKEN in play mode
  STAGE_CAL_MATRIX_TRAJ,
  STAGE_EXEC_TRAJ,
  STAGE_F2,
  STAGE_EXEC_COLLISION_ANC,
  STAGE_EXEC_LIMIT_DYNAMIC,        // on the volumes
  STAGE_EXEC_LIMIT_DYNAMIC_BRUSH,  // on the brushes
  STAGE_EXEC_META,
  STAGE_DYNAMIC,
  STAGE_ZER_FORCE,
  STAGE_EXEC_COLLISION,
  STAGE_F3,
  STAGE_PERIOD,             // loop step: the image period and its function
  STAGE_F4,
  STAGE_EXEC_LOCALE_TOUT,
  STAGE_MODELVIEW,          // identity on the model-view
  STAGE_EXEC_LIMIT,
  STAGE_PROJECTION,
  STAGE_DISPLAY_IMAGE,
  STAGE_COMPUTE_LIGHT,
  STAGE_DISPLAY_VOL,
  STAGE_COUNT
};

// The loops that walk the list.
enum CycleLoop : unsigned { LOOP_INTERACTION = 1, LOOP_PALETTE = 2 };

// A stage function returns 0, negative after its report, or this value
// when it has done the whole rest of the simulation and display of the
// image (the play step).
constexpr int STAGE_REST_TAKEN = 1;

using StageFunc = int (*)();

// What a loop gives to one walk of the list.
struct LoopSteps {
  CycleLoop loop;
  int avance;                    // 0: the image does not advance (CONTINUE panel)
  int (*step)(Stage s);          // the loop's own steps; negative on failure
};

// Fills a stage's entry; null empties it. Later subsystems call it once at
// start-up.
void register_stage(Stage s, StageFunc f);

// Walks the list once. 0 when it ran to its end, STAGE_REST_TAKEN when a
// stage took the rest of the image, negative when a stage failed: its
// label is then in failed_stage_label() and the walk stopped there.
int run_stages(const LoopSteps& steps);
const char* failed_stage_label();

// Makes `exec func` with no name run the timetable.
void install_cycle();
