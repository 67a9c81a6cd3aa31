// Unsaved sounds with the real program: a signal's end writes them to a
// recovery file of sounds, and `read audio name(...)` brings them back
// under their numbers.
#include <gtest/gtest.h>

#include <csignal>

#include "support/program.h"

TEST(SoundRecovery, SigtermWritesTheUnsavedSoundsAndTheyReadBack) {
  Program s;
  ASSERT_TRUE(s.start(Program::Input::pipe));
  s.type("generate audio(1) dim(1)\ngenerate audio(1) time(0, 25) sin(440)\n");
  s.type("generate audio(2) dim(1)\nwrite audio(2) name(\"two.wav\")\n$\"ready\"\n");
  ASSERT_TRUE(s.wait_for("ready")) << s.seen;
  kill(s.pid, SIGTERM);
  EXPECT_EQ(s.exit_code(), 128 + SIGTERM) << s.seen;
  const std::string where = s.dir.string() + "/orvela-recovery.audio";
  EXPECT_NE(s.seen.find("SIGTERM: unsaved work written to " + where + "\n"), std::string::npos) << s.seen;

  Program next;
  next.take_folder(s);
  next.run_lines("read audio name(\"orvela-recovery.audio\")\nnumber audio\nedit audio(1)\n");
  EXPECT_NE(next.seen.find("recovery file of an ended run: " + where + "\n"), std::string::npos) << next.seen;
  // Only the unsaved sound, whole: its rate and length come back too.
  EXPECT_NE(next.seen.find(" ? ?1.000000 \n ?format: PCM\n"), std::string::npos) << next.seen;
  EXPECT_NE(next.seen.find("sample_rate: 44100\nheader_size: 60\nfile_size: 88244\nsample_number: 44092\n"),
            std::string::npos)
      << next.seen;
}
