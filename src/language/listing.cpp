// The listing of compiled code: source-like text at level 1, the kinds of
// variable tokens at level 2; after the link, jumps with their target's
// word index and control records with their offsets.
#include <string>

#include "kernel/handles.h"
#include "kernel/report.h"
#include "language/code.h"
#include "language/compile.h"

namespace {

const char* operator_text(word code) {
  switch (code) {
    case O_EQ: return "==";
    case O_NE: return "!=";
    case O_LE: return "<=";
    case O_GE: return ">=";
    case O_AND: return "&&";
    case O_OR: return "||";
    case O_TILDE: return "~";
    case O_XOR_SET: return "^=";
    case O_SHL: return "<<";
    case O_SHR: return ">>";
    case O_SUB_SET: return "-=";
    case O_MUL_SET: return "*=";
    case O_DIV_SET: return "/=";
    case O_MOD_SET: return "%=";
    case O_SHL_SET: return "<<=";
    case O_SHR_SET: return ">>=";
    case O_AND_SET: return "&=";
    case O_OR_SET: return "|=";
    case O_LIST_SET: return ",=";
    case O_ADD_SET: return "+=";
    case O_INC: return "++";
    case O_DEC: return "--";
    case O_NOP: return "NOP ";
    case O_OPEN: return "{ ";
    case O_CLOSE: return "} ";
    case O_FOR_START: return "";
    case O_ELSE: return "else ";
    default: return nullptr;
  }
}

const char* var_name(word handle) {
  Objet* v = handle_objet(handle);
  return v && v->name ? v->name : "?";
}

const char* symbol_name(const word* table, int ordinal) {
  if (!table) return "?";
  for (int i = 0; *table; table += table[0], i++)
    if (i == ordinal) return reinterpret_cast<const char*>(table + 5);
  return "?";
}

// A variable token: its name, with its kind at level 2.
void variable(const word* t, int level) {
  const char* prefix = "";
  if (level >= 2) {
    switch (t[0]) {
      case C_FORMEL: prefix = "FORMEL_"; break;
      case C_AD_STATIC: prefix = "AD_STATIC_"; break;
      case C_AD_LOC: prefix = "AD_LOC_"; break;
      case C_AD_GLB: prefix = "AD_GLB_"; break;
      case C_TYPE_FUNC: prefix = "TYPE_FUNC_"; break;
      case C_AUTO: prefix = "AUTO_"; break;
      case C_STATIC: prefix = "STATIC_"; break;
      case C_EXTERN: prefix = "EXTERN_"; break;
      case C_GLOBAL: prefix = "GLOBAL_"; break;
      default: break;
    }
  }
  VOIR_CHAR("%s", prefix);
  VOIR_CHAR("%s ", var_name(t[1]));
}

void call(const word* r, const word* table, int level) {
  const char* name = symbol_name(table, r[4]);
  if (level >= 2) {
    if (r[1] == R_UNDEFINED) VOIR_CHAR("UNDEFINED_%s", name);
    else if (r[1] == R_CODE_FUNC) VOIR_CHAR("CODE_FUNC_%s", name);
    else VOIR_CHAR("FUNC_DISK_%s", name);
    voir_int("[%d]", r[3]);
  } else {
    VOIR_CHAR("%s", name);
  }
}

const char* control_name(word tag_word) {
  switch (tag_word) {
    case R_IF: case R_IF_LINKED: return "if";
    case R_WHILE: return "while";
    case R_FOR: case R_FOR_COUNTED: case R_FOR_COUNTED_LINKED: case R_FOR_C: case R_FOR_C_LINKED:
      return "for";
    case R_SWITCH: case R_SWITCH_LINKED: return "switch";
    default: return nullptr;
  }
}

void control(const word* r, bool linked) {
  VOIR_CHAR("%s", control_name(r[1]));
  if (!linked) {
    voir_texte(" ");
    return;
  }
  voir_texte("[");
  int last = r[1] == R_SWITCH_LINKED ? r[0] : (r[1] == R_IF_LINKED ? IF_WORDS : FOR_AFTER + 1);
  for (int i = 2; i < last && i < r[0]; i++) voir_int(i > 2 ? ",%d" : "%d", r[i]);
  voir_texte("] ");
}

void record(const word* r, const word* table, int level, bool linked) {
  switch (r[1]) {
    case T_CHAR: VOIR_CHAR("\"%s\" ", reinterpret_cast<const char*>(r + 4)); return;
    case C_TYPE_FUNC: VOIR_CHAR("TYPE_FUNC_\"%s\" ", reinterpret_cast<const char*>(r + 4)); return;
    case T_FLOAT:
      voir_texte("'");
      for (int i = 0; i < r[2]; i++) voir_float(i ? ",%g" : "%g", wf(r[4 + i]));
      voir_texte("' ");
      return;
    case R_UNDEFINED: case R_CODE_FUNC: case R_FUNC_DISK: call(r, table, level); return;
    case R_ORIGIN: VOIR_CHAR("fonc(%s)", reinterpret_cast<const char*>(r + 2)); return;
    default: break;
  }
  if (control_name(r[1])) control(r, linked);
}

void token(const word* t, const word* stream, const word* table, int level, bool linked) {
  if (t[0] > 0) {
    record(t, table, level, linked);
    return;
  }
  switch (t[0]) {
    case C_OPER: {
      const char* s = operator_text(t[1]);
      if (s) VOIR_CHAR("%s", s);
      else voir_car(t[1]);
      return;
    }
    case T_FLOAT: voir_float("%f ", wf(t[1])); return;
    case C_COMMAND: voir_mot(t[1]); return;
    case C_LINE: voir_int("\n line %d\n", t[1]); return;
    case C_LABEL: voir_int("ETIQUETTE %d:", t[1]); return;
    case C_GOTO: voir_int("goto E%d ", t[1]); return;
    case C_JUMP: voir_int("goto %d ", static_cast<int>(t - stream) + t[1]); return;
    case C_BREAK: voir_texte("break "); return;
    case C_CASE: voir_float("case %g ", wf(t[1])); return;
    case C_DEFAULT: voir_texte("default: "); return;
    case C_DEMO: voir_texte("demo "); voir_mot(t[1]); return;
    case C_NIL: voir_texte("NIL "); return;
    case C_PI: voir_texte("PI "); return;
    case C_NL: voir_texte("NL "); return;
    case C_END: voir_texte("END"); return;
    default: variable(t, level); return;
  }
}

}  // namespace

void lister_code(const word* stream, const word* table, int level, bool linked) {
  for (const word* t = stream; !stream_end(t); t += token_len(t)) token(t, stream, table, level, linked);
  voir_texte("\n");
}
