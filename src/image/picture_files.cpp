#include "image/picture_files.h"

#include <cstring>

namespace {

void le16(std::vector<uint8_t>& out, size_t at, uint32_t v) {
  out[at] = static_cast<uint8_t>(v);
  out[at + 1] = static_cast<uint8_t>(v >> 8);
}
void le32(std::vector<uint8_t>& out, size_t at, uint32_t v) {
  le16(out, at, v & 0xffff);
  le16(out, at + 2, v >> 16);
}

}  // namespace

std::vector<uint8_t> bmp_bytes(const uint8_t* rgba, int w, int h, const char* format) {
  if (!format) format = "BGR";
  static const char* const FORMATS[] = {"RGB", "RBG", "GRB", "GBR", "BRG", "BGR"};
  bool known = false;
  for (const char* f : FORMATS) known |= std::strcmp(f, format) == 0;
  if (!known || w < 0 || h < 0) return {};
  int order[3];
  for (int i = 0; i < 3; i++) order[i] = format[i] == 'R' ? 0 : format[i] == 'G' ? 1 : 2;
  const uint32_t data = static_cast<uint32_t>((w * 24 + 7) / 8) * static_cast<uint32_t>(h);
  std::vector<uint8_t> out(54 + data, 0);
  le16(out, 0, 0x4D42);
  le32(out, 2, data + 54);
  le32(out, 10, 54);
  le32(out, 14, 40);
  le32(out, 18, static_cast<uint32_t>(w));
  le32(out, 22, static_cast<uint32_t>(h));
  le16(out, 26, 1);
  le16(out, 28, 24);
  le32(out, 38, 2952);
  le32(out, 42, 2952);
  uint8_t* p = out.data() + 54;
  for (size_t i = 0; i < static_cast<size_t>(w) * h; i++)
    for (int c = 0; c < 3; c++) *p++ = rgba[i * 4 + order[c]];
  return out;
}

std::vector<uint8_t> tga_bytes(const uint8_t* rgba, int w, int h) {
  if (w < 0 || h < 0) return {};
  std::vector<uint8_t> out(18 + static_cast<size_t>(w) * h * 4, 0);
  out[2] = 2;
  le16(out, 12, static_cast<uint32_t>(w));
  le16(out, 14, static_cast<uint32_t>(h));
  out[16] = 32;
  uint8_t* p = out.data() + 18;
  for (size_t i = 0; i < static_cast<size_t>(w) * h; i++) {
    *p++ = rgba[i * 4 + 2];
    *p++ = rgba[i * 4 + 1];
    *p++ = rgba[i * 4];
    *p++ = rgba[i * 4 + 3];
  }
  return out;
}

char writer_of(const std::string& name) {
  const size_t dot = name.rfind('.');
  if (dot == std::string::npos) return 0;
  const std::string ext = name.substr(dot + 1);
  if (ext == "bmp" || ext == "BMP") return 'b';
  if (ext == "tga" || ext == "TGA") return 't';
  return 0;
}
