// What networks drive and what drives them: patterns read from picture
// files, brushes that paint an image through a network, a pattern run by
// `motif(v) network(id)`, and a motif rolled by new values.
//
//   read image network(id) motif("nom1 nom2 ...") law("nom1 ...") dim(nx,ny)
//       each picture, resampled to nx by ny, as one value a pixel
//       (r+g+b)/765: the `motif` list (READ_IMAGE_NETWORK_0) and the
//       `law` list (READ_IMAGE_NETWORK_1)
//   network(id) brush image(i) poi(x,y) [dim(w,h)] [lum | col]
//       the w by h pixels at (x,y) reduced to the motif's size, run
//       through the network, its outputs painted back over them: grey
//       by one value a pixel (BRUSH_NETWORK_1, `lum`), colours by three
//       (BRUSH_NETWORK_3, `col`)
//   motif(v) network(id)          the outputs for pattern v (MOTIF_b)
//   roll network(id) motif(v)     the first motif shifted by the values
//                                 of v, which enter at its end, then run
#include <algorithm>
#include <string>

#include "adaptive/net_commands.h"
#include "adaptive/net_internal.h"
#include "image/image_io.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/cmd_util.h"
#include "scene/graphic.h"
#include "scene/image_object.h"
#include "scene/lookup.h"

namespace {

// A picture file as nx*ny values of (r+g+b)/scale, nearest pixels.
bool valeurs_image(const std::string& name, int nx, int ny, std::vector<float>& out) {
  const ImageFormat* f = format_of(name);
  if (!f) {
    VOIR_CHAR("%s", extension_of(name).c_str());
    voir_message(0, MES_UNKNOWN);
    return false;
  }
  Bytes bytes;
  std::string path;
  ImageData d;
  if (!lit_image_fichier(name, bytes, &path) || f->decode(bytes.data(), bytes.size(), FormatOptions{}, d) < 0)
    return false;
  const Bytes px = reechantillonne(ImageView{d.px.data(), d.w, d.h, 1}, nx, ny);
  out.resize(static_cast<size_t>(nx) * ny);
  for (size_t k = 0; k < out.size(); k++)
    out[k] = static_cast<float>(px[4 * k] + px[4 * k + 1] + px[4 * k + 2]) / 765.0f;
  return true;
}

// The list of the pictures named in the text, under `code`.
int liste_images(Objet* o, int code, const char* names, int nx, int ny) {
  std::vector<word> list = liste_vide();
  std::vector<float> v;
  for (const std::string& name : split_words(names)) {
    if (!valeurs_image(name, nx, ny, v)) {
      TRACE_FAIL("READ_IMAGE_NETWORK()");
      return -1;
    }
    liste_ajoute(list, valeur_floats(v.data(), nx * ny, nx).data());
  }
  if (hybride_parts(list.data()) == 0) return 0;
  if (!o->local && !local_ini(o)) return -1;
  return set_propr_1(o, code, list.data()) ? 0 : -1;
}

int usage_image() {
  voir_mot(KW_read);
  voir_texte("image network(id) motif(\"nom1 nom2 ...\") law(\"nom1 nom2 ...\") dim(nx,ny)\a\n");
  return -1;
}

}  // namespace

int READ_IMAGE_NETWORK_0(Objet* o, const char* names, int nx, int ny) { return liste_images(o, KW_motif, names, nx, ny); }
int READ_IMAGE_NETWORK_1(Objet* o, const char* names, int nx, int ny) { return liste_images(o, KW_law, names, nx, ny); }

namespace {

int read_image_network(word* s, const word* lim) {
  const char* motifs = arg_text(s, KW_motif);
  const char* laws = arg_text(s, KW_law);
  const int nx = arg_int(s, KW_dim, 0, 0), ny = arg_int(s, KW_dim, nx, 1);
  if ((!motifs && !laws) || nx < 1 || ny < 1 || nx > 4096 || ny > 4096) return usage_image();
  for (Objet* o : reseaux_commande(s)) {
    if (motifs && READ_IMAGE_NETWORK_0(o, motifs, nx, ny) < 0) return -1;
    if (laws && READ_IMAGE_NETWORK_1(o, laws, nx, ny) < 0) return -1;
  }
  return build_nil(s, lim);
}

// The network of the command, or "network not found: " and its selector.
Objet* reseau_ou_rapport(word* s) {
  const word* sel = arg_of(s, KW_network);
  Objet* o = sel ? get_objet_simple(chaine_classe(KW_network), sel, 0) : nullptr;
  if (!o) {
    voir_texte("network not found: ");
    if (sel && tag(sel) == T_CHAR) VOIR_CHAR("%s\n", text(sel));
    else voir_int("%d\n", entier(value_at(sel, 0, 0)));
  }
  return o;
}

// The brush: `planes` values a pixel (1: (r+g+b)/765, 3: r, g, b / 255).
int brush_reseau(word* s, const word* lim, int planes) {
  Objet* o = reseau_ou_rapport(s);
  if (!o) return -1;
  Objet* img = image_numero(arg_int(s, KW_image, 1));
  const Reseau r = trouve_reseau(o);
  const word* m0 = r.motif ? sous_bloc(r.motif, 0) : nullptr;
  if (!img || !pixels_image(img) || !m0) {
    rapport_manque(o, !m0 ? KW_motif : KW_image);
    return -1;
  }
  const int mx = std::max(1, dimp(m0) / planes), my = std::max(1, np(m0));
  const int nx = image_nx(img), ny = image_ny(img);
  const int w = std::max(1, arg_int(s, KW_dim, mx, 0)), h = std::max(1, arg_int(s, KW_dim, my, 1));
  const int x0 = arg_int(s, KW_poi, nx / 2, 0) - w / 2, y0 = arg_int(s, KW_poi, ny / 2, 1) - h / 2;
  uint8_t* px = pixels_image(img);
  auto pixel = [&](int x, int y) -> uint8_t* {
    x = std::clamp(x, 0, nx - 1);
    y = std::clamp(y, 0, ny - 1);
    return px + (static_cast<size_t>(y) * nx + x) * 4;
  };
  // The pixels under the brush, reduced to the motif's size.
  std::vector<float> motif(static_cast<size_t>(mx) * my * planes);
  for (int j = 0; j < my; j++)
    for (int i = 0; i < mx; i++) {
      const uint8_t* p = pixel(x0 + i * w / mx, y0 + j * h / my);
      float* m = motif.data() + (static_cast<size_t>(j) * mx + i) * planes;
      if (planes == 1) m[0] = static_cast<float>(p[0] + p[1] + p[2]) / 765.0f;
      else for (int c = 0; c < 3; c++) m[c] = static_cast<float>(p[c]) / 255.0f;
    }
  std::vector<word> out(static_cast<size_t>(8 + r.N + motif.size()));
  if (valider_motif_reseau(o, valeur_floats(motif.data(), static_cast<int>(motif.size()), mx * planes).data(),
                           out.data(), out.data() + out.size(), nullptr) < 0) {
    TRACE_FAIL("BRUSH_NETWORK()");
    return -1;
  }
  // The outputs over the brush's pixels, nearest values.
  const int n = elements(out.data()) / planes;
  const int ox = std::max(1, std::min(n, dimp(out.data()) / planes)), oy = std::max(1, n / ox);
  for (int y = 0; y < h; y++)
    for (int x = 0; x < w; x++) {
      if (x0 + x < 0 || y0 + y < 0 || x0 + x >= nx || y0 + y >= ny) continue;
      const int k = std::min(n - 1, (y * oy / h) * ox + x * ox / w);
      uint8_t* p = pixel(x0 + x, y0 + y);
      for (int c = 0; c < 3; c++) {
        const float v = getf(out.data(), planes == 1 ? k : 3 * k + c);
        p[c] = static_cast<uint8_t>(std::clamp(v, 0.0f, 1.0f) * 255.0f + 0.5f);
      }
    }
  return build_nil(s, lim);
}

}  // namespace

int BRUSH_NETWORK_1(word* s, const word* lim) { return brush_reseau(s, lim, 1); }
int BRUSH_NETWORK_3(word* s, const word* lim) { return brush_reseau(s, lim, 3); }
int BRUSH_NETWORK_LUM(word* s, const word* lim) { return BRUSH_NETWORK_1(s, lim); }
int BRUSH_NETWORK_COL(word* s, const word* lim) { return BRUSH_NETWORK_3(s, lim); }

int BRUSH_NETWORK(word* s, const word*, word*, const word* lim) {
  if (has_word(s, KW_col)) return BRUSH_NETWORK_COL(s, lim);
  return BRUSH_NETWORK_LUM(s, lim);
}

namespace {

// The outputs of one network for a pattern, as the command's result.
int resultat_motif(word* s, Objet* o, const word* motif, word* st, const word* lim) {
  const std::vector<word> pattern(motif, motif + size(motif));
  if (valider_motif_reseau(o, pattern.data(), st, lim, nullptr) < 0) return -1;
  return resultat(s, st, lim);
}

}  // namespace

int MOTIF_b(word* s, const word*, word* st, const word* lim) {
  Objet* o = reseau_ou_rapport(s);
  const word* v = command_argument(s);
  if (!o || !v) return -1;
  return resultat_motif(s, o, v, st, lim);
}

int ROLL_NETWORK_MOTIF_PROPR(word* s, const word*, word* st, const word* lim) {
  Objet* o = reseau_ou_rapport(s);
  if (!o) return -1;
  const Reseau r = trouve_reseau(o);
  const word* m0 = r.motif ? sous_bloc(r.motif, 0) : nullptr;
  const std::vector<float> added = floats_of(arg_of(s, KW_motif));
  if (!m0) {
    rapport_manque(o, KW_motif);
    return -1;
  }
  // The values move towards the start; the new ones enter at the end.
  std::vector<float> v = floats_of(m0);
  const size_t n = v.size(), k = std::min(added.size(), n);
  std::rotate(v.begin(), v.begin() + static_cast<long>(k), v.end());
  std::copy(added.end() - static_cast<long>(k), added.end(), v.end() - static_cast<long>(k));
  for (size_t i = 0; i < n; i++) setf(const_cast<word*>(m0), static_cast<int>(i), v[i]);
  return resultat_motif(s, o, m0, st, lim);
}

namespace {

int read_shape(word* s, const word* ob, word*, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_network) && has_word(s, KW_image);
  return *done ? read_image_network(s, lim) : 0;
}

// `motif(v) network(id)` is a query when v fills the first layer;
// otherwise the parameter addresses points of the property, as always.
int motif_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = false;
  const word* v = command_argument(s);
  if (ob || !v || !has_word(s, KW_network)) return 0;
  const std::vector<Objet*> nets = reseaux_commande(s);
  if (nets.empty()) return 0;
  const Reseau r = trouve_reseau(nets[0]);
  *done = r.fac && static_cast<int>(floats_of(v).size()) == elements(*Parties{r.fac}.begin());
  return *done ? MOTIF_b(s, ob, st, lim) : 0;
}

int roll_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_network) && arg_of(s, KW_motif);
  return *done ? ROLL_NETWORK_MOTIF_PROPR(s, ob, st, lim) : 0;
}

}  // namespace

void install_network_drivers() {
  register_graphic_shape(KW_read, read_shape);
  register_graphic_shape(KW_motif, motif_shape);
  register_graphic_shape(KW_roll, roll_shape);
}
