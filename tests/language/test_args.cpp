// Reading a command's arguments: numbers by one rule over FLOAT, LONG and
// HYBRIDE values, an integer or a float with a default, a text.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/values.h"
#include "language/args.h"

namespace {

// A command "dim(3.5, -2) name("pic") poi" with a HYBRIDE under `image`.
struct Command {
  word s[128] = {};
  Command() {
    seg_ini(s, nullptr);
    seg_add_f2(s, nullptr, KW_dim, 3.5f, -2.0f);
    seg_add_char(s, nullptr, KW_name, "pic");
    seg_add(s, nullptr, KW_poi);
    word h[4 + 6 + 6 + 5] = {21, T_HYBRIDE, 3, 1, 6, T_FLOAT, 2, 1, fw(1), fw(2), 6, T_CHAR, 2, 1};
    std::memcpy(h + 10 + 4, "ab", 3);
    word* l = h + 16;
    l[0] = 5, l[1] = T_LONG, l[2] = 1, l[3] = 1, l[4] = 9;
    seg_add_val(s, nullptr, KW_image, h);
  }
};

}  // namespace

TEST(Args, NumbersOfEveryKindByOneRule) {
  word f[6] = {6, T_FLOAT, 2, 1, fw(1.5f), fw(2.5f)};
  word l[6] = {6, T_LONG, 2, 1, 7, -8};
  word c[6];
  build_text(c, nullptr, "12");
  EXPECT_EQ(floats_of(f), (std::vector<float>{1.5f, 2.5f}));
  EXPECT_EQ(floats_of(l), (std::vector<float>{7, -8}));
  EXPECT_TRUE(floats_of(c).empty());
  EXPECT_TRUE(floats_of(nullptr).empty());
  Command k;
  // The HYBRIDE's numbers in order, its text part skipped.
  EXPECT_EQ(arg_floats(k.s, KW_image), (std::vector<float>{1, 2, 9}));
  float out[4] = {-1, -1, -1, -1};
  EXPECT_EQ(arg_floats(k.s, KW_image, out, 2), 2);
  EXPECT_EQ(out[1], 2);
  EXPECT_EQ(out[2], -1);  // past the count: what the caller put there
  EXPECT_EQ(value_at(arg_of(k.s, KW_image), 2), 9);
  EXPECT_EQ(value_at(arg_of(k.s, KW_image), 3, -5), -5);
}

TEST(Args, WordsWithDefaults) {
  Command k;
  bool present = false;
  EXPECT_EQ(arg_floats(k.s, KW_poi, &present), std::vector<float>{});
  EXPECT_TRUE(present);
  arg_floats(k.s, KW_win, &present);
  EXPECT_FALSE(present);
  EXPECT_TRUE(has_word(k.s, KW_poi));
  EXPECT_FALSE(has_word(k.s, KW_win));
  EXPECT_EQ(arg_float(k.s, KW_dim, 0), 3.5f);
  EXPECT_EQ(arg_float(k.s, KW_dim, 0, 1), -2.0f);
  EXPECT_EQ(arg_float(k.s, KW_dim, 7, 2), 7);
  EXPECT_EQ(arg_float(k.s, KW_poi, 7), 7);  // present without a value
  EXPECT_EQ(arg_int(k.s, KW_dim, 0), 3);
  EXPECT_EQ(arg_int(k.s, KW_dim, 0, 1), -2);
  EXPECT_EQ(arg_int(k.s, KW_win, INT_MAX), INT_MAX);  // the default is kept exactly
  EXPECT_STREQ(arg_text(k.s, KW_name), "pic");
  EXPECT_EQ(arg_text(k.s, KW_dim), nullptr);
  EXPECT_EQ(arg_text(k.s, KW_win), nullptr);
}

TEST(Args, AnIntegerFromNaNOrAHugeNumberIsChecked) {
  word s[64] = {};
  seg_ini(s, nullptr);
  seg_add_f2(s, nullptr, KW_dim, std::nanf(""), 1e30f);
  EXPECT_EQ(arg_int(s, KW_dim, 5), 0);
  EXPECT_EQ(arg_int(s, KW_dim, 5, 1), INT_MAX);
}
