// SIGTERM and SIGHUP with the real program: the unsaved work goes to
// recovery files in the working folder (functions as function text,
// objects as object files), the program says where and ends; the next
// start names the files, and they read back.
#include <gtest/gtest.h>

#include <regex>

#include "support/program.h"

namespace {

// Starts a session on a pipe and makes unsaved work: a function, a
// volume, and a saved function that must not be in the recovery.
void make_work(Program& s) {
  ASSERT_TRUE(s.start(Program::Input::pipe));
  s.type("func=\"saved(){return(1);}\"\nwrite func(\"saved\") name(\"saved.func\")\n");
  s.type("func=\"twice(x){return(2*x);}\"\nball(3) dim(2)\nball(4)\nwrite vol(4) name(\"v4.obj\")\n");
  s.type("$\"ready\"\n");
  ASSERT_TRUE(s.wait_for("ready")) << s.seen;
}

}  // namespace

TEST(Recovery, SigtermAtThePromptSavesTheUnsavedWorkAndEnds) {
  Program s;
  make_work(s);
  kill(s.pid, SIGTERM);
  EXPECT_EQ(s.exit_code(), 128 + SIGTERM) << s.seen;
  const std::string where = s.dir.string() + "/orvela-recovery";
  EXPECT_NE(s.seen.find("SIGTERM: unsaved work written to " + where + ".func\n"), std::string::npos) << s.seen;
  EXPECT_NE(s.seen.find("SIGTERM: unsaved work written to " + where + ".vol\n"), std::string::npos) << s.seen;
  // Only what was unsaved.
  EXPECT_EQ(s.file("orvela-recovery.func"), "twice(x){return(2*x);}\n\n");
  EXPECT_EQ(s.leftovers(), 0);

  // The next start names the files; they read back.
  Program next;
  next.take_folder(s);
  next.run_lines("read func(\"orvela-recovery.func\")\ntwice(21)\nrem vol\nread vol name(\"orvela-recovery.vol\")\nlist vol\n");
  EXPECT_NE(next.seen.find("recovery file of an ended run: " + where + ".func\n"), std::string::npos) << next.seen;
  EXPECT_NE(next.seen.find("recovery file of an ended run: " + where + ".vol\n"), std::string::npos) << next.seen;
  EXPECT_NE(next.seen.find("42.000000"), std::string::npos) << next.seen;
  EXPECT_NE(next.seen.find("vol ball (3)"), std::string::npos) << next.seen;
  EXPECT_EQ(next.seen.find("vol ball (4)"), std::string::npos) << next.seen;
}

TEST(Recovery, SighupDuringALoopEndsAtTheNextSafePoint) {
  Program s;
  make_work(s);
  // A recovery of an earlier run is kept: this one takes another name.
  s.put("orvela-recovery.func", "old(){return(0);}\n");
  s.type("while(1){}\n");
  s.settle(200);
  kill(s.pid, SIGHUP);
  EXPECT_EQ(s.exit_code(), 128 + SIGHUP) << s.seen;
  EXPECT_NE(s.seen.find("SIGHUP: unsaved work written to " + s.dir.string() + "/orvela-recovery-2.func\n"),
            std::string::npos)
      << s.seen;
  EXPECT_EQ(s.file("orvela-recovery.func"), "old(){return(0);}\n");
  EXPECT_EQ(s.file("orvela-recovery-2.func"), "twice(x){return(2*x);}\n\n");
  EXPECT_FALSE(s.file("orvela-recovery-2.vol").empty());
}

TEST(Recovery, NothingUnsavedNothingWritten) {
  Program s;
  ASSERT_TRUE(s.start(Program::Input::pipe));
  s.type("1+1\n");
  ASSERT_TRUE(s.wait_for("2.000000")) << s.seen;
  kill(s.pid, SIGTERM);
  EXPECT_EQ(s.exit_code(), 128 + SIGTERM);
  EXPECT_NE(s.seen.find("SIGTERM: nothing unsaved"), std::string::npos) << s.seen;
  EXPECT_TRUE(s.file("orvela-recovery.func").empty());
}

// A taught network is kept as an object file and gives the same answer
// once read back.
TEST(Recovery, ATaughtNetworkGoesToItsOwnFile) {
  Program s;
  ASSERT_TRUE(s.start(Program::Input::pipe));
  s.type("network(1) fac(2,3,1) motif(0.1,0.1, 0.9,0.9) law(0.1,0.9)\n");
  s.type("generate network(1) validate(200) alea(1)\na=generate network(1) motif(0.9,0.9)\n$a\n");
  s.type("$\"ready\"\n");
  ASSERT_TRUE(s.wait_for("ready")) << s.seen;
  kill(s.pid, SIGTERM);
  EXPECT_EQ(s.exit_code(), 128 + SIGTERM) << s.seen;
  const std::string where = s.dir.string() + "/orvela-recovery";
  EXPECT_NE(s.seen.find("SIGTERM: unsaved work written to " + where + ".net\n"), std::string::npos) << s.seen;
  std::smatch m;
  ASSERT_TRUE(std::regex_search(s.seen, m, std::regex("([0-9]+\\.[0-9]{6}) \\n[ ?]*ready"))) << s.seen;
  const std::string taught = m[1];

  Program next;
  next.take_folder(s);
  next.run_lines("read network(5) name(\"orvela-recovery.net\")\na=generate network(5) motif(0.9,0.9)\n$a\n");
  EXPECT_NE(next.seen.find(taught), std::string::npos) << "taught: " << taught << "\n" << next.seen;
}
