// Console printing: bells, the pri limit, messages, keyword names, the
// failure reports and the trace line.
#include <gtest/gtest.h>

#include <cstring>

#include "kernel/report.h"
#include "support/capture.h"

class Report : public ::testing::Test {
 protected:
  void SetUp() override { minimal_kernel(); }
  void TearDown() override { minimal_kernel(); }
  Capture out;
};

TEST_F(Report, BellsAreStrippedFromTextAndFormatOnlyWhenRingIsOff) {
  const char* s = "A\aB";
  Yes(KW_ring) = 0;
  VOIR_CHAR("<%s>\a", s);
  EXPECT_EQ(out.take(), "<AB>");
  EXPECT_STREQ(s, "A\aB");
  Yes(KW_ring) = 1;
  VOIR_CHAR("<%s>\a", s);
  EXPECT_EQ(out.take(), "<A\aB>\a");
  Yes(KW_ring) = 0;
  voir_int("%d\a", 7);
  EXPECT_EQ(out.take(), "7");
}

TEST_F(Report, LongStringIsCutAtPriAfterMessage15AndCallerStringIsIntact) {
  kernel().pri = 5;
  std::string s = "0123456789";
  VOIR_CHAR("%s", s.c_str());
  std::string got = out.take();
  ASSERT_GE(got.size(), 5u);
  EXPECT_EQ(got.substr(got.size() - 5), "01234");
  EXPECT_NE(got.find("TRONCADET DATAS"), std::string::npos);
  EXPECT_EQ(s, "0123456789");
  // A print below -1 lifts the limit, as messages do for themselves.
  Yes(KW_print) = -2;
  VOIR_CHAR("%s", s.c_str());
  EXPECT_EQ(out.take(), "0123456789");
  Yes(KW_print) = -1;
  voir_message(0, 12);
  EXPECT_EQ(out.take(), " OVERFLOW, increase Dim_ev (in enva.h)\n");
}

TEST_F(Report, MessageNumbersAndVocabulariesOutOfRangeAreReported) {
  voir_message(0, 500);
  EXPECT_EQ(out.take(), "mes 500 != [0,118]\n");
  voir_message(1, 138);
  EXPECT_EQ(out.take(), "mes 138 != [0,137]\n");
  voir_message(5, 0);
  EXPECT_EQ(out.take(), "env 5 !$ [0,1]\n");
  voir_message(1, 95);
  EXPECT_EQ(out.take(), " graphic off\n");
}

TEST_F(Report, MessagesPrintTwiceInTheTwoDoubledModesExceptPromptTexts) {
  kernel().mode_courant = 85;
  voir_message(0, 28);
  EXPECT_EQ(out.take(), " NOT FOUND\n NOT FOUND\n");
  voir_message(0, 0);
  EXPECT_EQ(out.take(), " ?");
  kernel().mode_courant = 156;
  voir_message(1, 28);
  EXPECT_EQ(out.take(), " incorectly formatted file\n");
}

TEST_F(Report, EarlyConsoleUsesFixedTexts) {
  kernel().etat_console = 0;
  voir_message(0, 28);
  EXPECT_EQ(out.take(), "erreur allocation\n");
  voir_message(0, 12);
  EXPECT_EQ(out.take(), "");
  err_pas_trouve(nullptr);
  EXPECT_EQ(out.take(), "NOT FOUND\n");
  err_malloc(nullptr, 40);
  EXPECT_EQ(out.take(), "40: MALLOC ERROR\n");
  kernel().etat_console = 1;
  err_malloc("alloue_bloc()", 40);
  EXPECT_EQ(out.take(), "alloue_bloc(): 40:  MALLOC ERROR\n");
}

TEST_F(Report, KeywordNames) {
  voir_mot(-230);
  EXPECT_EQ(out.take(), "-col ");
  voir_mot(KW_zoom);
  EXPECT_EQ(out.take(), "zoom ");
  voir_mot(1600);
  EXPECT_EQ(out.take(), "1600 != [0, 1599]\n");
  voir_mot(1500);
  EXPECT_EQ(out.take(), "(name = 0) ");
  voir_etat(KW_edit, 1);
  EXPECT_EQ(out.take(), "edit  ON\n");
  voir_etat(KW_edit, 0);
  EXPECT_EQ(out.take(), "edit  OFF\n");
}

TEST_F(Report, TraceLinesAppearOnlyWithTheTraceOn) {
  TRACE_FAIL("EVALUER_1()");
  EXPECT_EQ(out.take(), "");
  kernel().trace_err = 1;
  TRACE_FAIL("EVALUER_1()");
  TRACE_FAIL("interp()");
  EXPECT_EQ(out.take(), "EVALUER_1()\ninterp()\n");
}

TEST_F(Report, BadObjectReference) {
  word v[6] = {6, T_FLOAT, 2, 1, fw(3.0f), fw(4.0f)};
  err_objet(KW_vol, v, 1, 0, nullptr);
  EXPECT_EQ(out.take(), "vol 4.000000  NOT FOUND\n");
  err_objet(KW_vol, v, 2, 0, nullptr);
  EXPECT_EQ(out.take(), "vol 2 ILLEGAL\n");
  err_objet(KW_vol, v, -1, 7, "f");
  EXPECT_EQ(out.take(), "vol 3.000000 4.000000 7: f:  NOT FOUND\n");
  word names[8] = {8, T_CHAR, 2, 1, 0, 0, 0, 0};
  strcpy(reinterpret_cast<char*>(names + 4), "a bc");
  err_objet(KW_light, names, 1, 0, nullptr);
  EXPECT_EQ(out.take(), "light bc NOT FOUND\n");
}

TEST_F(Report, PrintValueShapes) {
  word flat[7] = {7, T_FLOAT, 3, 1, fw(1.0f), fw(2.5f), fw(-3.0f)};
  EXPECT_EQ(print_value(flat), 0);
  EXPECT_EQ(out.take(), "1.000000 2.500000 -3.000000 \n");
  word points[8] = {8, T_FLOAT, 2, 2, fw(1.0f), fw(2.0f), fw(3.0f), fw(4.0f)};
  print_value(points);
  EXPECT_EQ(out.take(), "1: 1.000000 2.000000 \n2: 3.000000 4.000000 \n");
  kernel().pri = 2;
  word longer[8] = {8, T_FLOAT, 4, 1, fw(1.0f), fw(2.0f), fw(3.0f), fw(4.0f)};
  print_value(longer);
  std::string got = out.take();
  EXPECT_NE(got.find("TRONCADET DATAS"), std::string::npos);
  EXPECT_EQ(got.substr(got.find("1.000000")), "1.000000 2.000000 \n");
}
