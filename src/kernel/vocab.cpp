// Vocabulary state, keyword lookups, value access and the keyword switches.
#include "kernel/vocab.h"

#include <cstring>
#include <new>

#include "kernel/kernel.h"
#include "kernel/report.h"

VocabState* the_vocab = nullptr;

VocabState& vocab_make() {
  if (!the_vocab) the_vocab = new VocabState();
  return *the_vocab;
}

// The value pools live inside the state, so resetting in place keeps
// their addresses.
void vocab_reset() {
  VocabState& v = vocab();
  v.~VocabState();
  new (&v) VocabState();
}

static bool is_blank(char c) { return c == ' ' || c == '\t'; }

// Does the blank-separated list `line` hold `word` as one of its words?
static bool has_word(const char* line, const char* word, size_t len) {
  const char* p = line;
  while (*p) {
    while (is_blank(*p)) p++;
    const char* start = p;
    while (*p && !is_blank(*p)) p++;
    if (static_cast<size_t>(p - start) == len && std::memcmp(start, word, len) == 0)
      return true;
  }
  return false;
}

// Walks every keyword of every vocabulary in code order; the first one
// accepted by `match` wins.
template <class Match>
static int find_keyword(Match match, int* voc, int* code) {
  const VocabState& v = vocab();
  for (int i = 0; i < v.nb_voc; i++)
    for (int k = 0; k < v.nb_kw[i]; k++) {
      int c = i * KW_PER_VOC + k;
      if (v.name[c] && match(v.name[c])) {
        *voc = i;
        *code = c;
        return 0;
      }
    }
  return -1;
}

int cherche_mot(const char* word, int* voc, int* code) {
  if (!word || !*word) return -1;
  size_t len = std::strlen(word);
  return find_keyword([&](const char* line) { return has_word(line, word, len); }, voc, code);
}

int cherche_ligne(const char* line, int* voc, int* code) {
  if (!line) return -1;
  return find_keyword([&](const char* name) { return std::strcmp(name, line) == 0; }, voc, code);
}

// The entry of a keyword in vocabulary `voc`. Only the position of `code`
// within its vocabulary counts, so both a full code and a position work.
// -1 (reported) when the vocabulary or the position is out of range.
static int entry_of(int voc, int code) {
  const VocabState& v = vocab();
  int pos = code % KW_PER_VOC;
  if (voc < 0 || voc >= v.nb_voc || pos < 0 || pos >= v.nb_kw[voc]) {
    voir_int2("%d %d: ", voc, code);
    err_nom(nullptr);
    return -1;
  }
  return voc * KW_PER_VOC + pos;
}

float* val_com(int voc, int code, int* n) {
  int c = entry_of(voc, code);
  if (c < 0) return nullptr;
  *n = vocab().dim[c];
  return vocab().current[c];
}

float* def_com(int voc, int code, int* n) {
  int c = entry_of(voc, code);
  if (c < 0) return nullptr;
  *n = vocab().dim[c];
  return vocab().defaults[c];
}

void ini_com(int code) {
  VocabState& v = vocab();
  if (code < 0 || code >= NB_CODES || !v.current[code]) return;
  std::memcpy(v.current[code], v.defaults[code], sizeof(float) * v.dim[code]);
}

// The refusal of yes/no on a keyword that is no switch.
static void refuse_sem(int code, int value) {
  voir_message(0, MES_UNKNOWN_MARK);
  voir_mot(value > 0 ? KW_yes : KW_no);
  voir_mot(code);
  voir_message(0, MES_ILLEGAL);
}

// Switches with an effect beyond their sem word. `debug` moves the console
// between states 1 and 2 once the message tables are in use.
void (*sem_hook)(int code) = nullptr;

static void sem_changed(int code) {
  if (sem_hook) sem_hook(code);
  KernelState& k = kernel();
  if (code == KW_debug && k.etat_console > 0) k.etat_console = Yes(KW_debug) ? 2 : 1;
}

int set_sem(int code, int value) {
  if (code < 0 || code >= NB_CODES) return -1;
  if (vocab().sem[code] < 0 || value < 0) {
    refuse_sem(code, value);
    return -1;
  }
  vocab().sem[code] = value;
  sem_changed(code);
  return 0;
}

// Applies `f` to the code of every loaded keyword.
template <class F>
static void each_keyword(F f) {
  const VocabState& v = vocab();
  for (int i = 0; i < v.nb_voc; i++)
    for (int k = 0; k < v.nb_kw[i]; k++) f(i * KW_PER_VOC + k);
}

void ini_yes() {
  VocabState& v = vocab();
  each_keyword([&](int c) { if (v.sem_ini[c] > 0) v.sem[c] = v.sem_ini[c]; });
  sem_changed(KW_debug);
}

void ini_no() {
  VocabState& v = vocab();
  each_keyword([&](int c) { if (v.sem[c] > 0) v.sem[c] = 0; });
  sem_changed(KW_debug);
}

void ini_ini() {
  VocabState& v = vocab();
  each_keyword([&](int c) {
    v.sem[c] = v.sem_ini[c];
    ini_com(c);
  });
  sem_changed(KW_debug);
}
