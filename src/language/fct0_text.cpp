// Text workers of fct0: bytes to numbers and back (`ascii`, `atof`,
// `atoi`), numbers written with descriptors (`string`, `stringf`), text
// read with descriptors (`format`), and searches (`inclu`).
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/fct0.h"

namespace {

bool separator(char ch) { return ch == ' ' || ch == '\t' || ch == '\n' || ch == ','; }

// Pushes one float behind the elements already written at `r`; false
// after message 12.
bool push(Fct0Call& c, word* r, float f) {
  if (r + 5 + r[2] > c.limit) {
    err_dim_ev(nullptr);
    return false;
  }
  r[4 + r[2]++] = fw(f);
  r[0] = 4 + r[2];
  return true;
}

// An empty FLOAT at c.out, grown by push.
word* open_floats(Fct0Call& c) { return build_zeros(c.out, c.limit, 0); }

}  // namespace

// ---- ascii, atof, atoi ---------------------------------------------------

int fct0_ascii(Fct0Call& c) {
  if (tag(c.v) == T_CHAR) {
    word* r = build_zeros(c.out, c.limit, c.n);
    if (!r) return -12;
    for (int i = 0; i < c.n; i++) setf(r, i, static_cast<unsigned char>(text(c.v)[i]));
    return 0;
  }
  if (tag(c.v) != T_FLOAT) return wrong_kind(c);
  TextOut t = text_begin(c);
  for (int i = 0; i < c.n; i++) text_put(t, static_cast<char>(entier(getf(c.v, i))));
  return text_end(t);
}

namespace {

// The integer reader of the system: a sign, then decimal digits up to
// the first other character.
float read_integer(const char* s) {
  bool minus = *s == '-';
  if (*s == '-' || *s == '+') s++;
  long long n = 0;
  for (; *s >= '0' && *s <= '9'; s++)
    if (n < 10000000000LL) n = n * 10 + (*s - '0');
  return static_cast<float>(minus ? -n : n);
}

}  // namespace

// Every run of tab, newline, blank and comma separates two words, so a
// text with k runs gives k + 1 numbers (an empty word reads as 0).
int fct0_ato(Fct0Call& c) {
  if (tag(c.v) != T_CHAR) return wrong_kind(c);
  const char* s = text(c.v);
  int words = 1;
  for (int i = 0; i < c.n; i++)
    if (separator(s[i]) && (i == 0 || !separator(s[i - 1]))) words++;
  word* r = build_zeros(c.out, c.limit, words);
  if (!r) return -12;
  const char* p = s;
  for (int w = 0; w < words; w++) {
    char buf[128];
    size_t len = 0;
    while (*p && !separator(*p)) {
      if (len < sizeof buf - 1) buf[len++] = *p;
      p++;
    }
    buf[len] = 0;
    while (separator(*p)) p++;
    setf(r, w, c.first[2] == KW_atof ? static_cast<float>(strtod(buf, nullptr)) : read_integer(buf));
  }
  return 0;
}

// ---- string, stringf ---------------------------------------------------------

namespace {

// The next descriptor of a format: a decimal width and a letter, the
// descriptors being separated by comma, blank or tab. An exhausted
// format gives empty descriptors.
struct Descriptor {
  int width = 0;
  char letter = 0;
  bool empty = true;
};

Descriptor next_descriptor(const char*& f) {
  Descriptor d;
  while (*f == ',' || *f == ' ' || *f == '\t') f++;
  if (!*f) return d;
  d.empty = false;
  while (*f >= '0' && *f <= '9') {
    if (d.width < 100000) d.width = d.width * 10 + (*f - '0');
    f++;
  }
  if (*f && *f != ',' && *f != ' ' && *f != '\t') d.letter = *f++;
  return d;
}

int base_of(char letter) {
  switch (letter) {
    case 'b': case 'B': return 2;
    case 'o': case 'O': return 8;
    case 'x': case 'X': return 16;
    default: return 10;
  }
}

// Digits of |value| in `base`, lowest first; returns their count.
int digits_of(long long value, int base, char* out) {
  unsigned long long m = value < 0 ? 0ULL - static_cast<unsigned long long>(value) : value;
  int n = 0;
  do {
    int d = static_cast<int>(m % base);
    out[n++] = static_cast<char>(d < 10 ? '0' + d : 'A' + d - 10);
    m /= base;
  } while (m);
  return n;
}

// A number in a field of exactly `width` characters: leading zeros, the
// high digits dropped when the field is too small, and "-" over the
// first character of a negative value. Width 0 is the natural width.
void write_integer(TextOut& t, int value, int width, int base) {
  char digits[40];
  int n = digits_of(value, base, digits);
  if (width == 0) {
    if (value < 0) text_put(t, '-');
    while (n > 0 && text_put(t, digits[--n])) {}
    return;
  }
  for (int pos = width - 1; pos >= 0 && !t.full; pos--) {
    char ch = pos < n ? digits[pos] : '0';
    if (pos == width - 1 && value < 0) ch = '-';
    text_put(t, ch);
  }
}

void write_decimals(TextOut& t, float x, int decimals) {
  char buf[128];
  if (decimals > 60) decimals = 60;
  int n = snprintf(buf, sizeof buf, "%.*f", decimals, static_cast<double>(x));
  text_add(t, buf, static_cast<size_t>(n < 0 ? 0 : n < static_cast<int>(sizeof buf) ? n : sizeof buf - 1));
}

// The HYBRIDE form: a CHAR format then a FLOAT vector, or null parts.
bool format_and_values(const word* v, const word** fmt, const word** values) {
  if (tag(v) != T_HYBRIDE || np(v) < 2) return false;
  *fmt = v + 4;
  *values = *fmt + size(*fmt);
  return tag(*fmt) == T_CHAR && tag(*values) == T_FLOAT;
}

}  // namespace

// `string` writes truncated integers, `stringf` decimals ("3f" by
// default). The plain FLOAT form joins them by commas; the HYBRIDE form
// takes one descriptor per element, and only `stringf` puts commas
// between the elements there.
int fct0_string(Fct0Call& c) {
  bool floating = c.first[2] == KW_stringf;
  if (tag(c.v) == T_CHAR) return build_nil(c.out, c.limit);
  const word* fmt = nullptr;
  const word* values = c.v;
  if (tag(c.v) != T_FLOAT && !format_and_values(c.v, &fmt, &values)) return wrong_kind(c);
  const char* f = fmt ? text(fmt) : "";
  TextOut t = text_begin(c);
  for (int i = 0; i < value_length(values) && !t.full; i++) {
    Descriptor d = fmt ? next_descriptor(f) : Descriptor{};
    if (i > 0 && (!fmt || floating)) text_put(t, ',');
    float x = getf(values, i);
    if (floating) write_decimals(t, x, d.empty || (d.width == 0 && !fmt) ? 3 : d.width);
    else write_integer(t, entier(x), d.width, base_of(d.letter));
  }
  return text_end(t);
}

// ---- format ------------------------------------------------------------------

namespace {

// "<htm>text": each byte that the code table knows becomes its entity.
int html_text(Fct0Call& c, const char* s) {
  const std::string* table = kernel().htm_table;
  bool any = false;
  for (int i = 0; i < 256 && !any; i++) any = !table[i].empty();
  if (!any) {
    voir_message(0, MES_HTML_CODE_NOT_DEFINED);
    return -1;
  }
  TextOut t = text_begin(c);
  for (; *s && !t.full; s++) {
    const std::string& e = table[static_cast<unsigned char>(*s)];
    if (e.empty()) text_put(t, *s);
    else text_add(t, e.data(), e.size());
  }
  return text_end(t);
}

// The next field of the text (a run of characters other than blank, tab,
// newline and comma), read as a number; 0 when the text is exhausted.
float next_field(const char*& p, bool read) {
  while (separator(*p)) p++;
  const char* start = p;
  while (*p && !separator(*p)) p++;
  if (!read || p == start) return 0.0f;
  char buf[128];
  size_t len = static_cast<size_t>(p - start) < sizeof buf - 1 ? static_cast<size_t>(p - start) : sizeof buf - 1;
  memcpy(buf, start, len);
  buf[len] = 0;
  return static_cast<float>(strtod(buf, nullptr));
}

// Message 92, the usage of `format`, ends without a newline.
void usage() {
  voir_message(0, MES_FORMAT_USAGE);
  voir_texte("\n");
}

bool starts_constant(char ch) { return ch == '+' || ch == '-' || ch == '.' || (ch >= '0' && ch <= '9'); }

// "<descriptor>text": one number per descriptor character: "*" skips a
// field, a constant is read from the descriptor itself, any other
// character reads the next field of the text.
int read_numbers(Fct0Call& c, const char* d, const char* close) {
  const char* p = close + 1;
  word* r = open_floats(c);
  if (!r) return -12;
  while (d < close) {
    char ch = *d;
    if (ch == ',' || ch == '\t' || ch == ' ') {
      d++;
    } else if (ch == '*') {
      next_field(p, false);
      d++;
    } else if (starts_constant(ch)) {
      char* end = nullptr;
      float k = strtof(d, &end);
      d = end > d ? end : d + 1;
      if (!push(c, r, k)) return -12;
    } else {
      if (!push(c, r, next_field(p, true))) return -12;
      d++;
    }
  }
  return 0;
}

int format_text(Fct0Call& c) {
  const char* s = text(c.v);
  const char* close = s[0] == '<' ? strchr(s, '>') : nullptr;
  if (!close) {
    usage();
    return -1;
  }
  if (close - s == 4 && strncmp(s, "<htm", 4) == 0) return html_text(c, close + 1);
  return read_numbers(c, s + 1, close);
}

// "b": each number as its 32 binary digits, lowest first.
int to_bits(Fct0Call& c, const word* v) {
  int n = value_length(v);
  word* r = build_zeros(c.out, c.limit, 32 * n);
  if (!r) return -12;
  for (int i = 0; i < n; i++) {
    unsigned bits = static_cast<unsigned>(entier(getf(v, i)));
    for (int b = 0; b < 32; b++) setf(r, 32 * i + b, static_cast<float>((bits >> b) & 1u));
  }
  return 0;
}

// "c": the converse of "b": each run of 32 digits (lowest first, a
// non-zero digit counting as 1) packed back into a number.
int from_bits(Fct0Call& c, const word* v) {
  int n = value_length(v);
  int numbers = (n + 31) / 32;
  word* r = build_zeros(c.out, c.limit, numbers);
  if (!r) return -12;
  for (int i = 0; i < numbers; i++) {
    unsigned bits = 0;
    for (int b = 0; b < 32 && 32 * i + b < n; b++)
      if (getf(v, 32 * i + b) != 0.0f) bits |= 1u << b;
    setf(r, i, static_cast<float>(static_cast<int>(bits)));
  }
  return 0;
}

// "f": the fractional part of each number, with its sign.
int fractions(Fct0Call& c, const word* v) {
  int n = value_length(v);
  word* r = build_zeros(c.out, c.limit, n);
  if (!r) return -12;
  for (int i = 0; i < n; i++) {
    float x = getf(v, i);
    setf(r, i, x - static_cast<float>(entier(x)));
  }
  return 0;
}

// "m": the smallest and the largest number.
int bounds(Fct0Call& c, const word* v) {
  int n = value_length(v);
  if (n == 0) return build_nil(c.out, c.limit);
  word* r = build_zeros(c.out, c.limit, 2);
  if (!r) return -12;
  float lo = getf(v, 0), hi = lo;
  for (int i = 1; i < n; i++) {
    float x = getf(v, i);
    if (x < lo) lo = x;
    if (x > hi) hi = x;
  }
  setf(r, 0, lo);
  setf(r, 1, hi);
  return 0;
}

struct Form {
  char letter;
  int (*run)(Fct0Call& c, const word* v);
};

constexpr Form FORMS[] = {{'b', to_bits}, {'c', from_bits}, {'f', fractions}, {'m', bounds}};

}  // namespace

int fct0_format(Fct0Call& c) {
  if (tag(c.v) == T_CHAR) return format_text(c);
  const word* letter = nullptr;
  const word* values = nullptr;
  if (tag(c.v) == T_HYBRIDE && np(c.v) >= 2) {
    letter = c.v + 4;
    values = letter + size(letter);
  }
  if (letter && tag(letter) == T_CHAR && tag(values) == T_FLOAT)
    for (const Form& f : FORMS)
      if (text(letter)[0] == f.letter && text(letter)[1] == 0) return f.run(c, values);
  usage();
  return -1;
}

// ---- inclu --------------------------------------------------------------------

int INCLU_NAME(const char* name) {
  int voc = 0, code = 0;
  return cherche_mot(name, &voc, &code) == 0 ? code : -1;
}

namespace {

// Positions (from 0) of the first element among the others; NIL if none.
int inclu_floats(Fct0Call& c) {
  word* r = open_floats(c);
  if (!r) return -12;
  float x = getf(c.v, 0);
  for (int i = 1; i < c.n; i++)
    if (getf(c.v, i) == x && !push(c, r, static_cast<float>(i - 1))) return -12;
  return r[2] == 0 ? build_nil(c.out, c.limit) : 0;
}

// "needle haystack": every position of the needle, overlaps included.
int inclu_text(Fct0Call& c, const char* blank) {
  const char* s = text(c.v);
  size_t len = static_cast<size_t>(blank - s);
  const char* hay = blank + 1;
  size_t hay_len = strlen(hay);
  word* r = open_floats(c);
  if (!r) return -12;
  for (size_t i = 0; len > 0 && i + len <= hay_len; i++)
    if (memcmp(hay + i, s, len) == 0 && !push(c, r, static_cast<float>(i))) return -12;
  return 0;
}

}  // namespace

int fct0_inclu(Fct0Call& c) {
  if (tag(c.v) == T_FLOAT) return inclu_floats(c);
  if (tag(c.v) != T_CHAR) return wrong_kind(c);
  const char* blank = strchr(text(c.v), ' ');
  if (blank) return inclu_text(c, blank);
  word* r = build_zeros(c.out, c.limit, 1);
  if (!r) return -12;
  setf(r, 0, static_cast<float>(INCLU_NAME(text(c.v))));
  return 0;
}
