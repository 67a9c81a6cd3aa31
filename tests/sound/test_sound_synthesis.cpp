// Synthesis into stretches of a sound, and click removal.
#include <gtest/gtest.h>

#include <cmath>

#include "sound/sound_generate.h"
#include "sound/sound_smooth.h"
#include "sound_fixture.h"

TEST_F(SoundTest, Sine440ByZeroCrossings) {
  ok("generate audio(1) dim(2, 2); generate audio(1) time(0, 25) sin(440);");
  Objet* o = audio_numero(1);
  // One second: 880 changes of sign on each channel, peaks at full scale.
  EXPECT_NEAR(crossings(o, 0, 44100, 0), 880, 1);
  EXPECT_NEAR(crossings(o, 0, 44100, 1), 880, 1);
  int peak = 0;
  for (long long i = 0; i < 44100; i++) peak = std::max(peak, std::abs(sample(o, i)));
  EXPECT_GE(peak, 32760);
  // The stretch ends at image 25: the second second is still silent.
  EXPECT_EQ(crossings(o, 44100, trames(o)), 0);
  EXPECT_EQ(sample(o, 44100 + 500), 0);
  // Amplitude and phase: a quarter turn starts at the amplitude.
  ok("generate audio(1) time(0, 1) sin(440, 0.5, 1.5707963);");
  EXPECT_NEAR(sample(o, 0), 16384, 1);
  EXPECT_NEAR(sample(o, 1), std::lround(16383.5 * std::cos(2 * M_PI * 440 / 44100)), 2);
}

TEST_F(SoundTest, InsertTimeBoundsAndEvenStart) {
  // 11025 Hz 16-bit: image 1 starts at frame 441, rounded up to 442.
  put(at("s.wav"), wav(1, 11025, 16, Octets(11025 * 2)));
  ok("read audio(1) name(\"" + at("s.wav") + "\");");
  Objet* o = audio_numero(1);
  ok("generate audio(1) time(1, 2) puls(0, 0.5, 1);");
  EXPECT_EQ(sample(o, 441), 0);
  EXPECT_EQ(sample(o, 442), 16384);
  EXPECT_EQ(sample(o, 881), 16384);
  EXPECT_EQ(sample(o, 882), 0);
  // Past the end, or an empty interval, writes nothing; t2 is cut at the end.
  ok("generate audio(1) time(30, 40) puls(0, 1, 1); generate audio(1) time(5, 5) puls(0, 1, 1);");
  EXPECT_EQ(sample(o, trames(o) - 1), 0);
  ok("generate audio(1) time(-3, 99) puls(0, 0.25, 1);");
  EXPECT_EQ(sample(o, 0), 8192);
  EXPECT_EQ(sample(o, trames(o) - 1), 8192);
  // Sample sizes other than 1 and 2 bytes are left alone.
  Tranche t;
  Nb_octet(o) = 4;
  EXPECT_FALSE(tranche_temps(o, 0, 10, t));
}

TEST_F(SoundTest, EightBitGenerationAndMixing) {
  put(at("s8.wav"), wav(2, 8000, 8, Octets(8000 * 2, 128)));
  ok("read audio(1) name(\"" + at("s8.wav") + "\");");
  Objet* o = audio_numero(1);
  ok("generate audio(1) time(0, 25) puls(0, 0.5, 1);");
  EXPECT_EQ(donnees(o)[0], 128 + 64);  // unsigned on the disk, 127 full scale
  EXPECT_EQ(sample(o, 100, 1), 64);
  ok("generate audio(1) time(0, 25) puls(0, 0.75, 1) add;");
  EXPECT_EQ(sample(o, 100), 127);  // held at the full scale
  ok("generate audio(1) time(0, 25) cut;");
  EXPECT_EQ(sample(o, 100), 0);
  ok("inv audio(1);");
  EXPECT_EQ(sample(o, 100), 0);
}

TEST_F(SoundTest, FamilyMembersShapeTheirSamples) {
  ok("generate audio(1) dim(1);");
  Objet* o = audio_numero(1);
  // A sweep from 100 to 1000 Hz crosses zero more in its second half.
  ok("generate audio(1) time(0, 25) sin(100) interpol(1000);");
  EXPECT_GT(crossings(o, 22050, 44092), 2 * crossings(o, 0, 22050));  // 775 against 325
  // Harmonics: the sum of 1/h sines keeps within the amplitude and
  // keeps the fundamental's crossings.
  ok("generate audio(1) time(0, 25) sin(50, 1) NP(3);");
  EXPECT_NEAR(crossings(o, 0, 44092), 100, 2);
  // A product of two sines crosses at both rates, less the 20 zeros the
  // slow one shares with the fast one.
  ok("generate audio(1) time(0, 25) sin(100) sin(10);");
  EXPECT_NEAR(crossings(o, 0, 44092), 200, 3);
  // Noise of amplitude a stays within a.
  ok("generate audio(1) time(0, 25) alea(0.1);");
  // (A generated second holds 44092 frames: its samples start at 60.)
  ASSERT_EQ(trames(o), 44092);
  int peak = 0;
  for (long long i = 0; i < trames(o); i++) peak = std::max(peak, std::abs(sample(o, i)));
  EXPECT_LE(peak, 3277);
  EXPECT_GT(peak, 3000);
  // A copy of another sound.
  ok("generate audio(2) dim(1, 2); generate audio(2) time(0, 25) sin(440);");
  ok("generate audio(1, 2) time(0, 25);");
  EXPECT_EQ(sample(o, 1234), sample(audio_numero(2), 1234, 1));
  // A period of values, repeated.
  ok("generate audio(1) time(0, 25) period(441, 1, 1, -1);");
  EXPECT_EQ(sample(o, 0), 32767);
  EXPECT_EQ(sample(o, 50), -32767);
  EXPECT_EQ(sample(o, 100), 32767);
}

TEST_F(SoundTest, SmoothRemovesAPlantedClick) {
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) sin(100, 0.3);");
  Objet* o = audio_numero(1);
  uint8_t* d = donnees(o);
  const int before = sample(o, 5000);
  ecrit_echantillon(d + 5000 * 2, 2, 30000);
  ecrit_echantillon(d + 5001 * 2, 2, -30000);
  EXPECT_GE(one("smooth audio(1) dist(2, 0.03, 8)"), 1);
  // Within the line between its two ends, near the sine there.
  EXPECT_NEAR(sample(o, 5000), before, 200);
  int jump = 0;
  for (long long i = 4900; i < 5100; i++) jump = std::max(jump, std::abs(sample(o, i + 1) - sample(o, i)));
  EXPECT_LT(jump, 200);
  // A smooth sound is left as it was.
  const Octets avant(d, d + trames(o) * 2);
  EXPECT_EQ(one("smooth audio(1)"), 0);
  EXPECT_EQ(Octets(donnees(o), donnees(o) + trames(o) * 2), avant);
}

TEST_F(SoundTest, SmoothLimitsAndStopsBeforeTheEnd) {
  ok("generate audio(1) dim(1);");
  Objet* o = audio_numero(1);
  uint8_t* d = donnees(o);
  const long long n = trames(o);
  // A step in the middle becomes a line held below the limit; a jump in
  // the last 2 * width samples stays.
  for (long long i = 20000; i < n; i++) ecrit_echantillon(d + i * 2, 2, 500);
  ecrit_echantillon(d + (n - 5) * 2, 2, -20000);
  Lissage l = lissage_defaut(o);
  l.largeur = 4;
  l.coe = 0.01f;
  l.haut = 300;
  EXPECT_EQ(SMOOTH_AUDIO_1(o, l), 1);
  EXPECT_EQ(sample(o, 19994), 0);
  EXPECT_EQ(sample(o, 19996), 125);
  EXPECT_EQ(sample(o, 19998), 250);
  EXPECT_EQ(sample(o, 20000), 300);
  EXPECT_EQ(sample(o, 20002), 300);
  EXPECT_EQ(sample(o, 20003), 500);
  EXPECT_EQ(sample(o, n - 5), -20000);
}
