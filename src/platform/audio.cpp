#include "platform/audio.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/audio_ring.h"

AudioSource audio_choice(const char* e, std::string* path) {
  if (!e || !*e || std::strcmp(e, "alsa") == 0) return AudioSource::alsa;
  if (std::strcmp(e, "none") == 0) return AudioSource::none;
  if (std::strncmp(e, "file:", 5) == 0) {
    if (path) *path = e + 5;
    return AudioSource::file;
  }
  if (path) *path = e;
  return AudioSource::unknown;
}

AudioSource audio_source(std::string* path) { return audio_choice(std::getenv("ORVELA_AUDIO"), path); }

void AudioCapture::put(const uint8_t* b, int n) {
  for (int done = 0; done < n;) {
    const int at = static_cast<int>(ecrits % AUDIO_RING);
    const int k = std::min(n - done, AUDIO_RING - at);
    std::memcpy(ring + at, b + done, static_cast<size_t>(k));
    done += k;
    ecrits += k;
  }
  if (ecrits - lus > AUDIO_RING) lus = ecrits - AUDIO_RING;
}

void audio_close(AudioCapture* c) {
  if (!c) return;
  if (c->pcm) snd_pcm_close(c->pcm);
  delete c;
}

int audio_pending(AudioCapture* c, std::string* detail) {
  if (c->pcm) {
    if (pump_alsa(*c, detail) < 0) return -1;
  } else {
    pump_bytes(*c);
  }
  return static_cast<int>(c->ecrits - c->lus);
}

int audio_lock(AudioCapture* c, int bytes, AudioStretch out[2]) {
  const int attente = static_cast<int>(c->ecrits - c->lus);
  if (bytes > attente) bytes = attente;
  if (bytes < 0) bytes = 0;
  const int at = audio_read_position(c);
  const int k = std::min(bytes, AUDIO_RING - at);
  out[0] = {c->ring + at, k};
  out[1] = {c->ring, bytes - k};
  return bytes;
}

void audio_unlock(AudioCapture* c, int bytes) {
  if (bytes > 0) c->lus = std::min(c->lus + bytes, c->ecrits);
}

int audio_read_position(const AudioCapture* c) { return static_cast<int>(c->lus % AUDIO_RING); }
