#include "device/ucs_format.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "kernel/entier.h"

namespace {

const UcsFormat FORMATS[] = {
    {ucs_code('C', 'C'), "CC", UCS_TEXTE, 1, false},    {ucs_code('H', 'B'), "HB", UCS_HEXA, 1, false},
    {ucs_code('H', 'S'), "HS", UCS_HEXA, 2, false},     {ucs_code('H', 'L'), "HL", UCS_HEXA, 4, false},
    {ucs_code('U', 'B'), "UB", UCS_ENTIER, 1, false},   {ucs_code('U', 'S'), "US", UCS_ENTIER, 2, false},
    {ucs_code('U', 'L'), "UL", UCS_ENTIER, 4, false},   {ucs_code('S', 'B'), "SB", UCS_ENTIER, 1, true},
    {ucs_code('S', 'S'), "SS", UCS_ENTIER, 2, true},    {ucs_code('S', 'L'), "SL", UCS_ENTIER, 4, true},
    {ucs_code('F', 'F'), "FF", UCS_FLOTTANT, 4, false}, {ucs_code('S', 'P'), "SP", UCS_PARTIE, 2, false},
};

int chiffre(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 0;
}

// The low `largeur` bytes of v, most significant first with `msb`.
void poser(uint32_t v, int largeur, bool msb, unsigned char* out) {
  for (int i = 0; i < largeur; ++i) {
    const int decalage = 8 * (msb ? largeur - 1 - i : i);
    out[i] = static_cast<unsigned char>(v >> decalage);
  }
}

// The value of `largeur` bytes at b, of which `dispo` are there (the
// others count 0).
uint32_t prendre(const unsigned char* b, int dispo, int largeur, bool msb) {
  uint32_t v = 0;
  for (int i = 0; i < largeur; ++i) {
    const uint32_t o = i < dispo ? b[i] : 0;
    v |= o << (8 * (msb ? largeur - 1 - i : i));
  }
  return v;
}

float entier_lu(uint32_t v, const UcsFormat& f) {
  if (!f.signe) return static_cast<float>(v);
  if (f.largeur == 1) return static_cast<float>(static_cast<int8_t>(v));
  if (f.largeur == 2) return static_cast<float>(static_cast<int16_t>(v));
  return static_cast<float>(static_cast<int32_t>(v));
}

// Values of `largeur` bytes that n bytes make, a short tail counted.
int valeurs_de(int n, int largeur) { return n <= 0 ? 0 : (n + largeur - 1) / largeur; }

}  // namespace

const UcsFormat& ucs_format_cc() { return FORMATS[0]; }

const UcsFormat& ucs_format(const char* f) {
  if (!f || !f[0] || !f[1]) return FORMATS[0];
  const int c = ucs_code(f[0], f[1]);
  for (const UcsFormat& r : FORMATS)
    if (r.code == c) return r;
  return FORMATS[0];
}

UcsEncodage ucs_encoder_hexa(const char* s, int n, const UcsFormat& f, bool msb, unsigned char* out, int room) {
  UcsEncodage e;
  const int groupe = 2 * f.largeur;
  const int valeurs = valeurs_de(n, groupe);
  e.besoin = valeurs * f.largeur;
  for (int k = 0; k < valeurs && e.octets + f.largeur <= room; ++k) {
    uint32_t v = 0;
    for (int d = 0; d < groupe; ++d) {
      const int i = k * groupe + d;
      v = (v << 4) | static_cast<uint32_t>(i < n ? chiffre(s[i]) : 0);
    }
    poser(v, f.largeur, msb, out + e.octets);
    e.octets += f.largeur;
    e.pris = std::min(n, (k + 1) * groupe);
  }
  return e;
}

UcsEncodage ucs_encoder_nombres(const word* v, int n, const UcsFormat& f, bool msb, unsigned char* out, int room) {
  UcsEncodage e;
  if (n < 0) n = 0;
  e.besoin = n * f.largeur;
  for (int k = 0; k < n && e.octets + f.largeur <= room; ++k) {
    const uint32_t bits = f.genre == UCS_FLOTTANT ? static_cast<uint32_t>(v[k])
                                                  : static_cast<uint32_t>(static_cast<unsigned long long>(entier_long(wf(v[k]))));
    poser(bits, f.largeur, msb, out + e.octets);
    e.octets += f.largeur;
    e.pris = k + 1;
  }
  return e;
}

UcsDecodage ucs_decoder_hexa(const unsigned char* b, int n, const UcsFormat& f, bool msb, char* out, int room) {
  static const char HEXA[] = "0123456789ABCDEF";
  UcsDecodage d;
  const int valeurs = valeurs_de(n, f.largeur);
  const int groupe = 2 * f.largeur;
  d.voulus = valeurs * groupe;
  for (int k = 0; k < valeurs && d.elements + groupe <= room; ++k) {
    const int o = k * f.largeur;
    const uint32_t v = prendre(b + o, n - o, f.largeur, msb);
    for (int i = 0; i < groupe; ++i) out[d.elements + i] = HEXA[(v >> (4 * (groupe - 1 - i))) & 15];
    d.elements += groupe;
  }
  return d;
}

UcsDecodage ucs_decoder_nombres(const unsigned char* b, int n, const UcsFormat& f, bool msb, word* out, int room) {
  UcsDecodage d;
  const bool flottant = f.genre == UCS_FLOTTANT;
  d.voulus = flottant ? (n > 0 ? n / 4 : 0) : valeurs_de(n, f.largeur);
  for (int k = 0; k < d.voulus && k < room; ++k) {
    const int o = k * f.largeur;
    const uint32_t v = prendre(b + o, n - o, f.largeur, msb);
    out[k] = flottant ? static_cast<word>(v) : fw(entier_lu(v, f));
    d.elements = k + 1;
  }
  return d;
}

UcsPartie ucs_decoder_partie(const unsigned char* b, int n, int dep, int taille, bool msb, word* out, int room) {
  UcsPartie p;
  if (dep < 0) dep = 0;
  if (dep >= n) {
    p.ignore = true;
    return p;
  }
  int l = n - dep;
  if (taille >= 0 && l > taille) l = taille;
  p.court = taille > l;
  p.impair = (l & 1) != 0;
  p.longueur = l + (p.impair ? 1 : 0);
  // The added byte is the 0 that prendre() gives past the `l` there.
  p.d.voulus = p.longueur / 2;
  for (int k = 0; k < p.d.voulus && k < room; ++k) {
    out[k] = fw(static_cast<float>(prendre(b + dep + 2 * k, l - 2 * k, 2, msb)));
    p.d.elements = k + 1;
  }
  return p;
}

void ucs_ligne_dump(const unsigned char* b, int n, int debut, char (&out)[UCS_LIGNE_DUMP]) {
  int k = std::snprintf(out, sizeof out, "%04X: ", static_cast<unsigned>(debut) & 0xFFFFu);
  char texte[17];
  int t = 0;
  for (int i = 0; i < 16; ++i) {
    if (debut + i < n) {
      const unsigned char o = b[debut + i];
      k += std::snprintf(out + k, sizeof out - static_cast<size_t>(k), "%02X", o);
      const char c = static_cast<char>(o & 0x7F);
      texte[t++] = c >= 0x20 && c < 0x7F ? c : '.';
    } else {
      out[k++] = ' ';
      out[k++] = ' ';
    }
    if (i % 4 == 3) out[k++] = ' ';
  }
  texte[t] = '\0';
  std::snprintf(out + k, sizeof out - static_cast<size_t>(k), " : %s\n", texte);
}
