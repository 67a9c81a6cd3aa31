// Function headers, commands with special forms, and the declarations
// `extern`, `static` and `global`.
#include <cstdlib>
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "kernel/vocab.h"
#include "language/compile_walk.h"
#include "language/lang_state.h"
#include "language/lexer.h"
#include "language/variables.h"

namespace {

const char* skip_layout(const char* p) {
  for (;;) {
    if (*p == ' ' || *p == '\t' || *p == '\n' || *p == '\r' || *p == ';') p++;
    else if (*p == MARQUE_LIGNE || *p == MARQUE_ORIGINE) p = sauter_marque(p);
    else return p;
  }
}

char* copy_name(const char* w) {
  size_t n = strlen(w) + 1;
  char* s = static_cast<char*>(alloue_mem(n + 1));
  if (s) memcpy(s, w, n);
  return s;
}

constexpr float PI_FLOAT = 3.14159274f;

// A control record to be filled by the parenthesising and the link.
Tokens placeholder(int words, word tag_word) {
  Tokens r(static_cast<size_t>(words), 0);
  r[0] = words;
  r[1] = tag_word;
  return r;
}

}  // namespace

// ---- function header --------------------------------------------------------

int Walker::header() {
  p = skip_layout(p);
  char w[LONG_MOT];
  if (lire_mot(w, &p, LONG_MOT) <= 1) return fail(MES_FUNCTION_LIST_USAGE);
  int voc = 0, code = 0;
  if (chercher_commande(w, &voc, &code) >= 0 && strcmp(w, "menu") != 0) {
    VOIR_CHAR("%s", w);
    return fail(MES_IS_A_COMMAND);
  }
  libere_mem(c.obj->name);
  c.obj->name = copy_name(w);
  if (lang().listing > 0) {
    voir_mot(KW_func);
    VOIR_CHAR("%s\n", w);
  }
  p = sauter_blancs(p);
  if (*p != '(') return fail(MES_FUNCTION_LIST_USAGE);
  p++;
  for (;;) {
    p = skip_layout(p);
    if (*p == ')') break;
    if (*p == '+' || *p == '-') {
      VOIR_CHAR("%s", p);
      return fail(MES_ILLEGAL_NAME);
    }
    if (lire_mot(w, &p, LONG_MOT) <= 1) return fail(MES_FUNCTION_LIST_USAGE);
    Objet* v = var_create(locals_of(c.obj), C_FORMEL, w);
    if (!v || symb_add(c.sym, C_FORMEL, w, nullptr, v) < 0) return -1;
    c.obj->work[FN_FORMALS]++;
    p = sauter_blancs(p);
    if (*p == ',') {
      p++;
      continue;
    }
    if (*p != ')') return fail(MES_FUNCTION_LIST_USAGE);
  }
  p++;
  return formal_declarations();
}

// `func a,b;` and `address a,b;` between the formal list and the body.
int Walker::formal_declarations() {
  for (;;) {
    p = skip_layout(p);
    if (*p == '{' || !*p) return 0;
    char w[LONG_MOT];
    if (lire_mot(w, &p, LONG_MOT) <= 1) return fail(MES_FUNCTION_LIST_USAGE);
    bool is_func = strcmp(w, "func") == 0;
    if (!is_func && strcmp(w, "address") != 0) return fail(MES_FUNCTION_LIST_USAGE);
    while (*p && *p != ';' && *p != '{') {
      p = sauter_blancs(p);
      if (*p == ',') {
        p++;
        continue;
      }
      if (lire_mot(w, &p, LONG_MOT) <= 1) break;
      Objet* v = var_find(c.obj->locals, C_FORMEL, w);
      if (!v) v = var_find(c.obj->locals, C_TYPE_FUNC, w);
      if (!v) {
        voir_mot(KW_var);
        VOIR_CHAR("%s ", w);
        err_pas_trouve(nullptr);
        c.failed = true;
        return -1;
      }
      if (is_func) {
        v->kind = C_TYPE_FUNC;
      } else {
        v->subkind = C_AD_GLB;
        c.obj->work[FN_ADDRESS] = 1;
      }
    }
  }
}

// ---- commands -----------------------------------------------------------------

int Walker::command(int code) {
  switch (code) {
    case KW_break: emit(C_BREAK, 16); return 0;
    case KW_else: emit(C_OPER, O_ELSE); return 0;
    case KW_NIL: emit(C_NIL, 0); return 0;
    case KW_NL: emit(C_NL, 91); return 0;
    case KW_PI: emit(C_PI, fw(PI_FLOAT)); return 0;
    case KW_demo: {
      const char* save = p;
      char w[LONG_MOT];
      int voc = 0, next = 0;
      if (lire_mot(w, &p, LONG_MOT) > 1 && chercher_commande(w, &voc, &next) >= 0) {
        emit(C_DEMO, next);
        return 0;
      }
      p = save;
      emit(C_COMMAND, KW_demo);
      return 0;
    }
    case KW_goto: {
      p = sauter_blancs(p);
      emit(C_GOTO, atoi(p));
      while (isdigit(static_cast<unsigned char>(*p))) p++;
      return 0;
    }
    case KW_help:
    case KW_status: return keywords_to_end(code);
    case KW_extern:
    case KW_static:
    case KW_global:
      if (*sauter_blancs(p) == ';') break;
      return declaration(code);
    case KW_if: emit_record(placeholder(13, R_IF)); return 0;
    case KW_while: emit_record(placeholder(9, R_WHILE)); return 0;
    case KW_switch: emit_record(placeholder(3, R_SWITCH)); return 0;
    case KW_for:
      emit_record(placeholder(20, R_FOR));
      for_heads.push_back(paren + 1);
      return 0;
    default: break;
  }
  emit(C_COMMAND, code);
  return 0;
}

// `help` and `status` take bare keywords up to the end of the statement;
// an argument group in brackets is compiled as usual. `help` keeps the
// words that are no keywords, to report them.
int Walker::keywords_to_end(int code) {
  emit(C_COMMAND, code);
  for (;;) {
    p = sauter_blancs(p);
    if (!*p || *p == ';' || *p == '\n' || *p == '}' || *p == '(' || *p == MARQUE_LIGNE) return 0;
    char w[LONG_MOT];
    int voc = 0, kw = 0;
    if (lire_mot(w, &p, LONG_MOT) <= 1) {
      p++;
      continue;
    }
    if (chercher_commande(w, &voc, &kw) >= 0) {
      emit(C_COMMAND, kw);
    } else if (code == KW_help) {
      // A word that is none reaches `help` as help("word"), in its place.
      emit(C_COMMAND, KW_help);
      emit(C_OPER, '(');
      emit_text(w, T_CHAR);
      emit(C_OPER, ')');
    }
  }
}

// ---- declarations --------------------------------------------------------------

int Walker::declared_name(char* w) {
  p = sauter_blancs(p);
  if (*p == ',') p = sauter_blancs(p + 1);
  if (!*p || *p == ';' || *p == '\n' || *p == MARQUE_LIGNE) return 0;
  int n = lire_mot(w, &p, LONG_MOT);
  return n < 0 ? -1 : n > 1 ? 1 : 0;
}

void Walker::skip_statement() {
  while (*p && *p != ';') p++;
}

// End of an initial value: the next "," or ";" outside brackets.
const char* Walker::initial_text_end(const char* s) {
  int depth = 0;
  for (; *s; s++) {
    if (*s == '"') {
      for (s++; *s && *s != '"'; s++) {}
      if (!*s) return s;
    } else if (*s == '(' || *s == '[' || *s == '{') {
      depth++;
    } else if (*s == ')' || *s == ']' || *s == '}') {
      if (--depth < 0) return s;
    } else if (depth == 0 && (*s == ',' || *s == ';')) {
      return s;
    }
  }
  return s;
}

int Walker::declaration(int code) {
  Objet* table = code == KW_static ? locals_of(c.owner) : nullptr;
  if (code == KW_global) {
    Objet* root = lang().local_root ? lang().local_root(c.obj) : nullptr;
    if (!root) {
      voir_mot(KW_global);
      skip_statement();
      return fail(MES_IMPOSSIBLE);
    }
    table = locals_of(root);
  }
  char w[LONG_MOT];
  int n;
  while ((n = declared_name(w)) > 0) {
    int r = code == KW_extern ? declare_extern(w) : declare_static(w, table, code == KW_static ? C_STATIC : C_GLOBAL);
    if (r < 0) return -1;
  }
  if (n < 0) return -1;
  if (code != KW_extern) emit(C_COMMAND, KW_static);
  return 0;
}

int Walker::declare_extern(const char* w) {
  const char* after = sauter_blancs(p);
  if (*after == '=' || *after == '[') {
    voir_mot(KW_extern);
    voir_texte(" ; ");
    err_manque(nullptr);
    std::string rest;
    for (const char* s = after; *s && *s != '\n' && *s != MARQUE_LIGNE; s++) rest.push_back(*s);
    VOIR_CHAR("%s\n", rest.c_str());
    c.failed = true;
    return -1;
  }
  std::vector<Objet*>& list = lang().extern_list;
  if (static_cast<int>(list.size()) >= kernel().Dim_EXTERN) {
    voir_texte("TROP D'EXTERN\n");
    c.failed = true;
    return -1;
  }
  Objet* v = var_find(extern_table(), C_EXTERN, w);
  if (!v && !(v = var_create(extern_table(), C_EXTERN, w))) return -1;
  list.push_back(v);
  return 0;
}

int Walker::declare_static(const char* w, Objet* table, int kind) {
  Objet* v = var_find(table, kind, w);
  if (!v) {
    v = var_create(table, kind, w);
    if (!v || symb_add(c.sym, kind, w, nullptr, v) < 0) return -1;
  }
  p = sauter_blancs(p);
  bloc value = nullptr;
  if (*p == '=') {
    const char* start = p + 1;
    const char* end = initial_text_end(start);
    std::string init(start, static_cast<size_t>(end - start));
    p = end;
    if (lang().static_runner && lang().static_runner(init.c_str(), &value) < 0) {
      c.failed = true;
      return -1;
    }
  } else if (*p == '[') {
    int count = atoi(p + 1);
    const char* close = strchr(p, ']');
    p = close ? close + 1 : p + 1;
    if (count < 0) count = 0;
    value = alloue_bloc(4 + count);
    if (!value) return -1;
    build_zeros(value, nullptr, count);
  }
  if (!value) {
    value = alloue_bloc(4);
    if (!value) return -1;
    build_nil(value);
  }
  libere_valeur(v->local);
  libere_valeur(v->code);
  v->local = value;
  v->code = dup_bloc(value);  // kept so that `ini` can restore it
  return 0;
}

Objet* Walker::find_global(const char* w) {
  Objet* root = lang().local_root ? lang().local_root(c.obj) : nullptr;
  return root ? var_find(root->locals, C_GLOBAL, w) : nullptr;
}
