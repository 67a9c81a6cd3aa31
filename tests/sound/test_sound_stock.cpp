// `.stock` analysis against sums and counts done by hand, the files it
// writes read back, and the level file of `write audio stock`.
#include <gtest/gtest.h>

#include "kernel/property.h"
#include "sound/sound_stock.h"
#include "sound_fixture.h"

TEST_F(SoundTest, StockOfEightBitSoundsIgnoresTheCoefficients) {
  // 50 Hz: windows of 2 frames; stereo, only the first channel counts,
  // its bytes as stored.
  Octets s;
  for (int i = 0; i < 100; i++) {
    s.push_back(static_cast<uint8_t>(i % 7 * 30));  // first channel
    s.push_back(255);
  }
  put(at("s8.wav"), wav(2, 50, 8, s));
  ok("read audio(1) name(\"" + at("s8.wav") + "\");");
  const std::vector<float> a = floats("stock audio(1) coe(0.5, 0.01)");
  const std::vector<float> b = floats("stock audio(1)");
  ASSERT_EQ(a.size(), 2u * 50);
  EXPECT_EQ(a, b);
  // Window 3: frames 6 and 7, bytes 6*30 and 0: sum 180. No byte can
  // exceed the sum of its own window: the count is 0.
  EXPECT_EQ(a[6], 0.0f);
  EXPECT_FLOAT_EQ(a[7], 180.0f / (50 * 127.0f));
  for (int w = 0; w < 50; w++) {
    const int sum = (2 * w) % 7 * 30 + (2 * w + 1) % 7 * 30;
    EXPECT_FLOAT_EQ(a[2 * w + 1], static_cast<float>(sum) / (50 * 127.0f)) << w;
  }
}

TEST_F(SoundTest, StockOfSixteenBitSoundsCountsTheSampleAfterTheWindow) {
  // 100 Hz mono, one second: 25 windows of 4 frames.
  std::vector<int> v(100, 0);
  const int w0[] = {-10, -20, 5, 1}, w1[] = {7, 100, 100, 100};
  for (int i = 0; i < 4; i++) v[i] = w0[i], v[4 + i] = w1[i], v[96 + i] = -5;
  put(at("s16.wav"), wav(1, 100, 16, le16(v)));
  ok("read audio(1) name(\"" + at("s16.wav") + "\");");
  const std::vector<float> p = floats("stock audio(1) name(\"" + at("pairs") + "\") coe(0.5, 0.01)");
  ASSERT_EQ(p.size(), 50u);
  // Window 0: sum -24; the sample after it (7) is above: count 4 / 2.
  EXPECT_FLOAT_EQ(p[0], 2 / (0.5f * 20000));
  EXPECT_FLOAT_EQ(p[1], -24 / (0.01f * 100 * 32767));
  // Window 1: sum 307; the sample after it (0) is below: count 0,
  // although 100 > 0 in the window itself... and 7 < 307.
  EXPECT_FLOAT_EQ(p[2], 0);
  EXPECT_FLOAT_EQ(p[3], 307 / (0.01f * 100 * 32767));
  // Window 2: all 0, the sample after is 0, not above: 0.
  EXPECT_FLOAT_EQ(p[4], 0);
  // The last window: sum -20; past the data the sample reads 0, above it.
  EXPECT_FLOAT_EQ(p[48], 2 / (0.5f * 20000));
  EXPECT_FLOAT_EQ(p[49], -20 / (0.01f * 100 * 32767));
  // Default coefficients 0.2 and 0.002.
  const std::vector<float> d = floats("stock audio(1)");
  EXPECT_FLOAT_EQ(d[0], 2 / (0.2f * 20000));
  EXPECT_FLOAT_EQ(d[1], -24 / (0.002f * 100 * 32767));
  // The file: ".stock" put after the name, raw floats.
  EXPECT_EQ(floats_file(at("pairs.stock")), p);
  // Read back into another sound, and kept as its `stock` property.
  EXPECT_EQ(floats("read audio(2) stock name(\"" + at("pairs.stock") + "\")"), p);
  EXPECT_EQ(floats("stock audio(3) read(\"" + at("pairs.stock") + "\")"), p);
  const word* kept = get_val_1(audio_numero(2)->local, KW_stock);
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(np(kept), 25);
  EXPECT_EQ(dimp(kept), 2);
  EXPECT_FLOAT_EQ(getf(kept, 3), p[3]);
}

TEST_F(SoundTest, StockFileErrors) {
  EXPECT_NE(fails("read audio(2) stock name(\"" + at("none.stock") + "\")").find("NOT FOUND"), std::string::npos);
  EXPECT_EQ(fails("read audio(2) stock"), "read audio (id) stock (\"nnn.stock\")\n");
  EXPECT_NE(fails("stock audio(9)").find("NOT FOUND"), std::string::npos);
  // A sample size the analysis does not know.
  put(at("s.wav"), wav(1, 100, 32, Octets(400)));
  ok("read audio(1) name(\"" + at("s.wav") + "\");");
  EXPECT_EQ(fails("stock audio(1)"), "data size 4\n");
  // A rate under 25 Hz has windows of no sample: refused.
  put(at("slow.wav"), wav(1, 10, 8, Octets(400)));
  ok("read audio(1) name(\"" + at("slow.wav") + "\");");
  EXPECT_NE(fails("stock audio(1)").find("MALLOC ERROR"), std::string::npos);
  // A file whose length is no whole number of pairs: the last part is left.
  put(at("odd.stock"), Octets(13, 0));
  EXPECT_EQ(floats("read audio(2) stock name(\"" + at("odd.stock") + "\")").size(), 2u);
}

TEST_F(SoundTest, LevelFileOfWriteStock) {
  // 100 Hz mono 16-bit: 0.5 s steps of 50 frames, levels 0.5 then 0.25.
  std::vector<int> v(100);
  for (int i = 0; i < 100; i++) v[i] = (i < 50 ? 16384 : -8192) * (i % 2 ? 1 : -1);
  put(at("l.wav"), wav(1, 100, 16, le16(v)));
  ok("read audio(1) name(\"" + at("l.wav") + "\");");
  ok("write audio(1) stock(0.5) name(\"" + at("l.lev") + "\");");
  std::vector<float> f = floats_file(at("l.lev"));
  ASSERT_EQ(f.size(), 2u);
  EXPECT_NEAR(f[0], 16384.0 / 32767, 1e-6);
  EXPECT_NEAR(f[1], 8192.0 / 32767, 1e-6);
  ok("write audio(1) stock(0.5) max name(\"" + at("l.lev") + "\");");
  f = floats_file(at("l.lev"));
  EXPECT_FLOAT_EQ(f[0], 1);
  EXPECT_FLOAT_EQ(f[1], 0.5f);
  // `average(t)`: the first t seconds of each step only.
  for (int i = 0; i < 10; i++) v[i] = 0;
  put(at("l.wav"), wav(1, 100, 16, le16(v)));
  ok("read audio(1) name(\"" + at("l.wav") + "\"); write audio(1) stock(0.5) average(0.1) name(\"" + at("l.lev") + "\");");
  f = floats_file(at("l.lev"));
  EXPECT_FLOAT_EQ(f[0], 0);
  EXPECT_NEAR(f[1], 8192.0 / 32767, 1e-6);
  put(at("c.wav"), wav(3, 100, 16, Octets(600)));
  ok("read audio(1) name(\"" + at("c.wav") + "\");");
  EXPECT_EQ(fails("write audio(1) stock(0.5) name(\"" + at("l.lev") + "\")"), "channel 3\n");
}
