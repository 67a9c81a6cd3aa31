// The quick road for calls of pure scalar functions. A function whose
// variables are all plain formals, and whose code is made of `if`s and
// `return(...)`s over numbers, its formals, the common scalar operators
// and calls of such functions, cannot be seen running: it changes no
// variable and runs no command. Such a call keeps its formals in a C++
// frame instead of saving and binding the variable objects, and runs its
// code decoded once into steps over postfix programs of floats
// (quick_code.h).
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

// The formals of the function being decoded, by their handles.
struct FormalNames : QuickNames {
  const Verdict& v;
  explicit FormalNames(const Verdict& verdict) : v(verdict) {}
  int slot(const word* t, bool vector) override {
    if (vector || t[0] != C_FORMEL) return -1;
    for (int i = 0; i < v.formals; i++)
      if (v.formal[i] == t[1]) return i;
    return -1;
  }
  bool formals() const override { return true; }
};

// Decodes the code of `v` by following it from `offset` as the quick road
// walks it: the number of the step reached there. `seen` maps offsets to
// steps already made; a step the road cannot take is made P_UNFIT, so that
// only a run that reaches it gives up.
int decode_from(Verdict& v, int offset, std::vector<int>& seen) {
  const word* code = v.code;
  const int words = size(code);
  const word* p = code + offset;
  // Jumps, lines and the like lead to the step; a cycle of them has none.
  for (int walked = 0;; walked++) {
    if (p < code + CODE_HEAD || p >= code + words || walked > words) {
      v.steps.push_back({P_UNFIT});
      return static_cast<int>(v.steps.size()) - 1;
    }
    if (seen[static_cast<size_t>(p - code)] >= 0) return seen[static_cast<size_t>(p - code)];
    if (stream_end(p)) break;
    if (p[0] > 0) {
      if (p[1] != R_ORIGIN) break;
      p += p[0];
      continue;
    }
    if (p[0] == C_JUMP) {
      p += p[1];
      continue;
    }
    if (p[0] == C_LINE || p[0] == C_LABEL || p[0] == C_DEFAULT ||
        (p[0] == C_OPER && p[1] != '(' && p[1] != '[' && p[1] != '{' && p[1] != O_FOR_START)) {
      p += 2;
      continue;
    }
    break;
  }
  const int at = static_cast<int>(p - code);
  const int s = static_cast<int>(v.steps.size());
  seen[static_cast<size_t>(at)] = s;
  seen[static_cast<size_t>(offset)] = s;
  v.steps.push_back({P_UNFIT});
  FormalNames names(v);
  const int first = static_cast<int>(v.ops.size());
  if (p[0] > 0 && p[1] == R_IF_LINKED) {
    if (!is_oper(p + p[TEST_CONDITION], '(') || !quick_operand(p + p[TEST_CONDITION], names, v.ops)) return s;
    PureStep step{P_IF, first, static_cast<int>(v.ops.size()) - first};
    step.yes = decode_from(v, at + p[TEST_TRUE], seen);
    step.no = decode_from(v, at + p[TEST_FALSE], seen);
    v.steps[static_cast<size_t>(s)] = step;
    return s;
  }
  // A statement: only "( return ( ... ) )" is taken.
  if (is_oper(p, '(') && starts_return(p + 2)) {
    const word* q = quick_operand(p + 4, names, v.ops);
    if (q && is_oper(q, ')'))
      v.steps[static_cast<size_t>(s)] = {P_RETURN, first, static_cast<int>(v.ops.size()) - first};
  }
  return s;
}

Verdict* verdict_of(Objet* f) {
  word h = objet_handle(f);
  if (h <= 0 || static_cast<size_t>(h) >= lang().verdicts.size()) return nullptr;
  Verdict& v = lang().verdicts[static_cast<size_t>(h)];
  if (v.fit && v.code == f->code && v.id == f->id) return &v;
  v = Verdict{f->code, f->id, -1, 0, {}, {}, {}};
  if (!f->code || f->work[FN_ADDRESS] || f->work[FN_FORMALS] > MAX_FORMALS) return &v;
  if (f->locals)
    for (Objet* var = f->locals->next; var; var = var->next) {
      if (var->kind != C_FORMEL || var->subkind == C_AD_GLB || v.formals == MAX_FORMALS) return &v;
      v.formal[v.formals++] = objet_handle(var);
    }
  if (v.formals != f->work[FN_FORMALS]) return &v;
  std::vector<int> seen(static_cast<size_t>(size(f->code)), -1);
  decode_from(v, CODE_HEAD, seen);
  v.fit = 1;
  return &v;
}

// The decoded steps of `v` on the formals' values `formal`.
QuickOutcome run(const Verdict& v, const float* formal, int depth, float* r) {
  const QuickFrame fr{nullptr, nullptr, formal, depth};
  const PureStep* step = v.steps.data();
  for (;;) {
    if (interrupt_pending()) return QUICK_LATER;
    switch (step->kind) {
      case P_IF: {
        float test;
        const QuickOutcome o = quick_eval(v.ops.data() + step->first, step->count, fr, &test);
        if (o != QUICK_DONE) return o;
        step = v.steps.data() + (test != 0.0f ? step->yes : step->no);
        break;
      }
      case P_RETURN: return quick_eval(v.ops.data() + step->first, step->count, fr, r);
      default: return QUICK_UNFIT;
    }
  }
}

bool scalar_value(const word* a) { return a[0] == 5 && a[1] == T_FLOAT && a[2] == 1 && a[3] == 1; }

}  // namespace

bool pure_calls_allowed() {
  return lang().quick_roads && !lang().quick_off && Yes(KW_debug) <= 0 && Yes(KW_system) <= 0 && !debug_points_set() &&
         lang().link_state == 1;
}

QuickOutcome pure_call_floats(word h, const float* args, int count, int depth, float* r) {
  Objet* f = handle_objet(h);
  if (!f || f->kind != KIND_FUNC) return QUICK_UNFIT;
  if (!f->code) return QUICK_LATER;
  // The table is not resized here: the callers hold their verdicts.
  Verdict* v = verdict_of(f);
  if (!v) return QUICK_LATER;
  if (v->fit < 0) return QUICK_UNFIT;
  if (count < v->formals) return QUICK_UNFIT;  // a formal would be NIL
  if (call_too_deep(depth)) return QUICK_LATER;
  const QuickOutcome o = run(*v, args, depth + 1, r);
  if (o == QUICK_UNFIT) v->fit = -1;
  return o;
}

void pure_calls_prepare() {
  if (lang().verdicts.size() < static_cast<size_t>(handle_table_size))
    lang().verdicts.resize(static_cast<size_t>(handle_table_size));
}

int pure_call(Objet* f, const word* args, int count, float* result) {
  if (!pure_calls_allowed()) return 0;
  objet_handle(f);  // before sizing, should it have none yet
  pure_calls_prepare();
  Verdict* v = verdict_of(f);
  if (!v || v->fit < 0 || count < v->formals) return 0;
  float formal[MAX_FORMALS];
  for (int i = 0; i < v->formals; i++, args += item_words(args)) {
    if (!scalar_value(args)) return 0;
    formal[i] = wf(args[4]);
  }
  QuickOutcome o = run(*v, formal, eval_state().depth + 1, result);
  if (o == QUICK_UNFIT) v->fit = -1;
  return o == QUICK_DONE ? 1 : o == QUICK_LATER ? -1 : -2;
}

PureCallsOff::PureCallsOff() { lang().quick_off++; }
PureCallsOff::~PureCallsOff() { lang().quick_off--; }
