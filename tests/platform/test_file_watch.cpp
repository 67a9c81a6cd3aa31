// The watch of files: a file written in place or replaced by a rename is
// seen once; a neighbour in the same folder, or nothing, gives nothing.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "platform/file_watch.h"
#include "support/scratch_folder.h"

class FileWatchTest : public ::testing::Test, protected ScratchFolder {
 protected:
  void SetUp() override {
    make_folder("orvela_watch_");
    w = watch_open();
    ASSERT_NE(w, nullptr);
  }
  void TearDown() override {
    watch_close(w);
    remove_folder();
  }
  std::vector<std::string> changed() {
    std::vector<std::string> out;
    watch_changed(w, out);
    return out;
  }
  FileWatch* w = nullptr;
};

TEST_F(FileWatchTest, WritesAndRenamesOntoTheFileAreSeenOnceEach) {
  std::ofstream(at("a.func")) << "a(){}\n";
  ASSERT_TRUE(watch_add(w, at("a.func")));
  EXPECT_TRUE(changed().empty());
  std::ofstream(at("a.func")) << "a(){ return(1) }\n";
  std::ofstream(at("b.func")) << "b(){}\n";
  EXPECT_EQ(changed(), std::vector<std::string>{watch_path(at("a.func"))});
  EXPECT_TRUE(changed().empty());
  std::ofstream(at("a.tmp")) << "a(){ return(2) }\n";
  ASSERT_EQ(std::rename(at("a.tmp").c_str(), at("a.func").c_str()), 0);
  EXPECT_EQ(changed(), std::vector<std::string>{watch_path(at("a.func"))});
}

TEST_F(FileWatchTest, AFolderThatIsNotThereCannotBeWatched) {
  EXPECT_FALSE(watch_add(w, at("no/such/folder/x.func")));
}
