// `displ` as a command, and `write image` of the window.
#include <string>
#include <vector>

#include "image/picture_files.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "platform/files.h"
#include "render/cmd_args.h"
#include "render/commands.h"
#include "render/display.h"
#include "render/picture.h"
#include "scene/chains.h"
#include "scene/graphic.h"
#include "scene/lookup.h"

namespace {

// The objects that the items of one kind word name.
std::vector<Objet*> nommes(word* s, int kind) {
  std::vector<Objet*> out;
  const word* sel = arg_of(s, kind);
  for (int i = 0; sel && i < nb_selection(sel); i++)
    if (Objet* o = get_objet_simple(chaine_classe(kind), sel, i)) out.push_back(o);
  return out;
}

// `displ vol(1)=n` (also of `object`, `light`, `view`) writes the
// objects' displ word; `displ light(2)` and `displ view(2)` answer it.
int mot_displ(word* s, const word* ob, const word* lim, int kind) {
  std::vector<Objet*> objs = nommes(s, kind);
  if (!ob) {
    std::vector<float> words;
    for (Objet* o : objs) words.push_back(static_cast<float>(o->valid));
    return words.empty() ? set_result_nil(s) : set_result_floats(s, lim, words);
  }
  float n = 0;
  if (floats_into(ob, &n, 1) != 1) {
    err_illegal("displ");
    return -1;
  }
  for (Objet* o : objs) o->valid = static_cast<int>(n);
  return set_result_nil(s);
}

}  // namespace

int DISPL_b(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_fog)) return bloc_0(s, ob, st, lim);
  for (int kind : {KW_view, KW_light})
    if (has_word(s, kind)) return mot_displ(s, ob, lim, kind);
  for (int kind : {KW_vol, KW_object})
    if (ob && has_word(s, kind)) return mot_displ(s, ob, lim, kind);
  if (ob) return bloc_0(s, ob, st, lim);
  if (has_word(s, KW_exec)) return DISPLAY_EXEC(s, lim);
  if (DISPLAY_VOL(s) < 0) {
    TRACE_FAIL("DISPLAY_VOL()");
    return -1;
  }
  return set_result_nil(s);
}

int WRITE_IMAGE_b(word* s, const word* ob, word* st, const word* lim) {
  if (!has_word(s, KW_image)) return bloc_0(s, ob, st, lim);
  const char* name = value_text(arg_of(s, KW_name));
  if (!name) {
    err_syntaxe(97, KW_write, " image name(\"file.bmp\")\n");
    return -1;
  }
  if (arg_of(s, KW_image)) {
    // Image objects are not kept yet: only the window can be written.
    voir_mot(KW_image);
    voir_message(0, 65);
    return -1;
  }
  const std::string file = name;
  if (file.find('.') == std::string::npos) {
    VOIR_CHAR("%s ", name);
    voir_message(0, 60);
    return -1;
  }
  const char kind = writer_of(file);
  if (!kind) {
    VOIR_CHAR("%s ", file.substr(file.rfind('.') + 1).c_str());
    voir_message(0, 65);
    return -1;
  }
  int w = 0, h = 0;
  std::vector<uint8_t> px = pixels_fenetre(&w, &h);
  if (px.empty()) return set_result_nil(s);  // no window: nothing to picture
  std::vector<uint8_t> bytes =
      kind == 'b' ? bmp_bytes(px.data(), w, h, value_text(arg_of(s, KW_format))) : tga_bytes(px.data(), w, h);
  if (bytes.empty()) {
    VOIR_CHAR("%s ", value_text(arg_of(s, KW_format)));
    voir_message(0, 66);
    return -1;
  }
  OsFile* f = os_open(name, FileMode::write);
  if (!f) {
    err_ecriture(name);
    return -1;
  }
  const bool ok = os_write(f, reinterpret_cast<const char*>(bytes.data()), bytes.size());
  os_close(f);
  if (!ok) {
    voir_message(0, 67);
    return -1;
  }
  return set_result_nil(s);
}
