// The raw format: width and height as four decimal digits each (numeric
// format "4D", no terminator), then the pixels in memory order.
#include <cstdlib>
#include <cstring>

#include "image/file_numbers.h"
#include "image/image_files.h"
#include "kernel/report.h"

bool raw_header(const uint8_t* d, size_t n, int* w, int* h) {
  if (n < RAW_HEADER) return false;
  char field[5] = {};
  std::memcpy(field, d, 4);
  *w = std::atoi(field);
  std::memcpy(field, d + 4, 4);
  *h = std::atoi(field);
  return true;
}

Bytes WRITE_IMAGE_RAW(const ImageView& p, const FormatOptions&) {
  std::string w, h;
  format_numerique("4D", p.w, w);
  format_numerique("4D", p.h, h);
  const std::string head = w + h;
  Bytes out(head.begin(), head.end());
  out.insert(out.end(), p.px, p.px + static_cast<size_t>(p.w) * p.h * 4);
  return out;
}

int READ_IMAGE_RAW(const uint8_t* d, size_t n, const FormatOptions&, ImageData& out) {
  int w = 0, h = 0;
  if (!raw_header(d, n, &w, &h)) {
    voir_texte("READ_IMAGE_RAW(): short header\a\n");
    return -1;
  }
  if (!prepare_image(out, w, h, 1, "READ_IMAGE_RAW()")) return -1;
  const size_t avail = n - RAW_HEADER;
  out.valid = avail < out.px.size() ? avail : out.px.size();
  if (out.valid) std::memcpy(out.px.data(), d + RAW_HEADER, out.valid);
  return 0;
}
