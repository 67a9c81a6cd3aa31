// Decoding scalar groups of compiled code into postfix programs, and
// running them. See quick_code.h.
#include "language/quick_code.h"

#include <cmath>

#include "kernel/entier.h"
#include "language/code.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/operators.h"
#include "language/pure_call.h"

namespace {

// Where an operator finds a leaf right operand: `arg` is its kind + 1.
static_assert(Q_NUMBER == 0 && Q_SLOT == 1 && Q_FORMAL == 2 && RIGHT_ON_STACK == 0);

word quick_operator(word op) {
  switch (op) {
    case '+': return Q_ADD;
    case '-': return Q_SUB;
    case '*': return Q_MUL;
    case '<': return Q_LT;
    case '>': return Q_GT;
    case O_LE: return Q_LE;
    case O_GE: return Q_GE;
    case O_EQ: return Q_EQ;
    case O_NE: return Q_NE;
    case '/': return Q_DIVIDE;
    default: return -1;
  }
}

bool opens_index(const word* t) { return t[0] == C_OPER && (t[1] == '[' || t[1] == '{'); }
bool is_closer(const word* t, word c) { return t[0] == C_OPER && t[1] == c; }

const word* operand(const word* p, QuickNames& names, std::vector<QuickOp>& out);
const word* right_operand(word kind, const word* p, QuickNames& names, std::vector<QuickOp>& out);

// "( a )" or "( a op b )".
const word* group(const word* p, QuickNames& names, std::vector<QuickOp>& out) {
  if (!is_closer(p, '(')) return nullptr;
  const word* q = operand(p + 2, names, out);
  if (!q || q[0] != C_OPER) return nullptr;
  if (q[1] == ')') return q + 2;
  q = right_operand(quick_operator(q[1]), q + 2, names, out);
  return q && is_closer(q, ')') ? q + 2 : nullptr;
}

// The operator of `kind` (none when negative) and its right operand at
// `p`, behind the left one already decoded: the cursor after it.
const word* right_operand(word kind, const word* p, QuickNames& names, std::vector<QuickOp>& out) {
  if (kind < 0) return nullptr;
  const size_t right = out.size();
  const word* q = operand(p, names, out);
  if (!q) return nullptr;
  // A right operand that is one leaf goes into the operator's step.
  if (out.size() == right + 1 && out[right].kind <= Q_FORMAL) {
    const QuickOp leaf = out[right];
    out[right] = {kind, leaf.kind + 1, leaf.kind == Q_NUMBER ? leaf.value : leaf.arg};
  } else {
    out.push_back({kind, RIGHT_ON_STACK, 0});
  }
  return q;
}

// A call of a linked function with its argument groups.
const word* call(const word* p, QuickNames& names, std::vector<QuickOp>& out) {
  if (p[1] != R_CODE_FUNC) return nullptr;
  const word* q = p + p[0];
  int count = 0;
  for (; count < p[3] && is_closer(q, '('); count++)
    if (!(q = group(q, names, out))) return nullptr;
  out.push_back({Q_CALL, count, p[2]});
  return q;
}

const word* operand(const word* p, QuickNames& names, std::vector<QuickOp>& out) {
  const word* q = nullptr;
  if (p[0] == T_FLOAT || p[0] == C_PI) {
    out.push_back({Q_NUMBER, 0, p[0] == C_PI ? fw(3.14159274f) : p[1]});
    q = p + 2;
  } else if (is_variable_token(p)) {
    const bool indexed = is_closer(p + 2, '[');
    if (is_closer(p + 2, '{') || (indexed && names.formals())) return nullptr;
    const int s = names.slot(p, indexed);
    if (s < 0) return nullptr;
    if (!indexed) {
      out.push_back({names.formals() ? Q_FORMAL : Q_SLOT, s, 0});
      return p + 2;
    }
    q = operand(p + 4, names, out);
    if (!q || !is_closer(q, ']')) return nullptr;
    out.push_back({Q_ELEMENT, s, 0});
    q += 2;
  } else if (is_closer(p, '(')) {
    q = group(p, names, out);
  } else if (p[0] > 0) {
    q = call(p, names, out);
  }
  // A further index applies to a copy: the general road's work.
  return q && !opens_index(q) ? q : nullptr;
}

// The deepest stack the program needs, or -1 when it is malformed.
int stack_depth(const QuickOp* ops, int n) {
  int sp = 0, deepest = 0;
  for (int i = 0; i < n; i++) {
    switch (ops[i].kind) {
      case Q_NUMBER: case Q_SLOT: case Q_FORMAL: sp++; break;
      case Q_ELEMENT: break;
      case Q_CALL: sp += 1 - ops[i].arg; break;
      default: sp -= ops[i].arg == RIGHT_ON_STACK; break;
    }
    if (sp < 1) return -1;
    if (sp > deepest) deepest = sp;
  }
  return sp == 1 ? deepest : -1;
}

}  // namespace

const word* quick_operand(const word* p, QuickNames& names, std::vector<QuickOp>& out) {
  const size_t first = out.size();
  const word* q = operand(p, names, out);
  if (q) {
    const int depth = stack_depth(out.data() + first, static_cast<int>(out.size() - first));
    if (depth < 0 || depth > QUICK_STACK) q = nullptr;
  }
  if (!q) out.resize(first);
  return q;
}

const word* quick_compound(int slot, word op, const word* p, QuickNames& names, std::vector<QuickOp>& out) {
  const size_t first = out.size();
  out.push_back({Q_SLOT, slot, 0});
  const word* q = right_operand(quick_operator(op), p, names, out);
  if (q && stack_depth(out.data() + first, static_cast<int>(out.size() - first)) > QUICK_STACK) q = nullptr;
  if (!q) out.resize(first);
  return q;
}

QuickOutcome quick_run(const QuickOp* op, int n, const QuickFrame& fr, float* r) {
  float st[QUICK_STACK];
  int sp = 0;
  for (const QuickOp* end = op + n; op < end; op++) {
    switch (op->kind) {
      case Q_NUMBER: st[sp++] = wf(op->value); break;
      case Q_SLOT: st[sp++] = wf(fr.slot[op->arg][4]); break;
      case Q_FORMAL: st[sp++] = fr.formal[op->arg]; break;
      case Q_ELEMENT: {
        const int k = quick_index(st[sp - 1], fr.length[op->arg]);
        if (k < 0) return QUICK_LATER;
        st[sp - 1] = wf(fr.slot[op->arg][4 + k]);
        break;
      }
      case Q_CALL: {
        sp -= op->arg;
        const QuickOutcome o = pure_call_floats(op->value, st + sp, op->arg, fr.depth, &st[sp]);
        if (o != QUICK_DONE) return o;
        sp++;
        break;
      }
      default: {
        const float b = op->arg == RIGHT_ON_STACK ? st[--sp] : quick_leaf(op->arg - 1, op->value, fr);
        if (!quick_apply(op->kind, st[sp - 1], b, &st[sp - 1])) return QUICK_LATER;
        break;
      }
    }
  }
  *r = st[0];
  return QUICK_DONE;
}
