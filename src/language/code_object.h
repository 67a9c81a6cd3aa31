// A code object holding a braced console text "{...}" as its source, the
// way console lines and texts run from commands are compiled. Its source,
// code, locals and name go with it.
#pragma once
#include <string>

#include "kernel/objet.h"

struct CodeObject {
  Objet obj;
  explicit CodeObject(const std::string& braced);
  ~CodeObject();
  CodeObject(const CodeObject&) = delete;
  CodeObject& operator=(const CodeObject&) = delete;
};
