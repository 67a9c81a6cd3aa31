// Console commands of the interpreter vocabulary: print, return, status,
// yes and no, ini, system, GO, bye and exit.
#include <cstdio>
#include <cstring>
#include <string>

#include "kernel/bye.h"
#include "kernel/entier.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/commands.h"
#include "language/eval.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "platform/process.h"

namespace {

void shape(const word* v) {
  voir_int2("np = %d dimp = %d\n", np(v), dimp(v));
}

// The shape of a value, as `status(x)` prints it; returns its type number.
int print_status(const word* v) {
  voir_int("dim %d = ", size(v));
  switch (tag(v)) {
    case T_CHAR: {
      voir_texte("type = CHAR ");
      shape(v);
      for (const unsigned char* c = reinterpret_cast<const unsigned char*>(text(v)); *c; c++) {
        voir_int("%d ", *c);
        voir_car(*c);
        voir_texte("\n");
      }
      return 1;
    }
    case T_LONG:
      voir_texte("type = LONG ");
      shape(v);
      for (int i = 0; i < elements(v); i++) voir_int("%d ", v[4 + i]);
      voir_texte("\n");
      return 2;
    case T_FLOAT:
      voir_texte("type = FLOAT ");
      shape(v);
      for (int i = 0; i < elements(v); i++) voir_float("%f ", getf(v, i));
      voir_texte("\n");
      return 3;
    case T_HYBRIDE: {
      voir_texte(" type = HYBRIDE ");
      shape(v);
      const word* part = v + 4;
      for (int i = 0; i < np(v); i++, part += item_words(part)) print_status(part);
      return 4;
    }
    default:
      voir_texte(" type = NIL\n");
      return 0;
  }
}

}  // namespace

int ABA_a(word* record, const word* limit) {
  const word* v = command_argument(record);
  return v ? set_result(record, v, limit) : build_nil(record);
}

int DECLARED_a(word* record, const word* limit) {
  (void)limit;
  return build_nil(record);
}

int PRINT_a(word* record, const word* limit) {
  (void)limit;
  const word* v = command_argument(record);
  if (v && print_value(v) < 0) return -1;
  return build_nil(record);
}

int RETURN_a(word* record, const word* limit) {
  const word* v = command_argument(record);
  if (!v) {
    build_nil(record);
    return EVAL_RETURN;
  }
  if (set_result(record, v, limit) < 0) return -1;
  return EVAL_RETURN;
}

int GO_a(word* record, const word* limit) {
  (void)limit;
  eval_state().go = 1;
  return build_nil(record);
}

int YES_NO_a(word* record, const word* limit) {
  word* item = first_item(record);
  int value = item[2] == KW_yes ? 1 : 0;
  const word* arg = item_value(item);
  if (arg && tag(arg) == T_FLOAT && elements(arg) > 0) value = entier(getf(arg, 0));
  int r = 0;
  item = next_item(item);
  for (int i = 1; i < item_count(record); i++, item = next_item(item))
    if (set_sem(item[2], value) < 0) r = -1;
  if (item_count(record) == 1) return build_float(record, limit, static_cast<float>(value));
  build_nil(record);
  return r;
}

// Restores keyword values and switches; with an object word the object
// store's `ini` takes the record.
int INI_a(word* record, const word* limit) {
  (void)limit;
  if (has_other_vocabulary(record)) return 1;
  word* item = next_item(first_item(record));
  for (int i = 1; i < item_count(record); i++, item = next_item(item)) {
    switch (item[2]) {
      case KW_yes: ini_yes(); break;
      case KW_no: ini_no(); break;
      case KW_ini: ini_ini(); break;
      case KW_debug:
        kernel().deb = 0;
        kernel().trace_err = 0;
        kernel().err = 0;
        lang().listing = 0;
        lang().listing_link = 0;
        break;
      default:
        ini_com(item[2]);
        vocab().sem[item[2]] = vocab().sem_ini[item[2]];
        break;
    }
  }
  return build_nil(record);
}

int a_status(word* record, const word* limit) {
  VocabState& voc = vocab();
  const word* arg = command_argument(record);
  if (item_count(record) == 1 && !arg) {
    // The whole status array, as a LONG vector.
    if (record + 4 + NB_CODES > limit) {
      err_dim_ev(nullptr);
      return -12;
    }
    build_head(record, 4 + NB_CODES, T_LONG, NB_CODES);
    for (int i = 0; i < NB_CODES; i++) record[4 + i] = voc.sem[i];
    return 0;
  }
  word* second = item_count(record) > 1 ? next_item(first_item(record)) : nullptr;
  if (second && second[2] != KW_var) {
    const word* v = item_value(second);
    if (v && tag(v) == T_FLOAT && elements(v) > 0) voc.sem[second[2]] = entier(getf(v, 0));
    return build_float(record, limit, static_cast<float>(voc.sem[second[2]]));
  }
  if (second) arg = item_value(second);
  if (!arg) return build_float(record, limit, 0.0f);
  return build_float(record, limit, static_cast<float>(print_status(arg)));
}

int SYSTEM_a(word* record, const word* limit) {
  const word* arg = command_argument(record);
  if (!arg) return build_float(record, limit, static_cast<float>(lang().system_value));
  if (tag(arg) == T_FLOAT && elements(arg) > 0) {
    lang().system_value = entier(getf(arg, 0));
    return build_nil(record);
  }
  if (tag(arg) != T_CHAR) {
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  const char* cmd = text(arg);
  if (*cmd == '|') cmd++;
  flush_out();
  int status = run_shell(cmd);
  return build_float(record, limit, static_cast<float>(status));
}

int BYE_a(word* record, const word* limit) {
  (void)limit;
  ByeState& b = bye_state();
  const word* arg = command_argument(record);
  if (arg && tag(arg) == T_CHAR) {
    b.question = text(arg);
    return build_nil(record);
  }
  word* func = find_item(record, KW_func);
  if (func && item_value(func) && tag(item_value(func)) == T_CHAR) {
    b.function = text(item_value(func));
    return build_nil(record);
  }
  bye(find_item(record, KW_abs) != nullptr);
  return build_nil(record);
}

// `calloc` and `malloc`: the value their items describe, zeroed: a
// number of elements (`calloc(n)` or `dim(n)`), or points of several
// dimensions (`dim(n,d)`), as floats, or a string of n bytes with `char`.
int ALLOC_a(word* record, const word* limit) {
  const word* n_value = command_argument(record);
  word* dim = find_item(record, KW_dim);
  if (dim && item_value(dim)) n_value = item_value(dim);
  if (!n_value || tag(n_value) != T_FLOAT || elements(n_value) < 1) {
    err_syntaxe(MES_COMMAND_USAGE, first_item(record)[2], "(dim)");
    return -1;
  }
  long n = entier(getf(n_value, 0));
  long d = elements(n_value) > 1 ? entier(getf(n_value, 1)) : 1;
  if (n < 0 || d < 1 || n * d > 100000000L) {
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  bool chars = find_item(record, KW_char) != nullptr;
  long words = chars ? n / 4 + 5 : n * d + 4;
  if (record + words > limit) {
    err_dim_ev(nullptr);
    return -12;
  }
  for (long i = 0; i < words; i++) record[i] = 0;
  record[0] = static_cast<word>(words);
  record[1] = chars ? T_CHAR : T_FLOAT;
  record[2] = static_cast<word>(chars ? words - 4 : n);
  record[3] = static_cast<word>(chars ? 1 : d);
  if (chars) std::memset(text(record), ' ', static_cast<size_t>(n));
  return 0;
}
