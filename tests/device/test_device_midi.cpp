// "MID" through the ALSA sequencer: a sending client of the test's own
// connects to the device's input and plays a note. Skipped where the
// machine has no sequencer (no /dev/snd/seq, as in most containers).
#include <alsa/asoundlib.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "device/device_table.h"
#include "platform/midi.h"
#include "support/text_runner.h"

namespace {

class DeviceMidi : public TextRunner {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    if (access("/dev/snd/seq", R_OK | W_OK) != 0) GTEST_SKIP() << "/dev/snd/seq is absent: no ALSA sequencer here";
    ini_devices();
  }
  void TearDown() override { ini_devices(); }
};

}  // namespace

TEST_F(DeviceMidi, ANotePlayedIsReadAsItsThreeBytes) {
  Outcome o = run("device(20) ini(\"MID\")");
  ASSERT_EQ(o.status, 0) << o.out;
  Periph* p = periph_ouvert(20);
  ASSERT_NE(p, nullptr);
  int client = 0, port = 0;
  ASSERT_EQ(sscanf(p->Nom.c_str(), "%d:%d", &client, &port), 2) << p->Nom;
  EXPECT_TRUE(nil("device(20)")) << "no message yet";

  snd_seq_t* seq = nullptr;
  ASSERT_GE(snd_seq_open(&seq, "default", SND_SEQ_OPEN_OUTPUT, 0), 0);
  const int out = snd_seq_create_simple_port(seq, "out", SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ,
                                             SND_SEQ_PORT_TYPE_MIDI_GENERIC);
  ASSERT_GE(out, 0);
  ASSERT_GE(snd_seq_connect_to(seq, out, client, port), 0);
  snd_seq_event_t ev;
  snd_seq_ev_clear(&ev);
  snd_seq_ev_set_source(&ev, out);
  snd_seq_ev_set_subs(&ev);
  snd_seq_ev_set_direct(&ev);
  snd_seq_ev_set_noteon(&ev, 2, 60, 100);
  snd_seq_event_output_direct(seq, &ev);
  snd_seq_drain_output(seq);
  usleep(100000);
  expect_floats(floats("device(20)"), {0x92, 60, 100}, "note on, channel 3");
  // The last message stays until another comes.
  expect_floats(floats("device(20)"), {0x92, 60, 100}, "kept");
  snd_seq_close(seq);
}

TEST(DeviceMidiAbsent, NoSequencerIsAClearErrorAndAFreeSlot) {
  if (access("/dev/snd/seq", F_OK) == 0) GTEST_SKIP() << "a sequencer is present: its absence cannot be shown here";
  std::string why;
  EXPECT_EQ(midi_open(0, &why), nullptr);
  EXPECT_NE(why.find("no MIDI sequencer"), std::string::npos) << why;
}
