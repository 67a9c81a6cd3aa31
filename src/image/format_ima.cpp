// The ima format: seven little-endian 32-bit words (magic 7, width,
// height, planes, bytes a pixel, bits a component, compression flag),
// then the pixels of every plane. The writer never compresses, whatever
// the flag it records; the reader refuses a non-zero flag.
#include <cstring>

#include "image/byte_order.h"
#include "image/image_files.h"
#include "kernel/report.h"

namespace {

constexpr size_t IMA_HEADER = 7 * 4;

}  // namespace

Bytes WRITE_IMAGE_IMA(const ImageView& p, const FormatOptions& o) {
  const size_t n = static_cast<size_t>(p.w) * p.h * p.nz * 4;
  Bytes out(IMA_HEADER);
  const uint32_t head[7] = {7, static_cast<uint32_t>(p.w), static_cast<uint32_t>(p.h), static_cast<uint32_t>(p.nz),
                            4, 8, static_cast<uint32_t>(o.compression)};
  for (int i = 0; i < 7; i++) put_le32(out, i * 4, head[i]);
  out.insert(out.end(), p.px, p.px + n);
  return out;
}

// The magic and the bits a component are not looked at. The block holds
// four bytes a pixel, and word 4 of them a pixel are read from the file.
int READ_IMAGE_IMA(const uint8_t* d, size_t n, const FormatOptions&, ImageData& out) {
  if (n < IMA_HEADER) {
    voir_texte("READ_IMAGE_IMA(): short header\a\n");
    return -1;
  }
  int32_t head[7];
  for (int i = 0; i < 7; i++) head[i] = static_cast<int32_t>(get_le32(d + i * 4));
  if (head[6] != 0) {
    voir_texte("ima compressed\a\n");
    return -1;
  }
  if (!prepare_image(out, head[1], head[2], head[3], "READ_IMAGE_IMA()")) return -1;
  const long long wanted = static_cast<long long>(out.w) * out.h * out.nz * (head[4] > 0 ? head[4] : 0);
  size_t take = n - IMA_HEADER;
  if (static_cast<unsigned long long>(wanted) < take) take = static_cast<size_t>(wanted);
  if (take > out.px.size()) take = out.px.size();
  if (take) std::memcpy(out.px.data(), d + IMA_HEADER, take);
  out.valid = take;
  return 0;
}
