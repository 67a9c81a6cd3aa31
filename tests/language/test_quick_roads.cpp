// The quick roads (loop turns from a decoded body, pure calls from
// decoded steps) give what the general road gives: each text runs with
// them and without them, and the values, statuses and printed text must
// be the same, besides the values expected.
#include <gtest/gtest.h>

#include <cmath>

#include "compile_fixture.h"
#include "language/lang_state.h"
#include "language/pure_call.h"
#include "support/text_runner.h"

namespace {

class QuickRoads : public TextRunner {
 protected:
  void TearDown() override { lang().quick_roads = true; }

  // Runs `text` on the general road, then on the quick roads (twice, the
  // second from the decoded forms kept): the quick outcome, checked equal.
  static Outcome both(const std::string& text) {
    lang().quick_roads = false;
    Outcome general = once(text);
    lang().quick_roads = true;
    Outcome quick = once(text);
    Outcome again = once(text);
    EXPECT_EQ(quick.status, general.status) << text;
    EXPECT_EQ(quick.out, general.out) << text;
    EXPECT_EQ(quick.value, general.value) << text;
    EXPECT_EQ(again.out, general.out) << text;
    EXPECT_EQ(again.value, general.value) << text;
    return quick;
  }
  // One text as a console line: the post-mortem is shown once a line.
  static Outcome once(const std::string& text) {
    eval_state().post_mortem_done = false;
    return run(text);
  }
  static float value(const Outcome& o) {
    EXPECT_EQ(o.status, 0) << o.out;
    return o.value.size() == 5 && o.value[1] == T_FLOAT ? wf(o.value[4]) : NAN;
  }
  static Objet* function(const char* source) {
    Capture quiet;
    Objet* f = define_function(source);
    if (!f || a_compile(f) < 0 || lier_tout() < 0) return nullptr;
    return f;
  }
};

TEST_F(QuickRoads, ScalarStatementsOfALoop) {
  EXPECT_EQ(value(both("s=0; for(i=1,100){s=s+i;} s")), 5050.0f);
  EXPECT_EQ(value(both("s=0; for(i=10,1,-3){s=s*2+i;} s")), ((10.0f * 2 + 7) * 2 + 4) * 2 + 1);
  // Compound assignments, increments (the postfix one's value is the old
  // value), comparisons, PI and a division.
  Outcome o = both("s=1; t=0; for(i=1,6){s+=i; s++; ++s; s-=1; s*=3; s/=2; t=t+(s>20);} s,t");
  float s = 1, t = 0;
  for (int i = 1; i <= 6; i++) {
    s = (s + i + 1) * 3 / 2;
    t += s > 20;
  }
  ASSERT_EQ(o.value.size(), 6u);
  EXPECT_EQ(wf(o.value[4]), s);
  EXPECT_EQ(wf(o.value[5]), t);
  EXPECT_EQ(value(both("k=0; for(i=1,4){k++;} k")), 4.0f);
  EXPECT_NEAR(value(both("x=0; for(i=1,2){x=x+PI;} x")), 6.2831855f, 1e-6f);
  // The loop's last statement leaves its value, quiet or not.
  EXPECT_EQ(value(both("for(i=1,3){s=i*10;}")), 30.0f);
  EXPECT_EQ(value(both("k=5; for(i=1,3){k--;}")), 3.0f);
  // A body with nothing in it, and one with no turn.
  EXPECT_EQ(value(both("for(i=1,1000){} i")), 1001.0f);
  EXPECT_EQ(value(both("s=7; for(i=1,0){s=s+1;} s")), 7.0f);
}

TEST_F(QuickRoads, IndexedVectors) {
  Outcome o = both("a=[0,9]; b=[10,19]; for(i=0,9){a[i]=a[i]*0.5+b[i];} a");
  ASSERT_EQ(o.value.size(), 14u);
  for (int i = 0; i < 10; i++) EXPECT_EQ(wf(o.value[4 + i]), i * 0.5f + 10 + i) << i;
  // Indices are truncated, from a float that may fall between elements.
  EXPECT_EQ(value(both("a=[0,9]; s=0; for(i=0,4){s=s+a[i*1.5];} s")), 0 + 1 + 3 + 4 + 6.0f);
  // Past the end: the index is printed with message 61 and the run stops
  // with what the turns before did.
  Outcome past = both("a=1,2,3; s=0; for(i=0,5){s=s+a[i];}");
  EXPECT_LT(past.status, 0);
  EXPECT_NE(past.out.find("3"), std::string::npos) << past.out;
  EXPECT_NE(past.out.find("ILLEGAL INDEX"), std::string::npos) << past.out;
  EXPECT_EQ(value(both("s")), 6.0f);
  // A store to an element out of range, and a NaN index.
  EXPECT_LT(both("a=1,2,3; for(i=0,5){a[i]=i;}").status, 0);
  EXPECT_LT(both("a=1,2,3; z=0; for(i=0,2){a[z/z*0+i]=i;}").status, 0);
}

TEST_F(QuickRoads, VariablesOfAnotherKindTakeTheGeneralRoad) {
  // NIL before the loop: the first turn makes it a float, the next ones
  // run quick.
  Outcome o = both("y=NIL; s=0; for(i=1,4){y=i*2; s=s+y;} s,y");
  ASSERT_EQ(o.value.size(), 6u);
  EXPECT_EQ(wf(o.value[4]), 20.0f);
  EXPECT_EQ(wf(o.value[5]), 8.0f);
  // A vector where one float is read, a counter of two elements.
  Outcome v = both("s=0; t=1,2; for(i=1,3){s=s+t;} s");
  EXPECT_EQ(v.value.size(), 6u);
  Outcome c = both("s=0; for(i=(1,5),3){s=s+i;} s");
  EXPECT_EQ(c.value.size(), 6u);
  // A string and a NIL operand fail as on the general road.
  EXPECT_LT(both("s=\"ab\"; for(i=1,3){s=s+i;}").status, 0);
  EXPECT_LT(both("s=NIL; for(i=1,3){s=s+i;}").status, 0);
  EXPECT_LT(both("a=\"abc\"; s=0; for(i=0,2){s=s+a[i];}").status, 0);
  // A reference: the loop writes through it into its target.
  EXPECT_EQ(value(both("p=1; q=@p; for(i=1,3){q=q+1;} p")), 4.0f);
  // The counter changed by the body.
  EXPECT_EQ(value(both("n=0; for(i=1,10){i=i+1; n=n+1;} n")), 5.0f);
}

TEST_F(QuickRoads, DivisionByZeroInsideALoop) {
  Outcome o = both("s=0; for(i=-2,2){s=s+1/i;}");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("DIVISION BY ZERO"), std::string::npos) << o.out;
  // With `error` off the statement is dropped and the turns go on.
  Yes(KW_error) = 0;
  Outcome quiet = both("s=0; n=0; for(i=-2,2){s=s+1/i; n=n+1;} n");
  Yes(KW_error) = 1;
  EXPECT_EQ(value(quiet), 5.0f);
}

TEST_F(QuickRoads, PureFunctionsCalledFromALoop) {
  ASSERT_NE(function("qr_sq(x){ return(x*x); }"), nullptr);
  ASSERT_NE(function("qr_fib(n){ if(n<2) return(n); return(qr_fib(n-1)+qr_fib(n-2)); }"), nullptr);
  EXPECT_EQ(value(both("s=0; for(i=1,10){s=s+qr_sq(i);} s")), 385.0f);
  EXPECT_EQ(value(both("qr_fib(20)")), 6765.0f);
  EXPECT_EQ(value(both("s=0; for(i=1,10){s=s+qr_fib(i);} s")), 143.0f);
  // A function that prints is no pure function: the loop runs it on the
  // general road, turn after turn.
  ASSERT_NE(function("qr_loud(x){ $x; return(x); }"), nullptr);
  Outcome loud = both("s=0; for(i=1,3){s=s+qr_loud(i);} s");
  EXPECT_EQ(value(loud), 6.0f);
  EXPECT_NE(loud.out.find("3.000000"), std::string::npos) << loud.out;
  // A division by zero inside the callee is reported by the general road.
  ASSERT_NE(function("qr_inv(x){ return(1/x); }"), nullptr);
  EXPECT_LT(both("s=0; for(i=-1,1){s=s+qr_inv(i);}").status, 0);
}

TEST_F(QuickRoads, FunctionRedefinedBetweenCalls) {
  ASSERT_NE(function("qr_g(x){ return(x*2); }"), nullptr);
  EXPECT_EQ(value(both("s=0; for(i=1,3){s=s+qr_g(i);} s")), 12.0f);
  ASSERT_NE(function("qr_g(x){ return(x*3); }"), nullptr);
  EXPECT_EQ(value(both("s=0; for(i=1,3){s=s+qr_g(i);} s")), 18.0f);
  // Redefined as a function with an effect: no longer pure.
  ASSERT_NE(function("qr_g(x){ y=x; return(x); }"), nullptr);
  EXPECT_EQ(value(both("s=0; for(i=1,3){s=s+qr_g(i);} s")), 6.0f);
}

TEST_F(QuickRoads, RecursionAtTheDepthGuard) {
  ASSERT_NE(function("qr_deep(n){ return(qr_deep(n+1)); }"), nullptr);
  Outcome o = both("qr_deep(1)");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("INFINITE RECURSION"), std::string::npos) << o.out;
  Outcome l = both("s=0; for(i=1,3){s=s+qr_deep(i);}");
  EXPECT_LT(l.status, 0);
  EXPECT_NE(l.out.find("INFINITE RECURSION"), std::string::npos) << l.out;
  // Well under the guard a recursion answers on both roads (the stack
  // the general road takes a call differs between builds: with the
  // sanitizers its guard stops it near 650 calls).
  ASSERT_NE(function("qr_down(n){ if(n<1) return(0); return(qr_down(n-1)+1); }"), nullptr);
  EXPECT_EQ(value(both("qr_down(" + std::to_string(MAX_DEPTH / 10) + ")")), MAX_DEPTH / 10.0f);
}

TEST_F(QuickRoads, LinesOfAFunctionsLoopAreCounted) {
  // The post-mortem after the loop names the line of the failure.
  ASSERT_NE(function("qr_lines(n){\n s=0;\n for(i=1,n){\n  s=s+i;\n  t=s;\n }\n return(s/0);\n}"), nullptr);
  Outcome o = both("qr_lines(4)");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("DIVISION BY ZERO"), std::string::npos) << o.out;
}

}  // namespace
