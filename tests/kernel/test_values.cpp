// Value constructors under a limit, and the two families of segment
// builders.
#include <cstring>

#include "bloc_fixture.h"
#include "kernel/values.h"

class ValueCtor : public BlocFixture {};
class ValueSeg : public BlocFixture {};

TEST_F(ValueCtor, FloatConstructorsWriteSizeNpDimpAndData) {
  word v[16];
  ASSERT_EQ(val_0(v, nullptr), 0);
  EXPECT_EQ(v[0], 4);
  EXPECT_EQ(v[1], T_FLOAT);
  EXPECT_EQ(v[2], 0);
  EXPECT_EQ(v[3], 1);
  const float f[] = {1.5f, -2, 3, 4, 5, 6};
  using Ctor = int (*)(bloc);
  const Ctor ctors[] = {
      [](bloc p) { return val_1(p, nullptr, 1.5f); },
      [](bloc p) { return val_2(p, nullptr, 1.5f, -2); },
      [](bloc p) { return val_3(p, nullptr, 1.5f, -2, 3); },
      [](bloc p) { return val_4(p, nullptr, 1.5f, -2, 3, 4); },
      [](bloc p) { return val_5(p, nullptr, 1.5f, -2, 3, 4, 5); },
      [](bloc p) { return val_6(p, nullptr, 1.5f, -2, 3, 4, 5, 6); },
  };
  for (int n = 1; n <= 6; n++) {
    SCOPED_TRACE(n);
    ASSERT_EQ(ctors[n - 1](v), 0);
    EXPECT_EQ(v[0], 4 + n);
    EXPECT_EQ(v[1], T_FLOAT);
    EXPECT_EQ(v[2], n);
    EXPECT_EQ(v[3], 1);
    for (int i = 0; i < n; i++) EXPECT_EQ(F(v, i), f[i]);
  }
}

TEST_F(ValueCtor, PastTheLimitOnlyTheSizeWordChanges) {
  word v[8];
  std::fill(v, v + 8, 0x5555);
  EXPECT_EQ(val_3(v, v + 6, 1, 2, 3), -12);
  EXPECT_EQ(v[0], 7);
  for (int i = 1; i < 8; i++) EXPECT_EQ(v[i], 0x5555) << i;
  EXPECT_EQ(val_3(v, v + 7, 1, 2, 3), 0);  // exactly fits
  EXPECT_EQ(F(v, 2), 3.0f);
  std::fill(v, v + 8, 0x5555);
  EXPECT_EQ(val_char(v, v + 5, "abcdefgh"), -12);
  EXPECT_EQ(v[0], 7);
  EXPECT_EQ(v[1], 0x5555);
}

TEST_F(ValueCtor, NilAndCharMakers) {
  word v[8] = {};
  EXPECT_EQ(val_nil(nullptr, nullptr), 0);
  EXPECT_EQ(val_nil(v, v + 3), -1);
  EXPECT_EQ(v[0], 0);
  EXPECT_EQ(val_nil(v, v + 4), 0);
  EXPECT_EQ(v[0], 4);
  EXPECT_EQ(v[1], T_NIL);
  EXPECT_EQ(v[2], 0);
  EXPECT_EQ(v[3], 1);
  struct Case { const char* s; int np; } cases[] = {{"", 1}, {"abc", 1}, {"abcd", 2}, {"a b c", 2}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.s);
    word w[8];
    std::fill(w, w + 8, -1);
    ASSERT_EQ(val_char(w, w + 8, c.s), 0);
    EXPECT_EQ(w[1], T_CHAR);
    EXPECT_EQ(w[2], c.np);
    EXPECT_EQ(w[0], 4 + c.np);
    EXPECT_STREQ(text(w), c.s);
    const char* last = reinterpret_cast<const char*>(w + w[0]) - 1;
    EXPECT_EQ(*last, '\0');  // padded with zeros to the word
  }
}

TEST_F(ValueCtor, RecountIsTheBlankCountPlusOne) {
  word w[8];
  struct Case { const char* s; int np; } cases[] = {{"abc", 1}, {"a b", 2}, {"a  b", 3}, {"vol1 vol2 x", 3}};
  for (const Case& c : cases) {
    val_char(w, nullptr, c.s);
    recompte_char(w);
    EXPECT_EQ(w[2], c.np) << c.s;
  }
}

TEST_F(ValueSeg, BuildsTheCommandColVol1) {
  word s[32];
  seg_ini(s, s + 32);
  seg_add(s, s + 32, KW_col);
  seg_add_f1(s, s + 32, KW_vol, 1);
  const word want[] = {15, T_SEGMENTS, 2, 0, 3, 1, 230, 8, 1, 357, 5, T_FLOAT, 1, 1, fw(1)};
  EXPECT_TRUE(std::equal(want, want + 15, s));
  EXPECT_EQ(seg_ini_r(s, s + 32), 0);
  EXPECT_EQ(seg_add_r(s, s + 32, KW_rem), 0);
  const word want_r[] = {7, T_SEGMENTS, 1, 0, 3, 0, KW_rem};
  EXPECT_TRUE(std::equal(want_r, want_r + 7, s));
}

TEST_F(ValueSeg, CharSegmentCountsBytesUnlikeTheStringMaker) {
  word s[32];
  seg_ini(s, nullptr);
  seg_add_char(s, nullptr, KW_vol, "a b c");
  const word* v = s + 4 + 3;
  EXPECT_EQ(s[4], 3 + 6);
  EXPECT_EQ(v[1], T_CHAR);
  EXPECT_EQ(v[2], 5);
  EXPECT_STREQ(text(v), "a b c");
  word w[8];
  val_char(w, nullptr, "a b c");
  EXPECT_EQ(w[0], v[0]);
  EXPECT_EQ(w[2], 2);
}

TEST_F(ValueSeg, FloatsArrayValueAndFlatSegments) {
  word s[64];
  seg_ini(s, nullptr);
  seg_add_f6(s, nullptr, KW_poi, 1, 2, 3, 4, 5, 6);
  const float tab[] = {7, 8, 9};
  seg_add_tab(s, nullptr, KW_poi, 3, tab);
  word m[10] = {10, T_FLOAT, 2, 3, fw(1), fw(2), fw(3), fw(4), fw(5), fw(6)};
  seg_add_val(s, nullptr, KW_fac, m);
  seg_add_flat(s, nullptr, KW_fac, m);
  EXPECT_EQ(s[2], 4);
  EXPECT_EQ(s[0], 4 + 13 + 10 + 13 + 13);
  const word* seg = s + 4;
  EXPECT_EQ(F(seg + 3, 5), 6.0f);
  seg += seg[0];
  EXPECT_EQ(seg[3 + 2], 3);
  EXPECT_EQ(F(seg + 3, 2), 9.0f);
  seg += seg[0];
  EXPECT_TRUE(std::equal(m, m + 10, seg + 3));
  seg += seg[0];
  EXPECT_EQ(seg[3 + 2], 6);
  EXPECT_EQ(seg[3 + 3], 1);
  EXPECT_EQ(F(seg + 3, 5), 6.0f);
  EXPECT_EQ(verifie_bloc(s), 0);
}

TEST_F(ValueSeg, FirstFamilyReportsSecondReturnsAndNeitherWrites) {
  word s[12];
  seg_ini(s, nullptr);
  seg_add(s, s + 12, KW_col);
  std::fill(s + 7, s + 12, 0x77);
  said();
  seg_add_f2(s, s + 12, KW_vol, 1, 2);
  EXPECT_NE(said().find("OVERFLOW"), std::string::npos);
  EXPECT_EQ(s[0], 7);
  EXPECT_EQ(s[2], 1);
  EXPECT_EQ(s[7], 0x77);
  const float f[] = {1, 2};
  EXPECT_EQ(seg_add_fn_r(s, s + 12, KW_vol, 2, f), -12);
  word v[5] = {5, T_FLOAT, 1, 1, fw(2)};
  EXPECT_EQ(seg_add_val_r(s, s + 12, KW_vol, v), -12);
  EXPECT_EQ(said(), "");
  EXPECT_EQ(s[0], 7);
  EXPECT_EQ(s[7], 0x77);
  EXPECT_EQ(seg_add_r(s, s + 12, KW_vol), 0);  // three words still fit
  EXPECT_EQ(s[0], 10);
  EXPECT_EQ(seg_add_fn_r(s, nullptr, KW_vol, 5, f), -1);
  const std::string s5 = said();
  EXPECT_EQ(s5.rfind("5: ", 0), 0u) << s5;
  EXPECT_NE(s5.find("ILLEGAL"), std::string::npos) << s5;
}
