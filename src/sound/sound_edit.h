// Edits of a sound's length and speed, and its release.
#pragma once
#include "kernel/objet.h"

// RESIZE_WAV: the data made `frames` frames long (cut, or lengthened
// with silence); the header's lengths follow, in the form the file had
// (a generated header's RIFF length holds the file size). 0, or -1
// after a report.
int RESIZE_WAV(Objet* o, long long frames);
// AUDIO_FORMAT: the samples made of `nb_octet` bytes (1 or 2), scaled
// from one full scale to the other; the header's fields follow.
// 0, or -1 after a report.
int AUDIO_FORMAT(Objet* o, int nb_octet);
// SPEED_AUDIO: the sound played `f` times faster: frames / f frames,
// each channel resampled by straight lines. 0, or -1 after a report.
int SPEED_AUDIO(Objet* o, float f);
// The format fields of the record and of the file's "fmt " chunk made
// these (bytes a second and block align as a reader expects them); the
// data bytes are left as they are, Images follows.
void pose_format(Objet* o, int rate, int channels, int nb_octet);
