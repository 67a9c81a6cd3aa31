// executer_fonc: one step of the `exec` timetable at each image.
#include "animation/stages.h"
#include "kernel/handles.h"
#include "language/call.h"
#include "language/handlers.h"

namespace {

// A function removed since it was scheduled is passed over.
int run(word function) {
  Objet* f = handle_objet(function);
  return f ? run_function_apart(f) : 0;
}

}  // namespace

int executer_fonc() {
  ExecSchedule& s = exec_schedule();
  if (!s.on) return 0;
  if (s.delay <= 0) {
    // By index: a function may add to the schedule while it runs.
    for (size_t i = 0; i < s.entries.size(); i++) {
      ScheduledFunction& e = s.entries[i];
      if (e.period <= 0) continue;
      e.next -= 1;
      if (e.next > 0) continue;
      e.next = e.period;
      if (run(e.function) < 0) return -1;
    }
    return 0;
  }
  if (++s.counter < s.delay) return 0;
  s.counter = 0;
  const size_t k = s.position++;
  if (s.position >= s.entries.size()) s.on = 0;
  return k < s.entries.size() ? run(s.entries[k].function) : 0;
}
