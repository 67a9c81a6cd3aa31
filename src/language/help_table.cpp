// The table of help entries, its look-up, its printer and the nearest
// names of a word that is none.
#include "language/help_table.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"


namespace {

// The keyword itself: the name line up to its first blank or comma.
std::string keyword_name(int code) {
  const char* n = vocab().name[code];
  std::string s;
  for (; n && *n && *n != ' ' && *n != ',' && *n != '\n'; n++) s.push_back(*n);
  return s;
}

void print_values(const char* title, const float* f, int n) {
  if (!f || n <= 0) return;
  voir_texte(title);
  for (int i = 0; i < n; i++) voir_float(" %g", f[i]);
  voir_texte("\n");
}

// Levenshtein distance, on two rows.
size_t distance(const std::string& a, const std::string& b) {
  std::vector<size_t> prev(b.size() + 1), cur(b.size() + 1);
  for (size_t j = 0; j <= b.size(); j++) prev[j] = j;
  for (size_t i = 1; i <= a.size(); i++) {
    cur[0] = i;
    for (size_t j = 1; j <= b.size(); j++) {
      size_t subst = prev[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      cur[j] = std::min({prev[j] + 1, cur[j - 1] + 1, subst});
    }
    std::swap(prev, cur);
  }
  return prev[b.size()];
}

// The names are compared without case: `Ball` is nearest to ball.
std::string lower(std::string s) {
  for (char& c : s) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
  return s;
}

constexpr size_t FEW = 3;
constexpr int COLUMNS = 6;
constexpr size_t WIDTH = 13;

}  // namespace

HelpState& help_state() {
  static HelpState s{{INTERPRETER_HELP}};
  return s;
}

void help_register(const char* heading, std::span<const HelpEntry> entries) {
  std::vector<HelpGroup>& groups = help_state().groups;
  for (const HelpGroup& g : groups)
    if (strcmp(g.heading, heading) == 0) return;
  groups.push_back({heading, entries});
}

const HelpEntry* help_find(int code) {
  for (const HelpGroup& g : help_state().groups)
    for (const HelpEntry& e : g.entries)
      if (e.code == code) return &e;
  return nullptr;
}

std::string help_usage(const HelpEntry& e) {
  if (e.usage) return e.usage;
  const std::string n = keyword_name(e.code);
  return n + ": a key word with no command of its own; any words before an object form the key of a property: " + n +
         " vol(id)=v stores a value and " + n + " vol(id) reads it";
}

std::string help_example(const HelpEntry& e) {
  if (e.example) return e.example;
  const std::string n = keyword_name(e.code);
  return "cube(1); " + n + " vol(1)=1; " + n + " vol(1)";
}

void help_print(int code) {
  const VocabState& v = vocab();
  if (code < 0 || code >= NB_CODES || !v.name[code]) return;
  VOIR_CHAR("%s\n", v.name[code]);
  voir_int("emp=%d ", v.emp[code]);
  voir_int("sem=%d ", v.sem[code]);
  voir_int("dim=%d ", v.dim[code]);
  voir_int("type=%d\n", v.type[code]);
  print_values("default:", v.defaults[code], v.dim[code]);
  print_values("current:", v.current[code], v.dim[code]);
  if (const HelpEntry* e = help_find(code)) {
    VOIR_CHAR("usage: %s\n", help_usage(*e).c_str());
    VOIR_CHAR("example: %s\n", help_example(*e).c_str());
  }
}

void help_list() {
  const VocabState& v = vocab();
  for (const HelpGroup& g : help_state().groups) {
    VOIR_CHAR("%s\n", g.heading);
    // Names in columns of WIDTH, no blanks at the end of a line.
    int column = 0;
    size_t last = 0;
    for (const HelpEntry& e : g.entries) {
      if (e.code < 0 || e.code >= NB_CODES || !v.name[e.code]) continue;
      if (column == COLUMNS) {
        voir_texte("\n");
        column = 0;
      } else if (column > 0) {
        VOIR_CHAR("%s", std::string(last < WIDTH ? WIDTH - last : 1, ' ').c_str());
      }
      std::string n = keyword_name(e.code);
      VOIR_CHAR("%s", n.c_str());
      last = n.size();
      column++;
    }
    if (column) voir_texte("\n");
  }
}

std::vector<std::string> help_nearest(const char* name, size_t count) {
  const VocabState& v = vocab();
  std::string word = lower(name);
  std::vector<std::pair<size_t, std::string>> found;
  for (int voc = 0; voc < 2; voc++)
    for (int i = 0; i < v.nb_kw[voc] && i < KW_PER_VOC; i++) {
      const int code = voc * KW_PER_VOC + i;
      if (!v.name[code]) continue;
      std::string n = keyword_name(code);
      found.push_back({distance(word, lower(n)), n});
    }
  std::sort(found.begin(), found.end());
  // The names that share more than they change (a short word one edit
  // away, a long one up to three); when there are none, the few nearest
  // all the same.
  const size_t limit = std::min<size_t>(3, std::max<size_t>(1, word.size() / 2));
  std::vector<std::string> out;
  for (const auto& [d, n] : found) {
    if (out.size() == count || (d > limit && out.size() >= FEW)) break;
    out.push_back(n);
  }
  return out;
}

void help_unknown(const char* name) {
  VOIR_CHAR("%s", name);
  voir_message(0, MES_UNKNOWN);
  std::vector<std::string> near = help_nearest(name, 5);
  if (near.empty()) return;
  voir_texte("nearest:");
  for (const std::string& n : near) VOIR_CHAR(" %s", n.c_str());
  voir_texte("\n");
}
