#include "sound/live_commands.h"

#include <algorithm>
#include <vector>

#include "device/device_table.h"
#include "device/device_util.h"
#include "interaction/loop_state.h"
#include "kernel/entier.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "platform/audio.h"
#include "scene/lookup.h"
#include "scene/graphic.h"
#include "sound/live_analysis.h"
#include "sound/live_capture.h"
#include "sound/live_exec.h"
#include "sound/live_state.h"
#include "sound/play_command.h"

namespace {

// Readings need the capture: `audio` and message 106 without it.
bool capture_ou_rapport() {
  if (live_audio().on) return true;
  err_son();
  return false;
}

int un(word* s, const word* lim, float v) { return build_float(s, lim, v); }

int audio_dim(word* s, const word* lim) { return un(s, lim, static_cast<float>(live_audio().Fenetre)); }
int audio_status(word* s, const word* lim) { return un(s, lim, static_cast<float>(live_audio().on)); }
int audio_min(word* s, const word* lim) { return capture_ou_rapport() ? un(s, lim, live_audio().Niveau_min) : -1; }
int audio_module(word* s, const word* lim) {
  return capture_ou_rapport() ? un(s, lim, live_audio().Niveau_moyen) : -1;
}
int audio_NP(word* s, const word* lim) {
  return capture_ou_rapport() ? un(s, lim, static_cast<float>(live_audio().Notification)) : -1;
}

// The running maximum; `max(n)` the last n windows' maxima, newest first.
int audio_max(word* s, const word* lim) {
  if (!capture_ou_rapport()) return -1;
  const LiveAudio& a = live_audio();
  if (!arg_of(s, KW_max)) return un(s, lim, a.Niveau_max);
  const int n = entier_borne(arg_float(s, KW_max, 1), 1, NB_MAXIMA);
  return build_floats(s, lim, n, a.Maxima);
}

// The seconds a window spans and the width of a spectrum's bin in hertz.
// The window holds bytes of the 16-bit stereo stream, 88200 a second.
int audio_precision(word* s, const word* lim) {
  const float F = static_cast<float>(live_audio().Fenetre);
  const float v[2] = {F / AUDIO_BYTES_PER_SECOND, AUDIO_BYTES_PER_SECOND / F};
  return build_floats(s, lim, 2, v);
}

// The ring of averages: (mean, min, max) of each of the last windows.
int audio_ring(word* s, const word* lim) {
  if (!capture_ou_rapport()) return -1;
  const LiveAudio& a = live_audio();
  const int n = std::clamp(a.Nb_moyennes, 1, MAX_MOYENNES);
  std::vector<float> v;
  for (int i = 0; i < n; i++) v.insert(v.end(), {a.Ring_moyen[i], a.Ring_min[i], a.Ring_max[i]});
  return build_floats(s, lim, v, 3);
}

// Two arrays of n values one after the other.
int deux(word* s, const word* lim, const float* x, const float* y, int n) {
  std::vector<float> v(x, x + n);
  v.insert(v.end(), y, y + n);
  return build_floats(s, lim, v);
}

// A forced analysis, then the levels or, by its flag, an array. A flag
// whose stage is off runs it for this reading.
int audio_read(word* s, const word* lim) {
  if (!capture_ou_rapport()) return -1;
  LiveAudio& a = live_audio();
  const bool spectre = has_word(s, KW_sort), enveloppe = has_word(s, KW_limit);
  const int spectre_on = a.Spectre_on, env_on = a.env.on;
  a.Spectre_on |= spectre;
  a.env.on |= enveloppe;
  const int r = analyse_audio(true);
  a.Spectre_on = spectre_on;
  a.env.on = env_on;
  if (r < 0) return -1;
  const int F = a.Fenetre;
  if (has_word(s, KW_var)) return build_floats(s, lim, F, a.Signal);
  if (spectre) return deux(s, lim, a.Spectre_re, a.Spectre_im, F);
  if (has_word(s, KW_rand)) return build_floats(s, lim, F, a.Derivee);
  if (enveloppe) return deux(s, lim, a.env.Pic, a.env.Diff, a.env.blocs);
  if (has_word(s, KW_average)) return build_floats(s, lim, std::clamp(a.Nb_moyennes, 1, MAX_MOYENNES), a.Ring_moyen);
  const float v[3] = {a.Niveau_moyen, a.Niveau_min, a.Niveau_max};
  return build_floats(s, lim, 3, v);
}

// The first crossing of a level in a freshly analysed window.
int audio_puls(word* s, const word* lim) {
  if (!arg_of(s, KW_puls)) {
    voir_texte("audio puls(level, tolerance[, passes])\a\n");
    return -1;
  }
  if (!capture_ou_rapport() || analyse_audio(true) < 0) return -1;
  return un(s, lim, premier_passage(live_audio(), arg_float(s, KW_puls, 0), arg_float(s, KW_puls, 0, 1)));
}

// The settings that `audio ini` and the "AUD" device's `audio` share; the
// device keeps `tran` and `coe` for the mapping of its values.
void reglages(word* s, bool decalage_gain) {
  LiveAudio& a = live_audio();
  if (decalage_gain) {
    a.Offset = arg_float(s, KW_tran, a.Offset);
    a.Gain = arg_float(s, KW_coe, a.Gain);
  }
  a.Gate = arg_float(s, KW_limit, a.Gate, 0);
  a.Limit = arg_float(s, KW_limit, a.Limit, 1);
  if (has_word(s, KW_law)) {
    a.Law = arg_of(s, KW_law) ? 1 : 0;
    a.Law_seuil = arg_float(s, KW_law, a.Law_seuil, 0);
    a.Law_scale = arg_float(s, KW_law, a.Law_scale, 1);
    a.Law_exposant = arg_float(s, KW_law, a.Law_exposant, 2);
  }
  if (arg_of(s, KW_period)) {
    a.Auto_periode = std::max(0, arg_int(s, KW_period, 0, 0));
    a.Auto_cible = arg_float(s, KW_period, 0, 1);
    a.Auto_compte = 0;
    a.Auto_etendue = 0;
  }
  if (arg_of(s, KW_average)) {
    a.Nb_moyennes = std::clamp(arg_int(s, KW_average, 1), 1, MAX_MOYENNES);
    a.Ring_pos = 0;
  }
  a.Normalise = arg_int(s, KW_normal, a.Normalise) != 0;
  if (arg_of(s, KW_envelope)) {
    a.env.n = std::clamp(arg_int(s, KW_envelope, a.env.n, 0), -1, MAX_FENETRE);
    a.env.on = a.env.n >= 0;
    a.env.scale = arg_float(s, KW_envelope, a.env.scale, 1);
  }
  if (arg_of(s, KW_sort)) {
    a.Spectre_scale = arg_float(s, KW_sort, a.Spectre_scale, 0);
    a.Spectre_on = a.Spectre_scale != 0;
    a.env_re.n = a.env_im.n = std::clamp(arg_int(s, KW_sort, a.env_re.n, 1), 0, MAX_FENETRE);
    a.env_re.scale = a.env_im.scale = arg_float(s, KW_sort, a.env_re.scale, 2);
  }
}

int reglage_device(word* s, const word*) {
  reglages(s, false);
  return 0;
}

int audio_ini(word* s, const word* lim) {
  reglages(s, true);
  if (arg_of(s, KW_dim) && InitDirectSound(arg_int(s, KW_dim, 0)) < 0) return -1;
  return build_nil(s, lim);
}

int audio_edit(word* s, const word* lim) {
  const LiveAudio& a = live_audio();
  voir_int("Fenetre d'echantillonnage = %d\n", a.Fenetre);
  voir_int("status = %d\n", a.on);
  voir_float("offset = %f\n", a.Offset);
  voir_float("gain = %f\n", a.Gain);
  voir_float("gate = %f\n", a.Gate);
  voir_float("limit = %f\n", a.Limit);
  voir_int("law = %d\n", a.Law);
  voir_float("law threshold = %f\n", a.Law_seuil);
  voir_float("law scale = %f\n", a.Law_scale);
  voir_float("law exponent = %f\n", a.Law_exposant);
  voir_int("auto period = %d\n", a.Auto_periode);
  voir_float("auto target = %f\n", a.Auto_cible);
  voir_int("average = %d\n", a.Nb_moyennes);
  voir_int("Normalise = %d\n", a.Normalise);
  voir_int2("envelope = %d n = %d\n", a.env.on, a.env.n);
  voir_int("spectrum = %d\n", a.Spectre_on);
  voir_float("mean = %f\n", a.Niveau_moyen);
  voir_float("min = %f\n", a.Niveau_min);
  voir_float("max = %f\n", a.Niveau_max);
  return build_nil(s, lim);
}

int audio_end(word* s, const word* lim) {
  if (live_audio().capture) voir_texte("FreeDirectSound\n");
  FreeDirectSound();
  return build_nil(s, lim);
}

// `audio exec [vol(ids)] [image(ids)] [coe(c)]`: the loop moves these
// volumes and images (every volume with neither list); `STOP` ends it,
// `anc` puts them back.
int audio_exec(word* s, const word* lim) {
  LiveAudio& a = live_audio();
  a.exec_vols.clear();
  a.exec_images.clear();
  a.exec_fonctions.clear();
  for (float id : arg_floats(s, KW_vol)) a.exec_vols.push_back(entier(id));
  for (float id : arg_floats(s, KW_image)) a.exec_images.push_back(entier(id));
  a.exec_coe = arg_float(s, KW_coe, 1);
  a.exec = 1;
  return build_nil(s, lim);
}

int audio_stop(word* s, const word* lim) {
  live_audio().exec = 0;
  return build_nil(s, lim);
}

int audio_anc_cmd(word* s, const word* lim) {
  audio_anc();
  return build_nil(s, lim);
}

// PROPERTY_SCALE_AUDIO: `audio inv scale(ids)` or `audio max scale(ids)`,
// the values that the scales of sound keep under that pair, one scale
// after the other; NIL when none has it. `audio inv scale(id) = ...`
// stores them (the common grammar).
int scale_audio(word* s, const word* lim, int paire) {
  std::vector<float> v;
  Objet* tete = chaine_classe(KW_scale);
  const std::vector<int> ids = arg_ints(s, KW_scale);
  for (size_t k = 0; k < ids.size(); k++) {
    Objet* o = get_objet_id(tete, KW_scale, ids[k]);
    if (!o) {
      err_objet(KW_scale, arg_of(s, KW_scale), static_cast<int>(k), 0, nullptr);
      return -1;
    }
    const word* p = get_val_2(o->local, KW_audio, paire);
    for (int i = 0; i < elements(p); i++) v.push_back(value_at(p, i));
  }
  return build_floats_or_nil(s, lim, v);
}

struct SousCommande {
  int code;
  int (*f)(word* s, const word* lim);
};

const SousCommande SOUS_COMMANDES[] = {
    {KW_dim, audio_dim},     {KW_min, audio_min},   {KW_module, audio_module}, {KW_status, audio_status},
    {KW_max, audio_max},     {KW_NP, audio_NP},     {KW_precision, audio_precision},
    {KW_ring, audio_ring},   {KW_read, audio_read}, {KW_puls, audio_puls},     {KW_ini, audio_ini},
    {KW_edit, audio_edit},   {KW_end, audio_end},   {KW_STOP, audio_stop},     {KW_anc, audio_anc_cmd},
    {KW_exec, audio_exec},
    {KW_play, audio_play},
};

// `audio` then one of its sub-commands; `audio(id)` and the property
// paths that begin with `audio` are the sound objects'.
int forme_audio(word* s, const word* ob, word*, const word* lim, bool* done) {
  *done = false;
  if (ob || arg_of(s, KW_audio) || item_count(s) < 2) return 0;
  const int w = second_word(s);
  if (w != KW_exec && has_word(s, KW_vol)) return 0;
  if ((w == KW_inv || w == KW_max) && has_word(s, KW_scale)) {
    *done = true;
    return scale_audio(s, lim, w);
  }
  for (const SousCommande& c : SOUS_COMMANDES)
    if (c.code == w) {
      *done = true;
      return c.f(s, lim);
    }
  return 0;
}

// `speed audio vol(ids)`: a property of the volumes that EXEC_AUDIO
// moves, not the speed of a sound object.
int forme_speed_vol(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = has_word(s, KW_audio) && !arg_of(s, KW_audio) && has_word(s, KW_vol);
  return *done ? bloc_0(s, ob, st, lim) : 0;
}

}  // namespace

void install_live_audio() {
  register_graphic_shape(KW_audio, forme_audio);
  register_graphic_shape(KW_speed, forme_speed_vol);
  DeviceAudioHooks& h = devices().audio;
  h.demarrer = InitDirectSound;
  h.lire = niveaux_audio;
  h.reglage = reglage_device;
  loop().exec_audio = EXEC_AUDIO;
}
