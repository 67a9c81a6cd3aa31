// The flo format: a 16-byte text header "wwwwww hhhhhh c\n" (width and
// height in the numeric format "6D", c the compression flag), then the
// pixels in memory order. There is no compressed variant: both
// compression functions below do nothing, and must stay so.
#include <cstdlib>
#include <cstring>

#include "image/file_numbers.h"
#include "image/image_files.h"

namespace {

constexpr size_t FLO_HEADER = 16;

// Writes no pixels and succeeds.
int ecrit_flo_compresse(const ImageView&, Bytes&) { return 0; }
// Decompresses nothing: the image stays black.
void lit_flo_compresse(const uint8_t*, size_t, ImageData&) {}

}  // namespace

Bytes WRITE_IMAGE_FLO(const ImageView& p, const FormatOptions& o) {
  std::string w, h;
  format_numerique("6D", p.w, w);
  format_numerique("6D", p.h, h);
  const std::string head = w + " " + h + " 0\n";
  Bytes out(head.begin(), head.end());
  if (o.compression) {
    ecrit_flo_compresse(p, out);
    return out;
  }
  const size_t n = static_cast<size_t>(p.w) * p.h * 4;
  out.insert(out.end(), p.px, p.px + n);
  return out;
}

int READ_IMAGE_FLO(const uint8_t* d, size_t n, const FormatOptions&, ImageData& out) {
  char head[FLO_HEADER + 1] = {};
  std::memcpy(head, d, n < FLO_HEADER ? n : FLO_HEADER);
  if (!prepare_image(out, std::atoi(head), std::atoi(head + 7), 1, "READ_IMAGE_FLO()")) return -1;
  if (std::atoi(head + 14) != 0) {
    lit_flo_compresse(d, n, out);
    out.valid = out.px.size();
    return 0;
  }
  const size_t avail = n > FLO_HEADER ? n - FLO_HEADER : 0;
  out.valid = avail < out.px.size() ? avail : out.px.size();
  if (out.valid) std::memcpy(out.px.data(), d + FLO_HEADER, out.valid);
  return 0;
}
