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
  int d[6];
  date_time(d);
  *hour = d[3];
  *minute = d[4];
  *second = d[5];
}

void date_time(int out[6]) {
  const std::time_t now = std::time(nullptr);
  std::tm t{};
  localtime_r(&now, &t);
  out[0] = t.tm_year + 1900;
  out[1] = t.tm_mon + 1;
  out[2] = t.tm_mday;
  out[3] = t.tm_hour;
  out[4] = t.tm_min;
  out[5] = t.tm_sec;
}
