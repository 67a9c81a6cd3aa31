// libFuzzer target: any bytes given to the file back end as a WAV file.
// What comes out is whole frames of the capture's format, or nothing.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/audio.h"
#include "sound/live_capture.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string why;
  const std::vector<uint8_t> pcm = pcm_capture(data, size, &why);
  if (pcm.size() % AUDIO_BLOCK != 0) std::abort();
  if (pcm.empty() == why.empty()) std::abort();
  return 0;
}
