// Where a compile failed: the object, the line, and the source around it.
// Line n of the report is line n of the source counted from 0, which is
// what the line marks carry from the second line on.
#include <cstring>
#include <string>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/prepare.h"

namespace {

// Lines of context asked for by the current value of `error`.
int contexte() {
  const VocabState& v = vocab();
  if (!v.current[KW_error] || v.dim[KW_error] < 1) return 0;
  return static_cast<int>(v.current[KW_error][0]);
}

// The source, bounded by its block; false when the object has none.
bool source_de(const Objet* o, std::string& source, bool* console) {
  const word* b = o ? o->local : nullptr;
  *console = b && tag(b) == T_CODE;
  int mots = b ? (size(b) < 0 ? -size(b) : size(b)) : 0;
  if (!b || (tag(b) != T_CHAR && tag(b) != T_CODE) || mots <= 4) return false;
  source.assign(text(b), strnlen(text(b), static_cast<size_t>(mots - 4) * sizeof(word)));
  return true;
}

// The name of a function: its own, else its source up to "(".
std::string nom_de(const Objet* o, const char* source) {
  if (o && o->name) return o->name;
  if (!source) return "";
  const char* p = source + std::strspn(source, " \t\n");
  return std::string(p, std::strcspn(p, "( \t\n"));
}

// Line n of the source counted from 0; with `au_plus_loin`, the last line
// when the source is shorter (a one-line text reports its line as 1).
void imprimer_ligne(const char* source, int n, bool au_plus_loin = false) {
  if (n < 0) return;
  const char* p = source;
  for (int i = 0; i < n; i++) {
    const char* nl = std::strchr(p, '\n');
    if (!nl && !au_plus_loin) return;
    if (!nl) break;
    p = nl + 1;
  }
  std::string ligne(p, std::strcspn(p, "\n"));
  VOIR_CHAR("%s\n", ligne.c_str());
}

}  // namespace

void report_compile_line(const Objet* obj, int line) {
  bool console;
  std::string texte;
  const char* source = source_de(obj, texte, &console) ? texte.c_str() : nullptr;
  if (console) {
    line = 0;
  } else {
    voir_mot(KW_func);
    VOIR_CHAR("%s", nom_de(obj, source).c_str());
  }
  voir_message(0, MES_LINE);
  voir_int(" %d\n", line);
  if (!source) return;
  int n = contexte();
  for (int i = line - n; i < line && n > 0; i++) imprimer_ligne(source, i);
  voir_message(0, MES_RULE);
  imprimer_ligne(source, line, true);
  voir_message(0, MES_RULE);
  for (int i = line + 1; i <= line + n; i++) imprimer_ligne(source, i);
}
