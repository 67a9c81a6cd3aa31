#include "sound/sound_object.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "scene/lookup.h"
#include "scene/removal.h"

namespace {

// The file image's property holding `mots` data words; its value with
// only the size set, or null after a report.
bloc installe_valeur(Objet* o, int code, long long mots) {
  if (mots + 10 > 0x7fffffff) {
    err_malloc("audio_alloue()", static_cast<double>(mots) * 4);
    return nullptr;
  }
  return installe_valeur_1(o, code, static_cast<int>(mots));
}

}  // namespace

SoundState& son() {
  static SoundState s;
  return s;
}

Objet* chaine_audio() { return chaine_classe(KW_audio); }

Objet* audio_numero(int id) { return get_objet_id(chaine_audio(), KW_audio, id); }

Objet* audio_nouveau(int id) {
  rem_objet_id(KW_audio, id);
  return cre_objet_nom(chaine_audio(), KW_audio / 200, KW_audio, id, nullptr);
}

Objet* audio_requis(int id, const char* fonction) {
  Objet* o = audio_numero(id);
  if (o && audio_bloc(o)) return o;
  voir_mot(KW_audio);
  voir_int("(%d) ", id);
  err_pas_trouve(fonction);
  return nullptr;
}

const word* audio_bloc(const Objet* o) {
  if (!o) return nullptr;
  const word* b = get_val_1(o->local, KW_audio);
  if (!b || tag(b) != T_CHAR || np(b) < 0) return nullptr;
  const long long mots = (static_cast<long long>(np(b)) + 3) / 4;
  return size(b) == 4 + mots && np(b) == o->work[AF_SIZE] ? b : nullptr;
}

const uint8_t* audio_octets(const Objet* o) {
  const word* b = audio_bloc(o);
  return b ? reinterpret_cast<const uint8_t*>(b + 4) : nullptr;
}

uint8_t* audio_octets(Objet* o) { return const_cast<uint8_t*>(audio_octets(static_cast<const Objet*>(o))); }

uint8_t* audio_alloue(Objet* o, size_t n) {
  // Size is an int: a file image holds less than 2 GB.
  if (n > 0x7ffffff0u) {
    err_malloc("audio_alloue()", static_cast<double>(n));
    return nullptr;
  }
  const long long mots = (static_cast<long long>(n) + 3) / 4;
  bloc v = installe_valeur(o, KW_audio, mots);
  if (!v) {
    TRACE_FAIL("audio_alloue()");
    return nullptr;
  }
  v[1] = T_CHAR;
  v[2] = static_cast<word>(n);
  v[3] = 1;
  std::memset(v + 4, 0, static_cast<size_t>(mots) * 4);
  o->work[AF_SIZE] = static_cast<int>(n);
  return reinterpret_cast<uint8_t*>(v + 4);
}

uint8_t* audio_redimensionne(Objet* o, size_t n) {
  const uint8_t* old = audio_octets(o);
  std::vector<uint8_t> garde;
  if (old) garde.assign(old, old + std::min<size_t>(static_cast<size_t>(Size(o)), n));
  uint8_t* b = audio_alloue(o, n);
  if (b && !garde.empty()) std::memcpy(b, garde.data(), garde.size());
  return b;
}

long long octets_donnees(const Objet* o) {
  const long long d = static_cast<long long>(o->work[AF_SIZE]) - o->work[AF_HEADER];
  return d > 0 ? d : 0;
}

long long trames(const Objet* o) {
  const int f = octets_trame(o);
  return f > 0 ? octets_donnees(o) / f : 0;
}

int secondes_son(const Objet* o) {
  const long long par_seconde = static_cast<long long>(octets_trame(o)) * o->work[AF_RATE];
  const long long s = par_seconde > 0 ? octets_donnees(o) / par_seconde : 0;
  return static_cast<int>(std::clamp<long long>(s, 1, 0x7fffffff / IMAGES_SECONDE));
}

uint8_t* donnees(Objet* o) {
  uint8_t* b = audio_octets(o);
  if (!b || Header(o) < 0 || Header(o) > Size(o)) return nullptr;
  return b + Header(o);
}

int ecrit_meta(Objet* o, int format, int longueur_nom) {
  bloc m = set_val_1(o, KW_meta, META_MOTS);
  if (!m) return -1;
  tag(m) = T_LONG;
  const int mots[META_MOTS] = {Size(o), Header(o), format, Rate(o), static_cast<int>(octets_donnees(o)),
                               secondes_son(o), Images(o), longueur_nom,
                               Channel(o), Bits(o), Nb_octet(o), 0, 0, 0, 0};
  for (int i = 0; i < META_MOTS; i++) m[4 + i] = mots[i];
  return 0;
}
