// `read image name("file") image(id)`: a picture file into an image, or,
// with no image number, drawn in the window and then thrown away.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "image/image_commands.h"
#include "image/image_io.h"
#include "image/image_ops.h"
#include "scene/image_object.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "render/picture.h"
#include "render/window.h"
#include "scene/graphic.h"

namespace {

int usage() {
  voir_mot(KW_read);
  voir_mot(KW_image);
  voir_texte("(id) name(\"nnn.eee\") [line(current,number)] [number(n)] [dim(nx,ny)] [coe(c)] [poi(x,y)]\a\n");
  return -1;
}

// A name as the commands take it: a trailing "/" removed, and ".ima"
// put after a name that has no extension.
std::string nom_lu(std::string name) {
  if (!name.empty() && name.back() == '/') name.pop_back();
  if (extension_of(name).empty()) name += ".ima";
  return name;
}

// Every pixel's alpha from the first `transp(t)`: 255 * (1 - t). A
// second `transp(r, g, b)` makes pixels of that colour fully transparent.
void transparence(word* s, ImageData& d) {
  std::vector<const word*> values;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (item[2] == KW_transp) values.push_back(item_value(item));
  float t[3] = {0, 0, 0};
  if (values.size() >= 1 && floats_of(values[0], t, 1) == 1 && std::isfinite(t[0])) {
    const auto alpha = static_cast<uint8_t>(std::lround(255 * std::clamp(1 - t[0], 0.0f, 1.0f)));
    par_tranches(d.px.size() / 4, [&](size_t a, size_t b) {
      for (size_t i = a; i < b; i++) d.px[i * 4 + 3] = alpha;
    });
  }
  float key[3] = {0, 0, 0};
  if (values.size() < 2 || floats_of(values[1], key, 3) < 1) return;
  uint8_t k[3];
  for (int c = 0; c < 3; c++) k[c] = static_cast<uint8_t>(std::lround(255 * std::clamp(key[c], 0.0f, 1.0f)));
  par_tranches(d.px.size() / 4, [&](size_t a, size_t b) {
    for (size_t i = a * 4; i < b * 4; i += 4)
      if (d.px[i] == k[0] && d.px[i + 1] == k[1] && d.px[i + 2] == k[2]) d.px[i + 3] = 0;
  });
}

// `coe(c)` scales the three colours.
void coefficient(word* s, ImageData& d) {
  float c = 1;
  if (arg_floats(s, KW_coe, &c, 1) < 1 || !std::isfinite(c)) return;
  par_tranches(d.px.size(), [&](size_t a, size_t b) {
    for (size_t i = a; i < b; i++)
      if (i % 4 != 3) d.px[i] = static_cast<uint8_t>(std::clamp(d.px[i] * c, 0.0f, 255.0f));
  });
}

// `dim(nx, ny)` resizes after reading; ny defaults to nx.
int redimensionne(word* s, ImageData& d) {
  if (!has_word(s, KW_dim)) return 0;
  const int nx = coord(arg_float(s, KW_dim, d.w)), ny = coord(arg_float(s, KW_dim, nx, 1));
  if (size_refused(nx, ny, 1, "dim")) return -1;
  ImageView p{d.px.data(), d.w, d.h, 1};
  d.px = reechantillonne(p, nx, ny);
  d.w = nx;
  d.h = ny;
  d.nz = 1;
  d.valid = d.px.size();
  return 0;
}

// The window: at `poi(x, y)`, else at its top left.
void dans_fenetre(word* s, const ImageData& d) {
  const int x = coord(arg_float(s, KW_poi, 0)), y = coord(arg_float(s, KW_poi, win().Dimy - d.h, 1));
  dessine_pixels(d.px.data(), d.w, d.h, x, y);
}

// The pixels of an image, all to 0.
void efface_image(Objet* o) {
  if (uint8_t* px = o ? pixels_image(o) : nullptr)
    std::memset(px, 0, static_cast<size_t>(image_nx(o)) * image_ny(o) * image_nz(o) * 4);
}

}  // namespace

int READ_IMAGE_b(word* s, const word*, word*, const word*) {
  float ids_f[2] = {0, 0};
  const int nids = arg_floats(s, KW_image, ids_f, 2);
  int ids[2] = {coord(ids_f[0]), coord(ids_f[1])};
  const char* given = value_text(arg_of(s, KW_name));
  if (given && given[0] == '!') return build_nil(s);
  const bool bands = has_word(s, KW_line);
  const int current = coord(arg_float(s, KW_line, 0)), count = coord(arg_float(s, KW_line, 0, 1));
  if (bands && !given && nids > 0)  // the next band of the kept raw file
    return READ_IMAGE_RAW_LINE("", ids, nids, -1, 0) < 0 ? -1 : build_nil(s);
  if (!given) return usage();
  std::string name;
  if (!nom_fichier_image(s, bands ? current : 0, name)) return -1;
  name = nom_lu(name);
  const ImageFormat* f = format_of(name);
  if (!f) {
    VOIR_CHAR("%s", extension_of(name).c_str());
    voir_message(0, MES_UNKNOWN);
    return -1;
  }
  if (bands && f->decode == READ_IMAGE_RAW) {
    if (nids < 1 || count < 1) return usage();
    return READ_IMAGE_RAW_LINE(name, ids, nids, current, count) < 0 ? -1 : build_nil(s);
  }
  Bytes bytes;
  std::string path;
  if (!lit_image_fichier(name, bytes, &path)) return -1;
  FormatOptions o = options_format(s);
  ImageData d;
  if (f->decode(bytes.data(), bytes.size(), o, d) < 0 || redimensionne(s, d) < 0) {
    if (d.clear && nids >= 1) efface_image(image_numero(ids[0]));
    TRACE_FAIL("READ_IMAGE()");
    return -1;
  }
  coefficient(s, d);
  transparence(s, d);
  if (o.debug) {
    VOIR_CHAR("nom=%s ", path.c_str());
    voir_int2("x=%d y=%d\n", d.w, d.h);
  }
  if (nids < 1) {
    dans_fenetre(s, d);
    return build_nil(s);
  }
  Objet* o_img = image_ou_cree(ids[0], nullptr);
  if (!o_img || pose_image(o_img, d) < 0) {
    TRACE_FAIL("READ_IMAGE()");
    return -1;
  }
  return build_nil(s);
}
