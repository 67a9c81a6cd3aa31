#include "kernel/bye.h"

#include <cstring>

#include "kernel/console.h"
#include "kernel/report.h"
#include "platform/process.h"

ByeState& bye_state() {
  static ByeState s;
  return s;
}

void unsaved_work_register(const UnsavedWork& row) {
  for (UnsavedWork& w : bye_state().work)
    if (w.voc == row.voc && w.num == row.num && std::strcmp(w.extension, row.extension) == 0) {
      w = row;
      return;
    }
  bye_state().work.push_back(row);
}

namespace {

// Asks message `num` of vocabulary `voc`; true only for the answer "1".
bool confirmed(int voc, int num, const char* text = nullptr) {
  std::string answer;
  ask(voc, num, answer, text);
  while (!answer.empty() && (answer.back() == '\r' || answer.back() == ' ')) answer.pop_back();
  return answer == "1";
}

}  // namespace

int bye(bool abs) {
  ByeState& b = bye_state();
  if (!abs) {
    if (!b.question.empty() && !confirmed(0, 90, b.question.c_str())) return -1;
    if (!b.function.empty() && b.run_function) b.run_function(b.function);
    for (const UnsavedWork& w : b.work)
      if (w.pending && w.pending() && !confirmed(w.voc, w.num, w.text)) return -1;
  }
  voir_message(0, MES_SEE_YOU_SOON);
  process_exit(0);
}
