#include "scene/image_object.h"

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "scene/lookup.h"

namespace {

// The pixel count of nx*ny*nz, or -1 when it is not positive or does not
// fit a block.
long long nombre_pixels(int nx, int ny, int nz) {
  if (nx <= 0 || ny <= 0 || nz <= 0) return -1;
  const double n = static_cast<double>(nx) * ny * nz;
  return n > (1LL << 29) ? -1 : static_cast<long long>(n);
}

// The bytes of nx*ny*nz pixels, for the report of a size refused.
double octets_pixels(int nx, int ny, int nz) { return static_cast<double>(nx) * ny * nz * 4; }

bool bloc_de_taille(const word* b, word t, long long n) {
  return b && tag(b) == t && np(b) == n && dimp(b) == 4 && size(b) == 4 + n;
}

// A property of one key (`code`) holding a zeroed pixel block of n
// pixels with tag `t`, in place of the old one.
bloc installe_pixels(Objet* o, int code, word t, long long n) {
  bloc v = installe_valeur_1(o, code, static_cast<int>(n));
  if (!v) return nullptr;
  v[1] = t;
  v[2] = static_cast<word>(n);
  v[3] = 4;
  std::memset(v + 4, 0, static_cast<size_t>(n) * 4);
  return v;
}

}  // namespace

bloc bloc_image(int nx, int ny, int nz) {
  const long long n = nombre_pixels(nx, ny, nz);
  if (n < 0) {
    err_malloc("bloc_image()", octets_pixels(nx, ny, nz));
    return nullptr;
  }
  bloc b = alloue_bloc(static_cast<int>(4 + n));
  if (!b) return nullptr;
  build_head(b, b[0], T_IMAGE, static_cast<word>(n), 4);
  std::memset(b + 4, 0, static_cast<size_t>(n) * 4);
  return b;
}

namespace {

// Versions are unique across images: a record made again at the same
// address never matches an old copy.
void marque(Objet* o) {
  static int version = 0;
  o->work[IW_VERSION] = ++version;
}

}  // namespace

const word* pixels_lecture(const Objet* o) {
  if (!o) return nullptr;
  const word* b = get_val_1(o->local, KW_image);
  const long long n = nombre_pixels(image_nx(o), image_ny(o), image_nz(o));
  return bloc_de_taille(b, T_IMAGE, n) ? b : nullptr;
}

bloc pixels_bloc(Objet* o) {
  if (!pixels_lecture(o)) return nullptr;
  marque(o);
  return get_val_1(o->local, KW_image);
}

uint8_t* pixels_image(Objet* o) {
  bloc b = pixels_bloc(o);
  return b ? octets(b) : nullptr;
}

int SET_DIM_IMAGE(Objet* o, int nx, int ny, int nz) {
  const long long n = nombre_pixels(nx, ny, nz);
  if (n < 0) {
    err_malloc("SET_DIM_IMAGE()", octets_pixels(nx, ny, nz));
    return -1;
  }
  if (!installe_pixels(o, KW_image, T_IMAGE, n)) {
    TRACE_FAIL("SET_DIM_IMAGE()");
    return -1;
  }
  o->work[IW_NX] = nx;
  o->work[IW_NY] = ny;
  o->work[IW_NZ] = nz;
  marque(o);
  return 0;
}

bool GET_DIM_IMAGE(Objet* o, int* nx, int* ny) {
  if (!pixels_bloc(o)) return false;
  *nx = image_nx(o);
  *ny = image_ny(o);
  return true;
}

bloc pixels_precedents(Objet* o, bool copy) {
  bloc cur = pixels_bloc(o);
  if (!cur) return nullptr;
  const long long n = np(cur);
  bloc prev = get_val_1(o->local, -KW_image);
  if (!bloc_de_taille(prev, T_IMAGE_PREV, n)) prev = installe_pixels(o, -KW_image, T_IMAGE_PREV, n);
  if (!prev) return nullptr;
  cur = pixels_bloc(o);  // the list may have moved
  if (copy) std::memcpy(prev + 4, cur + 4, static_cast<size_t>(n) * 4);
  return prev;
}

Objet* chaine_images() { return chaine_classe(KW_image); }

void set_type_dynamique(Objet* o, bool on) { o->subkind = on ? KW_dynamic : 0; }

Objet* image_numero(int id) { return get_objet_id(chaine_images(), KW_image, id); }

Objet* image_ou_cree(int id, const char* name) {
  Objet* head = chaine_images();
  Objet* o = name && *name && id == 0 ? get_objet_kind_nom(head, KW_image, name) : image_numero(id);
  if (o) return o;
  o = cre_objet_nom(head, KW_image / 200, KW_image, id, name);
  if (!o) return nullptr;
  if (SET_DIM_IMAGE(o, IMAGE_DEFAULT_SIZE, IMAGE_DEFAULT_SIZE) < 0) return nullptr;
  return o;
}
