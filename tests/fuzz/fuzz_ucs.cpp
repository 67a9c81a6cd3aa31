// libFuzzer target: any bytes as a received datagram, decoded in every
// format and both byte orders into a result area of a size the input
// picks. Nothing is written past the room, counts stay within it.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "device/ucs_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const int room = data[0] % 64;
  const int dep = data[1] % 32;
  const int taille = static_cast<int>(data[2] % 40) - 4;
  const unsigned char* b = data + 3;
  const int n = static_cast<int>(size - 3);
  static const char* const FORMATS[] = {"HB", "HS", "HL", "UB", "US", "UL", "SB", "SS", "SL", "FF"};
  for (bool msb : {false, true}) {
    for (const char* nom : FORMATS) {
      const UcsFormat& f = ucs_format(nom);
      if (f.genre == UCS_HEXA) {
        std::vector<char> out(static_cast<size_t>(room));
        const UcsDecodage d = ucs_decoder_hexa(b, n, f, msb, out.data(), room);
        if (d.elements > room || d.elements > d.voulus) std::abort();
      } else {
        std::vector<word> out(static_cast<size_t>(room));
        const UcsDecodage d = ucs_decoder_nombres(b, n, f, msb, out.data(), room);
        if (d.elements > room || d.elements > d.voulus) std::abort();
      }
    }
    std::vector<word> out(static_cast<size_t>(room));
    const UcsPartie p = ucs_decoder_partie(b, n, dep, taille, msb, out.data(), room);
    if (p.d.elements > room || (p.ignore && p.d.elements != 0)) std::abort();
  }
  char ligne[UCS_LIGNE_DUMP];
  for (int i = 0; i < n; i += 16) ucs_ligne_dump(b, n, i, ligne);
  return 0;
}
