// The compiler's walk over prepared text: one lexical item at a time
// becomes a token, names are resolved to variables, calls and commands,
// and the bracket counters are kept.
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/compile.h"
#include "language/compile_internal.h"
#include "language/compile_walk.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "language/lexer.h"
#include "language/variables.h"
#include "kernel/translate.h"

namespace {

bool blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

Walker::Walker(Compilation& comp, const char* text, Tokens& tokens) : c(comp), p(text), out(tokens) {}

// ---- tokens -------------------------------------------------------------

void Walker::emit(word a, word b) {
  prev = out.size();
  emit2(out, a, b);
}

void Walker::emit_record(const Tokens& r) {
  prev = out.size();
  out.insert(out.end(), r.begin(), r.end());
}

// The previous token, or null at the start of the stream.
const word* Walker::previous() const { return prev == NONE ? nullptr : &out[prev]; }

// Start of an expression: nothing before, a statement boundary, or an
// operator other than a closing bracket.
bool Walker::operand_expected() const {
  const word* t = previous();
  if (!t || t[0] == C_LINE || t[0] == C_LABEL || t[0] == C_CASE || t[0] == C_DEFAULT) return true;
  if (t[0] != C_OPER) return false;
  return t[1] != ')' && t[1] != ']' && t[1] != '}';
}

int Walker::fail(int message) {
  compile_error(c, message);
  return -1;
}

// ---- lexical items --------------------------------------------------------

int Walker::number() {
  const char* s = p;
  float v = 0;
  if (s[0] == '0' && s[1] != '.') {
    // Accumulated in double, which holds every integer a float can tell
    // apart and cannot overflow short of infinity, whatever the length.
    double acc = 0;
    const char* q = s + 1;
    if (*q == 'x' || *q == 'X') {
      for (q++; isxdigit(static_cast<unsigned char>(*q)); q++)
        acc = acc * 16 + (isdigit(static_cast<unsigned char>(*q)) ? *q - '0' : (tolower(*q) - 'a' + 10));
    } else {
      // Octal, the digits 8 and 9 accepted as they come.
      for (; isdigit(static_cast<unsigned char>(*q)); q++) acc = acc * 8 + (*q - '0');
    }
    v = static_cast<float>(acc);
    p = q;
  } else {
    v = strtof(s, nullptr);
    // The cursor moves by the word rule, which stops at a sign: the
    // exponent's sign starts a new token.
    p = sauter_mot(s);
    if (p == s) p++;
  }
  emit(T_FLOAT, fw(v));
  return 0;
}

int Walker::string() {
  const char* s = p + 1;
  std::string body;
  while (*s && *s != '"') {
    body.push_back(*s == 1 ? '"' : *s);
    s++;
  }
  if (!*s) return fail(MES_INCOMPLETE_STRING);
  p = s + 1;
  if (translation_state() == 2 && Yes(KW_generate) >= 0) body = translate_text(body.c_str(), 0, body.size() * 10 + 1000);
  // A string given to a function that takes functions names one.
  emit_text(body, last_call_takes_name ? static_cast<word>(C_TYPE_FUNC) : static_cast<word>(T_CHAR));
  return 0;
}

void Walker::emit_text(const std::string& body, word tag_word) {
  int words = static_cast<int>(body.size() / 4 + 5);
  Tokens r(static_cast<size_t>(words), 0);
  r[0] = words;
  r[1] = tag_word;
  r[2] = 1;
  r[3] = static_cast<word>(body.size());
  memcpy(reinterpret_cast<char*>(&r[4]), body.data(), body.size());
  emit_record(r);
}

int Walker::quoted() {
  const char* s = p + 1;
  Tokens values;
  while (*s && *s != '\'' && *s != '\n') {
    char ch = *s++;
    if (ch == '\\' && *s) {
      ch = *s++;
      if (ch == 'n') ch = '\n';
      else if (ch == 't') ch = '\t';
    }
    values.push_back(fw(static_cast<float>(static_cast<unsigned char>(ch))));
  }
  p = *s == '\'' ? s + 1 : s;
  Tokens r{static_cast<word>(4 + values.size()), T_FLOAT, static_cast<word>(values.size()), 1};
  r.insert(r.end(), values.begin(), values.end());
  emit_record(r);
  return 0;
}

int Walker::line_mark() {
  c.line = numero_ligne(p);
  p = sauter_marque(p);
  emit(C_LINE, c.line);
  return 0;
}

int Walker::origin_mark() {
  const char* name = p + 1;
  size_t n = 0;
  while (n < 78 && name[n] && name[n] != ' ' && name[n] != '\t' && name[n] != '(') n++;
  p = sauter_marque(p);
  int words = static_cast<int>(n / 4 + 3);
  Tokens r(static_cast<size_t>(words), 0);
  r[0] = words;
  r[1] = R_ORIGIN;
  memcpy(reinterpret_cast<char*>(&r[2]), name, n);
  emit_record(r);
  return 0;
}

// A case marker ":" from the source rewrite: a constant goes into the
// token, an expression follows it; "::" is `default`.
int Walker::case_marker() {
  if (p[1] == ':') {
    p += 2;
    emit(C_DEFAULT, 27);
    return 0;
  }
  const char* s = sauter_blancs(p + 1);
  if (*s == '\'') {
    // A character's code stored as an integer: such a case never equals
    // a float value, and that is kept.
    int code = static_cast<unsigned char>(s[1]);
    if (s[1] == '\\' && s[2]) code = s[2] == 'n' ? '\n' : s[2] == 't' ? '\t' : static_cast<unsigned char>(s[2]);
    const char* q = strchr(s + 1, '\'');
    p = q ? q + 1 : s + 1;
    emit(C_CASE, code);
    return 0;
  }
  if (isdigit(static_cast<unsigned char>(*s)) || *s == '-' || *s == '.') {
    char* end = nullptr;
    float v = strtof(s, &end);
    p = end && end != s ? end : s + 1;
    emit(C_CASE, fw(v));
    return 0;
  }
  p = s;
  emit(C_CASE, 0);
  return 0;
}

// Operators of two and three characters, then single ones.
int Walker::oper() {
  static const struct { const char* text; word code; } LONG_OPS[] = {
      {"<<=", O_SHL_SET}, {">>=", O_SHR_SET}, {"==", O_EQ},      {"!=", O_NE},      {"<=", O_LE},
      {">=", O_GE},       {"&&", O_AND},      {"||", O_OR},      {"<<", O_SHL},     {">>", O_SHR},
      {"^=", O_XOR_SET},  {"-=", O_SUB_SET},  {"*=", O_MUL_SET}, {"/=", O_DIV_SET}, {"%=", O_MOD_SET},
      {"&=", O_AND_SET},  {"|=", O_OR_SET},   {",=", O_LIST_SET}, {"+=", O_ADD_SET}, {"++", O_INC},
      {"--", O_DEC}};
  for (const auto& op : LONG_OPS) {
    size_t n = strlen(op.text);
    if (strncmp(p, op.text, n) == 0) {
      p += n;
      if (op.code == O_LIST_SET && comma_misplaced()) return -1;
      emit(C_OPER, op.code);
      return 0;
    }
  }
  char ch = *p++;
  switch (ch) {
    case '~': emit(C_OPER, O_TILDE); return 0;
    case '-':
      if (operand_expected()) emit(T_FLOAT, fw(0.0f));
      emit(C_OPER, '-');
      return 0;
    case ',':
      if (comma_misplaced()) return -1;
      emit(C_OPER, ',');
      return 0;
    default:
      emit(C_OPER, static_cast<unsigned char>(ch));
      return 0;
  }
}

// A "," directly after an operator, an opening bracket, ";" or a line
// mark is refused.
bool Walker::comma_misplaced() {
  const word* t = previous();
  bool bad = !t || t[0] == C_LINE || (t[0] == C_OPER && t[1] != ')' && t[1] != ']' && t[1] != '}');
  if (!bad) return false;
  char two[3] = {t && t[0] == C_OPER && t[1] > 0 && t[1] < 128 ? static_cast<char>(t[1]) : ' ', ',', 0};
  VOIR_CHAR("%s", two);
  fail(MES_ILLEGAL);
  return true;
}

// ---- brackets ---------------------------------------------------------------

int Walker::bracket_error() {
  // The text names the kind of bracket whose counter is not at 0.
  if (paren != 0) return fail(MES_PARENTHESIS_ERROR);
  return fail(MES_HOOK_ERROR);
}

int Walker::open_bracket(char ch) {
  p++;
  if (ch == '(') paren++;
  else if (ch == '[') square++;
  else {
    brace++;
    if (brace == 1) {
      header_done = true;
      return 0;
    }
  }
  emit(C_OPER, ch);
  return 0;
}

// Returns 1 at the closing brace of depth 1: the end of the text.
int Walker::close_bracket(char ch) {
  p++;
  if (ch == ')') {
    if (--paren < 0) return bracket_error();
    while (!for_heads.empty() && paren < for_heads.back()) for_heads.pop_back();
  } else if (ch == ']') {
    if (--square < 0) {
      square = 0;
      return fail(MES_HOOK_ERROR);
    }
  } else {
    if (brace <= 0) return fail(MES_BLOCK_ERROR);
    if (--brace == 0) return 1;
  }
  emit(C_OPER, ch);
  return 0;
}

int Walker::semicolon() {
  p++;
  if (square > 0) return fail(MES_HOOK_ERROR);
  bool in_for_head = !for_heads.empty() && paren == for_heads.back();
  if (paren > 0 && !in_for_head) return fail(MES_PARENTHESIS_ERROR);
  last_call_takes_name = false;
  emit(C_OPER, ';');
  return 0;
}

// ---- names ------------------------------------------------------------------

// "E<n>" directly followed by a single ":" is a label of the rewrite.
bool Walker::label(const char* w) {
  if (w[0] != 'E' || !w[1] || *p != ':' || p[1] == ':') return false;
  for (const char* d = w + 1; *d; d++)
    if (!isdigit(static_cast<unsigned char>(*d))) return false;
  p++;
  emit(C_LABEL, atoi(w + 1));
  return true;
}

int Walker::name() {
  char w[LONG_MOT];
  const char* start = p;
  int n = lire_mot(w, &p, LONG_MOT);
  if (n < 0) return -1;
  if (n <= 1) {
    // Nothing a word can start with: take the byte as an operator.
    p = start + 1;
    emit(C_OPER, static_cast<unsigned char>(*start));
    return 0;
  }
  if (label(w)) return 0;
  int voc = 0, code = 0;
  if (chercher_commande(w, &voc, &code) >= 0) return command(code);
  const char* after = sauter_blancs(p);
  if (*after == '(') return call(w);
  return variable(w);
}

int Walker::call(const char* w) {
  Objet* formal = var_find(c.obj->locals, C_TYPE_FUNC, w);
  last_call_takes_name = false;
  if (formal) {
    emit(C_TYPE_FUNC, objet_handle(formal));
    return 0;
  }
  int ordinal = symb_find(c.sym, C_FORMEL, w);
  if (ordinal < 0) ordinal = symb_find(c.sym, R_UNDEFINED, w);
  if (ordinal < 0) ordinal = symb_add(c.sym, R_UNDEFINED, w);
  if (ordinal < 0) return -1;
  Objet* f = get_fonction(w);
  last_call_takes_name = f && var_find(f->locals, C_TYPE_FUNC, nullptr) != nullptr;
  emit_record({CALL_WORDS, R_UNDEFINED, ordinal, 0, ordinal});
  return 0;
}

// The eight steps of variable resolution.
int Walker::variable(const char* w) {
  bool address = pending_address;
  pending_address = false;
  Objet* owner = c.owner;
  Objet* running = lang().running_function;
  Objet* v = nullptr;
  if ((v = var_find(owner->locals, C_FORMEL, w)) || (v = var_find(owner->locals, C_TYPE_FUNC, w)))
    return var_token(C_FORMEL, v);
  if ((v = var_find(owner->locals, C_STATIC, w))) return var_token(address ? C_AD_STATIC : C_STATIC, v);
  if (c.obj->kind == KIND_LOCAL && (v = find_global(w))) return var_token(C_GLOBAL, v);
  if (c.console && running && (v = var_find(extern_table(), C_EXTERN, w)))
    return var_token(address ? C_AD_GLB : C_EXTERN, v);
  for (Objet* e : lang().extern_list)
    if (e->name && strcmp(e->name, w) == 0) return var_token(address ? C_AD_GLB : C_EXTERN, e);
  if (c.console && !running) {
    v = var_find(extern_table(), C_EXTERN, w);
    if (!v && !(v = var_create(extern_table(), C_EXTERN, w))) return -1;
    return var_token(address ? C_AD_GLB : C_EXTERN, v);
  }
  if (c.console && running && (v = var_find(running->locals, C_AUTO, w)))
    return var_token(address ? C_AD_LOC : C_AUTO, v);
  v = var_find(owner->locals, C_AUTO, w);
  if (!v) {
    v = var_create(locals_of(owner), C_AUTO, w);
    if (!v || symb_add(c.sym, C_AUTO, w, nullptr, v) < 0) return -1;
  }
  return var_token(C_AUTO, v);
}

int Walker::var_token(word kind, Objet* v) {
  emit(kind, objet_handle(v));
  return 0;
}

// ---- the walk -----------------------------------------------------------------

int Walker::item() {
  unsigned char ch = static_cast<unsigned char>(*p);
  bool after_blank = false;
  while (blank(static_cast<char>(ch))) {
    ch = static_cast<unsigned char>(*++p);
    after_blank = true;
  }
  if (!ch) return 1;
  if (ch == MARQUE_LIGNE) return line_mark();
  if (ch == MARQUE_ORIGINE) return origin_mark();
  if (isdigit(ch) || (ch == '.' && isdigit(static_cast<unsigned char>(p[1])))) return number();
  switch (ch) {
    case '"': return string();
    case '\'': return quoted();
    case '(': case '[': case '{': return open_bracket(static_cast<char>(ch));
    case ')': case ']': case '}': return close_bracket(static_cast<char>(ch));
    case ';': return semicolon();
    case ':': return case_marker();
    case '$':
      p++;
      emit(C_COMMAND, KW_print);
      return 0;
    case '@':
      p++;
      // Directly at the cursor "@" is an operator; after blanks it asks
      // for the address of the next name.
      if (after_blank || prev == NONE) pending_address = true;
      else emit(C_OPER, O_ADDRESS);
      return 0;
    default:
      break;
  }
  if (strchr("!#%&*+,-/<=>^|~", static_cast<char>(ch))) return oper();
  return name();
}

int Walker::run() {
  for (;;) {
    int r = item();
    if (r < 0 || c.failed) return -1;
    if (r == 1) break;
  }
  if (brace != 0) return fail(MES_BLOCK_ERROR);
  if (paren != 0) return fail(MES_PARENTHESIS_ERROR);
  if (square != 0) return fail(MES_HOOK_ERROR);
  return 0;
}

int compile_walk(Compilation& c, const char* text, Tokens& out) {
  Walker w(c, text, out);
  if ((c.obj->kind == KIND_FUNC || c.obj->kind == KIND_LOCAL) && w.header() < 0) return -1;
  if (w.run() < 0) return -1;
  // The text always ends with a ";", then `return` for a function.
  if (!(out.size() >= 2 && out[out.size() - 2] == C_OPER && out.back() == ';')) emit_oper(out, ';');
  if (c.obj->kind == KIND_FUNC) emit2(out, C_COMMAND, KW_return);
  else emit2(out, C_END, 0);
  out.push_back(0);
  return 0;
}
