// Shapes that the kinds of device share: results of bytes and floats
// mapped by `tran` and `coe`, the waits that let Ctrl-C through, and the
// reports of a bad device or option.
#pragma once
#include <cstddef>

#include "device/device_kinds.h"

// The bytes read as the read asks: a CHAR of them, or with T_FLOAT one
// mapped value a byte. NIL when n is 0.
int resultat_octets(Lecture& l, const Periph& p, const unsigned char* b, int n);
// Bytes as floats of 4 bytes (in the order of `inv`), mapped; with
// T_CHAR the bytes themselves. A tail short of 4 bytes is left out.
int resultat_mots(Lecture& l, const Periph& p, const unsigned char* b, int n);
// n floats mapped into a FLOAT.
int resultat_mappe(Lecture& l, const Periph& p, const float* f, int n);
// The bytes a value writes: a CHAR's text, or its numbers as floats of
// 4 bytes (`inv` order) when `octet` is false, or one byte each when it
// is true. False after message 66 for a value with neither.
bool octets_de_valeur(const Periph& p, const word* v, bool octet, const unsigned char** data, size_t* n);
// Sleeps ms milliseconds in slices of 100 ms; false when Ctrl-C came
// (the interpreter then holds its dialogue at its next safe point).
bool attendre_ms(long long ms);
// Stops a wait when Ctrl-C came.
bool interruption_demandee();
// Live audio is off: `audio` and message 106.
void err_son();
// "device n ILLEGAL": a device that is not open or out of range.
void err_device(int n);
// Slot n, or null after "%d [0,%d]" and message 66 when n is outside 1..100.
Periph* periph_ou_erreur(int n);
