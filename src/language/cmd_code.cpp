// Commands about code: compile, link, debug listings, exec.
#include <cstring>
#include <string>
#include <vector>

#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/commands.h"
#include "language/compile.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/functions.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "language/lexer.h"
#include "language/operators.h"
#include "language/variables.h"
#include "platform/process.h"

namespace {

// Runs `action` on each function named in `names` (read word by word);
// unknown names are passed over.
template <class F>
int each_named(const char* names, F action) {
  int r = 0;
  char w[LONG_MOT];
  const char* p = names;
  while (lire_mot(w, &p, LONG_MOT) > 1) {
    Objet* f = get_fonction(w);
    if (f && action(f) < 0) r = -1;
    while (*p == ',' || *p == ';') p++;
  }
  return r;
}

// `compile message(text)`: each "(...)" or "[...]" group of the text is
// run and replaced by its value's text.
int compile_message(word* record, const char* source, const word* limit) {
  constexpr size_t CAPACITY = 10000;
  std::string out;
  for (const char* p = source; *p;) {
    if (*p != '(' && *p != '[') {
      out.push_back(*p++);
    } else {
      int depth = 0;
      const char* q = p;
      for (; *q; q++) {
        if (*q == '(' || *q == '[') depth++;
        else if ((*q == ')' || *q == ']') && --depth == 0) break;
      }
      std::string expr(p, static_cast<size_t>((*q ? q + 1 : q) - p));
      p = *q ? q + 1 : q;
      std::vector<word> value;
      if (executer_texte(expr.c_str(), value) < 0) return -1;
      const word* v = value.data();
      if (!v || tag(v) == T_NIL) {
        out += "NIL";
      } else if (tag(v) == T_FLOAT) {
        for (int i = 0; i < elements(v); i++) {
          char buf[32];
          snprintf(buf, sizeof buf, i ? ",%g" : "%g", static_cast<double>(getf(v, i)));
          out += buf;
        }
      } else if (tag(v) == T_CHAR) {
        out += text(v);
      }
    }
    if (out.size() >= CAPACITY) {
      voir_int("%d", static_cast<int>(CAPACITY));
      err_debordement(nullptr);
      return -1;
    }
  }
  return build_text(record, limit, out.data(), out.size());
}

void separator() { voir_texte("===========================\n"); }

// Lists the objects of a chain, with their values when `edit` is given.
void list_chain(const Objet* head, const char* title, bool values) {
  separator();
  voir_texte(title);
  voir_texte("\n");
  for (const Objet* o = head ? head->next : nullptr; o; o = o->next) {
    const char* src = source_of(o);
    if (o->kind == KW_func && src) {
      std::string name(src, strcspn(src, "("));
      VOIR_CHAR("%s\n", name.c_str());
      if (values) VOIR_CHAR("%s\n", src);
      continue;
    }
    VOIR_CHAR("%s", o->name ? o->name : "");
    if (values && o->local && o->local[0] > 0) {
      voir_texte(" = ");
      print_value(o->local);
    } else {
      voir_texte("\n");
    }
  }
}

}  // namespace

int COMPILE_a(word* record, const word* limit) {
  if (const char* msg = arg_text(record, KW_message)) return compile_message(record, msg, limit);
  if (const char* names = arg_text(record, KW_func)) {
    each_named(names, [](Objet* f) { return a_compile(f); });
    return build_nil(record);
  }
  float level = 0;
  if (floats_of(command_argument(record), &level, 1)) {
    lang().listing = entier(level);
    return build_nil(record);
  }
  if (Yes(KW_compile) < 1) {
    err_compile_off(nullptr);
    return -1;
  }
  compiler_tout();
  return build_nil(record);
}

int LINK_a(word* record, const word* limit) {
  (void)limit;
  if (const char* names = arg_text(record, KW_func)) {
    int r = each_named(names, [](Objet* f) { return lier_fonction(f); });
    build_nil(record);
    return r;
  }
  float level = 0;
  if (floats_of(command_argument(record), &level, 1)) {
    lang().listing_link = entier(level);
    return build_nil(record);
  }
  int r = lier_tout();
  build_nil(record);
  return r;
}

int DEBUG_a(word* record, const word* limit) {
  (void)limit;
  bool values = find_item(record, KW_edit) != nullptr;
  const word* arg = command_argument(record);
  bool all = arg && tag(arg) == T_CHAR && strcmp(text(arg), "*") == 0;
  bool any = false;
  if (all || find_item(record, KW_func)) {
    if (const char* name = arg_text(record, KW_func)) {
      Objet* f = get_fonction(name);
      if (!f) {
        voir_mot(KW_func);
        VOIR_CHAR("%s ", name);
        err_pas_trouve(nullptr);
        return -1;
      }
      separator();
      VOIR_CHAR("%s\n", source_of(f) ? source_of(f) : "");
    } else {
      list_chain(chaine_classe(KW_func), "func", values);
    }
    any = true;
  }
  if (all || find_item(record, KW_message)) {
    list_chain(chaine_de(0, KW_message), "message", values);
    any = true;
  }
  if (all || find_item(record, KW_local)) {
    Objet* running = lang().running_function;
    list_chain(running ? running->locals : nullptr, "local", values);
    any = true;
  }
  if (all || find_item(record, KW_var)) {
    list_chain(extern_table(), "var", values);
    any = true;
  }
  if (any) separator();
  else voir_etat(KW_debug, Yes(KW_debug));
  return build_nil(record);
}

ExecSchedule& exec_schedule() { return lang().exec; }

namespace {

// One message of one environment run as a console text.
int EXEC_ENV_COM(int env, int num) {
  VocabState& v = vocab();
  if (env < 0 || env >= v.nb_voc) {
    voir_int2("env %d > %d\n", env, v.nb_voc - 1);
    return -1;
  }
  if (num < 0 || num >= static_cast<int>(v.mes[env].size())) {
    voir_int2("mes %d != [0, %d[\n", num, static_cast<int>(v.mes[env].size()));
    return -1;
  }
  std::vector<word> value;
  return executer_texte(v.mes[env][static_cast<size_t>(num)].c_str(), value);
}

int EXECUTER_MESSAGE(const word* pairs) {
  if (!pairs || tag(pairs) != T_FLOAT || elements(pairs) < 2) {
    voir_mot(KW_exec);
    voir_mot(KW_message);
    voir_texte("(env,num)\n");
    return -1;
  }
  for (int i = 0; i + 1 < elements(pairs); i += 2)
    if (EXEC_ENV_COM(entier(getf(pairs, i)), entier(getf(pairs, i + 1))) < 0) return -1;
  return 0;
}

// Each word of the text, ended by a blank or ";", is started as a task.
int EXEC_EXEC(const char* tasks) {
  std::string t = tasks;
  size_t p = 0;
  while (p < t.size()) {
    size_t e = t.find_first_of(" ;", p);
    std::string one = t.substr(p, e == std::string::npos ? std::string::npos : e - p);
    if (!one.empty() && start_task(one.c_str()) < 0) {
      TRACE_FAIL("EXEC_EXEC()");
      return -1;
    }
    p = e == std::string::npos ? t.size() : e + 1;
  }
  return 0;
}

int schedule(word* record, const char* names, const word* limit) {
  const word* period = arg_of(record, KW_time);
  ExecSchedule& s = exec_schedule();
  if (!period) {
    // A query: the entry's period and next time, or NIL.
    Objet* f = get_fonction(names);
    for (const ScheduledFunction& e : s.entries)
      if (f && e.function == objet_handle(f)) {
        const float v[] = {e.period, e.next};
        return build_floats(record, limit, 2, v);
      }
    return build_nil(record);
  }
  float first = 0;
  if (!floats_of(period, &first, 1)) {
    voir_mot(KW_time);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  // Every name is checked before the list changes.
  std::vector<Objet*> found;
  char w[LONG_MOT];
  const char* p = names;
  while (lire_mot(w, &p, LONG_MOT) > 1) {
    Objet* f = get_fonction(w);
    if (!f) {
      err_fonction_inconnue(w);
      return -1;
    }
    found.push_back(f);
  }
  for (size_t i = 0; i < found.size(); i++) {
    const float t = elements(period) > static_cast<int>(i) ? getf(period, static_cast<int>(i)) : first;
    const word h = objet_handle(found[i]);
    bool known = false;
    for (ScheduledFunction& e : s.entries)
      if (e.function == h) {
        e.period = e.next = t;
        known = true;
      }
    if (!known) s.entries.push_back({h, t, t});
  }
  float delay = 0;
  floats_of(arg_of(record, KW_NP), &delay, 1);
  s.delay = delay > 0 ? entier(delay) : 0;
  s.counter = 0;
  s.position = 0;
  s.on = 1;
  return build_nil(record);
}

}  // namespace

int executer_a(word* record, const word* limit) {
  if (item_count(record) == 1) {
    const word* arg = command_argument(record);
    if (!arg || tag(arg) != T_CHAR) {
      voir_message(0, MES_ILLEGAL);
      return -1;
    }
    int r = start_task(text(arg));
    build_nil(record);
    return r;
  }
  word* second = next_item(first_item(record));
  if (second[2] == KW_exec) {
    const word* v = item_value(second);
    int r = v && tag(v) == T_CHAR ? EXEC_EXEC(text(v)) : -1;
    build_nil(record);
    return r;
  }
  if (second[2] == KW_message) {
    int r = EXECUTER_MESSAGE(item_value(second));
    build_nil(record);
    return r;
  }
  if (second[2] == KW_func) {
    const char* names = arg_text(record, KW_func);
    if (names) return schedule(record, names, limit);
    int r = lang().run_schedule ? lang().run_schedule() : 0;
    build_nil(record);
    return r;
  }
  voir_message(0, MES_ILLEGAL);
  return -1;
}
