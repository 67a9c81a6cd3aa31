// Entry of the binary operators: the list operator first, then the rule
// for operands that are not both FLOAT, then the vector operators. Also
// the logical not and the base of the compound assignments.
#include "language/operators.h"

#include <cstring>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/code.h"
#include "language/operators_internal.h"

static bool errors_on() { return Yes(KW_error) > 0; }

int ops_overflow() {
  if (errors_on()) err_dim_ev(nullptr);
  return -12;
}

int ops_fault(int num) {
  if (errors_on()) voir_message(0, num);
  return -1;
}

int ops_unknown() {
  if (errors_on()) err_operateur(nullptr);
  return -1;
}

static bool known_operator(word op) {
  switch (op) {
    case '+': case '-': case '*': case '/': case '%': case '^': case '&': case '|':
    case '<': case '>': case O_EQ: case O_NE: case O_LE: case O_GE: case O_AND: case O_OR:
    case O_TILDE: case O_SHL: case O_SHR: return true;
    default: return false;
  }
}

static const char* kind_name(word kind) {
  switch (kind) {
    case T_NIL: return "NIL";
    case T_CHAR: return "CHAR";
    case T_FLOAT: return "FLOAT";
    case T_HYBRIDE: return "HYBRIDE";
    case T_LONG: return "LONG";
    case T_SHORT: return "SHORT";
    default: return "?";
  }
}

int ops_illegal(const word* culprit) {
  if (errors_on()) err_illegal(kind_name(value_kind(culprit)));
  return -1;
}

word compound_base(word op) {
  switch (op) {
    case O_ADD_SET: return '+';
    case O_SUB_SET: return '-';
    case O_MUL_SET: return '*';
    case O_DIV_SET: return '/';
    case O_MOD_SET: return '%';
    case O_XOR_SET: return '^';
    case O_AND_SET: return '&';
    case O_OR_SET: return '|';
    case O_SHL_SET: return O_SHL;
    case O_SHR_SET: return O_SHR;
    case O_LIST_SET: return ',';
    default: return 0;
  }
}

// CHAR against CHAR compares the strings, NIL equals NIL, every other
// pair differs.
static bool same_value(const word* a, const word* b) {
  const word ka = value_kind(a), kb = value_kind(b);
  if (ka == T_NIL && kb == T_NIL) return true;
  if (ka != T_CHAR || kb != T_CHAR) return false;
  const int la = text_bytes(a);
  return la == text_bytes(b) && std::memcmp(text(a), text(b), static_cast<size_t>(la)) == 0;
}

// Operands that are not both FLOAT: only == and != apply.
static int eval_mixed(const word* left, word op, const word* right, word* dest,
                      const word* limit) {
  if (op != O_EQ && op != O_NE) return ops_illegal(value_kind(left) != T_FLOAT ? left : right);
  if (!fits(dest, 5, limit)) return ops_overflow();
  const bool equal = same_value(left, right);
  build_head(dest, 5, T_FLOAT, 1);
  dest[4] = fw(equal == (op == O_EQ) ? 1.f : 0.f);
  return 0;
}

static int dispatch(const word* left, word op, const word* right, word* dest,
                    const word* limit) {
  if (op == ',') return eval_list(left, right, dest, limit);
  if (!known_operator(op)) return ops_unknown();
  if (value_kind(left) != T_FLOAT || value_kind(right) != T_FLOAT)
    return eval_mixed(left, op, right, dest, limit);
  return eval_vector(left, op, right, dest, limit);
}

int eval_binary(const word* left, word op, const word* right, word* dest, const word* limit) {
  const int status = dispatch(left, op, right, dest, limit);
  if (status < 0) TRACE_FAIL("eval_binary()");
  return status;
}

int eval_not(const word* v, word* dest, const word* limit) {
  if (value_kind(v) != T_FLOAT) {
    if (!fits(dest, 4, limit)) return ops_overflow();
    build_head(dest, 4, T_NIL, 0);
    return 0;
  }
  const int n = elements(v);
  if (!fits(dest, 4 + n, limit)) return ops_overflow();
  build_head(dest, 4 + n, T_FLOAT, n);
  for (int i = 0; i < n; i++) dest[4 + i] = fw(wf(v[4 + i]) == 0.f ? 1.f : 0.f);
  return 0;
}
