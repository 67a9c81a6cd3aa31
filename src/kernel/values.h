// Value builders and command-segment builders. They write into a given
// place (the evaluation area, a command list) under a limit.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "kernel/word.h"

// The value builders: every result, operand and stored value is written
// through these. Each writes one whole value at `at`, ending at or before
// `limit`; a null limit means the caller has made the room.
//
// The one failure rule: a value that would pass `limit` is not written at
// all; message 12 is reported and the builder returns -12. Otherwise 0.
//
//   build_nil(at, limit)                       NIL
//   build_float(at, limit, f)                  FLOAT of one element
//   build_floats(at, limit, n, f, dimp)        FLOAT of the n floats of `f`,
//                                              n/dimp points of dimp (dimp 1 by default)
//   build_floats(at, limit, vector, dimp)      the same from a vector
//   build_floats_or_nil(at, limit, vector, dimp)  NIL when the vector is empty
//   build_text(at, limit, s, len)              CHAR of len bytes; np counts its
//   build_text(at, limit, s)                   words (len/4 + 1), NUL padded
//   build_text_or_nil(at, limit, string)       NIL when the text is empty
//   build_text_in_place(at, limit, len)        CHAR whose len bytes already
//                                              stand in its data: header, NUL, padding
//   build_zeros(at, limit, n, dimp)            FLOAT of n zeros: returns `at`
//                                              for the caller to fill, or null
//   build_head(at, size, tag, np, dimp)        the four header words alone, no
//                                              check: for a value whose data is
//                                              already in place in checked room
inline void build_head(bloc at, word size, word tag, word np, word dimp = 1) {
  at[0] = size;
  at[1] = tag;
  at[2] = np;
  at[3] = dimp;
}
// Reports message 12 and returns -12: the failure of every builder.
[[gnu::cold]] int build_overflow();
inline bool build_fits(const word* at, long words, const word* limit) {
  return !limit || limit - at >= words;
}
inline int build_nil(bloc at, const word* limit = nullptr) {
  if (!build_fits(at, 4, limit)) return build_overflow();
  build_head(at, 4, T_NIL, 0);
  return 0;
}
inline int build_float(bloc at, const word* limit, float f) {
  if (!build_fits(at, 5, limit)) return build_overflow();
  build_head(at, 5, T_FLOAT, 1);
  at[4] = fw(f);
  return 0;
}
int build_floats(bloc at, const word* limit, int n, const float* f, int dimp = 1);
int build_floats(bloc at, const word* limit, const std::vector<float>& f, int dimp = 1);
int build_floats_or_nil(bloc at, const word* limit, const std::vector<float>& f, int dimp = 1);
// The data words of a CHAR of len bytes: the text, its NUL, the padding.
inline int text_words(size_t len) { return static_cast<int>(len / sizeof(word) + 1); }
int build_text(bloc at, const word* limit, const char* s, size_t len);
int build_text(bloc at, const word* limit, const char* s);
int build_text_or_nil(bloc at, const word* limit, const std::string& s);
int build_text_in_place(bloc at, const word* limit, size_t len);
bloc build_zeros(bloc at, const word* limit, int n, int dimp = 1);

// A HYBRIDE list grown in a vector: an empty list, then parts appended
// (each a whole value, copied), the size and count kept in step.
std::vector<word> liste_vide();
// Empties `list` to the empty list in place, keeping its memory.
void liste_vide(std::vector<word>& list);
void liste_ajoute(std::vector<word>& list, const word* part);
// A FLOAT or LONG value of n numbers as np points of dimp, in a vector.
std::vector<word> valeur_floats(const float* f, int n, int dimp = 1);
std::vector<word> valeur_longs(const int* v, int n, int dimp = 1);
// A CHAR value of the len bytes of `s`, as build_text makes it.
std::vector<word> valeur_texte(const char* s, size_t len);

// A CHAR as a list of names: np becomes the count of blanks plus 1.
void recompte_char(bloc v);

// Segment lists [size, SEGMENTS, count, 0] followed by segments
// [length, code/200, code, optional value]. Each builder appends one
// segment, raising the list's size and count. This family reports the
// dimension message when the limit is passed and writes nothing.
void seg_ini(bloc s, const word* lim);
void seg_add(bloc s, const word* lim, int code);
// The CHAR in a segment has np the byte length of the text.
void seg_add_char(bloc s, const word* lim, int code, const char* text);
void seg_add_f1(bloc s, const word* lim, int code, float a);
void seg_add_f2(bloc s, const word* lim, int code, float a, float b);
void seg_add_f3(bloc s, const word* lim, int code, float a, float b, float c);
void seg_add_f4(bloc s, const word* lim, int code, float a, float b, float c, float d);
void seg_add_f6(bloc s, const word* lim, int code, float a, float b, float c, float d, float e,
                float f);
void seg_add_tab(bloc s, const word* lim, int code, int n, const float* tab);
void seg_add_val(bloc s, const word* lim, int code, const word* val);
// A copy of a FLOAT as np*dimp points of dimension 1.
void seg_add_flat(bloc s, const word* lim, int code, const word* val);

// The same, returning -12 past the limit instead of reporting; 0 when done.
int seg_ini_r(bloc s, const word* lim);
int seg_add_r(bloc s, const word* lim, int code);
// 1 to 4 floats from `f`.
int seg_add_fn_r(bloc s, const word* lim, int code, int n, const float* f);
int seg_add_val_r(bloc s, const word* lim, int code, const word* val);
