// libFuzzer target: any bytes as a packet that came to an OSC device,
// decoded by liblo (messages and bundles, nested), each message made into
// the value a read gives in a slot whose size the first byte picks. A
// value never passes its slot, and its parts add up to its size. The
// decoder needs no kernel: nothing is reported on this road.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "device/osc_device.h"
#include "kernel/access.h"

namespace {

struct Slot {
  std::vector<word> area;
};

void recu(void* ctx, const char* path, const OscArg* args, int argc) {
  Slot& s = *static_cast<Slot*>(ctx);
  word* at = s.area.data();
  const word* lim = at + s.area.size();
  if (osc_valeur_message(at, lim, path, args, argc) < 0) return;
  if (at[0] > static_cast<word>(s.area.size()) || at[1] != T_HYBRIDE) std::abort();
  long total = 4;
  for (int i = 0; i < at[2]; i++) total += size(sous_bloc(at, i));
  if (total != at[0]) std::abort();
}

void faute(void*, int, const char*) {}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static OscEnd* end = osc_decoder();
  if (size < 1 || !end) return 0;
  Slot slot{std::vector<word>(4 + data[0] % 128)};
  OscSink s;
  s.ctx = &slot;
  s.message = recu;
  s.fault = faute;
  std::vector<uint8_t> packet(data + 1, data + size);
  osc_dispatch(end, s, packet.data(), packet.size());
  return 0;
}
