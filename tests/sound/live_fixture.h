// The sound that the live tests hear: a square wave in the capture's own
// format, for the file back end.
#pragma once
#include <vector>

#include "sound/sound_fixture.h"

// 8 frames at +16400 then 8 at -16400, both channels, 22050 Hz: a period
// of 64 bytes, 16 periods in a window of 1024. As bytes: 16, 64 and 240,
// 191, so any window of whole periods has the mean 127.75, min 16, max 240.
inline Octets carre_wav(int secondes) {
  std::vector<int> v;
  // Whole periods only: the file loops, and a broken period at the seam
  // would change the mean of the windows that straddle it.
  const int trames = 22050 * secondes - 22050 * secondes % 16;
  for (int f = 0; f < trames; f++) {
    const int x = f % 16 < 8 ? 16400 : -16400;
    v.push_back(x);
    v.push_back(x);
  }
  return wav(2, 22050, 16, le16(v));
}
