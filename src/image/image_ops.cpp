#include "image/image_ops.h"

#include <cstring>

#include "kernel/keywords.h"
#include "kernel/random_table.h"
#include "language/args.h"
#include "language/commands.h"
#include "render/picture.h"
#include "scene/lookup.h"
#include "scene/primitives.h"
#include "scene/transform.h"

Objet* image_courante() {
  int w = 0, h = 0;
  std::vector<uint8_t> px = pixels_fenetre(&w, &h);
  if (px.empty() || w <= 0 || h <= 0) {
    voir_mot(KW_image);
    err_vide(nullptr, nullptr);
    return nullptr;
  }
  Objet* o = image_de_taille(0, w, h);
  if (!o) return nullptr;
  std::memcpy(pixels_image(o), px.data(), static_cast<size_t>(w) * h * 4);
  return o;
}

int nb_images(const word* selector) { return selector ? nb_selection(selector) : 1; }

Objet* image_operande(const word* selector, int index) {
  if (!selector) return image_courante();
  Objet* o = get_objet_simple(chaine_images(), selector, index);
  if (!o) {
    err_objet(KW_image, selector, index, 0, nullptr);
    return nullptr;
  }
  if (!pixels_bloc(o)) {
    err_vide(nullptr, o);
    return nullptr;
  }
  return o;
}

const word* images_commande(word* s, bool* found) {
  if (found) *found = has_word(s, KW_image);
  return arg_of(s, KW_image);
}

Objet* image_de_taille(int id, int nx, int ny) {
  Objet* o = image_numero(id);
  const bool nouvelle = !o;
  if (nouvelle) o = cre_objet_nom(chaine_images(), KW_image / 200, KW_image, id, nullptr);
  if (!o) return nullptr;
  if (!pixels_bloc(o) || image_nx(o) != nx || image_ny(o) != ny || image_nz(o) != 1)
    if (SET_DIM_IMAGE(o, nx, ny) < 0) return nullptr;
  if (nouvelle) o->work[IW_VISIBLE] = 1;
  return o;
}

int copie_image(Objet* dst, Objet* src) {
  if (dst == src) return 0;
  const bloc b = pixels_bloc(src);
  if (!b) {
    err_vide("copie_image()", src);
    return -1;
  }
  const int nx = image_nx(src), ny = image_ny(src), nz = image_nz(src);
  if (!pixels_bloc(dst) || image_nx(dst) != nx || image_ny(dst) != ny || image_nz(dst) != nz)
    if (SET_DIM_IMAGE(dst, nx, ny, nz) < 0) return -1;
  std::memcpy(pixels_image(dst), octets(pixels_bloc(src)), static_cast<size_t>(np(b)) * 4);
  return 0;
}

void err_tailles(Objet* a, Objet* b) {
  for (Objet* o : {a, b}) {
    voir_mot(KW_image);
    voir_int("(%d) ", o->id);
    voir_int2("%d,%d ", image_nx(o), image_ny(o));
  }
  err_incoherent(nullptr);
}

float Tirage::operator()() { return table ? random_table_at(graine_alea() + k++) : random_uniform(); }

