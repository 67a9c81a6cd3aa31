// Console commands: input, ring, alias, STOP and clean.
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "language/operators.h"
#include "platform/console_io.h"

namespace {

bool is_number(const std::string& w) {
  char* end = nullptr;
  std::strtof(w.c_str(), &end);
  return end && end != w.c_str() && *end == 0;
}

}  // namespace

// `input` or `input("prompt")`: one line typed at the console. A list of
// numbers gives a FLOAT, any other text a CHAR, an empty line NIL.
int INPUT_a(word* record, const word* limit) {
  if (const char* prompt = value_text(command_argument(record))) voir_texte(prompt);
  flush_out();
  std::string line;
  if (!in_getline(line)) return build_nil(record);
  std::vector<std::string> words = split_words(line.c_str());
  std::vector<float> f;
  for (const std::string& w : words) {
    if (!is_number(w)) return build_text_or_nil(record, limit, line);
    f.push_back(std::strtof(w.c_str(), nullptr));
  }
  if (f.empty()) return build_nil(record);
  return build_floats(record, limit, f);
}

// `ring`: one bell; `ring(n)` n bells; `ring(n,ms)` n bells ms apart; a
// negative n rings after each console line. A sound name is refused: no
// sound is built in.
int RING_a(word* record, const word* limit) {
  (void)limit;
  const word* arg = command_argument(record);
  std::vector<float> v;
  if (value_text(arg)) {
    voir_message(0, MES_SOUND_OFF);
    return build_nil(record);
  }
  if (arg) v = floats_of(arg);
  if (arg && v.empty()) {
    err_syntaxe(MES_COMMAND_USAGE, KW_ring, "(n,ms)\n");
    return -1;
  }
  int n = v.empty() ? 1 : entier(v[0]);
  int delay = v.size() > 1 ? entier(v[1]) : 0;
  ring_bells(n, delay);
  return build_nil(record);
}

// `alias("name=replacement")` adds a line to the alias table (used by the
// source preparation while `yes alias` is on); `alias` alone prints it.
int ALIAS_a(word* record, const word* limit) {
  (void)limit;
  LanguageState& L = lang();
  const word* arg = command_argument(record);
  if (!arg) {
    if (L.alias_exists) voir_texte(L.alias_text.c_str());
    return build_nil(record);
  }
  const char* s = value_text(arg);
  std::string line = s ? s : "";
  size_t eq = line.find('=');
  if (eq == std::string::npos || eq == 0 || line.find('\n') != std::string::npos) {
    err_syntaxe(MES_COMMAND_USAGE, KW_alias, "(\"name=replacement\")\n");
    return -1;
  }
  if (!L.alias_text.empty() && L.alias_text.back() != '\n') L.alias_text += '\n';
  L.alias_text = line + "\n" + L.alias_text;  // the newest line wins
  L.alias_exists = true;
  return build_nil(record);
}

std::vector<std::pair<std::string, int>>& stop_table() { return lang().stopping_points; }

// `STOP("name",line)` adds a stopping point (line 1 when omitted);
// `STOP` alone prints the table, one "name,line" a line.
int STOP_a(word* record, const word* limit) {
  (void)limit;
  const word* arg = command_argument(record);
  if (!arg) {
    for (const auto& [name, line] : lang().stopping_points) {
      VOIR_CHAR("%s,", name.c_str());
      voir_int("%d\n", line);
    }
    return build_nil(record);
  }
  const word* name_part = tag(arg) == T_HYBRIDE && np(arg) > 0 ? arg + 4 : arg;
  const word* line_part = name_part != arg && np(arg) > 1 ? name_part + item_words(name_part) : nullptr;
  const char* name = value_text(name_part);
  int line = entier(value_at(line_part, 0, 1));
  if (!name || !*name || line < 1) {
    voir_message(0, MES_STOP_USAGE);
    return -1;
  }
  for (const auto& p : lang().stopping_points)
    if (p.first == name && p.second == line) return build_nil(record);
  lang().stopping_points.emplace_back(name, line);
  return build_nil(record);
}

// `clean("text")`: the text without its leading and trailing blanks. The
// plain `clean` sweep belongs to the object store.
int CLEAN_a(word* record, const word* limit) {
  (void)limit;
  const word* arg = command_argument(record);
  const char* s = value_text(arg);
  if (!s) return 1;
  std::string t = s;
  size_t a = t.find_first_not_of(" \t\n\r");
  if (a == std::string::npos) return build_nil(record);
  size_t b = t.find_last_not_of(" \t\n\r");
  return build_text_or_nil(record, limit, t.substr(a, b - a + 1));
}
