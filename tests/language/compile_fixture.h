// Compiling console lines and functions in tests, with their listings.
#pragma once
#include <cstring>
#include <string>

#include "kernel/bloc.h"
#include "kernel/object_store.h"
#include "kernel/objet.h"
#include "language/code_object.h"
#include "language/compile.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "support/capture.h"

// A console code object holding `line` as "{line}".
struct ConsoleText : CodeObject {
  explicit ConsoleText(const std::string& line) : CodeObject("{" + line + "}") {}
};

// The listing printed while compiling (and linking) `line` at `level`;
// failures print their messages into the same text.
inline std::string console_listing(const std::string& line, int level = 1, bool link = false) {
  Capture out;
  ConsoleText t(line);
  lang().listing = link ? 0 : level;
  lang().listing_link = link ? level : 0;
  int r = a_compile(&t.obj);
  if (r >= 0 && link) lier_fonction(&t.obj);
  lang().listing = 0;
  lang().listing_link = 0;
  return out.take();
}

inline std::string function_listing(const std::string& source, int level = 1, bool link = false) {
  Capture out;
  Objet* f = define_function(source.c_str());
  lang().listing = link ? 0 : level;
  lang().listing_link = link ? level : 0;
  int r = f ? a_compile(f) : -1;
  if (r >= 0 && link) lier_fonction(f);
  lang().listing = 0;
  lang().listing_link = 0;
  return out.take();
}
