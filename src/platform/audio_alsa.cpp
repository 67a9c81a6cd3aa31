// The ALSA back end: the "default" capture device, non-blocking, read
// into the ring at each poll.
#include <algorithm>
#include <cerrno>

#include "platform/audio_ring.h"

namespace {

// ALSA prints its own complaints on standard error: the caller reports.
void silent(const char*, int, const char*, int, const char*, ...) {}

}  // namespace

int pump_alsa(AudioCapture& c, std::string* detail) {
  uint8_t tampon[4096];
  for (;;) {
    const snd_pcm_sframes_t r = snd_pcm_readi(c.pcm, tampon, sizeof tampon / AUDIO_BLOCK);
    if (r > 0) {
      c.put(tampon, static_cast<int>(r) * AUDIO_BLOCK);
      continue;
    }
    if (r == -EAGAIN || r == 0) return 0;
    // An overrun or a suspension: the stream is restarted once.
    if (snd_pcm_recover(c.pcm, static_cast<int>(r), 1) < 0 || snd_pcm_start(c.pcm) < 0) {
      if (detail) *detail = snd_strerror(static_cast<int>(r));
      return -1;
    }
    return 0;
  }
}

AudioCapture* audio_open_alsa(std::string* step, std::string* detail) {
  snd_lib_error_set_handler(silent);
  snd_pcm_t* h = nullptr;
  int r = snd_pcm_open(&h, "default", SND_PCM_STREAM_CAPTURE, SND_PCM_NONBLOCK);
  if (r < 0) {
    if (step) *step = "open";
    if (detail) *detail = snd_strerror(r);
    return nullptr;
  }
  r = snd_pcm_set_params(h, SND_PCM_FORMAT_S16_LE, SND_PCM_ACCESS_RW_INTERLEAVED, AUDIO_CHANNELS, AUDIO_RATE, 1,
                         500000);
  if (r >= 0) r = snd_pcm_start(h);
  if (r < 0) {
    if (step) *step = "format";
    if (detail) *detail = snd_strerror(r);
    snd_pcm_close(h);
    return nullptr;
  }
  auto* c = new AudioCapture;
  c->pcm = h;
  return c;
}

