// Fitness and the run of `generate genetic`: built-in function 1 on a
// known block, the automatic mutation rate and its clamps, the stop rule
// over several objects, random populations from either source.
#include <cstring>

#include "genetic_fixture.h"

namespace {

TEST_F(GeneticTest, BuiltInOneReadsFloatsAtAStrideOfLWords) {
  const float f[7] = {1, 2, 3, 4, 5, 6, 7};
  char block[sizeof f];
  std::memcpy(block, f, sizeof f);
  // L = 3: two floats an individual, individual i from word 3(i-1).
  EXPECT_FLOAT_EQ(fitness_1(block, sizeof block, 1, 3), 1 + 2 * 2);
  EXPECT_FLOAT_EQ(fitness_1(block, sizeof block, 2, 3), 4 + 2 * 5);
  EXPECT_FLOAT_EQ(fitness_1(block, sizeof block, 3, 3), 7) << "the word past the block counts 0";
  EXPECT_FLOAT_EQ(fitness_1(block, sizeof block, 4, 3), 0);
  // L = 4: three floats, 1 + 2*2 + 4*3.
  EXPECT_FLOAT_EQ(fitness_1(block, sizeof block, 1, 4), 17);
  // Through the evaluation: built-in 1 sets the value, another number
  // leaves it.
  float out = -1;
  EXPECT_EQ(evalue(Fitness{1, nullptr, 0}, block, sizeof block, 2, 3, &out), 0);
  EXPECT_FLOAT_EQ(out, 14);
  EXPECT_EQ(evalue(Fitness{7, nullptr, 0}, block, sizeof block, 2, 3, &out), 0);
  EXPECT_FLOAT_EQ(out, 14);
}

TEST_F(GeneticTest, ValidateScoresTheListedIndicesInRange) {
  ok("func=\"ones(o,s){ a = ascii(s); n = 0; for(k = 0, NP(a) - 1) { if(a[k] == 49) { n = n + 1; } } return(n + 10 * o); }\"");
  ok("genetic(2) particle(0)=\"0110\"");
  ok("genetic(2) particle(0)=\"1111\"");
  ok("genetic(2) particle(0)=\"0000\"");
  ok("genetic(2) func(\"ones\")");
  // The object's number is the first argument; 0 and 4 are skipped.
  expect_floats(floats("validate genetic(2) particle(3, 0, 1, 4)"), {20, 22}, "validated");
  expect_floats(prop(2, KW_scale, KW_particle), {22, 0, 20}, "scale particle");
  expect_floats(floats("validate genetic(2)"), {22, 24, 20}, "all of them");
  EXPECT_FLOAT_EQ(one("var genetic(2)"), 22);
  EXPECT_FLOAT_EQ(one("var genetic(2) particle(2, 3, 9)"), 22);
  EXPECT_FLOAT_EQ(one("var genetic(2) particle(9)"), 0) << "none counted";
}

TEST_F(GeneticTest, AdjustFormulaAndClamps) {
  const TauxAuto a = lit_ajustement({});
  EXPECT_FLOAT_EQ(a.lo, 0.0001f);
  EXPECT_FLOAT_EQ(a.hi, 0.001f);
  EXPECT_FLOAT_EQ(a.start, 0.00055f);
  EXPECT_FLOAT_EQ(a.spread, 0.125f);
  const TauxAuto b = lit_ajustement({0.01f});
  EXPECT_FLOAT_EQ(b.hi, 0.001f);
  EXPECT_FLOAT_EQ(b.start, 0.0055f);
  EXPECT_FLOAT_EQ(lit_ajustement({0.01f, 0.02f, 0.3f, 0.5f}).spread, 0.5f);

  const float half[3] = {0.5f, 0.5f, 0.5f};
  float meta = 0.6f;
  // Not better than the stored mean, spread within 0.125: the formula.
  EXPECT_FLOAT_EQ(ajuste(a, half, 3, &meta), (0.0001f - 0.001f) * 0.5f + 0.001f);
  EXPECT_FLOAT_EQ(meta, 0.5f);
  // Better: the start value, and the new mean stored.
  const float better[3] = {0.6f, 0.7f, 0.8f};
  EXPECT_FLOAT_EQ(ajuste(a, better, 3, &meta), a.start);
  EXPECT_FLOAT_EQ(meta, 0.7f);
  // Not better, but spread beyond 0.125: the start value.
  const float wide[3] = {0.0f, 0.5f, 1.0f};
  EXPECT_FLOAT_EQ(ajuste(a, wide, 3, &meta), a.start);
  EXPECT_FLOAT_EQ(meta, 0.5f);
  // Clamped: a mean of 2 goes below lo, a negative one above hi.
  const float two[2] = {2, 2};
  meta = 5;
  EXPECT_FLOAT_EQ(ajuste(a, two, 2, &meta), a.lo);
  const float negative[2] = {-1, -1};
  EXPECT_FLOAT_EQ(ajuste(a, negative, 2, &meta), a.hi);
}

TEST_F(GeneticTest, TheFirstAdjustCountsAnAbsentMetaAsZero) {
  genetics().process = nullptr;
  random_seed(5);
  ok("genetic(1) particle(0)=\"ab\"");
  ok("genetic(1) func(2) alphabet(\"ab\")");
  // Every fitness 0 (built-in 2 leaves them): a mean of 0 is not above
  // the absent 0, the spread is 0: (lo - hi) * 0 + hi.
  expect_floats(floats("generate genetic(1) adjust(0.01, 0.02)"), {0.02f}, "the rate");
  expect_floats(prop(1, KW_meta), {0}, "the mean stored");
  // The rate is returned, not stored.
  expect_floats(floats("meta rand genetic(1)"), {1.0f, 0.001f}, "the rates");
}

TEST_F(GeneticTest, GenerationsStopOnlyWhenEveryObjectPasses) {
  genetics().process = nullptr;
  random_seed(11);
  ok("func=\"score(o,s){ extern calls; calls = calls + 1; if(o == 1){ return(1); } return(0); }\"");
  for (int id : {1, 2}) {
    ok("genetic(" + std::to_string(id) + ") particle(0)=\"ab\"");
    ok("genetic(" + std::to_string(id) + ") particle(0)=\"ba\"");
    ok("genetic(" + std::to_string(id) + ") func(\"score\")");
  }
  // Object 1 passes at its first generation: 2 calls for the population,
  // 4 for the candidates, 2 for the children.
  ok("calls = 0");
  EXPECT_FLOAT_EQ(one("generate(5) genetic(1)"), 0);
  EXPECT_FLOAT_EQ(one("calls"), 8);
  // With object 2, which never passes, all five run.
  ok("calls = 0");
  EXPECT_FLOAT_EQ(one("generate(5) genetic(1, 2)"), 2);
  EXPECT_FLOAT_EQ(one("calls"), 2 + 5 * 12);
  // Every object when none is named.
  ok("calls = 0");
  EXPECT_FLOAT_EQ(one("generate(3) genetic"), 2);
  EXPECT_FLOAT_EQ(one("calls"), 3 * 12);
  // A bar that every value passes (error 1): one generation.
  ok("calls = 0");
  EXPECT_FLOAT_EQ(one("generate(5) genetic(1, 2) error(1)"), 0);
  EXPECT_FLOAT_EQ(one("calls"), 12);
}

TEST_F(GeneticTest, RandomPopulationsFromEitherSource) {
  process = {0.0f, 0.4f, 0.7f, 0.99f, 0.5f, 0.1f};
  ok("generate genetic(3) particle(2, 4) rand alphabet(\"xyz\")");
  expect_script_used();
  EXPECT_EQ(individu(3, 1), "xyz");
  EXPECT_EQ(individu(3, 2), "zyx");
  EXPECT_EQ(str("alphabet genetic(3)"), "xyz");
  EXPECT_EQ(str("genetic(3) particle(2, 1)"), "zyxxyz");
  // Without sizes the block keeps its own; `alea` reads the table, and
  // with debug on each string prints "+".
  table = {0.9f, 0.9f, 0.9f, 0.0f, 0.0f, 0.0f};
  Yes(KW_debug) = 1;
  Outcome r = run("generate genetic(3) particle alea");
  Yes(KW_debug) = 0;
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "++");
  expect_script_used();
  EXPECT_EQ(str("genetic(3) particle"), "zzzxxx");
  // Sizes that cannot be.
  EXPECT_NE(fails("generate genetic(3) particle(-1, 4) rand").find("-1 4"), std::string::npos);
  EXPECT_NE(fails("generate genetic(3) particle(2, 0) rand").find("ILLEGAL"), std::string::npos);
  EXPECT_EQ(str("genetic(3) particle"), "zzzxxx") << "unchanged";
}

TEST_F(GeneticTest, IndividualsWrittenAndReadByIndex) {
  ok("genetic(4) particle(0)=\"abcd\"");
  ok("genetic(4) particle(0)=\"ef\"");
  ok("genetic(4) particle(0)=\"ghijkl\"");  // cut to the stride
  ok("genetic(4) particle(1)=\"z\"");
  EXPECT_EQ(str("genetic(4) particle(3, 2, 1)"), "ghijefz");
  EXPECT_EQ(str("genetic(4) particle"), "zefghij");
  EXPECT_NE(fails("genetic(4) particle(4)").find("4  ILLEGAL"), std::string::npos);
  EXPECT_NE(fails("genetic(4) particle(5)=\"a\"").find("5  ILLEGAL"), std::string::npos);
  EXPECT_NE(fails("genetic(5) particle(1)=\"a\"").find("1  ILLEGAL"), std::string::npos);
  EXPECT_NE(fails("genetic(4) particle(1)=3").find("ILLEGAL"), std::string::npos);
}

}  // namespace

namespace {

TEST_F(GeneticTest, AFunctionThatRemovesItsObjectEndsItsGenerations) {
  genetics().process = nullptr;
  ok("func=\"gone(o,s){ rem genetic(o); return(0); }\"");
  for (int id : {1, 2}) {
    ok("genetic(" + std::to_string(id) + ") particle(0)=\"ab\"");
    ok("genetic(" + std::to_string(id) + ") func(\"gone\")");
  }
  // Object 1 goes at its first evaluation, object 2 at its own; nothing
  // is written to either, and the run ends without a fault.
  EXPECT_FLOAT_EQ(one("generate(4) genetic(1, 2)"), 0);
  EXPECT_EQ(gen(1), nullptr);
  EXPECT_EQ(gen(2), nullptr);
  ok("genetic(3) particle(0)=\"ab\"");
  ok("genetic(3) func(\"gone\")");
  expect_floats(floats("validate genetic(3)"), {0}, "the score given before it went");
  EXPECT_EQ(gen(3), nullptr);
}

}  // namespace

namespace {

TEST_F(GeneticTest, AFitnessThatRunsGenerationsItselfIsRefused) {
  genetics().process = nullptr;
  ok("func=\"inner(o,s){ generate genetic(2); return(1); }\"");
  ok("genetic(2) particle(0)=\"ab\"");
  ok("genetic(2) func(1)");
  ok("genetic(1) particle(0)=\"ab\"");
  ok("genetic(1) func(\"inner\")");
  const std::string said = fails("generate genetic(1)");
  EXPECT_NE(said.find("generate genetic  ILLEGAL"), std::string::npos) << said;
  EXPECT_EQ(str("genetic(1) particle"), "ab");
  // The refusal ends with its generation: the next one runs.
  EXPECT_FLOAT_EQ(one("generate genetic(2)"), 1);
}

}  // namespace
