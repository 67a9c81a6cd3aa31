// libFuzzer target: any bytes as an object file read into the volumes,
// with and without identities from the command. Anything may be refused;
// nothing may crash or over-read, and LeakSanitizer watches what is left
// once the objects read are removed. (The live block count is no measure
// here: blocks of some tags are freed without it, by design.)
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz_setup.h"
#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "persist/object_file.h"
#include "platform/console_io.h"
#include "scene/removal.h"

namespace {

std::string sink;

bool setup() { return fuzz_setup(sink); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool ready = setup();
  (void)ready;
  sink.clear();
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  LectureObjets how;
  how.chaine = chaine_classe(KW_vol);
  how.kind = KW_vol;
  const word ids[] = {6, T_FLOAT, 2, 1, 0x40e00000, 0x41000000};  // 7, 8
  if (size % 2) how.ids = ids;
  lire_objets(bytes, how);
  rem_tous(chaine_classe(KW_vol), 0, 0);
  if (chaine_classe(KW_vol)->next) std::abort();
  return 0;
}
