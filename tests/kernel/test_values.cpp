// The value builders under a limit, and the two families of segment
// builders.
#include <cstring>
#include <functional>
#include <vector>

#include "bloc_fixture.h"
#include "kernel/values.h"

class ValueCtor : public BlocFixture {};
class ValueSeg : public BlocFixture {};

TEST_F(ValueCtor, FloatBuildersWriteSizeNpDimpAndData) {
  word v[16];
  ASSERT_EQ(build_floats(v, nullptr, 0, nullptr), 0);
  const word empty[] = {4, T_FLOAT, 0, 1};
  EXPECT_TRUE(std::equal(empty, empty + 4, v));
  ASSERT_EQ(build_float(v, v + 5, -2.5f), 0);
  const word one[] = {5, T_FLOAT, 1, 1, fw(-2.5f)};
  EXPECT_TRUE(std::equal(one, one + 5, v));
  // Six floats as two points of three, from an array and from a vector.
  const std::vector<float> f = {1.5f, -2, 3, 4, 5, 6};
  for (int from_vector = 0; from_vector < 2; from_vector++) {
    SCOPED_TRACE(from_vector);
    std::fill(v, v + 16, 0x5555);
    ASSERT_EQ(from_vector ? build_floats(v, v + 10, f, 3) : build_floats(v, v + 10, 6, f.data(), 3), 0);
    EXPECT_EQ(v[0], 10);
    EXPECT_EQ(v[1], T_FLOAT);
    EXPECT_EQ(v[2], 2);
    EXPECT_EQ(v[3], 3);
    for (int i = 0; i < 6; i++) EXPECT_EQ(F(v, i), f[i]);
    EXPECT_EQ(v[10], 0x5555);
  }
  // Zeros for the caller to fill; an empty vector can stand for NIL.
  std::fill(v, v + 16, 0x5555);
  ASSERT_EQ(build_zeros(v, v + 8, 4, 2), v);
  const word zeros[] = {8, T_FLOAT, 2, 2, 0, 0, 0, 0};
  EXPECT_TRUE(std::equal(zeros, zeros + 8, v));
  ASSERT_EQ(build_floats_or_nil(v, v + 4, {}), 0);
  EXPECT_EQ(v[1], T_NIL);
  ASSERT_EQ(build_floats_or_nil(v, v + 5, {7}), 0);
  EXPECT_EQ(v[1], T_FLOAT);
  EXPECT_EQ(F(v, 0), 7.0f);
}

// Every builder past its limit: nothing written, message 12, -12.
TEST_F(ValueCtor, PastTheLimitNothingIsWrittenAndTwelveIsReported) {
  word v[8];
  const std::vector<float> three = {1, 2, 3};
  const std::function<int(word*)> builders[] = {
      [](word* p) { return build_nil(p, p + 3); },
      [](word* p) { return build_float(p, p + 4, 1); },
      [&](word* p) { return build_floats(p, p + 6, 3, three.data()); },
      [&](word* p) { return build_floats(p, p + 6, three); },
      [&](word* p) { return build_floats_or_nil(p, p + 6, three); },
      [](word* p) { return build_floats_or_nil(p, p + 3, {}); },
      [](word* p) { return build_zeros(p, p + 6, 3) ? 0 : -12; },
      [](word* p) { return build_text(p, p + 5, "abcd"); },
      [](word* p) { return build_text(p, p + 6, "abcdefgh", 8); },
      [](word* p) { return build_text_or_nil(p, p + 5, "abcd"); },
      [](word* p) { return build_text_or_nil(p, p + 3, ""); },
  };
  int i = 0;
  for (const auto& build : builders) {
    SCOPED_TRACE(i++);
    std::fill(v, v + 8, 0x5555);
    said();
    EXPECT_EQ(build(v), -12);
    EXPECT_NE(said().find("OVERFLOW"), std::string::npos);
    for (int k = 0; k < 8; k++) EXPECT_EQ(v[k], 0x5555) << k;
  }
  EXPECT_EQ(build_floats(v, v + 7, 3, three.data()), 0);  // exactly fits
  EXPECT_EQ(F(v, 2), 3.0f);
  EXPECT_EQ(said(), "");
}

TEST_F(ValueCtor, NilAndTextBuilders) {
  word v[8] = {};
  EXPECT_EQ(build_nil(v, v + 4), 0);
  const word nil[] = {4, T_NIL, 0, 1};
  EXPECT_TRUE(std::equal(nil, nil + 4, v));
  ASSERT_EQ(build_text_or_nil(v, v + 8, ""), 0);
  EXPECT_EQ(v[1], T_NIL);
  struct Case { const char* s; int np; } cases[] = {{"", 1}, {"abc", 1}, {"abcd", 2}, {"a b c", 2}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.s);
    for (int counted = 0; counted < 2; counted++) {
      word w[8];
      std::fill(w, w + 8, -1);
      ASSERT_EQ(counted ? build_text(w, w + 8, c.s, std::strlen(c.s)) : build_text(w, w + 8, c.s), 0);
      EXPECT_EQ(w[1], T_CHAR);
      EXPECT_EQ(w[2], c.np);
      EXPECT_EQ(w[0], 4 + c.np);
      EXPECT_STREQ(text(w), c.s);
      const char* last = reinterpret_cast<const char*>(w + w[0]) - 1;
      EXPECT_EQ(*last, '\0');  // padded with zeros to the word
    }
  }
  // A counted text may hold what a NUL-ended one cannot: only len bytes go in.
  word w[8];
  ASSERT_EQ(build_text(w, w + 8, "abcdef", 3), 0);
  EXPECT_STREQ(text(w), "abc");
}

TEST_F(ValueCtor, RecountIsTheBlankCountPlusOne) {
  word w[8];
  struct Case { const char* s; int np; } cases[] = {{"abc", 1}, {"a b", 2}, {"a  b", 3}, {"vol1 vol2 x", 3}};
  for (const Case& c : cases) {
    build_text(w, nullptr, c.s);
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
  build_text(w, nullptr, "a b c");
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
