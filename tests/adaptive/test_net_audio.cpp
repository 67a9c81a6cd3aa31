// `audio network(ids)`: the live window scaled by coe / 127 is the
// network's pattern.
#include <memory>

#include "network_fixture.h"
#include "platform/audio.h"
#include "sound/live_capture.h"
#include "sound/live_state.h"

namespace {

double fige() { return 0; }  // a clock that never moves: no new bytes

class AudioNetworkTest : public NetworkTest {
 protected:
  void SetUp() override {
    NetworkTest::SetUp();
    FreeDirectSound();
    LiveAudio& a = live_audio();
    a = *std::make_unique<LiveAudio>();
  }
  void TearDown() override {
    FreeDirectSound();
    NetworkTest::TearDown();
  }
};

TEST_F(AudioNetworkTest, TheScaledWindowIsThePattern) {
  reseau_221();
  EXPECT_NE(fails("audio network(1)").find("SOUND OFF"), std::string::npos);
  LiveAudio& a = live_audio();
  a.capture = audio_open_bytes(std::vector<uint8_t>(64, 0), fige);
  a.on = 1;
  a.Fenetre = 4;
  const float w[4] = {127, 63.5f, 254, 0};
  // The poll finds no new byte and processes the same window again.
  for (int i = 0; i < 4; i++) a.Echantillons[i] = w[i];
  const std::vector<float> attendu = floats("motif(2, 1) network(1)");
  ASSERT_EQ(attendu.size(), 1u);
  expect_floats(floats("audio network(1) coe(2)"), {attendu[0]}, "coe 2: the window times 2/127");
  expect_floats(floats("audio network(1, 1)"), {floats("motif(1, 0.5) network(1)")[0],
                                                floats("motif(1, 0.5) network(1)")[0]},
                "each network's outputs in turn");
  EXPECT_NE(fails("audio network(7)").find("audio network(ids) [coe(c)]"), std::string::npos);
}

}  // namespace
