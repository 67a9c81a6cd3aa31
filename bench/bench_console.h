// What the benchmarks share: a kernel on the minimal environment whose
// output is kept aside, console texts run on it, and the best time of
// several rounds.
#pragma once
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "app/install.h"
#include "kernel/kernel.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "language/eval.h"
#include "platform/console_io.h"

namespace bench {

inline std::string& sink() {
  static std::string s;
  return s;
}

inline bool start() {
  out_capture(&sink());
  install_graphic_commands();
  env_minimal();
  kernel().etat_console = 1;
  if (allocate_work_areas() < 0) return false;
  eval_state().limit = kernel().eval_limit;
  return true;
}

// Output back on the terminal, before printing results.
inline void stop() { out_capture(nullptr); }

inline bool run(const char* text) {
  std::vector<word> value;
  if (executer_texte(text, value) == 0) return true;
  stop();
  printf("failed: %s\n%s\n", text, sink().c_str());
  return false;
}

template <class F>
double best_ms(int rounds, F&& f) {
  double best = 1e9;
  for (int r = 0; r < rounds; r++) {
    auto t0 = std::chrono::steady_clock::now();
    if (!f()) return -1;
    best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count());
  }
  return best;
}

inline double best_ms(const char* text, int rounds) {
  return best_ms(rounds, [text] { return run(text); });
}

}  // namespace bench
