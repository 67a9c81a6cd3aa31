// Command records: [size, -1039, item count, 0, items...], an item being
// [size, class, keyword code, argument value if size > 3].
#pragma once
#include "kernel/values.h"
#include "kernel/word.h"

// Runs an interpreter command in place: 0 done, 1 pass to EVALUER_1,
// 2 `return`, negative after a report.
int EVALUER_0(word* record, const word* limit);
// The handler of the first word alone, for a record that EVALUER_0
// passed on: 1 when the interpreter has none.
int interpreter_command(word* record, const word* limit);
// The graphic vocabulary's dispatch, through the scene's hook: `value`
// is the right side of `command = value`, or null.
int graphic_command(word* record, const word* value, const word* limit);

// Items of a record.
inline word* first_item(word* record) { return record + 4; }
inline word* next_item(word* item) { return item + item[0]; }
inline int item_count(const word* record) { return record[2]; }
inline const word* item_value(const word* item) { return item[0] > 3 ? item + 3 : nullptr; }
// True when an item belongs to another vocabulary than the interpreter's.
bool has_other_vocabulary(const word* record);
// The item of that code in the record, or null.
word* find_item(word* record, int code);
// Writes a value in place of the record (never past `limit`); -12 when
// it does not fit. Built results go through kernel/values.h.
int set_result(word* record, const word* value, const word* limit);
