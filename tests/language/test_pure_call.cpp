// The quick road of pure scalar calls: taken for pure functions, refused
// before any effect for the others, and judged again after a recompile.
#include <gtest/gtest.h>

#include "compile_fixture.h"
#include "kernel/chains.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/work_areas.h"
#include "kernel/values.h"
#include "language/eval.h"
#include "language/eval_internal.h"
#include "language/pure_call.h"

namespace {

Objet* compiled(const char* source) {
  Objet* f = define_function(source);
  if (!f || a_compile(f) < 0 || lier_tout() < 0) return nullptr;
  return f;
}

// pure_call of `f` on one-float arguments, its value in *r.
int quick(Objet* f, std::initializer_list<float> values, float* r) {
  word args[40];
  word* at = args;
  for (float v : values) {
    build_float(at, nullptr, v);
    at += 5;
  }
  return pure_call(f, args, static_cast<int>(values.size()), r);
}

class PureCall : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    if (!kernel().eval_stack) {
      ASSERT_EQ(allocate_work_areas(), 0);
    }
    eval_state().limit = kernel().eval_limit;
    // Functions left by earlier tests, some of which fail to link, would
    // keep every call off the linked state.
    Objet* head = chaine_classe(KW_func);
    while (head->next) rem_objet(head->next);
    lang().link_state = 0;
  }
};

TEST_F(PureCall, RecursiveFunctionRunsQuick) {
  Capture out;
  Objet* fib = compiled("qfib(n){ if(n<2) return(n); return(qfib(n-1)+qfib(n-2)); }");
  ASSERT_NE(fib, nullptr);
  float r = 0;
  EXPECT_EQ(quick(fib, {15}, &r), 1);
  EXPECT_EQ(r, 610.0f);
  EXPECT_EQ(quick(fib, {0.5f}, &r), 1);
  EXPECT_EQ(r, 0.5f);
  EXPECT_EQ(out.take(), "");
}

TEST_F(PureCall, EffectsSendTheCallToTheGeneralRoad) {
  Capture out;
  ASSERT_NE(compiled("qloud(x){ $x; return(x); }"), nullptr);
  Objet* outer = compiled("qouter(n){ if(n<1) return(qloud(n)); return(qouter(n-1)+1); }");
  ASSERT_NE(outer, nullptr);
  float r = 0;
  EXPECT_EQ(quick(outer, {3}, &r), -2);
  // Given up before the command ran: nothing was printed.
  EXPECT_EQ(out.take(), "");
  // Remembered: not tried again.
  EXPECT_EQ(quick(outer, {3}, &r), 0);
}

TEST_F(PureCall, MissingOrNonScalarArgumentsAreNotTried) {
  Capture out;
  float r = 0;
  Objet* two = compiled("qtwo(a,b){ return(a*10+b); }");
  EXPECT_EQ(quick(two, {1, 2, 3}, &r), 1);  // the third is ignored
  EXPECT_EQ(r, 12.0f);
  EXPECT_EQ(quick(two, {1}, &r), 0);  // b would be NIL
  word nil[4];
  build_nil(nil);
  EXPECT_EQ(pure_call(two, nil, 1, &r), 0);
}

TEST_F(PureCall, RecompiledFunctionIsJudgedAgain) {
  Capture out;
  float r = 0;
  EXPECT_EQ(quick(compiled("qtwice(x){ return(2 * x); }"), {4}, &r), 1);
  EXPECT_EQ(r, 8.0f);
  EXPECT_EQ(quick(compiled("qtwice(x){ y = x; return(y); }"), {4}, &r), 0);  // a local: not pure
  EXPECT_EQ(quick(compiled("qtwice(x){ return(x * x * x); }"), {4}, &r), 1);
  EXPECT_EQ(r, 64.0f);
}

TEST_F(PureCall, RunawayRecursionIsLeftToTheGuard) {
  Capture out;
  float r = 0;
  EXPECT_EQ(quick(compiled("qrun(n){ return(qrun(n+1)); }"), {1}, &r), -1);
  EXPECT_EQ(out.take(), "");
}

}  // namespace
