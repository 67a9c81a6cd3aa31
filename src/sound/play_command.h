// `audio play(f1, f2, ...) [time(ms)] [speed(step)]`: the note table of
// the beep path, one note an image read at a moving position (Hz, 20 to
// 11025); `time` the length of each note (1 to 1000 ms; 40, one image,
// by default), `speed` the step of the position (1 by default). `audio
// play` alone empties the table.
#pragma once
#include "kernel/word.h"

int audio_play(word* s, const word* lim);
