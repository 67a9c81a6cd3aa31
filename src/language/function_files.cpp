#include "language/function_files.h"

#include <cstring>
#include <vector>

#include "kernel/chains.h"
#include "kernel/file_out.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "language/live_reload.h"
#include "platform/process.h"

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

// The comments between the end of one function and the start of the
// next, from the first comment's line: blank lines and ";" around them go.
std::string comment_between(const std::string& t, size_t from, size_t to) {
  size_t first = std::string::npos;
  for (size_t i = from; i < to && first == std::string::npos; i++)
    if (t.compare(i, 2, "/*") == 0 || t.compare(i, 2, "//") == 0) first = i;
  if (first == std::string::npos) return "";
  while (first > from && (t[first - 1] == ' ' || t[first - 1] == '\t')) first--;
  size_t last = to;
  while (last > first && isspace(static_cast<unsigned char>(t[last - 1]))) last--;
  return t.substr(first, last - first);
}

}  // namespace

int function_pieces(const std::string& text, std::vector<FunctionPiece>& pieces) {
  pieces.clear();
  size_t after = 0;  // the end of the previous function
  for (size_t i = function_start(text, 0); i < text.size(); after = i, i = function_start(text, i)) {
    size_t end = function_end(text, i);
    if (end == std::string::npos) {
      voir_message(0, MES_BRACKET_ERROR);
      return -1;
    }
    pieces.push_back({text.substr(i, end - i), comment_between(text, after, i)});
    i = end;
  }
  return static_cast<int>(pieces.size());
}

void keep_function_comment(const std::string& name, const std::string& comment) {
  if (comment.empty()) lang().comments.erase(name);
  else lang().comments[name] = comment;
}

int define_functions(const std::string& text, bool from_file, bool check) {
  std::vector<FunctionPiece> pieces;
  if (function_pieces(text, pieces) < 0) return -1;
  std::vector<Objet*> defined;
  for (const FunctionPiece& piece : pieces) {
    Objet* f = define_function(piece.source.c_str(), from_file);
    if (!f) {
      voir_message(0, MES_FUNCTION_LIST_USAGE);
      return -1;
    }
    defined.push_back(f);
    // A file's comments above a function go with it; one defined at the
    // console keeps those it had.
    if (from_file) keep_function_comment(function_name(source_of(f)), piece.comment);
  }
  // Mistakes are told now, not at the first call: all of the text is
  // defined first, so that its functions may call one another.
  if (check)
    for (Objet* f : defined) check_definition(f);
  return static_cast<int>(defined.size());
}

int read_functions_file(const std::string& path) {
  std::string text;
  if (!file_read_all(path, text)) {
    err_lecture(path.c_str());
    return -1;
  }
  text.resize(strlen(text.c_str()));
  reload_note_file(path);
  return define_functions(text, true);
}

namespace {

// Writes the functions that `wanted` accepts; they are saved once the
// file is whole.
template <class F>
int write_functions(const std::string& path, F&& wanted) {
  std::string out;
  std::vector<Objet*> written;
  for (Objet* f = chaine_classe(KW_func)->next; f; f = f->next) {
    const char* src = source_of(f);
    if (f->kind != KW_func || !src || !wanted(f, std::string(src, strcspn(src, "( \t\n")))) continue;
    const auto comment = lang().comments.find(function_name(src));
    if (comment != lang().comments.end()) out += comment->second + "\n";
    out += src;
    if (out.back() != '\n') out += '\n';
    out += '\n';
    written.push_back(f);
  }
  if (!ecrit_fichier(path, out)) return -1;
  for (Objet* f : written) f->unsaved = 0;
  return 0;
}

}  // namespace

int write_functions_file(const std::vector<std::string>& names, const std::string& path) {
  // A name that names no function writes nothing, rather than a file
  // without it in place of the old one.
  for (const std::string& n : names)
    if (!get_fonction(n.c_str())) {
      not_found(KW_func, n.c_str());
      return -1;
    }
  return write_functions(path, [&](Objet*, const std::string& name) {
    bool wanted = names.empty();
    for (const std::string& n : names) wanted = wanted || n == name;
    return wanted;
  });
}

bool functions_unsaved() {
  for (Objet* f = chaine_classe(KW_func)->next; f; f = f->next)
    if (f->kind == KW_func && f->unsaved) return true;
  return false;
}

bool write_unsaved_functions(const std::string& path) {
  return write_functions(path, [](Objet* f, const std::string&) { return f->unsaved != 0; }) == 0;
}

Objet* load_function_from_disk(const char* name) {
  std::string file = std::string(name) + ".func";
  const std::string& folder = kernel().fun;
  std::string text;
  std::string path = file;
  if (!file_read_all(path, text) && (folder.empty() || !file_read_all(path = folder + file, text))) return nullptr;
  reload_note_file(path);
  text.resize(strlen(text.c_str()));
  // Loaded by its first call, which compiles it at once.
  if (define_functions(text, true, false) < 0) return nullptr;
  return get_fonction(name);
}
