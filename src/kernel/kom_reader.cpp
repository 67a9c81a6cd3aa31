// Reader of keyword tables. A record is three lines:
//   |N: name and synonyms        (N is ignored: the position gives the code)
//   emp,sem,dim,type             (dim is replaced by the count of defaults)
//   defaults                     ("." for none, [n] zeros, [n]=v copies, "\" continues)
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "kernel/report.h"
#include "kernel/vocab.h"

static bool is_line_end(char c) { return c == '\n' || c == '\0'; }

static const char* next_line(const char* p) {
  while (!is_line_end(*p)) p++;
  return *p ? p + 1 : p;
}

// Name line: after the colon and its blanks, the rest of the line, less
// trailing blanks and carriage return.
static const char* read_name(const char* p, std::string* name) {
  const char* colon = p;
  while (!is_line_end(*colon) && *colon != ':') colon++;
  if (*colon == ':') p = colon + 1;
  while (*p == ' ' || *p == '\t') p++;
  const char* end = p;
  while (!is_line_end(*end)) end++;
  const char* last = end;
  while (last > p && (last[-1] == ' ' || last[-1] == '\t' || last[-1] == '\r')) last--;
  name->assign(p, last);
  return *end ? end + 1 : end;
}

// A decimal integer that stops at the first character it can't use, then
// steps past the following comma: "v1" reads as 0.
static const char* read_field(const char* p, int* out) {
  int sign = 1;
  long v = 0;
  while (*p == ' ' || *p == '\t') p++;
  if (*p == '-' || *p == '+') sign = (*p++ == '-') ? -1 : 1;
  while (*p >= '0' && *p <= '9' && v < 100000000) v = v * 10 + (*p++ - '0');
  *out = static_cast<int>(sign * v);
  while (!is_line_end(*p) && *p != ',') p++;
  return *p == ',' ? p + 1 : p;
}

static const char* read_descriptor(const char* p, int field[4]) {
  for (int i = 0; i < 4; i++) field[i] = 0;
  if (*p == '|') return p;  // record without descriptor
  for (int i = 0; i < 4; i++) p = read_field(p, &field[i]);
  return next_line(p);
}

static bool starts_number(char c) {
  return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.';
}

static bool is_separator(char c) { return c == ',' || c == '\t'; }

static const char* read_count(const char* p, long* n) {
  *n = 0;
  while (*p >= '0' && *p <= '9' && *n <= VALUE_POOL) *n = *n * 10 + (*p++ - '0');
  while (*p >= '0' && *p <= '9') p++;
  return p;
}

// One number; "." (none) or an unreadable word gives nothing.
static const char* read_value(const char* p, std::vector<float>& out) {
  char* end = nullptr;
  float v = starts_number(*p) ? std::strtof(p, &end) : 0;
  if (end && end != p) {
    out.push_back(v);
    return end;
  }
  while (!is_line_end(*p) && !is_separator(*p) && *p != ' ') p++;
  return p;
}

// "[n]" or "[n]=v": n copies of v, or of 0. At most room + 1 are added,
// enough for the caller to see the overflow.
static const char* read_repeat(const char* p, std::vector<float>& out, size_t room) {
  long n;
  p = read_count(p + 1, &n);
  while (!is_line_end(*p) && *p != ']') p++;
  if (*p == ']') p++;
  std::vector<float> one;
  if (*p == '=') p = read_value(p + 1, one);
  out.insert(out.end(), std::min<size_t>(n, room + 1), one.empty() ? 0.0f : one[0]);
  return p;
}

// Default line, with its continuations. Returns null when more than `room`
// values are given.
static const char* read_defaults(const char* p, std::vector<float>& out, size_t room) {
  if (*p == '|') return p;  // record without default line
  for (;;) {
    while (*p == ' ' || *p == '\r' || is_separator(*p)) p++;
    if (is_line_end(*p)) return *p ? p + 1 : p;
    if (*p == '\\') p = next_line(p);
    else if (*p == '[') p = read_repeat(p, out, room);
    else p = read_value(p, out);
    if (out.size() > room) return nullptr;
  }
}

static void clear_vocabulary(VocabState& v, int voc) {
  for (int c = voc * KW_PER_VOC; c < (voc + 1) * KW_PER_VOC; c++) {
    v.name[c] = nullptr;
    v.emp[c] = v.sem[c] = v.sem_ini[c] = v.dim[c] = v.type[c] = 0;
    v.defaults[c] = v.current[c] = nullptr;
  }
  v.nb_kw[voc] = 0;
  v.kw_text[voc].clear();
}

static void store_keyword(VocabState& v, int code, const int field[4], const std::vector<float>& vals) {
  v.emp[code] = field[0];
  v.sem[code] = v.sem_ini[code] = field[1];
  v.type[code] = field[3];
  v.dim[code] = static_cast<int>(vals.size());  // the third field has no effect
  v.defaults[code] = v.default_pool + v.pool_used;
  v.current[code] = v.current_pool + v.pool_used;
  std::copy(vals.begin(), vals.end(), v.defaults[code]);
  std::copy(vals.begin(), vals.end(), v.current[code]);
  v.pool_used += static_cast<int>(vals.size());
}

// Returns the keyword count, or -1 (reported).
int lire_kom(int voc, const char* text) {
  VocabState& v = vocab();
  if (voc < 0 || voc >= NB_VOC_MAX) {
    voir_int2("kom %d != [0,%d]\a\n", voc, NB_VOC_MAX - 1);
    return -1;
  }
  if (!text) return -1;
  clear_vocabulary(v, voc);
  // First pass: every record opens with "|", so this bounds the count and
  // lets the names be stored where they will never move.
  v.kw_text[voc].reserve(std::count(text, text + std::strlen(text), '|'));

  std::vector<float> vals;
  int pos = 0;
  for (const char* p = std::strchr(text, '|'); p; p = std::strchr(p, '|'), pos++) {
    if (pos == KW_PER_VOC) {
      voir_int2("kom %d: more than %d keywords\a\n", voc, KW_PER_VOC);
      return -1;
    }
    std::string name;
    int field[4];
    vals.clear();
    p = read_name(p + 1, &name);
    p = read_descriptor(p, field);
    p = read_defaults(p, vals, VALUE_POOL - v.pool_used);
    if (!p) {
      voir_int("kom: more than %d default values\a\n", VALUE_POOL);
      return -1;
    }
    int code = voc * KW_PER_VOC + pos;
    v.kw_text[voc].push_back(std::move(name));
    v.name[code] = v.kw_text[voc].back().c_str();
    store_keyword(v, code, field, vals);
    v.nb_kw[voc] = pos + 1;
  }
  v.nb_voc = std::max(v.nb_voc, voc + 1);
  return pos;
}
