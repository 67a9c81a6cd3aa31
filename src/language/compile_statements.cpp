// First phase of the parenthesising: every plain statement becomes one
// group, and the control words are expanded into their records with
// bracketed blocks (-1022 ... -1023).
#include <utility>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/compile_internal.h"
#include "language/compile_phases.h"

namespace {

struct Statements {
  Compilation& c;
  const Tokens& in;
  Tokens& out;
  const Groupes g{in};
  size_t i = 0;

  bool at(word code) const { return oper_at(in, i, code); }
  bool ended() const { return i >= in.size() || in[i] == 0 || in[i] == C_END; }
  int fail(int message) {
    compile_error(c, message);
    return -1;
  }

  void copy(size_t from, size_t to) { out.insert(out.end(), in.begin() + from, in.begin() + to); }
  void copy_token() {
    size_t n = next_token(in, i);
    copy(i, n);
    i = n;
  }
  void line_tokens() {
    while (!ended() && in[i] == C_LINE) {
      c.line = in[i + 1];
      copy_token();
    }
  }

  int sequence();
  int statement();
  int plain();
  int block_or_statement();
  int control_if();
  int control_while();
  int control_for();
  int control_switch();
  int head(int message, size_t* end);
};

// Statements up to the end of the stream or a closing "}" (left in place).
int Statements::sequence() {
  while (!ended() && !at('}')) {
    if (statement() < 0) return -1;
  }
  return 0;
}

int Statements::statement() {
  if (compile_too_deep(c)) return -1;
  const word* t = &in[i];
  switch (t[0]) {
    case C_LINE:
      line_tokens();
      return 0;
    case C_LABEL: case C_CASE: case C_DEFAULT: case C_GOTO: case C_BREAK:
      copy_token();
      return 0;
    default: break;
  }
  if (is_record(t, R_IF)) return control_if();
  if (is_record(t, R_WHILE)) return control_while();
  if (is_record(t, R_FOR)) return control_for();
  if (is_record(t, R_SWITCH)) return control_switch();
  if (is_record(t, R_ORIGIN) || at(';')) {
    copy_token();
    return 0;
  }
  if (at(O_ELSE)) return fail(MES_IF_USAGE);
  if (at('{')) {
    copy_token();
    if (sequence() < 0) return -1;
    if (!at('}')) return fail(MES_BLOCK_ERROR);
    copy_token();
    return 0;
  }
  return plain();
}

// A statement runs to the next ";", closing bracket or `else`, stepping
// over balanced groups. It is wrapped in a group unless it is one already.
// Line tokens inside it move in front of it.
int Statements::plain() {
  size_t start = i, end = i;
  while (end < in.size() && in[end] != 0 && in[end] != C_END) {
    const word* t = &in[end];
    if (is_close(t) || oper_at(in, end, ';') || oper_at(in, end, O_ELSE)) break;
    if (is_open(t)) {
      end = g.end(end);
      continue;
    }
    // An interpreter command takes no "=", but for `func = "source"`.
    if (t[0] == C_COMMAND && t[1] < 200 && t[1] != KW_func && oper_at(in, next_token(in, end), '=')) {
      voir_mot(t[1]);
      voir_texte("=");
      return fail(MES_ILLEGAL);
    }
    end = next_token(in, end);
  }
  if (end == start) return fail(MES_SYNTAX_ERROR);
  for (size_t j = start; j < end; j = next_token(in, j))
    if (in[j] == C_LINE) emit2(out, C_LINE, c.line = in[j + 1]);
  bool one_group = is_open(&in[start]) && in[start + 1] == '(' && g.end(start) == end;
  if (!one_group) emit_oper(out, '(');
  for (size_t j = start; j < end; j = next_token(in, j))
    if (in[j] != C_LINE) out.insert(out.end(), in.begin() + j, in.begin() + next_token(in, j));
  if (!one_group) emit_oper(out, ')');
  i = end;
  return 0;
}

// The body of a control statement: a block whose braces become -1022 and
// -1023, or one statement with its ";" between the same two tokens.
int Statements::block_or_statement() {
  // The open token comes first: the link counts on it standing directly
  // behind a control head.
  emit_oper(out, O_OPEN);
  line_tokens();
  if (ended()) return fail(MES_SYNTAX_ERROR);
  if (at('{')) {
    i = next_token(in, i);
    if (sequence() < 0) return -1;
    if (!at('}')) return fail(MES_BLOCK_ERROR);
    i = next_token(in, i);
  } else {
    if (statement() < 0) return -1;
    if (at(';')) copy_token();
  }
  emit_oper(out, O_CLOSE);
  return 0;
}

// The parenthesised head after a control word: copied, its end returned.
int Statements::head(int message, size_t* end) {
  line_tokens();
  if (ended() || !at('(')) return fail(message);
  *end = g.end(i);
  if (*end >= in.size()) return fail(message);
  return 0;
}

int Statements::control_if() {
  i = next_token(in, i);
  size_t end = 0;
  if (head(45, &end) < 0) return -1;
  Tokens record{IF_WORDS, R_IF, 0, 0, 0};
  out.insert(out.end(), record.begin(), record.end());
  copy(i, end);
  i = end;
  if (block_or_statement() < 0) return -1;
  size_t look = i;
  while (look < in.size() && (in[look] == C_LINE || oper_at(in, look, ';'))) look = next_token(in, look);
  if (!oper_at(in, look, O_ELSE)) return 0;
  // The else token stands directly behind the body's close.
  i = look;
  copy_token();
  return block_or_statement();
}

int Statements::control_while() {
  i = next_token(in, i);
  size_t end = 0;
  if (head(47, &end) < 0) return -1;
  Tokens record{IF_WORDS, R_WHILE, 0, 0, 0};
  out.insert(out.end(), record.begin(), record.end());
  copy(i, end);
  i = end;
  return block_or_statement();
}

// Splits the contents [from, to) of a head at the top-level tokens `sep`.
std::vector<std::pair<size_t, size_t>> split_at(const Tokens& t, const Groupes& g, size_t from, size_t to,
                                                word sep) {
  std::vector<std::pair<size_t, size_t>> parts;
  size_t start = from;
  for (size_t j = from; j < to;) {
    if (is_open(&t[j])) {
      j = g.end(j);
      continue;
    }
    if (oper_at(t, j, sep)) {
      parts.push_back({start, j});
      start = next_token(t, j);
    }
    j = next_token(t, j);
  }
  parts.push_back({start, to});
  return parts;
}

void group(Tokens& out, const Tokens& in, std::pair<size_t, size_t> part) {
  emit_oper(out, '(');
  for (size_t j = part.first; j < part.second; j = next_token(in, j))
    if (in[j] != C_LINE) out.insert(out.end(), in.begin() + j, in.begin() + next_token(in, j));
  emit_oper(out, ')');
}

Tokens for_record(word tag_word, bool step) {
  Tokens r(FOR_WORDS, 0);
  r[0] = FOR_WORDS;
  r[1] = tag_word;
  r[FOR_STEP] = step ? 1 : 0;
  r[FOR_STEP_VALUE] = step ? 0 : fw(1.0f);
  return r;
}

// `for(i=a,b)` and `for(i=a,b,c)` count; `for(init;cond;inc)` is the
// other form. No other shape of head is accepted.
int Statements::control_for() {
  i = next_token(in, i);
  size_t end = 0;
  if (head(33, &end) < 0) return -1;
  size_t inner = next_token(in, i), close = end - 2;
  auto parts = split_at(in, g, inner, close, ';');
  if (parts.size() == 1) {
    auto terms = split_at(in, g, inner, close, ',');
    if (terms.size() < 2 || terms.size() > 3) return fail(MES_FOR_USAGE);
    emit_oper(out, O_FOR_START);
    Tokens r = for_record(R_FOR_COUNTED, terms.size() == 3);
    out.insert(out.end(), r.begin(), r.end());
    for (auto& term : terms) group(out, in, term);
  } else if (parts.size() == 3) {
    group(out, in, parts[0]);
    Tokens r = for_record(R_FOR_C, false);
    r[FOR_STEP] = r[FOR_STEP_VALUE] = 0;
    out.insert(out.end(), r.begin(), r.end());
    group(out, in, parts[1]);
    group(out, in, parts[2]);
  } else {
    return fail(MES_FOR_C_USAGE);
  }
  i = end;
  line_tokens();
  if (at(';')) return fail(MES_FOR_C_USAGE);
  return block_or_statement();
}

// `switch(e){...}`: a record of one entry per `case` and `default` of its
// block, plus a sentinel when there is no `default`, which must be last.
int Statements::control_switch() {
  i = next_token(in, i);
  size_t end = 0;
  if (head(58, &end) < 0) return -1;
  size_t body = end;
  while (body < in.size() && in[body] == C_LINE) body = next_token(in, body);
  if (!oper_at(in, body, '{')) return fail(MES_SWITCH_USAGE);
  size_t body_end = g.end(body);
  int markers = 0;
  bool has_default = false;
  for (size_t j = next_token(in, body); j + 2 < body_end;) {
    if (is_open(&in[j])) {
      j = g.end(j);
      continue;
    }
    if (in[j] == C_CASE || in[j] == C_DEFAULT) {
      if (has_default) return fail(MES_SWITCH_USAGE);
      has_default = in[j] == C_DEFAULT;
      markers++;
    }
    j = next_token(in, j);
  }
  int entries = markers + (has_default ? 0 : 1);
  int words = 3 + 2 * entries;
  // A record of 35 words would read as the end of the stream.
  if (words == 35) words = 36;
  Tokens r(static_cast<size_t>(words), 0);
  r[0] = words;
  r[1] = R_SWITCH;
  r[2] = entries;
  out.insert(out.end(), r.begin(), r.end());
  copy(i, end);
  i = end;
  return block_or_statement();
}

}  // namespace

int phase_statements(Compilation& c, const Tokens& in, Tokens& out) {
  out.clear();
  Statements s{c, in, out};
  while (!s.ended()) {
    if (s.at('}')) return s.fail(MES_BLOCK_ERROR);
    if (s.statement() < 0) return -1;
  }
  // The end of a function (its `return`) stays; END closes the phase.
  out.push_back(0);
  return c.failed ? -1 : 0;
}
