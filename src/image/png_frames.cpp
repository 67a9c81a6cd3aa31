#include "image/png_frames.h"

#include <cstring>
#include <new>

namespace {

constexpr uint8_t SIGNATURE[8] = {137, 'P', 'N', 'G', '\r', '\n', 26, '\n'};
constexpr size_t CHUNK_EXTRA = 12;  // length, type, CRC
constexpr size_t HEADER_DATA = 13;

void be32(uint8_t* p, uint32_t v) {
  p[0] = static_cast<uint8_t>(v >> 24);
  p[1] = static_cast<uint8_t>(v >> 16);
  p[2] = static_cast<uint8_t>(v >> 8);
  p[3] = static_cast<uint8_t>(v);
}

// A chunk whose data of length n already stands at p + 8: its length,
// its type and its CRC around it. Returns the chunk's whole length.
size_t chunk(uint8_t* p, const char* type, size_t n) {
  be32(p, static_cast<uint32_t>(n));
  std::memcpy(p + 4, type, 4);
  be32(p + 8 + n, static_cast<uint32_t>(crc32(0, p + 4, static_cast<uInt>(n + 4))));
  return n + CHUNK_EXTRA;
}

}  // namespace

bool png_frames_start(PngFrames& f, int w, int h) {
  png_frames_end(f);
  const size_t row = static_cast<size_t>(w) * 3 + 1;
  // Level 1: a picture an image, written while the loop waits.
  if (deflateInit(&f.z, 1) != Z_OK) return false;
  f.ready = true;
  try {
    f.rows.assign(row * h, 0);
    const size_t bound = deflateBound(&f.z, static_cast<uLong>(row * h));
    f.file.assign(sizeof SIGNATURE + 3 * CHUNK_EXTRA + HEADER_DATA + bound, 0);
  } catch (const std::bad_alloc&) {
    png_frames_end(f);
    return false;
  }
  f.w = w;
  f.h = h;
  return true;
}

size_t png_frames_encode(PngFrames& f, const uint8_t* rgb) {
  if (!f.ready) return 0;
  const size_t stride = static_cast<size_t>(f.w) * 3, row = stride + 1;
  // Filter "Sub" on each row: each byte less the byte of the pixel to its
  // left; the rows are turned top side up.
  for (int y = 0; y < f.h; y++) {
    const uint8_t* in = rgb + static_cast<size_t>(f.h - 1 - y) * stride;
    uint8_t* out = f.rows.data() + static_cast<size_t>(y) * row;
    out[0] = 1;
    for (size_t i = 0; i < stride; i++) out[1 + i] = static_cast<uint8_t>(in[i] - (i >= 3 ? in[i - 3] : 0));
  }
  uint8_t* p = f.file.data();
  std::memcpy(p, SIGNATURE, sizeof SIGNATURE);
  size_t at = sizeof SIGNATURE;
  uint8_t* ihdr = p + at + 8;
  be32(ihdr, static_cast<uint32_t>(f.w));
  be32(ihdr + 4, static_cast<uint32_t>(f.h));
  const uint8_t rest[5] = {8, 2, 0, 0, 0};  // 8 bits, RGB, deflate, filters, no interlace
  std::memcpy(ihdr + 8, rest, sizeof rest);
  at += chunk(p + at, "IHDR", HEADER_DATA);
  deflateReset(&f.z);
  f.z.next_in = f.rows.data();
  f.z.avail_in = static_cast<uInt>(f.rows.size());
  f.z.next_out = p + at + 8;
  // Room for the compressed rows: all but IDAT's length, type and CRC and
  // the IEND chunk.
  f.z.avail_out = static_cast<uInt>(f.file.size() - at - CHUNK_EXTRA - CHUNK_EXTRA);
  if (deflate(&f.z, Z_FINISH) != Z_STREAM_END) return 0;
  at += chunk(p + at, "IDAT", f.z.total_out);
  at += chunk(p + at, "IEND", 0);
  return at;
}

void png_frames_end(PngFrames& f) {
  if (f.ready) deflateEnd(&f.z);
  f.ready = false;
  f.z = z_stream{};
  f.w = f.h = 0;
}
