// `.stock` files: a sound reduced to one (frequency, amplitude) pair per
// image, raw 4-byte floats with no header; and the level file of
// `write audio(id) stock(t)`.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "kernel/objet.h"

struct FormeStock {
  int Rate = 0;
  int Channel = 0;
  int Nb_octet = 0;
  int Images = 0;
};

// The pairs of the data bytes d (n of them). Windows of Rate / 25
// frames, one per image; sum = the sum of the first channel's samples
// (8-bit ones as the unsigned bytes stored). The count of rising
// events above the sum: 8-bit sounds read each sample of the window;
// 16-bit ones read one and the same sample, the one just after the
// window (0 past the data), as the files in use were made. 8-bit:
// (count / 20000, sum / (Rate * 127)); 16-bit: (count / (c1 * 20000),
// sum / (c2 * Rate * 32767)). Empty for samples not of 1 or 2 bytes.
std::vector<float> analyse_stock(const uint8_t* d, long long n, const FormeStock& f, float c1, float c2);

// The pairs into the sound's `stock` property: np pairs of dimension 2.
// 0, or -1 after a report.
int garde_stock(Objet* o, const std::vector<float>& pairs);
// WAV_STOCK_AUDIO_1: the pairs of a sound into its `stock` property, and
// with a name (".stock" put after it when missing) into that file.
// 0, or -1 after a report.
int WAV_STOCK_AUDIO_1(Objet* o, const char* name, float c1, float c2, std::vector<float>& pairs);
// AUDIO_STOCK_ID: a `.stock` file into the `stock` property of the sound
// (made when absent). 0, or -1 after a report.
int AUDIO_STOCK_ID(int id, const std::string& name, std::vector<float>& pairs);
// WAV_WRITE_STOCK_AUDIO: one float per step of `pas` seconds, the mean
// absolute sample of the step (over its first `moyenne` seconds when
// that is shorter) in units of the full scale; with `max`, divided by the
// largest of them. 0, or -1 after a report.
int WAV_WRITE_STOCK_AUDIO(Objet* o, const std::string& name, float pas, float moyenne, bool max);
