#include "sound/live_capture.h"

#include <algorithm>
#include <cmath>

#include "kernel/keywords.h"
#include "kernel/message_names.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "platform/audio.h"
#include "platform/process.h"
#include "sound/live_analysis.h"
#include "sound/live_state.h"
#include "sound/primary_buffer.h"
#include "sound/sound_object.h"
#include "sound/wav_header.h"

namespace {

// A file longer than this is cut: ten minutes of capture.
constexpr size_t MAX_PCM = static_cast<size_t>(AUDIO_BYTES_PER_SECOND) * 600;

// A failed set-up leaves audio off: the playback device goes too.
void echec_init(const char* etape, const std::string& detail) {
  ferme_primaire();
  if (etape) VOIR_CHAR("ERROR %s\a\n", etape);
  if (!detail.empty() && Yes(KW_debug) > 0) VOIR_CHAR("%s\n", detail.c_str());
  voir_texte("ERROR InitDirectSound\a\n");
}

AudioCapture* ouvre_fichier(const std::string& chemin) {
  std::string octets;
  if (!file_read_all(chemin, octets)) {
    err_pas_trouve(chemin.c_str());
    return nullptr;
  }
  std::string why;
  std::vector<uint8_t> pcm = pcm_capture(reinterpret_cast<const uint8_t*>(octets.data()), octets.size(), &why);
  if (pcm.empty()) {
    VOIR_CHAR("%s ", chemin.c_str());
    VOIR_CHAR("%s ", why.c_str());
    voir_message(0, MES_BADLY_FORMATTED_FILE);
    return nullptr;
  }
  return audio_open_bytes(std::move(pcm));
}

}  // namespace

std::vector<uint8_t> pcm_capture(const uint8_t* b, size_t n, std::string* why) {
  std::vector<uint8_t> out;
  WavEntete e;
  if (lit_entete_wav(b, n, e) != WavLecture::ok || e.format != 1 || e.Nb_octet < 1 || e.Nb_octet > 4 ||
      e.Header < 0 || static_cast<size_t>(e.Header) > n) {
    if (why) *why = "(PCM WAV)";
    return out;
  }
  const size_t pas = static_cast<size_t>(e.Nb_octet) * static_cast<size_t>(e.Channel);
  const size_t octets = std::min(static_cast<size_t>(e.data), n - static_cast<size_t>(e.Header));
  const size_t trames = octets / pas;
  if (trames == 0) {
    if (why) *why = "(no samples)";
    return out;
  }
  const uint8_t* d = b + e.Header;
  // Linear interpolation between the source's frames at 22050 Hz.
  const double rapport = static_cast<double>(e.Rate) / AUDIO_RATE;
  size_t sortie = static_cast<size_t>(static_cast<double>(trames) / rapport);
  sortie = std::clamp<size_t>(sortie, 1, MAX_PCM / AUDIO_BLOCK);
  out.resize(sortie * AUDIO_BLOCK);
  for (size_t i = 0; i < sortie; i++) {
    const double t = static_cast<double>(i) * rapport;
    const size_t k = std::min(static_cast<size_t>(t), trames - 1);
    const size_t k2 = std::min(k + 1, trames - 1);
    const double f = t - static_cast<double>(k);
    for (int c = 0; c < AUDIO_CHANNELS; c++) {
      const size_t canal = static_cast<size_t>(std::min(c, e.Channel - 1)) * static_cast<size_t>(e.Nb_octet);
      const double a = lit_echantillon_16(d + k * pas + canal, e.Nb_octet);
      const double z = lit_echantillon_16(d + k2 * pas + canal, e.Nb_octet);
      const int v = static_cast<int>(std::lround(a + (z - a) * f));
      const uint16_t u = static_cast<uint16_t>(static_cast<int16_t>(std::clamp(v, -32768, 32767)));
      out[i * AUDIO_BLOCK + 2 * c] = static_cast<uint8_t>(u);
      out[i * AUDIO_BLOCK + 2 * c + 1] = static_cast<uint8_t>(u >> 8);
    }
  }
  return out;
}

int fenetre_de_dim(int n) {
  if (n < 1) return 1024;
  if (n > 14) return MAX_FENETRE;
  return 1 << n;
}

int InitDirectSound(int dim) {
  LiveAudio& a = live_audio();
  if (a.capture) {
    voir_texte("FreeDirectSound\n");
    FreeDirectSound();
  }
  a.Fenetre = fenetre_de_dim(dim);
  a.Notification = std::clamp(a.Fenetre, MIN_NOTIFICATION, MAX_FENETRE);
  voir_int("Fenetre d'echantillonnage = %d\n", a.Fenetre);
  std::string chemin, etape, detail;
  // The playback device first, as DirectSound makes it before the capture.
  if (const char* echec = ouvre_primaire(&detail)) {
    primaire().refus = 1;
    echec_init(echec, detail);
    return -1;
  }
  switch (audio_source(&chemin)) {
    case AudioSource::none:
      echec_init(nullptr, "");
      return -1;
    case AudioSource::unknown:
      VOIR_CHAR("ORVELA_AUDIO=%s: alsa, none or file:PATH.wav\n", chemin.c_str());
      echec_init(nullptr, "");
      return -1;
    case AudioSource::file:
      a.capture = ouvre_fichier(chemin);
      if (!a.capture) {
        echec_init("DirectSoundCaptureCreate", "");
        return -1;
      }
      break;
    case AudioSource::alsa:
      a.capture = audio_open_alsa(&etape, &detail);
      if (!a.capture) {
        echec_init(etape == "open" ? "DirectSoundCaptureCreate" : "SetFormat", detail);
        return -1;
      }
      break;
  }
  // The values start from nothing at each start.
  std::fill_n(a.Echantillons, MAX_FENETRE, 0.0f);
  std::fill_n(a.Signal, MAX_FENETRE, 0.0f);
  std::fill_n(a.Precedent, MAX_FENETRE, 0.0f);
  std::fill_n(a.Derivee, MAX_FENETRE, 0.0f);
  std::fill_n(a.Maxima, NB_MAXIMA, 0.0f);
  a.Ring_pos = 0;
  a.Niveau_min = a.Niveau_max = a.Niveau_moyen = a.Moyen_precedent = 0;
  a.on = 1;
  return 0;
}

void FreeDirectSound() {
  LiveAudio& a = live_audio();
  ferme_primaire();
  audio_close(a.capture);
  a.capture = nullptr;
  a.on = 0;
}

int HandleNotification() {
  LiveAudio& a = live_audio();
  if (!a.on || !a.capture) return -1;
  std::string detail;
  const int attente = audio_pending(a.capture, &detail);
  if (attente < 0) {
    voir_texte("ERROR HandleNotification\a\n");
    if (Yes(KW_debug) > 0) VOIR_CHAR("%s\n", detail.c_str());
    return -1;
  }
  AudioStretch s[2];
  const int n = audio_lock(a.capture, std::min(attente, MAX_FENETRE), s);
  entre_octets(a, s[0].p, s[0].n, s[1].p, s[1].n);
  traitement_fenetre(a);
  audio_unlock(a.capture, n);
  a.Notification = std::clamp(n, MIN_NOTIFICATION, MAX_FENETRE);
  return 0;
}

int analyse_audio(bool force) {
  LiveAudio& a = live_audio();
  if (!force && a.Analyse_faite) return 0;
  if (HandleNotification() < 0) return -1;
  a.Analyse_faite = 1;
  return etapes_analyse(a);
}

int niveaux_audio(float out[3]) {
  LiveAudio& a = live_audio();
  if (!a.on) return -1;
  HandleNotification();
  out[0] = a.Niveau_moyen;
  out[1] = a.Niveau_min;
  out[2] = a.Niveau_max;
  return 0;
}

LiveAudio& live_audio() {
  static LiveAudio a;
  return a;
}
