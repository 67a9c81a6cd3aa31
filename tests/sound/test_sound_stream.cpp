// Raw streams of numbers written and read back in each element type.
#include <gtest/gtest.h>

#include "sound/sound_stream.h"
#include "sound_fixture.h"

class SoundStream : public SoundTest {
 protected:
  void TearDown() override {
    END_WRITE_AUDIO();
    END_READ_AUDIO();
    SoundTest::TearDown();
  }
};

TEST_F(SoundStream, EachTypeRoundTrips) {
  const std::string f = at("raw");
  ok("write audio(\"" + f + "\") type(\"char\"); write audio = (1, 255, 300, -2); end write audio;");
  EXPECT_EQ(file(f), (Octets{1, 255, 255, 0}));
  ok("write audio(\"" + f + "\") type(\"long\"); write audio = (7.9, -3); write audio = (65536); end write audio;");
  EXPECT_EQ(file(f), (Octets{7, 0, 0, 0, 0xfd, 0xff, 0xff, 0xff, 0, 0, 1, 0}));
  ok("read audio(\"" + f + "\") type(\"long\");");
  expect_floats(floats("read audio NP(2)"), {7, -3}, "long");
  expect_floats(floats("read audio NP(5)"), {65536}, "long, the end");
  EXPECT_TRUE(nil("read audio"));
  ok("end read audio; write audio(\"" + f + "\"); write audio = (0.25, -1.5e10); end write audio;");
  EXPECT_EQ(floats_file(f), (std::vector<float>{0.25f, -1.5e10f}));
  ok("read audio(\"" + f + "\") type(\"char\");");
  EXPECT_EQ(floats("read audio NP(8)").size(), 8u);
}

TEST_F(SoundStream, Misuse) {
  EXPECT_EQ(fails("write audio = (1)"), "write audio(\"name\") type(\"char\"|\"float\"|\"long\")\n");
  EXPECT_EQ(fails("read audio"), "read audio(\"name\") type(\"char\"|\"float\"|\"long\")\n");
  EXPECT_EQ(fails("write audio(\"" + at("x") + "\") type(\"short\")"), "short != (char, float, long)\n");
  EXPECT_NE(fails("read audio(\"" + at("none") + "\")").find("NOT FOUND"), std::string::npos);
  EXPECT_NE(fails("write audio(\"" + at("no/folder/x") + "\")").find(at("no/folder/x")), std::string::npos);
  // Until closed, the file is not in place.
  ok("write audio(\"" + at("late") + "\"); write audio = (1);");
  EXPECT_FALSE(std::filesystem::exists(at("late")));
  ok("end write audio;");
  EXPECT_TRUE(std::filesystem::exists(at("late")));
}
