// The sub-properties of sounds read and written by their own words, the
// generic grammar taking no `audio` object:
//   meta audio(id)            the 15 words of `meta`; = values sets them
//   audio audio(id)           the file image's bytes; = values replaces
//                             them, and the header is read again
//   stock audio(id) = pairs   the analysis pairs kept (read by `stock audio(id)`
//                             anew, or from a file with `read`)
//   dynamic audio(ids) = v    the sounds play along the animation at v
//                             images an image (0: stopped); read, each v
#include <algorithm>
#include <cmath>
#include <vector>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "scene/graphic.h"
#include "sound/sound_commands.h"
#include "sound/sound_files.h"
#include "sound/sound_object.h"
#include "sound/sound_play.h"
#include "sound/sound_stock.h"

namespace {

// The value of `audio(...)` in second place (in `audio audio(id)` the
// first word is an `audio` too, without one).
const word* second_audio(word* s) {
  return second_word(s) == KW_audio ? item_value(next_item(first_item(s))) : nullptr;
}
int second_id(word* s) { return entier(value_at(second_audio(s), 0, 0)); }

int forme_meta(word* s, const word* ob, word*, const word* lim, bool* done) {
  if (!(*done = second_audio(s) != nullptr)) return 0;
  Objet* o = audio_requis(second_id(s), "META_AUDIO()");
  if (!o) return -1;
  bloc m = get_val_1(o->local, KW_meta);
  if (!m || tag(m) != T_LONG || size(m) < 4 + META_MOTS) {
    if (ecrit_meta(o, 1, 0) < 0) return -1;
    m = get_val_1(o->local, KW_meta);
  }
  if (ob) {
    const std::vector<float> v = floats_of(ob);
    for (size_t i = 0; i < v.size() && i < META_MOTS; i++) m[4 + i] = entier(v[i]);
    o->unsaved = 1;
    return 0;
  }
  std::vector<float> v(META_MOTS);
  for (int i = 0; i < META_MOTS; i++) v[static_cast<size_t>(i)] = static_cast<float>(m[4 + i]);
  return build_floats(s, lim, v);
}

int forme_octets_son(word* s, const word* ob, word*, const word* lim, bool* done) {
  if (!(*done = second_audio(s) != nullptr)) return 0;
  const int id = second_id(s);
  if (ob) {
    // A new file image: the sound is made anew from its header.
    const std::vector<float> v = floats_of(ob);
    Objet* o = audio_numero(id) ? audio_numero(id) : audio_nouveau(id);
    uint8_t* b = o ? audio_alloue(o, v.size()) : nullptr;
    if (!b) return -1;
    for (size_t i = 0; i < v.size(); i++) b[i] = static_cast<uint8_t>(std::clamp(entier(v[i]), 0, 255));
    o->unsaved = 1;
    return READ_WAV_HEADER(o, "audio") < 0 ? -1 : 0;
  }
  Objet* o = audio_requis(id, "AUDIO_AUDIO()");
  if (!o) return -1;
  const uint8_t* b = audio_octets(o);
  std::vector<float> v(b, b + Size(o));
  return build_floats_or_nil(s, lim, v);
}

int forme_stock_pose(word* s, const word* ob, word*, const word*, bool* done) {
  if (!(*done = second_audio(s) && ob)) return 0;
  const int id = second_id(s);
  Objet* o = audio_numero(id) ? audio_numero(id) : audio_nouveau(id);
  if (!o || garde_stock(o, floats_of(ob)) < 0) return -1;
  o->unsaved = 1;
  return 0;
}

// AUDIO_DYNAMIC: the `dynamic` value of each sound named.
int forme_dynamic(word* s, const word* ob, word*, const word* lim, bool* done) {
  if (!(*done = second_audio(s) != nullptr)) return 0;
  std::vector<float> lu;
  for (float f : floats_of(second_audio(s))) {
    // As for the other objects of `dynamic`, a number without a sound is passed over.
    Objet* o = audio_numero(entier(f));
    if (!o) continue;
    if (ob) {
      if (AUDIO_DYNAMIC(o, value_at(ob, 0, 0)) < 0) return -1;
    } else {
      lu.push_back(vitesse_son(o));
    }
  }
  return ob ? 0 : build_floats_or_nil(s, lim, lu);
}

}  // namespace

void install_sound_property_commands() {
  register_graphic_shape(KW_meta, forme_meta);
  register_graphic_shape(KW_audio, forme_octets_son);
  register_graphic_shape(KW_stock, forme_stock_pose);
  register_graphic_shape(KW_dynamic, forme_dynamic);
}
