// libFuzzer target: any bytes read as a WAV file's header. A header
// taken must describe samples inside the bytes given.
#include <cstdint>
#include <cstdlib>

#include "sound/wav_header.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  WavEntete e;
  if (lit_entete_wav(data, size, e) != WavLecture::ok) return 0;
  if (e.Header < 8 || static_cast<size_t>(e.Header) > size || e.data != static_cast<long long>(size) - e.Header)
    std::abort();
  if (e.Channel < 1 || e.Rate < 1 || e.Nb_octet < 1 || e.seconds < 1 || e.Images != e.seconds * 25) std::abort();
  return 0;
}
