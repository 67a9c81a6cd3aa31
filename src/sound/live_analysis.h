// What is drawn from a window of captured bytes: the processing of each
// sample, the ring of averages and the running levels, the envelope, the
// spectrum and the difference with the last window, and the first
// crossing of a level. None of it allocates.
#pragma once
#include <cstdint>

#include "sound/live_state.h"

// Step 2 of the poll: n1 + n2 new bytes (two stretches of the ring).
// Fewer than the window: the window moves on by that many, oldest out,
// and the new bytes come at its front; as many or more: the window is the
// first `Fenetre` of them.
void entre_octets(LiveAudio& a, const uint8_t* p1, int n1, const uint8_t* p2, int n2);
// The window processing: `Signal` from `Echantillons` sample by sample,
// then the ring of averages, the running levels and the history of maxima.
void traitement_fenetre(LiveAudio& a);
// The envelope of the n values x: blocks of e.n values, gated and limited
// with the bars times e.scale; each block's peak and its change since the
// last pass. The first peak is set to 0.
void passe_enveloppe(const float* x, int n, float gate, float limit, Enveloppe& e);
// The stages that are on (envelope, spectrum and their envelopes), then
// `Derivee` and `Precedent`. 0, or -1 when the FFT refused.
int etapes_analyse(LiveAudio& a);
// The index of the first sample of `Signal` above level + tolerance, as
// a float; 0 when none is.
float premier_passage(const LiveAudio& a, float level, float tolerance);
