#include "sound/sound_edit.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "kernel/report.h"
#include "sound/sound_object.h"
#include "sound/wav_header.h"

int RESIZE_WAV(Objet* o, long long frames) {
  const int frame = octets_trame(o);
  if (frame <= 0 || frames < 0 || !audio_octets(o)) return -1;
  const long long size = Header(o) + frames * frame;
  if (size > 0x7ffffff0LL) {
    err_malloc("RESIZE_WAV()", static_cast<double>(size));
    return -1;
  }
  // Where the file's own header ends, found as the reader finds it.
  WavEntete e;
  const bool wav = lit_entete_wav(audio_octets(o), static_cast<size_t>(Size(o)), e) == WavLecture::ok;
  const bool genere = wav && lit_u32(audio_octets(o) + 4) == static_cast<uint32_t>(Size(o));
  uint8_t* b = audio_redimensionne(o, static_cast<size_t>(size));
  if (!b) {
    TRACE_FAIL("RESIZE_WAV()");
    return -1;
  }
  if (wav) {
    ecrit_u32(b + 4, static_cast<uint32_t>(genere ? size : size - 8));
    ecrit_u32(b + e.Header - 4, static_cast<uint32_t>(size - e.Header));
  }
  Images(o) = images_son(o);
  o->unsaved = 1;
  return 0;
}

void pose_format(Objet* o, int rate, int channels, int nb_octet) {
  uint8_t* b = audio_octets(o);
  WavEntete e;
  if (b && lit_entete_wav(b, static_cast<size_t>(Size(o)), e) == WavLecture::ok) {
    ecrit_u16(b + e.fmt + 2, static_cast<uint16_t>(channels));
    ecrit_u32(b + e.fmt + 4, static_cast<uint32_t>(rate));
    ecrit_u32(b + e.fmt + 8, static_cast<uint32_t>(rate * channels * nb_octet));
    ecrit_u16(b + e.fmt + 12, static_cast<uint16_t>(channels * nb_octet));
    ecrit_u16(b + e.fmt + 14, static_cast<uint16_t>(nb_octet * 8));
  }
  Rate(o) = rate;
  Channel(o) = channels;
  Nb_octet(o) = nb_octet;
  Bits(o) = nb_octet * 8;
  Images(o) = images_son(o);
  o->unsaved = 1;
}

int AUDIO_FORMAT(Objet* o, int nb_octet) {
  const int avant = Nb_octet(o), canaux = Channel(o);
  if ((avant != 1 && avant != 2) || (nb_octet != 1 && nb_octet != 2) || !donnees(o)) {
    voir_texte("format audio(id) = bits (8, 16)\a\n");
    return -1;
  }
  const long long n = trames(o) * canaux;
  const uint8_t* d = donnees(o);
  std::vector<int> v(static_cast<size_t>(n));
  const double echelle = static_cast<double>(pleine_echelle(nb_octet)) / pleine_echelle(avant);
  for (long long i = 0; i < n; i++) v[i] = static_cast<int>(std::lround(lit_echantillon(d + i * avant, avant) * echelle));
  Nb_octet(o) = nb_octet;
  if (RESIZE_WAV(o, n / canaux) < 0) return -1;
  pose_format(o, Rate(o), canaux, nb_octet);
  uint8_t* nd = donnees(o);
  for (long long i = 0; i < n; i++) ecrit_echantillon(nd + i * nb_octet, nb_octet, v[i]);
  return 0;
}

int SPEED_AUDIO(Objet* o, float f) {
  const int nb = Nb_octet(o), canaux = Channel(o);
  if ((nb != 1 && nb != 2) || !donnees(o) || !(f > 0) || !std::isfinite(f)) {
    voir_texte("speed audio(id) = f, f > 0\a\n");
    return -1;
  }
  const long long avant = trames(o);
  if (static_cast<double>(avant) / f > 1e9) {
    err_malloc("SPEED_AUDIO()", static_cast<double>(avant) / f * octets_trame(o));
    return -1;
  }
  const long long apres = std::llround(static_cast<double>(avant) / f);
  const uint8_t* d = donnees(o);
  std::vector<int> vieux(static_cast<size_t>(avant * canaux));
  for (size_t i = 0; i < vieux.size(); i++) vieux[i] = lit_echantillon(d + i * nb, nb);
  if (RESIZE_WAV(o, apres) < 0) return -1;
  uint8_t* n = donnees(o);
  for (long long k = 0; k < apres; k++) {
    const double x = static_cast<double>(k) * f;
    const long long i = static_cast<long long>(x);
    const double frac = x - static_cast<double>(i);
    for (int c = 0; c < canaux; c++) {
      const double a = i < avant ? vieux[i * canaux + c] : 0;
      const double b = i + 1 < avant ? vieux[(i + 1) * canaux + c] : a;
      ecrit_echantillon(n + (k * canaux + c) * nb, nb, std::lround(a + (b - a) * frac));
    }
  }
  return 0;
}
