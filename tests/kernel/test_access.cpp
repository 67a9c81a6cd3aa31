// Elements and points of values, words of a text, and points appended
// to a value growing on the evaluation area.
#include "bloc_fixture.h"
#include "kernel/access.h"
#include "kernel/values.h"

class AccessFixture : public BlocFixture {
 protected:
  // The index first, then the message (whose table text may carry its
  // own spacing).
  void expect_report(const char* index, const char* message) {
    const std::string s = said();
    EXPECT_EQ(s.rfind(index, 0), 0u) << s;
    EXPECT_NE(s.find(message), std::string::npos) << s;
  }
  // Message 66, not the index message 61.
  void expect_illegal(const char* index) {
    const std::string s = said();
    EXPECT_EQ(s.rfind(index, 0), 0u) << s;
    EXPECT_NE(s.find("ILLEGAL"), std::string::npos) << s;
    EXPECT_EQ(s.find("INDEX"), std::string::npos) << s;
  }
};
class AccessElement : public AccessFixture {};
class AccessPoint : public AccessFixture {};
class AccessConcat : public AccessFixture {};

TEST_F(AccessElement, GetIndGivesNumbersAndNames) {
  int n = 0;
  char name[16];
  word f[7] = {7, T_FLOAT, 3, 1, fw(1.9f), fw(-2.7f), fw(3)};
  EXPECT_EQ(get_ind(f, 1, &n, name, 16), 0);
  EXPECT_EQ(n, -2);
  word c[8];
  build_text(c, nullptr, "ab cd ef");
  EXPECT_EQ(get_ind(c, 2, &n, name, 16), 1);
  EXPECT_STREQ(name, "ef");
  word h[4 + 5 + 6] = {15, T_HYBRIDE, 2, 1, 5, T_FLOAT, 1, 1, fw(7)};
  build_text(h + 9, nullptr, "vol a");
  EXPECT_EQ(get_ind(h, 0, &n, name, 16), 0);
  EXPECT_EQ(n, 7);
  EXPECT_EQ(get_ind(h, 1, &n, name, 16), 1);
  EXPECT_STREQ(name, "vol a");
  EXPECT_EQ(said(), "");
}

TEST_F(AccessElement, OutOfRangeAndOtherKindsAreReported) {
  int n = 0;
  char name[16];
  word f[6] = {6, T_FLOAT, 2, 1, fw(1), fw(2)};
  EXPECT_EQ(get_ind(f, 2, &n, name, 16), -1);
  expect_report("2: ", "ILLEGAL INDEX");
  EXPECT_EQ(get_ind(f, -1, &n, name, 16), -1);
  expect_report("-1: ", "ILLEGAL INDEX");
  word c[8];
  build_text(c, nullptr, "ab cd");
  EXPECT_EQ(get_ind(c, 2, &n, name, 16), -1);
  expect_report("2: ", "ILLEGAL INDEX");
  word l[5] = {5, T_LONG, 1, 1, 4};
  EXPECT_EQ(get_ind(l, 0, &n, name, 16), -1);
  EXPECT_NE(said().find("ILLEGAL"), std::string::npos);
}

TEST_F(AccessElement, MotICutsAtSingleBlanks) {
  char buf[8];
  EXPECT_EQ(mot_i("vol1 vol2", 0, buf, 8), 4);
  EXPECT_STREQ(buf, "vol1");
  EXPECT_EQ(mot_i("vol1 vol2", 1, buf, 8), 4);
  EXPECT_STREQ(buf, "vol2");
  EXPECT_EQ(mot_i("vol1 vol2", 2, buf, 8), -1);
  EXPECT_EQ(mot_i("a  b", 1, buf, 8), 0);  // two blanks hold an empty word
  EXPECT_STREQ(buf, "");
  EXPECT_EQ(mot_i("a  b", 2, buf, 8), 1);
  EXPECT_STREQ(buf, "b");
  EXPECT_EQ(mot_i("abcdefghijk", 0, buf, 4), 3);
  EXPECT_STREQ(buf, "abc");
}

TEST_F(AccessPoint, PointsOfEveryLayout) {
  int kind = 0, dimp = 0;
  const word* p = nullptr;
  word f[10] = {10, T_FLOAT, 2, 3, fw(1), fw(2), fw(3), fw(4), fw(5), fw(6)};
  ASSERT_EQ(get_point(f, 2, &kind, &dimp, &p), 0);
  EXPECT_EQ(kind, T_FLOAT);
  EXPECT_EQ(dimp, 3);
  EXPECT_EQ(p, f + 7);
  word e[9] = {9, T_LONG, 2, 0, 2, 10, 3, 20, 21};  // entries with their lengths
  ASSERT_EQ(get_point(e, 2, &kind, &dimp, &p), 0);
  EXPECT_EQ(dimp, 2);
  EXPECT_EQ(p[1], 21);
  word t[10] = {10, T_FLOAT, 2, -3, 0, 0, 0, 2, fw(9), 0};  // slot 1 empty
  ASSERT_EQ(get_point(t, 1, &kind, &dimp, &p), 0);
  EXPECT_EQ(dimp, 0);
  ASSERT_EQ(get_point(t, 2, &kind, &dimp, &p), 0);
  EXPECT_EQ(dimp, 1);
  EXPECT_EQ(wf(p[0]), 9.0f);
  word h[4 + 5 + 5] = {14, T_HYBRIDE, 2, 1, 5, T_FLOAT, 1, 1, fw(1), 5, T_LONG, 1, 1, 8};
  ASSERT_EQ(get_point(h, 2, &kind, &dimp, &p), 0);
  EXPECT_EQ(kind, T_LONG);
  EXPECT_EQ(*p, 8);
  EXPECT_EQ(said(), "");
  EXPECT_EQ(get_point(f, 3, &kind, &dimp, &p), -1);
  expect_illegal("3: ");
  EXPECT_EQ(get_point(h, 0, &kind, &dimp, &p), -1);
  expect_illegal("0: ");
}

TEST_F(AccessPoint, ValPointMakesAOnePointValue) {
  word f[10] = {10, T_FLOAT, 2, 3, fw(1), fw(2), fw(3), fw(4), fw(5), fw(6)};
  int kind = 0, dimp = 0;
  const word* p = nullptr;
  get_point(f, 2, &kind, &dimp, &p);
  word v[8];
  ASSERT_EQ(val_point(v, v + 8, kind, dimp, p), 0);
  const word want[] = {7, T_FLOAT, 1, 3, fw(4), fw(5), fw(6)};
  EXPECT_TRUE(std::equal(want, want + 7, v));
  EXPECT_EQ(val_point(v, v + 6, kind, dimp, p), -12);
}

TEST_F(AccessConcat, PointsAreAppendedAsFloats) {
  word st[32];
  build_floats(st, nullptr, 0, nullptr);
  word l[6] = {6, T_LONG, 2, 1, 3, -4};
  ASSERT_EQ(val_concat_point(st, st + 32, l, 2), 0);
  word h[4 + 6 + 5] = {15, T_HYBRIDE, 2, 1, 6, T_FLOAT, 2, 1, fw(1), fw(2), 5, T_LONG, 1, 1, 7};
  ASSERT_EQ(val_concat_point(st, st + 32, h, 1), 0);
  word t[10] = {10, T_FLOAT, 2, -3, 0, 0, 0, 3, fw(8), fw(9)};
  ASSERT_EQ(val_append(st, st + 32, t), 0);
  const float want[] = {-4, 1, 2, 8, 9};
  ASSERT_EQ(st[0], 9);
  EXPECT_EQ(st[2], 5);
  for (int i = 0; i < 5; i++) EXPECT_EQ(F(st, i), want[i]) << i;
  ASSERT_EQ(val_append(st, st + 32, h), 0);
  EXPECT_EQ(st[2], 8);
  EXPECT_EQ(F(st, 7), 7.0f);
}

TEST_F(AccessConcat, LimitFailureWritesNothing) {
  word st[8];
  std::fill(st, st + 8, 0x33);
  build_float(st, nullptr, 5);
  word f[7] = {7, T_FLOAT, 3, 1, fw(1), fw(2), fw(3)};
  EXPECT_EQ(val_concat_point(st, st + 8, f, 1), 0);
  word big[7] = {7, T_FLOAT, 1, 3, fw(1), fw(2), fw(3)};
  EXPECT_EQ(val_concat_point(st, st + 8, big, 1), -12);
  EXPECT_EQ(st[0], 6);
  EXPECT_EQ(st[6], 0x33);
  EXPECT_EQ(val_append(st, st + 8, f), -1);
  EXPECT_EQ(val_concat_point(st, nullptr, f, 4), -1);
  expect_illegal("4: ");
}

TEST_F(AccessConcat, EgalValComparesStringsOnly) {
  word a[8], b[8], c[8];
  build_text(a, nullptr, "vol");
  build_text(b, nullptr, "vol");
  build_text(c, nullptr, "vox");
  EXPECT_EQ(egal_val(a, b), 1);
  EXPECT_EQ(egal_val(a, c), 0);
  word f[5] = {5, T_FLOAT, 1, 1, fw(1)};
  EXPECT_EQ(egal_val(f, f), 0);
  EXPECT_EQ(egal_val(a, nullptr), 0);
}
