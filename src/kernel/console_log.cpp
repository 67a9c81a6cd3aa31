// The console log: a copy of printed text in the `text` property of the
// object kernel().Text_courant. Strings make the property grow; numbers
// slide it, dropping the oldest characters when it is full.
#include "kernel/console_log.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/objet.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

namespace {

constexpr int PROPERTY_HEAD = 6;  // header and one key pair
constexpr int VALUE_HEAD = 4;

// The log's property and its slot in the object's list, or null.
bloc log_property(int* slot) {
  Objet* o = kernel().Text_courant;
  if (!o || !o->local) return nullptr;
  bloc p = get_propr_ind_1(o->local, KW_text, slot);
  if (!p || p[0] < PROPERTY_HEAD + VALUE_HEAD || tag(p + PROPERTY_HEAD) != T_CHAR) return nullptr;
  return p;
}

// Bytes of text the property can hold, its final NUL apart.
size_t capacity(const word* p) { return static_cast<size_t>(p[0] - PROPERTY_HEAD - VALUE_HEAD) * 4 - 1; }
char* log_text(bloc p) { return text(p + PROPERTY_HEAD); }

// Replaces the property by a larger copy able to hold `needed` bytes.
bloc grow(bloc p, int slot, size_t needed) {
  int words = PROPERTY_HEAD + VALUE_HEAD + static_cast<int>(needed / 4) + 1;
  bloc q = alloue_bloc(words);
  if (!q) {
    TRACE_FAIL("VOIR_CHAR()");
    return nullptr;
  }
  memset(q, 0, static_cast<size_t>(words) * 4);
  memcpy(q, p, static_cast<size_t>(p[0]) * 4);
  q[0] = words;
  bloc v = q + PROPERTY_HEAD;
  v[0] = words - PROPERTY_HEAD;
  kernel().Text_courant->local[slot] = bloc_handle(q);
  libere_bloc(p);
  return q;
}

void append(const std::string& add, bool slide) {
  int slot = 0;
  bloc p = log_property(&slot);
  if (!p || add.empty()) return;
  char* t = log_text(p);
  size_t len = strnlen(t, capacity(p));
  size_t cap = capacity(p);
  if (len + add.size() > cap) {
    if (slide) {
      size_t excess = len + add.size() - cap;
      if (excess >= len) {
        len = 0;
      } else {
        memmove(t, t + excess, len - excess);
        len -= excess;
      }
      if (add.size() > cap) return;
    } else {
      p = grow(p, slot, len + add.size());
      if (!p) return;
      t = log_text(p);
    }
  }
  memcpy(t + len, add.data(), add.size());
  t[len + add.size()] = 0;
}

// A float as the log writes it: sign, integer part, then when the
// fraction is not zero a point, up to 6 digits and a blank.
std::string float_text(float f) {
  std::string s;
  double v = f;
  if (v < 0) {
    s += '-';
    v = -v;
  }
  double ip = std::floor(v);
  char buf[64];
  snprintf(buf, sizeof buf, "%.0f", ip);
  s += buf;
  long frac = std::lround((v - ip) * 1e6);
  if (frac > 0 && frac < 1000000) {
    snprintf(buf, sizeof buf, ".%06ld", frac);
    std::string d = buf;
    while (d.back() == '0') d.pop_back();
    s += d + " ";
  }
  return s;
}

// The format with its conversions replaced one by one by `values`; only
// "%d" and "%f" forms are understood, other text is copied.
std::string expand(const char* format, const std::string* values, int count) {
  std::string s;
  int used = 0;
  for (const char* c = format; *c; c++) {
    if (*c == '%' && used < count) {
      const char* q = c + 1;
      while (*q && strchr("-+ #0123456789.l", *q)) q++;
      if (*q == 'd' || *q == 'f') {
        s += values[used++];
        c = q;
        continue;
      }
    }
    s += *c;
  }
  return s;
}

}  // namespace

void console_log_string(const char* format, const char* s) {
  KernelState& k = kernel();
  if (!k.Text_courant || k.Mode_idle == 0) return;
  if (Yes(KW_see) == 2) {
    Yes(KW_see) = 1;
    return;
  }
  std::string add;
  if (!format) add = s;
  else {
    const char* pct = strchr(format, '%');
    add.assign(format, pct ? pct - format : strlen(format));
    if (pct && pct[1] == 's') {
      add += s;
      const char* rest = pct + 2;
      const char* next = strchr(rest, '%');
      add.append(rest, next ? next - rest : strlen(rest));
    }
  }
  append(add, false);
}

void console_log_number(const char* format, int a, int b, int count) {
  std::string values[2] = {std::to_string(a), std::to_string(b)};
  append(expand(format, values, count), true);
}

void console_log_floats(const char* format, const float* f, int count) {
  std::string values[2] = {float_text(f[0]), count > 1 ? float_text(f[1]) : std::string()};
  append(expand(format, values, count), true);
}
