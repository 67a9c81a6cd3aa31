// The commands of the interpreter vocabulary outside fct0, run as console
// texts: value shapes, sorting, matrices, the clock, console input, the
// alias and stopping-point tables, listings and history. Expected
// values are worked out by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "kernel/console.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "language/eval.h"
#include "language/functions.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "support/capture.h"
#include "support/text_runner.h"

namespace {

class CommandsTest : public TextRunner {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    stop_table().clear();
    lang().alias_text.clear();
    lang().alias_exists = false;
  }
  void TearDown() override {
    in_from_string(nullptr);
    lang().alias_text.clear();
    lang().alias_exists = false;
    Yes(KW_alias) = 0;
    for (const char* f : {"cmdf", "cmdg"})
      while (Objet* o = get_fonction(f)) rem_objet(o);
  }
};

// ---- shapes and conversions ------------------------------------------------------

TEST_F(CommandsTest, TypeNumbersEachKindWithoutPrinting) {
  Outcome r = run("type(\"a\")");
  EXPECT_EQ(r.out, "");
  EXPECT_FLOAT_EQ(wf(r.value[4]), 1.0f);
  EXPECT_FLOAT_EQ(one("type(1,2)"), 3.0f);
  EXPECT_FLOAT_EQ(one("type(NIL)"), 0.0f);
  EXPECT_FLOAT_EQ(one("type(\"a\",1)"), 4.0f);
  EXPECT_FLOAT_EQ(one("type"), 0.0f);
}

TEST_F(CommandsTest, NumberReadsWordsOrCountsElements) {
  expect_floats(floats("number(\"1 2,3.5\")"), {1.0f, 2.0f, 3.5f}, "text");
  expect_floats(floats("number(\"-4\tx 7\")"), {-4.0f, 0.0f, 7.0f}, "a word that is no number");
  EXPECT_TRUE(nil("number(\" , \")"));
  EXPECT_FLOAT_EQ(one("number(5,6,7)"), 3.0f);
  EXPECT_FLOAT_EQ(one("number(\"a\",1,2)"), 2.0f);  // parts of a list
}

TEST_F(CommandsTest, NpAndDimReadTheHeader) {
  EXPECT_FLOAT_EQ(one("NP(4,5,6)"), 3.0f);
  EXPECT_FLOAT_EQ(one("NP(\"abcd\")"), 4.0f);
  EXPECT_FLOAT_EQ(one("NP(NIL)"), 0.0f);
  EXPECT_FLOAT_EQ(one("NP(matrix)"), 4.0f);
  // dim: element width, then the size in words (4 of header).
  expect_floats(floats("dim(1,2,3)"), {1.0f, 7.0f}, "vector");
  expect_floats(floats("dim(matrix)"), {4.0f, 20.0f}, "matrix");
  EXPECT_NE(fails("dim").find("dim"), std::string::npos);
}

// ---- element work ----------------------------------------------------------------

TEST_F(CommandsTest, LimitHoldsElementsBetweenBounds) {
  expect_floats(floats("limit(1,5,-3) dim(0,2)"), {1.0f, 2.0f, 0.0f}, "min,max");
  expect_floats(floats("limit(1,5,-3) dim(2,0)"), {1.0f, 2.0f, 0.0f}, "bounds swapped");
  expect_floats(floats("limit(1,5,-3) dim(2)"), {1.0f, 2.0f, -2.0f}, "one bound");
  EXPECT_NE(fails("limit(1,2)").find("(v) dim(min,max)"), std::string::npos);
  fails("limit(\"a\") dim(0,1)");
}

TEST_F(CommandsTest, CentreOfPoints) {
  std::vector<float> c = floats("CG(0,0,0,2,4,6)");
  expect_floats(c, {1.0f, 2.0f, 3.0f}, "two points");
  expect_floats(floats("CG(3,3,3,0,0)"), {1.5f, 1.5f, 1.5f}, "missing coordinate counts 0");
  EXPECT_TRUE(nil("CG(NIL)"));
  fails("CG(\"a\")");
}

TEST_F(CommandsTest, SortOrdersVectorsAndWords) {
  expect_floats(floats("sort(3,1,2)"), {1.0f, 2.0f, 3.0f}, "ascending");
  expect_floats(floats("sort(3,1,2) inv"), {3.0f, 2.0f, 1.0f}, "descending");
  expect_floats(floats("sort(3,1,2) number"), {1.0f, 2.0f, 0.0f}, "positions");
  expect_floats(floats("sort(3,1,2) inv number"), {0.0f, 2.0f, 1.0f}, "positions descending");
  // Equal elements keep their order.
  expect_floats(floats("sort(2,1,2,1) number"), {1.0f, 3.0f, 0.0f, 2.0f}, "stable");
  EXPECT_EQ(str("sort(\"pear apple,fig\")"), "apple fig pear");
  EXPECT_EQ(str("sort(\"b a c\") inv"), "c b a");
  expect_floats(floats("sort(\"b a c\") number"), {1.0f, 0.0f, 2.0f}, "word positions");
  EXPECT_TRUE(nil("sort(NIL)"));
  fails("sort(\"a\",1)");
}

TEST_F(CommandsTest, CleanTrimsText) {
  EXPECT_EQ(str("clean(\"  a b \t\")"), "a b");
  EXPECT_EQ(str("clean(\"x\")"), "x");
  EXPECT_TRUE(nil("clean(\"   \")"));
}

// ---- matrices --------------------------------------------------------------------

TEST_F(CommandsTest, MatrixIdentityProductTransposeAndPoints) {
  Outcome id = run("matrix");
  ASSERT_EQ(id.status, 0);
  ASSERT_EQ(id.value.size(), 20u);
  EXPECT_EQ(id.value[2], 4);
  EXPECT_EQ(id.value[3], 4);
  for (int i = 0; i < 16; i++) EXPECT_FLOAT_EQ(wf(id.value[4 + i]), i % 5 == 0 ? 1.0f : 0.0f) << i;

  // A translation by (5,6,7) in the last column.
  const std::string m = "m=1,0,0,5,0,1,0,6,0,0,1,7,0,0,0,1;";
  expect_floats(floats(m + "matrix(m,1,2,3,0,0,0) vector"), {6, 8, 10, 5, 6, 7}, "points moved");
  std::vector<float> t = floats(m + "matrix(m) transp");
  expect_floats(t, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}, "transpose");
  // Two translations add up.
  std::vector<float> p = floats(m + "matrix(m,m) product");
  expect_floats(p, {1, 0, 0, 10, 0, 1, 0, 12, 0, 0, 1, 14, 0, 0, 0, 1}, "product");
  // A scale then a rotation: rows times columns.
  std::vector<float> q = floats("a=0,-1,0,0,1,0,0,0,0,0,1,0,0,0,0,1; b=2,0,0,0,0,3,0,0,0,0,4,0,0,0,0,1; matrix(a,b) product");
  expect_floats(q, {0, -3, 0, 0, 2, 0, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1}, "rotation times scale");
  expect_floats(floats(m + "matrix(m)"), {1, 0, 0, 5, 0, 1, 0, 6, 0, 0, 1, 7, 0, 0, 0, 1}, "checked");

  EXPECT_NE(fails("matrix(1,2)").find("(16 floats)"), std::string::npos);
  fails(m + "matrix(m,1) product");
  fails(m + "matrix(m,1,2) vector");
}

// ---- clock -------------------------------------------------------------------------

TEST_F(CommandsTest, TimeAndChronometer) {
  float up = one("time");
  EXPECT_GE(up, 0.0f);
  EXPECT_GE(one("time"), up);  // the clock never goes back
  EXPECT_FLOAT_EQ(one("time(0)"), 0.0f);
  float c = one("time(1)");
  EXPECT_GE(c, 0.0f);
  EXPECT_LE(c, one("time"));  // started after the program
  EXPECT_NE(fails("time(2)").find("(0: start, 1: read)"), std::string::npos);
}

// ---- console ---------------------------------------------------------------------

TEST_F(CommandsTest, InputGivesNumbersOrText) {
  std::string typed = "1 2,3\nhello world\n\n";
  in_from_string(&typed);
  Outcome r = run("input(\"n? \")");
  EXPECT_EQ(r.out, "n? ");
  ASSERT_EQ(r.value.size(), 7u);
  EXPECT_EQ(r.value[1], T_FLOAT);
  EXPECT_FLOAT_EQ(wf(r.value[6]), 3.0f);
  EXPECT_EQ(str("input"), "hello world");
  EXPECT_TRUE(nil("input"));  // empty line
  EXPECT_TRUE(nil("input"));  // end of input
}

TEST_F(CommandsTest, RingRefusesSoundNamesAndChecksArguments) {
  EXPECT_NE(run("ring(\"bell.wav\")").out.find("SOUND OFF"), std::string::npos);
  EXPECT_NE(fails("ring(NIL)").find("(n,ms)"), std::string::npos);
  Yes(KW_ring) = 0;  // bells dropped
  EXPECT_TRUE(nil("ring(2)"));
}

TEST_F(CommandsTest, AliasTableFeedsTheSourceRewrite) {
  EXPECT_TRUE(nil("alias(\"total=sum\")"));
  EXPECT_TRUE(lang().alias_exists);
  EXPECT_EQ(run("alias").out, "total=sum\n");
  Yes(KW_alias) = 1;
  EXPECT_FLOAT_EQ(one("total(1,2)"), 3.0f);
  // The newest line wins.
  EXPECT_TRUE(nil("alias(\"total=max\")"));
  EXPECT_FLOAT_EQ(one("total(1,2)"), 2.0f);
  EXPECT_NE(fails("alias(\"no equals\")").find("name=replacement"), std::string::npos);
  fails("alias(\"=x\")");
}

TEST_F(CommandsTest, StoppingPointsAreKeptAndListed) {
  EXPECT_TRUE(nil("STOP(\"f\",3)"));
  EXPECT_TRUE(nil("STOP(\"g\")"));
  EXPECT_TRUE(nil("STOP(\"f\",3)"));  // kept once
  EXPECT_EQ(run("STOP").out, "f,3\ng,1\n");
  ASSERT_EQ(stop_table().size(), 2u);
  EXPECT_NE(fails("STOP(3)").find("STOP \"name\" or STOP \"name\",num"), std::string::npos);
  fails("STOP(\"f\",0)");
}

TEST_F(CommandsTest, HistoryListsAndRunsLines) {
  int before = history_count();
  ASSERT_EQ(history_record("cmdh=41; cmdh+1"), 0);
  int n = history_count();
  ASSERT_EQ(n, before + 1);
  EXPECT_FLOAT_EQ(one("history(" + std::to_string(n) + ")"), 42.0f);
  std::string listed = run("history").out;
  EXPECT_NE(listed.find(std::to_string(n) + " cmdh=41; cmdh+1\n"), std::string::npos) << listed;
  EXPECT_NE(fails("history(0)").find("ILLEGAL INDEX"), std::string::npos);
  fails("history(" + std::to_string(n + 1) + ")");
}

// ---- listings -----------------------------------------------------------------

TEST_F(CommandsTest, ListAndLISTShowFunctionsAndVariables) {
  {
    Capture quiet;
    ASSERT_NE(define_function("cmdf(x){static cs; cs=3; return x;}"), nullptr);
  }
  EXPECT_FLOAT_EQ(one("cmdf(2)"), 2.0f);
  std::string names = run("list func").out;
  EXPECT_NE(names.find("cmdf\n"), std::string::npos) << names;
  EXPECT_EQ(names.find("{"), std::string::npos);
  EXPECT_NE(run("LIST func").out.find("cmdf(x){static cs; cs=3; return x;}\n"), std::string::npos);

  EXPECT_NE(run("LIST var").out.find("cmdf.cs = 3"), std::string::npos);
  EXPECT_EQ(run("list var").out.find("cmdf.cs"), std::string::npos);
  EXPECT_NE(fails("list").find("func, var, (\"define\") or an object word"), std::string::npos);
}

}  // namespace
