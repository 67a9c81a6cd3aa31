#include "platform/clock.h"

#include <chrono>
#include <ctime>

namespace {

// Taken while the program loads, before main runs.
const std::chrono::steady_clock::time_point start_time = std::chrono::steady_clock::now();

}  // namespace

double seconds_since_start() {
  std::chrono::duration<double> d = std::chrono::steady_clock::now() - start_time;
  return d.count();
}

void time_of_day(int* hour, int* minute, int* second) {
  const std::time_t now = std::time(nullptr);
  std::tm t{};
  localtime_r(&now, &t);
  *hour = t.tm_hour;
  *minute = t.tm_min;
  *second = t.tm_sec;
}
