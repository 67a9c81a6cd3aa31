// The WAV header: read from any bytes (a file is hostile: nothing is
// read past the bytes given), and written for a generated sound.
#pragma once
#include <cstddef>
#include <cstdint>

struct WavEntete {
  int format = 0;      // format tag (1 for PCM)
  int fmt = 0;         // offset of the "fmt " chunk's body
  int Channel = 0;
  int Rate = 0;
  int Bits = 0;
  int Nb_octet = 0;    // Bits / 8
  int Header = 0;      // bytes before the samples: just after "data" and its length
  long long data = 0;  // data bytes: the bytes after Header, whatever the chunk says
  long long longueur_chunk = 0;  // the "data" chunk's own length field, kept for show
  int seconds = 0;     // at least 1
  int Images = 0;      // seconds * 25
};

enum class WavLecture { ok, pas_riff, pas_de_data, pas_un_son };

// Reads the header of the n bytes b. "data" is looked for at every byte
// position from the start, up to the RIFF length or the bytes given,
// whichever ends first: the first hit wins, even inside another chunk.
// The format fields come from the "fmt " chunk. Fewer than 44 bytes, no
// "fmt " chunk, a zero rate or channel count, or samples under 8 bits
// make `pas_un_son`.
WavLecture lit_entete_wav(const uint8_t* b, size_t n, WavEntete& e);

// The 44 bytes of a generated header for a file image of `size` bytes.
// Kept as the sounds that exist have them: the RIFF length holds the
// file size, bytes a second 44100 * channels, block align nb_octet.
void ecrit_entete_wav(uint8_t* b, long long size, int channels, int nb_octet);

// Little-endian fields.
inline uint32_t lit_u32(const uint8_t* p) {
  return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 | static_cast<uint32_t>(p[2]) << 16 |
         static_cast<uint32_t>(p[3]) << 24;
}
inline uint16_t lit_u16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }
inline void ecrit_u32(uint8_t* p, uint32_t v) {
  for (int i = 0; i < 4; i++) p[i] = static_cast<uint8_t>(v >> (8 * i));
}
inline void ecrit_u16(uint8_t* p, uint16_t v) {
  p[0] = static_cast<uint8_t>(v);
  p[1] = static_cast<uint8_t>(v >> 8);
}
