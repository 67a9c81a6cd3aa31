// The kernel the fuzz targets run on: minimal environment, console mode,
// output kept aside in `sink`, the work areas allocated.
#pragma once
#include <string>

#include "kernel/kernel.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "language/eval.h"
#include "platform/console_io.h"

inline bool fuzz_setup(std::string& sink) {
  out_capture(&sink);
  env_minimal();
  kernel().etat_console = 1;
  allocate_work_areas();
  eval_state().limit = kernel().eval_limit;
  return true;
}
