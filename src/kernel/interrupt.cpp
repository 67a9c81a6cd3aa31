#include "kernel/interrupt.h"

#include <string>

#include "kernel/console.h"
#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "platform/console_io.h"
#include "platform/process.h"

void interrupt_check() {
  if (!interrupt_pending()) return;
  interrupt_dialogue();
}

void interrupt_dialogue() {
  interrupt_clear();
  voir_message(0, 71);
  flush_out();
  std::string answer;
  bool got = in_getline(answer);
  while (!answer.empty() && answer.back() == '\r') answer.pop_back();
  char c = got && !answer.empty() ? answer.back() : '0';
  interrupt_clear();
  switch (c) {
    case '0':
      voir_message(0, 8);
      abandon_state();
      throw Abandon{};
    case '2':
      voir_message(0, 79);
      flush_out();
      lire_executer(1, 0, kernel().eval_stack, 0);
      abandon_state();
      throw Abandon{};
    case 'b':
      voir_message(0, 5);
      enter_exit(nullptr);
    default:
      voir_message(0, 72);
  }
}
