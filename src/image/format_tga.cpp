// Targa files. Written: type 2, 32 bits, no colour map, each pixel as
// B, G, R, A, rows in memory order. Read by lire_image_tga: types 2 and
// 10 (run-length packets, which may cross rows), depths 16, 24 and 32,
// colour map types 0 and 1. The colour map is skipped at one byte an
// entry, whatever its depth; the orientation bits are ignored and pixels
// go to memory in file order.
#include "image/byte_order.h"
#include "image/image_files.h"
#include "kernel/interrupt.h"
#include "kernel/report.h"

namespace {

constexpr size_t TGA_HEADER = 18;

struct TgaHeader {
  int id_length, map_type, image_type, map_origin, map_length, map_depth;
  int x_origin, y_origin, width, height, depth, descriptor;
};

TgaHeader lit_entete(const uint8_t* d) {
  return {d[0],          d[1],          d[2],          static_cast<int>(get_le16(d + 3)), static_cast<int>(get_le16(d + 5)),
          d[7],          static_cast<int>(get_le16(d + 8)), static_cast<int>(get_le16(d + 10)),
          static_cast<int>(get_le16(d + 12)), static_cast<int>(get_le16(d + 14)), d[16], d[17]};
}

void montre_entete(const TgaHeader& t) {
  voir_int("ID length:         %d\n", t.id_length);
  voir_int("Colourmap type:    %d\n", t.map_type);
  voir_int("Image type:        %d\n", t.image_type);
  voir_int("Colour map offset: %d\n", t.map_origin);
  voir_int("Colour map length: %d\n", t.map_length);
  voir_int("Colour map depth:  %d\n", t.map_depth);
  voir_int("X origin:          %d\n", t.x_origin);
  voir_int("Y origin:          %d\n", t.y_origin);
  voir_int("Width:             %d\n", t.width);
  voir_int("Height:            %d\n", t.height);
  voir_int("Bits per pixel:    %d\n", t.depth);
  voir_int("Descriptor:        %d\n", t.descriptor);
}

bool entete_lisible(const TgaHeader& t) {
  if (t.image_type != 2 && t.image_type != 10) {
    voir_texte("Can only handle image type 2 and 10\n");
    return false;
  }
  if (t.depth != 16 && t.depth != 24 && t.depth != 32) {
    voir_texte("Can only handle pixel depths of 16, 24, and 32\n");
    return false;
  }
  if (t.map_type != 0 && t.map_type != 1) {
    voir_texte("Can only handle colour map types of 0 and 1\n");
    return false;
  }
  return true;
}

// One file pixel of `bytes` bytes to R, G, B, A.
void convertit(const uint8_t* b, int bytes, uint8_t* px) {
  if (bytes == 2) {
    px[0] = static_cast<uint8_t>((b[1] & 0x7c) << 1);
    px[1] = static_cast<uint8_t>((b[1] << 6) | ((b[0] & 0xe0) >> 2));
    px[2] = static_cast<uint8_t>(b[0] << 3);
    px[3] = b[1] & 0x80;
    return;
  }
  px[0] = b[2];
  px[1] = b[1];
  px[2] = b[0];
  px[3] = bytes == 4 ? b[3] : 0;
}

// Reads the pixels from `at` on; the count stored before the data ran
// out, which is the whole image for a complete file.
size_t lit_pixels(const uint8_t* d, size_t n, size_t at, int type, int bytes, ImageData& out) {
  const size_t total = static_cast<size_t>(out.w) * out.h;
  uint8_t* px = out.px.data();
  size_t i = 0;
  while (i < total) {
    if (type == 2) {
      if (n - at < static_cast<size_t>(bytes)) return i;
      convertit(d + at, bytes, px + 4 * i++);
      at += bytes;
      continue;
    }
    if (n - at < 1 + static_cast<size_t>(bytes)) return i;
    const int head = d[at];
    const int count = head & 0x7f;
    convertit(d + at + 1, bytes, px + 4 * i++);
    at += 1 + bytes;
    for (int k = 0; k < count && i < total; k++, i++) {
      if (head & 0x80) {
        for (int c = 0; c < 4; c++) px[4 * i + c] = px[4 * (i - 1) + c];
        continue;
      }
      if (n - at < static_cast<size_t>(bytes)) return i;
      convertit(d + at, bytes, px + 4 * i);
      at += bytes;
    }
  }
  return i;
}

}  // namespace

Bytes tga_bytes(const ImageView& p, const FormatOptions&) {
  Bytes out(TGA_HEADER + static_cast<size_t>(p.w) * p.h * 4, 0);
  out[2] = 2;
  put_le16(out, 12, static_cast<uint32_t>(p.w));
  put_le16(out, 14, static_cast<uint32_t>(p.h));
  out[16] = 32;
  uint8_t* f = out.data() + TGA_HEADER;
  par_tranches(static_cast<size_t>(p.w) * p.h, [&](size_t a, size_t b) {
    for (size_t i = a; i < b; i++) {
      const uint8_t* m = p.px + 4 * i;
      *f++ = m[2];
      *f++ = m[1];
      *f++ = m[0];
      *f++ = m[3];
    }
  });
  return out;
}

// The end of the data inside the pixels stops the reading with its
// message; the image is then refused rather than the process ended.
int lire_image_tga(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out) {
  if (n < TGA_HEADER) {
    voir_int("Unexpected end of file at pixel %d\n", 0);
    return -1;
  }
  const TgaHeader t = lit_entete(d);
  if (o.debug >= 2) montre_entete(t);
  if (!entete_lisible(t)) {
    out.clear = true;  // a header of another kind leaves the image cleared
    return -1;
  }
  if (!prepare_image(out, t.width, t.height, 1, "lire_image_tga()")) return -1;
  const size_t skip = static_cast<size_t>(t.id_length) + static_cast<size_t>(t.map_type) * t.map_length;
  const size_t at = TGA_HEADER + skip;
  const size_t read = at <= n ? lit_pixels(d, n, at, t.image_type, t.depth / 8, out) : 0;
  if (read < static_cast<size_t>(out.w) * out.h) {
    voir_int("Unexpected end of file at pixel %d\n", static_cast<int>(read));
    return -1;
  }
  if (o.alpha >= 0)
    for (size_t i = 3; i < out.px.size(); i += 4) out.px[i] = static_cast<uint8_t>(o.alpha);
  out.valid = out.px.size();
  return 0;
}
