// `write image name("file") image(id)`: an image, or the window when no
// image is named, to a picture file of the format its extension names.
#include <string>

#include "image/image_commands.h"
#include "image/image_io.h"
#include "image/image_ops.h"
#include "scene/image_object.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "render/picture.h"
#include "scene/graphic.h"

namespace {

int usage_line() {
  voir_mot(KW_read);
  voir_mot(KW_image);
  voir_texte("(id) name(\"nnn.raw\") ");
  voir_mot(KW_line);
  voir_texte("(current,number)\a\n");
  return -1;
}

// The flo writer names its file with ".flo" when a name of more than four
// characters does not end so.
std::string nom_ecrit(const std::string& name, const ImageFormat* f) {
  if (f->encode != WRITE_IMAGE_FLO || name.size() <= 4 || name.ends_with(".flo")) return name;
  return name + ".flo";
}

// The pixels to write: the image named, or the window. `held` keeps
// them when they are a copy. False after a report; an empty picture
// (no window) is not a failure.
bool source(word* s, ImageData& held, ImageView& p) {
  if (const word* id = arg_of(s, KW_image)) {
    const int n = coord(arg_float(s, KW_image, 0));
    Objet* o = image_numero(n);
    if (!o) {
      err_objet(KW_image, id, 0, 0, nullptr);
      return false;
    }
    p = picture_of(o);
    if (!p.px) {
      err_vide("WRITE_IMAGE()", o);
      return false;
    }
    return true;
  }
  held.px = pixels_fenetre(&held.w, &held.h);
  held.valid = held.px.size();
  p = ImageView{held.px.data(), held.w, held.h, 1};
  return true;
}

// `win(x, y, nx, ny)` crops, `dim(nx, ny)` resizes, into `work`.
bool transforme(word* s, ImageView& p, ImageData& work) {
  if (has_word(s, KW_win)) {
    ImageData crop;
    if (!decoupe(p, coord(arg_float(s, KW_win, 0)), coord(arg_float(s, KW_win, 0, 1)), coord(arg_float(s, KW_win, p.w, 2)),
                 coord(arg_float(s, KW_win, p.h, 3)), crop)) {
      voir_mot(KW_win);
      voir_message(0, MES_ILLEGAL);
      return false;
    }
    work = std::move(crop);
    p = ImageView{work.px.data(), work.w, work.h, 1};
  }
  if (has_word(s, KW_dim)) {
    const int nx = coord(arg_float(s, KW_dim, p.w)), ny = coord(arg_float(s, KW_dim, nx, 1));
    if (size_refused(nx, ny, 1, "dim")) return false;
    Bytes resized = reechantillonne(p, nx, ny);
    work.px = std::move(resized);
    work.w = nx;
    work.h = ny;
    p = ImageView{work.px.data(), nx, ny, 1};
  }
  return true;
}

// A jpg leaves, in the `exe=` folder when there is one, the files that
// the converters of the first versions passed it through: the picture as
// tmp.bmp and the compressed file as tmp.jpg.
bool etapes_jpg(const ImageView& p, const Bytes& jpg) {
  const std::string& exe = kernel().exe;
  if (!os_is_folder(exe.empty() ? "." : exe.c_str())) return true;
  return ecrit_image_fichier(dans_dossier(exe, "tmp.bmp"), bmp_bytes(p, FormatOptions{})) &&
         ecrit_image_fichier(dans_dossier(exe, "tmp.jpg"), jpg);
}

}  // namespace

int WRITE_IMAGE_b(word* s, const word* ob, word* st, const word* lim) {
  if (!has_word(s, KW_image)) return bloc_0(s, ob, st, lim);
  std::string name;
  if (!nom_fichier_image(s, 0, name)) return -1;
  if (name.empty()) {
    err_syntaxe(MES_COMMAND_USAGE, KW_write, " image name(\"file.bmp\")\n");
    return -1;
  }
  if (name.find('.') == std::string::npos) {
    VOIR_CHAR("%s", name.c_str());
    voir_message(0, MES_ILLEGAL_NAME);
    return -1;
  }
  const ImageFormat* f = format_of(name);
  if (!f) {
    VOIR_CHAR("%s", extension_of(name).c_str());
    voir_message(0, MES_UNKNOWN);
    return -1;
  }
  ImageData held, work;
  ImageView p;
  if (!source(s, held, p)) return -1;
  if (!p.px || p.w <= 0 || p.h <= 0) return build_nil(s);  // no window: nothing to picture
  if (!transforme(s, p, work)) return -1;
  if (has_word(s, KW_line) && f->encode == WRITE_IMAGE_RAW) {
    float band[2];
    if (arg_floats(s, KW_line, band, 2) < 2) return usage_line();
    const int r = WRITE_IMAGE_RAW_LINE(name, p, coord(arg_float(s, KW_line, 0)), coord(arg_float(s, KW_line, 0, 1)));
    return r < 0 ? -1 : build_nil(s);
  }
  const Bytes bytes = f->encode(p, options_format(s));
  if (!bytes.empty() && f->encode == jpg_bytes && !etapes_jpg(p, bytes)) return -1;
  if (bytes.empty() || !ecrit_image_fichier(nom_ecrit(name, f), bytes)) {
    TRACE_FAIL("WRITE_IMAGE()");
    return -1;
  }
  return build_nil(s);
}
