// Sounds that play along the animation. A sound whose `dynamic` value v
// is above 0 (`dynamic audio(id)=v`) moves on v images at each image of
// the animation, from its start again past its end; its place, in
// images, is its `time` property. It is heard: the stretch each image
// covers goes to the primary buffer in the time of one image, so that at
// v images an image its pitch is v times its own. A link of a sound to a volume makes the
// volume's scale follow the sound's level at that place: the animation's
// part of the scale (the deltas of its transformation block) is gain *
// level on each axis, the level being the mean absolute sample of the
// image's window on the first channel, in units of the full scale.
#pragma once
#include "kernel/objet.h"
#include "sound/sound_object.h"

// The level of image n of the sound (0 outside it or for samples not of
// 1 or 2 bytes).
float niveau_image(Objet* o, long long n);
// The sound's place in images, 0 before it plays.
float position_son(const Objet* o);

// AUDIO_VOL: the volumes linked to the sound with that gain (a link that
// exists takes the new gain); the sound plays when it had no `dynamic`
// value. 0, or -1 after a report.
int AUDIO_VOL(Objet* son, const int* vols, int n, float gain);
// The sound's links to those volumes (all of its links when n is 0)
// removed, the volumes' scale deltas cleared. The number removed.
int retire_audio_vol(int son, const int* vols, int n);
// SET_PARAM_AUDIO_VOL: the gain of the links that exist; their number.
int SET_PARAM_AUDIO_VOL(int son, const int* vols, int n, float gain);
// WRITE_AUDIO_VOL_1: one link's volume given the level at the sound's
// place; 0, or -1 when the sound or the volume is gone.
int WRITE_AUDIO_VOL_1(const LienVol& l);
// WRITE_AUDIO_VOL: every link.
void WRITE_AUDIO_VOL();
// AUDIO_DYNAMIC: the sound plays at v images an image (stopped at 0 or
// below), from the place it has. 0, or -1 after a report.
int AUDIO_DYNAMIC(Objet* o, float v);
// The sound's `dynamic` value, 0 without one.
float vitesse_son(const Objet* o);
// The playing sounds moved on by one image; the stretch each covers goes
// to the primary buffer, opened on demand.
void joue_sons();
// The sound's step of an image: the primary buffer pumped, the recording
// of the live level, the playing sounds, then the linked volumes. Allocates nothing once each
// playing sound has its `time`. Always 0.
int etape_son();
