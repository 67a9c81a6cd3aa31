// The primary buffer: the playback device that InitDirectSound creates
// before the capture, and that the beep and the sounds playing along the
// animation open on demand. Everything played is added into its ring,
// held within 16 bits, at a place ahead of the play position; the image
// loop pumps it to the device. One struct, reached through primaire().
#pragma once
#include <string>

struct AudioPlayback;

struct PrimaryBuffer {
  AudioPlayback* sortie = nullptr;
  // An opening on demand failed and was reported: not tried again before
  // the next set-up (InitDirectSound, `audio play`).
  int refus = 0;
  long long curseur_bip = 0;   // where the next tone starts, in bytes
  long long curseur_sons = 0;  // where the next image of the sounds goes
};
PrimaryBuffer& primaire();

// Opens the playback back end of ORVELA_AUDIO_OUT. Null when it is open,
// else the DirectSound step that failed ("DirectSoundCreate",
// "CreateSoundBuffer", "SetFormat"), with the system's words in *detail.
const char* ouvre_primaire(std::string* detail);
void ferme_primaire();
// Open, or opened now; a failure prints its step once (the system's words
// under `debug`) and is not tried again until the next set-up.
bool primaire_pret();
// The pump of each image: what was added since goes to the device. A
// device lost is reported and closed.
void pompe_primaire();

// The place in bytes where something queued at `curseur` starts: at the
// cursor, or at the play position once that has passed it. -1 when the
// device is closed or the place is more than a quarter of a second ahead
// (the image loop runs faster than what it queues: that piece is dropped).
long long place_primaire(long long curseur);
// Adds `trames` frames made by gen(ctx, j, left-right) at byte `at`,
// each sample held within 16 bits. The bytes added.
using GenerateurTrame = void (*)(const void* ctx, int j, int lr[2]);
int mixe_primaire(long long at, int trames, GenerateurTrame gen, const void* ctx);
