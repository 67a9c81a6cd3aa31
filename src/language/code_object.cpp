#include "language/code_object.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/object_store.h"
#include "language/compile.h"

CodeObject::CodeObject(const std::string& braced) {
  obj.kind = KIND_CONSOLE;
  int words = static_cast<int>(braced.size() / 4 + 6);
  obj.local = alloue_bloc(words);
  if (!obj.local) return;
  memset(obj.local + 1, 0, static_cast<size_t>(words - 1) * sizeof(word));
  obj.local[1] = T_CODE;
  memcpy(text(obj.local), braced.c_str(), braced.size() + 1);
}

CodeObject::~CodeObject() {
  libere_bloc(obj.local);
  libere_bloc(obj.code);
  if (obj.locals) rem_chaine_privee(obj.locals);
  libere_mem(obj.name);
}
