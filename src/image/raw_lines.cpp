// Raw files a band of lines at a time: a large picture loaded (or saved)
// a few lines per image of an animation. The file is reopened at each
// band and the reading position kept between calls.
#include <algorithm>
#include <cstring>

#include "image/image_commands.h"
#include "image/image_io.h"
#include "kernel/file_out.h"
#include "kernel/report.h"
#include "platform/process.h"
#include "scene/image_object.h"

namespace {

struct BandeRaw {
  std::string name;
  int ids[2] = {0, 0};
  int nids = 0;
  int current = 0, number = 0;
};

BandeRaw bande;

// Reads the raw header of an open file.
bool entete(OsFile* f, int* w, int* h) {
  uint8_t head[RAW_HEADER];
  return os_read(f, reinterpret_cast<char*>(head), RAW_HEADER) == RAW_HEADER && raw_header(head, RAW_HEADER, w, h);
}

// The image that receives the lines, of the file's size.
Objet* receveur(int w, int h) {
  Objet* o = image_ou_cree(bande.ids[bande.nids - 1], nullptr);
  if (!o) return nullptr;
  const ImageView p = picture_of(o);
  if (p.px && p.w == w && p.h == h && p.nz == 1) return o;
  return SET_DIM_IMAGE(o, w, h) < 0 ? nullptr : o;
}

// Once a pass is complete, the second image is copied to the first.
int copie_finale(Objet* from) {
  if (bande.nids < 2) return 0;
  Objet* to = image_ou_cree(bande.ids[0], nullptr);
  ImageData d;
  const ImageView p = picture_of(from);
  d.w = p.w;
  d.h = p.h;
  d.px.assign(p.px, p.px + static_cast<size_t>(p.w) * p.h * 4);
  d.valid = d.px.size();
  return to ? pose_image(to, d) : -1;
}

}  // namespace

int READ_IMAGE_RAW_LINE(const std::string& name, const int* ids, int nids, int current, int number) {
  if (!name.empty()) {
    bande.name = name;
    bande.current = current;
    bande.number = number;
  } else if (bande.name.empty()) {
    voir_texte("READ_IMAGE_RAW_LINE(): no raw file is being read\a\n");
    return -1;
  }
  bande.nids = std::min(nids, 2);
  std::copy(ids, ids + bande.nids, bande.ids);
  OsFile* f = ouvre_image(bande.name, nullptr);
  if (!f) return -1;
  int w = 0, h = 0;
  Objet* o = nullptr;
  if (!entete(f, &w, &h) || size_refused(w, h, 1, "READ_IMAGE_RAW_LINE()") || !(o = receveur(w, h))) {
    os_close(f);
    TRACE_FAIL("READ_IMAGE_RAW_LINE()");
    return -1;
  }
  if (bande.current < 0 || bande.current >= h) bande.current = 0;
  const int lines = std::min(bande.number, h - bande.current);
  const size_t row = static_cast<size_t>(w) * 4;
  if (lines > 0 && os_seek(f, static_cast<long long>(RAW_HEADER + bande.current * row)))
    os_read(f, reinterpret_cast<char*>(pixels_image(o) + bande.current * row), lines * row);
  os_close(f);
  bande.current += bande.number;
  if (bande.current < h) return 0;
  bande.current = 0;
  return copie_finale(o);
}

int WRITE_IMAGE_RAW_LINE(const std::string& name, const ImageView& p, int current, int number) {
  int w = 0, h = 0;
  OsFile* f = file_exists(name) ? ouvre_image(name, nullptr) : nullptr;
  const bool fits = f && entete(f, &w, &h) && w == p.w && h == p.h;
  os_close(f);
  if (!fits) {
    Bytes black(static_cast<size_t>(p.w) * p.h * 4, 0);
    if (!ecrit_image_fichier(name, WRITE_IMAGE_RAW(ImageView{black.data(), p.w, p.h, 1}, {}))) return -1;
  }
  // The band goes into a copy of the file, which replaces it once written.
  current = std::clamp(current, 0, p.h);
  const int lines = std::clamp(number, 0, p.h - current);
  const size_t row = static_cast<size_t>(p.w) * 4;
  WriteFault fault;
  SafeFile* out = safe_open(name, true, &fault);
  if (out) {
    safe_write_at(out, static_cast<long long>(RAW_HEADER + current * row), p.px + current * row, lines * row);
    fault = safe_commit(out);
  }
  signale_ecriture(name, fault);
  return fault == WriteFault::none ? 0 : -1;
}
