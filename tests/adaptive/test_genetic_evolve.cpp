// Selection, crossover and mutation against scripted random numbers: the
// walk of the selection and its one-past records before the wrap, the
// uniform fallback, the rates 0 and 1, the alphabets of one, two and
// more letters, and strings of no letter.
#include "genetic_fixture.h"

namespace {

TEST_F(GeneticTest, SelectionWalksFromItsPositionAndRecordsOnePastBeforeTheWrap) {
  const float fit[4] = {0.1f, 0.9f, 0.2f, 0.8f};
  genetics().position = 1;
  // Bar 1.0 * 0.5. Steps read fit[1] (recorded as 2), fit[2], then wrap
  // to fit[0] and read fit[1] (recorded as 1): fit[3] is never read.
  process = {1.0f, 0.0f};
  EXPECT_EQ(selection(fit, 4, 0.5f, Source::process), 2);
  ASSERT_GE(genetics().recorded.size(), 2u);
  EXPECT_EQ(genetics().recorded[0], 2);
  EXPECT_EQ(genetics().recorded[1], 1);
  // The next call starts at 2: only fit[1] passes, recorded as 1 after
  // the wrap, and one record needs no draw to choose it.
  process = {1.0f};
  EXPECT_EQ(selection(fit, 4, 0.5f, Source::process), 1);
  EXPECT_EQ(genetics().position, 1);
  // The second of two records.
  genetics().position = 1;
  process = {1.0f, 0.99f};
  EXPECT_EQ(selection(fit, 4, 0.5f, Source::process), 1);
  expect_script_used();
}

TEST_F(GeneticTest, SelectionBarFromTheTableAndChoiceFromTheProcess) {
  const float fit[3] = {0.3f, 0.6f, 0.9f};
  // Bar 0.25 * 0.6: fit[0], fit[1], then fit[0] after the wrap pass,
  // recorded as 1, 2 and 0; the third record is chosen.
  table = {0.25f};
  process = {0.9f};
  EXPECT_EQ(selection(fit, 3, 0.6f, Source::table), 0);
  // Bar 0.5 * 0.6 = 0.3: only fit[1] passes, recorded as 2; fit[2] is
  // never read.
  genetics().position = 0;
  table = {0.5f};
  EXPECT_EQ(selection(fit, 3, 0.6f, Source::table), 2);
  expect_script_used();
}

TEST_F(GeneticTest, NothingAboveTheBarGivesAUniformPosition) {
  const float zeros[4] = {};
  process = {0.3f, 0.74f};
  EXPECT_EQ(selection(zeros, 4, 0.0f, Source::process), 2);
  process = {0.3f, 1.0f};  // clamped into range
  EXPECT_EQ(selection(zeros, 4, 0.0f, Source::process), 3);
  expect_script_used();
}

TEST_F(GeneticTest, MutationByAlphabetSize) {
  Taux always;
  always.mutation = 1.0f;
  // One letter: nothing drawn, nothing changed, whatever the rate.
  EXPECT_EQ(mute('x', "a", 1, always), 'x');
  EXPECT_EQ(mute('a', "a", 1, always), 'a');
  expect_script_used();
  // Two letters flip.
  process = {0.5f, 0.5f};
  EXPECT_EQ(mute('0', "01", 2, always), '1');
  EXPECT_EQ(mute('1', "01", 2, always), '0');
  // More: drawn again until different, here from the table.
  Taux table_rate = always;
  table_rate.source = Source::table;
  table = {0.2f, 0.1f, 0.0f, 0.6f};
  EXPECT_EQ(mute('a', "abc", 3, table_rate), 'b');
  // A draw above the rate keeps the letter.
  Taux rare;
  rare.mutation = 0.25f;
  process = {0.3f, 0.25f};
  EXPECT_EQ(mute('0', "01", 2, rare), '0');
  EXPECT_EQ(mute('0', "01", 2, rare), '1') << "a draw equal to the rate mutates";
  // A table that always gives the same letter ends on the next one.
  std::deque<float> same(64, 0.0f);
  table = same;
  table.push_front(0.0f);
  EXPECT_EQ(mute('a', "aab", 3, table_rate), 'b');
  expect_script_used();
}

// Population "aaa", "bbb" over "ab", fitness left at 0 (built-in 2), the
// given rates: the draws of one generation are scripted by the caller.
class CrossoverTest : public GeneticTest {
 protected:
  void SetUp() override {
    GeneticTest::SetUp();
    ok("genetic(1) particle(0)=\"aaa\"");
    ok("genetic(1) particle(0)=\"bbb\"");
    ok("genetic(1) alphabet(\"ab\") func(2)");
  }
  // Parents a, b (0.1 picks the first, 0.9 the second) and the cut.
  void parents(float a, float b, float cut) {
    for (float f : {0.5f, a, 0.5f, b, cut}) process.push_back(f);
  }
};

TEST_F(CrossoverTest, RateOneCrossesWithoutATestAndMutatesEveryLetter) {
  ok("meta rand genetic(1) = 1, 1");
  // Child 1: a = "aaa", b = "bbb", cut 1: "abb" and "baa" flipped to "baa"
  // and "abb"; the tie of their fitness goes to the second.
  parents(0.1f, 0.9f, 0.4f);
  for (int k = 0; k < 6; k++) process.push_back(0.5f);
  // Child 2: a = "bbb", b = "aaa", cut 0: "aaa" and "bbb", flipped.
  parents(0.9f, 0.1f, 0.0f);
  for (int k = 0; k < 6; k++) process.push_back(0.5f);
  expect_generation(0.99f, 2, "abb", "aaa");
  expect_floats(prop(1, KW_cut), {1, 1, 2, 0, 2, 1}, "the crossover log");
}

TEST_F(CrossoverTest, MutationRateZeroKeepsTheCrossedLetters) {
  ok("meta rand genetic(1) = 1, 0");
  parents(0.1f, 0.9f, 0.4f);
  for (int k = 0; k < 6; k++) process.push_back(0.5f);
  parents(0.9f, 0.1f, 0.7f);  // cut 2
  for (int k = 0; k < 6; k++) process.push_back(0.5f);
  expect_generation(0.99f, 2, "baa", "aab");
}

TEST_F(CrossoverTest, RateZeroCopiesParentAWithoutMutation) {
  ok("meta rand genetic(1) = 0, 1");
  parents(0.1f, 0.9f, 0.4f);
  process.push_back(0.0f);  // the test: 0 < 0 fails
  parents(0.9f, 0.1f, 0.4f);
  process.push_back(0.5f);
  expect_generation(0.99f, 2, "aaa", "bbb");
}

TEST_F(CrossoverTest, ADrawBelowTheRateCrosses) {
  ok("meta alea genetic(1) = 0.5, 0");
  // Bars and the test from the table; choices and cuts from the process.
  for (float f : {0.1f, 0.9f, 0.4f, 0.9f, 0.1f, 0.4f}) process.push_back(f);
  table = {0.5f, 0.5f, 0.4f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.5f, 0.6f};
  // Child 1 crossed at 1 (the second candidate), child 2 not: parent a.
  expect_generation(0.99f, 2, "baa", "bbb");
}

TEST_F(GeneticTest, StringsOfNoLetterDrawNoCut) {
  ok("genetic(1) particle(0)=\"\"");
  ok("genetic(1) particle(0)=\"\"");
  ok("genetic(1) func(2)");
  // Only the selections draw: a bar and a uniform position each.
  process = {0.5f, 0.9f, 0.5f, 0.1f, 0.5f, 0.1f, 0.5f, 0.1f};
  expect_generation(0.5f, 2, "", "");
  expect_floats(prop(1, KW_cut), {0, 2, 1, 0, 1, 1}, "the crossover log");
}

TEST_F(GeneticTest, AFailingFitnessLeavesThePopulationAsItWas) {
  ok("func=\"bad(o,s){ extern calls; calls = calls + 1; if(calls > 4){ return(nofunc(1)); } return(0.5); }\"");
  ok("calls = 0");
  ok("genetic(1) particle(0)=\"aaa\"");
  ok("genetic(1) particle(0)=\"bbb\"");
  ok("genetic(1) alphabet(\"ab\") func(\"bad\")");
  ok("meta rand genetic(1) = 1, 0");
  // Two calls for the population, two for child 1, and child 2's first
  // candidate fails.
  genetics().process = nullptr;
  random_seed(3);
  Capture quiet;
  EXPECT_LT(generation_genetique(gen(1), 0.5f, nullptr, nullptr), 0);
  EXPECT_EQ(individu(1, 1), "aaa");
  EXPECT_EQ(individu(1, 2), "bbb");
  const std::string first = individu(1, 1, -KW_particle);
  EXPECT_EQ(first.size(), 3u) << "child 1 made";
  EXPECT_EQ(individu(1, 2, -KW_particle), "") << "child 2 not";
  EXPECT_EQ(prop(1, KW_scale, KW_particle).size(), 2u);
}

TEST_F(GeneticTest, AGenerationNeedsAPopulationAndAFunction) {
  ok("genetic(1) alphabet(\"ab\")");
  {
    Capture out;
    EXPECT_LT(generation_genetique(gen(1), 0.5f, nullptr, nullptr), 0);
    EXPECT_NE(out.take().find("genetic 1 particle"), std::string::npos);
  }
  ok("genetic(1) particle(0)=\"ab\"");
  {
    Capture out;
    EXPECT_LT(generation_genetique(gen(1), 0.5f, nullptr, nullptr), 0);
    EXPECT_NE(out.take().find("func"), std::string::npos);
  }
  ok("genetic(1) func(\"nothing_by_that_name\")");
  const std::string said = fails("generate genetic(1)");
  EXPECT_NE(said.find("48 nothing_by_that_name"), std::string::npos) << said;
}

}  // namespace
