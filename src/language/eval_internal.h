// Shared by the files of the evaluator.
#pragma once
#include <cstddef>

#include "kernel/objet.h"
#include "kernel/keywords.h"
#include "kernel/word.h"
#include "language/code.h"


// One operand at `p` pushed at `dest`; the cursor after it, or null.
// With `lvalue`, a command is built but not run, and a group made of one
// variable or reference keeps it unresolved.
const word* operand(const word* p, word* dest, bool lvalue, int* status);
const word* eval_group(const word* p, word* dest, bool lvalue, int* status);
// Cursor past one operand, without evaluating it.
const word* skip_operand(const word* p);

// Value of an item: a variable's value (read in place), a reference
// collected at `scratch`, or the item itself. Null after a report.
const word* value_of_other(const word* item, word* scratch);
inline const word* value_of(const word* item, word* scratch) {
  return item[0] > 0 && tag(item) == T_FLOAT ? item : value_of_other(item, scratch);
}

// A variable name followed by "[...]" or "{...}" becomes a reference.
const word* variable_operand(const word* p, word* dest, bool lvalue, int* status);
// The operators that two one-element floats take on the quick roads:
// x op y in *r, false for any other operator.
[[gnu::always_inline]] inline bool scalar_op(word op, float x, float y, float* r) {
  switch (op) {
    case '+': *r = x + y; return true;
    case '-': *r = x - y; return true;
    case '*': *r = x * y; return true;
    case '<': *r = x < y ? 1.0f : 0.0f; return true;
    case '>': *r = x > y ? 1.0f : 0.0f; return true;
    case O_LE: *r = x <= y ? 1.0f : 0.0f; return true;
    case O_GE: *r = x >= y ? 1.0f : 0.0f; return true;
    case O_EQ: *r = x == y ? 1.0f : 0.0f; return true;
    case O_NE: *r = x != y ? 1.0f : 0.0f; return true;
    default: return false;
  }
}
inline bool scalar_operator(word op) {
  float r;
  return scalar_op(op, 0.0f, 0.0f, &r);
}
// "( a op b )" with a and b one-element floats (numbers or variables):
// its value in *r and the cursor past it; null for any other group.
const word* scalar_group(const word* p, float* r);
// Indices "[...]" or "{...}" at `q` applied to the value at `dest`.
const word* subscripts(const word* q, word* dest, int* status);
// String, vector and call records.
const word* record_operand(const word* p, word* dest, int* status);
// A chain of command words with their argument groups: the command
// record is built at `dest`, and run unless `lvalue`.
const word* command_operand(const word* p, word* dest, bool lvalue, int* status);
// The same, the first keyword's code given (a formal standing for a command).
const word* command_chain(const word* p, word* dest, bool lvalue, int* status, int first_code);
// `return(...)`: the commonest command of functions, taken without
// building a record; the value goes straight to `dest`.
inline bool starts_return(const word* p) {
  return p[0] == C_COMMAND && p[1] == KW_return && p[2] == C_OPER && p[3] == '(';
}
const word* quick_return(const word* p, word* dest, int* status);
// Runs the command record at `at` in place (EVALUER_0 then EVALUER_1).
int run_command(word* at, int* status);

// Assignment of the value `value` to the left item `left` (a variable, an
// address, a reference or a command record). 0 or negative.
int assign_to(word* left, const word* value);
// Prefix and postfix operators on the item at `at`.
int prefix(word* at, word op);
int postfix(word* at, word op);
// The queued postfix changes of an expression: opened before it, applied
// in order (or dropped) when it ends. Nested expressions stack.
int pending_open();
int pending_close(int previous, bool apply);
// Assignment to a command: sets the property it names.
int assign_command(word* record, const word* value);

// The value of a "[...]" or "{...}" group becomes its list of indices.
const word* segment_mark(const word* next, word* dest, word opener);
// `generer_segm`: the list [a], [a,b] or [a,b,c] from a FLOAT value.
int generer_segm(const word* value, word* dest);

// Variable object behind a token, following addresses.
Objet* variable_of(const word* item);
