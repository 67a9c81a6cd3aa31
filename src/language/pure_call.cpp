// The quick road for calls of pure scalar functions. A function whose
// variables are all plain formals, and whose code is made of `if`s and
// `return(...)`s over numbers, its formals, the common scalar operators
// and calls of such functions, cannot be seen running: it changes no
// variable and runs no command. Such a call keeps its formals in a C++
// frame instead of saving and binding the variable objects, and walks
// the same compiled code with a small evaluator of floats.
//
// The evaluator gives up at the first thing outside that set, before any
// effect: the general road then runs the call from its start, unchanged.
// A function found unfit is remembered as such until it is recompiled.
#include "language/pure_call.h"

#include <vector>

#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"
#include "language/code.h"
#include "language/compile.h"
#include "language/debugger.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "language/variables.h"
#include "platform/process.h"

namespace {


enum Outcome { DONE, UNFIT, LATER };

struct Frame {
  Verdict* v;
  float value[MAX_FORMALS];
};

Verdict* verdict_of(Objet* f) {
  word h = objet_handle(f);
  if (h <= 0 || static_cast<size_t>(h) >= lang().verdicts.size()) return nullptr;
  Verdict& v = lang().verdicts[static_cast<size_t>(h)];
  if (v.fit && v.code == f->code && v.id == f->id) return &v;
  v = Verdict{f->code, f->id, -1, 0, {}};
  if (!f->code || f->work[FN_ADDRESS] || f->work[FN_FORMALS] > MAX_FORMALS) return &v;
  if (f->locals)
    for (Objet* var = f->locals->next; var; var = var->next) {
      if (var->kind != C_FORMEL || var->subkind == C_AD_GLB || v.formals == MAX_FORMALS) return &v;
      v.formal[v.formals++] = objet_handle(var);
    }
  if (v.formals == f->work[FN_FORMALS]) v.fit = 1;
  return &v;
}

Outcome group(const word*& p, const Frame& fr, float* r, int depth);
Outcome run(const Frame& fr, float* r, int depth);

// The call record at `p` and its argument groups, read in the caller's
// frame `fr`; `depth` counts the functions running. Kept out of line so
// that the operands' path stays light.
[[gnu::noinline]] Outcome call(const word*& p, const Frame& fr, float* r, int depth) {
  if (p[1] != R_CODE_FUNC) return UNFIT;
  Objet* f = handle_objet(p[2]);
  if (!f || f->kind != KIND_FUNC) return UNFIT;
  if (!f->code) return LATER;
  Verdict* v = verdict_of(f);
  if (!v) return LATER;
  if (v->fit < 0) return UNFIT;
  Frame callee;
  callee.v = v;
  int groups = p[3], count = 0;
  const word* q = p + p[0];
  for (; count < groups && q[0] == C_OPER && q[1] == '('; count++) {
    float a;
    Outcome o = group(q, fr, &a, depth);
    if (o != DONE) return o;
    if (count < MAX_FORMALS) callee.value[count] = a;
  }
  if (count < v->formals) return UNFIT;  // a formal would be NIL
  if (call_too_deep(depth)) return LATER;
  Outcome o = run(callee, r, depth + 1);
  if (o == DONE) p = q;
  else if (o == UNFIT) v->fit = -1;
  return o;
}

// One operand: a number, a formal, a group or a call.
Outcome item(const word*& p, const Frame& fr, float* r, int depth) {
  if (p[0] == C_FORMEL) {
    if (p[2] == C_OPER && (p[3] == '[' || p[3] == '{')) return UNFIT;
    for (int i = 0; i < fr.v->formals; i++)
      if (fr.v->formal[i] == p[1]) {
        *r = fr.value[i];
        p += 2;
        return DONE;
      }
    return UNFIT;
  }
  if (p[0] == T_FLOAT || p[0] == C_PI) {
    *r = p[0] == C_PI ? 3.14159274f : wf(p[1]);
    p += 2;
    return DONE;
  }
  if (p[0] == C_OPER) {
    if (p[1] != '(') return UNFIT;
    Outcome o = group(p, fr, r, depth);
    if (o == DONE && p[0] == C_OPER && (p[1] == '[' || p[1] == '{')) return UNFIT;
    return o;
  }
  return p[0] > 0 ? call(p, fr, r, depth) : UNFIT;
}

// "( a )" or "( a op b )".
Outcome group(const word*& p, const Frame& fr, float* r, int depth) {
  // Too deep for the stack: the general road reports it.
  if (pile_epuisee()) return LATER;
  if (p[0] != C_OPER || p[1] != '(') return UNFIT;
  const word* q = p + 2;
  float a, b;
  Outcome o = item(q, fr, &a, depth);
  if (o != DONE) return o;
  if (q[0] != C_OPER) return UNFIT;
  if (q[1] == ')') {
    *r = a;
    p = q + 2;
    return DONE;
  }
  word op = q[1];
  if (!scalar_operator(op)) return UNFIT;
  q += 2;
  o = item(q, fr, &b, depth);
  if (o != DONE) return o;
  if (q[0] != C_OPER || q[1] != ')') return UNFIT;
  scalar_op(op, a, b, r);
  p = q + 2;
  return DONE;
}

// The function's code from its start to a `return(...)`.
Outcome run(const Frame& fr, float* r, int depth) {
  const word* p = fr.v->code + CODE_HEAD;
  for (;;) {
    if (interrupt_pending()) return LATER;
    if (stream_end(p)) return UNFIT;
    if (p[0] > 0) {
      if (p[1] == R_ORIGIN) {
        p += p[0];
        continue;
      }
      if (p[1] != R_IF_LINKED) return UNFIT;
      const word* c = p + p[TEST_CONDITION];
      float test;
      Outcome o = group(c, fr, &test, depth);
      if (o != DONE) return o;
      p += test != 0.0f ? p[TEST_TRUE] : p[TEST_FALSE];
      continue;
    }
    switch (p[0]) {
      case C_JUMP: p += p[1]; continue;
      case C_LINE: case C_LABEL: case C_DEFAULT: p += 2; continue;
      case C_OPER: break;
      default: return UNFIT;
    }
    if (p[1] == '[' || p[1] == '{' || p[1] == O_FOR_START) return UNFIT;
    if (p[1] != '(') {
      p += 2;
      continue;
    }
    // A statement: only "( return ( ... ) )" is taken.
    if (!starts_return(p + 2)) return UNFIT;
    const word* q = p + 4;
    Outcome o = group(q, fr, r, depth);
    if (o != DONE) return o;
    return q[0] == C_OPER && q[1] == ')' ? DONE : UNFIT;
  }
}

bool scalar_value(const word* a) { return a[0] == 5 && a[1] == T_FLOAT && a[2] == 1 && a[3] == 1; }

}  // namespace

int pure_call(Objet* f, const word* args, int count, float* result) {
  if (lang().quick_off || Yes(KW_debug) > 0 || Yes(KW_system) > 0 || debug_points_set() || lang().link_state != 1)
    return 0;
  objet_handle(f);  // before sizing, should it have none yet
  if (lang().verdicts.size() < static_cast<size_t>(handle_table_size)) lang().verdicts.resize(static_cast<size_t>(handle_table_size));
  Verdict* v = verdict_of(f);
  if (!v || v->fit < 0 || count < v->formals) return 0;
  Frame fr;
  fr.v = v;
  for (int i = 0; i < v->formals; i++, args += item_words(args)) {
    if (!scalar_value(args)) return 0;
    fr.value[i] = wf(args[4]);
  }
  Outcome o = run(fr, result, eval_state().depth + 1);
  if (o == UNFIT) v->fit = -1;
  return o == DONE ? 1 : o == LATER ? -1 : -2;
}

PureCallsOff::PureCallsOff() { lang().quick_off++; }
PureCallsOff::~PureCallsOff() { lang().quick_off--; }
