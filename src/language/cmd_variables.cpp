// Commands on the language's objects: `var` (reading variables by name),
// `rem` (variables, functions, macros), `name` and `dup func`.
#include <cctype>
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/functions.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "language/lexer.h"
#include "language/operators.h"
#include "language/prepare.h"
#include "language/variables.h"

namespace {

const char* text_arg(const word* item) { return value_text(item ? item_value(item) : nullptr); }

// "name " for each variable of the chain whose kind passes, as a CHAR
// whose count is the number of names.
int name_list(word* record, const Objet* head, int kind, const word* limit) {
  std::string names;
  int n = 0;
  for (const Objet* v = head ? head->next : nullptr; v; v = v->next)
    if (v->name && (kind == 0 || var_kind(v) == kind)) {
      names += v->name;
      names += ' ';
      n++;
    }
  if (build_text(record, limit, names.data(), names.size()) < 0) return -12;
  record[2] = n;
  return 0;
}

int copy_value(word* record, const Objet* v, const word* limit) {
  if (!v->local) return build_nil(record);
  return set_result(record, v->local, limit);
}

}  // namespace

int VAR_a(word* record, const word* limit) {
  word* func_item = find_item(record, KW_func);
  const char* wanted = text_arg(first_item(record));
  if (item_count(record) > 1) {
    word* second = next_item(first_item(record));
    if (second[2] == KW_var || second[2] == KW_name || second[2] == KW_rand || second[2] == KW_rem) return 1;
  }
  Objet* f = nullptr;
  if (func_item) {
    const char* fname = text_arg(func_item);
    f = fname ? get_fonction(fname) : nullptr;
    if (!f) {
      not_found(KW_func, fname ? fname : "");
      return -1;
    }
    if (!wanted) return f->locals ? name_list(record, f->locals, C_STATIC, limit) : build_nil(record);
    Objet* v = var_find(f->locals, 0, wanted);
    if (!v) {
      not_found(KW_var, wanted);
      return -1;
    }
    return copy_value(record, v, limit);
  }
  if (!wanted) return name_list(record, extern_table(), 0, limit);
  Objet* running = lang().running_function;
  Objet* v = running ? var_find(running->locals, 0, wanted) : nullptr;
  if (!v) v = var_find(extern_table(), 0, wanted);
  if (!v) {
    not_found(KW_extern, wanted);
    return -1;
  }
  return copy_value(record, v, limit);
}

namespace {

// Removes each variable of the list, printing "-name " when `edit` is on.
void remove_variables(const char* list) {
  char w[LONG_MOT];
  const char* p = list;
  while (lire_mot(w, &p, LONG_MOT) > 1) {
    for (Objet* v = var_find(extern_table(), 0, w); v; v = var_find(extern_table(), 0, w)) {
      if (Yes(KW_edit) != 0) VOIR_CHAR("-%s ", w);
      rem_objet(v);
    }
    while (*p == ',' || *p == ';') p++;
  }
  if (Yes(KW_edit) != 0) voir_texte("\n");
}

void remove_functions(const char* list) {
  char w[LONG_MOT];
  const char* p = list;
  while (lire_mot(w, &p, LONG_MOT) > 1) {
    for (Objet* f = get_fonction(w); f; f = get_fonction(w)) rem_objet(f);
    lang().comments.erase(w);  // a later function of that name starts bare
    while (*p == ',' || *p == ';') p++;
  }
  lang().link_state = 0;
}

// `rem STOP("name",num)`: that stopping point goes from the table.
int remove_stop(word* record, const word* item) {
  const word* v = item_value(item);
  const char* name = nullptr;
  int line = 0;
  if (v && tag(v) == T_HYBRIDE && np(v) >= 2) {
    const word* part = v + 4;
    if (tag(part) == T_CHAR) name = text(part);
    const word* num = part + item_words(part);
    if (tag(num) == T_FLOAT && np(num) > 0) line = entier(getf(num, 0));
  }
  if (!name || !*name || line == 0) {
    voir_mot(KW_rem);
    voir_mot(KW_STOP);
    voir_texte("\"nom\",num\a\n");
    return -1;
  }
  auto& table = stop_table();
  for (size_t i = 0; i < table.size(); i++)
    if (table[i].first == name && table[i].second == line) {
      table.erase(table.begin() + static_cast<long>(i));
      VOIR_CHAR("- %s", name);
      voir_int(",%d\n", line);
      break;
    }
  return build_nil(record);
}

}  // namespace

int REM_a(word* record, const word* limit) {
  (void)limit;
  word* first = first_item(record);
  const char* arg = text_arg(first);
  if (item_count(record) == 1 && arg && strcmp(arg, "define") == 0) {
    vider_noms_definis();
    symb_free(&lang().macros_globales);
    return build_nil(record);
  }
  if (item_count(record) < 2) return 1;
  word* second = next_item(first);
  if (second[1] != 0) return 1;  // a graphic object: the object store's rem
  switch (second[2]) {
    case KW_var:
      if (const char* list = text_arg(second)) remove_variables(list);
      else
        while (extern_table()->next) rem_objet(extern_table()->next);
      return build_nil(record);
    case KW_func:
      if (const char* list = text_arg(second)) remove_functions(list);
      return build_nil(record);
    case KW_STOP:
      return remove_stop(record, second);
    default:
      return 1;
  }
}

int NAME_a(word* record, const word* limit) {
  if (find_item(record, KW_func)) {
    Objet* f = lang().running_function;
    const char* n = f && f->name ? f->name : "main";
    return build_text(record, limit, n);
  }
  const char* s = text_arg(first_item(record));
  if (!s) return build_nil(record);
  // The root of a file name: the last extension cut, then trailing
  // digits and points.
  std::string root = s;
  size_t dot = root.rfind('.');
  if (dot != std::string::npos) root.resize(dot);
  while (!root.empty() && (isdigit(static_cast<unsigned char>(root.back())) || root.back() == '.')) root.pop_back();
  if (root.empty()) return build_nil(record);
  return build_text(record, limit, root.data(), root.size());
}

int DUP_a(word* record, const word* limit) {
  (void)limit;
  word* func_item = find_item(record, KW_func);
  if (!func_item) return 1;
  const char* names = text_arg(func_item);
  char from[LONG_MOT], to[LONG_MOT];
  const char* p = names;
  if (!names || lire_mot(from, &p, LONG_MOT) <= 1 || (p = sauter_blancs(p), *p == ',' ? p++ : p, lire_mot(to, &p, LONG_MOT) <= 1)) {
    voir_message(0, MES_DUP_FUNC_USAGE);
    return -1;
  }
  Objet* f = get_fonction(from);
  if (!f || !source_of(f)) {
    not_found(KW_func, from);
    return -1;
  }
  const char* src = source_of(f);
  std::string copy = std::string(to) + (src + strcspn(src, "("));
  if (!define_function(copy.c_str())) return -1;
  return build_nil(record);
}
