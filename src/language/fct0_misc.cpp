// The other workers of fct0: typed copies (`char`, `float`), folders
// (`directory`), the current error word (`error`, `precision`), function
// texts (`func`, `grep`) and waits (`wait`).
#include <cstring>
#include <string>

#include "kernel/chains.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/code.h"
#include "language/commands.h"
#include "language/compile.h"
#include "language/eval.h"
#include "language/fct0.h"
#include "language/functions.h"
#include "platform/files.h"
#include "platform/process.h"

Fct0State& fct0_state() {
  static Fct0State state;
  return state;
}

namespace {

const char* text_argument(Fct0Call& c) { return value_text(fct0_argument(c)); }

int add_string(Fct0Call& c, const std::string& s) { return build_text(c.out, c.limit, s.data(), s.size()); }

}  // namespace

// `char(x)` and `float(x)`: the value itself, when it is (or begins
// with) a value of that kind; no conversion.
int fct0_typed(Fct0Call& c) {
  const word* v = fct0_argument(c);
  word wanted = c.first[2] == KW_char ? T_CHAR : T_FLOAT;
  if (!v) return wrong_kind(c);
  if (tag(v) == wanted || (tag(v) == T_HYBRIDE && np(v) > 0 && tag(v + 4) == wanted)) return copy_result(c, v);
  return wrong_kind(c);
}

// ---- directory -------------------------------------------------------------

namespace {

struct Folder {
  const char* key;
  std::string KernelState::*field;
};

constexpr Folder FOLDERS[] = {
    {"ini", &KernelState::ini}, {"env", &KernelState::env},
    {"ima", &KernelState::ima}, {"exe", &KernelState::exe},
};

}  // namespace

// No text: the working directory. "ini", "env", "ima", "exe": the folders
// of the start-up. Any other text: its folder, up to its last "/", or
// "./" when it has none.
int fct0_directory(Fct0Call& c) {
  const char* s = text_argument(c);
  if (!s) return add_string(c, working_directory() + "/");
  for (const Folder& f : FOLDERS)
    if (strcmp(s, f.key) == 0) return add_string(c, kernel().*f.field);
  const char* slash = strrchr(s, '/');
  if (!slash) return build_text(c.out, c.limit, "./", 2);
  return build_text(c.out, c.limit, s, static_cast<size_t>(slash - s + 1));
}

// ---- error and precision -------------------------------------------------

namespace {

bool code_in_range(int code) {
  if (code >= 0 && code < NB_CODES) return true;
  VOIR_CHAR("%s", "error = ");
  voir_int2("%d != [0,%d]\a\n", code, NB_CODES - 1);
  return false;
}

// The first word of a keyword's name line.
int keyword_name(Fct0Call& c, int code) {
  const char* name = vocab().name[code];
  if (!name) name = "";
  size_t len = strcspn(name, " \t,");
  return build_text(c.out, c.limit, name, len);
}

}  // namespace

// `error`: the current error word by name (NIL when 0); `error(code)`
// and `error("name")` set it. `precision` without a `time` item runs the
// very same body; the display precision itself is read elsewhere from
// the keyword's current value.
int fct0_error(Fct0Call& c) {
  if (c.first[2] == KW_precision && c.time) {
    // `time` leaves its value in place of the record; fct0 takes the
    // result from its work place.
    const int r = TIME_a(c.record, c.limit);
    return r != 0 ? r : copy_result(c, c.record);
  }
  int& code = fct0_state().Erreur_code;
  const word* v = fct0_argument(c);
  if (!v || (tag(v) != T_FLOAT && tag(v) != T_CHAR) || value_length(v) == 0) {
    if (!code_in_range(code)) return -1;
    return code == 0 ? build_nil(c.out, c.limit) : keyword_name(c, code);
  }
  if (tag(v) == T_FLOAT) {
    int k = entier(getf(v, 0));
    if (!code_in_range(k)) return -1;
    code = k;
    return build_nil(c.out, c.limit);
  }
  int voc = 0, k = 0;
  if (cherche_mot(text(v), &voc, &k) == 0) code = k;
  return build_nil(c.out, c.limit);
}

// ---- func ------------------------------------------------------------------

namespace {

bool is_function(const Objet* o) { return o->kind == KW_func && o->subkind == 0 && source_of(o); }

// The name of a function: its source up to the first "(".
std::string function_name(const Objet* f) {
  const char* s = source_of(f);
  while (*s == ' ' || *s == '\t' || *s == '\n' || *s == '\r') s++;
  return std::string(s, strcspn(s, "("));
}

int names_of_functions(Fct0Call& c) {
  TextOut t = text_begin(c);
  bool first = true;
  for (Objet* o = chaine_classe(KW_func)->next; o; o = o->next) {
    if (!is_function(o)) continue;
    if (!first) text_put(t, ' ');
    std::string name = function_name(o);
    text_add(t, name.data(), name.size());
    first = false;
  }
  return text_end(t);
}

int names_in_error(Fct0Call& c) {
  std::vector<std::string>& names = fct0_state().Tab_noms_err;
  if (arg_of(c.record, KW_error)) {
    names.clear();
    return build_nil(c.out, c.limit);
  }
  TextOut t = text_begin(c);
  for (size_t i = 0; i < names.size(); i++) {
    if (i > 0) text_put(t, ' ');
    text_add(t, names[i].data(), names[i].size());
  }
  return text_end(t);
}

// Compiles the function when it has no code yet and lists it.
int list_compiled(Fct0Call& c, Objet* f) {
  if (!f->code && a_compile(f) < 0) return -1;
  voir_texte("COMPILE\n");
  if (f->code) lister_code(f->code + CODE_HEAD, f->code + f->code[0] + 1, 1, false);
  return build_nil(c.out, c.limit);
}

}  // namespace

// `func`: the names of all functions; `func("name")`: its source text,
// listed compiled with a `compile` item; `func error`: the names kept
// after failures, emptied by `func error(x)`.
int fct0_func(Fct0Call& c) {
  if (c.error && !c.arg) return names_in_error(c);
  const word* v = fct0_argument(c);
  if (!v) return names_of_functions(c);
  if (tag(v) != T_CHAR) return wrong_kind(c);
  Objet* f = get_fonction(text(v));
  if (!f || !source_of(f)) {
    err_objet(KW_func, v, -1, 0, nullptr);
    return -1;
  }
  if (c.second && c.second[2] == KW_compile) return list_compiled(c, f);
  const char* s = source_of(f);
  return build_text(c.out, c.limit, s, strlen(s));
}

// ---- grep --------------------------------------------------------------------

namespace {

int occurrences(const char* hay, const char* needle) {
  size_t len = strlen(needle);
  int n = 0;
  for (const char* p = strstr(hay, needle); p; p = strstr(p + len, needle)) n++;
  return n;
}

void report_count(int n) {
  if (n == 1) voir_texte("1 occurence ");
  else voir_int("%d occurences ", n);
}

// The files named, blank-separated, by a `fread` item.
int grep_files(const char* needle, const char* names) {
  int total = 0;
  std::string list(names);
  size_t p = 0;
  while ((p = list.find_first_not_of(" \t", p)) != std::string::npos) {
    size_t e = list.find_first_of(" \t", p);
    std::string path = list.substr(p, e == std::string::npos ? std::string::npos : e - p);
    p = e == std::string::npos ? list.size() : e;
    std::string content;
    if (!file_read_all(path, content)) {
      err_lecture(path.c_str());
      continue;
    }
    int n = occurrences(content.c_str(), needle);
    if (n == 0) continue;
    report_count(n);
    VOIR_CHAR("in file %s\n", path.c_str());
    total += n;
  }
  return total;
}

int grep_functions(const char* needle) {
  int total = 0;
  for (Objet* o = chaine_classe(KW_func)->next; o; o = o->next) {
    if (!is_function(o)) continue;
    int n = occurrences(source_of(o), needle);
    if (n == 0) continue;
    report_count(n);
    VOIR_CHAR("%s\n", function_name(o).c_str());
    total += n;
  }
  return total;
}

}  // namespace

// `grep("text")`: the functions whose source holds the text, each with
// its count of occurrences; with `fread("a b")` the files a and b are
// searched instead. The result is the total count.
int fct0_grep(Fct0Call& c) {
  const char* needle = text_argument(c);
  if (!needle || !*needle) return wrong_kind(c);
  const word* files = c.second && c.second[2] == KW_fread ? item_value(c.second) : nullptr;
  int total = files && tag(files) == T_CHAR ? grep_files(needle, text(files)) : grep_functions(needle);
  word* r = build_zeros(c.out, c.limit, 1);
  if (!r) return -12;
  setf(r, 0, static_cast<float>(total));
  return 0;
}

// ---- wait --------------------------------------------------------------------

namespace {

// Spins until the clock reaches `until` (milliseconds) or an interrupt.
void spin_until(long long until) {
  while (clock_ms() < until && !interrupt_pending()) {}
}

// A first value not 0 starts a run at `a` images per second; a first
// value 0 waits until `b` (or the stored rate) images per second since
// the start pass the count of images, then counts one more image.
float pace(float a, float b) {
  Fct0State& p = fct0_state();
  if (a != 0) {
    p.pace_start = clock_ms();
    p.pace_rate = a;
    p.pace_count = 0;
    return 0;
  }
  float rate = b != 0 ? b : p.pace_rate;
  if (rate > 0) spin_until(p.pace_start + static_cast<long long>(1000.0 * p.pace_count / rate));
  return static_cast<float>(++p.pace_count);
}

}  // namespace

// `wait(t)`: a busy wait of t milliseconds when the time base runs (a
// `tim=` option was given), and no value. `wait(a, b)`: the pacing above.
int fct0_wait(Fct0Call& c) {
  if (tag(c.v) != T_FLOAT) return wrong_kind(c);
  if (c.n == 1) {
    float t = getf(c.v, 0);
    if (t > 0 && !kernel().tim.empty()) spin_until(clock_ms() + entier(t));
    return build_nil(c.out, c.limit);
  }
  word* r = build_zeros(c.out, c.limit, 1);
  if (!r) return -12;
  setf(r, 0, pace(getf(c.v, 0), getf(c.v, 1)));
  return 0;
}
