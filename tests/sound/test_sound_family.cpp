// The members of the GENERATE_ family beyond the sines: each checked
// against its formula at chosen frames of a generated second (44092
// frames of 16 bits at 44100 Hz, 1764 frames an image).
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "sound/sound_generate.h"
#include "sound_fixture.h"

namespace {

constexpr double TAU = 2 * std::numbers::pi;
constexpr double R = 44100;

long full(double v) { return std::lround(v * 32767); }

}  // namespace

TEST_F(SoundTest, LawDecaysASineOrTheSamplesThere) {
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) sin(100, 1) law(5);");
  Objet* o = audio_numero(1);
  // A sine of 100 Hz peaks at 2.5 ms, then every 10 ms, under exp(-5 s).
  EXPECT_NEAR(sample(o, 110), full(std::exp(-5 * 110 / R) * std::sin(TAU * 100 * 110 / R)), 1);
  EXPECT_NEAR(peak_of(o, 39690, 44092), full(std::exp(-5 * 0.9025)), 3);
  // Without a sine, the decay of what is there.
  ok("generate audio(1) time(0, 25) puls(0, 1, 1); generate audio(1) time(0, 25) law(2);");
  EXPECT_EQ(sample(o, 0), 32767);
  EXPECT_NEAR(sample(o, 22050), full(std::exp(-1.0)), 1);
}

TEST_F(SoundTest, PoiDrawsTheStretchThroughItsPoints) {
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) poi(0, 1, -1);");
  Objet* o = audio_numero(1);
  const long long n = trames(o);
  EXPECT_EQ(sample(o, 0), 0);
  EXPECT_NEAR(sample(o, (n - 1) / 4), 16384, 2);
  EXPECT_NEAR(sample(o, (n - 1) / 2), 32767, 2);
  EXPECT_EQ(sample(o, n - 1), -32767);
  // One point holds the stretch at its value.
  const int after = sample(o, 3528);
  ok("generate audio(1) time(1, 2) poi(0.25);");
  EXPECT_EQ(sample(o, 1764), 8192);
  EXPECT_EQ(sample(o, 3527), 8192);
  EXPECT_EQ(sample(o, 3528), after);
}

TEST_F(SoundTest, MemoryTakesTheValuesOfTheReadingStream) {
  const std::string f = at("values.raw");
  ok("write audio(\"" + f + "\") type(\"float\"); write audio = (0.5, -0.5, 0.25, 2); end write audio;");
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) puls(0, 0.1, 1);");
  ok("read audio(\"" + f + "\") type(\"float\"); generate audio(1) time(0, 25) memory; end read audio;");
  Objet* o = audio_numero(1);
  EXPECT_EQ(sample(o, 0), 16384);
  EXPECT_EQ(sample(o, 1), -16384);
  EXPECT_EQ(sample(o, 2), 8192);
  EXPECT_EQ(sample(o, 3), 32767);  // 2 is held at the full scale
  EXPECT_EQ(sample(o, 4), 3277);   // past the values: as it was
  // Without an open stream: the stream's usage, nothing written.
  EXPECT_NE(fails("generate audio(1) time(0, 25) memory").find("read audio(\"name\")"), std::string::npos);
}

TEST_F(SoundTest, InterpolAloneDrawsALineBetweenTheEnds) {
  ok("generate audio(1) dim(1, 2); generate audio(1) time(0, 25) sin(440);");
  Objet* o = audio_numero(1);
  const long long n = trames(o);
  ecrit_echantillon(donnees(o), 2, 0);
  ecrit_echantillon(donnees(o) + (n - 1) * 4, 2, 10000);
  const int last1 = sample(o, n - 1, 1);
  ok("generate audio(1) time(0, 25) interpol;");
  EXPECT_EQ(sample(o, 0), 0);
  EXPECT_NEAR(sample(o, n / 2), 5000, 1);
  EXPECT_EQ(sample(o, n - 1), 10000);
  // Each channel between its own ends.
  EXPECT_NEAR(sample(o, n / 2, 1), last1 / 2, 1);
}

TEST_F(SoundTest, SoundsAsSourcesOfASweepAndOfAPeriod) {
  ok("generate audio(2) dim(1); generate audio(2) time(0, 25) sin(441);");
  ok("generate audio(3) dim(1); generate audio(3) time(0, 25) puls(0, 0.5, 1);");
  ok("generate audio(1) dim(1);");
  Objet *o = audio_numero(1), *sine = audio_numero(2);
  // A cross-fade from the source to the sine.
  ok("generate audio(1, 3) time(0, 25) sin(440) interpol;");
  const long long n = trames(o);
  EXPECT_EQ(sample(o, 0), 16384);
  for (long long k : {n / 3, n - 1}) {
    const double x = static_cast<double>(k) / static_cast<double>(n);
    EXPECT_NEAR(sample(o, k), full((1 - x) * 0.5 + x * std::sin(TAU * 440 * static_cast<double>(k) / R)), 1) << k;
  }
  // One period of the source (441 Hz: 100 frames), repeated at 882 Hz.
  ok("generate audio(1, 2) time(0, 25) period(882, 1);");
  for (long long k : {0LL, 37LL, 50LL, 1234LL, 40001LL}) EXPECT_EQ(sample(o, k), sample(sine, k % 50)) << k;
}

TEST_F(SoundTest, StockPairsLeadAnEnvelopeAndASine) {
  // Three images of (frequency, amplitude): 0.5, 1, 0 of the largest.
  const std::vector<float> pairs = {0, -2, 0, 4, 0, 0};
  Octets b(pairs.size() * 4);
  std::memcpy(b.data(), pairs.data(), b.size());
  put(at("a.stock"), b);
  ok("read audio(3) stock name(\"" + at("a.stock") + "\");");
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) puls(0, 1, 1); generate audio(1) time(0, 25) stock(3);");
  Objet* o = audio_numero(1);
  EXPECT_EQ(sample(o, 0), 16384);
  EXPECT_EQ(sample(o, 1763), 16384);
  EXPECT_EQ(sample(o, 1764), 32767);
  EXPECT_EQ(sample(o, 3528), 0);
  EXPECT_EQ(sample(o, 6000), 0);  // past the pairs: silence
  ok("generate audio(1) time(0, 25) stock(3) sin(441, 1);");
  EXPECT_EQ(sample(o, 25), full(0.5 * std::sin(TAU * 441 * 25 / R)));
  EXPECT_EQ(sample(o, 1764 + 25), full(std::sin(TAU * 441 * (1764 + 25) / R)));
  // A sound without pairs, or none of that number: nothing written.
  EXPECT_NE(fails("generate audio(1) time(0, 25) stock(9)").find("NOT FOUND"), std::string::npos);
}

TEST_F(SoundTest, VarAndMinReshapeTheSamplesThere) {
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) puls(0, 0.5, 1);");
  Objet* o = audio_numero(1);
  // A tremolo of depth 1 at 1 Hz: doubled at a quarter second, silent at three.
  ok("generate audio(1) time(0, 25) var(1, 1);");
  EXPECT_EQ(sample(o, 0), 16384);
  EXPECT_EQ(sample(o, 11025), 32767);
  EXPECT_EQ(sample(o, 33075), 0);
  // A gate at a quarter of the full scale.
  ok("generate audio(1) time(0, 25) sin(440, 0.5); generate audio(1) time(0, 25) min(0.25);");
  int between = 0;
  for (long long i = 0; i < trames(o); i++) between += sample(o, i) != 0 && std::abs(sample(o, i)) < 8192;
  EXPECT_EQ(between, 0);
  EXPECT_NEAR(peak_of(o, 0, trames(o)), 16384, 2);
  EXPECT_EQ(sample(o, 25), full(0.5 * std::sin(TAU * 440 * 25 / R)));
}

TEST_F(SoundTest, ModuleModulatesTheSinesFrequency) {
  ok("generate audio(1) dim(1); generate audio(1) time(0, 25) sin(440, 0.8, 0.3) module(100, 10);");
  Objet* o = audio_numero(1);
  for (long long k : {1LL, 333LL, 20000LL}) {
    const double x = static_cast<double>(k);
    EXPECT_NEAR(sample(o, k), full(0.8 * std::sin(0.3 + TAU * 440 * x / R + 10 * std::sin(TAU * 100 * x / R))), 1) << k;
  }
  // Several modulators are summed.
  ok("generate audio(1) time(0, 25) sin(440) module(100, 2, 30, 3);");
  for (long long k : {7LL, 4321LL}) {
    const double x = static_cast<double>(k);
    EXPECT_NEAR(sample(o, k), full(std::sin(TAU * 440 * x / R + 2 * std::sin(TAU * 100 * x / R) + 3 * std::sin(TAU * 30 * x / R))), 1)
        << k;
  }
  // An index of 0 leaves the plain sine: 880 crossings.
  ok("generate audio(1) time(0, 25) sin(440) module(100, 0);");
  EXPECT_NEAR(crossings(o, 0, 44092), 880, 1);
}

TEST_F(SoundTest, TimeWithoutItsEndReachesTheLastFrame) {
  ok("generate audio(1) dim(1); generate audio(1) time(0) puls(0, 0.5, 1);");
  Objet* o = audio_numero(1);
  const long long n = trames(o);
  EXPECT_EQ(sample(o, n - 1), 16384);
  ok("inv audio(1);");
  EXPECT_EQ(sample(o, n - 1), -16384);
  ok("rand audio(1) coe(0);");
  EXPECT_EQ(sample(o, n - 1), -16384);
  ok("cut audio(2, 1) time(24);");
  EXPECT_EQ(trames(audio_numero(2)), n - 24 * 1764);
}
