// The ring shared by the capture back ends (platform only).
#pragma once
#include <alsa/asoundlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/audio.h"

struct AudioCapture {
  uint8_t ring[AUDIO_RING];
  long long ecrits = 0;  // bytes put into the ring since the start
  long long lus = 0;     // bytes taken out
  // ALSA
  snd_pcm_t* pcm = nullptr;
  // bytes
  std::vector<uint8_t> source;
  size_t source_pos = 0;
  double (*clock)() = nullptr;
  double debut = 0;      // the clock when the play started
  long long dus = 0;     // bytes delivered by the clock so far

  // Puts n bytes into the ring; the oldest unread ones are lost when it
  // is full, as a capture buffer overwrites.
  void put(const uint8_t* b, int n);
};

// What each back end brings in at a poll: the bytes the clock made due,
// or what ALSA has captured (-1 with ALSA's words when the stream is lost).
void pump_bytes(AudioCapture& c);
int pump_alsa(AudioCapture& c, std::string* detail);
