// Bitmaps. Written: 24 bits, rows of three bytes a pixel with no padding
// to four bytes (so a width that is not a multiple of 4 gives a file that
// is not standard), in an order of the memory components that the format
// string names, "BGR" by default. Read: only 24-bit uncompressed data is
// converted, row starts at the standard stride (3w+3) & ~3; other depths
// give an image of the header's size with its pixels left black.
#include <cstdlib>
#include <cstring>

#include "image/byte_order.h"
#include "image/image_files.h"
#include "kernel/interrupt.h"
#include "kernel/report.h"

namespace {

constexpr size_t FILE_HEADER = 14;
constexpr size_t BMP_HEADER = 54;

// The memory component (0 R, 1 G, 2 B) of each file byte; false for an
// order that is not a permutation of "RGB".
bool ordre(const char* format, int order[3]) {
  static const char* const ORDERS[] = {"RGB", "RBG", "GRB", "GBR", "BRG", "BGR"};
  for (const char* f : ORDERS)
    if (std::strcmp(f, format) == 0) {
      for (int i = 0; i < 3; i++) order[i] = format[i] == 'R' ? 0 : format[i] == 'G' ? 1 : 2;
      return true;
    }
  return false;
}

}  // namespace

Bytes bmp_bytes(const ImageView& p, const FormatOptions& o) {
  const char* format = o.order ? o.order : "BGR";
  int order[3];
  if (!ordre(format, order)) {
    VOIR_CHAR("%s", format);
    voir_message(0, MES_ILLEGAL);
    return {};
  }
  const uint32_t data = static_cast<uint32_t>((p.w * 24 + 7) / 8) * static_cast<uint32_t>(p.h);
  Bytes out(BMP_HEADER + data, 0);
  put_le16(out, 0, 0x4D42);
  put_le32(out, 2, data + BMP_HEADER);
  put_le32(out, 10, BMP_HEADER);
  put_le32(out, 14, 40);
  put_le32(out, 18, static_cast<uint32_t>(p.w));
  put_le32(out, 22, static_cast<uint32_t>(p.h));
  put_le16(out, 26, 1);
  put_le16(out, 28, 24);
  put_le32(out, 38, 2952);
  put_le32(out, 42, 2952);
  uint8_t* f = out.data() + BMP_HEADER;
  par_tranches(static_cast<size_t>(p.w) * p.h, [&](size_t a, size_t b) {
    for (size_t i = a; i < b; i++)
      for (int c = 0; c < 3; c++) *f++ = p.px[i * 4 + order[c]];
  });
  return out;
}

// The header's counts are trusted as far as the file holds them: a data
// size past the end is refused, and rows past the data stay black.
int bmp_read(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out) {
  if (n < FILE_HEADER) {
    voir_texte("ERREUR fread\n");
    return -1;
  }
  const uint32_t offset = get_le32(d + 10);
  if (offset < FILE_HEADER + 40 || offset > n) {
    voir_texte("Couldn't read the bitmap header\n");
    return -1;
  }
  const uint8_t* info = d + FILE_HEADER;
  const long long w = static_cast<int32_t>(get_le32(info + 4));
  const long long h = std::llabs(static_cast<int32_t>(get_le32(info + 8)));
  const int bits = static_cast<int>(get_le16(info + 14));
  const uint32_t compression = get_le32(info + 16);
  if (size_refused(w, h, 1, "bmp")) {
    voir_texte("Couldn't allocate memory\n");
    return -1;
  }
  unsigned long long bytes = get_le32(info + 20);
  if (bytes == 0) bytes = static_cast<unsigned long long>((w * bits) / 8) * h;
  if (bytes > n - offset) {
    voir_texte("Couldn't read bitmap\n");
    return -1;
  }
  prepare_image(out, w, h, 1, "bmp");
  out.valid = out.px.size();
  if (bits != 24 || compression != 0) return 0;
  const uint8_t* data = d + offset;
  const size_t stride = (3 * static_cast<size_t>(w) + 3) & ~static_cast<size_t>(3);
  const uint8_t alpha = default_alpha(o);
  for (size_t y = 0; y < static_cast<size_t>(h); y++) {
    interrupt_check();
    for (size_t x = 0; x < static_cast<size_t>(w); x++) {
      const size_t at = y * stride + 3 * x;
      if (at + 3 > bytes) return 0;
      uint8_t* px = out.px.data() + 4 * (y * w + x);
      px[0] = data[at + 2];
      px[1] = data[at + 1];
      px[2] = data[at];
      px[3] = alpha;
    }
  }
  return 0;
}
