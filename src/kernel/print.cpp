// VOIR_CHAR and the formatted printers: the only road of console text.
#include <cstdio>
#include <cstring>
#include <string>

#include "kernel/console_log.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"
#include "platform/process.h"

namespace {

bool ring_on() { return Yes(KW_ring) > 0; }

std::string without_bells(const char* s, size_t max) {
  std::string r;
  for (size_t i = 0; s[i] && i < max; i++)
    if (s[i] != '\a') r.push_back(s[i]);
  return r;
}

// Expands the "%s" conversions of `format` (flags, width and precision
// included) with `s`; "%%" gives "%"; any other conversion is copied as
// written, so no format can read an argument that was not passed.
std::string format_string(const char* format, const char* s) {
  std::string out;
  for (const char* p = format; *p; p++) {
    if (*p != '%') { out.push_back(*p); continue; }
    if (p[1] == '%') { out.push_back('%'); p++; continue; }
    const char* q = p + 1;
    while (*q && strchr("-+ #0123456789.", *q)) q++;
    if (*q != 's' || q - p > 20) { out.push_back('%'); continue; }
    char conversion[24];
    memcpy(conversion, p, q - p + 1);
    conversion[q - p + 1] = 0;
    int n = snprintf(nullptr, 0, conversion, s);
    std::string piece(n, '\0');
    snprintf(piece.data(), n + 1, conversion, s);
    out += piece;
    p = q;
  }
  return out;
}

void emit(const std::string& s) { out_write(s.data(), s.size()); }

// A numeric print made by snprintf into `buf`, its bells dropped when the
// bell is off.
void emit_printed(const char* buf, size_t room) {
  emit(ring_on() ? std::string(buf) : without_bells(buf, room));
}

}  // namespace

void VOIR_CHAR(const char* format, const char* s) {
  if (!s) return;
  size_t len = strlen(s);
  size_t limit = len;
  int pri = kernel().pri;
  if (pri >= 0 && len > static_cast<size_t>(pri) && Yes(KW_print) >= -1) {
    voir_message(0, MES_TRUNCATED_DATA);
    limit = pri;
  }
  std::string cut(s, limit);
  console_log_string(format, cut.c_str());
  std::string copy = ring_on() ? cut : without_bells(cut.c_str(), cut.size());
  if (!format) {
    emit(copy);
    return;
  }
  std::string f = ring_on() ? std::string(format) : without_bells(format, 255);
  emit(format_string(f.c_str(), copy.c_str()));
}

void voir_car(int c) {
  char s[2] = {static_cast<char>(c), 0};
  VOIR_CHAR("%s", s);
}

// The numeric printers are given formats written in this program, holding
// one or two conversions of the kind they name.
void voir_int(const char* format, int v) {
  char buf[512];
  snprintf(buf, sizeof buf, format, v);
  console_log_number(format, v, 0, 1);
  emit_printed(buf, sizeof buf);
}

void voir_int2(const char* format, int a, int b) {
  char buf[512];
  snprintf(buf, sizeof buf, format, a, b);
  console_log_number(format, a, b, 2);
  emit_printed(buf, sizeof buf);
}

void voir_float(const char* format, float f) {
  char buf[512];
  snprintf(buf, sizeof buf, format, static_cast<double>(f));
  console_log_floats(format, &f, 1);
  emit_printed(buf, sizeof buf);
}

void voir_float2(const char* format, float a, float b) {
  char buf[512];
  snprintf(buf, sizeof buf, format, static_cast<double>(a), static_cast<double>(b));
  const float v[2] = {a, b};
  console_log_floats(format, v, 2);
  emit_printed(buf, sizeof buf);
}

void bell() {
  VOIR_CHAR("%s", "\a");
  out_flush();
}

void flush_out() { out_flush(); }

void trace_fail(const char* name) { VOIR_CHAR("%s\n", name); }

void ring_bells(int n, int delay_ms) {
  if (n < 0) {
    Yes(KW_ring) = 2;
    return;
  }
  for (int i = 0; i < n; i++) {
    interrupt_check();
    if (i > 0 && delay_ms > 1) sleep_ms(delay_ms);
    out_write("\a", 1);
    out_flush();
  }
}
