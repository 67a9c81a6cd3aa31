// Ending the run: questions about unsaved work, then message 5 and exit.
#pragma once
#include <string>

struct ByeState {
  std::string question;      // asked at exit with message 90
  std::string function;      // run at exit
  bool functions_unsaved = false;
  bool volumes_unsaved = false;
  bool trajectories_unsaved = false;
  bool kinematics_unsaved = false;
  // Runs the stored exit function; installed by the language layer.
  int (*run_function)(const std::string& name) = nullptr;
  // True when functions were changed and not saved; installed likewise.
  bool (*functions_unsaved_check)() = nullptr;
};

ByeState& bye_state();

// With `abs` no question is asked. Returns -1 when an answer cancelled
// the exit; otherwise the process ends with status 0.
int bye(bool abs);
