// evaluer_fonction: one call of a user function. The arguments are
// evaluated in the caller, the callee's variables are saved on the frame
// stack (so that recursion sees fresh locals while statics stay shared),
// the formals are bound, the code runs, and the frame is restored.
#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"
#include "language/call.h"
#include "language/args.h"
#include "language/code.h"
#include "language/commands.h"
#include "language/compile.h"
#include "language/debugger.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/function_files.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "language/lexer.h"
#include "language/operators.h"
#include "language/pure_call.h"
#include "language/variables.h"

namespace {

inline Frames& frames() { return lang().frames; }

const char* call_name(const word* record) {
  const word* code = eval_state().code;
  if (!code) return nullptr;
  const word* table = code + code[0] + 1;
  for (int i = 0; *table; table += table[0], i++)
    if (i == record[4]) return reinterpret_cast<const char*>(table + 5);
  return nullptr;
}

// The function a formal holds: a link made at binding, or a name.
Objet* function_of_formal(Objet* formal) {
  if (!formal) return nullptr;
  if (formal->kind == KIND_FUNC) return handle_objet(formal->work[VAR_TARGET]);
  if (formal->local && tag(formal->local) == T_CHAR) return get_fonction(text(formal->local));
  return nullptr;
}

// The called function, loaded from disk when it is not in memory.
Objet* callee(const word* record) {
  if (record[1] == R_CODE_FUNC) {
    Objet* f = handle_objet(record[2]);
    if (f && f->kind == KIND_FUNC) return f;
  }
  const char* name = call_name(record);
  if (!name) return nullptr;
  Objet* f = get_fonction(name);
  if (f) return f;
  if (record[1] == R_UNDEFINED) {
    // A call through a formal that holds a function.
    Objet* running = lang().running_function;
    return running ? function_of_formal(var_find(running->locals, C_FORMEL, name)) : nullptr;
  }
  return load_function_from_disk(name);
}

void save_variables(Objet* f) {
  Frames& fr = frames();
  FrameEntry& mark = fr.entries.emplace_back();
  mark.handle = 0;
  if (!f->locals) return;
  for (Objet* v = f->locals->next; v; v = v->next) {
    if (var_kind(v) == C_STATIC || v->subkind == C_AD_GLB) continue;
    FrameEntry& e = fr.entries.emplace_back();
    e.handle = objet_handle(v);
    e.kind = v->kind;
    e.subkind = v->subkind;
    e.work5 = v->work[VAR_DECLARED];
    e.work6 = v->work[VAR_TARGET];
    e.moved = nullptr;
    e.copied_words = 0;
    if (v->kind == C_FORMEL && v->local) {
      int words = v->local[0];
      e.copied_words = words;
      if (words <= SMALL_VALUE) {
        move_words(e.small, v->local, words);
      } else {
        e.copied = fr.arena.size();
        fr.arena.insert(fr.arena.end(), v->local, v->local + words);
      }
    } else {
      e.moved = v->local;
      v->local = nullptr;
    }
  }
}

// Replaces a variable's value by `words` words from `src`, reusing its
// bloc when the size is the same.
int put_value(Objet* v, const word* src, int words) {
  if (!v->local || v->local[0] != words) {
    libere_valeur(v->local);
    v->local = alloue_bloc(words);
    if (!v->local) return -1;
  }
  move_words(v->local, src, words);
  return 0;
}

// Formals that referred to the caller's variables become plain again.
void release_address_formals(Objet* f) {
  if (!f->locals || !f->work[FN_REFERENCES]) return;
  f->work[FN_REFERENCES] = 0;
  for (Objet* v = f->locals->next; v; v = v->next)
    if (v->kind == T_ADDRESS && v->subkind == C_AD_GLB) {
      v->kind = v->work[VAR_DECLARED];
      v->work[VAR_TARGET] = 0;
    }
}

void restore_variables() {
  Frames& fr = frames();
  while (!fr.entries.empty()) {
    FrameEntry& e = fr.entries.back();
    if (e.handle == 0) {
      fr.entries.pop_back();
      return;
    }
    Objet* v = handle_objet(e.handle);
    if (!v) {
      voir_message(0, MES_UNSTACK_ERROR);
      libere_valeur(e.moved);
      if (e.copied_words > SMALL_VALUE) fr.arena.resize(e.copied);
    } else {
      v->kind = e.kind;
      v->subkind = e.subkind;
      v->work[VAR_DECLARED] = e.work5;
      v->work[VAR_TARGET] = e.work6;
      if (e.copied_words > SMALL_VALUE) {
        put_value(v, fr.arena.data() + e.copied, e.copied_words);
        fr.arena.resize(e.copied);
      } else if (e.copied_words) {
        put_value(v, e.small, e.copied_words);
      } else {
        libere_valeur(v->local);
        v->local = e.moved;
      }
    }
    fr.entries.pop_back();
  }
}

int copy_into(Objet* v, const word* value) {
  if (!value || tag(value) == T_NIL) {
    word nil[4];
    build_nil(nil);
    return put_value(v, nil, 4);
  }
  return put_value(v, value, size(value));
}

// A formal declared `func`: a command name makes it that command, a
// function name links it to the function.
int bind_function_formal(Objet* formal, const word* value) {
  const char* name = value_text(value);
  int voc = 0, code = 0;
  if (name && chercher_commande(name, &voc, &code) >= 0) {
    formal->kind = C_COMMAND;
    formal->work[VAR_TARGET] = code;
    return 0;
  }
  Objet* f = name ? get_fonction(name) : nullptr;
  if (!f) f = name ? load_function_from_disk(name) : nullptr;
  if (!f) {
    voir_mot(KW_func);
    if (name) VOIR_CHAR("%s ", name);
    voir_message(0, MES_NON_DEFINED_FUNCTION);
    return -1;
  }
  formal->kind = KIND_FUNC;
  formal->work[VAR_TARGET] = objet_handle(f);
  return 0;
}

// Binds the evaluated arguments (items from `args`, `count` of them) to
// the formals; formals without an argument get NIL.
int bind(Objet* f, const word* args, int count) {
  if (!f->locals) return 0;
  int k = 0;
  for (Objet* v = f->locals->next; v && k < f->work[FN_FORMALS]; v = v->next) {
    if (var_kind(v) != C_FORMEL && v->kind != C_TYPE_FUNC) continue;
    const word* arg = k < count ? args : nullptr;
    if (arg) args += item_words(args);
    k++;
    if (v->kind == C_TYPE_FUNC) {
      if (bind_function_formal(v, arg) < 0) return -1;
      continue;
    }
    if (arg && (arg[0] == T_ADDRESS || (v->subkind == C_AD_GLB && is_variable_token(arg)))) {
      // By address: the formal refers to the caller's variable.
      Objet* target = arg[0] == T_ADDRESS ? handle_objet(arg[1]) : variable_of(arg);
      if (!target) return -1;
      libere_valeur(v->local);
      v->local = nullptr;
      var_make_address(v, objet_handle(target));
      v->subkind = C_AD_GLB;
      f->work[FN_REFERENCES] = 1;  // a formal to make plain again after the call
      continue;
    }
    const word* value = arg ? get_evaluation(arg) : nullptr;
    if (arg && !value) return -1;
    if (copy_into(v, value) < 0) return -1;
  }
  return 0;
}

bool formal_by_address(const Objet* f, int k) {
  if (!f->locals || !f->work[FN_ADDRESS]) return false;
  int i = 0;
  for (const Objet* v = f->locals->next; v; v = v->next) {
    if (v->kind != C_FORMEL && v->kind != C_TYPE_FUNC && var_kind(v) != C_FORMEL) continue;
    if (i++ == k) return v->subkind == C_AD_GLB;
  }
  return false;
}

// The argument groups behind a call, evaluated one after the other from
// `at`; the cursor after them, the count in *count.
const word* arguments(const word* p, int groups, Objet* f, word* at, int* count, int* status) {
  *count = 0;
  for (int i = 0; i < groups; i++) {
    if (p[0] != C_OPER || p[1] != '(') break;
    bool by_address = f && formal_by_address(f, i);
    p = eval_group(p, at, by_address, status);
    if (!p) return nullptr;
    if (!by_address && at[0] != T_ADDRESS && resolve_item(at, status) < 0) return nullptr;
    at += item_words(at);
    (*count)++;
  }
  return p;
}

// With the `system` switch on, the formals as bound are kept, so that a
// failing call can show what it was given.
struct FormalCopy {
  std::string name;
  std::vector<word> value;
};

std::vector<FormalCopy> copy_formals(const Objet* f) {
  std::vector<FormalCopy> copies;
  if (!f->locals) return copies;
  for (const Objet* v = f->locals->next; v; v = v->next)
    if (var_kind(v) == C_FORMEL && v->name) {
      FormalCopy c{v->name, {}};
      if (v->local) c.value.assign(v->local, v->local + v->local[0]);
      copies.push_back(std::move(c));
    }
  return copies;
}

void print_formals(const Objet* f, const std::vector<FormalCopy>& copies) {
  voir_mot(KW_func);
  VOIR_CHAR("%s\n", f->name ? f->name : "");
  for (const FormalCopy& c : copies) {
    VOIR_CHAR("%s = ", c.name.c_str());
    if (c.value.empty()) voir_texte("NIL\n");
    else print_value(c.value.data());
  }
  voir_texte("\n");
}

// Runs `f` with the evaluated arguments at `args`; its value at `dest`.
int evaluer_fonction(Objet* f, word* dest, word* args, int count, word* after) {
  EvalState& E = eval_state();
  LanguageState& L = lang();
  if (call_too_deep(E.depth)) {
    voir_message(0, MES_INFINITE_RECURSION);
    return -1;
  }
  if (!f->code && (a_compile(f) < 0 || lier_fonction(f) < 0)) return -1;
  float value;
  int quick = pure_call(f, args, count, &value);
  if (quick > 0) {
    build_float(dest, nullptr, value);
    E.quiet = false;  // as after the `return` that ends the general run
    return 0;
  }
  // Given up for a passing reason: the calls below take the general road.
  std::optional<PureCallsOff> off;
  if (quick == -1) off.emplace();
  Objet* caller = L.running_function;
  L.running_function = f;
  save_variables(f);
  int r = bind(f, args, count);
  if (Yes(KW_debug) > 0 && Yes(KW_debug) != 2) debug_entry(f);
  std::vector<FormalCopy> copies;
  if (Yes(KW_system) > 0) copies = copy_formals(f);
  word* result = nullptr;
  if (r >= 0) {
    E.depth++;
    int outer_line = E.line;
    r = interp(f->code, after, &result);
    E.line = outer_line;
    E.depth--;
  }
  if (r >= 0 && result) {
    int st = 0;
    r = resolve_item(result, &st);
  }
  if (r >= 0 && result) move_words(dest, result, item_words(result));
  restore_variables();
  release_address_formals(f);
  L.running_function = caller;
  if (r < 0 && Yes(KW_system) > 0) print_formals(f, copies);
  if (r < 0) TRACE_FAIL("evaluer_fonction()");
  return r;
}

}  // namespace

const word* call_function(const word* p, word* dest, int* status) {
  LanguageState& L = lang();
  if (L.link_state != 1 && lier_tout() < 0) return nullptr;
  int groups = p[0] > 0 ? p[3] : 0;
  Objet* f = nullptr;
  if (p[0] == C_TYPE_FUNC) {
    Objet* formal = handle_objet(p[1]);
    f = function_of_formal(formal);
    groups = 0;
    for (const word* q = p + 2; q[0] == C_OPER && q[1] == '('; q = skip_operand(q)) groups++;
  } else {
    f = callee(p);
  }
  if (!f) {
    const char* name = p[0] > 0 ? call_name(p) : nullptr;
    err_fonction(name, 0);
    return nullptr;
  }
  // Compiled first: its formals tell which arguments go by address.
  if (!f->code && (a_compile(f) < 0 || lier_fonction(f) < 0)) return nullptr;
  int count = 0;
  const word* q = arguments(p + (p[0] > 0 ? p[0] : 2), groups, f, dest, &count, status);
  if (!q) return nullptr;
  word* after = dest;
  for (int i = 0; i < count; i++) after += item_words(after);
  if (!room(after, 8)) return nullptr;
  if (evaluer_fonction(f, dest, dest, count, after) < 0) return nullptr;
  *status = 0;
  return q;
}

const word* call_command_formal(const word* p, word* dest, bool lvalue, int* status) {
  Objet* formal = handle_objet(p[1]);
  if (formal && formal->kind == C_COMMAND) {
    // The formal stands for a command: the chain is built with its code.
    return command_chain(p + 2, dest, lvalue, status, formal->work[VAR_TARGET]);
  }
  return call_function(p, dest, status);
}

int run_function_object(Objet* f, word* dest, const float* arg) {
  if (lang().link_state != 1 && lier_tout() < 0) return -1;
  if (!room(dest, 8)) return -1;
  if (!arg) return evaluer_fonction(f, dest, dest, 0, dest);
  build_float(dest, nullptr, *arg);
  return evaluer_fonction(f, dest, dest, 1, dest + item_words(dest));
}

namespace {

// Runs `run` on the evaluation area kept for calls outside a console line.
template <class Run>
int sur_zone_a_part(Run&& run) {
  LanguageState& L = lang();
  std::vector<word> nested;
  std::vector<word>& zone = L.apart_busy ? nested : L.apart_area;
  const size_t words = static_cast<size_t>(std::max(kernel().Dim_ev, 1 << 16));
  if (zone.size() < words) zone.assign(words, 0);
  // Restored also when the run is abandoned by the interrupt.
  struct Hold {
    word* limit = eval_state().limit;
    bool outer = !lang().apart_busy;
    ~Hold() {
      eval_state().limit = limit;
      if (outer) lang().apart_busy = false;
    }
  } hold;
  L.apart_busy = true;
  eval_state().limit = zone.data() + zone.size();
  return run(zone.data());
}

}  // namespace

int run_function_apart(Objet* f, const float* arg) {
  return sur_zone_a_part([&](word* z) { return run_function_object(f, z, arg); });
}

int run_function_vector(Objet* f, const float* arg, int n, float* out, int nout) {
  return sur_zone_a_part([&](word* z) {
    if (lang().link_state != 1 && lier_tout() < 0) return -1;
    build_head(z, 4 + n, T_FLOAT, 1, n);
    for (int i = 0; i < n; i++) z[4 + i] = fw(arg[i]);
    const int r = evaluer_fonction(f, z, z, 1, z + z[0]);
    for (int i = 0; i < nout; i++)
      out[i] = r >= 0 && z[1] == T_FLOAT && i < z[2] * std::max(z[3], 1) && i < z[0] - 4 ? getf(z, i) : 0.0f;
    return r;
  });
}

int run_function_number_text(Objet* f, float a, const char* s, size_t len, float* out) {
  return sur_zone_a_part([&](word* z) {
    if (lang().link_state != 1 && lier_tout() < 0) return -1;
    build_float(z, nullptr, a);
    if (build_text(z + 5, eval_state().limit, s, len) < 0) return -1;
    const int r = evaluer_fonction(f, z, z, 2, z + 5 + z[5]);
    *out = r >= 0 && z[1] == T_FLOAT && z[0] > 4 && z[2] > 0 ? getf(z, 0) : 0.0f;
    return r;
  });
}

int run_function_value(Objet* f, const word* arg) {
  return sur_zone_a_part([&](word* z) {
    if (lang().link_state != 1 && lier_tout() < 0) return -1;
    if (!room(z, size(arg) + 8)) return -1;
    std::copy(arg, arg + size(arg), z);
    return evaluer_fonction(f, z, z, 1, z + z[0]);
  });
}

void unwind_frames() {
  while (!frames().entries.empty()) restore_variables();
  eval_state().depth = 0;
  lang().running_function = nullptr;
}
