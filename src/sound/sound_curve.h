// A sound drawn in the scene: WAV_AUDIO_CURVE makes a volume of lines
// tracing the samples, one line of segments a channel, stacked; and
// DISPLAY_AUDIO_ID_1 prints the labels of that drawing.
#pragma once
#include "kernel/objet.h"

struct TraceSon {
  float t1 = 0, t2 = -1;   // images drawn; t2 below t1: to the end
  int points = 1000;       // vertices a channel, at most the frames drawn
  float largeur = 1000, hauteur = 200;  // the drawing's size; a channel takes hauteur
  bool inv = false;        // drawn upside down
};

// The volume `vol` (an existing one of that number replaced): for each
// channel c, `points` vertices from x = -largeur/2 to largeur/2, at y =
// the sample of largest magnitude of its stretch of frames times
// hauteur/2, the channels' lines hauteur apart, the first at the top;
// consecutive vertices joined by two-vertex facets. Null after a report.
Objet* WAV_AUDIO_CURVE(int vol, Objet* son, const TraceSon& t);
// The labels of the drawing, a line a channel: "channel " and its
// number, "freq" and "amp" of the sound's first `stock` pair (0 without
// one), "max" the largest magnitude drawn in units of the full scale,
// and "inv" or "inv inv" as the drawing is upside down or not.
void DISPLAY_AUDIO_ID_1(Objet* son, const TraceSon& t, const float* max_canal);
