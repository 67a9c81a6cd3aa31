// ImageView files: each format decodes from and encodes to bytes in memory,
// so that the commands, the tests and the fuzz targets share one path.
// Pixels are four bytes R, G, B, A, rows in memory order with no padding;
// the first row is the picture's bottom, as for the window and bitmaps.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;

// A decoded picture: w*h*nz pixels. Only the first `valid` bytes came
// from the file; a short file of a format that does not check its length
// leaves the rest of the image as it was.
struct ImageData {
  int w = 0, h = 0, nz = 1;
  Bytes px;
  size_t valid = 0;
  bool clear = false;  // a failed read leaves the image it was for black
};

// Pixels to encode: w*h*nz pixels at px.
struct ImageView {
  const uint8_t* px = nullptr;
  int w = 0, h = 0, nz = 1;
};

// What the commands pass on to the formats.
struct FormatOptions {
  const char* order = nullptr;  // bitmap component order, "BGR" when null
  int compression = 0;          // flo and ima compression flag
  int alpha = -1;               // 0..255 overwrites every alpha read; -1 keeps the file's
  int debug = 0;                // 2 prints a targa header
};

// A decoder: 0, or -1 after its message (out is then not to be used).
using Decoder = int (*)(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
// An encoder: the file's bytes, or empty after its message.
using Encoder = Bytes (*)(const ImageView& p, const FormatOptions& o);

struct ImageFormat {
  const char* ext;  // lower case; the upper-case spelling is accepted too
  Decoder decode;
  Encoder encode;
};

// The format of a file name by its extension, spelled all in lower or
// all in upper case; null when there is none such.
const ImageFormat* format_of(const std::string& name);
// The extension of a name (after its last period), or "".
std::string extension_of(const std::string& name);

// The largest picture a reader accepts, in pixels: a header claiming more
// is refused before anything is allocated.
extern long long image_max_pixels;
// True after a message when w*h*nz pixels is not a size to allocate.
bool size_refused(long long w, long long h, long long nz, const char* who);
// A pixel buffer of w*h*nz zeroed pixels in out; false after a message
// when the size is not positive or passes image_max_pixels.
bool prepare_image(ImageData& out, long long w, long long h, long long nz, const char* who);
// The alpha of pixels that a file gives none for: the default alpha.
inline uint8_t default_alpha(const FormatOptions& o) { return o.alpha >= 0 ? static_cast<uint8_t>(o.alpha) : 255; }

int READ_IMAGE_FLO(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes WRITE_IMAGE_FLO(const ImageView& p, const FormatOptions& o);
int READ_IMAGE_IMA(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes WRITE_IMAGE_IMA(const ImageView& p, const FormatOptions& o);
int READ_IMAGE_RAW(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes WRITE_IMAGE_RAW(const ImageView& p, const FormatOptions& o);
int lire_image_tga(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes tga_bytes(const ImageView& p, const FormatOptions& o);
int bmp_read(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes bmp_bytes(const ImageView& p, const FormatOptions& o);
int jpg_read(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes jpg_bytes(const ImageView& p, const FormatOptions& o);
int png_read(const uint8_t* d, size_t n, const FormatOptions& o, ImageData& out);
Bytes png_bytes(const ImageView& p, const FormatOptions& o);

// The raw header: width and height as four digits each ("4D").
constexpr size_t RAW_HEADER = 8;
// Width and height of a raw header; false when the bytes are short.
bool raw_header(const uint8_t* d, size_t n, int* w, int* h);
