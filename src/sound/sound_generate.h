// Synthesis into a stretch of a sound. INSERT_AUDIO_TIME turns a time
// interval in images into a stretch of frames; a generator of the
// GENERATE_ family then writes (or, with `add`, adds) its samples there,
// the same value on every channel, held within the full scale.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// A time past every sound's end: the default end of `time(t1, t2)`, which
// the sound's length as a float of images could miss by rounding.
constexpr float FIN_SON = 1e9f;

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
  std::vector<float> law;               // `law(d)`: a decay of d a second
  std::vector<float> poi;               // `poi(v1, ..., vn)`: a drawn stretch
  std::vector<float> module;            // `module(fm, index, ...)`: frequency modulation
  std::vector<float> min;               // `min(v)`: a gate
  bool has_interpol = false;            // `interpol`, with or without values
  bool has_memory = false;              // `memory`: the raw reading stream's values
  int harmoniques = 0;                  // `NP(n)`, at most 100
  bool cut = false;
  bool add = false;                     // `add`: mixed into the samples there
  Objet* source = nullptr;              // `audio(id, source)`
  Objet* stock = nullptr;               // `stock(id)`: the sound whose `stock` pairs lead
};

// The stretch of images [t1, t2) of the sound: t1 below 0 is 0, t2 past
// the end is the end. The first frame is t1 * Rate / 25, rounded up to
// even for 16-bit sounds. False (nothing to do) when t1 is past the end,
// t2 is not above t1, or samples are not of 1 or 2 bytes.
bool tranche_temps(Objet* o, float t1, float t2, Tranche& t);

// The amplitudes of a sound's `stock` pairs as fractions of the largest
// (their absolute values), one an image; empty without pairs.
std::vector<float> enveloppe_stock(const Objet* o);

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
// A sine of f, a, phase whose amplitude decays by exp(-d * seconds): a
// plucked note.
void GENERATE_AUDIO_LAW(const Tranche& t, float f, float a, float phase, float d);
// The n values v spread evenly over the stretch, joined by straight lines.
void GENERATE_AUDIO_POI(const Tranche& t, const float* v, int n);
// The values, one a frame, as they are (units of the full scale); the
// stretch past them is left as it was.
void GENERATE_AUDIO_MEMORY(const Tranche& t, const std::vector<float>& v);
// A cross-fade from the source's samples to a sine of f, a, phase.
void GENERATE_AUDIO_AUDIO_SIN_INTERPOL(const Tranche& t, Objet* source, float f, float a, float phase);
// One period taken from the source's first frames (Rate / f of them),
// repeated at frequency f and amplitude a: a wave table from a sound.
void GENERATE_AUDIO_PERIOD_1(const Tranche& t, Objet* source, float f, float a);
// A sine of f, a, phase whose amplitude follows the amplitudes of the
// `stock` pairs of `stock`, one pair an image from the stretch's start,
// as fractions of the largest.
void GENERATE_STOCK_AUDIO(const Tranche& t, Objet* stock, float f, float a, float phase);
// Frequency modulation: the sine of f, a, phase with m[0] sin(2 pi m[1]
// s) ... added to its phase, from pairs (fm, index) of m: one modulator
// (MODULE_2) or several summed (MODULE_N).
void INSERT_AUDIO_TIME_MODULE_2(const Tranche& t, float f, float a, float phase, float fm, float index);
void INSERT_AUDIO_TIME_MODULE_N(const Tranche& t, float f, float a, float phase, const std::vector<float>& m);

// The members that shape the samples already in the stretch.
// A straight line from the stretch's first sample to its last, on each channel.
void GENERATE_AUDIO_INTERPOL(const Tranche& t);
// A tremolo: each sample times 1 + depth * sin(2 pi rate seconds).
void GENERATE_AUDIO_VAR(const Tranche& t, float depth, float rate);
// A gate: samples under v (a fraction of the full scale) become silence.
void GENERATE_AUDIO_MIN(const Tranche& t, float v);
// Each image's samples times its `stock` amplitude as a fraction of the
// largest: the envelope of another sound's analysis.
void GENERATE_AUDIO_STOCK(const Tranche& t, Objet* stock);
// The decay alone: each sample times exp(-d * seconds).
void decroissance(const Tranche& t, float d);

// INSERT_AUDIO_TIME: the stretch `time(t1, t2)` of the sound, then the
// generator that the options select. 1 when samples were written, 0 when
// the stretch is empty, -1 after a report.
int INSERT_AUDIO_TIME(Objet* o, float t1, float t2, const Generation& g);
