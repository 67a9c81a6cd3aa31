// The safe writer: the target is replaced only by a complete file, keeps
// its permissions and its links, and is left as it was by any failure,
// with no temporary file behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/safe_write.h"

namespace fs = std::filesystem;

namespace {

class SafeWrite : public ::testing::Test {
 protected:
  fs::path dir;
  void SetUp() override {
    char tmpl[] = "/tmp/orvela_safeXXXXXX";
    ASSERT_NE(mkdtemp(tmpl), nullptr);
    dir = tmpl;
  }
  void TearDown() override { fs::remove_all(dir); }
  std::string at(const std::string& name) const { return (dir / name).string(); }
  std::string read(const std::string& name) const {
    std::ifstream f(dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(f), {});
  }
  void put(const std::string& name, const std::string& text) const { std::ofstream(dir / name) << text; }
  int entries() const { return static_cast<int>(std::distance(fs::directory_iterator(dir), {})); }
  WriteFault write(const std::string& name, const std::string& text) {
    return safe_write_file(at(name), text.data(), text.size());
  }
};

}  // namespace

TEST_F(SafeWrite, ReplacesTheTargetKeepingItsModeAndItsLink) {
  put("real", "old");
  chmod(at("real").c_str(), 0640);
  fs::create_symlink("real", dir / "link");
  ASSERT_EQ(write("link", "new content"), WriteFault::none);
  EXPECT_TRUE(fs::is_symlink(dir / "link"));
  EXPECT_EQ(read("real"), "new content");
  EXPECT_EQ(fs::status(dir / "real").permissions(), fs::perms(0640));
  EXPECT_EQ(entries(), 2);
  // A new file takes the usual permissions.
  const mode_t mask = umask(022);
  ASSERT_EQ(write("fresh", "x"), WriteFault::none);
  umask(mask);
  EXPECT_EQ(fs::status(dir / "fresh").permissions(), fs::perms(0644));
}

TEST_F(SafeWrite, NothingChangesUntilTheWriteIsComplete) {
  put("t", "abcdef");
  WriteFault fault;
  SafeFile* f = safe_open(at("t"), true, &fault);
  ASSERT_NE(f, nullptr);
  ASSERT_TRUE(safe_write_at(f, 2, "XY", 2));
  EXPECT_EQ(read("t"), "abcdef");
  ASSERT_EQ(safe_commit(f), WriteFault::none);
  EXPECT_EQ(read("t"), "abXYef");
  // Given up, the write leaves the file and no temporary one.
  f = safe_open(at("t"), false, &fault);
  ASSERT_NE(f, nullptr);
  safe_write(f, "zz", 2);
  safe_abandon(f);
  EXPECT_EQ(read("t"), "abXYef");
  EXPECT_EQ(entries(), 1);
  // Writes still open when the process ends are finished.
  f = safe_open(at("t"), true, &fault);
  ASSERT_NE(f, nullptr);
  safe_write(f, "!", 1);
  safe_commit_all();
  EXPECT_EQ(read("t"), "abXYef!");
}

TEST_F(SafeWrite, FailuresLeaveTheOldFile) {
  EXPECT_EQ(write("missing/t", "x"), WriteFault::create);
  fs::create_directory(dir / "folder");
  EXPECT_EQ(write("folder", "x"), WriteFault::create);
  // A fifo nobody reads is refused at once rather than waited on.
  ASSERT_EQ(mkfifo(at("fifo").c_str(), 0600), 0);
  EXPECT_EQ(write("fifo", "x"), WriteFault::create);
  // A device is written in place.
  EXPECT_EQ(safe_write_file("/dev/full", "x", 1), WriteFault::space);
  EXPECT_EQ(safe_write_file("/dev/null", "x", 1), WriteFault::none);
  // Past a size limit: the space ran out, the old file is whole.
  put("big", "old");
  rlimit saved{};
  getrlimit(RLIMIT_FSIZE, &saved);
  rlimit small = saved;
  small.rlim_cur = 1000;
  auto previous = signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const WriteFault fault = write("big", std::string(5000, 'n'));
  setrlimit(RLIMIT_FSIZE, &saved);
  signal(SIGXFSZ, previous);
  EXPECT_EQ(fault, WriteFault::space);
  EXPECT_EQ(read("big"), "old");
  EXPECT_EQ(entries(), 3);  // folder, fifo, big
}
