// evaluer_expr: the groups of compiled code, made binary by the compiler,
// evaluated on the evaluation area. A group holds one operand, an operand
// with a prefix or postfix operator, or two operands around an operator.
#include <cstring>

#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"
#include "kernel/values.h"
#include "language/code.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/operators.h"

EvalState the_eval_state;

bool room(const word* at, long words) {
  if (at + words <= eval_limit()) return true;
  err_dim_ev(nullptr);
  return false;
}


namespace {

word closer_of(word opener) { return opener == '(' ? ')' : opener == '[' ? ']' : '}'; }

bool at_closer(const word* t, word closer) { return t[0] == C_OPER && t[1] == closer; }

bool prefix_operator(const word* t) {
  return t[0] == C_OPER && (t[1] == '!' || t[1] == O_INC || t[1] == O_DEC || t[1] == O_ADDRESS);
}

bool is_command_record(const word* item) { return item[0] > 0 && tag(item) == T_SEGMENTS; }

// `&&` and `||` with a left vector of two or more elements decide on its
// first two elements alone; the right side is not evaluated.
bool vector_logic(word* dest, word op, word* scratch) {
  const word* v = value_of(dest, scratch);
  if (!v || tag(v) != T_FLOAT || np(v) * dimp(v) < 2) return false;
  float a = getf(v, 0), b = getf(v, 1);
  float r = op == O_AND ? (a > 0 && b > 0 ? 1.0f : 0.0f) : (a == 0 && b == 0 ? 0.0f : 1.0f);
  build_float(dest, nullptr, r);
  return true;
}

// Two one-element floats under the common operators: the result is made
// at once, without the general vector machinery.
bool scalar_fast(const word* a, word op, const word* b, word* dest) {
  if (a[0] != 5 || b[0] != 5 || a[1] != T_FLOAT || b[1] != T_FLOAT || a[2] != 1 || b[2] != 1) return false;
  float r;
  if (!scalar_op(op, wf(a[4]), wf(b[4]), &r)) return false;
  build_float(dest, nullptr, r);
  return true;
}

// A variable read before it was given a value is reported as such.
bool initialised(const word* item) {
  if (!is_variable_token(item)) return true;
  Objet* v = variable_of(item);
  if (!v || v->local) return true;
  err_non_initialise(nullptr, v->name);
  return false;
}

// The values of the two items of a binary group; `scratch` receives the
// first free word behind them and behind what their reading needed.
bool operand_values(word* left, word* right, const word** a, const word** b, word** scratch) {
  *scratch = right + item_words(right);
  *a = value_of(left, *scratch);
  if (!*a) return false;
  if (*a == *scratch) *scratch += size(*scratch);
  *b = value_of(right, *scratch);
  if (!*b) return false;
  if (*b == *scratch) *scratch += size(*scratch);
  return true;
}

// The operator applied to the values of two items; the result is written
// behind them, then moved down to `dest`.
int binary(word* dest, word op, word* right) {
  // Two plain floats need neither reading nor the initialisation check.
  if (scalar_fast(dest, op, right, dest)) return 0;
  if (op != O_EQ && op != O_NE && op != ',' && (!initialised(dest) || !initialised(right))) return -1;
  const word *a, *b;
  word* scratch;
  if (!operand_values(dest, right, &a, &b, &scratch)) return -1;
  if (scalar_fast(a, op, b, dest)) return 0;
  int r = eval_binary(a, op, b, scratch, eval_limit());
  if (r < 0) return r;
  memmove(dest, scratch, static_cast<size_t>(size(scratch)) * sizeof(word));
  return 0;
}

// A compound assignment: the base operator, then the result stored into
// the item on the left, the result standing in its place.
int compound(word* dest, word op, word* right) {
  if (compound_base(op) != ',' && (!initialised(dest) || !initialised(right))) return -1;
  const word *a, *b;
  word* scratch;
  if (!operand_values(dest, right, &a, &b, &scratch)) return -1;
  int r = eval_binary(a, compound_base(op), b, scratch, eval_limit());
  if (r < 0) return r;
  if (assign_to(dest, scratch) < 0) return -1;
  memmove(dest, scratch, static_cast<size_t>(size(scratch)) * sizeof(word));
  return 0;
}

// `=`: the right side as a plain value, stored into the left, and left as
// the group's value.
int assignment(word* dest, word* right) {
  if (right[0] == T_ADDRESS) {
    // `q=@p`: q becomes a reference to p; the address is the value.
    if (assign_to(dest, right) < 0) return -1;
    dest[0] = right[0];
    dest[1] = right[1];
    return 0;
  }
  word* scratch = right + item_words(right);
  const word* v = value_of(right, scratch);
  if (!v) return -1;
  if (assign_to(dest, v) < 0) return -1;
  memmove(dest, v, static_cast<size_t>(size(v)) * sizeof(word));
  return 0;
}

int binary_group(word* dest, const word*& q, word closer, int* status) {
  if (q[0] != C_OPER) {
    voir_message(0, MES_OPERATOR_ERROR);
    return -1;
  }
  word op = q[1];
  q += 2;
  bool stores = op == '=' || compound_base(op) != 0;
  if (!stores && is_command_record(dest) && run_command(dest, status) < 0) return -1;
  if ((op == O_AND || op == O_OR) && vector_logic(dest, op, dest + item_words(dest))) {
    q = skip_operand(q);
    return q ? 0 : -1;
  }
  word* right = dest + item_words(dest);
  q = operand(q, right, false, status);
  if (!q) return -1;
  (void)closer;
  int r = op == '=' ? assignment(dest, right) : stores ? compound(dest, op, right) : binary(dest, op, right);
  eval_state().quiet = stores;
  return r;
}

// ---- the scalar fast path --------------------------------------------------------
// Loops of the language are mostly made of groups such as "(s+i)" and
// "(s=(s+i))" on one-element floats. They are computed here directly;
// anything else takes the general road.

// The float of a number token or of a variable holding one float.
bool scalar_token(const word* t, float* f) {
  if (t[0] == T_FLOAT) {
    *f = wf(t[1]);
    return true;
  }
  if (!is_variable_token(t) || (t[2] == C_OPER && (t[3] == '[' || t[3] == '{'))) return false;
  Objet* v = token_variable(t);
  if (!v || v->kind == T_ADDRESS) return false;
  const word* val = v->local;
  if (!val || val[0] != 5 || val[1] != T_FLOAT || val[2] != 1) return false;
  *f = wf(val[4]);
  return true;
}

// "( a op b )" with scalar a and b: the value, and the cursor past ")".
const word* scalar_binary(const word* p, float* r) {
  if (p[0] != C_OPER || p[1] != '(') return nullptr;
  float x, y;
  // The operator is checked before the second operand is read, so that
  // nothing past a short group is looked at.
  if (!scalar_token(p + 2, &x) || p[4] != C_OPER || !scalar_operator(p[5]) || !scalar_token(p + 6, &y) ||
      p[8] != C_OPER || p[9] != ')')
    return nullptr;
  scalar_op(p[5], x, y, r);
  return p + 10;
}

// "( v = ( a op b ) )" storing into a variable that holds one float.
const word* scalar_assignment(const word* p, word* dest) {
  const word* t = p + 2;
  if (!is_variable_token(t) || t[2] != C_OPER || t[3] != '=') return nullptr;
  Objet* v = token_variable(t);
  if (!v || v->kind == T_ADDRESS || !v->local || v->local[0] != 5 || v->local[1] != T_FLOAT || v->local[2] != 1)
    return nullptr;
  float r;
  const word* q = scalar_binary(t + 4, &r);
  if (!q || q[0] != C_OPER || q[1] != ')') return nullptr;
  v->local[4] = fw(r);
  if (!room(dest, 5)) return nullptr;
  build_float(dest, nullptr, r);
  eval_state().quiet = true;
  return q + 2;
}

}  // namespace

const word* scalar_group(const word* p, float* r) { return scalar_binary(p, r); }

const word* eval_group(const word* p, word* dest, bool lvalue, int* status) {
  // Each group is a level of recursion: code nested past what the stack
  // holds ends here with a report.
  if (pile_epuisee()) {
    err_imbrication(nullptr);
    return nullptr;
  }
  word opener = p[1];
  const word* q = p + 2;
  // The scalar shapes open with a number or a variable.
  if (opener == '(' && (q[0] == T_FLOAT || is_variable_token(q))) {
    float r;
    if (const word* next = scalar_assignment(p, dest)) return next;
    if (const word* next = scalar_binary(p, &r)) {
      if (!room(dest, 5)) return nullptr;
      build_float(dest, nullptr, r);
      return next;
    }
  }
  word closer = closer_of(opener);
  if (at_closer(q, closer)) {
    if (!room(dest, 4)) return nullptr;
    build_nil(dest);
    return opener == '(' ? q + 2 : segment_mark(q + 2, dest, opener);
  }
  if (prefix_operator(q)) {
    word op = q[1];
    q = operand(q + 2, dest, op != '!', status);
    if (!q || prefix(dest, op) < 0) return nullptr;
  } else {
    q = starts_return(q) ? quick_return(q, dest, status) : operand(q, dest, true, status);
    if (!q) return nullptr;
    if (q[0] == C_OPER && (q[1] == O_INC || q[1] == O_DEC)) {
      if (postfix(dest, q[1]) < 0) return nullptr;
      q += 2;
    } else if (!at_closer(q, closer)) {
      if (binary_group(dest, q, closer, status) < 0) return nullptr;
    } else if (!lvalue && is_command_record(dest) && run_command(dest, status) < 0) {
      return nullptr;
    }
  }
  if (!at_closer(q, closer)) {
    voir_message(0, MES_OPERATOR_ERROR);
    return nullptr;
  }
  return opener == '(' ? q + 2 : segment_mark(q + 2, dest, opener);
}

const word* operand(const word* p, word* dest, bool lvalue, int* status) {
  if (p[0] == C_OPER && (p[1] == '(' || p[1] == '[' || p[1] == '{')) {
    const word* q = eval_group(p, dest, lvalue, status);
    if (q && q[0] == C_OPER && (q[1] == '[' || q[1] == '{')) q = subscripts(q, dest, status);
    return q;
  }
  switch (p[0]) {
    case T_FLOAT:
      if (!room(dest, 5)) return nullptr;
      build_float(dest, nullptr, wf(p[1]));
      return p + 2;
    case C_PI:
      if (!room(dest, 5)) return nullptr;
      build_float(dest, nullptr, 3.14159274f);
      return p + 2;
    case C_NIL:
      if (!room(dest, 4)) return nullptr;
      build_nil(dest);
      return p + 2;
    case C_NL:
      voir_texte("\n");
      if (!room(dest, 4)) return nullptr;
      build_nil(dest);
      return p + 2;
    case C_AUTO: case C_STATIC: case C_EXTERN: case C_GLOBAL: case C_FORMEL:
      if (p[2] == C_OPER && (p[3] == '[' || p[3] == '{')) return variable_operand(p, dest, lvalue, status);
      if (!room(dest, 2)) return nullptr;
      dest[0] = p[0];
      dest[1] = p[1];
      return p + 2;
    case C_AD_GLB: case C_AD_LOC: case C_AD_STATIC:
      if (!room(dest, 2)) return nullptr;
      dest[0] = T_ADDRESS;
      dest[1] = p[1];
      return p + 2;
    case C_COMMAND: case C_DEMO: case C_TYPE_FUNC:
      return command_operand(p, dest, lvalue, status);
    case C_END: case C_JUMP: case 0:
      if (!room(dest, 4)) return nullptr;
      build_nil(dest);
      return p;
    default:
      break;
  }
  if (p[0] > 0) return record_operand(p, dest, status);
  voir_car(p[0] == C_OPER && p[1] > 0 && p[1] < 128 ? p[1] : '?');
  voir_message(0, MES_OPERATOR_ERROR);
  return nullptr;
}

const word* skip_operand(const word* p) {
  if (p[0] == C_OPER && (p[1] == '(' || p[1] == '[' || p[1] == '{')) {
    int depth = 0;
    for (const word* t = p; !stream_end(t); t += token_len(t)) {
      if (t[0] == C_OPER && (t[1] == '(' || t[1] == '[' || t[1] == '{')) depth++;
      if (t[0] == C_OPER && (t[1] == ')' || t[1] == ']' || t[1] == '}') && --depth == 0) return t + 2;
    }
    return nullptr;
  }
  const word* t = p + token_len(p);
  // Argument groups of a call or command go with it.
  while (t[0] == C_OPER && t[1] == '(') t = skip_operand(t);
  return t;
}

const word* evaluer_expr(const word* p, word* dest, int* status) {
  *status = 0;
  eval_state().quiet = false;
  int outer = pending_open();
  const word* q = operand(p, dest, false, status);
  if (pending_close(outer, q != nullptr) < 0) q = nullptr;
  if (!q) {
    TRACE_FAIL("evaluer_expr()");
    return nullptr;
  }
  return q;
}

int evaluer_cond(const word* p, word* dest, const word** next) {
  int status = 0;
  const word* q = evaluer_expr(p, dest, &status);
  if (!q) return -1;
  *next = q;
  const word* v = value_of(dest, dest + item_words(dest));
  if (!v) return -1;
  if (tag(v) == T_NIL) return 1;
  if (tag(v) != T_FLOAT) {
    voir_message(0, MES_CONDITION_ERROR);
    return -1;
  }
  // True only when every element differs from 0; an empty vector is true.
  int n = elements(v);
  for (int i = 0; i < n; i++)
    if (getf(v, i) == 0.0f) return 0;
  return 1;
}
