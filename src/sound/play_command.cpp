#include "sound/play_command.h"

#include <cmath>
#include <vector>

#include "interaction/loop_state.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "platform/audio.h"
#include "sound/primary_buffer.h"

namespace {

constexpr float NOTE_MIN = 20;
constexpr float NOTE_MAX = AUDIO_RATE / 2;  // the highest the playback rate renders
constexpr int DUREE_DEFAUT = 40;             // one image of 25 a second
constexpr int DUREE_MAX = 1000;

int usage() {
  err_syntaxe(MES_COMMAND_USAGE, KW_audio,
              "play(f1, f2, ...) [time(ms)] [speed(step)]: frequencies from 20 to 11025 Hz, time from 1 to 1000 ms\n");
  return -1;
}

// A value given to `code` that is not a number.
bool pas_un_nombre(word* s, int code) {
  const word* v = arg_of(s, code);
  return v && tag(v) != T_FLOAT;
}

}  // namespace

int audio_play(word* s, const word* lim) {
  InteractionState& L = loop();
  if (pas_un_nombre(s, KW_play) || pas_un_nombre(s, KW_time) || pas_un_nombre(s, KW_speed)) return usage();
  const std::vector<float> notes = arg_floats(s, KW_play);
  for (float f : notes)
    if (!(f >= NOTE_MIN && f <= NOTE_MAX)) return usage();
  int duree = DUREE_DEFAUT;
  if (has_word(s, KW_time)) {
    const float t = arg_float(s, KW_time, NAN);
    if (!(t >= 1 && t <= DUREE_MAX)) return usage();
    duree = entier(t);
  }
  const float pas = arg_float(s, KW_speed, 1);
  if (!std::isfinite(pas)) return usage();
  L.notes = notes;
  L.duree_note = duree;
  L.pas_note = pas;
  L.position_note = 0;
  // A device refused earlier is tried again for this table.
  primaire().refus = 0;
  return build_nil(s, lim);
}
