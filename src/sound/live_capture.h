// The capture's life: its start from the "AUD" device or `audio ini`,
// its end, the poll of each image and the analysis step.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

// The window of `dim(n)`: 2^n, 1024 for n below 1, 16384 above 14.
int fenetre_de_dim(int n);
// InitDirectSound: an earlier capture freed ("FreeDirectSound\n"), the
// window set and printed, the playback device of ORVELA_AUDIO_OUT opened
// (kept when the beep already opened it), then the capture of
// ORVELA_AUDIO opened and started. 0, or -1 after "ERROR ..." messages
// with both off.
int InitDirectSound(int dim);
// The capture stopped and both back ends closed; the values stay.
void FreeDirectSound();
// The poll: the bytes that came, into the window, then the window
// processing. 0, or -1 after "ERROR HandleNotification" (the values
// stay as they were). Off: -1 without a message.
int HandleNotification();
// The analysis step: a poll and the stages that are on. Unforced, it
// runs once in the whole run; forced, each time. 0, or -1.
int analyse_audio(bool force);
// The running (mean, min, max) after a poll; -1 when the capture is off.
int niveaux_audio(float out[3]);

// The samples of a WAV file's bytes as the capture gives them: 22050 Hz,
// 2 channels, 16 bits (8-bit, mono and other rates converted). Empty with
// the reason in *why when the bytes are not a sound.
std::vector<uint8_t> pcm_capture(const uint8_t* b, size_t n, std::string* why);
