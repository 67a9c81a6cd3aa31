// Synthesis into a stretch of a sound. INSERT_AUDIO_TIME turns a time
// interval in images into a stretch of frames; a generator of the
// GENERATE_ family then writes (or, with `add`, adds) its samples there,
// the same value on every channel, held within the full scale.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// A stretch of frames of a sound, ready for writing.
struct Tranche {
  uint8_t* p = nullptr;  // first byte of the first frame
  long long n = 0;       // frames
  int nb_octet = 2;
  int canaux = 1;
  int Rate = 44100;
  bool ajoute = false;   // add to the samples there rather than replace them
};

// Writes (or adds) v, in units of the full scale, on every channel of frame k.
void pose(const Tranche& t, long long k, double v);

// The options a generator reads, from the command's words.
struct Generation {
  std::vector<std::vector<float>> sin;  // `sin(f, a, p)` items
  std::vector<float> coe;               // an amplitude curve over the stretch
  std::vector<float> interpol;          // `interpol(f2[, a2])`
  std::vector<float> var;               // `var(depth, rate)`: frequency vibrato
  std::vector<float> puls;              // `puls(f, a, width)`
  std::vector<float> period;            // `period(f, a, v1, ..., vn)`
  std::vector<float> rand;              // `alea(a)`: noise
  int harmoniques = 0;                  // `NP(n)`, at most 100
  bool cut = false;
  bool add = false;                     // `add`: mixed into the samples there
  Objet* source = nullptr;              // `audio(id, source)`
};

// The stretch of images [t1, t2) of the sound: t1 below 0 is 0, t2 past
// the end is the end. The first frame is t1 * Rate / 25, rounded up to
// even for 16-bit sounds. False (nothing to do) when t1 is past the end,
// t2 is not above t1, or samples are not of 1 or 2 bytes.
bool tranche_temps(Objet* o, float t1, float t2, Tranche& t);

// Each writes the whole stretch.
void GENERATE_SIN(const Tranche& t, float f, float a, float phase, const std::vector<float>& curve);
void GENERATE_SIN_SIN(const Tranche& t, const std::vector<float>& s1, const std::vector<float>& s2);
void GENERATE_SIN_N(const Tranche& t, float f, float a, float phase, int n);
void GENERATE_AUDIO_SIN_INTERPOL(const Tranche& t, float f1, float a1, float phase, float f2, float a2);
void GENERATE_AUDIO_SIN_VAR(const Tranche& t, float f, float a, float phase, float depth, float rate);
void GENERATE_AUDIO_RAND(const Tranche& t, float a);
void GENERATE_AUDIO_CUT(const Tranche& t);
void GENERATE_AUDIO_PULS(const Tranche& t, float f, float a, float width);
void GENERATE_AUDIO_PERIOD(const Tranche& t, float f, float a, const float* v, int nv);
void GENERATE_AUDIO_AUDIO(const Tranche& t, Objet* source);

// INSERT_AUDIO_TIME: the stretch `time(t1, t2)` of the sound, then the
// generator that the options select. 1 when samples were written, 0 when
// the stretch is empty, -1 after a report.
int INSERT_AUDIO_TIME(Objet* o, float t1, float t2, const Generation& g);
