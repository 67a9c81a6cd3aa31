// The shapes of the sound commands:
//   read audio(id) name("f.wav") [write name("g.wav") ...]
//   read audio name("f") / write audio name("f"): an object file of the sounds
//   read audio(id) stock name("f.stock")
//   write audio(id) name("f.wav")
//   write audio(id) stock(t) name("f") [average(t)] [max]
//   edit audio(id)        edit dim audio(id)        dim audio(id)
//   generate audio(id) dim(seconds[, channels])
//   generate audio(id) time(t1, t2) sin(f, a, p) ... (see sound_generate.h)
//   smooth audio(id) [dist(n, coe, width)] [limit(lo, hi)]
//   stock audio(id) [name("f")] [coe(c1, c2)]    stock audio(id) read("f.stock")
//   inv audio(id) [time(t1, t2)]
//   dim audio(id) = seconds          speed audio(id) = f
//   clean audio[(ids)]                format audio(id) = bits (8, 16)
//   stock audio name("f.stock") time(images): a recording of the live level
//   write audio("f") [type("char"|"float"|"long")]   write audio = values
//   read audio("f") [type(...)]                       read audio [NP(n)]
//   end write audio                                   end read audio
#include "sound/sound_commands.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "interaction/loop_state.h"
#include "scene/graphic.h"
#include "scene/removal.h"
#include "sound/sound_edit.h"
#include "sound/sound_files.h"
#include "sound/sound_record.h"
#include "sound/sound_generate.h"
#include "sound/sound_object.h"
#include "sound/sound_play.h"
#include "sound/sound_smooth.h"
#include "sound/sound_stream.h"
#include "sound/sound_stock.h"
#include "sound/sound_unsaved.h"

namespace {

constexpr int MAX_HARMONIQUES = 100;

int id_audio(word* s) { return arg_int(s, KW_audio, 0); }

// The texts of every item of these words, in the command's order.
std::vector<std::string> textes(word* s, std::initializer_list<int> codes) {
  std::vector<std::string> out;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    for (int c : codes)
      if (item[2] == c)
        if (const char* t = value_text(item_value(item)); t && *t) out.emplace_back(t);
  return out;
}

int usage(int first, const char* texte) {
  voir_mot(first);
  voir_mot(KW_audio);
  voir_texte(texte);
  return -1;
}

int resultat_pairs(word* s, const word* lim, const std::vector<float>& pairs) {
  return build_floats_or_nil(s, lim, pairs, 2);
}

int lit_stock(word* s, const word* lim, const std::vector<std::string>& noms) {
  if (!has_word(s, KW_audio) || noms.empty()) return usage(KW_read, "(id) stock (\"nnn.stock\")\a\n");
  std::vector<float> pairs;
  if (AUDIO_STOCK_ID(id_audio(s), noms[0], pairs) < 0) return -1;
  return resultat_pairs(s, lim, pairs);
}

// The text of `audio("name")`: a raw stream rather than a sound.
const char* nom_flux(word* s) { return arg_text(s, KW_audio); }
std::string type_flux(word* s) {
  const char* t = arg_text(s, KW_type);
  return t ? t : "";
}

int forme_read(word* s, const word*, word*, const word* lim, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  if (const char* flux = nom_flux(s)) return READ_AUDIO_1(flux, type_flux(s)) < 0 ? -1 : build_nil(s);
  if (has_word(s, KW_stock)) return lit_stock(s, lim, textes(s, {KW_name, KW_stock, KW_read}));
  const std::vector<std::string> noms = textes(s, {KW_read, KW_name});
  if (noms.empty() && !arg_of(s, KW_audio)) {
    std::vector<float> v;
    if (lit_flux(arg_int(s, KW_NP, 1), v) < 0) return -1;
    return build_floats_or_nil(s, lim, v);
  }
  if (noms.empty()) return usage(KW_read, "(id) name(\"nnn.wav\")\a\n");
  // Without a number: an object file of sounds, each to its own number.
  if (!arg_of(s, KW_audio)) return lit_sons(noms[0]) < 0 ? -1 : build_nil(s);
  Objet* o = READ_AUDIO(id_audio(s), noms[0]);
  if (!o) return -1;
  // READ_WRITE_AUDIO: the sound read, then written under each further name.
  if (has_word(s, KW_write)) {
    std::vector<std::string> copies(noms.begin() + 1, noms.end());
    for (const std::string& n : textes(s, {KW_write})) copies.push_back(n);
    for (const std::string& n : copies)
      if (WRITE_AUDIO(o, n) < 0) return -1;
  }
  return build_nil(s);
}

int forme_write(word* s, const word* ob, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  if (const char* flux = nom_flux(s)) return WRITE_AUDIO_1(flux, type_flux(s)) < 0 ? -1 : build_nil(s);
  if (ob && !arg_of(s, KW_audio)) return ecrit_flux(floats_of(ob)) < 0 ? -1 : 0;
  const std::vector<std::string> noms = textes(s, {KW_name, KW_write});
  if (noms.empty()) {
    voir_mot(KW_write);
    voir_mot(KW_audio);
    voir_texte("(id) ");
    voir_mot(KW_name);
    voir_texte("(\"nnn.wav\")\a\n");
    return -1;
  }
  if (!arg_of(s, KW_audio)) return ecrit_sons(noms[0], false) < 0 ? -1 : build_nil(s);
  Objet* o = audio_requis(id_audio(s), "WRITE_AUDIO()");
  if (!o) return -1;
  if (has_word(s, KW_stock)) {
    const float pas = arg_float(s, KW_stock, 1), moyenne = arg_float(s, KW_average, 0);
    if (WAV_WRITE_STOCK_AUDIO(o, noms[0], pas, moyenne, has_word(s, KW_max)) < 0) return -1;
  } else if (WRITE_AUDIO(o, noms[0]) < 0) {
    return -1;
  }
  return build_nil(s);
}

int forme_edit(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(id_audio(s), "EDIT_AUDIO()");
  if (!o) return -1;
  if ((has_word(s, KW_dim) ? EDIT_DIM_AUDIO_1(o) : EDIT_AUDIO_1(o)) < 0) return -1;
  return build_nil(s);
}

// `dim audio(id)`: channels, bytes a sample, rate, frames, seconds.
// Assigned, the length in seconds (DIM_AUDIO).
int forme_dim(word* s, const word* ob, word*, const word* lim, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(id_audio(s), "DIM_AUDIO()");
  if (o && ob) {
    const float secondes = value_at(ob, 0, -1);
    if (!(secondes >= 0) || secondes > 3600) {
      voir_texte("dim audio(id) = seconds\a\n");
      return -1;
    }
    return RESIZE_WAV(o, std::llround(static_cast<double>(secondes) * Rate(o))) < 0 ? -1 : 0;
  }
  long long samples = 0;
  double time = 0;
  if (!o || GET_DIM_AUDIO(o, &samples, &time) < 0) return -1;
  const float v[5] = {static_cast<float>(Channel(o)), static_cast<float>(Nb_octet(o)), static_cast<float>(Rate(o)),
                      static_cast<float>(samples), static_cast<float>(time)};
  return build_floats(s, lim, 5, v);
}

Generation options_generation(word* s) {
  Generation g;
  g.sin = arg_floats_all(s, KW_sin);
  g.coe = arg_floats(s, KW_coe);
  g.interpol = arg_floats(s, KW_interpol, &g.has_interpol);
  g.law = arg_floats(s, KW_law);
  g.poi = arg_floats(s, KW_poi);
  g.module = arg_floats(s, KW_module);
  g.min = arg_floats(s, KW_min);
  g.has_memory = has_word(s, KW_memory);
  g.var = arg_floats(s, KW_var);
  g.puls = arg_floats(s, KW_puls);
  g.period = arg_floats(s, KW_period);
  bool hasard = false;
  g.rand = arg_floats(s, KW_alea, &hasard);
  if (hasard && g.rand.empty()) g.rand.push_back(1);
  g.harmoniques = std::clamp(arg_int(s, KW_NP, 0), 0, MAX_HARMONIQUES);
  g.cut = has_word(s, KW_cut);
  g.add = has_word(s, KW_add);
  if (const std::vector<float> ids = arg_floats(s, KW_audio); ids.size() > 1) {
    const int source = entier(ids[1]);
    g.source = audio_requis(source, "GENERATE_AUDIO_AUDIO()");
    if (!g.source) g.cut = false;
  }
  if (has_word(s, KW_stock)) {
    g.stock = audio_numero(arg_int(s, KW_stock, id_audio(s)));
    if (!g.stock) audio_requis(arg_int(s, KW_stock, id_audio(s)), "GENERATE_AUDIO_STOCK()");
  }
  return g;
}

int forme_generate(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  if (has_word(s, KW_dim)) {
    if (!GENERATE_AUDIO_DIM(id_audio(s), arg_float(s, KW_dim, 0), arg_int(s, KW_dim, 1, 1))) return -1;
    return build_nil(s);
  }
  Objet* o = audio_requis(id_audio(s), "GENERATE_AUDIO()");
  if (!o) return -1;
  const Generation g = options_generation(s);
  if ((arg_floats(s, KW_audio).size() > 1 && !g.source) || (has_word(s, KW_stock) && !g.stock)) return -1;
  const float t1 = arg_float(s, KW_time, 0), t2 = arg_float(s, KW_time, FIN_SON, 1);
  if (INSERT_AUDIO_TIME(o, t1, t2, g) < 0) return -1;
  o->unsaved = 1;
  return build_nil(s);
}

int forme_smooth(word* s, const word*, word*, const word* lim, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(id_audio(s), "SMOOTH_AUDIO()");
  if (!o) return -1;
  Lissage l = lissage_defaut(o);
  l.n = arg_int(s, KW_dist, l.n, 0);
  l.coe = arg_float(s, KW_dist, l.coe, 1);
  l.largeur = arg_int(s, KW_dist, l.largeur, 2);
  l.bas = arg_float(s, KW_limit, l.bas, 0);
  l.haut = arg_float(s, KW_limit, l.haut, 1);
  const int n = SMOOTH_AUDIO_1(o, l);
  if (n < 0) {
    voir_int("data size %d\n", Nb_octet(o));
    return -1;
  }
  o->unsaved = 1;
  return build_float(s, lim, static_cast<float>(n));
}

int forme_stock(word* s, const word*, word*, const word* lim, bool* done) {
  if (!(*done = second_word(s) == KW_audio)) return 0;
  if (has_word(s, KW_read)) return lit_stock(s, lim, textes(s, {KW_read, KW_name}));
  if (!arg_of(s, KW_audio)) {
    const std::vector<std::string> noms = textes(s, {KW_name});
    return stock_audio_ini(noms.empty() ? "" : noms[0], arg_int(s, KW_time, 0)) < 0 ? -1 : build_nil(s);
  }
  // A sound of pairs alone (read from a `.stock` file or assigned): its pairs.
  if (Objet* p = audio_numero(id_audio(s)); p && !audio_bloc(p) && !has_word(s, KW_name))
    return resultat_pairs(s, lim, floats_of(get_val_1(p->local, KW_stock)));
  Objet* o = audio_requis(id_audio(s), "WAV_STOCK_AUDIO_1()");
  if (!o) return -1;
  const std::vector<std::string> noms = textes(s, {KW_name});
  std::vector<float> pairs;
  if (WAV_STOCK_AUDIO_1(o, noms.empty() ? nullptr : noms[0].c_str(), arg_float(s, KW_coe, 0.2f, 0),
                        arg_float(s, KW_coe, 0.002f, 1), pairs) < 0)
    return -1;
  return resultat_pairs(s, lim, pairs);
}

// INV_AUDIO: the samples of the stretch (all by default) negated.
int forme_inv(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(id_audio(s), "INV_AUDIO()");
  if (!o) return -1;
  Tranche t;
  if (tranche_temps(o, arg_float(s, KW_time, 0), arg_float(s, KW_time, FIN_SON, 1), t))
    for (long long i = 0; i < t.n * t.canaux; i++) {
      uint8_t* p = t.p + i * t.nb_octet;
      ecrit_echantillon(p, t.nb_octet, -lit_echantillon(p, t.nb_octet));
    }
  o->unsaved = 1;
  return build_nil(s);
}

// `speed audio(id) = f`, or `speed(f) audio(id)`.
int forme_speed(word* s, const word* ob, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(id_audio(s), "SPEED_AUDIO()");
  if (!o) return -1;
  const float f = ob ? value_at(ob, 0, 0) : arg_float(s, KW_speed, 0);
  if (SPEED_AUDIO(o, f) < 0) return -1;
  return ob ? 0 : build_nil(s);
}

// `format audio(id) = bits`.
int forme_format(word* s, const word* ob, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio) && ob)) return 0;
  Objet* o = audio_requis(id_audio(s), "AUDIO_FORMAT()");
  return !o || AUDIO_FORMAT(o, entier(value_at(ob, 0, 0)) / 8) < 0 ? -1 : 0;
}

// CLEAN_AUDIO: the sounds named, or all of them, freed.
int forme_clean(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  const std::vector<float> ids = arg_floats(s, KW_audio);
  if (ids.empty()) rem_tous(chaine_audio(), KW_audio, 0);
  for (float id : ids) rem_objet_id(KW_audio, entier(id));
  return build_nil(s);
}

int forme_end(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio) && (has_word(s, KW_write) || has_word(s, KW_read)))) return 0;
  const int r = has_word(s, KW_write) ? END_WRITE_AUDIO() : END_READ_AUDIO();
  return r < 0 ? -1 : build_nil(s);
}

}  // namespace

void install_sound_commands() {
  install_sound_edit_commands();
  install_sound_property_commands();
  install_sound_unsaved();
  register_graphic_shape(KW_read, forme_read);
  register_graphic_shape(KW_write, forme_write);
  register_graphic_shape(KW_edit, forme_edit);
  register_graphic_shape(KW_dim, forme_dim);
  register_graphic_shape(KW_generate, forme_generate);
  register_graphic_shape(KW_smooth, forme_smooth);
  register_graphic_shape(KW_stock, forme_stock);
  register_graphic_shape(KW_inv, forme_inv);
  register_graphic_shape(KW_speed, forme_speed);
  register_graphic_shape(KW_clean, forme_clean);
  register_graphic_shape(KW_end, forme_end);
  register_graphic_shape(KW_format, forme_format);
  loop().stock_audio = etape_son;
}
