// Helpers of the command handlers (cmd_util.h).
#include "language/cmd_util.h"

#include <cstring>

#include "kernel/report.h"
#include "language/eval_internal.h"

int set_result_floats(word* record, const word* limit, const std::vector<float>& f, int width) {
  long n = static_cast<long>(f.size());
  if (record + 4 + n > limit) {
    err_dim_ev(nullptr);
    return -12;
  }
  record[0] = static_cast<word>(4 + n);
  record[1] = T_FLOAT;
  record[2] = static_cast<word>(width > 1 ? n / width : n);
  record[3] = width > 1 ? width : 1;
  for (long i = 0; i < n; i++) record[4 + i] = fw(f[static_cast<size_t>(i)]);
  return 0;
}

int set_result_text(word* record, const std::string& s) {
  if (s.empty()) return set_result_nil(record);
  return put_text(record, s.data(), s.size()) ? 0 : -12;
}

std::vector<std::string> split_words(const char* s) {
  std::vector<std::string> out;
  std::string w;
  for (; s && *s; s++) {
    if (*s == ' ' || *s == '\t' || *s == ',' || *s == '\n') {
      if (!w.empty()) out.push_back(w);
      w.clear();
    } else {
      w += *s;
    }
  }
  if (!w.empty()) out.push_back(w);
  return out;
}

void not_found(int code, const char* name) {
  word v[68] = {};
  size_t len = strlen(name) < 250 ? strlen(name) : 250;
  v[0] = static_cast<word>(len / 4 + 5);
  v[1] = T_CHAR;
  v[2] = v[0] - 4;
  v[3] = 1;
  memcpy(text(v), name, len);
  err_objet(code, v, -1, 0, nullptr);
}
