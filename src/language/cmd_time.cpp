// `time`: the clock.
//   time       seconds since the program started
//   time(0)    starts the chronometer again (value 0)
//   time(1)    seconds on the chronometer
//   precision time(...)   the same
//   dist(t) time          seconds elapsed since the instant t (a value
//                         that `time` gave)
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "platform/clock.h"

int TIME_a(word* record, const word* limit) {
  double now = seconds_since_start();
  std::vector<float> v;
  word* item = find_item(record, KW_time);
  const word* arg = item ? item_value(item) : command_argument(record);
  if (!arg) return build_float(record, limit, static_cast<float>(now));
  v = floats_of(arg);
  if (v.empty() || (v[0] != 0.0f && v[0] != 1.0f)) {
    err_syntaxe(MES_COMMAND_USAGE, KW_time, "(0: start, 1: read)\n");
    return -1;
  }
  if (v[0] == 0.0f) {
    lang().chrono_start = now;
    return build_float(record, limit, 0.0f);
  }
  return build_float(record, limit, static_cast<float>(now - lang().chrono_start));
}

int TIME_DIST_a(word* record, const word* limit) {
  const double now = seconds_since_start();
  std::vector<float> v;
  const word* arg = command_argument(record);
  if (!arg) return build_float(record, limit, static_cast<float>(now));
  v = floats_of(arg);
  if (v.empty()) {
    err_syntaxe(MES_COMMAND_USAGE, KW_dist, "(t) time\n");
    return -1;
  }
  return build_float(record, limit, static_cast<float>(now - v[0]));
}
