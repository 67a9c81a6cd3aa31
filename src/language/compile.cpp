// a_compile: source preparation, the walk, the parenthesising, and the
// final code bloc with its symbol table behind the tokens.
#include "language/compile.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/exceptions.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "kernel/values.h"
#include "language/compile_internal.h"
#include "language/compile_phases.h"
#include "language/lang_state.h"
#include "language/prepare.h"
#include "language/variables.h"

namespace {

constexpr int HEADER_RESERVE = 120;  // words kept behind the prepared text
constexpr int MAX_DIM_COM = 1 << 28;

// The work buffer of the first pass, doubled until the text fits.
bloc prepare(Objet* obj) {
  LanguageState& L = lang();
  const char* src = text(obj->local);
  int wanted = static_cast<int>(strlen(src) / 4) * 10;
  if (L.Dim_com < wanted) L.Dim_com = wanted;
  for (;;) {
    bloc work = alloue_bloc(L.Dim_com);
    if (!work) return nullptr;
    int status = 0;
    int r = compile_passe_1(obj, work, work + L.Dim_com - HEADER_RESERVE, &status);
    if (r >= 0) return work;
    libere_bloc(work);
    if (status != -1) return nullptr;
    if (L.Dim_com >= MAX_DIM_COM) {
      err_debordement("a_compile()");
      return nullptr;
    }
    L.Dim_com *= 2;
    if (Yes(KW_edit) > 1) err_realloc(nullptr, L.Dim_com);
  }
}

bool is_console(const Objet* obj) { return obj->kind == KIND_CONSOLE || tag(obj->local) == T_CODE; }

int count_variables(const Symboles& sym) {
  int n = 0;
  for (int i = 0; i < sym.count; i++) {
    word k = symb_kind(symb_entry(&sym, i));
    if (k == -53 || k == C_FORMEL || k == C_STATIC || k == -14) n++;
  }
  return n;
}

// The final bloc: header, tokens, then the table's size and the table.
bloc final_code(const Tokens& tokens, const Symboles& sym) {
  int code_words = CODE_HEAD + static_cast<int>(tokens.size());
  int table_words = sym.used + 1;
  bloc b = alloue_bloc(code_words + 1 + table_words);
  if (!b) return nullptr;
  build_head(b, code_words, T_COMPILED, count_variables(sym), 0);
  memcpy(b + CODE_HEAD, tokens.data(), tokens.size() * sizeof(word));
  b[code_words] = table_words;
  if (sym.table) memcpy(b + code_words + 1, sym.table, static_cast<size_t>(table_words) * sizeof(word));
  else b[code_words + 1] = 0;
  return b;
}

int compile_object(Objet* obj, Symboles& sym) {
  LanguageState& L = lang();
  bloc work = prepare(obj);
  if (!work) return -1;
  const char* t = reinterpret_cast<const char*>(work + 4);
  if (static_cast<unsigned char>(*t) == kernel().esc) t++;
  Compilation c;
  c.obj = obj;
  c.console = is_console(obj);
  // A console text typed while a function runs sees that function's
  // variables; a function always owns its own.
  c.owner = c.console && L.running_function ? L.running_function : obj;
  c.sym = &sym;
  Tokens tokens;
  tokens.reserve(1024);
  emit2(tokens, C_LINE, 0);
  int r = compile_walk(c, t, tokens);
  libere_bloc(work);
  if (r < 0 || c.failed) return -1;
  if (Yes(KW_compile) < 2) {
    if (set_parenthese(c, tokens) < 0) return -1;
    if (L.listing > 0) lister_code(tokens.data(), sym.table, L.listing, false);
    remove_redundant(tokens);
  }
  bloc code = final_code(tokens, sym);
  if (!code) return -1;
  libere_bloc(obj->code);
  obj->code = code;
  if (obj->kind == KIND_FUNC) objet_numero(obj, ++L.function_serial);
  return 0;
}

}  // namespace

bool remove_redundant_once(Tokens& code);

int set_parenthese(Compilation& c, Tokens& code) {
  Tokens other;
  other.reserve(code.size() * 2);
  if (phase_statements(c, code, other) < 0) return -1;
  if (phase_arguments(c, other, code) < 0) return -1;
  if (phase_precedence(c, code, other) < 0) return -1;
  code.swap(other);
  return 0;
}

void remove_redundant(Tokens& code) {
  while (remove_redundant_once(code)) {}
}

// One sweep: returns true when pairs were removed.
bool remove_redundant_once(Tokens& code) {
  bool changed = false;
  // Removing a pair moves no other bracket: the ends found first hold.
  const Groupes g(code);
  for (size_t i = 0; i < code.size() && code[i] != 0; i = next_token(code, i)) {
    if (!oper_at(code, i, '(') || !oper_at(code, i + 2, '(')) continue;
    size_t outer = g.end(i), inner = g.end(i + 2);
    if (outer == inner + 2) {
      code[i + 1] = O_NOP;
      code[outer - 1] = O_NOP;
      changed = true;
    }
  }
  if (!changed) return false;
  Tokens squeezed;
  squeezed.reserve(code.size());
  for (size_t i = 0; i < code.size();) {
    if (code[i] == 0) {
      squeezed.push_back(0);
      break;
    }
    size_t n = next_token(code, i);
    if (!oper_at(code, i, O_NOP)) squeezed.insert(squeezed.end(), code.begin() + i, code.begin() + n);
    i = n;
  }
  code.swap(squeezed);
  return true;
}

int a_compile(Objet* obj) {
  if (!obj || !obj->local || size(obj->local) < 5) {
    if (obj && obj->name) VOIR_CHAR("%s: ", obj->name);
    err_vide(nullptr, obj);
    return -1;
  }
  // With `no compile` functions are left uncompiled; console texts still
  // compile, or the switch could never be turned back on.
  if (Yes(KW_compile) < 1 && !is_console(obj)) {
    err_compile_off(obj->name);
    return -1;
  }
  LanguageState& L = lang();
  if (obj->locals && !is_console(obj)) {
    rem_chaine_privee(obj->locals);
    obj->locals = nullptr;
  }
  L.extern_list.clear();
  obj->work[FN_FORMALS] = 0;
  obj->work[FN_FAIL_LINE] = 0;
  obj->work[FN_ADDRESS] = 0;
  obj->work[FN_REFERENCES] = 0;
  Symboles sym;
  if (symb_ini(&sym, 1024) < 0) return -1;
  int r = sans_exception([&] { return compile_object(obj, sym); });
  symb_free(&sym);
  if (r < 0) {
    libere_bloc(obj->code);
    obj->code = nullptr;
    TRACE_FAIL("a_compile()");
  }
  if (obj->kind == KIND_FUNC) L.compile_failed = r < 0 ? -1 : 0;
  return r;
}
