#include "kernel/interrupt.h"

#include <string>

#include "kernel/bye.h"
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
  if (int signal = terminate_pending()) end_on_signal(signal);
  interrupt_clear();
  std::string answer;
  bool got = ask(0, MES_CONTINUE_QUESTION, answer);
  while (!answer.empty() && answer.back() == '\r') answer.pop_back();
  char c = got && !answer.empty() ? answer.back() : '0';
  interrupt_clear();
  switch (c) {
    case '0':
      voir_message(0, MES_ABANDONMENT);
      abandon_state();
      throw Abandon{};
    case '2':
      voir_message(0, MES_DEBUG_PROMPT);
      flush_out();
      lire_executer(1, MES_PROMPT, kernel().eval_stack, 0);
      abandon_state();
      throw Abandon{};
    case 'b':
      voir_message(0, MES_SEE_YOU_SOON);
      enter_exit(nullptr);
    default:
      voir_message(0, MES_CONTINUE);
  }
}
