// Reloading a function file: a good file replaces its functions, a bad one
// leaves every function of the file as it was (and takes away those it
// brought), and a function changed at the console says it is replaced.
#include <fstream>

#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/functions.h"
#include "language/live_reload.h"
#include "support/scratch_folder.h"
#include "support/text_runner.h"

class LiveReload : public TextRunner, protected ScratchFolder {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    make_folder("orvela_reload_");
    path = at("r.func");
  }
  void TearDown() override {
    Capture quiet;
    run("rem func(\"ra rb rc\")");
    Yes(KW_reload) = 0;
    remove_folder();
  }
  void put(const std::string& text) { std::ofstream(path) << text; }
  std::string reload() {
    Capture out;
    reload_file(path);
    return out.take();
  }
  std::string path;
};

TEST_F(LiveReload, AGoodFileReplacesItsFunctionsAndKeepsItsComments) {
  put("ra(x){return(x+1)}\n");
  ASSERT_EQ(run("read func(\"" + path + "\")").status, 0);
  EXPECT_EQ(one("ra(1)"), 2.0f);
  put("// adds ten\nra(x){return(x+10)}\nrb(x){return(ra(x)*2)}\n");
  EXPECT_EQ(reload(), "reload " + path + ": ra rb\n");
  EXPECT_EQ(one("ra(1)"), 11.0f);
  EXPECT_EQ(one("rb(1)"), 22.0f);
  EXPECT_EQ(get_fonction("ra")->unsaved, 0);
}

TEST_F(LiveReload, ABadFileLeavesThePreviousVersionsAndTakesAwayWhatItBrought) {
  put("ra(x){return(x+1)}\n");
  ASSERT_EQ(run("read func(\"" + path + "\")").status, 0);
  // The good ra comes first: it is put back too.
  put("ra(x){return(x+5)}\nrc(x){return(x*3}\n");
  const std::string out = reload();
  EXPECT_NE(out.find("PATENTHESIS ERROR"), std::string::npos) << out;
  EXPECT_NE(out.find("reload " + path + ": the previous version runs\n"), std::string::npos) << out;
  EXPECT_EQ(one("ra(1)"), 2.0f);
  EXPECT_EQ(get_fonction("rc"), nullptr);
  put("ra(x){return(x+5)\n");
  EXPECT_NE(reload().find("BRACKET ERROR"), std::string::npos);
  EXPECT_EQ(one("ra(1)"), 2.0f);
  std::filesystem::remove(path);
  EXPECT_NE(reload().find("the previous version runs"), std::string::npos);
  EXPECT_EQ(one("ra(1)"), 2.0f);
}

TEST_F(LiveReload, AFunctionChangedAtTheConsoleTakesTheFilesVersionAndSaysSo) {
  put("ra(x){return(x+1)}\nrb(x){return(0)}\n");
  ASSERT_EQ(run("read func(\"" + path + "\")").status, 0);
  ASSERT_EQ(run("func=\"ra(x){return(x+100)}\"").status, 0);
  EXPECT_EQ(get_fonction("ra")->unsaved, 1);
  put("ra(x){return(x+2)}\nrb(x){return(1)}\n");
  EXPECT_EQ(reload(), "func ra: the file's version replaces the one changed at the console\nreload " + path +
                          ": ra rb\n");
  EXPECT_EQ(one("ra(1)"), 3.0f);
  EXPECT_EQ(get_fonction("ra")->unsaved, 0);
}

TEST_F(LiveReload, APolledChangeIsTakenOnlyWithTheSwitchOn) {
  put("ra(x){return(1)}\n");
  ASSERT_EQ(run("read func(\"" + path + "\")").status, 0);
  Yes(KW_reload) = 1;
  { Capture quiet; reload_poll(); }  // the watch begins
  put("ra(x){return(2)}\n");
  { Capture quiet; reload_poll(); }
  EXPECT_EQ(one("ra(0)"), 2.0f);
  Yes(KW_reload) = 0;
  put("ra(x){return(3)}\n");
  { Capture quiet; reload_poll(); }
  EXPECT_EQ(one("ra(0)"), 2.0f);
}
