#include "sound/wav_header.h"

#include <algorithm>
#include <cstring>

#include "sound/sound_object.h"

namespace {

// The offset of the "fmt " chunk's body: at 20 in the canonical form,
// else found by walking the chunks from 12. -1 when there is none whole.
long long corps_fmt(const uint8_t* b, size_t n) {
  size_t at = 12;
  while (at + 8 <= n) {
    const uint32_t len = lit_u32(b + at + 4);
    if (std::memcmp(b + at, "fmt ", 4) == 0) return at + 8 + 16 <= n ? static_cast<long long>(at + 8) : -1;
    const unsigned long long suivant = at + 8ULL + len + (len & 1);
    if (suivant > n) return -1;
    at = static_cast<size_t>(suivant);
  }
  return -1;
}

}  // namespace

WavLecture lit_entete_wav(const uint8_t* b, size_t n, WavEntete& e) {
  e = WavEntete{};
  if (n < 4 || std::memcmp(b, "RIFF", 4) != 0) return WavLecture::pas_riff;
  if (n < ENTETE_GENERE) return WavLecture::pas_un_son;
  const long long fmt = corps_fmt(b, n);
  if (fmt < 0) return WavLecture::pas_un_son;
  e.fmt = static_cast<int>(fmt);
  e.format = lit_u16(b + fmt);
  e.Channel = lit_u16(b + fmt + 2);
  e.Rate = static_cast<int>(std::min<uint32_t>(lit_u32(b + fmt + 4), 0x7fffffff));
  e.Bits = lit_u16(b + fmt + 14);
  e.Nb_octet = e.Bits / 8;
  if (e.Channel == 0 || e.Rate == 0 || e.Nb_octet == 0) return WavLecture::pas_un_son;
  // The scan: every position up to the RIFF length, bounded by the bytes.
  const unsigned long long riff = 8ULL + lit_u32(b + 4);
  const size_t fin = static_cast<size_t>(std::min<unsigned long long>(riff, n));
  long long pos = -1;
  for (size_t i = 0; i + 4 <= fin; i++)
    if (b[i] == 'd' && std::memcmp(b + i, "data", 4) == 0) {
      pos = static_cast<long long>(i);
      break;
    }
  if (pos < 0) return WavLecture::pas_de_data;
  if (static_cast<size_t>(pos) + 8 > n) return WavLecture::pas_un_son;
  e.longueur_chunk = lit_u32(b + pos + 4);
  e.Header = static_cast<int>(pos + 8);
  e.data = static_cast<long long>(n) - e.Header;
  const long long par_seconde = static_cast<long long>(e.Nb_octet) * e.Rate * e.Channel;
  // Held so that the images still count in an int (a rate of 1 Hz...).
  e.seconds = static_cast<int>(std::clamp<long long>(e.data / par_seconde, 1, 0x7fffffff / IMAGES_SECONDE));
  e.Images = e.seconds * IMAGES_SECONDE;
  return WavLecture::ok;
}

void ecrit_entete_wav(uint8_t* b, long long size, int channels, int nb_octet) {
  std::memcpy(b, "RIFF", 4);
  ecrit_u32(b + 4, static_cast<uint32_t>(size));
  std::memcpy(b + 8, "WAVE", 4);
  std::memcpy(b + 12, "fmt ", 4);
  ecrit_u32(b + 16, 16);
  ecrit_u16(b + 20, 1);
  ecrit_u16(b + 22, static_cast<uint16_t>(channels));
  ecrit_u32(b + 24, RATE_DEFAUT);
  ecrit_u32(b + 28, static_cast<uint32_t>(RATE_DEFAUT * channels));
  ecrit_u16(b + 32, static_cast<uint16_t>(nb_octet));
  ecrit_u16(b + 34, static_cast<uint16_t>(nb_octet * 8));
  std::memcpy(b + 36, "data", 4);
  ecrit_u32(b + 40, static_cast<uint32_t>(size - ENTETE_GENERE));
}
