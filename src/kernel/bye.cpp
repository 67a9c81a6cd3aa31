#include "kernel/bye.h"

#include "kernel/report.h"
#include "platform/console_io.h"
#include "platform/process.h"

ByeState& bye_state() {
  static ByeState s;
  return s;
}

namespace {

// Asks message `num` of vocabulary `voc`; true only for the answer "1".
bool confirmed(int voc, int num) {
  voir_message(voc, num);
  flush_out();
  std::string answer;
  in_getline(answer);
  while (!answer.empty() && (answer.back() == '\r' || answer.back() == ' ')) answer.pop_back();
  return answer == "1";
}

}  // namespace

int bye(bool abs) {
  ByeState& b = bye_state();
  if (!abs) {
    if (!b.question.empty()) {
      voir_texte(b.question.c_str());
      if (!confirmed(0, 90)) return -1;
    }
    if (!b.function.empty() && b.run_function) b.run_function(b.function);
    bool unsaved = b.functions_unsaved || (b.functions_unsaved_check && b.functions_unsaved_check());
    if (unsaved && !confirmed(0, 70)) return -1;
    if (b.volumes_unsaved && !confirmed(1, 47)) return -1;
    if (b.trajectories_unsaved && !confirmed(1, 48)) return -1;
    if (b.kinematics_unsaved && !confirmed(1, 49)) return -1;
  }
  voir_message(0, 5);
  process_exit(0);
}
