// Length and speed of a sound, and its release.
#include <gtest/gtest.h>

#include "sound/wav_header.h"
#include "sound_fixture.h"

namespace {

int crossings(Objet* o) {
  int n = 0;
  const uint8_t* d = donnees(o);
  for (long long i = 1; i < trames(o); i++)
    if ((lit_echantillon(d + (i - 1) * 2, 2) < 0) != (lit_echantillon(d + i * 2, 2) < 0)) n++;
  return n;
}

}  // namespace

TEST_F(SoundTest, ResizeKeepsTheFileReadable) {
  put(at("a.wav"), wav(2, 8000, 16, Octets(8000 * 4, 7)));
  ok("read audio(1) name(\"" + at("a.wav") + "\"); dim audio(1) = 2.5;");
  Objet* o = audio_numero(1);
  EXPECT_EQ(trames(o), 20000);
  EXPECT_EQ(Images(o), 50);
  // The old samples kept, silence after them.
  EXPECT_EQ(donnees(o)[8000 * 4 - 1], 7);
  EXPECT_EQ(donnees(o)[8000 * 4], 0);
  ok("write audio(1) name(\"" + at("b.wav") + "\");");
  const Octets b = file(at("b.wav"));
  EXPECT_EQ(lit_u32(b.data() + 4), b.size() - 8);
  EXPECT_EQ(lit_u32(b.data() + 40), 80000u);
  // Python's wave module reads what was written.
  const std::string cmd = "python3 -c 'import wave,sys; f=wave.open(sys.argv[1]); sys.exit(0 if f.getnframes()==20000 "
                          "and f.getnchannels()==2 else 1)' " + at("b.wav");
  EXPECT_EQ(std::system(cmd.c_str()), 0);
  // A generated header keeps its form: the RIFF length is the file size.
  ok("generate audio(2) dim(1); dim audio(2) = 0.5;");
  Objet* g = audio_numero(2);
  EXPECT_EQ(lit_u32(audio_octets(g) + 4), static_cast<uint32_t>(Size(g)));
  EXPECT_EQ(lit_u32(audio_octets(g) + 40), static_cast<uint32_t>(Size(g) - 44));
  EXPECT_NE(fails("dim audio(2) = -1").find("dim audio(id) = seconds"), std::string::npos);
}

TEST_F(SoundTest, SpeedResamples) {
  ok("generate audio(1) dim(2); generate audio(1) time(0, 50) sin(100);");
  Objet* o = audio_numero(1);
  const int before = crossings(o);
  ok("speed audio(1) = 2;");
  EXPECT_EQ(trames(o), 44096);
  EXPECT_NEAR(crossings(o), before, 2);  // the same periods in half the frames
  ok("speed(0.25) audio(1);");
  EXPECT_EQ(trames(o), 176384);
  EXPECT_NEAR(crossings(o), before, 2);
  EXPECT_NE(fails("speed audio(1) = 0").find("f > 0"), std::string::npos);
}

TEST_F(SoundTest, FormatChangesTheSampleSize) {
  put(at("a.wav"), wav(2, 8000, 16, le16({32767, -32767, 16384, 0, -100, 258})));
  ok("read audio(1) name(\"" + at("a.wav") + "\"); format audio(1) = 8;");
  Objet* o = audio_numero(1);
  EXPECT_EQ(Nb_octet(o), 1);
  EXPECT_EQ(Bits(o), 8);
  EXPECT_EQ(Octets(donnees(o), donnees(o) + 6), (Octets{255, 1, 128 + 64, 128, 128, 129}));
  ok("write audio(1) name(\"" + at("b.wav") + "\");");
  const std::string cmd = "python3 -c 'import wave,sys; f=wave.open(sys.argv[1]); sys.exit(0 if f.getsampwidth()==1 "
                          "and f.getnframes()==3 and f.readframes(3)==bytes([255,1,192,128,128,129]) else 1)' " + at("b.wav");
  EXPECT_EQ(std::system(cmd.c_str()), 0);
  ok("format audio(1) = 16;");
  EXPECT_EQ(lit_echantillon(donnees(o), 2), 32767);
  EXPECT_EQ(lit_echantillon(donnees(o) + 4, 2), 16513);  // 64 * 32767 / 127 = 16512.5, rounded
  EXPECT_NE(fails("format audio(1) = 24").find("bits (8, 16)"), std::string::npos);
}

TEST_F(SoundTest, CleanFreesTheSoundsNamedOrAll) {
  ok("generate audio(1) dim(1); generate audio(2) dim(1); generate audio(3) dim(1);");
  ok("clean audio(2);");
  EXPECT_EQ(audio_numero(2), nullptr);
  EXPECT_NE(audio_numero(3), nullptr);
  ok("clean audio;");
  EXPECT_EQ(audio_numero(1), nullptr);
  EXPECT_EQ(audio_numero(3), nullptr);
}
