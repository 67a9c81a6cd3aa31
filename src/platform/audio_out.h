// Sound played: the primary buffer, a ring of bytes in the capture's
// format (22050 Hz, 2 channels, 16 bits, audio.h) with a play position
// and a write position ahead of it, both counted in bytes since the
// device opened. Writers lock a stretch at or after the play position,
// add their samples and unlock; the image loop pumps the ring to the
// device. Three back ends: ALSA's "default" playback device, fed without
// blocking; the clock, which plays at 88200 bytes a second and discards;
// the clock again, writing what it played to a WAV file.
#pragma once
#include <cstdint>
#include <string>

#include "platform/audio.h"

struct AudioPlayback;

// The ring holds two seconds: a tone of a second queued a quarter of a
// second ahead still fits.
constexpr int AUDIO_OUT_RING = 2 * AUDIO_BYTES_PER_SECOND;

// The choice of ORVELA_AUDIO_OUT: "alsa", "none" or "file:PATH.wav" (the
// path in *path). Unset or empty: "alsa", except "none" when the capture
// comes from a file or from nothing (ORVELA_AUDIO=file:... or none).
AudioSource audio_sink(std::string* path);

// The steps of the opening, in the order they run; the one that failed
// goes to *step and the system's words to *detail.
enum class AudioOutStep { device, buffer, format };

// Opens ALSA's "default" playback device, non-blocking, S16_LE; ALSA
// prints nothing itself. Null when it fails.
AudioPlayback* audio_out_open_alsa(AudioOutStep* step, std::string* detail);
// A device paced by `clock` (seconds; null for the process's clock).
// With a path, what it plays is written there as a WAV file, its header
// right after each pump; a file that cannot be made is a failed device.
AudioPlayback* audio_out_open_clock(const char* wav_path, double (*clock)(), AudioOutStep* step,
                                    std::string* detail);
// Plays nothing more; a WAV file is finished.
void audio_out_close(AudioPlayback* p);

// Hands the device what it can take: the written bytes after the play
// position, silence where nothing was written. The play position moves
// on by what was played. -1 with the system's words in *detail when the
// device is lost (the ring stays usable).
int audio_out_pump(AudioPlayback* p, std::string* detail);

// Positions in bytes since the opening.
long long audio_out_played(const AudioPlayback* p);
long long audio_out_written(const AudioPlayback* p);

// The stretch of `bytes` bytes at position `at`, as one or two pieces of
// the ring (the second when it wraps), cut to what lies between the play
// position and a ring ahead of it; `at` before the play position starts
// at it. Bytes past the write position read as silence, so that writers
// add to what is there. The count locked; its start in *from.
struct AudioOutStretch {
  uint8_t* p = nullptr;
  int n = 0;
};
int audio_out_lock(AudioPlayback* p, long long at, int bytes, AudioOutStretch out[2], long long* from);
// The write position moves to the end of [at, at + bytes) when it is
// further.
void audio_out_unlock(AudioPlayback* p, long long at, int bytes);
