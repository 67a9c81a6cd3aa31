// Third phase of the parenthesising: every group is rewritten to binary
// form, so that evaluation needs no knowledge of precedence. Assignments,
// "," ",=" and "!" take the whole rest of the expression as their right
// operand; otherwise equal precedence associates to the left.
//
// The rewriting only adds brackets around operations, the tokens keeping
// their order; so the parse counts the brackets to put before and after
// each token, and one copy writes the result. A group is stepped over in
// one move, and an operation that takes the rest of its expression is
// not a level of recursion: long lists and chains of assignments cost
// neither stack nor copies.
#include <vector>

#include "kernel/handles.h"
#include "kernel/message_names.h"
#include "kernel/report.h"
#include "language/compile_internal.h"
#include "language/compile_phases.h"

namespace {

bool takes_rest(word op) { return precedence(op) == 3 || op == ',' || op == '!'; }

bool binary_operator(const word* t) {
  return t[0] == C_OPER && !is_open(t) && !is_close(t) && precedence(t[1]) > 0 && t[1] != '!' &&
         t[1] != O_INC && t[1] != O_DEC;
}

// The tokens an operand or an operation spans, first and last (the index
// where each starts); `operation` for what the rendering brackets.
struct Span {
  size_t first = 0, last = 0;
  bool operation = false;
};

struct Precedence {
  Compilation& c;
  const Tokens& in;
  const Groupes g;
  std::vector<word> before, after;  // brackets opened before a token, closed after it
  std::vector<size_t> rest;         // starts of the operations that take the rest

  Precedence(Compilation& comp, const Tokens& tokens)
      : c(comp), in(tokens), g(tokens), before(tokens.size(), 0), after(tokens.size(), 0) {}

  bool fail(int message) {
    compile_error(c, message);
    return false;
  }
  Span operation(size_t first, size_t last) {
    before[first]++;
    after[last]++;
    return {first, last, true};
  }

  // A name written after a command where an option was meant ("cube(1)
  // dimm(20)") is no operand of it: say which word is unknown.
  bool juxtaposed(const Span& left, size_t j) {
    const char* name = in[left.first] == C_COMMAND && !c.failed ? unknown_name(&in[j]) : nullptr;
    if (!name) return fail(MES_OPERATOR_ERROR);
    VOIR_CHAR("%s", name);
    return fail(MES_UNKNOWN);
  }
  // The name of a call to no known function, or of a variable; null for
  // any other token.
  const char* unknown_name(const word* t) const {
    if (t[0] > 0 && t[1] == R_UNDEFINED && c.sym) {
      const word* e = symb_entry(c.sym, t[4]);
      return e ? symb_name(e) : nullptr;
    }
    if (t[0] == C_AUTO || t[0] == C_EXTERN || t[0] == C_GLOBAL || t[0] == C_STATIC) {
      const Objet* v = handle_objet(t[1]);
      return v ? v->name : nullptr;
    }
    return nullptr;
  }

  bool group(size_t at, size_t* next);
  bool contents(size_t from, size_t to);
  bool expression(size_t& j, size_t to, int min, Span* out);
  bool operand(size_t& j, size_t to, Span* out);
  bool operand_tokens(size_t& j, size_t to, size_t* last);
  void write(Tokens& out) const;
};

// One operand's tokens: a group, a call with its argument groups, a chain
// of commands with their groups, a variable with its references, a
// literal. Inner groups are rewritten on the way.
bool Precedence::operand_tokens(size_t& j, size_t to, size_t* last) {
  if (is_open(&in[j])) {
    // A group may be indexed at once: "(a,b)[1]".
    if (!group(j, &j)) return false;
    while (j < to && (oper_at(in, j, '[') || oper_at(in, j, '{')))
      if (!group(j, &j)) return false;
    *last = j - 2;
    return true;
  }
  const bool chain = in[j] == C_COMMAND || in[j] == C_DEMO;
  *last = j;
  j = next_token(in, j);
  for (;;) {
    while (j < to && is_open(&in[j]) && in[j + 1] != O_OPEN) {
      if (!group(j, &j)) return false;
      *last = j - 2;
    }
    if (!chain || j >= to || (in[j] != C_COMMAND && in[j] != C_DEMO)) return true;
    *last = j;
    j = next_token(in, j);
  }
}

bool Precedence::operand(size_t& j, size_t to, Span* out) {
  if (j >= to) return fail(MES_OPERATOR_ERROR);
  if (compile_too_deep(c)) return false;
  const word* t = &in[j];
  if (t[0] == C_OPER && (t[1] == '!' || t[1] == O_INC || t[1] == O_DEC || t[1] == O_ADDRESS)) {
    const size_t at = j;
    j = next_token(in, j);
    // "!" takes the rest of the expression, the others one operand.
    Span inner;
    if (!(t[1] == '!' ? expression(j, to, 0, &inner) : operand(j, to, &inner))) return false;
    *out = operation(at, inner.last);
    return true;
  }
  if (t[0] == C_OPER && !is_open(t)) return fail(MES_OPERATOR_ERROR);
  Span n{j, j, false};
  if (!operand_tokens(j, to, &n.last)) return false;
  while (j < to && (oper_at(in, j, O_INC) || oper_at(in, j, O_DEC))) {
    n = operation(n.first, j);
    j = next_token(in, j);
  }
  *out = n;
  return true;
}

// Precedence climbing. A right operand of higher precedence is a call
// of its own (its depth bounded by the number of levels); an operator
// that takes the rest of the expression starts a new operand in place,
// and all such operations end together at the last token.
bool Precedence::expression(size_t& j, size_t to, int min, Span* out) {
  const size_t base = rest.size();
  Span left;
  if (!operand(j, to, &left)) return false;
  while (j < to) {
    const word* t = &in[j];
    if (!binary_operator(t)) return juxtaposed(left, j);
    const word op = t[1];
    const int prec = precedence(op);
    if (prec < min) break;
    j = next_token(in, j);
    if (takes_rest(op)) {
      rest.push_back(left.first);
      if (!operand(j, to, &left)) return false;
      min = 0;
      continue;
    }
    Span right;
    if (!expression(j, to, prec + 1, &right)) return false;
    left = operation(left.first, right.last);
  }
  for (; rest.size() > base; rest.pop_back()) left = operation(rest.back(), left.last);
  *out = left;
  return true;
}

// The tokens inside one group, in binary form: the outermost operation
// uses the group's own brackets.
bool Precedence::contents(size_t from, size_t to) {
  if (from >= to) return true;
  size_t j = from;
  Span root;
  if (!expression(j, to, 0, &root)) return false;
  if (root.operation) {
    before[root.first]--;
    after[root.last]--;
  }
  return true;
}

bool Precedence::group(size_t at, size_t* next) {
  const size_t end = g.end(at);
  if (end >= in.size()) return fail(MES_PARENTHESIS_ERROR);
  if (!contents(at + 2, end - 2)) return false;
  *next = end;
  return true;
}

void Precedence::write(Tokens& out) const {
  out.clear();
  out.reserve(in.size() + in.size() / 2);
  for (size_t j = 0; j < in.size() && in[j] != 0;) {
    for (word k = 0; k < before[j]; k++) emit_oper(out, '(');
    const size_t n = next_token(in, j);
    out.insert(out.end(), in.begin() + j, in.begin() + n);
    for (word k = 0; k < after[j]; k++) emit_oper(out, ')');
    j = n;
  }
  out.push_back(0);
}

}  // namespace

int phase_precedence(Compilation& c, const Tokens& in, Tokens& out) {
  Precedence p(c, in);
  for (size_t j = 0; j < in.size() && in[j] != 0;) {
    const word* t = &in[j];
    if (t[0] == C_LINE) c.line = t[1];
    if (is_open(t) && t[1] != O_OPEN) {
      if (!p.group(j, &j)) return -1;
      continue;
    }
    if (t[0] == C_COMMAND || is_record(t, R_UNDEFINED) || t[0] == C_TYPE_FUNC) {
      // A command or call standing as a statement of its own (`return`).
      size_t last;
      if (!p.operand_tokens(j, in.size(), &last)) return -1;
      continue;
    }
    j = next_token(in, j);
  }
  if (c.failed) return -1;
  p.write(out);
  return 0;
}
