// The word and the bloc: every value, property, command and code is a
// contiguous array of 32-bit words with a four-word header
// (size, tag, np, dimp) followed by data.
#pragma once
#include <bit>
#include <cstdint>
#include <span>

using word = int32_t;
using bloc = word*;

// Tags of word 1. Value kinds first, then structural tags.
enum Tag : word {
  T_NIL = -78,
  T_CHAR = -1000,
  T_LONG = -1048,
  T_FLOAT = -1002,
  T_HYBRIDE = -1007,
  T_SHORT = -1055,
  T_SEGMENTS = -1039,
  T_PROPRIETES = -1060,
  T_OBJETS = -1063,
  T_MALLOCS = -1061,
  T_CODE = -1015,
  T_CODE_OBJ = -1012,
  T_CHAINE = -1044,
  T_COMPILED = -1021,
  T_IMAGE = -1053,
  T_IMAGE_PREV = -273,
  T_SOUND = -1057,
  T_INDIRECT = -1051,
  T_STACKED = -1027,
};

// Header accessors.
inline word& size(bloc b) { return b[0]; }
inline word& tag(bloc b) { return b[1]; }
inline word& np(bloc b) { return b[2]; }
inline word& dimp(bloc b) { return b[3]; }
inline word* data(bloc b) { return b + 4; }
inline const word* data(const word* b) { return b + 4; }
inline word size(const word* b) { return b[0]; }
inline word tag(const word* b) { return b[1]; }
inline word np(const word* b) { return b[2]; }
inline word dimp(const word* b) { return b[3]; }

// Next block of a sequence: positive sizes step by their size, negative
// ones are two-word tokens. A size of 0 ends the sequence.
inline bloc next(bloc b) { return b + (b[0] < 0 ? 2 : b[0]); }

// Floats live in words by bit copy, never by pointer punning.
inline float wf(word w) { return std::bit_cast<float>(w); }
inline word fw(float f) { return std::bit_cast<word>(f); }
inline float getf(const word* b, int i) { return wf(b[4 + i]); }
inline void setf(bloc b, int i, float f) { b[4 + i] = fw(f); }

// Bytes of a CHAR value.
inline char* text(bloc b) { return reinterpret_cast<char*>(b + 4); }
inline const char* text(const word* b) { return reinterpret_cast<const char*>(b + 4); }

// Number of data words of a flat value.
inline int data_words(const word* b) { return b[0] - 4; }
inline std::span<word> words(bloc b) { return {b + 4, static_cast<size_t>(b[0] > 4 ? b[0] - 4 : 0)}; }
