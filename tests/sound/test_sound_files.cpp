// Sounds through files: round trips of files that other programs made,
// files that are no sound, the generated form and the printed forms.
#include <gtest/gtest.h>

#include <cstdio>

#include "kernel/property.h"
#include "sound/sound_files.h"
#include "sound_fixture.h"

namespace {

// Runs a python3 script with the folder as argument; false when python3 fails.
bool python(const std::string& script, const std::string& folder) {
  const std::string cmd = "python3 -c '" + script + "' " + folder + " >/dev/null 2>&1";
  return std::system(cmd.c_str()) == 0;
}

// Files in the four shapes by python's wave module: a ramp of samples.
const char* PYTHON_WAVE =
    "import sys, wave\n"
    "for ch in (1, 2):\n"
    "  for w in (1, 2):\n"
    "    f = wave.open(\"%s/py_%d_%d.wav\" % (sys.argv[1], ch, w * 8), \"wb\")\n"
    "    f.setnchannels(ch); f.setsampwidth(w); f.setframerate(11025)\n"
    "    f.writeframes(bytes((i * 37) % 256 for i in range(11025 * ch * w + 6 * ch * w)))\n"
    "    f.close()\n";

}  // namespace

TEST_F(SoundTest, RoundTripOfPythonWaveFiles) {
  ASSERT_TRUE(python(PYTHON_WAVE, dir.string()));
  for (int ch : {1, 2})
    for (int bits : {8, 16}) {
      const std::string in = at("py_" + std::to_string(ch) + "_" + std::to_string(bits) + ".wav");
      const std::string out = at("out.wav");
      ok("read audio(3) name(\"" + in + "\"); write audio(3) name(\"" + out + "\");");
      const Octets a = file(in), b = file(out);
      ASSERT_GT(a.size(), 44u);
      EXPECT_EQ(a, b) << in;
      Objet* o = audio_numero(3);
      ASSERT_NE(o, nullptr);
      EXPECT_EQ(Channel(o), ch);
      EXPECT_EQ(Bits(o), bits);
      EXPECT_EQ(Nb_octet(o), bits / 8);
      EXPECT_EQ(Rate(o), 11025);
      EXPECT_EQ(Header(o), 44);
      EXPECT_EQ(Size(o), static_cast<int>(a.size()));
      EXPECT_EQ(Images(o), 25);
      // `dim audio`: channels, bytes, rate, frames, seconds.
      expect_floats(floats("dim audio(3)"), {float(ch), float(bits / 8), 11025.0f, 11031.0f, 11031.0f / 11025}, in.c_str());
    }
}

TEST_F(SoundTest, RoundTripOfSoxFiles) {
  if (!have("sox")) GTEST_SKIP() << "sox is not installed";
  for (int ch : {1, 2})
    for (int bits : {8, 16}) {
      const std::string in = at("sox.wav");
      const std::string cmd = "sox -n -r 8000 -c " + std::to_string(ch) + " -b " + std::to_string(bits) + " " + in +
                              " synth 1.5 sine 440 >/dev/null 2>&1";
      ASSERT_EQ(std::system(cmd.c_str()), 0);
      ok("read audio(1) name(\"" + in + "\"); write audio(1) name(\"" + at("copy.wav") + "\");");
      EXPECT_EQ(file(in), file(at("copy.wav")));
      Objet* o = audio_numero(1);
      ASSERT_NE(o, nullptr);
      EXPECT_EQ(Channel(o), ch);
      EXPECT_EQ(Bits(o), bits);
      EXPECT_EQ(Rate(o), 8000);
      // The samples begin where the file's own "data" chunk ends.
      const Octets f = file(in);
      ASSERT_GE(Header(o), 8);
      EXPECT_EQ(std::string(f.begin() + Header(o) - 8, f.begin() + Header(o) - 4), "data");
      EXPECT_EQ(Size(o) - Header(o), 12000 * ch * bits / 8);
    }
}

TEST_F(SoundTest, ReadWriteCopiesToEachFurtherName) {
  put(at("a.wav"), wav(1, 8000, 8, Octets(800, 200)));
  ok("read audio(2) name(\"" + at("a.wav") + "\") write name(\"" + at("b.wav") + "\") name(\"" + at("c.wav") + "\");");
  EXPECT_EQ(file(at("b.wav")), file(at("a.wav")));
  EXPECT_EQ(file(at("c.wav")), file(at("a.wav")));
}

TEST_F(SoundTest, FilesThatAreNoSoundLeaveNoObject) {
  put(at("good.wav"), wav(1, 8000, 16, Octets(100)));
  ok("read audio(4) name(\"" + at("good.wav") + "\");");
  ASSERT_NE(audio_numero(4), nullptr);
  // An existing sound of that number is removed first, whatever follows.
  Octets nodata = wav(1, 8000, 16, Octets(100));
  std::memcpy(nodata.data() + 36, "DATA", 4);
  put(at("nodata.wav"), nodata);
  EXPECT_EQ(fails("read audio(4) name(\"" + at("nodata.wav") + "\")"), "unable to find \"data\"\n");
  EXPECT_EQ(audio_numero(4), nullptr);
  put(at("text.wav"), Octets{'h', 'e', 'l', 'l', 'o'});
  EXPECT_NE(fails("read audio(4) name(\"" + at("text.wav") + "\")").find("BADLY FORMATED FILE"), std::string::npos);
  EXPECT_EQ(audio_numero(4), nullptr);
  EXPECT_NE(fails("read audio(4) name(\"" + at("none.wav") + "\")").find("NOT FOUND"), std::string::npos);
  EXPECT_EQ(fails("write audio(4)"), "write audio (id) name (\"nnn.wav\")\n");
  EXPECT_NE(fails("write audio(4) name(\"" + at("x.wav") + "\")").find("NOT FOUND"), std::string::npos);
}

TEST_F(SoundTest, GeneratedSoundKeepsItsForm) {
  ok("generate audio(5) dim(2, 2);");
  Objet* o = audio_numero(5);
  ASSERT_NE(o, nullptr);
  EXPECT_EQ(Size(o), 44 + 44100 * 2 * 4);  // 44100 * n * 4 bytes of space
  EXPECT_EQ(Header(o), 60);
  EXPECT_EQ(Rate(o), 44100);
  EXPECT_EQ(Bits(o), 16);
  EXPECT_EQ(Images(o), 50);
  const word* meta = get_val_1(o->local, KW_meta);
  ASSERT_NE(meta, nullptr);
  EXPECT_EQ(np(meta), 15);
  EXPECT_EQ(meta[4 + MW_SIZE], Size(o));
  EXPECT_EQ(meta[4 + MW_HEADER], 60);
  EXPECT_EQ(meta[4 + MW_RATE], 44100);
  ok("write audio(5) name(\"" + at("gen.wav") + "\");");
  const Octets f = file(at("gen.wav"));
  ASSERT_EQ(f.size(), static_cast<size_t>(Size(o)));
  EXPECT_EQ(f[28] | f[29] << 8 | f[30] << 16, 88200);  // 44100 * channels
  EXPECT_EQ(f[32], 2);                                  // block align: Nb_octet
  // Read back, the header is what the reader finds: 44.
  ok("read audio(6) name(\"" + at("gen.wav") + "\");");
  EXPECT_EQ(Header(audio_numero(6)), 44);
  EXPECT_NE(fails("generate audio(7) dim(0)").find("dim(seconds"), std::string::npos);
}

TEST_F(SoundTest, DimAcceptsBytesOrBits) {
  ok("generate audio(1) dim(1);");
  Objet* o = audio_numero(1);
  for (int given : {1, 2, 4, 8, 16, 32}) {
    Nb_octet(o) = given;
    EXPECT_EQ(GET_DIM_AUDIO(o), 0);
    EXPECT_EQ(Nb_octet(o), given >= 8 ? given / 8 : given);
  }
  Nb_octet(o) = 3;
  EXPECT_EQ(fails("edit audio(1)"), "data size 3 != (1,2,4, 8,16,32)\n");
}
