// The line history: one block on the history object, holding one entry of
// `length/4 + 2` words per line (its size word, then the text).
#include <cctype>
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/console.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/objet.h"
#include "kernel/vocab.h"
#include "kernel/values.h"

namespace {

Objet* history_object() {
  ConsoleState& con = console();
  if (!con.history) {
    static Objet head;
    chaine_ini(&head);
    con.history = cre_objet(&head, KW_history, 0, nullptr, "history", 0);
  }
  return con.history;
}

bool starts_with_word(const char* p, const char* w) {
  size_t n = strlen(w);
  return strncmp(p, w, n) == 0 && !(isalnum(static_cast<unsigned char>(p[n])) || p[n] == '_');
}

bool not_recorded(const char* p) {
  if (starts_with_word(p, "history")) return true;
  if (strncmp(p, "exec", 4) == 0) {
    const char* q = p + 4;
    while (*q == ' ' || *q == '\t') q++;
    if (*q >= '0' && *q <= '9') return true;
  }
  return false;
}

int entry_words(size_t len) { return static_cast<int>(len / 4 + 2); }

// True when the history block already holds exactly this line.
bool already_kept(const word* b, const std::string& line) {
  if (!b) return false;
  const word* e = b + 4;
  for (int i = 0; i < np(b); i++, e += e[0])
    if (line == reinterpret_cast<const char*>(e + 1)) return true;
  return false;
}

}  // namespace

int history_count() {
  Objet* h = console().history;
  return h && h->local ? np(h->local) : 0;
}

std::string history_line(int i) {
  Objet* h = console().history;
  if (!h || !h->local || i < 0 || i >= np(h->local)) return "";
  word* e = data(h->local);
  while (i-- > 0) e += e[0];
  return reinterpret_cast<const char*>(e + 1);
}

int history_record(const std::string& line) {
  if (Yes(KW_history) <= 0 || not_recorded(line.c_str())) return 0;
  Objet* h = history_object();
  if (!h) return -1;
  if (already_kept(h->local, line)) return 0;
  int old_size = h->local ? size(h->local) : 4;
  int add = entry_words(line.size());
  bloc nb = alloue_bloc(old_size + add);
  if (!nb) return -1;
  if (h->local) memcpy(nb, h->local, static_cast<size_t>(old_size) * 4);
  else {
    build_head(nb, old_size + add, T_CHAR, 0, 0);
  }
  nb[0] = old_size + add;
  nb[2] += 1;
  word* e = nb + old_size;
  memset(e, 0, static_cast<size_t>(add) * 4);
  e[0] = add;
  memcpy(e + 1, line.c_str(), line.size());
  libere_bloc(h->local);
  h->local = nb;
  return 0;
}
