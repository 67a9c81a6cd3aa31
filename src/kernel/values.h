// Value constructors and command-segment builders. They write into a
// given place (the evaluation area, a command list) under a limit; a
// null limit means no check.
#pragma once
#include <cstddef>

#include "kernel/word.h"

// FLOAT values with dimp 1. Past the limit they return -12 and leave
// only the size word written; otherwise 0.
int val_floats(bloc v, const word* lim, int n, const float* f);
// The header of a FLOAT of n elements, whose data the caller writes
// next (setf); 0 or -12.
int val_floats_room(bloc v, const word* lim, int n);
int val_0(bloc v, const word* lim);
int val_1(bloc v, const word* lim, float a);
int val_2(bloc v, const word* lim, float a, float b);
int val_3(bloc v, const word* lim, float a, float b, float c);
int val_4(bloc v, const word* lim, float a, float b, float c, float d);
int val_5(bloc v, const word* lim, float a, float b, float c, float d, float e);
int val_6(bloc v, const word* lim, float a, float b, float c, float d, float e, float f);

// Empty NIL: 0, -1 past the limit, 0 for a null place.
int val_nil(bloc v, const word* lim);
// CHAR with np the word count of the text (length/4 + 1). 0 or -12.
int val_char(bloc v, const word* lim, const char* text);
// CHAR of the first len bytes of `text`, which need not end in a NUL.
int val_char_n(bloc v, const word* lim, const char* text, size_t len);
// Closes a CHAR whose first len bytes already stand in its data: the
// header, the NUL and the padding. 0 or -12.
int val_char_en_place(bloc v, const word* lim, size_t len);
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
