// `history`: the console lines recorded, numbered from 1.
//   history      lists them
//   history(n)   runs line n again; its value is the command's value
#include <string>
#include <vector>

#include "kernel/console.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/eval.h"
#include "language/handlers.h"

namespace {

void list_history() {
  for (int i = 0; i < history_count(); i++) {
    voir_int("%d ", i + 1);
    VOIR_CHAR("%s\n", history_line(i).c_str());
  }
}

}  // namespace

int HISTORY_a(word* record, const word* limit) {
  const word* arg = command_argument(record);
  if (!arg) {
    list_history();
    return build_nil(record);
  }
  int n = entier(value_at(arg, 0, 0));
  if (n < 1 || n > history_count()) {
    voir_int("history(%d)", n);
    voir_message(0, MES_ILLEGAL_INDEX);
    return -1;
  }
  std::string line = history_line(n - 1);
  std::vector<word> value;
  if (executer_texte(line.c_str(), value) < 0) {
    TRACE_FAIL("HISTORY_a()");
    return -1;
  }
  return set_result(record, value.data(), limit);
}
