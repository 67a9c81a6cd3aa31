// Running texts as console lines: compile, link and interp of "{text}" in
// a code object of its own. The value a console line leaves is printed,
// unless the line ended with an assignment or its value is NIL.
#include "language/console_runner.h"

#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/bye.h"
#include "kernel/chains.h"
#include "kernel/console.h"
#include "kernel/exceptions.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"
#include "language/call.h"
#include "language/code_object.h"
#include "language/compile.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/function_files.h"
#include "language/lang_state.h"
#include "language/live_reload.h"
#include "language/operators.h"

namespace {

// Compiles, links and runs a braced text with `base` as the first free
// word of the evaluation area. The guard of commands also covers what
// the line does between its commands.
int run_braced(const std::string& braced, word* base, word** result) {
  return sans_exception([&] {
    CodeObject code(braced);
    if (!code.obj.local) return -1;
    if (a_compile(&code.obj) < 0 || !code.obj.code) return -1;
    if (lier_fonction(&code.obj) < 0) return -1;
    return interp(code.obj.code, base, result);
  });
}

// The temporary objects of a failed line go.
void clear_temporaries() {
  Objet* head = chaine_temporaires();
  for (Objet* o = head->next; o;) o = rem_objet(o);
}

void echo(word* result) {
  if (!result || eval_state().quiet || result[0] == T_ADDRESS) return;
  int status = 0;
  if (resolve_item(result, &status) < 0 || tag(result) == T_NIL) return;
  print_value(result);
}

int run_console_line(std::string& braced, int interactive, word* eval_stack) {
  // Given back by a failed allocation, the reserve is taken again once
  // memory allows, for the next failure.
  memoire_reserve();
  if (interactive > 0) {
    // A line abandoned inside calls left their frames: restore them.
    unwind_frames();
    entre_lignes();
    EvalState& E = eval_state();
    E.go = 0;
    E.post_mortem_done = false;
    E.line = 0;
    lang().running_function = nullptr;
    float* error_values = vocab().current[KW_error];
    if (error_values && vocab().dim[KW_error] > 0) error_values[0] = 0.0f;
  }
  word* result = nullptr;
  eval_state().limit = kernel().eval_limit;
  int r = run_braced(braced, eval_stack ? eval_stack : kernel().eval_stack, &result);
  if (r < 0) {
    if (kernel().etat_console < 2) clear_temporaries();
    return r;
  }
  // Lines typed at the console, and at a stopping point, show their value.
  if (interactive != 0) echo(result);
  if (eval_state().go) console().stop = 1;
  return r;
}

int run_static_initialiser(const char* text_in, bloc* value) {
  std::vector<word> v;
  if (executer_texte(text_in, v) < 0) return -1;
  *value = alloue_bloc(static_cast<int>(v.size()));
  if (!*value) return -1;
  memcpy(*value, v.data(), v.size() * sizeof(word));
  return 0;
}

// The function stored by `bye func("f")`, run at exit.
int run_exit_function(const std::string& name) {
  std::vector<word> value;
  std::string call = name.find('(') == std::string::npos ? name + "()" : name;
  return executer_texte(call.c_str(), value);
}

// Words of the private area of a text run from inside a command.
constexpr size_t TEXT_AREA = 1 << 16;

}  // namespace

int executer_texte(const char* text_in, std::vector<word>& value) {
  std::string braced = std::string("{") + text_in + "}";
  std::vector<word> area(TEXT_AREA);
  EvalState& E = eval_state();
  word* outer_limit = E.limit;
  E.limit = area.data() + area.size();
  word* result = nullptr;
  int r = run_braced(braced, area.data(), &result);
  const word* v = r >= 0 && result ? value_of(result, result + item_words(result)) : nullptr;
  if (v) value.assign(v, v + size(v));
  E.limit = outer_limit;
  return v ? 0 : -1;
}

void install_console_runner() {
  console().runner = run_console_line;
  lang().static_runner = run_static_initialiser;
  bye_state().run_function = run_exit_function;
  unsaved_work_register({0, 70, functions_unsaved, ".func", write_unsaved_functions});
}

int run_launch_text(const std::string& text_in) {
  std::string braced = "{" + text_in + "\n}";
  return run_console_line(braced, 1, kernel().eval_stack);
}
