#include "sound/primary_buffer.h"

#include <algorithm>
#include <cstdint>

#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "platform/audio_out.h"
#include "sound/sound_object.h"

namespace {

// How far ahead of the play position something may be queued.
constexpr long long AVANCE_MAX = AUDIO_BYTES_PER_SECOND / 4 / AUDIO_BLOCK * AUDIO_BLOCK;

const char* texte_etape(AudioOutStep e) {
  switch (e) {
    case AudioOutStep::device: return "DirectSoundCreate";
    case AudioOutStep::buffer: return "CreateSoundBuffer";
    case AudioOutStep::format: return "SetFormat";
  }
  return "DirectSoundCreate";
}

void ajoute16(uint8_t* p, int v) {
  const int s = std::clamp(lit_echantillon(p, 2) + v, -32768, 32767);
  const uint16_t u = static_cast<uint16_t>(static_cast<int16_t>(s));
  p[0] = static_cast<uint8_t>(u);
  p[1] = static_cast<uint8_t>(u >> 8);
}

}  // namespace

PrimaryBuffer& primaire() {
  static PrimaryBuffer p;
  return p;
}

// There is no SetCooperativeLevel step here: ALSA has no priority level
// tied to a window, so "ERROR SetCooperativeLevel" is never printed.
const char* ouvre_primaire(std::string* detail) {
  PrimaryBuffer& p = primaire();
  if (p.sortie) return nullptr;
  std::string chemin;
  AudioOutStep etape = AudioOutStep::device;
  switch (audio_sink(&chemin)) {
    case AudioSource::alsa:
      p.sortie = audio_out_open_alsa(&etape, detail);
      break;
    case AudioSource::none:
      p.sortie = audio_out_open_clock(nullptr, nullptr, &etape, detail);
      break;
    case AudioSource::file:
      p.sortie = audio_out_open_clock(chemin.c_str(), nullptr, &etape, detail);
      if (!p.sortie && detail) *detail = chemin + ": " + *detail;
      break;
    case AudioSource::unknown:
      VOIR_CHAR("ORVELA_AUDIO_OUT=%s: alsa, none or file:PATH.wav\n", chemin.c_str());
      return texte_etape(AudioOutStep::device);
  }
  if (!p.sortie) return texte_etape(etape);
  p.curseur_bip = p.curseur_sons = 0;
  p.refus = 0;
  return nullptr;
}

void ferme_primaire() {
  PrimaryBuffer& p = primaire();
  audio_out_close(p.sortie);
  p.sortie = nullptr;
}

bool primaire_pret() {
  PrimaryBuffer& p = primaire();
  if (p.sortie) return true;
  if (p.refus) return false;
  std::string detail;
  if (const char* etape = ouvre_primaire(&detail)) {
    p.refus = 1;
    VOIR_CHAR("ERROR %s\a\n", etape);
    if (!detail.empty() && Yes(KW_debug) > 0) VOIR_CHAR("%s\n", detail.c_str());
    return false;
  }
  return true;
}

void pompe_primaire() {
  PrimaryBuffer& p = primaire();
  if (!p.sortie) return;
  std::string detail;
  if (audio_out_pump(p.sortie, &detail) < 0) {
    VOIR_CHAR("ERROR playback: %s\a\n", detail.c_str());
    ferme_primaire();
    p.refus = 1;
  }
}

long long place_primaire(long long curseur) {
  const PrimaryBuffer& p = primaire();
  if (!p.sortie) return -1;
  const long long joues = audio_out_played(p.sortie);
  const long long at = std::max(curseur, joues);
  return at - joues > AVANCE_MAX ? -1 : at;
}

int mixe_primaire(long long at, int trames, GenerateurTrame gen, const void* ctx) {
  PrimaryBuffer& p = primaire();
  if (!p.sortie || trames <= 0) return 0;
  AudioOutStretch s[2];
  long long debut = 0;
  const int n = audio_out_lock(p.sortie, at, trames * AUDIO_BLOCK, s, &debut);
  int j = static_cast<int>((debut - at) / AUDIO_BLOCK);
  for (const AudioOutStretch& e : s)
    for (int k = 0; k < e.n; k += AUDIO_BLOCK, j++) {
      int lr[2];
      gen(ctx, j, lr);
      ajoute16(e.p + k, lr[0]);
      ajoute16(e.p + k + 2, lr[1]);
    }
  audio_out_unlock(p.sortie, debut, n);
  return n;
}
