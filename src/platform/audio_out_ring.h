// The playback ring shared by the playback back ends (platform only).
#pragma once
#include <alsa/asoundlib.h>

#include <cstdint>
#include <string>

#include "platform/audio_out.h"

struct AudioPlayback {
  uint8_t* ring = nullptr;   // AUDIO_OUT_RING bytes
  long long joues = 0;       // the play position
  long long ecrits = 0;      // the write position
  long long propres = 0;     // the ring holds written bytes or silence up to here
  // ALSA
  snd_pcm_t* pcm = nullptr;
  long long tampon_alsa = 0;  // frames of ALSA's own buffer
  // the clock
  double (*clock)() = nullptr;
  double debut = 0;
  long long sautes = 0;       // bytes of the clock skipped over long pauses
  // the WAV file
  int fd = -1;
  long long donnees = 0;      // bytes of samples in the file

  // [at, at + n) of the ring, cut to a ring ahead of the play position,
  // as one or two pieces; what lies past the written bytes is silenced
  // first. The count.
  int etendue(long long at, int n, AudioOutStretch out[2]);
  // The play position moves on by n bytes, which were handed to the device.
  void avance(long long n);
};

int pump_alsa_out(AudioPlayback& p, std::string* detail);
int pump_clock_out(AudioPlayback& p, std::string* detail);
// The WAV file's end: its sizes patched; false with the system's words.
bool wav_out_patch(AudioPlayback& p, std::string* detail);
void alsa_out_close(AudioPlayback& p);
void wav_out_close(AudioPlayback& p);
