// Sounds made from the test's own bytes or by outside programs (python's
// `wave`, sox), a fresh folder for their files, the audio chain emptied.
#pragma once
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "kernel/chains.h"
#include "scene/removal.h"
#include "scene/scene_fixture.h"
#include "support/scratch_folder.h"
#include "sound/sound_object.h"

using Octets = std::vector<uint8_t>;

class SoundTest : public SceneTest, protected ScratchFolder {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    rem_tous(chaine_audio(), 0, 0);
    make_folder("orvela_snd_");
  }
  void TearDown() override {
    rem_tous(chaine_audio(), 0, 0);
    SceneTest::TearDown();
    remove_folder();
  }
  static bool have(const char* program) {
    return std::system((std::string("command -v ") + program + " >/dev/null 2>&1").c_str()) == 0;
  }
  // The floats of a raw file of 4-byte floats.
  static std::vector<float> floats_file(const std::string& path) {
    const Octets b = file(path);
    std::vector<float> v(b.size() / 4);
    std::memcpy(v.data(), b.data(), v.size() * 4);
    return v;
  }
};

// The bytes of a canonical PCM WAV file around the given samples.
inline Octets wav(int channels, int rate, int bits, const Octets& samples) {
  Octets b(44 + samples.size());
  auto u32 = [&](size_t at, uint32_t v) {
    for (int i = 0; i < 4; i++) b[at + i] = static_cast<uint8_t>(v >> (8 * i));
  };
  auto u16 = [&](size_t at, uint16_t v) {
    b[at] = static_cast<uint8_t>(v);
    b[at + 1] = static_cast<uint8_t>(v >> 8);
  };
  std::memcpy(b.data(), "RIFF", 4);
  u32(4, static_cast<uint32_t>(36 + samples.size()));
  std::memcpy(b.data() + 8, "WAVEfmt ", 8);
  u32(16, 16);
  u16(20, 1);
  u16(22, static_cast<uint16_t>(channels));
  u32(24, static_cast<uint32_t>(rate));
  u32(28, static_cast<uint32_t>(rate * channels * bits / 8));
  u16(32, static_cast<uint16_t>(channels * bits / 8));
  u16(34, static_cast<uint16_t>(bits));
  std::memcpy(b.data() + 36, "data", 4);
  u32(40, static_cast<uint32_t>(samples.size()));
  if (!samples.empty()) std::memcpy(b.data() + 44, samples.data(), samples.size());
  return b;
}

// 16-bit samples as little-endian bytes.
inline Octets le16(const std::vector<int>& v) {
  Octets b;
  for (int x : v) {
    b.push_back(static_cast<uint8_t>(x & 0xff));
    b.push_back(static_cast<uint8_t>((x >> 8) & 0xff));
  }
  return b;
}

// Sample c of frame i of the sound's data, signed.
inline int sample(Objet* o, long long i, int c = 0) {
  return lit_echantillon(donnees(o) + (i * Channel(o) + c) * Nb_octet(o), Nb_octet(o));
}

// Changes of sign between frames [a, b) of channel c.
inline int crossings(Objet* o, long long a, long long b, int c = 0) {
  int n = 0;
  for (long long i = a + 1; i < b; i++)
    if ((sample(o, i - 1, c) < 0) != (sample(o, i, c) < 0)) n++;
  return n;
}

// The largest magnitude of channel c over frames [a, b).
inline int peak_of(Objet* o, long long a, long long b, int c = 0) {
  int m = 0;
  for (long long i = a; i < b; i++) m = std::max(m, std::abs(sample(o, i, c)));
  return m;
}
