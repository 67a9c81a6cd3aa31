// Second phase of the parenthesising: each call's arguments stand in
// groups of their own, a command applies to one argument group, and a
// reference `x[...]` becomes one group with its variable.
#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/vocab.h"
#include "language/compile_internal.h"
#include "language/compile_phases.h"

namespace {

struct Arguments {
  Compilation& c;
  const Tokens& in;
  Tokens& out;
  const Groupes g{in};

  int fail(int message) {
    compile_error(c, message);
    return -1;
  }
  void copy(size_t from, size_t to) { out.insert(out.end(), in.begin() + from, in.begin() + to); }

  int range(size_t from, size_t to);
  int bracket_group(size_t at, size_t* next);
  int call(size_t at, size_t* next, bool has_count);
  int command(size_t at, size_t to, size_t* next);
  size_t operand_end(size_t at, size_t to) const;
  size_t run_end(size_t at, size_t to, bool one_operand) const;
  bool variable_token(const word* t) const;
};

bool Arguments::variable_token(const word* t) const {
  switch (t[0]) {
    case C_AUTO: case C_STATIC: case C_EXTERN: case C_GLOBAL: case C_FORMEL:
    case C_AD_GLB: case C_AD_LOC: case C_AD_STATIC:
      return true;
    default:
      return false;
  }
}

// A bracket group: its opener, its contents completed, its closer.
int Arguments::bracket_group(size_t at, size_t* next) {
  size_t end = g.end(at);
  if (end > in.size()) return fail(MES_PARENTHESIS_ERROR);
  copy(at, next_token(in, at));
  if (range(next_token(in, at), end - 2) < 0) return -1;
  copy(end - 2, end);
  *next = end;
  return 0;
}

// A call and its argument list: "(a,b)" becomes "(a)(b)", the number of
// groups going into the record when it has a count word.
int Arguments::call(size_t at, size_t* next, bool has_count) {
  size_t open = next_token(in, at);
  if (!oper_at(in, open, '(')) return fail(MES_FUNCTION_LIST_USAGE);
  size_t end = g.end(open);
  if (end > in.size()) return fail(MES_PARENTHESIS_ERROR);
  size_t record = out.size();
  copy(at, open);
  int count = 0;
  size_t start = next_token(in, open), close = end - 2;
  if (start < close) {
    for (size_t j = start;;) {
      size_t arg_end = j;
      while (arg_end < close && !oper_at(in, arg_end, ',')) {
        arg_end = is_open(&in[arg_end]) ? g.end(arg_end) : next_token(in, arg_end);
      }
      emit_oper(out, '(');
      if (range(j, arg_end) < 0) return -1;
      emit_oper(out, ')');
      count++;
      if (arg_end >= close) break;
      j = next_token(in, arg_end);
    }
  }
  if (has_count) out[record + 3] = count;
  *next = end;
  return 0;
}

// End of one operand starting at `at`: a group, a call with its groups, a
// variable with its references, or one token.
size_t Arguments::operand_end(size_t at, size_t to) const {
  const word* t = &in[at];
  size_t j = next_token(in, at);
  if (is_open(t)) return g.end(at);
  bool callable = is_record(t, R_UNDEFINED) || t[0] == C_TYPE_FUNC ||
                  (t[0] == C_FORMEL && oper_at(in, j, '('));
  if (callable || variable_token(t) || t[0] == C_COMMAND) {
    while (j < to && (oper_at(in, j, '(') || oper_at(in, j, '[') || oper_at(in, j, '{'))) j = g.end(j);
  }
  return j;
}

// The argument run of a command: up to the next command, ",", closing
// bracket or ";"; with `one_operand` a binary operator ends it too.
size_t Arguments::run_end(size_t at, size_t to, bool one_operand) const {
  size_t j = at;
  bool operand_done = false;
  while (j < to) {
    const word* t = &in[j];
    if (t[0] == C_COMMAND || oper_at(in, j, ',') || oper_at(in, j, ';') || is_close(t)) break;
    if (t[0] == C_OPER && !is_open(t)) {
      if (one_operand && operand_done) break;
      j = next_token(in, j);
      operand_done = false;
      continue;
    }
    j = operand_end(j, to);
    operand_done = true;
  }
  return j;
}

// A command applies to one group: its own parenthesised group, or the run
// of words behind it, which is wrapped. A function-like word (type 0)
// takes one operand; a "-" behind a command gets its literal 0.
int Arguments::command(size_t at, size_t to, size_t* next) {
  int code = in[at + 1];
  copy(at, at + 2);
  size_t j = at + 2;
  if (j >= to) {
    *next = j;
    return 0;
  }
  if (oper_at(in, j, '(')) return bracket_group(j, next);
  bool one_operand = code >= 0 && code < NB_CODES && vocab().type[code] == 0;
  if (oper_at(in, j, '-')) {
    size_t operand = next_token(in, j);
    size_t end = operand < to ? operand_end(operand, to) : operand;
    if (!one_operand) end = run_end(operand, to, false);
    emit_oper(out, '(');
    emit2(out, T_FLOAT, fw(0.0f));
    if (range(j, end) < 0) return -1;
    emit_oper(out, ')');
    *next = end;
    return 0;
  }
  const word* t = &in[j];
  if (t[0] == C_COMMAND || is_close(t) || (t[0] == C_OPER && !is_open(t))) {
    *next = j;
    return 0;
  }
  size_t end = run_end(j, to, one_operand);
  emit_oper(out, '(');
  if (range(j, end) < 0) return -1;
  emit_oper(out, ')');
  *next = end;
  return 0;
}

int Arguments::range(size_t from, size_t to) {
  if (compile_too_deep(c)) return -1;
  for (size_t j = from; j < to && in[j] != 0;) {
    const word* t = &in[j];
    size_t next = next_token(in, j);
    if (is_record(t, R_UNDEFINED)) {
      if (call(j, &next, true) < 0) return -1;
    } else if (t[0] == C_TYPE_FUNC || (t[0] == C_FORMEL && oper_at(in, next, '('))) {
      if (call(j, &next, false) < 0) return -1;
    } else if (t[0] == C_COMMAND) {
      if (command(j, to, &next) < 0) return -1;
    } else if (variable_token(t) && (oper_at(in, next, '[') || oper_at(in, next, '{'))) {
      emit_oper(out, '(');
      copy(j, next);
      while (next < to && (oper_at(in, next, '[') || oper_at(in, next, '{')))
        if (bracket_group(next, &next) < 0) return -1;
      emit_oper(out, ')');
    } else if (is_open(t) && t[1] != O_OPEN) {
      if (bracket_group(j, &next) < 0) return -1;
    } else {
      if (t[0] == C_LINE) c.line = t[1];
      copy(j, next);
    }
    j = next;
  }
  return 0;
}

}  // namespace

int phase_arguments(Compilation& c, const Tokens& in, Tokens& out) {
  out.clear();
  Arguments a{c, in, out};
  size_t end = 0;
  while (end < in.size() && in[end] != 0) end = next_token(in, end);
  if (a.range(0, end) < 0) return -1;
  out.push_back(0);
  return c.failed ? -1 : 0;
}
