// The ALSA playback back end: the "default" device, non-blocking, fed
// from the ring at each pump and kept a little ahead with silence, so
// that it never runs dry between images.
#include <algorithm>
#include <cerrno>
#include <new>

#include "platform/audio_out_ring.h"

namespace {

// ALSA prints its own complaints on standard error: the caller reports.
void silent(const char*, int, const char*, int, const char*, ...) {}

// What the device keeps queued at least: three images of 25 a second.
constexpr long long AVANCE_ALSA = 3 * AUDIO_RATE / 25;
// The latency asked of ALSA, in microseconds.
constexpr unsigned LATENCE = 200000;

bool echec(std::string* detail, int r) {
  if (detail) *detail = snd_strerror(r);
  return false;
}

// The frames the device can take now, after restarting it once from an
// underrun or a suspension; -1 when it cannot restart.
long long libres(AudioPlayback& p, std::string* detail) {
  snd_pcm_sframes_t r = snd_pcm_avail_update(p.pcm);
  if (r < 0) {
    const int e = snd_pcm_recover(p.pcm, static_cast<int>(r), 1);
    if (e < 0) return echec(detail, e) ? 0 : -1;
    r = snd_pcm_avail_update(p.pcm);
    if (r < 0) return echec(detail, static_cast<int>(r)) ? 0 : -1;
  }
  return r;
}

}  // namespace

AudioPlayback* audio_out_open_alsa(AudioOutStep* step, std::string* detail) {
  snd_lib_error_set_handler(silent);
  snd_pcm_t* h = nullptr;
  int r = snd_pcm_open(&h, "default", SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK);
  if (r < 0) {
    if (step) *step = AudioOutStep::device;
    echec(detail, r);
    return nullptr;
  }
  auto* p = new (std::nothrow) AudioPlayback;
  uint8_t* ring = p ? new (std::nothrow) uint8_t[AUDIO_OUT_RING] : nullptr;
  if (!ring) {
    delete p;
    snd_pcm_close(h);
    if (step) *step = AudioOutStep::buffer;
    if (detail) *detail = snd_strerror(-ENOMEM);
    return nullptr;
  }
  p->ring = ring;
  p->pcm = h;
  r = snd_pcm_set_params(h, SND_PCM_FORMAT_S16_LE, SND_PCM_ACCESS_RW_INTERLEAVED, AUDIO_CHANNELS, AUDIO_RATE, 1,
                         LATENCE);
  snd_pcm_uframes_t tampon = 0, periode = 0;
  if (r >= 0) r = snd_pcm_get_params(h, &tampon, &periode);
  if (r < 0) {
    if (step) *step = AudioOutStep::format;
    echec(detail, r);
    audio_out_close(p);
    return nullptr;
  }
  p->tampon_alsa = static_cast<long long>(tampon);
  return p;
}

int pump_alsa_out(AudioPlayback& p, std::string* detail) {
  const long long libre = libres(p, detail);
  if (libre < 0) return -1;
  const long long file = std::max(p.tampon_alsa - libre, 0LL);
  // The written bytes, and silence to keep the device ahead.
  long long n = std::max(p.ecrits - p.joues, (AVANCE_ALSA - file) * AUDIO_BLOCK);
  n = std::min(n, libre * AUDIO_BLOCK);
  if (n <= 0) return 0;
  AudioOutStretch s[2];
  p.etendue(p.joues, static_cast<int>(n), s);
  for (const AudioOutStretch& e : s) {
    if (e.n == 0) continue;
    const snd_pcm_sframes_t r = snd_pcm_writei(p.pcm, e.p, static_cast<snd_pcm_uframes_t>(e.n / AUDIO_BLOCK));
    if (r == -EAGAIN) return 0;
    if (r < 0) {
      // An underrun between the count and the write: the next pump restarts.
      if (snd_pcm_recover(p.pcm, static_cast<int>(r), 1) < 0) return echec(detail, static_cast<int>(r)) ? 0 : -1;
      return 0;
    }
    p.avance(r * AUDIO_BLOCK);
    // The device starts by itself only once its whole buffer is full,
    // which a queue this short never is.
    if (snd_pcm_state(p.pcm) == SND_PCM_STATE_PREPARED) snd_pcm_start(p.pcm);
    if (r * AUDIO_BLOCK < e.n) return 0;
  }
  return 0;
}

void alsa_out_close(AudioPlayback& p) {
  snd_pcm_close(p.pcm);
  p.pcm = nullptr;
}
