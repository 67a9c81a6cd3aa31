#include "platform/clock.h"

#include <chrono>

namespace {

// Taken while the program loads, before main runs.
const std::chrono::steady_clock::time_point start_time = std::chrono::steady_clock::now();

}  // namespace

double seconds_since_start() {
  std::chrono::duration<double> d = std::chrono::steady_clock::now() - start_time;
  return d.count();
}
