#include "animation/cycle.h"
#include "animation/traj/traj.h"
#include "kernel/keywords.h"
#include "scene/graphic.h"

void install_trajectories() {
  register_graphic_handler({KW_traj}, TRAJ_b);
  register_stage(STAGE_CAL_MATRIX_TRAJ, CAL_MATRIX_TRAJ);
  register_stage(STAGE_EXEC_TRAJ, EXEC_TRAJ);
}
