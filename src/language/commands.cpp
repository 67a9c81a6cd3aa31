// Command records: `generer_mult` builds one from a chain of keyword
// tokens and their argument groups; `run_command` hands it to
// EVALUER_0, then to EVALUER_1 for what the interpreter does not handle,
// under the guard that turns any exception into a report.
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/exceptions.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/translate.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/call.h"
#include "language/code.h"
#include "language/commands.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "language/operators.h"

namespace {

bool keyword_token(const word* t) { return t[0] == C_COMMAND || t[0] == C_DEMO; }

word* add_item(word* record, word* end, int code) {
  if (!room(end, 3)) return nullptr;
  end[0] = 3;
  end[1] = code / 200;
  end[2] = code;
  record[0] += 3;
  record[2] += 1;
  return end;
}

// Evaluates the argument group at `p` into the item at `item`, the value
// resolved to a plain one.
const word* argument(const word* p, word* record, word* item, int* status) {
  word* at = item + 3;
  const word* q = eval_group(p, at, false, status);
  if (!q || resolve_item(at, status) < 0) return nullptr;
  item[0] += size(at);
  record[0] += size(at);
  return q;
}

}  // namespace

// `return(x)` takes no further words: its value goes straight to `dest`.
const word* quick_return(const word* p, word* dest, int* status) {
  const word* q = p + 2;
  if (q[0] != C_OPER || q[1] != '(') return nullptr;
  // "( v )" of a variable holding a value: copied at once.
  if (is_variable_token(q + 2) && q[4] == C_OPER && q[5] == ')') {
    Objet* v = variable_of(q + 2);
    if (v && v->local && room(dest, v->local[0])) {
      move_words(dest, v->local, v->local[0]);
      *status = EVAL_RETURN;
      return q + 6;
    }
  }
  const word* after = eval_group(q, dest, false, status);
  if (!after || resolve_item(dest, status) < 0) return nullptr;
  *status = EVAL_RETURN;
  return after;
}

// `generer_mult`: one item [3, class, code] per keyword, with the
// evaluated argument behind it when "(" follows.
const word* command_chain(const word* p, word* dest, bool lvalue, int* status, int first_code) {
  if (first_code < 0 && starts_return(p)) return quick_return(p, dest, status);
  if (!room(dest, 4)) return nullptr;
  build_head(dest, 4, T_SEGMENTS, 0, 0);
  const word* q = p;
  for (int code = first_code; code >= 0 || keyword_token(q); code = -1) {
    if (code < 0) {
      if (q[0] == C_DEMO && !add_item(dest, dest + dest[0], KW_demo)) return nullptr;
      code = q[1];
      q += 2;
    }
    word* item = add_item(dest, dest + dest[0], code);
    if (!item) return nullptr;
    if (q[0] == C_OPER && q[1] == '(') {
      q = argument(q, dest, item, status);
      if (!q) return nullptr;
    }
  }
  if (!lvalue && run_command(dest, status) < 0) return nullptr;
  return q;
}

const word* command_operand(const word* p, word* dest, bool lvalue, int* status) {
  if (p[0] == C_TYPE_FUNC) return call_command_formal(p, dest, lvalue, status);
  return command_chain(p, dest, lvalue, status, -1);
}

int run_command(word* at, int* status) {
  int r = sans_exception([at] {
    int q = EVALUER_0(at, eval_limit());
    return q == 1 ? graphic_command(at, nullptr, eval_limit()) : q;
  });
  if (r == EVAL_RETURN) {
    *status = EVAL_RETURN;
    r = 0;
  }
  if (r < 0) {
    TRACE_FAIL("EVALUER_0()");
    return r;
  }
  // Language values are float: a LONG result becomes a FLOAT.
  if (at[0] > 0 && tag(at) == T_LONG) {
    int n = elements(at);
    for (int i = 0; i < n; i++) at[4 + i] = fw(static_cast<float>(at[4 + i]));
    at[1] = T_FLOAT;
  }
  return 0;
}

int assign_command(word* record, const word* value) {
  if (item_count(record) == 1 && first_item(record)[2] == KW_func && command_argument(record) == nullptr)
    return sans_exception([&] { return define_from_console(record, value); });
  return sans_exception([&] { return graphic_command(record, value, eval_limit()); });
}

int graphic_command(word* record, const word* value, const word* limit) {
  if (!lang().graphic_command) {
    voir_message(0, MES_NOT_IMPLEMENTED);
    return -1;
  }
  return lang().graphic_command(record, value, limit);
}

const word* record_operand(const word* p, word* dest, int* status) {
  (void)status;
  switch (p[1]) {
    case T_CHAR:
    case C_TYPE_FUNC: {
      const char* s = reinterpret_cast<const char*>(p + 4);
      size_t len = static_cast<size_t>(p[3]);
      std::string translated;
      if (Yes(KW_generate) > 0 && translation_state() == 2) {
        translated = translate_text(s, 0, len * 10 + 1000);
        s = translated.c_str();
        len = translated.size();
      }
      return build_text(dest, eval_limit(), s, len) == 0 ? p + p[0] : nullptr;
    }
    case T_FLOAT:
      if (!room(dest, p[0])) return nullptr;
      memcpy(dest, p, static_cast<size_t>(p[0]) * sizeof(word));
      dest[1] = T_FLOAT;
      return p + p[0];
    case R_UNDEFINED:
      // Left unlinked: a call through a formal, or linking was skipped.
      if (lang().link_state == 1) return call_function(p, dest, status);
      voir_mot(KW_link);
      voir_texte(" OFF");
      voir_message(0, MES_FUNCTION_NOT_DEFINED);
      return nullptr;
    case R_CODE_FUNC:
    case R_FUNC_DISK:
      return call_function(p, dest, status);
    case R_ORIGIN:
      if (!room(dest, 4)) return nullptr;
      build_nil(dest);
      return p + p[0];
    default:
      voir_message(0, MES_OPERATOR_ERROR);
      return nullptr;
  }
}

int resolve_other(word* at, int* status) {
  if (at[0] > 0 && tag(at) == T_SEGMENTS) return run_command(at, status);
  if (at[0] > 0 && (tag(at) == T_FLOAT || tag(at) == T_CHAR || tag(at) == T_NIL || tag(at) == T_HYBRIDE))
    return 0;
  if (at[0] == T_ADDRESS) return 0;
  word* scratch = at + item_words(at);
  if (is_variable_token(at)) {
    Objet* v = variable_of(at);
    if (v && !v->local) {
      err_non_initialise(nullptr, v->name);
      build_nil(at);
      return 0;
    }
  }
  const word* v = value_of(at, scratch);
  if (!v) return -1;
  if (!room(at, size(v))) return -12;
  memmove(at, v, static_cast<size_t>(size(v)) * sizeof(word));
  return 0;
}
