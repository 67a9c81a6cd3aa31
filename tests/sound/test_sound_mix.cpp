// Sounds made from sounds: stretches, joins, copies, numbers, headers,
// comparison and ring modulation; the level noise and the sounds' count.
#include <gtest/gtest.h>

#include <cmath>

#include "sound/wav_header.h"
#include "sound_fixture.h"

namespace {

class SoundMix : public SoundTest {
 protected:
  // A generated second of a rising ramp, so that every frame tells its place.
  void ramp(int id, int channels = 1) {
  ok("generate audio(" + std::to_string(id) + ") dim(1, " + std::to_string(channels) + ");");
  Objet* o = audio_numero(id);
  for (long long i = 0; i < trames(o); i++)
    for (int c = 0; c < channels; c++) ecrit_echantillon(donnees(o) + (i * channels + c) * 2, 2, i % 30000 + c);
  }
};

}  // namespace

TEST_F(SoundMix, CutTakesAStretchAsANewSound) {
  ramp(1, 2);
  ok("cut audio(2, 1) time(5, 10);");
  Objet *s = audio_numero(1), *o = audio_numero(2);
  ASSERT_NE(o, nullptr);
  EXPECT_EQ(trames(o), 5 * 1764);
  EXPECT_EQ(Channel(o), 2);
  EXPECT_EQ(Rate(o), 44100);
  for (long long k : {0LL, 1LL, 8819LL}) {
    EXPECT_EQ(sample(o, k), sample(s, 8820 + k));
    EXPECT_EQ(sample(o, k, 1), sample(s, 8820 + k, 1));
  }
  // Its header tells its length: written and read back, the same sound.
  WavEntete e;
  ASSERT_EQ(lit_entete_wav(audio_octets(o), static_cast<size_t>(Size(o)), e), WavLecture::ok);
  ok("write audio(2) name(\"" + at("cut.wav") + "\"); read audio(3) name(\"" + at("cut.wav") + "\");");
  EXPECT_EQ(Octets(audio_octets(audio_numero(3)), audio_octets(audio_numero(3)) + Size(o)),
            Octets(audio_octets(o), audio_octets(o) + Size(o)));
  // A sound cut from itself.
  ok("cut audio(1, 1) time(0, 1);");
  EXPECT_EQ(trames(audio_numero(1)), 1764);
  EXPECT_NE(fails("cut audio(4, 9) time(0, 1)").find("NOT FOUND"), std::string::npos);
  EXPECT_NE(fails("cut audio(4, 2)").find("cut audio(id, source) time(t1, t2)"), std::string::npos);
}

TEST_F(SoundMix, ConcatInsertsOneSoundIntoAnother) {
  ramp(1);
  ok("generate audio(2) dim(1); generate audio(2) time(0, 25) puls(0, 0.5, 1);");
  ok("concat audio(3, 1, 2) time(10);");
  Objet *a = audio_numero(1), *b = audio_numero(2), *o = audio_numero(3);
  ASSERT_NE(o, nullptr);
  EXPECT_EQ(trames(o), trames(a) + trames(b));
  EXPECT_EQ(sample(o, 17639), sample(a, 17639));
  EXPECT_EQ(sample(o, 17640), 16384);
  EXPECT_EQ(sample(o, 17640 + trames(b) - 1), 16384);
  EXPECT_EQ(sample(o, 17640 + trames(b)), sample(a, 17640));
  // Without a time, appended; an 8-bit stereo sound is turned to 16-bit mono.
  put(at("s8.wav"), wav(2, 44100, 8, Octets{128 + 64, 0, 128 - 127, 0}));
  ok("read audio(4) name(\"" + at("s8.wav") + "\"); concat audio(5, 1, 4);");
  o = audio_numero(5);
  EXPECT_EQ(trames(o), trames(a) + 2);
  EXPECT_EQ(sample(o, trames(a)), std::lround(64 * 32767.0 / 127));
  EXPECT_EQ(sample(o, trames(a) + 1), -32767);
}

TEST_F(SoundMix, PutCopiesAndMoveRenumbers) {
  ramp(1, 2);
  ok("put audio(2, 1);");
  Objet *a = audio_numero(1), *b = audio_numero(2);
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(Octets(audio_octets(a), audio_octets(a) + Size(a)), Octets(audio_octets(b), audio_octets(b) + Size(b)));
  EXPECT_EQ(Header(b), Header(a));
  EXPECT_EQ(Images(b), Images(a));
  // The copy is its own: changing it leaves the first.
  ok("inv audio(2);");
  EXPECT_EQ(sample(b, 100), -sample(a, 100));
  ok("generate audio(9) dim(1); move audio(2, 9);");
  EXPECT_EQ(audio_numero(2), nullptr);
  EXPECT_EQ(audio_numero(9), b);
  EXPECT_EQ(b->id, 9);
  EXPECT_EQ(sample(audio_numero(9), 100), -sample(a, 100));
}

TEST_F(SoundMix, InheritAndNumberChangeTheFormatNotTheBytes) {
  ramp(1);
  Objet* o = audio_numero(1);
  const Octets data(donnees(o), donnees(o) + octets_donnees(o));
  put(at("s8.wav"), wav(2, 8000, 8, Octets(16, 128)));
  ok("read audio(2) name(\"" + at("s8.wav") + "\"); inherit audio(1, 2);");
  EXPECT_EQ(Rate(o), 8000);
  EXPECT_EQ(Channel(o), 2);
  EXPECT_EQ(Nb_octet(o), 1);
  EXPECT_EQ(Bits(o), 8);
  EXPECT_EQ(Octets(donnees(o), donnees(o) + octets_donnees(o)), data);
  EXPECT_EQ(trames(o), static_cast<long long>(data.size()) / 2);
  EXPECT_EQ(Images(o), 25 * (static_cast<int>(data.size()) / 16000));
  // The header says it too: a reader finds the new format.
  WavEntete e;
  ASSERT_EQ(lit_entete_wav(audio_octets(o), static_cast<size_t>(Size(o)), e), WavLecture::ok);
  EXPECT_EQ(e.Rate, 8000);
  EXPECT_EQ(e.Channel, 2);
  EXPECT_EQ(e.Bits, 8);
  ok("format audio(1) number(16);");
  EXPECT_EQ(Nb_octet(o), 2);
  EXPECT_EQ(trames(o), static_cast<long long>(data.size()) / 4);
  EXPECT_EQ(Octets(donnees(o), donnees(o) + octets_donnees(o)), data);
  EXPECT_NE(fails("format audio(1) number(3)").find("data size 3 != (1,2,4, 8,16,32)"), std::string::npos);
  EXPECT_EQ(Nb_octet(o), 2);
}

TEST_F(SoundMix, DistComparesAndModuleMultiplies) {
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) sin(440, 0.5); put audio(2, 1);");
  expect_floats(floats("dist audio(1, 2)"), {0, 0}, "a sound and its copy");
  ok("inv audio(2);");
  const std::vector<float> d = floats("dist audio(1, 2)");
  ASSERT_EQ(d.size(), 2u);
  EXPECT_NEAR(d[0], 2 * 0.5 / std::sqrt(2.0), 1e-3);  // twice the sine's root mean square
  EXPECT_NEAR(d[1], 1.0, 1e-4);
  // Ring modulation by a constant half: every sample halved.
  ok("generate audio(3) dim(1); generate audio(3) time(0, 25) puls(0, 0.5, 1);");
  Objet* o = audio_numero(1);
  const int before = sample(o, 25);
  ok("module audio(1, 3) time(0, 12.5);");
  EXPECT_NEAR(sample(o, 25), before / 2, 1);
  EXPECT_EQ(sample(o, 30000), -sample(audio_numero(2), 30000));  // past the stretch: as it was
  EXPECT_NE(fails("dist audio(1)").find("dist audio(a, b)"), std::string::npos);
}

TEST_F(SoundMix, RandAddsNoiseAndTimeAndNumberTell) {
  ok("generate audio(1) dim(2); generate audio(1) time(0, 50) puls(0, 0.5, 1); rand audio(1) time(0, 25) coe(0.01);");
  Objet* o = audio_numero(1);
  int moved = 0, far = 0;
  for (long long i = 0; i < 44100; i++) {
    moved += sample(o, i) != 16384;
    far += std::abs(sample(o, i) - 16384) > 328;
  }
  EXPECT_GT(moved, 40000);
  EXPECT_EQ(far, 0);
  EXPECT_EQ(sample(o, 50000), 16384);  // the second second untouched
  // Length in images and seconds, and the place of a playing sound.
  const std::vector<float> t = floats("time audio(1)");
  ASSERT_EQ(t.size(), 3u);
  EXPECT_EQ(t[0], 50);
  EXPECT_NEAR(t[1], static_cast<float>(trames(o)) / 44100, 1e-6);
  EXPECT_EQ(t[2], 0);
  ok("generate audio(7) dim(1);");
  expect_floats(floats("number audio"), {1, 7}, "the sounds' numbers");
  ok("clean audio;");
  EXPECT_TRUE(nil("number audio"));
}
