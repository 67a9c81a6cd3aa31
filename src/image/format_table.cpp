// The extension table: the format of a file is chosen by its name alone.
#include <cctype>

#include "image/image_files.h"
#include "kernel/report.h"

namespace {

const ImageFormat FORMATS[] = {
    {"flo", READ_IMAGE_FLO, WRITE_IMAGE_FLO}, {"bmp", bmp_read, bmp_bytes}, {"ima", READ_IMAGE_IMA, WRITE_IMAGE_IMA},
    {"jpg", jpg_read, jpg_bytes},             {"tga", lire_image_tga, tga_bytes}, {"raw", READ_IMAGE_RAW, WRITE_IMAGE_RAW},
    {"png", png_read, png_bytes},
};

std::string upper(std::string s) {
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

}  // namespace

long long image_max_pixels = 1LL << 26;

std::string extension_of(const std::string& name) {
  const size_t dot = name.rfind('.');
  return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

const ImageFormat* format_of(const std::string& name) {
  const std::string ext = extension_of(name);
  for (const ImageFormat& f : FORMATS)
    if (ext == f.ext || ext == upper(f.ext)) return &f;
  return nullptr;
}

bool size_refused(long long w, long long h, long long nz, const char* who) {
  if (w > 0 && h > 0 && nz > 0 && w * h <= image_max_pixels && nz <= image_max_pixels / (w * h)) return false;
  VOIR_CHAR("%s: ", who);
  voir_int2("%d x %d: ", static_cast<int>(w), static_cast<int>(h));
  voir_int("%d planes: illegal size\a\n", static_cast<int>(nz));
  return true;
}

bool prepare_image(ImageData& out, long long w, long long h, long long nz, const char* who) {
  if (size_refused(w, h, nz, who)) return false;
  out.w = static_cast<int>(w);
  out.h = static_cast<int>(h);
  out.nz = static_cast<int>(nz);
  out.px.assign(static_cast<size_t>(w * h * nz) * 4, 0);
  out.valid = 0;
  return true;
}
