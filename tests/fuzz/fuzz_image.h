// What the picture fuzz targets share: any bytes through one decoder,
// with the pixel cap lowered so that a header's claim costs little. The
// decoders may refuse anything; they may not crash, over-read or leak.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_setup.h"
#include "image/image_files.h"

inline int fuzz_decoder(Decoder decode, const uint8_t* data, size_t size) {
  static std::string sink;
  static bool ready = fuzz_setup(sink);
  (void)ready;
  image_max_pixels = 1 << 20;
  sink.clear();
  FormatOptions o;
  o.debug = size % 3 == 0 ? 2 : 0;
  o.alpha = size % 2 ? -1 : 128;
  ImageData d;
  if (decode(data, size, o, d) == 0 && d.px.size() != static_cast<size_t>(d.w) * d.h * d.nz * 4) __builtin_trap();
  return 0;
}
