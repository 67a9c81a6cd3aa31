// Third phase of the parenthesising: every group is rewritten to binary
// form, so that evaluation needs no knowledge of precedence. Assignments,
// "," ",=" and "!" take the whole rest of the expression as their right
// operand; otherwise equal precedence associates to the left.
#include <memory>
#include <vector>

#include "language/compile_internal.h"
#include "language/compile_phases.h"

namespace {

struct Node {
  Tokens leaf;              // an operand's tokens, when op is 0
  word op = 0;
  bool prefix = false, postfix = false;
  std::unique_ptr<Node> left, right;
};
using NodeP = std::unique_ptr<Node>;

bool takes_rest(word op) { return precedence(op) == 3 || op == ',' || op == '!'; }

bool binary_operator(const word* t) {
  return t[0] == C_OPER && !is_open(t) && !is_close(t) && precedence(t[1]) > 0 && t[1] != '!' &&
         t[1] != O_INC && t[1] != O_DEC;
}

struct Precedence {
  Compilation& c;
  const Tokens& in;

  int fail(int message) {
    compile_error(c, message);
    return -1;
  }

  int group(size_t at, size_t* next, Tokens& out);
  int contents(size_t from, size_t to, Tokens& out);
  NodeP expression(size_t& j, size_t to, int min);
  NodeP operand(size_t& j, size_t to);
  int operand_tokens(size_t& j, size_t to, Tokens& leaf);
  void render(const Node& n, Tokens& out, bool outer);
};

// Renders a node; the outermost node of a group uses the group's brackets.
void Precedence::render(const Node& n, Tokens& out, bool outer) {
  if (!n.op) {
    out.insert(out.end(), n.leaf.begin(), n.leaf.end());
    return;
  }
  if (!outer) emit_oper(out, '(');
  if (n.prefix) {
    emit_oper(out, n.op);
    render(*n.left, out, false);
  } else if (n.postfix) {
    render(*n.left, out, false);
    emit_oper(out, n.op);
  } else {
    render(*n.left, out, false);
    emit_oper(out, n.op);
    render(*n.right, out, false);
  }
  if (!outer) emit_oper(out, ')');
}

// One operand's tokens: a group, a call with its argument groups, a chain
// of commands with their groups, a variable with its references, a
// literal. Inner groups are rewritten on the way.
int Precedence::operand_tokens(size_t& j, size_t to, Tokens& leaf) {
  const word* t = &in[j];
  if (is_open(t)) {
    // A group may be indexed at once: "(a,b)[1]".
    if (group(j, &j, leaf) < 0) return -1;
    while (j < to && (oper_at(in, j, '[') || oper_at(in, j, '{')))
      if (group(j, &j, leaf) < 0) return -1;
    return 0;
  }
  bool chain = t[0] == C_COMMAND || t[0] == C_DEMO;
  size_t n = next_token(in, j);
  leaf.insert(leaf.end(), in.begin() + j, in.begin() + n);
  j = n;
  for (;;) {
    while (j < to && is_open(&in[j]) && in[j + 1] != O_OPEN)
      if (group(j, &j, leaf) < 0) return -1;
    if (!chain || j >= to || (in[j] != C_COMMAND && in[j] != C_DEMO)) return 0;
    n = next_token(in, j);
    leaf.insert(leaf.end(), in.begin() + j, in.begin() + n);
    j = n;
  }
}

NodeP Precedence::operand(size_t& j, size_t to) {
  if (j >= to) {
    fail(32);
    return nullptr;
  }
  const word* t = &in[j];
  if (t[0] == C_OPER && (t[1] == '!' || t[1] == O_INC || t[1] == O_DEC || t[1] == O_ADDRESS)) {
    auto n = std::make_unique<Node>();
    n->op = t[1];
    n->prefix = true;
    j = next_token(in, j);
    // "!" takes the rest of the expression, the others one operand.
    n->left = t[1] == '!' ? expression(j, to, 0) : operand(j, to);
    if (!n->left) return nullptr;
    return n;
  }
  if (t[0] == C_OPER && !is_open(t)) {
    fail(32);
    return nullptr;
  }
  auto n = std::make_unique<Node>();
  if (operand_tokens(j, to, n->leaf) < 0) return nullptr;
  while (j < to && (oper_at(in, j, O_INC) || oper_at(in, j, O_DEC))) {
    auto post = std::make_unique<Node>();
    post->op = in[j + 1];
    post->postfix = true;
    post->left = std::move(n);
    n = std::move(post);
    j = next_token(in, j);
  }
  return n;
}

NodeP Precedence::expression(size_t& j, size_t to, int min) {
  NodeP left = operand(j, to);
  if (!left) return nullptr;
  while (j < to) {
    const word* t = &in[j];
    if (!binary_operator(t)) {
      fail(32);
      return nullptr;
    }
    word op = t[1];
    int prec = precedence(op);
    if (prec < min) break;
    j = next_token(in, j);
    NodeP right = expression(j, to, takes_rest(op) ? 0 : prec + 1);
    if (!right) return nullptr;
    auto n = std::make_unique<Node>();
    n->op = op;
    n->left = std::move(left);
    n->right = std::move(right);
    left = std::move(n);
  }
  return left;
}

// The tokens inside one group, in binary form.
int Precedence::contents(size_t from, size_t to, Tokens& out) {
  if (from >= to) return 0;
  size_t j = from;
  NodeP root = expression(j, to, 0);
  if (!root) return -1;
  render(*root, out, true);
  return 0;
}

int Precedence::group(size_t at, size_t* next, Tokens& out) {
  size_t end = group_end(in, at);
  if (end > in.size()) return fail(3);
  out.insert(out.end(), in.begin() + at, in.begin() + at + 2);
  if (contents(at + 2, end - 2, out) < 0) return -1;
  out.insert(out.end(), in.begin() + end - 2, in.begin() + end);
  *next = end;
  return 0;
}

}  // namespace

int phase_precedence(Compilation& c, const Tokens& in, Tokens& out) {
  out.clear();
  Precedence p{c, in};
  for (size_t j = 0; j < in.size() && in[j] != 0;) {
    const word* t = &in[j];
    if (t[0] == C_LINE) c.line = t[1];
    if (is_open(t) && t[1] != O_OPEN) {
      if (p.group(j, &j, out) < 0) return -1;
      continue;
    }
    if (t[0] == C_COMMAND || is_record(t, R_UNDEFINED) || t[0] == C_TYPE_FUNC) {
      // A command or call standing as a statement of its own (`return`).
      if (p.operand_tokens(j, in.size(), out) < 0) return -1;
      continue;
    }
    size_t n = next_token(in, j);
    out.insert(out.end(), in.begin() + j, in.begin() + n);
    j = n;
  }
  out.push_back(0);
  return c.failed ? -1 : 0;
}
