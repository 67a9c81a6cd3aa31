// Sounds made from sounds: stretches taken, sounds joined, copied,
// renumbered, compared and multiplied, and the header of one given to
// another. Each returns 0 (or the sound made), or -1 / null after a report.
#pragma once
#include "kernel/objet.h"

// AUDIO_AUDIO_TIME: sound `id` made of the images [t1, t2) of `source`,
// in its format (id may be the source's own number).
Objet* AUDIO_AUDIO_TIME(int id, Objet* source, float t1, float t2);
// AUDIO_AUDIO_AUDIO_TIME: sound `id` made of `a` with `b` inserted at
// image t (past a's end: appended), b's samples turned to a's format
// (full scale to full scale, channels taken in turn).
Objet* AUDIO_AUDIO_AUDIO_TIME(int id, Objet* a, Objet* b, float t);
// SET_AUDIO_AUDIO: sound `id` a copy of `source`, header and samples.
Objet* SET_AUDIO_AUDIO(int id, Objet* source);
// MOVE_AUDIO_ID: the sound renumbered, its links to volumes with it; one
// already of that number is removed first.
int MOVE_AUDIO_ID(Objet* o, int id);
// COPY_HEADER: the format of `source` (rate, channels, sample size) given
// to `o`, whose data bytes are read anew in that format.
int COPY_HEADER(Objet* o, Objet* source);
// SET_OCTET_NUMBER: the sample size set to n bytes (1, 2, 4) or bits (8,
// 16, 32) without touching the data bytes.
int SET_OCTET_NUMBER(Objet* o, int n);
// COM_AUDIO: the two sounds compared over their common frames and
// channels, in units of each one's full scale: the root mean square of
// the difference and its largest absolute value.
int COM_AUDIO(Objet* a, Objet* b, float out[2]);
// MOD_AUDIO: the samples of the images [t1, t2) of `o` multiplied by the
// samples of `source` from its start (ring modulation); past the
// source's end, silence.
int MOD_AUDIO(Objet* o, Objet* source, float t1, float t2);
