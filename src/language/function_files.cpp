#include "language/function_files.h"

#include <cstring>

#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/functions.h"
#include "platform/process.h"
#include "scene/chains.h"

namespace {

// End of the function whose text starts at `i`: just past the "}" that
// closes its first "{", strings and comments stepped over; npos when the
// text ends first.
size_t function_end(const std::string& t, size_t i) {
  int depth = 0;
  bool opened = false;
  for (; i < t.size(); i++) {
    char c = t[i];
    if (c == '"' || c == '\'') {
      for (i++; i < t.size() && t[i] != c; i++)
        if (t[i] == '\\') i++;
    } else if (c == '/' && i + 1 < t.size() && t[i + 1] == '*') {
      size_t e = t.find("*/", i + 2);
      if (e == std::string::npos) return std::string::npos;
      i = e + 1;
    } else if (c == '/' && i + 1 < t.size() && t[i + 1] == '/') {
      while (i < t.size() && t[i] != '\n') i++;
    } else if (c == '{') {
      depth++;
      opened = true;
    } else if (c == '}') {
      if (--depth == 0 && opened) return i + 1;
    }
  }
  return std::string::npos;
}

// Start of the next function: past blanks and comments.
size_t function_start(const std::string& t, size_t i) {
  while (i < t.size()) {
    if (isspace(static_cast<unsigned char>(t[i])) || t[i] == ';') {
      i++;
    } else if (t.compare(i, 2, "/*") == 0) {
      size_t e = t.find("*/", i + 2);
      i = e == std::string::npos ? t.size() : e + 2;
    } else if (t.compare(i, 2, "//") == 0) {
      while (i < t.size() && t[i] != '\n') i++;
    } else {
      break;
    }
  }
  return i;
}

}  // namespace

int define_functions(const std::string& text) {
  int n = 0;
  for (size_t i = function_start(text, 0); i < text.size(); i = function_start(text, i)) {
    size_t end = function_end(text, i);
    if (end == std::string::npos) {
      voir_message(0, 74);
      return -1;
    }
    if (!define_function(text.substr(i, end - i).c_str())) {
      voir_message(0, 44);
      return -1;
    }
    n++;
    i = end;
  }
  return n;
}

int read_functions_file(const std::string& path) {
  std::string text;
  if (!file_read_all(path, text)) {
    err_lecture(path.c_str());
    return -1;
  }
  text.resize(strlen(text.c_str()));
  return define_functions(text);
}

int write_functions_file(const std::vector<std::string>& names, const std::string& path) {
  std::string out;
  for (Objet* f = chaine_classe(KW_func)->next; f; f = f->next) {
    const char* src = source_of(f);
    if (f->kind != KW_func || !src) continue;
    std::string name(src, strcspn(src, "( \t\n"));
    bool wanted = names.empty();
    for (const std::string& n : names) wanted = wanted || n == name;
    if (!wanted) continue;
    out += src;
    if (out.back() != '\n') out += '\n';
    out += '\n';
    f->reserved = 0;  // saved
  }
  if (!file_write_all(path, out)) {
    err_ecriture(path.c_str());
    return -1;
  }
  return 0;
}

Objet* load_function_from_disk(const char* name) {
  std::string file = std::string(name) + ".func";
  const std::string& folder = kernel().fun;
  std::string text;
  if (!file_read_all(file, text) && (folder.empty() || !file_read_all(folder + file, text))) return nullptr;
  text.resize(strlen(text.c_str()));
  if (define_functions(text) < 0) return nullptr;
  Objet* f = get_fonction(name);
  // A function read from its file is saved as it stands.
  for (Objet* o = chaine_classe(KW_func)->next; o; o = o->next) o->reserved = 0;
  return f;
}
