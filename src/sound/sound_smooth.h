// Click removal: a jump between two samples n apart larger than the
// threshold has the stretch around it replaced by a straight line.
#pragma once
#include "kernel/objet.h"

struct Lissage {
  int n = 2;            // distance of the two samples compared
  float coe = 0.03f;    // threshold, as a fraction of the full scale
  int largeur = 0;      // half-length of the stretch replaced
  float bas = 0, haut = 0;  // bounds of the values written, in sample units
};

// The defaults for a sound: width from the sound state, bounds the full scale.
Lissage lissage_defaut(const Objet* o);
// Walks each channel's samples. Where |s[i+n] - s[i]| exceeds coe times
// the full scale, samples i-width .. i+width become the straight line
// between the two ends, held within the bounds, and the walk goes on
// from i+width. It stops 2 * width samples before the end. The number
// of stretches replaced, or -1 when the samples are not of 1 or 2 bytes.
int SMOOTH_AUDIO_1(Objet* o, const Lissage& l);
