// `list` and `LIST`: the language's objects of one kind.
//   list func        the function names        LIST func    their sources
//   list var         the extern variables      LIST var     also the static
//                    with their values                      ones, "f.name"
//   list("define")   the #define names         LIST("define")  the macros
//                                                           and their texts
#include <cstring>
#include <string>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/functions.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "language/symbols.h"
#include "language/variables.h"

namespace {

// Functions are listed from their definition on, compiled or not; one
// named by a keyword is marked, since no call can reach it.
void list_functions(bool full) {
  for (const Objet* f = chaine_classe(KW_func)->next; f; f = f->next) {
    if (f->kind != KW_func || f->subkind != 0) continue;
    const char* src = source_of(f);
    const std::string name = f->name ? f->name : src ? function_name(src) : "";
    if (name.empty()) continue;
    if (full && src) VOIR_CHAR("%s\n", src);
    else if (nom_mot_cle(name.c_str())) VOIR_CHAR("%s (a keyword: never called)\n", name.c_str());
    else VOIR_CHAR("%s\n", name.c_str());
  }
}

void show_variable(const char* owner, const Objet* v) {
  if (owner) VOIR_CHAR("%s.", owner);
  VOIR_CHAR("%s = ", v->name);
  if (v->local) print_value(v->local);
  else voir_texte("NIL\n");
}

void list_variables(bool full) {
  for (const Objet* v = extern_table()->next; v; v = v->next)
    if (v->name) show_variable(nullptr, v);
  if (!full) return;
  for (const Objet* f = chaine_classe(KW_func)->next; f; f = f->next) {
    if (f->kind != KW_func || !f->name || !f->locals) continue;
    for (const Objet* v = f->locals->next; v; v = v->next)
      if (v->name && var_kind(v) == C_STATIC) show_variable(f->name, v);
  }
}

void list_defines(bool full) {
  const word* t = lang().defined_names;
  for (int i = 0; t && t[i] > 0; i += t[i]) {
    const char* name = reinterpret_cast<const char*>(t + i + 1);
    if (!full) {
      VOIR_CHAR("%s\n", name);
      continue;
    }
    const Symboles& m = lang().macros_globales;
    int k = m.table ? symb_find(&m, C_MACRO, name) : -1;
    const word* e = k >= 0 ? symb_entry(&m, k) : nullptr;
    VOIR_CHAR("%s ", name);
    VOIR_CHAR("%s\n", e ? symb_macro_text(e) : "");
  }
}

}  // namespace

int LIST_a(word* record, const word* limit) {
  (void)limit;
  bool full = first_item(record)[2] == KW_LIST;
  const char* what = value_text(command_argument(record));
  if (what && std::strcmp(what, "define") == 0) list_defines(full);
  else if (find_item(record, KW_func)) list_functions(full);
  else if (find_item(record, KW_var)) list_variables(full);
  else return 1;  // objects, or a usage report: the object store's list
  return build_nil(record);
}
