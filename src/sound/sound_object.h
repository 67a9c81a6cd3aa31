// Sound objects: an `audio` record holds one sound as the bytes of its
// WAV file, header included, in its `audio` property (a CHAR block whose
// count is the file size). The record's owner words are the fields read
// from the header; the other sub-properties are `meta` (15 LONG words),
// `dim` (72 bytes of format text) and `stock` (2 floats an image).
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// The owner words of an audio record, in the order of the saved record.
enum AudioField { AF_NB_OCTET = 0, AF_SIZE, AF_HEADER, AF_RATE, AF_CHANNEL, AF_BITS, AF_IMAGES };

inline int& Nb_octet(Objet* o) { return o->work[AF_NB_OCTET]; }
inline int& Size(Objet* o) { return o->work[AF_SIZE]; }
inline int& Header(Objet* o) { return o->work[AF_HEADER]; }
inline int& Rate(Objet* o) { return o->work[AF_RATE]; }
inline int& Channel(Objet* o) { return o->work[AF_CHANNEL]; }
inline int& Bits(Objet* o) { return o->work[AF_BITS]; }
inline int& Images(Objet* o) { return o->work[AF_IMAGES]; }

// Images a second: the time unit of every sound command.
constexpr int IMAGES_SECONDE = 25;
// The header a generated sound carries, and what its record says.
constexpr int ENTETE_GENERE = 44;
constexpr int HEADER_GENERE = 60;
constexpr int RATE_DEFAUT = 44100;
constexpr int META_MOTS = 15;
constexpr int DIM_OCTETS = 72;

// The words of `meta`.
enum MetaWord {
  MW_SIZE = 0, MW_HEADER, MW_FORMAT, MW_RATE, MW_DATA, MW_SECONDS, MW_IMAGES, MW_NAME,
  MW_CHANNEL, MW_BITS, MW_NB_OCTET
};

// A recording of the live level, one pair an image, for STOCK_AUDIO.
struct EnregistrementStock {
  bool actif = false;
  std::string nom;           // the file written at the end
  int limite = 0;            // images to record
  int compte = 0;            // images recorded
  std::vector<float> bloc;   // the pairs, room made at the set-up
};

// The raw streams of numbers: one open for writing, one for reading.
enum class TypeFlux { char_, float_, long_ };
struct FluxSon {
  struct SafeFile* ecriture = nullptr;
  std::string nom_ecriture;
  TypeFlux type_ecriture = TypeFlux::float_;
  struct OsFile* lecture = nullptr;
  TypeFlux type_lecture = TypeFlux::float_;
};

// A sound's link to a volume, whose scale follows its level (sound_play.h).
struct LienVol {
  int son = 0, vol = 0;  // numbers of the sound and the volume
  float gain = 1;
};

// What the sound subsystem keeps beyond its objects.
struct SoundState {
  int Largeur_lissage = 8;  // the smoothing width `smooth audio` takes by default
  EnregistrementStock enregistrement;
  FluxSon flux;
  std::vector<LienVol> liens_vol;  // the volumes that follow sounds
};
SoundState& son();

Objet* chaine_audio();
Objet* audio_numero(int id);
// A fresh sound numbered id: an existing one of that number is removed
// first. Null after a report.
Objet* audio_nouveau(int id);
// The sound of the command's `audio(id)`, reported as missing when absent.
Objet* audio_requis(int id, const char* fonction);

// The file image: its block, its bytes (Size of them), null when absent.
const word* audio_bloc(const Objet* o);
uint8_t* audio_octets(Objet* o);
const uint8_t* audio_octets(const Objet* o);
// A zeroed file image of n bytes in place of the old one (Size set).
// Null after a report.
uint8_t* audio_alloue(Objet* o, size_t n);
// Grows (or shrinks) the file image to n bytes, keeping its head.
uint8_t* audio_redimensionne(Objet* o, size_t n);

// Samples of the data: frames (one sample of each channel), bytes a frame.
inline int octets_trame(const Objet* o) { return o->work[AF_CHANNEL] * o->work[AF_NB_OCTET]; }
long long octets_donnees(const Objet* o);
long long trames(const Objet* o);
// Whole seconds of the data, at least 1; the length in images follows.
int secondes_son(const Objet* o);
inline int images_son(const Objet* o) { return secondes_son(o) * IMAGES_SECONDE; }
// The first byte of the data, or null.
uint8_t* donnees(Objet* o);

// A sample as a signed value: 8-bit ones are unsigned on the disk, 128
// being silence; 16-bit ones little-endian. Other sizes read 0.
inline int lit_echantillon(const uint8_t* p, int nb_octet) {
  if (nb_octet == 1) return p[0] - 128;
  if (nb_octet == 2) return static_cast<int16_t>(static_cast<uint16_t>(p[0] | (p[1] << 8)));
  return 0;
}
// A sample of 1 to 4 bytes as a 16-bit value: 8-bit ones centred and
// widened, wider ones by their two highest bytes.
inline int lit_echantillon_16(const uint8_t* p, int nb_octet) {
  return nb_octet == 1 ? lit_echantillon(p, 1) * 256 : lit_echantillon(p + nb_octet - 2, 2);
}
// The full scale of a sample size: 127 or 32767.
inline int pleine_echelle(int nb_octet) { return nb_octet == 1 ? 127 : 32767; }
// Writes v held within the full scale.
inline void ecrit_echantillon(uint8_t* p, int nb_octet, long v) {
  const int m = pleine_echelle(nb_octet);
  if (v > m) v = m;
  if (v < -m) v = -m;
  if (nb_octet == 1) {
    p[0] = static_cast<uint8_t>(v + 128);
  } else if (nb_octet == 2) {
    p[0] = static_cast<uint8_t>(v & 0xff);
    p[1] = static_cast<uint8_t>((v >> 8) & 0xff);
  }
}

// The `meta` block from the fields, with the name length given.
int ecrit_meta(Objet* o, int format, int longueur_nom);
