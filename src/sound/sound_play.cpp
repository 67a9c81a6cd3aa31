#include "sound/sound_play.h"

#include <algorithm>
#include <cmath>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/word.h"
#include "scene/lookup.h"
#include "scene/volume.h"
#include "sound/primary_buffer.h"
#include "sound/primary_play.h"
#include "sound/sound_object.h"
#include "sound/sound_record.h"

namespace {

Objet* volume(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }

// The animation's part of the volume's scale.
void pose_delta(Objet* v, float d) {
  float* m = get_matrix_vol(v);
  if (m)
    for (int a = 0; a < 3; a++) m[TR_DELTA + TR_DILA + a] = d;
}

bool dans(const int* ids, int n, int id) { return n == 0 || std::find(ids, ids + n, id) != ids + n; }

// The `time` property: the place in images, made at the first need.
bloc place(Objet* o) {
  bloc t = get_val_1(o->local, KW_time);
  if (t && tag(t) == T_FLOAT && size(t) >= 5) return t;
  return set_val_1(o, KW_time, 1);
}

}  // namespace

float niveau_image(Objet* o, long long n) {
  const int nb = Nb_octet(o), f = octets_trame(o);
  const uint8_t* d = donnees(o);
  const long long fenetre = Rate(o) / IMAGES_SECONDE, total = trames(o);
  if (!d || (nb != 1 && nb != 2) || f <= 0 || fenetre <= 0 || n < 0) return 0;
  const long long debut = n * fenetre, fin = std::min(debut + fenetre, total);
  if (debut >= fin) return 0;
  double somme = 0;
  for (long long k = debut; k < fin; k++) somme += std::abs(lit_echantillon(d + k * f, nb));
  return static_cast<float>(somme / static_cast<double>(fin - debut) / pleine_echelle(nb));
}

float position_son(const Objet* o) {
  const word* t = get_val_1(o->local, KW_time);
  return t && tag(t) == T_FLOAT && size(t) >= 5 ? getf(t, 0) : 0;
}

int AUDIO_VOL(Objet* son, const int* vols, int n, float gain) {
  std::vector<LienVol>& liens = ::son().liens_vol;
  for (int i = 0; i < n; i++) {
    auto l = std::find_if(liens.begin(), liens.end(), [&](const LienVol& x) { return x.son == son->id && x.vol == vols[i]; });
    if (l == liens.end()) liens.push_back({son->id, vols[i], gain});
    else l->gain = gain;
  }
  if (!get_val_1(son->local, KW_dynamic)) return AUDIO_DYNAMIC(son, 1);
  return place(son) ? 0 : -1;
}

int retire_audio_vol(int son, const int* vols, int n) {
  std::vector<LienVol>& liens = ::son().liens_vol;
  int retires = 0;
  for (auto l = liens.begin(); l != liens.end();)
    if (l->son == son && dans(vols, n, l->vol)) {
      if (Objet* v = volume(l->vol)) pose_delta(v, 0);
      l = liens.erase(l);
      retires++;
    } else {
      ++l;
    }
  return retires;
}

int SET_PARAM_AUDIO_VOL(int son, const int* vols, int n, float gain) {
  int changes = 0;
  for (LienVol& l : ::son().liens_vol)
    if (l.son == son && dans(vols, n, l.vol)) {
      l.gain = gain;
      changes++;
    }
  return changes;
}

int WRITE_AUDIO_VOL_1(const LienVol& l) {
  Objet* s = audio_numero(l.son);
  Objet* v = volume(l.vol);
  if (!s || !v) return -1;
  pose_delta(v, l.gain * niveau_image(s, static_cast<long long>(position_son(s))));
  return 0;
}

void WRITE_AUDIO_VOL() {
  for (const LienVol& l : son().liens_vol) WRITE_AUDIO_VOL_1(l);
}

int AUDIO_DYNAMIC(Objet* o, float v) {
  bloc d = set_val_1(o, KW_dynamic, 1);
  if (!d || !place(o)) return -1;
  setf(d, 0, std::isfinite(v) ? v : 0);
  return 0;
}

float vitesse_son(const Objet* o) {
  const word* d = get_val_1(o->local, KW_dynamic);
  return d && tag(d) == T_FLOAT && size(d) >= 5 ? getf(d, 0) : 0;
}

void joue_sons() {
  long long at = -1;
  bool place_cherchee = false;
  for (Objet* o = chaine_audio()->next; o; o = o->next) {
    if (o->kind != KW_audio) continue;
    const float v = vitesse_son(o);
    if (!(v > 0)) continue;
    bloc t = place(o);
    if (!t) continue;
    if (!place_cherchee) {
      at = debut_image_sons();
      place_cherchee = true;
    }
    mixe_son(o, getf(t, 0), v, at);
    const float n = static_cast<float>(std::max(Images(o), 1));
    setf(t, 0, std::fmod(getf(t, 0) + v, n));
  }
  fin_image_sons(at);
}

int etape_son() {
  // What the last image added (its sounds, its tone) goes to the device.
  pompe_primaire();
  STOCK_AUDIO();
  joue_sons();
  WRITE_AUDIO_VOL();
  return 0;
}
