#include "image/image_io.h"

#include <algorithm>
#include <cstring>

#include "kernel/file_out.h"
#include "kernel/interrupt.h"
#include "kernel/kernel.h"
#include "kernel/report.h"
#include "scene/image_object.h"

std::string dans_dossier(const std::string& folder, const std::string& name) {
  if (folder.empty()) return name;
  return folder.back() == '/' ? folder + name : folder + "/" + name;
}

OsFile* ouvre_image(const std::string& name, std::string* path) {
  const KernelState& k = kernel();
  for (const std::string& p : {name, dans_dossier(k.ima, name), dans_dossier(k.env, name), dans_dossier(k.exe, name)})
    if (OsFile* f = os_open(p.c_str())) {
      if (path) *path = p;
      return f;
    }
  err_pas_trouve(name.c_str());
  return nullptr;
}

bool lit_image_fichier(const std::string& name, Bytes& out, std::string* path) {
  OsFile* f = ouvre_image(name, path);
  if (!f) return false;
  out.clear();
  char buf[65536];
  for (size_t got; (got = os_read(f, buf, sizeof buf)) > 0;) out.insert(out.end(), buf, buf + got);
  os_close(f);
  return true;
}

bool ecrit_image_fichier(const std::string& name, const Bytes& bytes) {
  return ecrit_fichier(name, bytes.data(), bytes.size());
}

ImageView picture_of(Objet* o) {
  ImageView p;
  // Read only: a texture of the image need not be sent again.
  const word* b = pixels_lecture(o);
  p.px = b ? octets(b) : nullptr;
  if (p.px) {
    p.w = image_nx(o);
    p.h = image_ny(o);
    p.nz = image_nz(o);
  }
  return p;
}

int pose_image(Objet* o, const ImageData& d) {
  const ImageView old = picture_of(o);
  if (!old.px || old.w != d.w || old.h != d.h || old.nz != d.nz) {
    if (SET_DIM_IMAGE(o, d.w, d.h, d.nz) < 0) {
      TRACE_FAIL("pose_image()");
      return -1;
    }
  }
  std::memcpy(pixels_image(o), d.px.data(), std::min(d.valid, d.px.size()));
  return 0;
}

Bytes reechantillonne(const ImageView& p, int nw, int nh) {
  Bytes out(static_cast<size_t>(nw) * nh * 4);
  for (int y = 0; y < nh; y++) {
    interrupt_check();
    const size_t sy = static_cast<size_t>(y) * p.h / nh;
    for (int x = 0; x < nw; x++) {
      const size_t sx = static_cast<size_t>(x) * p.w / nw;
      std::memcpy(&out[(static_cast<size_t>(y) * nw + x) * 4], p.px + (sy * p.w + sx) * 4, 4);
    }
  }
  return out;
}

bool decoupe(const ImageView& p, int x, int y, int w, int h, ImageData& out) {
  const int x0 = std::max(x, 0), y0 = std::max(y, 0);
  const int x1 = std::min<long long>(static_cast<long long>(x) + w, p.w), y1 = std::min<long long>(static_cast<long long>(y) + h, p.h);
  if (x1 <= x0 || y1 <= y0) return false;
  out.w = x1 - x0;
  out.h = y1 - y0;
  out.nz = 1;
  out.px.resize(static_cast<size_t>(out.w) * out.h * 4);
  for (int r = 0; r < out.h; r++) {
    interrupt_check();
    std::memcpy(&out.px[static_cast<size_t>(r) * out.w * 4], p.px + ((static_cast<size_t>(y0) + r) * p.w + x0) * 4,
                static_cast<size_t>(out.w) * 4);
  }
  out.valid = out.px.size();
  return true;
}
