// libFuzzer target: any bytes as a console line or as a function text go
// through source preparation, compile and link. Anything may be reported;
// nothing may crash, hang or touch memory it does not own.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz_setup.h"
#include "kernel/bloc.h"
#include "kernel/kernel.h"
#include "kernel/object_store.h"
#include "kernel/objet.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "language/code_object.h"
#include "language/compile.h"
#include "language/eval.h"
#include "language/functions.h"
#include "platform/console_io.h"

namespace {

std::string sink;

bool setup() { return fuzz_setup(sink); }

void compile_console(const std::string& line) {
  CodeObject code("{" + line + "}");
  if (a_compile(&code.obj) >= 0) lier_fonction(&code.obj);
}

void compile_function(const std::string& text) {
  Objet* f = define_function(text.c_str());
  if (f && a_compile(f) >= 0) lier_fonction(f);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool ready = setup();
  (void)ready;
  if (size == 0) return 0;
  // The system's texts end at their first NUL.
  std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  text.resize(strlen(text.c_str()));
  if (data[0] & 1) compile_function("fz(a,b){" + text + "}");
  else compile_console(text);
  sink.clear();
  return 0;
}
