// Handlers of the interpreter vocabulary: each takes the command record
// and the evaluation limit, leaves its value in place of the record, and
// returns 0 done, 1 to pass to EVALUER_1, 2 for `return`, negative after
// a report.
#pragma once
#include "kernel/word.h"

int ABA_a(word* record, const word* limit);
int ALLOC_a(word* record, const word* limit);
int BYE_a(word* record, const word* limit);
int COMPILE_a(word* record, const word* limit);
int DEBUG_a(word* record, const word* limit);
// What stands of a declaration at run time: nothing to do.
int DECLARED_a(word* record, const word* limit);
int executer_a(word* record, const word* limit);
int GO_a(word* record, const word* limit);
int INI_a(word* record, const word* limit);
int LINK_a(word* record, const word* limit);
int PRINT_a(word* record, const word* limit);
int RETURN_a(word* record, const word* limit);
int a_status(word* record, const word* limit);
int SYSTEM_a(word* record, const word* limit);
int YES_NO_a(word* record, const word* limit);

// The schedule of `exec func(...) time(...)`, run by the animation cycle.
struct ScheduledFunction {
  struct Objet* function;
  float period;
  float next;
};
#include <vector>
std::vector<ScheduledFunction>& exec_schedule();
