// The help of the words: every word of both vocabularies has an entry,
// every entry's example runs in a fresh program without a fault message,
// and `help` reports words that are none, in their place.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "language/help_table.h"
#include "support/program.h"
#include "support/text_runner.h"

namespace {

// The keyword codes of both vocabularies that have a name.
std::vector<int> every_word() {
  std::vector<int> codes;
  for (int voc = 0; voc < 2; voc++)
    for (int i = 0; i < vocab().nb_kw[voc] && i < KW_PER_VOC; i++)
      if (vocab().name[voc * KW_PER_VOC + i]) codes.push_back(voc * KW_PER_VOC + i);
  return codes;
}

// The fault messages of both vocabularies: those that end in a bell,
// without it and the blanks around it.
std::vector<std::string> fault_texts() {
  std::vector<std::string> texts;
  for (int voc = 0; voc < 2; voc++)
    for (const std::string& m : vocab().mes[voc]) {
      if (m.find('\a') == std::string::npos) continue;
      std::string t;
      for (char c : m)
        if (c != '\a') t.push_back(c);
      while (!t.empty() && (t.back() == '\n' || t.back() == ' ')) t.pop_back();
      while (!t.empty() && (t.front() == '\n' || t.front() == ' ')) t.erase(0, 1);
      if (t.size() >= 4) texts.push_back(t);
    }
  return texts;
}

class HelpTest : public TextRunner {};

TEST_F(HelpTest, EveryWordOfBothVocabulariesHasOneEntry) {
  std::vector<int> codes = every_word();
  ASSERT_GT(codes.size(), 250u);
  for (int code : codes) {
    const HelpEntry* e = help_find(code);
    ASSERT_NE(e, nullptr) << vocab().name[code] << " has no help entry";
    EXPECT_GT(help_usage(*e).size(), 10u) << vocab().name[code];
    EXPECT_FALSE(help_example(*e).empty()) << vocab().name[code];
  }
  // No word is explained twice, in one group or in two.
  std::set<int> seen;
  for (const HelpGroup& g : help_state().groups)
    for (const HelpEntry& e : g.entries) EXPECT_TRUE(seen.insert(e.code).second) << vocab().name[e.code] << " twice";
}

// Each example runs alone in the real program, in a folder of its own,
// with the bell on so that every fault message shows its bell.
TEST_F(HelpTest, EveryExampleRunsWithoutAFault) {
  const std::vector<std::string> faults = fault_texts();
  ASSERT_FALSE(faults.empty());
  int run = 0;
  for (const HelpGroup& g : help_state().groups)
    for (const HelpEntry& e : g.entries) {
      Program p;
      const std::string example = help_example(e);
      const int status = p.run_lines("yes ring\n" + example + "\n");
      const std::string& out = p.seen;
      EXPECT_EQ(status, 0) << example << "\n" << out;
      EXPECT_EQ(out.find('\a'), std::string::npos) << example << "\n" << out;
      for (const std::string& f : faults) EXPECT_EQ(out.find(f), std::string::npos) << example << "\n" << out;
      run++;
    }
  EXPECT_GT(run, 250);
}

TEST_F(HelpTest, AWordShowsItsDescriptorUsageAndExample) {
  std::string h = run("help sort").out;
  EXPECT_EQ(h.rfind("sort\nemp=", 0), 0u) << h;
  EXPECT_NE(h.find("\nusage: sort(v) ascending;"), std::string::npos) << h;
  EXPECT_NE(h.find("\nexample: sort(3,1,2)\n"), std::string::npos) << h;
  // A keyword with default values shows both lines.
  EXPECT_NE(run("help precision").out.find("default: 0.1\ncurrent: 0.1\n"), std::string::npos);
  // demo says the same.
  EXPECT_EQ(run("demo sort").out, h);
  // Graphic words too.
  EXPECT_NE(run("help ball").out.find("example: ball(1) dim(20) secy(8); limit vol(1)\n"), std::string::npos);
  // A word that only keys properties says so, with its own name.
  std::string zoom = run("help zoom").out;
  EXPECT_NE(zoom.find("usage: zoom: a key word with no command of its own;"), std::string::npos) << zoom;
  EXPECT_NE(zoom.find("example: cube(1); zoom vol(1)=1; zoom vol(1)\n"), std::string::npos) << zoom;
}

TEST_F(HelpTest, UnknownWordsAreReportedInTheirPlaceWithTheNearestNames) {
  std::string h = run("help ball nosuch rotx").out;
  const size_t ball = h.find("example: ball("), nosuch = h.find("nosuch UNKNOWN"), rotx = h.find("\nrotx\n");
  ASSERT_NE(ball, std::string::npos) << h;
  ASSERT_NE(nosuch, std::string::npos) << h;
  ASSERT_NE(rotx, std::string::npos) << h;
  EXPECT_LT(ball, nosuch);
  EXPECT_LT(nosuch, rotx);
  // No whole list in place of the report.
  EXPECT_EQ(h.find("Interpreter words"), std::string::npos) << h;

  EXPECT_NE(run("help rotq").out.find("nearest: rota rotx roty rotz"), std::string::npos);
  EXPECT_EQ(help_nearest("Ball", 5).front(), "ball");
  EXPECT_EQ(help_nearest("dimm", 5).front(), "dim");
  // A word far from every name still gets a few.
  EXPECT_EQ(help_nearest("nosuchword", 5).size(), 3u);
  // A word in brackets is looked up as well.
  EXPECT_NE(run("help(\"cube\")").out.find("example: cube(1)"), std::string::npos);
}

TEST_F(HelpTest, HelpAloneListsTheGroupsUnderTheirHeadings) {
  std::string all = run("help").out;
  EXPECT_EQ(all.rfind("Interpreter words\naba          abs", 0), 0u) << all;
  size_t last = 0;
  for (const char* heading : {"Objects and volumes", "Display, views and lights", "Animation:",
                              "Interaction, menus, panels and tools", "Images", "Sound", "Networks and genetics",
                              "Devices"}) {
    size_t at = all.find(std::string("\n") + heading);
    ASSERT_NE(at, std::string::npos) << heading;
    EXPECT_GT(at, last) << heading;
    last = at;
  }
  EXPECT_NE(all.find("ball"), std::string::npos);
  EXPECT_NE(all.find("zoom"), std::string::npos);
}

}  // namespace
