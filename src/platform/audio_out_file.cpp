// The playback back ends paced by the clock: 88200 bytes a second are
// played, discarded or written to a WAV file. The file's header is right
// after each pump, so that a run that ends in any way leaves a file that
// reads whole.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "platform/audio_out_ring.h"
#include "platform/clock.h"

namespace {

// Above this the sizes of a WAV file no longer fit: nothing more is written.
constexpr long long MAX_DONNEES = 0xFFFFFFFFLL - 36;

void le32(uint8_t* p, uint32_t v) {
  for (int i = 0; i < 4; i++) p[i] = static_cast<uint8_t>(v >> (8 * i));
}

// The 44 bytes of a PCM WAV header for `donnees` bytes of samples.
void entete(uint8_t h[44], long long donnees) {
  std::memcpy(h, "RIFF\0\0\0\0WAVEfmt \x10\0\0\0\x01\0\x02\0", 24);
  le32(h + 4, static_cast<uint32_t>(36 + donnees));
  le32(h + 24, AUDIO_RATE);
  le32(h + 28, AUDIO_BYTES_PER_SECOND);
  h[32] = AUDIO_BLOCK;
  h[33] = 0;
  h[34] = 16;
  h[35] = 0;
  std::memcpy(h + 36, "data", 4);
  le32(h + 40, static_cast<uint32_t>(donnees));
}

bool ecrit_tout(int fd, const uint8_t* b, size_t n, long long at) {
  while (n > 0) {
    const ssize_t r = pwrite(fd, b, n, at);
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) return false;
    b += r;
    n -= static_cast<size_t>(r);
    at += r;
  }
  return true;
}

bool echec(std::string* detail) {
  if (detail) *detail = std::strerror(errno);
  return false;
}

// The played bytes to the file after its samples.
bool ecrit_joues(AudioPlayback& p, const AudioOutStretch s[2], std::string* detail) {
  for (int i = 0; i < 2; i++) {
    const long long n = std::min<long long>(s[i].n, MAX_DONNEES - p.donnees);
    if (n <= 0) continue;
    if (!ecrit_tout(p.fd, s[i].p, static_cast<size_t>(n), 44 + p.donnees)) return echec(detail);
    p.donnees += n;
  }
  return true;
}

}  // namespace

AudioPlayback* audio_out_open_clock(const char* wav_path, double (*clock)(), AudioOutStep* step,
                                    std::string* detail) {
  int fd = -1;
  if (wav_path) {
    fd = open(wav_path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
      if (step) *step = AudioOutStep::device;
      echec(detail);
      return nullptr;
    }
  }
  auto* p = new (std::nothrow) AudioPlayback;
  uint8_t* ring = p ? new (std::nothrow) uint8_t[AUDIO_OUT_RING] : nullptr;
  if (!ring) {
    delete p;
    if (fd >= 0) close(fd);
    if (step) *step = AudioOutStep::buffer;
    if (detail) *detail = std::strerror(ENOMEM);
    return nullptr;
  }
  p->ring = ring;
  p->fd = fd;
  p->clock = clock ? clock : seconds_since_start;
  p->debut = p->clock();
  if (fd >= 0 && !wav_out_patch(*p, detail)) {
    if (step) *step = AudioOutStep::device;
    audio_out_close(p);
    return nullptr;
  }
  return p;
}

int pump_clock_out(AudioPlayback& p, std::string* detail) {
  long long du = static_cast<long long>((p.clock() - p.debut) * AUDIO_BYTES_PER_SECOND);
  du -= du % AUDIO_BLOCK;
  // A pause longer than the ring (the loop stopped, the program at its
  // prompt) plays one ring of silence, not all of it.
  if (du - p.sautes - p.joues > AUDIO_OUT_RING) p.sautes = du - p.joues - AUDIO_OUT_RING;
  const long long n = du - p.sautes - p.joues;
  if (n <= 0) return 0;
  AudioOutStretch s[2];
  p.etendue(p.joues, static_cast<int>(n), s);
  bool ok = true;
  if (p.fd >= 0) ok = ecrit_joues(p, s, detail) && wav_out_patch(p, detail);
  p.avance(n);
  return ok ? 0 : -1;
}

bool wav_out_patch(AudioPlayback& p, std::string* detail) {
  uint8_t h[44];
  entete(h, p.donnees);
  return ecrit_tout(p.fd, h, sizeof h, 0) || echec(detail);
}

void wav_out_close(AudioPlayback& p) {
  close(p.fd);
  p.fd = -1;
}
