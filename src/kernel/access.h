// Reading elements and points of values, and appending points to a value
// growing on the evaluation area.
#pragma once
#include "kernel/entier.h"
#include "kernel/word.h"

// The i-th (0-based) sub-block of a HYBRIDE, or null.
const word* sous_bloc(const word* v, int i);

// Element i (0-based) of a FLOAT (the float truncated), a CHAR (its i-th
// blank-separated word) or a HYBRIDE (a FLOAT number or a CHAR name).
// Returns 0 with *number set, 1 with the text in `name`, or -1 (reported:
// an index out of range prints "%d: " and message 61).
int get_ind(const word* v, int i, int* number, char* name, int name_size);

// Point i (1-based): its kind, its number of words and where they start.
// HYBRIDE points are the sub-blocks, dimp 0 values have entries opening
// with their length, negative dimp values have slots (an empty slot
// gives 0 words). Out of range prints "%d: " and message 66; -1.
int get_point(const word* v, int i, int* kind, int* dimp, const word** point);

// The i-th (0-based) blank-separated word of `text` into `buf` of `size`
// bytes. Returns its length, or -1 if there is none.
int mot_i(const char* text, int i, char* buf, int size);

// A value of one point of dimp words copied from a flat source. 0 or -12.
int val_point(bloc place, const word* lim, int kind, int dimp, const word* src);

// Point i (1-based) of v appended to the FLOAT dst growing at the top of
// the area: LONG converted, HYBRIDE sub-blocks read, empty slots skipped.
// 0, -12 past the limit (nothing written), -1 on a bad point (reported).
int val_concat_point(bloc dst, const word* lim, const word* v, int i);
// All points of v. 0, or -1.
int val_append(bloc dst, const word* lim, const word* v);

// 1 for two CHAR values with equal strings; anything else differs: 0.
int egal_val(const word* a, const word* b);
