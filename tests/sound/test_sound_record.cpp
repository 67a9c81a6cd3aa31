// Recording the live level into a `.stock` file, one pair an image, with
// the capture replaced by a counter.
#include <gtest/gtest.h>

#include "device/device_table.h"
#include "interaction/loop_state.h"
#include "sound/sound_record.h"
#include "sound/sound_play.h"
#include "sound_fixture.h"

namespace {

int calls = 0;
int fake_live(float out[3]) {
  calls++;
  out[0] = static_cast<float>(calls);
  out[1] = -1;
  out[2] = static_cast<float>(10 * calls);
  return 0;
}

class SoundRecord : public SoundTest {
 protected:
  DeviceAudioHooks saved;
  void SetUp() override {
    SoundTest::SetUp();
    saved = devices().audio;
    calls = 0;
  }
  void TearDown() override {
    devices().audio = saved;
    son().enregistrement = EnregistrementStock{};
    SoundTest::TearDown();
  }
};

}  // namespace

TEST_F(SoundRecord, PairsAnImageWrittenAtTheCount) {
  devices().audio.lire = fake_live;
  ok("stock audio name(\"" + at("rec") + "\") time(3);");
  // The loop's sound step records.
  ASSERT_EQ(loop().stock_audio, etape_son);
  Capture out;
  EXPECT_EQ(loop().stock_audio(), 0);
  EXPECT_EQ(loop().stock_audio(), 0);
  EXPECT_FALSE(std::filesystem::exists(at("rec.stock")));
  EXPECT_EQ(loop().stock_audio(), 0);
  EXPECT_EQ(out.take(), "write " + at("rec.stock") + "\n");
  EXPECT_EQ(floats_file(at("rec.stock")), (std::vector<float>{1, 10, 2, 20, 3, 30}));
  // Recording has stopped: the next images read nothing.
  EXPECT_EQ(loop().stock_audio(), 0);
  EXPECT_EQ(calls, 3);
}

TEST_F(SoundRecord, FailuresStopTheRecording) {
  devices().audio.lire = nullptr;
  ok("stock audio name(\"" + at("rec") + "\") time(2);");
  {
    Capture out;
    EXPECT_EQ(STOCK_AUDIO(), 0);
    EXPECT_EQ(out.take(), "audio  SOUND OFF\n");
  }
  EXPECT_FALSE(son().enregistrement.actif);
  devices().audio.lire = fake_live;
  ok("stock audio name(\"" + at("no/such/folder/rec") + "\") time(1);");
  Capture out;
  EXPECT_EQ(STOCK_AUDIO(), 0);
  EXPECT_NE(out.take().find("NOT FOUND"), std::string::npos);
  EXPECT_FALSE(son().enregistrement.actif);
  EXPECT_NE(fails("stock audio name(\"x\")").find("time(images)"), std::string::npos);
}
