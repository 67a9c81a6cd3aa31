// The back end that plays bytes given by the caller (a WAV file already
// converted to the capture format) at the pace of the clock.
#include <algorithm>

#include "platform/audio_ring.h"
#include "platform/clock.h"

AudioCapture* audio_open_bytes(std::vector<uint8_t> pcm, double (*clock)()) {
  pcm.resize(pcm.size() - pcm.size() % AUDIO_BLOCK);
  if (pcm.empty()) return nullptr;
  auto* c = new AudioCapture;
  c->source = std::move(pcm);
  c->clock = clock ? clock : seconds_since_start;
  c->debut = c->clock();
  return c;
}

// The bytes the clock has made due since the last call, from the source,
// looping. More than a ring at once (a long pause) keeps the last ring.
void pump_bytes(AudioCapture& c) {
  const double t = c.clock() - c.debut;
  long long due = static_cast<long long>(t * AUDIO_BYTES_PER_SECOND);
  due -= due % AUDIO_BLOCK;
  long long n = due - c.dus;
  if (n <= 0) return;
  c.dus = due;
  const size_t taille = c.source.size();
  if (n > AUDIO_RING) {
    c.source_pos = (c.source_pos + static_cast<size_t>(n - AUDIO_RING)) % taille;
    n = AUDIO_RING;
  }
  while (n > 0) {
    const long long k = std::min<long long>(n, static_cast<long long>(taille - c.source_pos));
    c.put(c.source.data() + c.source_pos, static_cast<int>(k));
    c.source_pos = (c.source_pos + static_cast<size_t>(k)) % taille;
    n -= k;
  }
}

