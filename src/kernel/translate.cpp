// The translation lists and the translators over them.
#include "kernel/translate.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "kernel/kernel.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

namespace {

struct TranslateState {
  int state = 0;                   // 2 when the two lists are loaded
  std::string name[2];             // voc1, voc2
  std::string text[2];             // the lists, line ends turned to NUL
  std::vector<size_t> line[2];     // offsets of the lines in text
  TranslateVarReader var_reader = nullptr;
};

TranslateState& tr() {
  static TranslateState state;
  return state;
}

const char* entry(int list, size_t i) { return tr().text[list].c_str() + tr().line[list][i]; }
size_t nb_entries() { return tr().line[0].size(); }

void clear_lists() {
  TranslateState& t = tr();
  t.state = 0;
  for (int i = 0; i < 2; i++) {
    t.text[i].clear();
    t.line[i].clear();
  }
}

bool missing(const char* name) { return !name || !*name || std::strcmp(name, "Voc_xxx") == 0; }

int no_translate() {
  clear_lists();
  Yes(KW_generate) = -1;
  VOIR_CHAR("%s", "NO TRANSLATE\n");
  return 0;
}

int read_file(const char* name, std::string* text) {
  std::ifstream in(name, std::ios::binary);
  if (!in) {
    err_lecture(name);
    return -1;
  }
  text->assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return 0;
}

int read_var(const char* name, std::string* text) {
  TranslateVarReader reader = tr().var_reader;
  int r = reader ? reader(name, text) : -1;
  if (r == -1) {
    voir_mot(KW_var);
    VOIR_CHAR("%s: ", name);
    voir_message(0, MES_NOT_FOUND);
  } else if (r < 0) {
    err_vide(name, nullptr);
  }
  return r < 0 ? -1 : 0;
}

// Each line end (with a carriage return before it) becomes a NUL; each line
// start goes in the table.
void split_lines(std::string& text, std::vector<size_t>& line) {
  line.clear();
  size_t start = 0;
  for (size_t i = 0; i < text.size(); i++) {
    if (text[i] != '\n') continue;
    if (i > start && text[i - 1] == '\r') text[i - 1] = '\0';
    text[i] = '\0';
    line.push_back(start);
    start = i + 1;
  }
  if (start < text.size()) line.push_back(start);
}

int load_list(int list, const char* name, int mode) {
  TranslateState& t = tr();
  int r = mode == TRANSLATE_FROM_VAR ? read_var(name, &t.text[list]) : read_file(name, &t.text[list]);
  if (r < 0) return -1;
  split_lines(t.text[list], t.line[list]);
  return 0;
}

// The lists count as identical when each pair of lines agrees up to the
// shorter of the two.
bool same_lists() {
  for (size_t i = 0; i < nb_entries(); i++) {
    const char* a = entry(0, i);
    const char* b = entry(1, i);
    if (std::strncmp(a, b, std::min(std::strlen(a), std::strlen(b))) != 0) return false;
  }
  return true;
}

bool is_letter(char c) {
  unsigned char u = static_cast<unsigned char>(c);
  return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u >= 0x80;
}

// First non-empty entry of list `from` that `p` starts with, or -1.
long entry_at(int from, const char* p) {
  for (size_t i = 0; i < nb_entries(); i++) {
    const char* e = entry(from, i);
    size_t n = std::strlen(e);
    if (n && std::strncmp(p, e, n) == 0) return static_cast<long>(i);
  }
  return -1;
}

long entry_equal(int from, const char* s) {
  for (size_t i = 0; i < nb_entries(); i++)
    if (std::strcmp(entry(from, i), s) == 0) return static_cast<long>(i);
  return -1;
}

const char* target_name() {
  const std::string& n = tr().name[1];
  return n.empty() ? kernel().voc2.c_str() : n.c_str();
}

}  // namespace

void set_translate_var_reader(TranslateVarReader reader) { tr().var_reader = reader; }

int translation_state() { return tr().state; }

int set_GENERATE_MESSAGE(const char* voc1, const char* voc2, int mode) {
  TranslateState& t = tr();
  clear_lists();
  t.name[0] = voc1 ? voc1 : "";
  t.name[1] = voc2 ? voc2 : "";
  if (missing(voc1) || missing(voc2) || std::strcmp(voc1, voc2) == 0) return no_translate();
  if (load_list(0, voc1, mode) < 0 || load_list(1, voc2, mode) < 0) {
    no_translate();
    return -1;
  }
  int n1 = static_cast<int>(t.line[0].size()), n2 = static_cast<int>(t.line[1].size());
  if (n1 != n2) {
    voir_int2("(nb message 1 = %d) != (nb message 2 = %d)\a\n", n1, n2);
    clear_lists();
    Yes(KW_generate) = -1;
    return -1;
  }
  if (same_lists()) return no_translate();
  VOIR_CHAR(" TRANSLATE: %s -> ", voc1);
  VOIR_CHAR("%s\n", voc2);
  t.state = 2;
  if (Yes(KW_generate) < 0) Yes(KW_generate) = vocab().sem_ini[KW_generate];
  return 0;
}

int generate_message(const char* s, int reverse, int abs, std::string* out) {
  if (!s || tr().state != 2) {
    *out = target_name();
    return 0;
  }
  if (reverse && !abs) {
    *out = s;
    return 0;
  }
  int from = reverse ? 1 : 0;
  long i = entry_equal(from, s);
  if (i < 0) {
    VOIR_CHAR("%s not in vocabulary\a\n", s);
    return -1;
  }
  *out = entry(1 - from, i);
  return 0;
}

std::string translate_text(const char* text, int reverse, size_t limit) {
  std::string out;
  if (!text) return out;
  size_t cap = std::min(limit, 10 * std::strlen(text) + 1000);
  int from = reverse ? 1 : 0;
  const char* p = text;
  while (*p && out.size() < cap) {
    long i = tr().state == 2 ? entry_at(from, p) : -1;
    if (i >= 0) {
      out += entry(1 - from, i);
      p += std::strlen(entry(from, i));
      continue;
    }
    const char* word = p;
    while (is_letter(*p)) p++;
    out.append(word, p);
    if (*p) out += *p++;
  }
  if (out.size() > cap) out.resize(cap);
  return out;
}

std::string translate_word(const char* w, int reverse) {
  if (!w) return std::string();
  int from = reverse ? 1 : 0;
  long i = tr().state == 2 ? entry_equal(from, w) : -1;
  if (i >= 0) return entry(1 - from, i);
  const char* p = w;
  while (is_letter(*p)) p++;
  return std::string(w, p);
}

static bool is_name_separator(char c) { return c == ' ' || c == '\t' || c == ','; }

static const char* cut_name(const char* p, std::string* name) {
  while (is_name_separator(*p)) p++;
  const char* start = p;
  while (*p && !is_name_separator(*p)) p++;
  name->assign(start, p);
  return p;
}

int read_generate_message(const char* names, int mode) {
  std::string voc1, voc2;
  const char* p = cut_name(names ? names : "", &voc1);
  cut_name(p, &voc2);
  if (voc1.empty()) {
    voir_mot(KW_read);
    voir_mot(KW_generate);
    voir_mot(KW_message);
    VOIR_CHAR("%s", "(\"voc1,voc2\")\n");
    return -1;
  }
  return set_GENERATE_MESSAGE(voc1.c_str(), voc2.c_str(), mode);
}

std::string list_generate_message() {
  std::string all;
  for (size_t i = 0; tr().state == 2 && i < nb_entries(); i++) {
    std::string pair = std::string(entry(0, i)) + " -> " + entry(1, i);
    VOIR_CHAR("%s", (pair + "\n").c_str());
    if (i) all += '\n';
    all += pair;
  }
  return all;
}
