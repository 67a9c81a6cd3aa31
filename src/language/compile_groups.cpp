// Helpers over token streams shared by the compiler's phases.
#include "kernel/report.h"
#include "kernel/resources.h"
#include "language/compile_internal.h"
#include "language/prepare.h"

bool is_open(const word* t) {
  return t[0] == C_OPER && (t[1] == '(' || t[1] == '[' || t[1] == '{' || t[1] == O_OPEN);
}

bool is_close(const word* t) {
  return t[0] == C_OPER && (t[1] == ')' || t[1] == ']' || t[1] == '}' || t[1] == O_CLOSE);
}

Groupes::Groupes(const Tokens& t) : fin_(t.size(), 0), taille_(t.size()) {
  std::vector<size_t> ouverts;
  for (size_t j = 0; j < t.size() && t[j] != 0; j = next_token(t, j)) {
    if (is_open(&t[j])) {
      ouverts.push_back(j);
    } else if (is_close(&t[j]) && !ouverts.empty()) {
      fin_[ouverts.back()] = next_token(t, j);
      ouverts.pop_back();
    }
  }
}

void emit2(Tokens& out, word a, word b) {
  out.push_back(a);
  out.push_back(b);
}

void emit_oper(Tokens& out, word code) { emit2(out, C_OPER, code); }

void compile_error(Compilation& c, int message) {
  if (!c.failed) {
    voir_message(0, message);
    report_compile_line(c.obj, c.line);
  }
  c.failed = true;
}

bool compile_too_deep(Compilation& c) {
  if (!pile_epuisee()) return false;
  if (!c.failed) {
    err_imbrication(nullptr);
    report_compile_line(c.obj, c.line);
  }
  c.failed = true;
  return true;
}

int precedence(word code) {
  switch (code) {
    case '!': case O_INC: case O_DEC: return 14;
    case '*': case '/': case '%': return 13;
    case '+': case '-': case ',': return 12;
    case O_SHL: case O_SHR: return 11;
    case '<': case '>': case O_LE: case O_GE: return 10;
    case O_EQ: case O_NE: case O_TILDE: return 9;
    case '&': return 8;
    case '^': return 7;
    case '|': return 6;
    case O_AND: return 5;
    case O_OR: return 4;
    case '=': case O_XOR_SET: case O_SUB_SET: case O_MUL_SET: case O_DIV_SET: case O_MOD_SET:
    case O_SHL_SET: case O_SHR_SET: case O_AND_SET: case O_OR_SET: case O_LIST_SET: case O_ADD_SET:
      return 3;
    default: return 0;
  }
}
