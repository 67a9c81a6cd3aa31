#include "image/file_numbers.h"

#include <cmath>
#include <cstdlib>

#include "kernel/access.h"
#include "kernel/keywords.h"
#include "kernel/report.h"

namespace {

constexpr int MAX_PLACES = 32;

int base_of(char c) {
  switch (c) {
    case 'B': case 'b': return 2;
    case 'O': case 'o': return 8;
    case 'X': case 'x': return 16;
    default: return 10;
  }
}

// The first element of a FLOAT or LONG as an integer; false for other
// kinds, and for a number that is not finite or lies beyond +-2e9.
bool numero(const word* v, long long* n) {
  if (!v || size(v) < 5 || np(v) < 1) return false;
  if (tag(v) == T_LONG) {
    *n = v[4];
    return true;
  }
  const float f = tag(v) == T_FLOAT ? getf(v, 0) : NAN;
  if (!std::isfinite(f) || std::fabs(f) > 2e9f) return false;
  *n = entier(f);
  return true;
}

// The text a number value puts in a file name.
bool texte_numero(const word* v, int offset, std::string& out) {
  long long n = 0;
  if (v && tag(v) == T_CHAR) {  // ("text"): the text less a trailing period
    out = text(v);
    if (!out.empty() && out.back() == '.') out.pop_back();
    return true;
  }
  if (numero(v, &n)) {
    out = std::to_string(n + offset);
    return true;
  }
  if (!v || tag(v) != T_HYBRIDE || np(v) < 2) return false;
  const word* fmt = sous_bloc(v, 0);
  if (!fmt || tag(fmt) != T_CHAR || !numero(sous_bloc(v, 1), &n)) return false;
  return format_numerique(text(fmt), n + offset, out);
}

}  // namespace

bool format_numerique(const char* fmt, long long v, std::string& out) {
  char* end = nullptr;
  const long places = std::strtol(fmt, &end, 10);
  if (end == fmt || places < 1 || places > MAX_PLACES) return false;
  const int base = base_of(*end);
  unsigned long long m = v < 0 ? 0ULL - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
  out.assign(static_cast<size_t>(places), '0');
  for (long i = places - 1; i >= 0 && m; i--, m /= base) out[i] = "0123456789abcdef"[m % base];
  if (v < 0) out[0] = '-';
  return true;
}

bool DET_NUMBER(const std::string& name, const word* number, int offset, std::string& out) {
  std::string inserted;
  if (!texte_numero(number, offset, inserted)) {
    voir_mot(KW_number);
    voir_texte("(n) or (\"4D\",n) or (\"text\")\a\n");
    return false;
  }
  const size_t dot = name.rfind('.');
  if (dot == std::string::npos) out = name + inserted;
  else out = name.substr(0, dot) + inserted + name.substr(dot);
  return true;
}
