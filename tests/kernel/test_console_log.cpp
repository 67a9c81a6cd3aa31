// The console log object: strings grow its text property, numbers slide
// it, keeping only the newest characters.
#include <gtest/gtest.h>

#include <cstring>

#include "kernel/bloc.h"
#include "kernel/objet.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "support/capture.h"

class ConsoleLog : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    // A text property of 16 data words: 63 characters and the NUL.
    bloc p = ajoute_propriete(&log, 6 + 4 + 16);
    ASSERT_NE(p, nullptr);
    memset(p + 1, 0, (6 + 4 + 16 - 1) * 4);
    p[1] = T_SEGMENTS;
    p[2] = 6;
    p[3] = 1;
    p[4] = KW_text / 200;
    p[5] = KW_text;
    bloc v = p + 6;
    v[0] = 4 + 16;
    v[1] = T_CHAR;
    v[2] = 1;
    v[3] = 1;
    kernel().Text_courant = &log;
    kernel().Mode_idle = 1;
  }
  void TearDown() override {
    kernel().Text_courant = nullptr;
    kernel().Mode_idle = 0;
    libere_valeur(log.local);
  }
  std::string logged() {
    bloc p = get_propr_1(log.local, KW_text);
    return p ? text(p + 6) : "(none)";
  }
  Objet log;
  Capture out;
};

TEST_F(ConsoleLog, StringsAreCopiedWithTheirFormatText) {
  VOIR_CHAR("<%s> end", "abc");
  EXPECT_EQ(logged(), "<abc> end");
  EXPECT_EQ(out.take(), "<abc> end");
}

TEST_F(ConsoleLog, StringsGrowThePropertyAndKeepEverything) {
  std::string a(50, 'a'), b(50, 'b');
  VOIR_CHAR("%s", a.c_str());
  VOIR_CHAR("%s", b.c_str());
  EXPECT_EQ(logged(), a + b);
  EXPECT_GT(get_propr_1(log.local, KW_text)[0], 6 + 4 + 16);
}

TEST_F(ConsoleLog, NumbersSlideTheWindowOverTheOldestText) {
  for (int i = 0; i < 30; i++) voir_int("%d;", i);
  std::string t = logged();
  EXPECT_LE(t.size(), 63u);
  EXPECT_EQ(t.substr(t.size() - 3), "29;");
  EXPECT_EQ(t.find("0;1;"), std::string::npos);
  EXPECT_EQ(get_propr_1(log.local, KW_text)[0], 6 + 4 + 16);
}

TEST_F(ConsoleLog, FloatsAreWrittenByHand) {
  voir_float("x=%f|", -2.5f);
  voir_float("%f|", 3.0f);
  EXPECT_EQ(logged(), "x=-2.5 |3|");
  EXPECT_EQ(out.take(), "x=-2.500000|3.000000|");
}

TEST_F(ConsoleLog, NothingIsCopiedOutsideTheLoopOrWhileWatching) {
  kernel().Mode_idle = 0;
  VOIR_CHAR("%s", "quiet");
  EXPECT_EQ(logged(), "");
  kernel().Mode_idle = 1;
  Yes(KW_see) = 2;
  VOIR_CHAR("%s", "skipped");
  EXPECT_EQ(Yes(KW_see), 1);
  VOIR_CHAR("%s", "kept");
  EXPECT_EQ(logged(), "kept");
  Yes(KW_see) = 0;
}
