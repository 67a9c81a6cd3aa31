// The quick road of counted `for` loops: decoding of their bodies, kept
// by record, and their turns. See quick_loop.h.
#include "language/quick_loop.h"

#include <cstring>

#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "language/code.h"
#include "language/debugger.h"
#include "language/eval.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "language/pure_call.h"
#include "platform/process.h"

namespace {

// Loops kept at most; past that the cache starts again.
constexpr size_t QUICK_LOOPS_KEPT = 1024;

// The variables of a body, each read either as one float or as a vector.
struct LoopNames : QuickNames {
  QuickLoop& q;
  explicit LoopNames(QuickLoop& loop) : q(loop) {}
  int slot(const word* t, bool vector) override {
    for (size_t i = 0; i < q.slot.size(); i++)
      if (q.slot[i] == t[1]) return (q.vector[i] != 0) == vector ? static_cast<int>(i) : -1;
    if (q.slot.size() == QUICK_SLOTS) return -1;
    q.slot.push_back(t[1]);
    q.vector.push_back(vector);
    return static_cast<int>(q.slot.size()) - 1;
  }
};

bool opens_index(const word* t) { return t[0] == C_OPER && (t[1] == '[' || t[1] == '{'); }

// A variable token read or written as one float.
int scalar_slot(const word* t, LoopNames& names) {
  return is_variable_token(t) && !opens_index(t + 2) ? names.slot(t, false) : -1;
}

// The statement group at `p`; the cursor after it, or null when it is not
// one the quick road takes.
const word* statement(const word* p, const word* r, LoopNames& names, QuickLoop& q) {
  QuickStatement s{QS_SET};
  s.offset = static_cast<int>(p - r);
  const word* t = p + 2;
  const word* end = nullptr;
  const int first = static_cast<int>(q.ops.size());
  if (t[0] == C_OPER && (t[1] == O_INC || t[1] == O_DEC)) {
    // "( ++ v )": changed at once, its value the new one.
    s = {QS_STEP, s.offset, scalar_slot(t + 2, names)};
    s.delta = t[1] == O_INC ? 1.0f : -1.0f;
    end = t + 4;
  } else if (is_variable_token(t) && t[2] == C_OPER && (t[3] == O_INC || t[3] == O_DEC)) {
    // "( v ++ )": its value the old one.
    s = {QS_STEP, s.offset, scalar_slot(t, names)};
    s.delta = t[3] == O_INC ? 1.0f : -1.0f;
    s.postfix = true;
    end = t + 4;
  } else if (is_variable_token(t) && t[2] == C_OPER) {
    // "( v = e )" and "( v op= e )".
    s.slot = scalar_slot(t, names);
    const word op = t[3], base = compound_base(op);
    if (s.slot < 0) return nullptr;
    if (op == '=') end = quick_operand(t + 4, names, q.ops);
    else if (base == '+' || base == '-' || base == '*' || base == '/') end = quick_compound(s.slot, base, t + 4, names, q.ops);
    else return nullptr;
  } else if (is_oper(t, '(') && is_variable_token(t + 2) && is_oper(t + 4, '[')) {
    // "( ( v [ i ] ) = e )".
    s.kind = QS_SET_ELEMENT;
    s.slot = names.slot(t + 2, true);
    s.index_first = first;
    const word* i = s.slot < 0 ? nullptr : quick_operand(t + 6, names, q.ops);
    if (!i || !is_oper(i, ']') || !is_oper(i + 2, ')') || !is_oper(i + 4, '=')) return nullptr;
    s.index_count = static_cast<int>(q.ops.size()) - first;
    s.first = static_cast<int>(q.ops.size());
    end = quick_operand(i + 6, names, q.ops);
    if (!end) return nullptr;
    s.count = static_cast<int>(q.ops.size()) - s.first;
  } else {
    return nullptr;
  }
  if (!end || s.slot < 0 || !is_oper(end, ')')) return nullptr;
  if (s.kind == QS_SET) {
    s.first = first;
    s.count = static_cast<int>(q.ops.size()) - first;
  }
  q.statements.push_back(s);
  return end + 2;
}

// The statements of the body from `body` to the jump back to `r` at `end`.
bool decode(const word* r, const word* body, const word* end, QuickLoop& q) {
  LoopNames names(q);
  for (const word* p = body; p < end;) {
    if (p[0] == C_LINE) {
      QuickStatement s{QS_LINE};
      s.line = p[1];
      q.statements.push_back(s);
      p += 2;
    } else if (p[0] != C_OPER || p[1] == '[' || p[1] == '{' || p[1] == O_FOR_START) {
      return false;
    } else if (p[1] == '(') {
      if (!(p = statement(p, r, names, q))) return false;
    } else {
      p += 2;  // ";" and the like
    }
  }
  for (const QuickOp& op : q.ops)
    if (op.kind == Q_CALL) q.calls = true;
  return true;
}

// Checks the variables and points `slot` at their values; false when one
// does not hold what the body reads it as.
bool bind_slots(const QuickLoop& q, word** slot, int* length) {
  for (size_t i = 0; i < q.slot.size(); i++) {
    Objet* v = handle_objet(q.slot[i]);
    if (!v || v->kind == T_ADDRESS || !v->local) return false;
    word* value = v->local;
    if (q.vector[i]) {
      if (value[0] < 4 || value[1] != T_FLOAT) return false;
      length[i] = elements(value);
    } else if (value[0] != 5 || value[1] != T_FLOAT || value[2] != 1 || value[3] != 1) {
      return false;
    }
    slot[i] = value;
  }
  return true;
}

}  // namespace

const QuickLoop* quick_loop_of(const word* r) {
  const word* body = r + r[FOR_BODY];
  const word* end = body;
  while (!stream_end(end) && !(end[0] == C_JUMP && end + end[1] == r)) end += token_len(end);
  if (stream_end(end)) return nullptr;
  const size_t words = static_cast<size_t>(end + 2 - body);
  LanguageState& L = lang();
  auto it = L.quick_loops.find(r);
  if (it != L.quick_loops.end() && it->second.body.size() == words &&
      std::memcmp(it->second.body.data(), body, words * sizeof(word)) == 0)
    return &it->second;
  if (it == L.quick_loops.end()) {
    if (L.quick_loops.size() >= QUICK_LOOPS_KEPT) {
      L.quick_loops.clear();
      L.quick_loops_generation++;
    }
    it = L.quick_loops.emplace(r, QuickLoop{}).first;
  }
  QuickLoop& q = it->second;
  q = QuickLoop{};
  q.body.assign(body, body + words);
  q.fit = decode(r, body, end, q);
  return &q;
}

const word* quick_turns(const QuickLoop& q, const word* r, word* counter, float end, float step, word* base,
                        QuickOutcome* why) {
  word* slot[QUICK_SLOTS];
  int length[QUICK_SLOTS];
  // Not with the debugger's stopping points, nor without room for the
  // value left at `base` (the general road reports that).
  if (debug_points_set() || (q.calls && !pure_calls_allowed()) || base + 5 > eval_limit() ||
      !bind_slots(q, slot, length)) {
    *why = QUICK_LATER;
    return nullptr;
  }
  if (q.calls) pure_calls_prepare();
  EvalState& E = eval_state();
  const QuickFrame fr{slot, length, nullptr, E.depth};
  const bool lines = Yes(KW_debug) != 2;
  const QuickOp* ops = q.ops.data();
  float last = 0.0f;
  bool quiet = false, any = false;
  const word* at = nullptr;
  QuickOutcome o = QUICK_DONE;
  for (;;) {
    const float c = getf(counter, 0) + step;
    setf(counter, 0, c);
    if ((step > 0 && c > end) || (step < 0 && c < end)) {
      at = r + r[FOR_AFTER];
      break;
    }
    for (const QuickStatement& s : q.statements) {
      if (s.kind == QS_LINE) {
        if (lines) E.line = s.line;
        continue;
      }
      if (interrupt_pending()) {
        at = r + s.offset;
        goto done;
      }
      word* target = slot[s.slot];
      float v;
      switch (s.kind) {
        case QS_SET:
          if ((o = quick_eval(ops + s.first, s.count, fr, &v)) != QUICK_DONE) break;
          target[4] = fw(v);
          quiet = true;
          break;
        case QS_SET_ELEMENT: {
          float x;
          int k = -1;
          if ((o = quick_eval(ops + s.index_first, s.index_count, fr, &x)) != QUICK_DONE) break;
          if ((k = quick_index(x, length[s.slot])) < 0) {
            o = QUICK_LATER;
            break;
          }
          if ((o = quick_eval(ops + s.first, s.count, fr, &v)) != QUICK_DONE) break;
          target[4 + k] = fw(v);
          quiet = true;
          break;
        }
        default: {
          const float old = wf(target[4]);
          target[4] = fw(old + s.delta);
          v = s.postfix ? old : old + s.delta;
          quiet = false;
          break;
        }
      }
      if (o != QUICK_DONE) {
        *why = o;
        at = r + s.offset;
        goto done;
      }
      last = v;
      any = true;
    }
    // The safe point of the jump back and of the loop's record.
    if (interrupt_pending()) {
      at = r;
      break;
    }
  }
done:
  if (any) {
    build_float(base, nullptr, last);
    E.quiet = quiet;
  }
  return at;
}
