#include "platform/audio_out.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/audio_out_ring.h"

AudioSource audio_sink(std::string* path) {
  const char* e = std::getenv("ORVELA_AUDIO_OUT");
  if (!e || !*e) {
    // A capture from a file or from nothing is a run with no sound card
    // in mind (tests, a machine without one): nothing is played.
    const AudioSource capture = audio_source(nullptr);
    return capture == AudioSource::file || capture == AudioSource::none ? AudioSource::none : AudioSource::alsa;
  }
  return audio_choice(e, path);
}

int AudioPlayback::etendue(long long at, int n, AudioOutStretch out[2]) {
  at = std::max(at, joues);
  at -= at % AUDIO_BLOCK;
  const long long fin = std::min(at + std::max(n, 0), joues + AUDIO_OUT_RING);
  n = static_cast<int>(std::max(fin - at, 0LL));
  // Silence where nothing was written since the ring last held these bytes.
  for (long long q = propres; q < fin;) {
    const int i = static_cast<int>(q % AUDIO_OUT_RING);
    const int k = static_cast<int>(std::min<long long>(fin - q, AUDIO_OUT_RING - i));
    std::memset(ring + i, 0, static_cast<size_t>(k));
    q += k;
  }
  propres = std::max(propres, fin);
  const int i = static_cast<int>(at % AUDIO_OUT_RING);
  const int k = std::min(n, AUDIO_OUT_RING - i);
  out[0] = {ring + i, k};
  out[1] = {ring, n - k};
  return n;
}

void AudioPlayback::avance(long long n) {
  joues += n;
  ecrits = std::max(ecrits, joues);
  propres = std::max(propres, joues);
}

void audio_out_close(AudioPlayback* p) {
  if (!p) return;
  if (p->pcm) alsa_out_close(*p);
  if (p->fd >= 0) {
    // What the clock made due since the last image is played out.
    pump_clock_out(*p, nullptr);
    wav_out_close(*p);
  }
  delete[] p->ring;
  delete p;
}

int audio_out_pump(AudioPlayback* p, std::string* detail) {
  return p->pcm ? pump_alsa_out(*p, detail) : pump_clock_out(*p, detail);
}

long long audio_out_played(const AudioPlayback* p) { return p->joues; }
long long audio_out_written(const AudioPlayback* p) { return p->ecrits; }

int audio_out_lock(AudioPlayback* p, long long at, int bytes, AudioOutStretch out[2], long long* from) {
  const int n = p->etendue(at, bytes, out);
  if (from) *from = std::max(at, p->joues) - std::max(at, p->joues) % AUDIO_BLOCK;
  return n;
}

void audio_out_unlock(AudioPlayback* p, long long at, int bytes) {
  if (bytes > 0) p->ecrits = std::max(p->ecrits, std::min(at + bytes, p->propres));
}
