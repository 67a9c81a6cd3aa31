// PNG through libpng, in memory. As for JPEG, a fault of the library
// comes back by longjmp with its message printed. Any PNG is expanded to
// 8-bit R, G, B, A (pixels without alpha get the default alpha); file rows
// run top to bottom, memory rows bottom to top.
#include <csetjmp>
#include <cstring>

#include <png.h>

#include "image/image_files.h"
#include "kernel/report.h"

namespace {

struct Source {
  const uint8_t* d;
  size_t n, at;
};

void lit_source(png_structp png, png_bytep to, png_size_t len) {
  Source* s = static_cast<Source*>(png_get_io_ptr(png));
  if (len > s->n - s->at) png_error(png, "unexpected end of file");
  std::memcpy(to, s->d + s->at, len);
  s->at += len;
}

void ecrit_dest(png_structp png, png_bytep from, png_size_t len) {
  static_cast<Bytes*>(png_get_io_ptr(png))->insert(static_cast<Bytes*>(png_get_io_ptr(png))->end(), from, from + len);
}

void rien(png_structp) {}

[[noreturn]] void faute_png(png_structp png, png_const_charp text) {
  VOIR_CHAR("png: %s\a\n", text);
  png_longjmp(png, 1);
}

void avis_png(png_structp, png_const_charp) {}

// Sets the transformations to 8-bit RGBA; the alpha a file gives none.
void vers_rgba(png_structp png, png_infop info, uint8_t alpha) {
  const int type = png_get_color_type(png, info);
  png_set_expand(png);  // palette to RGB, grey below 8 bits to 8, tRNS to alpha
  png_set_strip_16(png);
  if (type == PNG_COLOR_TYPE_GRAY || type == PNG_COLOR_TYPE_GRAY_ALPHA) png_set_gray_to_rgb(png);
  png_set_add_alpha(png, alpha, PNG_FILLER_AFTER);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
}

// Plain data only between setjmp and longjmp, as for JPEG; the row
// pointers live in the caller.
int decode(Source* s, uint8_t alpha, ImageData& out, std::vector<png_bytep>& rows) {
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, faute_png, avis_png);
  if (!png) return -1;
  png_infop info = png_create_info_struct(png);
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_read_struct(&png, &info, nullptr);
    return -1;
  }
  png_set_read_fn(png, s, lit_source);
  png_set_user_limits(png, 1u << 24, 1u << 24);
  png_read_info(png, info);
  if (!prepare_image(out, png_get_image_width(png, info), png_get_image_height(png, info), 1, "png")) {
    png_destroy_read_struct(&png, &info, nullptr);
    return -1;
  }
  vers_rgba(png, info, alpha);
  if (png_get_rowbytes(png, info) != static_cast<size_t>(out.w) * 4) png_error(png, "unexpected pixel layout");
  rows.resize(static_cast<size_t>(out.h));
  for (int y = 0; y < out.h; y++) rows[y] = out.px.data() + static_cast<size_t>(out.h - 1 - y) * out.w * 4;
  png_read_image(png, rows.data());
  png_read_end(png, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
  out.valid = out.px.size();
  return 0;
}

int encode(const ImageView& p, Bytes& out, std::vector<png_bytep>& rows) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, faute_png, avis_png);
  if (!png) return -1;
  png_infop info = png_create_info_struct(png);
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    return -1;
  }
  png_set_write_fn(png, &out, ecrit_dest, rien);
  png_set_IHDR(png, info, static_cast<png_uint_32>(p.w), static_cast<png_uint_32>(p.h), 8, PNG_COLOR_TYPE_RGBA,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  rows.resize(static_cast<size_t>(p.h));
  for (int y = 0; y < p.h; y++) rows[y] = const_cast<uint8_t*>(p.px) + static_cast<size_t>(p.h - 1 - y) * p.w * 4;
  png_set_rows(png, info, rows.data());
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
  return 0;
}

}  // namespace

int png_read(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out) {
  Source s{d, n, 0};
  std::vector<png_bytep> rows;
  return decode(&s, default_alpha(o), out, rows);
}

Bytes png_bytes(const ImageView& p, const FormatOptions&) {
  Bytes out;
  std::vector<png_bytep> rows;
  if (encode(p, out, rows) < 0) out.clear();
  return out;
}
