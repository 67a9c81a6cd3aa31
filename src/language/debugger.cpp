#include "language/debugger.h"

#include <string>

#include "kernel/console.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/eval.h"
#include "language/handlers.h"
#include "language/lang_state.h"

bool debug_points_set() { return !stop_table().empty(); }

void debug_line(int line, word* area) {
  const Objet* f = lang().running_function;
  if (!f || !f->name) return;
  bool set = false;
  for (const auto& point : stop_table()) set = set || (point.first == f->name && point.second == line);
  if (!set) return;
  VOIR_CHAR("STOP %s,", f->name);
  voir_int("%d\n", line);
  EvalState& E = eval_state();
  int go = E.go;
  int saved_line = E.line;
  E.go = 0;
  // Lines typed here run with the stopped function's variables; `GO`
  // goes on with the function.
  while (!E.go) lire_executer(-1, MES_DEBUG_PROMPT, area, 0);
  E.go = go;
  E.line = saved_line;
  console().stop = 0;
}

void debug_entry(const Objet* f) {
  voir_mot(KW_func);
  VOIR_CHAR("%s\n", f && f->name ? f->name : "");
}
