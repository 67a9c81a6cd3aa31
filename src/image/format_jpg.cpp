// JPEG through libjpeg-turbo, in memory. A fault of the library comes
// back here by longjmp with its message printed, so that a corrupt file
// never ends the process. File rows run top to bottom, memory rows bottom
// to top: rows are turned over both ways. Reading gives every pixel the
// default alpha.
#include <csetjmp>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

#include "image/image_files.h"
#include "kernel/report.h"

namespace {

constexpr int JPG_QUALITY = 90;

struct Erreur {
  jpeg_error_mgr pub;
  std::jmp_buf back;
};

void message_jpg(j_common_ptr c) {
  char text[JMSG_LENGTH_MAX];
  c->err->format_message(c, text);
  VOIR_CHAR("jpg: %s\a\n", text);
}

[[noreturn]] void faute_jpg(j_common_ptr c) {
  message_jpg(c);
  std::longjmp(reinterpret_cast<Erreur*>(c->err)->back, 1);
}

void gestionnaire(Erreur& e) {
  jpeg_std_error(&e.pub);
  e.pub.error_exit = faute_jpg;
  e.pub.output_message = message_jpg;
}

// Locals of the functions below that call setjmp are plain data only,
// so that the jump skips no destructor.
int decode(const uint8_t* d, size_t n, uint8_t alpha, ImageData& out) {
  jpeg_decompress_struct c;
  Erreur e;
  c.err = &e.pub;
  gestionnaire(e);
  if (setjmp(e.back)) {
    jpeg_destroy_decompress(&c);
    return -1;
  }
  jpeg_create_decompress(&c);
  jpeg_mem_src(&c, d, static_cast<unsigned long>(n));
  jpeg_read_header(&c, TRUE);
  if (!prepare_image(out, c.image_width, c.image_height, 1, "jpg")) {
    jpeg_destroy_decompress(&c);
    return -1;
  }
  c.out_color_space = JCS_EXT_RGBA;
  jpeg_start_decompress(&c);
  while (c.output_scanline < c.output_height) {
    JSAMPROW row = out.px.data() + static_cast<size_t>(out.h - 1 - c.output_scanline) * out.w * 4;
    jpeg_read_scanlines(&c, &row, 1);
  }
  jpeg_finish_decompress(&c);
  jpeg_destroy_decompress(&c);
  for (size_t i = 3; i < out.px.size(); i += 4) out.px[i] = alpha;
  out.valid = out.px.size();
  return 0;
}

// The compressed bytes in *mem (malloc'd by the library), or -1.
int encode(const ImageView& p, unsigned char** mem, unsigned long* len) {
  jpeg_compress_struct c;
  Erreur e;
  c.err = &e.pub;
  gestionnaire(e);
  if (setjmp(e.back)) {
    jpeg_destroy_compress(&c);
    return -1;
  }
  jpeg_create_compress(&c);
  jpeg_mem_dest(&c, mem, len);
  c.image_width = static_cast<JDIMENSION>(p.w);
  c.image_height = static_cast<JDIMENSION>(p.h);
  c.input_components = 4;
  c.in_color_space = JCS_EXT_RGBA;
  jpeg_set_defaults(&c);
  jpeg_set_quality(&c, JPG_QUALITY, TRUE);
  jpeg_start_compress(&c, TRUE);
  while (c.next_scanline < c.image_height) {
    JSAMPROW row = const_cast<uint8_t*>(p.px) + static_cast<size_t>(p.h - 1 - c.next_scanline) * p.w * 4;
    jpeg_write_scanlines(&c, &row, 1);
  }
  jpeg_finish_compress(&c);
  jpeg_destroy_compress(&c);
  return 0;
}

}  // namespace

int jpg_read(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out) {
  return decode(d, n, default_alpha(o), out);
}

Bytes jpg_bytes(const ImageView& p, const FormatOptions&) {
  unsigned char* mem = nullptr;
  unsigned long len = 0;
  const int r = encode(p, &mem, &len);
  Bytes out;
  if (r == 0 && mem) out.assign(mem, mem + len);
  std::free(mem);
  return out;
}
