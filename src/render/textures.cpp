#include "render/textures.h"

#include <GL/gl.h>

#include <unordered_map>
#include <unordered_set>

#include "kernel/handles.h"
#include "render/cmd_args.h"
#include "scene/image_object.h"

namespace {

struct Texture {
  GLuint name = 0;
  int version = 0;  // of the pixels last sent
};

// Keyed by the image record; a record made again at the same address
// carries a new version, so stale pixels are never shown.
std::unordered_map<const Objet*, Texture>& table() {
  static std::unordered_map<const Objet*, Texture> t;
  return t;
}

}  // namespace

int image_facette(const word* images, int facet) {
  // A table of one block a facet, as `texture fac vol(1)=n` makes it.
  if (images && tag(images) == T_PROPRIETES) {
    if (facet < 0 || facet >= np(images) || facet >= size(images) - 4) return 0;
    return static_cast<int>(value_at(handle_bloc(images[4 + facet]), 0));
  }
  return static_cast<int>(value_at(images, facet));
}

bool lie_texture(int id) {
  Objet* img = id > 0 ? image_numero(id) : nullptr;
  const word* px = img ? pixels_lecture(img) : nullptr;
  if (!px) {
    glDisable(GL_TEXTURE_2D);
    return false;
  }
  Texture& t = table()[img];
  if (!t.name) glGenTextures(1, &t.name);
  glEnable(GL_TEXTURE_2D);
  glBindTexture(GL_TEXTURE_2D, t.name);
  if (t.version != img->work[IW_VERSION] || t.version == 0) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image_nx(img), image_ny(img), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 octets(px));
    t.version = img->work[IW_VERSION];
  }
  // Lighting and colour modulate the picture.
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  return true;
}

void lie_texture_facette(const word* images, int facet) { lie_texture(image_facette(images, facet)); }

void textures_oubliees() { table().clear(); }

void textures_orphelines() {
  auto& t = table();
  if (t.empty()) return;
  std::unordered_set<const Objet*> vivantes;
  for (const Objet* o = chaine_images()->next; o; o = o->next) vivantes.insert(o);
  for (auto it = t.begin(); it != t.end();) {
    if (vivantes.count(it->first)) {
      ++it;
      continue;
    }
    glDeleteTextures(1, &it->second.name);
    it = t.erase(it);
  }
}
