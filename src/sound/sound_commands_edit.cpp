// The shapes of the commands that make sounds from sounds and link them
// to the scene:
//   cut audio(id, source) time(t1, t2)      concat audio(id, a, b) [time(t)]
//   put audio(id, source)                   move audio(id, new)
//   inherit audio(id, source)               format audio(id) number(bytes or bits)
//   dist audio(a, b)                        module audio(id, source) [time(t1, t2)]
//   rand audio(id) [time(t1, t2)] [coe(a)]  time audio(id)      number audio
//   follow vol(ids) audio(id) [coe(gain)] | cut | write     follow vol(ids) audio(id) = gain
//   follow audio(id)
//   generate vol(id) audio(id) [time(t1, t2)] [NP(n)] [dim(w, h)]
#include <cmath>
#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "scene/graphic.h"
#include "sound/sound_commands.h"
#include "sound/sound_curve.h"
#include "sound/sound_generate.h"
#include "sound/sound_mix.h"
#include "sound/sound_object.h"
#include "sound/sound_play.h"

namespace {

// The numbers of `audio(...)`, as integers.
std::vector<int> ids_audio(word* s) {
  std::vector<int> out;
  for (float f : arg_floats(s, KW_audio)) out.push_back(entier(f));
  return out;
}

int usage(const char* texte) {
  voir_texte(texte);
  return -1;
}

// The sounds the command names, from the n-th number of `audio(...)` on;
// false after a report when one is missing or too few are given.
bool sons(word* s, size_t premier, size_t n, Objet** out, const char* texte, const char* fonction) {
  const std::vector<int> ids = ids_audio(s);
  if (ids.size() < premier + n) return usage(texte), false;
  for (size_t i = 0; i < n; i++)
    if (!(out[i] = audio_requis(ids[premier + i], fonction))) return false;
  return true;
}

int forme_cut(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* src = nullptr;
  constexpr const char* texte = "cut audio(id, source) time(t1, t2)\a\n";
  if (!sons(s, 1, 1, &src, texte, "AUDIO_AUDIO_TIME()")) return -1;
  if (!has_word(s, KW_time)) return usage(texte);
  const int id = ids_audio(s)[0];
  return AUDIO_AUDIO_TIME(id, src, arg_float(s, KW_time, 0), arg_float(s, KW_time, FIN_SON, 1)) ? build_nil(s) : -1;
}

int forme_concat(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* ab[2] = {nullptr, nullptr};
  if (!sons(s, 1, 2, ab, "concat audio(id, a, b) [time(t)]\a\n", "AUDIO_AUDIO_AUDIO_TIME()")) return -1;
  const float t = arg_float(s, KW_time, FIN_SON);
  return AUDIO_AUDIO_AUDIO_TIME(ids_audio(s)[0], ab[0], ab[1], t) ? build_nil(s) : -1;
}

int forme_put(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* src = nullptr;
  if (!sons(s, 1, 1, &src, "put audio(id, source)\a\n", "SET_AUDIO_AUDIO()")) return -1;
  return SET_AUDIO_AUDIO(ids_audio(s)[0], src) ? build_nil(s) : -1;
}

int forme_move(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = nullptr;
  if (!sons(s, 0, 1, &o, "move audio(id, new)\a\n", "MOVE_AUDIO_ID()")) return -1;
  if (ids_audio(s).size() < 2) return usage("move audio(id, new)\a\n");
  return MOVE_AUDIO_ID(o, ids_audio(s)[1]) < 0 ? -1 : build_nil(s);
}

int forme_inherit(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o[2] = {nullptr, nullptr};
  if (!sons(s, 0, 2, o, "inherit audio(id, source)\a\n", "COPY_HEADER()")) return -1;
  return COPY_HEADER(o[0], o[1]) < 0 ? -1 : build_nil(s);
}

// `format audio(id) number(n)`: the sample size without conversion.
int forme_octets(word* s, const word* ob, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio) && has_word(s, KW_number) && !ob)) return 0;
  Objet* o = audio_requis(arg_int(s, KW_audio, 0), "SET_OCTET_NUMBER()");
  return !o || SET_OCTET_NUMBER(o, arg_int(s, KW_number, 0)) < 0 ? -1 : build_nil(s);
}

int forme_dist(word* s, const word*, word*, const word* lim, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o[2] = {nullptr, nullptr};
  float v[2];
  if (!sons(s, 0, 2, o, "dist audio(a, b)\a\n", "COM_AUDIO()") || COM_AUDIO(o[0], o[1], v) < 0) return -1;
  return build_floats(s, lim, 2, v);
}

int forme_module(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio) && ids_audio(s).size() > 1)) return 0;
  Objet* o[2] = {nullptr, nullptr};
  if (!sons(s, 0, 2, o, "module audio(id, source) [time(t1, t2)]\a\n", "MOD_AUDIO()")) return -1;
  return MOD_AUDIO(o[0], o[1], arg_float(s, KW_time, 0), arg_float(s, KW_time, FIN_SON, 1)) < 0 ? -1 : build_nil(s);
}

// RAND_AUDIO: noise of amplitude a (0.1 by default) added to the stretch.
int forme_rand(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(arg_int(s, KW_audio, 0), "RAND_AUDIO()");
  if (!o) return -1;
  Generation g;
  g.rand.push_back(arg_float(s, KW_coe, 0.1f));
  g.add = true;
  if (INSERT_AUDIO_TIME(o, arg_float(s, KW_time, 0), arg_float(s, KW_time, FIN_SON, 1), g) < 0) return -1;
  o->unsaved = 1;
  return build_nil(s);
}

// AUDIO_TIME_META: the length in images and seconds, and the place.
int forme_time(word* s, const word*, word*, const word* lim, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  Objet* o = audio_requis(arg_int(s, KW_audio, 0), "AUDIO_TIME_META()");
  if (!o || ecrit_meta(o, 1, 0) < 0) return -1;
  const float v[3] = {static_cast<float>(Images(o)), static_cast<float>(trames(o)) / static_cast<float>(Rate(o) > 0 ? Rate(o) : 1),
                      position_son(o)};
  return build_floats(s, lim, 3, v);
}

// AUDIO_N: the numbers of the sounds there are.
int forme_number(word* s, const word*, word*, const word* lim, bool* done) {
  if (!(*done = second_word(s) == KW_audio && !arg_of(s, KW_audio))) return 0;
  std::vector<float> ids;
  for (Objet* o = chaine_audio()->next; o; o = o->next)
    if (o->kind == KW_audio) ids.push_back(static_cast<float>(o->id));
  return build_floats_or_nil(s, lim, ids);
}

int forme_follow(word* s, const word* ob, word*, const word* lim, bool* done) {
  if (!(*done = has_word(s, KW_audio))) return 0;
  const int id = arg_int(s, KW_audio, 0);
  std::vector<int> vols;
  for (float f : arg_floats(s, KW_vol)) vols.push_back(entier(f));
  const int n = static_cast<int>(vols.size());
  if (!has_word(s, KW_vol)) {
    std::vector<float> v;
    for (const LienVol& l : son().liens_vol)
      if (l.son == id) v.insert(v.end(), {static_cast<float>(l.vol), l.gain});
    return build_floats_or_nil(s, lim, v, 2);
  }
  if (ob) return SET_PARAM_AUDIO_VOL(id, vols.data(), n, value_at(ob, 0, 1)), 0;
  if (has_word(s, KW_cut)) return retire_audio_vol(id, vols.data(), n), build_nil(s);
  if (has_word(s, KW_write)) return WRITE_AUDIO_VOL(), build_nil(s);
  Objet* o = audio_requis(id, "AUDIO_VOL()");
  if (!o) return -1;
  if (n == 0) return usage("follow vol(ids) audio(id) [coe(gain)]\a\n");
  return AUDIO_VOL(o, vols.data(), n, arg_float(s, KW_coe, 1)) < 0 ? -1 : build_nil(s);
}

// WAV_AUDIO_CURVE: `generate vol(id) audio(id)`.
int forme_courbe(word* s, const word*, word*, const word*, bool* done) {
  if (!(*done = has_word(s, KW_audio) && has_word(s, KW_vol))) return 0;
  Objet* o = audio_requis(arg_int(s, KW_audio, 0), "WAV_AUDIO_CURVE()");
  if (!o) return -1;
  TraceSon t;
  t.t1 = arg_float(s, KW_time, 0);
  t.t2 = arg_float(s, KW_time, -1, 1);
  t.points = arg_int(s, KW_NP, t.points);
  t.largeur = arg_float(s, KW_dim, t.largeur);
  t.hauteur = arg_float(s, KW_dim, t.hauteur, 1);
  t.inv = has_word(s, KW_inv);
  return WAV_AUDIO_CURVE(arg_int(s, KW_vol, 0), o, t) ? build_nil(s) : -1;
}

}  // namespace

void install_sound_edit_commands() {
  register_graphic_shape(KW_generate, forme_courbe);
  register_graphic_shape(KW_cut, forme_cut);
  register_graphic_shape(KW_concat, forme_concat);
  register_graphic_shape(KW_put, forme_put);
  register_graphic_shape(KW_move, forme_move);
  register_graphic_shape(KW_inherit, forme_inherit);
  register_graphic_shape(KW_format, forme_octets);
  register_graphic_shape(KW_dist, forme_dist);
  register_graphic_shape(KW_module, forme_module);
  register_graphic_shape(KW_rand, forme_rand);
  register_graphic_shape(KW_time, forme_time);
  register_graphic_shape(KW_number, forme_number);
  register_graphic_shape(KW_follow, forme_follow);
}
