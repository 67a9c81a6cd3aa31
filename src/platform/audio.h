// Live sound capture as a byte ring with a read position, locked and
// unlocked by the poll of the image loop: 22050 samples a second, 2
// channels, 16 bits, 88200 bytes a second. Two back ends fill it: ALSA's
// "default" capture device, or sound given as bytes of that format (a
// WAV file loaded by the caller) delivered at the pace of the clock, and
// looping at its end, as if it came from a microphone.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

constexpr int AUDIO_RATE = 22050;
constexpr int AUDIO_CHANNELS = 2;
constexpr int AUDIO_BLOCK = 4;                                  // bytes a frame
constexpr int AUDIO_BYTES_PER_SECOND = AUDIO_RATE * AUDIO_BLOCK;  // 88200
constexpr int AUDIO_RING = AUDIO_BYTES_PER_SECOND;               // one second

struct AudioCapture;

// The choice of ORVELA_AUDIO: "alsa" (also when unset), "none", or
// "file:PATH.wav" with the path in *path.
enum class AudioSource { alsa, none, file, unknown };
AudioSource audio_source(std::string* path);
// The same choice read in any such value (null or empty: alsa).
AudioSource audio_choice(const char* value, std::string* path);

// Opens ALSA's "default" capture device and starts it. Null when it
// fails, with the step that failed in *step ("open" or "format") and
// ALSA's own words in *detail; ALSA prints nothing itself.
AudioCapture* audio_open_alsa(std::string* step, std::string* detail);
// Plays `pcm` (frames of the format above; a partial frame at the end is
// dropped) from now on, looping. `clock` gives seconds; null for the
// process's clock. Null when there is not one whole frame.
AudioCapture* audio_open_bytes(std::vector<uint8_t> pcm, double (*clock)() = nullptr);
void audio_close(AudioCapture* c);

// Brings in what the source has made since the last call and gives the
// bytes waiting at the read position (at most the ring). A source that
// fails (a lost ALSA stream that cannot restart) gives -1 with its words
// in *detail.
int audio_pending(AudioCapture* c, std::string* detail);
// The `bytes` bytes at the read position, at most those waiting, as one
// or two stretches of the ring (the second when it wraps). The count.
struct AudioStretch {
  const uint8_t* p = nullptr;
  int n = 0;
};
int audio_lock(AudioCapture* c, int bytes, AudioStretch out[2]);
// Moves the read position past `bytes` bytes, modulo the ring.
void audio_unlock(AudioCapture* c, int bytes);
// The read position in the ring.
int audio_read_position(const AudioCapture* c);
