// Input nested past what the native stack can hold, typed at the console
// or read from a function's text: one message, and the session goes on.
// Nesting of a usual depth keeps its meaning, and long flat chains (lists,
// assignments, sums) are no nesting at all for the compiler.
#include <gtest/gtest.h>

#include <string>

#include "kernel/object_store.h"
#include "language/functions.h"
#include "support/text_runner.h"

namespace {

constexpr int TOO_DEEP = 200000;
constexpr int USUAL = 300;

std::string repeat(const std::string& s, int n) {
  std::string r;
  r.reserve(s.size() * static_cast<size_t>(n));
  for (int i = 0; i < n; i++) r += s;
  return r;
}

std::string nested(const std::string& open, const std::string& inner, const std::string& close, int n) {
  return repeat(open, n) + inner + repeat(close, n);
}

class Nesting : public TextRunner {
 protected:
  void TearDown() override {
    for (const char* f : {"deep", "inc"})
      while (Objet* o = get_fonction(f)) rem_objet(o);
  }

  // The text fails with the nesting message alone, and a plain line
  // still answers afterwards.
  void expect_refused(const std::string& text, const char* what) {
    Outcome r = run(text);
    EXPECT_LT(r.status, 0) << what;
    EXPECT_NE(r.out.find("NESTING TOO DEEP"), std::string::npos) << what << ": " << r.out.substr(0, 300);
    EXPECT_FLOAT_EQ(one("1+1"), 2.0f) << "after " << what;
  }
};

TEST_F(Nesting, DeepConsoleTextsEndInOneMessage) {
  expect_refused("x=" + nested("(", "1", ")", TOO_DEEP), "parentheses");
  expect_refused("x=" + nested("[", "1", "]", TOO_DEEP), "square brackets");
  expect_refused(nested("{", "x=1", "}", TOO_DEEP), "braces");
  expect_refused(repeat("if(1) ", TOO_DEEP) + "x=1", "if without braces");
  expect_refused(nested("if(1){", "x=1", "}", TOO_DEEP), "if with braces");
  expect_refused(nested("while(0){", "x=1", "}", TOO_DEEP), "while");
  expect_refused("x=" + repeat("!", TOO_DEEP) + "1", "a chain of !");
  expect_refused("x=" + nested("f(", "1", ")", TOO_DEEP), "calls");
  // A flat chain the compiler takes; its evaluation nests once a term.
  expect_refused("x=1" + repeat("-1", TOO_DEEP), "a long difference");
}

TEST_F(Nesting, DeepFunctionTextsEndInOneMessage) {
  {
    Capture quiet;
    ASSERT_NE(define_function(("deep(){ return(" + nested("(", "1", ")", TOO_DEEP) + "); }").c_str()), nullptr);
  }
  expect_refused("deep()", "a function");
}

TEST_F(Nesting, UsualDepthsKeepTheirValues) {
  EXPECT_FLOAT_EQ(one("x=" + nested("(", "1+2", ")", USUAL) + "*2"), 6.0f);
  EXPECT_FLOAT_EQ(one("x=" + nested("[", "1+2", "]", USUAL)), 3.0f);
  EXPECT_FLOAT_EQ(one("x=" + repeat("!", USUAL) + "1"), 1.0f);
  EXPECT_FLOAT_EQ(one("x=" + repeat("!", USUAL + 1) + "1"), 0.0f);
  ASSERT_EQ(run("x=0; " + repeat("if(1) ", USUAL) + "x=5;").status, 0);
  EXPECT_FLOAT_EQ(one("x"), 5.0f);
  ASSERT_EQ(run("x=0; " + nested("if(x<1){", "x=x+1;", "}", USUAL)).status, 0);
  EXPECT_FLOAT_EQ(one("x"), 1.0f);
  {
    Capture quiet;
    ASSERT_NE(define_function("inc(v){ return(v+1); }"), nullptr);
    ASSERT_NE(define_function(("deep(){ return(" + nested("(", "2", ")", USUAL) + "); }").c_str()), nullptr);
  }
  EXPECT_FLOAT_EQ(one(nested("inc(", "0", ")", USUAL)), static_cast<float>(USUAL));
  EXPECT_FLOAT_EQ(one("deep()"), 2.0f);
}

TEST_F(Nesting, LongFlatChainsAreNoNesting) {
  std::string list = "x=0";
  for (int i = 1; i < 5000; i++) list += "," + std::to_string(i % 10);
  ASSERT_EQ(run(list).status, 0);
  EXPECT_FLOAT_EQ(one("x[4999]"), 9.0f);
  EXPECT_FLOAT_EQ(one("x[10]"), 0.0f);
  EXPECT_FLOAT_EQ(one("x=1" + repeat("+1", 5000)), 5001.0f);
  std::string chain;
  for (int i = 0; i < 2000; i++) chain += "n" + std::to_string(i) + "=";
  ASSERT_EQ(run(chain + "7").status, 0);
  EXPECT_FLOAT_EQ(one("n0+n1999"), 14.0f);
}

}  // namespace
