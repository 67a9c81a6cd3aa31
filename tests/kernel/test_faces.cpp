// The kernel's answers about a value (elements, text bytes, HYBRIDE
// parts) and the one conversion of a user's float to an integer.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <cmath>
#include <limits>

#include "kernel/entier.h"
#include "kernel/values.h"
#include "kernel/word.h"

TEST(ValueCounts, ElementsAreNpTimesDimpWithinTheBloc) {
  word f[10] = {10, T_FLOAT, 2, 3};
  EXPECT_EQ(elements(f), 6);
  word flat[7] = {7, T_FLOAT, 3, 0};  // dimp below 1 counts as 1
  EXPECT_EQ(elements(flat), 3);
  word lying[6] = {6, T_FLOAT, 50, 4};  // a header that claims more than it holds
  EXPECT_EQ(elements(lying), 2);
  word negative[6] = {6, T_FLOAT, -3, 1};
  EXPECT_EQ(elements(negative), 0);
  word empty[4] = {4, T_FLOAT, 0, 1};
  EXPECT_EQ(elements(empty), 0);
  EXPECT_EQ(elements(nullptr), 0);
}

TEST(ValueCounts, TextBytesStopAtTheNulOrTheBlocEnd) {
  word c[8];
  build_text(c, nullptr, "abc def");
  EXPECT_EQ(text_bytes(c), 7);
  word full[6] = {6, T_CHAR, 2, 1};
  std::memset(full + 4, 'x', 8);  // no NUL: the bloc's end stops the count
  EXPECT_EQ(text_bytes(full), 8);
  EXPECT_EQ(text_bytes(nullptr), 0);
}

TEST(ValueCounts, ValueLengthAsksTheRightQuestionByKind) {
  word f[7] = {7, T_FLOAT, 3, 1};
  word l[6] = {6, T_LONG, 2, 1, 5, 6};
  word c[8];
  build_text(c, nullptr, "hello");
  word h[4 + 5 + 5] = {14, T_HYBRIDE, 2, 1, 5, T_FLOAT, 1, 1, fw(7), 5, T_FLOAT, 1, 1, fw(8)};
  word nil[4] = {4, T_NIL, 0, 0};
  EXPECT_EQ(value_length(f), 3);
  EXPECT_EQ(value_length(l), 2);
  EXPECT_EQ(value_length(c), 5);
  EXPECT_EQ(hybride_parts(h), 2);
  EXPECT_EQ(value_length(h), 2);
  EXPECT_EQ(hybride_parts(f), 0);
  EXPECT_EQ(value_length(nil), 0);
  EXPECT_EQ(value_length(nullptr), 0);
}

TEST(Entier, TruncatesTowardZero) {
  EXPECT_EQ(entier(2.9f), 2);
  EXPECT_EQ(entier(-2.9f), -2);
  EXPECT_EQ(entier(-0.5f), 0);
  EXPECT_EQ(entier(16777216.0f), 16777216);
  EXPECT_EQ(entier(2147483520.0f), 2147483520);  // the largest float below 2^31
  EXPECT_EQ(entier(-2147483520.0f), -2147483520);
}

TEST(Entier, NaNAndOutOfRangeNeverReachTheCast) {
  const float inf = std::numeric_limits<float>::infinity();
  EXPECT_EQ(entier(std::nanf("")), 0);
  EXPECT_EQ(entier(-std::nanf("")), 0);
  EXPECT_EQ(entier(2147483648.0f), INT_MAX);
  EXPECT_EQ(entier(1e30f), INT_MAX);
  EXPECT_EQ(entier(inf), INT_MAX);
  EXPECT_EQ(entier(-2147483648.0f), -INT_MAX);  // negatable
  EXPECT_EQ(entier(-1e30f), -INT_MAX);
  EXPECT_EQ(entier(-inf), -INT_MAX);
}

TEST(Entier, TheClampedFormHoldsItsBounds) {
  EXPECT_EQ(entier_borne(5.7f, 1, 16), 5);
  EXPECT_EQ(entier_borne(0.5f, 1, 16), 1);
  EXPECT_EQ(entier_borne(1e30f, 1, 16), 16);
  EXPECT_EQ(entier_borne(-1e30f, -100, 100), -100);
  EXPECT_EQ(entier_borne(std::nanf(""), 1, 16), 1);  // NaN is 0, then clamped
  EXPECT_EQ(entier_borne(std::nanf(""), -5, 5), 0);
}
