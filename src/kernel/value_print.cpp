// Printing of values (the print command) and of bad object references.
#include <cstring>
#include <string>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

namespace {

// Blank-separated word `i` (0-based) of a text, or "" when there is none.
std::string word_of(const char* s, int i) {
  const char* p = s;
  for (;;) {
    while (*p == ' ') p++;
    if (!*p) return "";
    const char* e = p;
    while (*e && *e != ' ') e++;
    if (i-- == 0) return std::string(p, e - p);
    p = e;
  }
}

int count_words(const char* s) {
  int n = 0;
  while (!word_of(s, n).empty()) n++;
  return n;
}

int element_count(const word* v) {
  if (tag(v) == T_CHAR) return count_words(text(v));
  return np(v) * (dimp(v) > 0 ? dimp(v) : 1);
}

void print_element(const word* v, int i) {
  switch (tag(v)) {
    case T_LONG: voir_int("%d ", data(v)[i]); break;
    case T_FLOAT: voir_float("%f ", getf(v, i)); break;
    case T_CHAR: VOIR_CHAR("%s", word_of(text(v), i).c_str()); break;
    default: break;
  }
}

bool printable_kind(word t) { return t == T_LONG || t == T_FLOAT || t == T_CHAR; }

}  // namespace

void err_objet(int code, const word* value, int index, int number, const char* txt) {
  if (code) voir_mot(code);
  if (value) {
    int n = element_count(value);
    if (index < 0) {
      if (tag(value) == T_CHAR) VOIR_CHAR("%s ", text(value));
      else for (int i = 0; i < n; i++) print_element(value, i);
    } else if (index >= n) {
      voir_int("%d", index);
      voir_message(0, MES_ILLEGAL);
      return;
    } else {
      if (!printable_kind(tag(value))) return;
      print_element(value, index);
    }
  }
  if (number) voir_int("%d: ", number);
  if (txt) VOIR_CHAR("%s: ", txt);
  err_pas_trouve(nullptr);
}

namespace {

int print_flat(const word* v) {
  int n = np(v), d = dimp(v) > 0 ? dimp(v) : 1;
  int pri = kernel().pri;
  if (n > pri) {
    voir_message(0, MES_TRUNCATED_DATA);
    n = pri;
  }
  if (d < 2) {
    for (int i = 0; i < n; i++) print_element(v, i);
    VOIR_CHAR("%s", "\n");
    return 0;
  }
  for (int p = 0; p < n; p++) {
    voir_int("%d: ", p + 1);
    for (int j = 0; j < d; j++) print_element(v, p * d + j);
    VOIR_CHAR("%s", "\n");
  }
  return 0;
}

// A HYBRIDE whose first element is a CHAR opening with "%" formats the
// elements after it: each conversion takes the next element.
int print_formatted(const word* v) {
  const word* fmt = v + 4;
  const char* f = text(fmt);
  const word* e = fmt + size(fmt);
  int left = np(v) - 1;
  std::string literal;
  for (const char* p = f; *p; p++) {
    if (*p != '%' || p[1] == '%' || left <= 0) {
      literal.push_back(*p);
      if (*p == '%' && p[1] == '%') p++;
      continue;
    }
    VOIR_CHAR("%s", literal.c_str());
    literal.clear();
    const char* q = p + 1;
    while (*q && strchr("-+ #0123456789.", *q)) q++;
    std::string conversion(p, q - p + 1);
    if (tag(e) == T_CHAR && *q == 's') VOIR_CHAR(conversion.c_str(), text(e));
    else if (tag(e) == T_FLOAT && strchr("feEgG", *q)) voir_float(conversion.c_str(), getf(e, 0));
    else if (tag(e) == T_FLOAT && strchr("dxXoc", *q)) voir_int(conversion.c_str(), static_cast<int>(getf(e, 0)));
    else if (tag(e) == T_LONG && strchr("dxXoc", *q)) voir_int(conversion.c_str(), data(e)[0]);
    else literal.append(conversion);
    p = *q ? q : q - 1;
    e += size(e) > 0 ? size(e) : 2;
    left--;
  }
  VOIR_CHAR("%s", literal.c_str());
  return 0;
}

}  // namespace

int print_value(const word* v) {
  if (!v || size(v) < 4) {
    if (Yes(KW_error) > 0) voir_message(0, MES_ERROR);
    return -1;
  }
  switch (tag(v)) {
    case T_FLOAT:
    case T_LONG: return print_flat(v);
    case T_CHAR: VOIR_CHAR("%s\n", text(v)); return 0;
    case T_NIL: VOIR_CHAR("%s", "NIL\n"); return 0;
    case T_HYBRIDE: {
      const word* first = v + 4;
      if (np(v) > 0 && tag(first) == T_CHAR && text(first)[0] == '%') return print_formatted(v);
      const word* e = first;
      for (int i = 0; i < np(v); i++, e += size(e) > 0 ? size(e) : 2)
        if (size(e) >= 4 && print_value(e) < 0) return -1;
      return 0;
    }
    default:
      if (Yes(KW_error) > 0) voir_message(0, MES_ERROR);
      return -1;
  }
}
