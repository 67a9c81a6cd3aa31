// A program fed through a pipe, as ffmpeg is fed a film, and the whole
// files that recordings write at each image.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/program_pipe.h"
#include "platform/safe_write.h"

namespace {

std::filesystem::path scratch(const char* name) {
  const auto dir = std::filesystem::temp_directory_path() / ("orvela_pipe_" + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  return dir / name;
}

std::string content(const std::filesystem::path& p) {
  std::ifstream f(p, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(f), {});
}

TEST(ProgramPipe, TheProgramReadsAllThatIsWrittenAndItsStatusComesBack) {
  EXPECT_TRUE(program_on_path("sh"));
  EXPECT_FALSE(program_on_path("orvela-no-such-program"));
  const auto out = scratch("count");
  const std::string cmd = "wc -c > '" + out.string() + "'; exit 3";
  const char* argv[] = {"sh", "-c", cmd.c_str(), nullptr};
  ProgramPipe p;
  ASSERT_TRUE(pipe_start(argv, &p));
  const std::string block(1 << 20, 'x');  // more than a pipe holds
  for (int i = 0; i < 3; i++) EXPECT_TRUE(pipe_write(&p, block.data(), block.size()));
  EXPECT_EQ(pipe_finish(&p), 3);
  EXPECT_EQ(std::stoll(content(out)), 3LL << 20);
  EXPECT_FALSE(pipe_write(&p, "x", 1));  // finished
}

TEST(ProgramPipe, AProgramThatStopsReadingFailsTheWritesAndNotTheProcess) {
  const char* argv[] = {"true", nullptr};
  ProgramPipe p;
  ASSERT_TRUE(pipe_start(argv, &p));
  const std::string block(1 << 16, 'x');
  bool failed = false;
  for (int i = 0; i < 200 && !failed; i++) failed = !pipe_write(&p, block.data(), block.size());
  EXPECT_TRUE(failed);
  EXPECT_EQ(pipe_finish(&p), 0);
  const char* none[] = {"orvela-no-such-program", nullptr};
  EXPECT_FALSE(pipe_start(none, &p));
}

TEST(WriteWholeFile, TheFileIsReplacedWholeAndNoTemporaryFileStays) {
  const auto target = scratch("frame.png"), temp = scratch("frame.png.part");
  ASSERT_EQ(write_whole_file(target.c_str(), temp.c_str(), "first", 5), WriteFault::none);
  ASSERT_EQ(write_whole_file(target.c_str(), temp.c_str(), "second", 6), WriteFault::none);
  EXPECT_EQ(content(target), "second");
  EXPECT_FALSE(std::filesystem::exists(temp));
  // A folder that is not there: nothing made, and the message's cause.
  const auto nowhere = scratch("none") / "frame.png";
  EXPECT_EQ(write_whole_file(nowhere.c_str(), (nowhere.string() + ".part").c_str(), "x", 1), WriteFault::create);
  std::filesystem::remove_all(target.parent_path());
}

}  // namespace
