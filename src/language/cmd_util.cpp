// Helpers of the command handlers (cmd_util.h).
#include "language/cmd_util.h"

#include <cstring>

#include "kernel/report.h"
#include "language/eval_internal.h"


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
  build_text(v, nullptr, name, len);
  err_objet(code, v, -1, 0, nullptr);
}
