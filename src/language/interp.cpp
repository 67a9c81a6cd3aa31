// interp: the run loop over compiled code. The cursor is the only
// instruction pointer; values are built on the evaluation area from the
// given base, where the value of the last statement stays.
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "kernel/values.h"
#include "language/code.h"
#include "language/compile.h"
#include "language/debugger.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "language/quick_loop.h"
#include "language/variables.h"
#include "platform/process.h"

namespace {

// The end and step of a counted `for`, computed once at its start. They
// are kept per run of the code, so that a recursive call running the same
// loop does not change its caller's bounds.
// Turns a loop tries the quick road without its variables fitting it.
constexpr int QUICK_MISSES = 2;

struct Loop {
  const word* record;
  Objet* variable;
  float end, step;
  // Its quick form (quick_loop.h): asked for at its second turn.
  const QuickLoop* quick = nullptr;
  unsigned generation = 0;
  int quick_state = 0;  // 0 not asked yet, 1 quick, -1 not quick
  int quick_misses = 0;  // turns its variables did not fit it
};

struct Run {
  const word* code;
  word* base;
  Loop loops[16];  // only the first nloops are in use
  int nloops = 0;
  int status = 0;

  Run(const word* c, word* b) : code(c), base(b) {}

  Loop* loop_of(const word* record) {
    for (int i = 0; i < nloops; i++)
      if (loops[i].record == record) return &loops[i];
    return nullptr;
  }
  int fail_for() {
    voir_message(0, MES_FOR_USAGE);
    return -1;
  }

  const word* statement(const word* p);
  const word* condition(const word* p);
  const word* for_start(const word* r);
  const word* for_turn(const word* r, bool first);
  const word* quick_for(Loop* l, word* counter);
  const word* do_switch(const word* r);
};

const word* first_float(const word* item, word* scratch, float* f) {
  const word* v = value_of(item, scratch);
  if (!v || tag(v) != T_FLOAT || elements(v) < 1) return nullptr;
  *f = getf(v, 0);
  return v;
}

const word* Run::statement(const word* p) {
  const word* q = evaluer_expr(p, base, &status);
  return q;
}

const word* Run::condition(const word* r) {
  const word* next = nullptr;
  float scalar = 0;
  const word* test = r + r[TEST_CONDITION];
  int c = scalar_group(test, &scalar) ? scalar != 0.0f : evaluer_cond(test, base, &next);
  if (c < 0) return nullptr;
  build_nil(base);
  return r + (c ? r[TEST_TRUE] : r[TEST_FALSE]);
}

const word* Run::for_start(const word* r) {
  const word* init = r + r[FOR_INIT];
  const word* first = init + 2;
  if (!(first[0] == C_AUTO || first[0] == C_STATIC || first[0] == C_EXTERN || first[0] == C_GLOBAL ||
        first[0] == C_FORMEL))
    return fail_for() < 0 ? nullptr : nullptr;
  Objet* var = variable_of(first);
  if (!var || !evaluer_expr(init, base, &status)) return fail_for() < 0 ? nullptr : nullptr;
  float end = 0, step = 1.0f;
  if (!evaluer_expr(r + r[FOR_END], base, &status) || !first_float(base, base + item_words(base), &end))
    return fail_for() < 0 ? nullptr : nullptr;
  if (r[FOR_STEP]) {
    if (!evaluer_expr(r + r[FOR_STEP], base, &status) || !first_float(base, base + item_words(base), &step))
      return fail_for() < 0 ? nullptr : nullptr;
  }
  Loop* l = loop_of(r);
  if (!l) {
    if (nloops == 16) {
      // Beyond 16 loops in one function the oldest slot is reused.
      memmove(loops, loops + 1, sizeof(Loop) * 15);
      nloops = 15;
    }
    l = &loops[nloops++];
  }
  *l = {r, var, end, step};
  // The record keeps the values for the listing.
  word* rec = const_cast<word*>(r);
  rec[FOR_VARIABLE] = objet_handle(var);
  rec[FOR_END_VALUE] = fw(end);
  rec[FOR_STEP_VALUE] = fw(step);
  build_nil(base);
  return for_turn(r, true);
}

// One test of a counted `for`; every turn but the first adds the step.
const word* Run::for_turn(const word* r, bool first) {
  Loop* l = loop_of(r);
  if (!l || !l->variable || !l->variable->local || tag(l->variable->local) != T_FLOAT ||
      elements(l->variable->local) < 1)
    return fail_for() < 0 ? nullptr : nullptr;
  word* value = l->variable->local;
  if (!first && l->quick_state >= 0 && lang().quick_roads)
    if (const word* q = quick_for(l, value)) return q;
  float counter = getf(value, 0);
  if (!first) {
    counter += l->step;
    setf(value, 0, counter);
  }
  if ((l->step > 0 && counter > l->end) || (l->step < 0 && counter < l->end)) return r + r[FOR_AFTER];
  return r + r[FOR_BODY];
}

// The turns of a loop on the quick road, when its body allows it.
const word* Run::quick_for(Loop* l, word* counter) {
  LanguageState& L = lang();
  if (l->quick_state == 0 || l->generation != L.quick_loops_generation) {
    l->quick = quick_loop_of(l->record);
    l->generation = L.quick_loops_generation;
    l->quick_state = l->quick && l->quick->fit ? 1 : -1;
    if (l->quick_state < 0) return nullptr;
  }
  QuickOutcome why = QUICK_DONE;
  const word* q = quick_turns(*l->quick, l->record, counter, l->end, l->step, base, &why);
  // A variable may take its kind in the first turns (a NIL made a float);
  // past that the turns stay on the general road.
  if (why == QUICK_UNFIT || (why == QUICK_LATER && !q && ++l->quick_misses >= QUICK_MISSES)) l->quick_state = -1;
  return q;
}

// Two values match when both are NIL, or of one type and equal.
bool same_value(const word* a, const word* b) {
  if (!a || !b) return false;
  if (tag(a) == T_NIL || tag(b) == T_NIL) return tag(a) == tag(b);
  if (tag(a) != tag(b)) return false;
  if (tag(a) == T_CHAR) return strcmp(text(a), text(b)) == 0;
  if (tag(a) != T_FLOAT || elements(a) != elements(b)) return false;
  for (int i = 0; i < elements(a); i++)
    if (getf(a, i) != getf(b, i)) return false;
  return true;
}

const word* Run::do_switch(const word* r) {
  const word* expr = r + r[0];
  const word* after = evaluer_expr(expr, base, &status);
  if (!after) return nullptr;
  word* scratch = base + item_words(base);
  const word* v = value_of(base, scratch);
  if (!v) return nullptr;
  if (v == scratch) scratch += size(scratch);
  int n = r[2];
  const word* target = r + r[3 + 2 * (n - 1)];
  for (int e = 0; e < n - 1 && target == r + r[3 + 2 * (n - 1)]; e++) {
    const word* entry = r + 3 + 2 * e;
    if (entry[0] > 0) {
      if (tag(v) == T_FLOAT && elements(v) == 1 && getf(v, 0) == wf(entry[1])) target = r + entry[0];
      continue;
    }
    int st = 0;
    if (!evaluer_expr(r + entry[1], scratch, &st)) return nullptr;
    if (same_value(v, value_of(scratch, scratch + item_words(scratch)))) target = r - entry[0];
  }
  build_nil(base);
  return target;
}

// Printed once, by the innermost failing run of a line.
void post_mortem(int line) {
  Objet* f = lang().running_function;
  EvalState& E = eval_state();
  if (!f || E.post_mortem_done) return;
  E.post_mortem_done = true;
  voir_mot(KW_func);
  VOIR_CHAR("%s ", f->name ? f->name : "");
  voir_message(0, MES_LINE);
  voir_int(" %d\n", line);
  if (f->locals)
    for (Objet* v = f->locals->next; v; v = v->next) {
      VOIR_CHAR("%s = ", v->name ? v->name : "");
      if (v->local) print_value(v->local);
      else voir_texte("NIL\n");
    }
  f->work[FN_FAIL_LINE] = line;
}

int run_code(const word* code, word* base, word** result);

}  // namespace

int interp(const word* code, word* base, word** result) {
  if (!code) return 0;
  EvalState& E = eval_state();
  const word* outer_code = E.code;
  E.code = code;
  int r = run_code(code, base, result);
  E.code = outer_code;
  return r;
}

namespace {

int run_code(const word* code, word* base, word** result) {
  EvalState& E = eval_state();
  Run run(code, base);
  build_nil(base);
  if (result) *result = base;
  const word* p = code + CODE_HEAD;
  for (;;) {
    if (interrupt_pending()) interrupt_dialogue();
    const word* start = p;
    const word* next = nullptr;
    if (stream_end(p)) break;
    if (p[0] < 0) {
      switch (p[0]) {
        case C_JUMP: p += p[1]; continue;
        case C_LINE:
          if (Yes(KW_debug) != 2) E.line = p[1];
          if (debug_points_set()) debug_line(p[1], base + item_words(base));
          p += 2;
          continue;
        case C_CASE:
          p += 2;
          // Falling into an expression case steps over its expression.
          if (p[0] == C_OPER && p[1] == '(') p = skip_operand(p);
          continue;
        case C_LABEL: case C_DEFAULT: p += 2; continue;
        case C_BREAK: voir_message(0, MES_OPERATOR_ERROR); next = nullptr; break;
        case C_OPER:
          if (p[1] == '(' || p[1] == '[' || p[1] == '{') next = run.statement(p);
          else if (p[1] == O_FOR_START) next = run.for_start(p + 2);
          else {
            p += 2;
            continue;
          }
          break;
        default: next = run.statement(p); break;
      }
    } else {
      switch (p[1]) {
        case R_IF_LINKED: case R_FOR_C_LINKED: next = run.condition(p); break;
        case R_FOR_COUNTED_LINKED: next = run.for_turn(p, false); break;
        case R_SWITCH_LINKED: next = run.do_switch(p); break;
        case R_ORIGIN: p += p[0]; continue;
        default: next = run.statement(p); break;
      }
    }
    if (run.status == EVAL_RETURN) break;
    if (next) {
      p = next;
      continue;
    }
    // A failed statement: with `error` off it is dropped and the next one
    // runs; otherwise the run ends after the post-mortem.
    if (Yes(KW_error) <= 0 && start[0] == C_OPER && start[1] == '(') {
      p = skip_operand(start);
      build_nil(base);
      if (p) continue;
    }
    post_mortem(E.line);
    TRACE_FAIL("interp()");
    return -1;
  }
  return 0;
}

}  // namespace
