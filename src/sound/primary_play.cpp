#include "sound/primary_play.h"

#include <algorithm>
#include <cmath>

#include "interaction/loop_state.h"
#include "platform/audio.h"
#include "platform/process.h"
#include "sound/live_capture.h"
#include "sound/primary_buffer.h"
#include "sound/sound_object.h"

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr int AMPLITUDE_BIP = 12000;
constexpr int FONDU_BIP = AUDIO_RATE / 200;  // 5 ms of fade at each end
constexpr int TRAMES_IMAGE = AUDIO_RATE / IMAGES_SECONDE;

struct Ton {
  double omega;  // radians a frame
  int trames, fondu;
};

void trame_ton(const void* ctx, int j, int lr[2]) {
  const Ton& t = *static_cast<const Ton*>(ctx);
  const int bord = std::min(j, t.trames - 1 - j);
  const double g = bord < t.fondu ? static_cast<double>(bord) / t.fondu : 1.0;
  lr[0] = lr[1] = static_cast<int>(std::lround(AMPLITUDE_BIP * g * std::sin(t.omega * j)));
}

// A sound read from `debut` (in frames of its own rate) by `pas` frames
// an output frame, looping over `boucle` frames, as 16-bit samples.
struct Lecture {
  const uint8_t* d;
  int nb, trame, canal_droit;
  long long total;
  double boucle, debut, pas;
};

int echantillon(const Lecture& l, long long k, int canal) {
  if (k < 0 || k >= l.total) return 0;
  return lit_echantillon_16(l.d + k * l.trame + canal * l.nb, l.nb);
}

void trame_son(const void* ctx, int j, int lr[2]) {
  const Lecture& l = *static_cast<const Lecture*>(ctx);
  const double s = std::fmod(l.debut + l.pas * j, l.boucle);
  const long long k = static_cast<long long>(s);
  const long long k2 = k + 1 < l.boucle ? k + 1 : 0;
  const double f = s - static_cast<double>(k);
  for (int c = 0; c < 2; c++) {
    const int canal = c == 0 ? 0 : l.canal_droit;
    const double a = echantillon(l, k, canal), b = echantillon(l, k2, canal);
    lr[c] = static_cast<int>(std::lround(a + (b - a) * f));
  }
}

void fin_du_programme() {
  FreeDirectSound();
}

}  // namespace

// Windows' Beep holds the caller for the tone's length; here the tone is
// queued in the ring and the image loop goes on at once.
bool bip_primaire(float f, int ms) {
  if (!primaire_pret()) return false;
  PrimaryBuffer& p = primaire();
  const int trames = std::clamp(static_cast<int>(static_cast<long long>(ms) * AUDIO_RATE / 1000), 1, AUDIO_RATE);
  const long long at = place_primaire(p.curseur_bip);
  // Tones queued faster than they play: this one is dropped.
  if (at < 0) return true;
  const Ton t{2 * PI * f / AUDIO_RATE, trames, std::min(FONDU_BIP, trames / 2)};
  p.curseur_bip = at + mixe_primaire(at, trames, trame_ton, &t);
  return true;
}

long long debut_image_sons() {
  if (!primaire_pret()) return -1;
  return place_primaire(primaire().curseur_sons);
}

void mixe_son(Objet* o, float position, float vitesse, long long at) {
  const int nb = Nb_octet(o), trame = octets_trame(o);
  const uint8_t* d = donnees(o);
  const long long total = trames(o);
  const double par_image = static_cast<double>(Rate(o)) / IMAGES_SECONDE;
  if (at < 0 || !d || (nb != 1 && nb != 2) || trame <= 0 || total <= 0 || !(par_image > 0) ||
      !std::isfinite(position) || !std::isfinite(vitesse))
    return;
  const double boucle = par_image * std::max(Images(o), 1);
  const Lecture l{d, nb, trame, std::min(Channel(o) - 1, 1), total, boucle,
                  std::fmod(position * par_image, boucle), vitesse * par_image / TRAMES_IMAGE};
  mixe_primaire(at, TRAMES_IMAGE, trame_son, &l);
}

void fin_image_sons(long long at) {
  if (at >= 0) primaire().curseur_sons = at + static_cast<long long>(TRAMES_IMAGE) * AUDIO_BLOCK;
}

void install_primary_play() {
  loop().bip = bip_primaire;
  process_at_exit(fin_du_programme);
}
