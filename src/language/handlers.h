// Handlers of the interpreter vocabulary: each takes the command record
// and the evaluation limit, leaves its value in place of the record, and
// returns 0 done, 1 to pass to EVALUER_1, 2 for `return`, negative after
// a report.
#pragma once
#include "kernel/word.h"
#include "language/lang_state.h"

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
int VAR_a(word* record, const word* limit);
int REM_a(word* record, const word* limit);
int NAME_a(word* record, const word* limit);
int DUP_a(word* record, const word* limit);
int READ_a(word* record, const word* limit);
int WRITE_a(word* record, const word* limit);
// `func = "source"`: defines or replaces the functions of the text.
int define_from_console(word* record, const word* value);
int RETURN_a(word* record, const word* limit);
int a_status(word* record, const word* limit);
int SYSTEM_a(word* record, const word* limit);
int YES_NO_a(word* record, const word* limit);

// The schedule of `exec func("f g") time(...) NP(n)`, run by the image
// cycle. Without a common delay each entry has its own period: its count
// goes down at each image and the function runs when it reaches 0. With a
// common delay n, every nth image the next entry runs, once each, and the
// list is then switched off.
ExecSchedule& exec_schedule();

// The value functions of the interpreter vocabulary (fct0.h): `fct0`
// passes the record on (1) when an item belongs to another vocabulary.
int fct0(word* record, const word* limit);
// `average`, `max`, `min` with two or more items: element-wise over the
// items' vectors; with one item, fct0.
int MIN_MAX_a(word* record, const word* limit);
int PULS_a(word* record, const word* limit);

// Commands of cmd_help, cmd_history, cmd_list, cmd_sort, cmd_time,
// cmd_values, cmd_matrix and cmd_console_io.
int HELP_a(word* record, const word* limit);
int HISTORY_a(word* record, const word* limit);
int LIST_a(word* record, const word* limit);
int SORT_a(word* record, const word* limit);
int TIME_a(word* record, const word* limit);
// `dist(t) time`: seconds since the instant t.
int TIME_DIST_a(word* record, const word* limit);
int NUMBER_a(word* record, const word* limit);
int NP_a(word* record, const word* limit);
int DIM_a(word* record, const word* limit);
int TYPE_a(word* record, const word* limit);
int LIMIT_a(word* record, const word* limit);
int CG_a(word* record, const word* limit);
int MATRIX_a(word* record, const word* limit);
int INPUT_a(word* record, const word* limit);
int RING_a(word* record, const word* limit);
int ALIAS_a(word* record, const word* limit);
int STOP_a(word* record, const word* limit);
int CLEAN_a(word* record, const word* limit);
// The stopping points set by `STOP`: function name and line.
#include <string>
#include <utility>
std::vector<std::pair<std::string, int>>& stop_table();
