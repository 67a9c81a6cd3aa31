// Binary operators on resolved values: a table of operator x shape x kind
// with results worked out by hand, the kept irregularities of unequal
// lengths and of && and ||, the list operator, faults and the limit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "kernel/report.h"
#include "language/code.h"
#include "language/operators.h"
#include "support/capture.h"

namespace {

using Bloc = std::vector<word>;

Bloc F(std::initializer_list<float> xs) {
  Bloc b{static_cast<word>(4 + xs.size()), T_FLOAT, static_cast<word>(xs.size()), 1};
  for (float x : xs) b.push_back(fw(x));
  return b;
}

// CHAR in whole words, np the word count; `extra` adds zero words after.
Bloc S(const char* s, int extra = 0) {
  const size_t len = std::strlen(s);
  const int words = static_cast<int>(len / 4 + 1);
  Bloc b{4 + words + extra, T_CHAR, words, 1};
  b.resize(b[0], 0);
  std::memcpy(reinterpret_cast<char*>(b.data() + 4), s, len);
  return b;
}

Bloc NIL() { return {4, T_NIL, 0, 1}; }

Bloc H(std::initializer_list<Bloc> parts) {
  Bloc b{4, T_HYBRIDE, static_cast<word>(parts.size()), 1};
  for (const Bloc& p : parts) b.insert(b.end(), p.begin(), p.end());
  b[0] = static_cast<word>(b.size());
  return b;
}

// Result of a reducing comparison over n elements: one element in n + 4
// words (at least 5), the rest zero.
Bloc R(float v, int n) {
  Bloc b{4 + std::max(n, 1), T_FLOAT, 1, 1, fw(v)};
  b.resize(b[0], 0);
  return b;
}

constexpr word SENTINEL = 0x5a5a5a5a;

struct Outcome {
  int status;
  Bloc value;
};

// Runs the operator with `room` words before the limit; nothing may be
// written at or past the limit.
Outcome run(const Bloc& l, word op, const Bloc& r, int room = 64) {
  std::vector<word> area(room + 8, SENTINEL);
  const int status = eval_binary(l.data(), op, r.data(), area.data(), area.data() + room);
  for (int i = room; i < room + 8; i++) EXPECT_EQ(area[i], SENTINEL) << "written past the limit";
  Outcome o{status, {}};
  if (status == 0) o.value.assign(area.begin(), area.begin() + area[0]);
  return o;
}

struct Row {
  const char* what;
  Bloc left;
  word op;
  Bloc right;
  Bloc expected;
};

class OperatorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    Yes(KW_error) = 1;
    Yes(KW_ring) = 0;
    out = std::make_unique<Capture>();
  }
  void TearDown() override {
    out.reset();
    minimal_kernel();
  }
  void check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.what);
      const Outcome o = run(row.left, row.op, row.right);
      ASSERT_EQ(o.status, 0);
      EXPECT_EQ(o.value, row.expected);
    }
    EXPECT_EQ(out->take(), "");
  }
  std::string said() { return out->take(); }
  std::unique_ptr<Capture> out;
};

class OperatorEqual : public OperatorTest {};
class OperatorUnequal : public OperatorTest {};
class OperatorPow : public OperatorTest {};
class OperatorMixed : public OperatorTest {};
class OperatorList : public OperatorTest {};
class OperatorFault : public OperatorTest {};
class OperatorLimit : public OperatorTest {};
class OperatorUnary : public OperatorTest {};

TEST_F(OperatorEqual, ElementOperatorsWorkPairByPair) {
  check({
      {"add", F({1, 2, 3}), '+', F({10, 20, 30}), F({11, 22, 33})},
      {"sub", F({5, 2, -1}), '-', F({1, 4, -1}), F({4, -2, 0})},
      {"mul", F({2, -3, 0.5f}), '*', F({4, 2, 8}), F({8, -6, 4})},
      {"div", F({1, -6, 7}), '/', F({4, 2, 0.5f}), F({0.25f, -3, 14})},
      {"tiny divisor allowed", F({1}), '/', F({0.5f}), F({2})},
      {"mod truncates both", F({7, -7, 7.9f, 9}), '%', F({2, 2, -3, 2.5f}), F({1, -1, 1, 1})},
      {"mod by one", F({5}), '%', F({1.5f}), F({0})},
      {"bit and", F({6, 7.9f, -1}), '&', F({3, 2, 12}), F({2, 2, 12})},
      {"bit or", F({4, 1.5f, -8}), '|', F({1, 2, 3}), F({5, 3, -5})},
      {"shift left mod 32", F({1, 3, -1}), O_SHL, F({4, 33, 2}), F({16, 6, -4})},
      {"shift right keeps sign", F({16, -16, 5}), O_SHR, F({2, 2, 32}), F({4, -4, 5})},
      {"less stays a vector", F({1, 2}), '<', F({2, 1}), F({1, 0})},
      {"less equal elements", F({1, 2, 3}), '<', F({1, 3, 2}), F({0, 1, 0})},
      {"greater", F({1, 2, 3}), '>', F({1, 1, 4}), F({0, 1, 0})},
      {"one element", F({4}), '*', F({0.5f}), F({2})},
      {"both empty", F({}), '+', F({}), F({})},
  });
}

TEST_F(OperatorEqual, ComparisonsReduceToOneElementInTheVectorsSize) {
  check({
      {"eq all", F({1, 2}), O_EQ, F({1, 2}), R(1, 2)},
      {"eq one differs", F({1, 2}), O_EQ, F({1, 3}), R(0, 2)},
      {"ne one differs", F({1, 2, 3}), O_NE, F({1, 2, 4}), R(1, 3)},
      {"ne all same", F({1, 2}), O_NE, F({1, 2}), R(0, 2)},
      {"le every pair", F({1, 2}), O_LE, F({1, 3}), R(1, 2)},
      {"le one fails", F({1, 4}), O_LE, F({1, 3}), R(0, 2)},
      {"ge every pair", F({2, 3}), O_GE, F({2, 1}), R(1, 2)},
      {"ge one fails", F({2, 0}), O_GE, F({1, 1}), R(0, 2)},
      {"near within 0.1", F({1, 2}), O_TILDE, F({1.05f, 1.95f}), R(1, 2)},
      {"near one too far", F({1, 2}), O_TILDE, F({1.05f, 2.2f}), R(0, 2)},
      {"single", F({3}), O_EQ, F({3}), R(1, 1)},
      {"empty eq empty", F({}), O_EQ, F({}), R(1, 0)},
      {"empty ne empty", F({}), O_NE, F({}), R(0, 0)},
  });
}

TEST_F(OperatorEqual, NearUsesTheCurrentPrecision) {
  ASSERT_NE(vocab().current[KW_precision], nullptr);
  EXPECT_FLOAT_EQ(vocab().current[KW_precision][0], 0.1f);
  vocab().current[KW_precision][0] = 0.5f;
  check({
      {"within 0.5", F({1, 2}), O_TILDE, F({1.4f, 2.3f}), R(1, 2)},
      {"beyond 0.5", F({1, 2}), O_TILDE, F({1.4f, 2.6f}), R(0, 2)},
  });
}

// The right element is read only when the left one does not decide, so
// after a deciding left element the right lags behind.
TEST_F(OperatorEqual, LogicTruncatesAndShortCircuitsPerElement) {
  check({
      {"truncated half", F({0.5f}), O_AND, F({1}), F({0})},
      {"and true", F({1}), O_AND, F({2.5f}), F({1})},
      {"or truncated", F({0.9f}), O_OR, F({-0.5f}), F({0})},
      {"or true", F({0}), O_OR, F({-3}), F({1})},
      // left 0 decides; then the right's first element meets left 1
      {"and out of step", F({0, 1, 1}), O_AND, F({1, 0, 1}), F({0, 1, 0})},
      // left 1 decides; the right's first two elements meet lefts 2 and 3
      {"or out of step", F({1, 0, 0}), O_OR, F({0, 1, 0}), F({1, 0, 1})},
  });
}

TEST_F(OperatorUnequal, ShorterIsReusedFromItsStart) {
  check({
      {"scalar right", F({1, 2, 3}), '+', F({10}), F({11, 12, 13})},
      {"scalar left", F({10}), '+', F({1, 2, 3}), F({11, 12, 13})},
      {"pass and tail", F({1, 2, 3}), '+', F({10, 20}), F({11, 22, 13})},
      {"pass and tail left", F({10, 20}), '+', F({1, 2, 3}), F({11, 22, 13})},
      {"two passes right", F({10, 20, 30, 40, 50}), '-', F({1, 2}), F({9, 18, 29, 38, 49})},
      {"two passes left", F({1, 2}), '-', F({10, 20, 30, 40, 50}), F({-9, -18, -29, -38, -49})},
      {"mul", F({1, 2, 3}), '*', F({2}), F({2, 4, 6})},
      {"div right", F({8, 4, 2}), '/', F({2}), F({4, 2, 1})},
      {"div left", F({8}), '/', F({2, 4, 0.5f}), F({4, 2, 16})},
      {"bit and", F({7, 6, 5}), '&', F({1}), F({1, 0, 1})},
      {"bit or left", F({1}), '|', F({2, 4}), F({3, 5})},
      {"shl left", F({3}), O_SHL, F({1, 2, 3}), F({6, 12, 24})},
      {"shr right", F({-8, 8}), O_SHR, F({1}), F({-4, 4})},
      {"greater", F({5, 0, 5}), '>', F({1}), F({1, 0, 1})},
      // the shorter left repeats like the others
      {"less left", F({1, 2}), '<', F({2, 2, 0, 3, 5}), F({1, 0, 0, 1, 1})},
      {"less right", F({1, 3, 0}), '<', F({2}), F({1, 0, 1})},
  });
}

TEST_F(OperatorUnequal, ComparisonsStayVectors) {
  check({
      {"eq", F({1, 2}), O_EQ, F({1, 2, 1}), F({1, 1, 1})},
      {"eq right", F({1, 2, 3}), O_EQ, F({1}), F({1, 0, 0})},
      {"ne", F({1, 2, 3}), O_NE, F({1, 3}), F({0, 1, 1})},
      {"le", F({1, 5, 2}), O_LE, F({2, 3}), F({1, 0, 1})},
      {"ge left", F({2}), O_GE, F({1, 2, 3}), F({1, 1, 0})},
      {"near", F({1}), O_TILDE, F({1.05f, 1.2f, 0.95f}), F({1, 0, 1})},
  });
}

TEST_F(OperatorUnequal, ModTailIsADivision) {
  check({
      // passes 7%2 8%3 9%2 10%3, tail 11/2
      {"right shorter", F({7, 8, 9, 10, 11}), '%', F({2, 3}), F({1, 2, 1, 1, 5.5f})},
      // passes 7%2 8%3 7%4 8%5, tail 7/3
      {"left shorter", F({7, 8}), '%', F({2, 3, 4, 5, 3}), F({1, 2, 3, 3, 7.f / 3.f})},
      {"no tail", F({7, 8, 9}), '%', F({2}), F({1, 0, 1})},
  });
}

TEST_F(OperatorUnequal, LogicShortCircuitKeepsLaggingCursors) {
  check({
      // right restarts at each pass; within a pass it lags after a left 0:
      // 0 | 1&&r0 | 1&&r0 0 | 1&&r0
      {"and right shorter", F({0, 1, 1, 0, 1}), O_AND, F({1, 0}), F({0, 1, 1, 0, 1})},
      // left restarts; the longer right lags across passes:
      // 1 | 0||r0 | 1 | 0||r1 | 1
      {"or left shorter", F({1, 0}), O_OR, F({0, 1, 1, 0, 0}), F({1, 0, 1, 1, 1})},
      {"and left scalar", F({1}), O_AND, F({0, 2, 0}), F({0, 1, 0})},
  });
}

TEST_F(OperatorUnequal, EmptyAgainstNonEmptyGivesZeros) {
  check({
      {"empty left", F({}), '+', F({1, 2}), F({0, 0})},
      {"empty right", F({1, 2, 3}), '*', F({}), F({0, 0, 0})},
      {"no division made", F({}), '/', F({0}), F({0})},
      {"compare", F({}), O_EQ, F({1}), F({0})},
      {"logic", F({1, 1}), O_OR, F({}), F({0, 0})},
  });
}

// ^ is exp(b log a), so results are near, not exact.
struct PowRow {
  const char* what;
  Bloc left, right;
  std::vector<float> expected;  // NaN where no number comes out
};

TEST_F(OperatorPow, ExpOfBLogAWithKeptLeftShorterCase) {
  const std::vector<PowRow> rows = {
      {"equal lengths", F({2, 0, -2, 4}), F({3, 2, 2, 0.5f}), {8, 0, 0, 2}},
      {"negative exponent", F({2}), F({-1}), {0.5f}},
      {"underflow clamps to 0", F({10}), F({-10000}), {0}},
      {"overflow clamps at exp 43", F({10}), F({100}), {std::exp(43.f)}},
      {"right shorter tests the base", F({2, 4, 0, -1}), F({2}), {4, 16, 0, 0}},
      // whole passes use the left's first element: 2^1 2^2 2^3 2^4, tail 2^2
      {"left shorter uses first", F({2, 3}), F({1, 2, 3, 4, 2}), {2, 4, 8, 16, 4}},
      // untested base 0: b log 0 is +inf for b < 0, clamped to exp(43)
      {"left shorter zero base", F({0}), F({-1, 1}), {std::exp(43.f), 0}},
      // untested negative base in the pass, tested again in the tail
      {"left shorter negative base", F({-2, 5}), F({1, 1, 1}), {NAN, NAN, 0}},
  };
  for (const PowRow& row : rows) {
    SCOPED_TRACE(row.what);
    const Outcome o = run(row.left, '^', row.right);
    ASSERT_EQ(o.status, 0);
    ASSERT_EQ(o.value.size(), 4 + row.expected.size());
    EXPECT_EQ(o.value[2], static_cast<word>(row.expected.size()));
    for (size_t i = 0; i < row.expected.size(); i++) {
      const float got = getf(o.value.data(), static_cast<int>(i)), want = row.expected[i];
      if (std::isnan(want))
        EXPECT_TRUE(std::isnan(got)) << i;
      else
        EXPECT_NEAR(got, want, std::fabs(want) * 1e-5f + 1e-6f) << i;
    }
  }
}

TEST_F(OperatorMixed, OnlyEqualityWorksOnNonVectors) {
  check({
      {"same strings", S("ab"), O_EQ, S("ab"), R(1, 1)},
      {"padding ignored", S("abc", 2), O_EQ, S("abc"), R(1, 1)},
      {"other strings", S("ab"), O_EQ, S("ac"), R(0, 1)},
      {"prefix", S("ab"), O_EQ, S("abc"), R(0, 1)},
      {"strings differ", S("ab"), O_NE, S("ac"), R(1, 1)},
      {"string and number", S("ab"), O_EQ, F({1}), R(0, 1)},
      {"number and string", F({1}), O_NE, S("ab"), R(1, 1)},
      {"nil and nil", NIL(), O_EQ, NIL(), R(1, 1)},
      {"nil token and nil", {T_NIL, 0}, O_NE, NIL(), R(0, 1)},
      {"nil and empty string", NIL(), O_EQ, S(""), R(0, 1)},
      {"same lists", H({F({1})}), O_EQ, H({F({1})}), R(0, 1)},
      {"empty vector and nil", F({}), O_EQ, NIL(), R(0, 1)},
  });
}

TEST_F(OperatorMixed, OtherOperatorsNameTheOperandAndFail) {
  struct Case {
    Bloc left;
    word op;
    Bloc right;
    const char* text;
  };
  const std::vector<Case> cases = {
      {S("ab"), '+', F({1}), "CHAR:  ILLEGAL\n"},
      {F({1}), '<', NIL(), "NIL:  ILLEGAL\n"},
      {H({F({1})}), O_AND, H({F({1})}), "HYBRIDE:  ILLEGAL\n"},
      {S("a"), O_LE, S("a"), "CHAR:  ILLEGAL\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_LT(run(c.left, c.op, c.right).status, 0);
    EXPECT_EQ(said(), c.text);
  }
  Yes(KW_error) = 0;
  EXPECT_LT(run(S("ab"), '+', F({1})).status, 0);
  EXPECT_EQ(said(), "");
}

TEST_F(OperatorMixed, UnknownOperatorIsAnOperatorError) {
  EXPECT_LT(run(F({1}), '$', F({1})).status, 0);
  EXPECT_EQ(said(), " OPERATOR ERROR\n");
  EXPECT_LT(run(S("a"), O_INC, S("a")).status, 0);
  EXPECT_EQ(said(), " OPERATOR ERROR\n");
}

TEST_F(OperatorList, NilAndSameKindConcatenation) {
  const Bloc triple{7, T_FLOAT, 1, 3, fw(1), fw(2), fw(3)};
  check({
      {"nil left", NIL(), ',', F({1, 2}), F({1, 2})},
      {"nil right keeps the left as is", triple, ',', NIL(), triple},
      {"nil right keeps a string", S("ab", 1), ',', NIL(), S("ab", 1)},
      {"nil both", NIL(), ',', NIL(), NIL()},
      {"nil token", {T_NIL, 0}, ',', NIL(), NIL()},
      {"floats", F({1, 2}), ',', F({3}), F({1, 2, 3})},
      {"empty floats", F({}), ',', F({1}), F({1})},
      {"points flattened", triple, ',', F({4}), F({1, 2, 3, 4})},
      {"strings", S("a"), ',', S("b"), S("ab")},
      {"strings grow a word", S("abc"), ',', S("de"), S("abcde")},
      {"string padding dropped", S("ab", 3), ',', S("cd", 1), S("abcd")},
      {"empty strings", S(""), ',', S(""), S("")},
  });
}

TEST_F(OperatorList, MixedKindsBuildAListWhoseNeighboursMerge) {
  check({
      {"float then string", F({1}), ',', S("a"), H({F({1}), S("a")})},
      {"string then float", S("a"), ',', F({1, 2}), H({S("a"), F({1, 2})})},
      {"string rounded to its text", S("ab", 2), ',', F({1}), H({S("ab"), F({1})})},
      {"list then string merges", H({F({1}), S("a")}), ',', S("b"), H({F({1}), S("ab")})},
      {"list then float", H({F({1}), S("a")}), ',', F({2}), H({F({1}), S("a"), F({2})})},
      {"float then list merges", F({0}), ',', H({F({1}), S("a")}), H({F({0, 1}), S("a")})},
      {"list then list", H({F({1}), S("a")}), ',', H({S("b"), F({2})}),
       H({F({1}), S("ab"), F({2})})},
      {"nil parts merge", H({F({1}), NIL()}), ',', H({NIL(), F({2})}),
       H({F({1}), NIL(), F({2})})},
      {"list then nil", H({F({1}), S("a")}), ',', NIL(), H({F({1}), S("a")})},
      {"empty lists", H({}), ',', H({}), H({})},
      {"list into one part", H({F({1})}), ',', F({2, 3}), H({F({1, 2, 3})})},
      {"other kinds kept apart", H({{5, T_LONG, 1, 1, 7}}), ',', H({{5, T_LONG, 1, 1, 8}}),
       H({{5, T_LONG, 1, 1, 7}, {5, T_LONG, 1, 1, 8}})},
  });
}

TEST_F(OperatorFault, DivisionByZeroStopsAndClearsTheResult) {
  struct Case {
    const char* what;
    Bloc left, right;
    word op;
  };
  const std::vector<Case> cases = {
      {"zero", F({1, 2}), F({1, 0}), '/'},
      {"within 0.0001", F({1}), F({0.00009f}), '/'},
      {"negative within", F({1}), F({-0.00009f}), '/'},
      {"reused short", F({1, 2, 3}), F({0}), '/'},
      {"mod zero", F({5}), F({0}), '%'},
      {"mod truncates to zero", F({5}), F({0.5f}), '%'},
      {"mod negative fraction", F({5, 6}), F({1, -0.99f}), '%'},
      {"mod reused fraction", F({5, 6, 7}), F({0.5f}), '%'},
  };
  for (int on = 1; on >= 0; on--) {
    Yes(KW_error) = on;
    for (const Case& c : cases) {
      SCOPED_TRACE(std::string(c.what) + (on ? " error on" : " error off"));
      const Outcome o = run(c.left, c.op, c.right);
      EXPECT_LT(o.status, 0);
      EXPECT_NE(o.status, -12);
      EXPECT_EQ(said(), on ? " DIVISION BY ZERO\n" : "");
    }
  }
}

TEST_F(OperatorFault, ClearedResultIsAnEmptyVector) {
  std::vector<word> area(16, SENTINEL);
  const Bloc l = F({4, 4}), r = F({2, 0});
  ASSERT_LT(eval_binary(l.data(), '/', r.data(), area.data(), area.data() + 16), 0);
  EXPECT_EQ(Bloc(area.begin(), area.begin() + 4), F({}));
  EXPECT_EQ(said(), " DIVISION BY ZERO\n");
}

TEST_F(OperatorFault, DivisorAtTheBoundIsAllowed) {
  const Outcome o = run(F({1}), '/', F({-0.0001f}));
  ASSERT_EQ(o.status, 0);
  EXPECT_NEAR(getf(o.value.data(), 0), -10000.f, 1.f);
  EXPECT_EQ(said(), "");
}

TEST_F(OperatorLimit, EveryResultKindChecksTheLimit) {
  struct Case {
    const char* what;
    Bloc left;
    word op;
    Bloc right;
    int needed;  // words of the result
  };
  const std::vector<Case> cases = {
      {"vector", F({1, 2, 3}), '+', F({1}), 7},
      {"reduced keeps n + 4", F({1, 2, 3}), O_EQ, F({1, 2, 3}), 7},
      {"zeros", F({}), '+', F({1, 2}), 6},
      {"mixed equality", S("a"), O_EQ, S("a"), 5},
      {"floats", F({1}), ',', F({2, 3}), 7},
      {"strings", S("abc"), ',', S("de"), 6},
      {"nil copy", NIL(), ',', S("abcdefgh"), 7},
      {"list", F({1}), ',', S("a"), 14},
      {"list merge at the end", H({S("a"), F({1})}), ',', F({2, 3}), 4 + 5 + 7},
      {"list string merge", H({F({1}), S("abc")}), ',', S("d"), 4 + 5 + 6},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const Outcome fits = run(c.left, c.op, c.right, c.needed);
    EXPECT_EQ(fits.status, 0);
    EXPECT_EQ(fits.value.size(), static_cast<size_t>(c.needed));
    EXPECT_EQ(said(), "");
    for (int room = 0; room < c.needed; room++) {
      EXPECT_EQ(run(c.left, c.op, c.right, room).status, -12) << room;
      EXPECT_EQ(said(), " OVERFLOW, increase Dim_ev (in enva.h)\n");
    }
  }
}

TEST_F(OperatorUnary, NotAndCompoundBase) {
  std::vector<word> area(16, SENTINEL);
  const Bloc v = F({0, 1, -0.f, 0.5f, -2});
  ASSERT_EQ(eval_not(v.data(), area.data(), area.data() + 9), 0);
  EXPECT_EQ(Bloc(area.begin(), area.begin() + 9), F({1, 0, 1, 0, 0}));
  EXPECT_EQ(area[9], SENTINEL);
  const Bloc s = S("a");
  ASSERT_EQ(eval_not(s.data(), area.data(), area.data() + 4), 0);
  EXPECT_EQ(Bloc(area.begin(), area.begin() + 4), NIL());
  EXPECT_EQ(eval_not(v.data(), area.data(), area.data() + 8), -12);
  EXPECT_EQ(said(), " OVERFLOW, increase Dim_ev (in enva.h)\n");

  const word pairs[][2] = {{O_ADD_SET, '+'},     {O_SUB_SET, '-'},   {O_MUL_SET, '*'},
                           {O_DIV_SET, '/'},     {O_MOD_SET, '%'},   {O_XOR_SET, '^'},
                           {O_AND_SET, '&'},     {O_OR_SET, '|'},    {O_SHL_SET, O_SHL},
                           {O_SHR_SET, O_SHR},   {O_LIST_SET, ','},  {'+', 0},
                           {O_EQ, 0},            {O_INC, 0}};
  for (const auto& p : pairs) EXPECT_EQ(compound_base(p[0]), p[1]) << p[0];
}

}  // namespace
