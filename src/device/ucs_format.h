// The two-letter formats of the "UCS" datagram exchange: how a list of
// the language becomes the bytes of a datagram and back. Pure functions
// on buffers, with no printing: the caller reports what they tell.
#pragma once

#include "kernel/word.h"

// The largest datagram a format builds or reads (the direct cases aside).
constexpr int UCS_TAMPON = 1500;

// A format is its two letters as a number, the first one high.
constexpr int ucs_code(char a, char b) { return (static_cast<unsigned char>(a) << 8) | static_cast<unsigned char>(b); }

enum UcsGenre : int {
  UCS_TEXTE,   // "CC": the characters themselves
  UCS_HEXA,    // "HB", "HS", "HL": hex digits, 2 a byte
  UCS_ENTIER,  // "UB" ... "SL": floats as integers of 1, 2 or 4 bytes
  UCS_FLOTTANT,  // "FF": IEEE single precision
  UCS_PARTIE,  // "SP": unsigned 16-bit values from an offset, received only
};

struct UcsFormat {
  int code;
  const char* nom;
  UcsGenre genre;
  int largeur;  // bytes a value
  bool signe;
};

// The row of a format string; missing (null or empty) or unknown is "CC".
const UcsFormat& ucs_format(const char* f);
const UcsFormat& ucs_format_cc();

// What an encoding did: `octets` written, `pris` elements of the list
// taken, `besoin` the bytes the whole list needs (above the room when
// the list was cut).
struct UcsEncodage {
  int octets = 0;
  int pris = 0;
  int besoin = 0;
  bool tronque() const { return besoin > octets; }
};

// n hex digits of `s` into values of f.largeur bytes, 2 digits a byte, in
// the byte order `msb`. A digit outside 0-9 A-F (either case) counts 0,
// and a group cut by the end is completed with zeros and still sent. A
// value is written only when it fits whole in `room` bytes.
UcsEncodage ucs_encoder_hexa(const char* s, int n, const UcsFormat& f, bool msb, unsigned char* out, int room);
// n floats (the words of a FLOAT's data) truncated toward zero to
// integers of f.largeur bytes (their low bits), or as "FF" their IEEE
// bits; each value whole or not at all.
UcsEncodage ucs_encoder_nombres(const word* v, int n, const UcsFormat& f, bool msb, unsigned char* out, int room);

// What a decoding did: `elements` made (characters or floats), `voulus`
// those the whole datagram makes (above `elements` when it was cut).
struct UcsDecodage {
  int elements = 0;
  int voulus = 0;
  bool tronque() const { return voulus > elements; }
};

// n bytes as upper-case hex digits, 2*f.largeur a value, into `out` of
// `room` characters (no NUL added); whole values only. A tail short of a
// value is completed with zero bytes.
UcsDecodage ucs_decoder_hexa(const unsigned char* b, int n, const UcsFormat& f, bool msb, char* out, int room);
// n bytes as integers of f.largeur bytes (signed or not) or "FF" floats,
// into `room` float words of `out`. An integer tail short of a value is
// completed with zero bytes; "FF" leaves out a tail short of 4 bytes.
UcsDecodage ucs_decoder_nombres(const unsigned char* b, int n, const UcsFormat& f, bool msb, word* out, int room);

// "SP": unsigned 16-bit values from byte `dep`, `taille` bytes wanted.
struct UcsPartie {
  bool ignore = false;    // dep at or past the end: nothing made
  int longueur = 0;       // bytes taken (cut to `taille`, an odd one completed)
  bool court = false;     // fewer than `taille` bytes were there
  bool impair = false;    // an odd count: a 0 byte was added
  UcsDecodage d;
};
UcsPartie ucs_decoder_partie(const unsigned char* b, int n, int dep, int taille, bool msb, word* out, int room);

// One line of the hex dump of a datagram: the bytes from `debut` (16 at
// most of the n) as "%04X: ", "%02X" each with a blank after every
// fourth, then " : " and the printable characters ("." for the others,
// the high bit stripped) and a newline. The line is NUL ended in `out`.
constexpr int UCS_LIGNE_DUMP = 96;
void ucs_ligne_dump(const unsigned char* b, int n, int debut, char (&out)[UCS_LIGNE_DUMP]);
