#include "sound/sound_mix.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "scene/removal.h"
#include "sound/sound_edit.h"
#include "sound/sound_generate.h"
#include "sound/sound_object.h"

namespace {

// The first frame of image t of a sound, within [0, frames].
long long trame_image(const Objet* o, float t) {
  const double x = static_cast<double>(t) * o->work[AF_RATE] / IMAGES_SECONDE;
  const long long n = trames(o);
  return x >= static_cast<double>(n) ? n : x > 0 ? static_cast<long long>(x) : 0;
}

// A sound `id` with the header of `modele` (bytes, fields) and room for
// `frames` frames, the data filled from `remplit`. The model's bytes are
// copied before the old sound of that number goes: it may be the model.
template <class F>
Objet* son_forme(int id, Objet* modele, long long frames, F remplit) {
  const std::vector<uint8_t> entete(audio_octets(modele), audio_octets(modele) + Header(modele));
  int champs[7];
  std::copy(modele->work, modele->work + 7, champs);
  std::vector<uint8_t> data(static_cast<size_t>(frames * octets_trame(modele)));
  remplit(data.data());
  Objet* o = audio_nouveau(id);
  if (!o) return nullptr;
  std::copy(champs, champs + 7, o->work);
  uint8_t* b = audio_alloue(o, entete.size() + data.size());
  if (!b) {
    rem_objet_id(KW_audio, id);
    return nullptr;
  }
  std::memcpy(b, entete.data(), entete.size());
  if (!data.empty()) std::memcpy(b + entete.size(), data.data(), data.size());
  // The header's lengths and the fields follow the new length.
  if (RESIZE_WAV(o, frames) < 0 || ecrit_meta(o, 1, 0) < 0) {
    rem_objet_id(KW_audio, id);
    return nullptr;
  }
  return o;
}

bool echantillons_lus(Objet* o) { return (Nb_octet(o) == 1 || Nb_octet(o) == 2) && Channel(o) > 0; }

int refus(const char* usage) {
  voir_texte(usage);
  return -1;
}

}  // namespace

Objet* AUDIO_AUDIO_TIME(int id, Objet* source, float t1, float t2) {
  const long long a = trame_image(source, t1), b = std::max(a, trame_image(source, t2));
  const int f = octets_trame(source);
  const uint8_t* d = donnees(source);
  if (!d || f <= 0) {
    refus("cut audio(id, source) time(t1, t2)\a\n");
    return nullptr;
  }
  return son_forme(id, source, b - a, [&](uint8_t* out) { std::memcpy(out, d + a * f, static_cast<size_t>((b - a) * f)); });
}

Objet* AUDIO_AUDIO_AUDIO_TIME(int id, Objet* a, Objet* b, float t) {
  if (!echantillons_lus(a) || !echantillons_lus(b) || !donnees(a) || !donnees(b)) {
    refus("concat audio(id, a, b) [time(t)]: samples of 8 or 16 bits\a\n");
    return nullptr;
  }
  const long long ta = trames(a), tb = trames(b), at = trame_image(a, t);
  const int na = Nb_octet(a), ca = Channel(a), nb = Nb_octet(b), cb = Channel(b);
  const uint8_t *da = donnees(a), *db = donnees(b);
  const double echelle = static_cast<double>(pleine_echelle(na)) / pleine_echelle(nb);
  return son_forme(id, a, ta + tb, [&](uint8_t* out) {
    const size_t f = static_cast<size_t>(ca * na);
    std::memcpy(out, da, static_cast<size_t>(at) * f);
    for (long long k = 0; k < tb; k++)
      for (int c = 0; c < ca; c++)
        ecrit_echantillon(out + static_cast<size_t>(at + k) * f + static_cast<size_t>(c * na), na,
                          std::lround(lit_echantillon(db + (k * cb + c % cb) * nb, nb) * echelle));
    std::memcpy(out + static_cast<size_t>(at + tb) * f, da + static_cast<size_t>(at) * f, static_cast<size_t>(ta - at) * f);
  });
}

Objet* SET_AUDIO_AUDIO(int id, Objet* source) {
  const long long n = trames(source);
  const uint8_t* d = donnees(source);
  const size_t octets = static_cast<size_t>(n * octets_trame(source));
  return son_forme(id, source, n, [&](uint8_t* out) {
    if (d && octets) std::memcpy(out, d, octets);
  });
}

int MOVE_AUDIO_ID(Objet* o, int id) {
  if (o->id == id) return 0;
  rem_objet_id(KW_audio, id);
  // The volumes that followed the sound follow it under its new number.
  for (LienVol& l : son().liens_vol)
    if (l.son == o->id) l.son = id;
  objet_numero(o, id);
  o->unsaved = 1;
  return 0;
}

int COPY_HEADER(Objet* o, Objet* source) {
  if (!audio_octets(o)) return -1;
  pose_format(o, Rate(source), Channel(source), Nb_octet(source));
  return 0;
}

int SET_OCTET_NUMBER(Objet* o, int n) {
  if (n == 8 || n == 16 || n == 32) n /= 8;
  if (n != 1 && n != 2 && n != 4) {
    voir_int("data size %d != (1,2,4, 8,16,32)\a\n", n);
    return -1;
  }
  pose_format(o, Rate(o), Channel(o), n);
  return 0;
}

int COM_AUDIO(Objet* a, Objet* b, float out[2]) {
  if (!echantillons_lus(a) || !echantillons_lus(b) || !donnees(a) || !donnees(b))
    return refus("dist audio(a, b): samples of 8 or 16 bits\a\n");
  const long long n = std::min(trames(a), trames(b));
  const int c = std::min(Channel(a), Channel(b)), na = Nb_octet(a), nb = Nb_octet(b);
  const double ea = 1.0 / pleine_echelle(na), eb = 1.0 / pleine_echelle(nb);
  const uint8_t *da = donnees(a), *db = donnees(b);
  double somme = 0, plus = 0;
  for (long long k = 0; k < n; k++)
    for (int i = 0; i < c; i++) {
      const double x = lit_echantillon(da + (k * Channel(a) + i) * na, na) * ea -
                       lit_echantillon(db + (k * Channel(b) + i) * nb, nb) * eb;
      somme += x * x;
      plus = std::max(plus, std::abs(x));
    }
  out[0] = n * c > 0 ? static_cast<float>(std::sqrt(somme / static_cast<double>(n * c))) : 0;
  out[1] = static_cast<float>(plus);
  return 0;
}

int MOD_AUDIO(Objet* o, Objet* source, float t1, float t2) {
  if (!echantillons_lus(source) || !donnees(source)) return refus("module audio(id, source) [time(t1, t2)]\a\n");
  Tranche t;
  if (!tranche_temps(o, t1, t2, t)) return 0;
  const int ns = Nb_octet(source), cs = Channel(source);
  const long long ts = trames(source);
  const uint8_t* ds = donnees(source);
  const double es = 1.0 / pleine_echelle(ns);
  for (long long k = 0; k < t.n; k++)
    for (int c = 0; c < t.canaux; c++) {
      uint8_t* p = t.p + (k * t.canaux + c) * t.nb_octet;
      const double m = k < ts ? lit_echantillon(ds + (k * cs + c % cs) * ns, ns) * es : 0;
      ecrit_echantillon(p, t.nb_octet, std::lround(lit_echantillon(p, t.nb_octet) * m));
    }
  o->unsaved = 1;
  return 0;
}
