// Keyword and message tables: the kom and mes readers, comment removal,
// lookups, value access and the keyword switches.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kernel/kernel.h"
#include "kernel/message_names.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"

namespace {

template <class F>
std::string captured(F f) {
  std::string out;
  out_capture(&out);
  f();
  out_capture(nullptr);
  return out;
}

std::vector<float> values(int code) {
  const VocabState& v = vocab();
  return std::vector<float>(v.defaults[code], v.defaults[code] + v.dim[code]);
}

// Minimal environment with bells kept, so messages compare whole.
class VocabEnv : public ::testing::Test {
 protected:
  void SetUp() override {
    kernel_reset();
    vocab_reset();
    captured([] { env_minimal(); });
    kernel().etat_console = 1;
    Yes(KW_ring) = 1;
  }
  void TearDown() override { kernel().etat_console = 0; }
  std::string mes(int voc, int n) { return vocab().mes[voc][n]; }
};

// Every name the code gives a message is the message of that number in
// the shipped tables.
TEST_F(VocabEnv, NamedMessagesAreTheirTexts) {
  struct Row {
    int voc, num;
    const char* name;
    const char* start;
  };
#define ROW_0(name, number, text) {0, number, #name, text},
#define ROW_1(name, number, text) {1, number, #name, text},
  const Row rows[] = {ORVELA_MESSAGES_0(ROW_0) ORVELA_MESSAGES_1(ROW_1)};
#undef ROW_0
#undef ROW_1
  for (const Row& r : rows) {
    ASSERT_LT(r.num, vocab().nb_mes[r.voc]) << r.name;
    const std::string text = mes(r.voc, r.num);  // shown after a blank
    EXPECT_EQ(text.substr(text.find_first_not_of(' ')).rfind(r.start, 0), 0u) << r.name << " is \"" << text << "\"";
  }
}

class VocabTable : public ::testing::Test {
 protected:
  void SetUp() override {
    kernel_reset();
    vocab_reset();
  }
};

const char* const SMALL_KOM =
    "|0: alpha\n"
    "0,-1,0,1\n"
    ".\n"
    "|7: beta bita\n"
    " 2, 1,0,0\n"
    "1.5,-2\n"
    "\n"
    "|3: gamma\n"
    "0,0,0,1\n"
    "[3]=1.0\n";

TEST_F(VocabTable, KomRecordsAreNumberedByPosition) {
  ASSERT_EQ(lire_kom(0, SMALL_KOM), 3);
  const VocabState& v = vocab();
  EXPECT_EQ(v.nb_kw[0], 3);
  EXPECT_STREQ(v.name[0], "alpha");
  EXPECT_STREQ(v.name[1], "beta bita");
  EXPECT_STREQ(v.name[2], "gamma");
  EXPECT_EQ(v.emp[1], 2);
  EXPECT_EQ(v.sem[0], -1);
  EXPECT_EQ(v.sem_ini[1], 1);
  EXPECT_EQ(v.type[1], 0);
  EXPECT_EQ(values(1), (std::vector<float>{1.5f, -2.0f}));
  EXPECT_EQ(values(2), (std::vector<float>{1.0f, 1.0f, 1.0f}));
  EXPECT_EQ(v.dim[0], 0);

  // A record added in the middle renumbers all that follow.
  std::string longer = std::string("|0: first\n0,0,0,1\n.\n") + SMALL_KOM;
  ASSERT_EQ(lire_kom(0, longer.c_str()), 4);
  int voc, code;
  ASSERT_EQ(cherche_mot("gamma", &voc, &code), 0);
  EXPECT_EQ(code, 3);
}

TEST_F(VocabTable, KomDescriptorFields) {
  lire_kom(0,
           "|0: follow\nv1,0,0,1\n.\n"
           "|1: coe\n0,-10,0,1\n1.0,1.0,1.0\n"
           "|2: link\n0,1,7,1\n.\n"
           "|3: bare\n|4: next\n3,-1,0,2\n\n");
  const VocabState& v = vocab();
  EXPECT_EQ(v.emp[0], 0);
  EXPECT_EQ(v.sem[0], 0);
  EXPECT_EQ(v.type[0], 1);
  EXPECT_EQ(v.sem[1], -10);
  EXPECT_EQ(v.dim[1], 3);
  EXPECT_EQ(v.dim[2], 0) << "the third field is replaced by the count";
  EXPECT_EQ(v.dim[3], 0);
  EXPECT_STREQ(v.name[4], "next");
  EXPECT_EQ(v.emp[4], 3);
  EXPECT_EQ(v.type[4], 2);
}

TEST_F(VocabTable, KomDefaultLineForms) {
  lire_kom(0,
           "|0: zeros\n0,0,0,1\n[4]\n"
           "|1: copies\n0,0,0,1\n1,[2]=7.5,3\n"
           "|2: tabs\n0,0,0,1\n1\t2,\t3\n"
           "|3: continued\n0,0,0,1\n1,2,\\ rest ignored\n3,4\n"
           "|4: none\n0,0,0,1\n.\n"
           "|5: crlf\r\n0,0,0,1\r\n8\r\n");
  EXPECT_EQ(values(0), (std::vector<float>(4, 0.0f)));
  EXPECT_EQ(values(1), (std::vector<float>{1, 7.5f, 7.5f, 3}));
  EXPECT_EQ(values(2), (std::vector<float>{1, 2, 3}));
  EXPECT_EQ(values(3), (std::vector<float>{1, 2, 3, 4}));
  EXPECT_EQ(vocab().dim[4], 0);
  EXPECT_STREQ(vocab().name[5], "crlf");
  EXPECT_EQ(values(5), (std::vector<float>{8}));
}

TEST_F(VocabTable, CurrentValuesAreACopyThatIniComRestores) {
  lire_kom(0, SMALL_KOM);
  int n = 0;
  float* cur = val_com(0, 1, &n);
  ASSERT_NE(cur, nullptr);
  ASSERT_EQ(n, 2);
  cur[0] = 99;
  EXPECT_EQ(def_com(0, 1, &n)[0], 1.5f);
  ini_com(1);
  EXPECT_EQ(cur[0], 1.5f);
  EXPECT_EQ(val_com(0, 2, &n), vocab().current[2]);
}

TEST_F(VocabTable, LookupFirstMatchWins) {
  lire_kom(0, "|0: one uno\n0,0,0,1\n.\n|1: two uno\n0,0,0,1\n.\n");
  lire_kom(1, "|0: two three\n0,0,0,1\n.\n|1: four\n0,0,0,1\n.\n");
  int voc = -1, code = -1;
  ASSERT_EQ(cherche_mot("uno", &voc, &code), 0);
  EXPECT_EQ(code, 0) << "lower code wins within a vocabulary";
  ASSERT_EQ(cherche_mot("two", &voc, &code), 0);
  EXPECT_EQ(voc, 0) << "an earlier vocabulary shadows a later one";
  EXPECT_EQ(code, 1);
  ASSERT_EQ(cherche_mot("three", &voc, &code), 0);
  EXPECT_EQ(voc, 1);
  EXPECT_EQ(code, 200);
  EXPECT_LT(cherche_mot("tw", &voc, &code), 0);
  EXPECT_LT(cherche_mot("", &voc, &code), 0);
  // The whole-line lookup ignores synonyms.
  EXPECT_LT(cherche_ligne("three", &voc, &code), 0);
  ASSERT_EQ(cherche_ligne("two three", &voc, &code), 0);
  EXPECT_EQ(code, 200);
}

TEST_F(VocabTable, KomLimitsAreReportedNotOverrun) {
  std::string many;
  for (int i = 0; i <= KW_PER_VOC; i++) many += "|0: k" + std::to_string(i) + "\n0,0,0,1\n.\n";
  std::string out = captured([&] { EXPECT_LT(lire_kom(0, many.c_str()), 0); });
  EXPECT_EQ(out, "kom 0: more than 200 keywords\n");
  EXPECT_EQ(vocab().nb_kw[0], KW_PER_VOC);

  int used = vocab().pool_used;
  out = captured([] { EXPECT_LT(lire_kom(1, "|0: big\n0,0,0,1\n[1000000000]=1\n"), 0); });
  EXPECT_EQ(out, "kom: more than 10000 default values\n");
  EXPECT_EQ(vocab().pool_used, used);
  out = captured([] { EXPECT_LT(lire_kom(NB_VOC_MAX, SMALL_KOM), 0); });
  EXPECT_EQ(out, "kom 8 != [0,7]\n");
}

TEST_F(VocabTable, MesNumberingEscapesAndContinuation) {
  const char* text =
      "header text\n"
      "|5: first\\n\n"
      "|1: two\n"
      "lines\\7\n"
      "|9: a\\tb\\ec\\\\d\\qe\n"
      "|0:no blank\r\n"
      "|3: last";
  ASSERT_EQ(lire_mes(0, text), 5);
  const std::vector<std::string>& m = vocab().mes[0];
  EXPECT_EQ(m[0], " first\n");
  EXPECT_EQ(m[1], " twolines\a");
  EXPECT_EQ(m[2], " a\tb c\\dqe");
  EXPECT_EQ(m[3], "no blank");
  EXPECT_EQ(m[4], " last");
  EXPECT_EQ(vocab().nb_voc, 1);
}

TEST_F(VocabTable, MesBarInsideAMessageLengthensTheTable) {
  ASSERT_EQ(lire_mes(0, "|0: a | b\n|1: c\n"), 3);
  EXPECT_EQ(vocab().nb_mes[0], 3);
  EXPECT_EQ(vocab().mes[0][0], " a | b");
  EXPECT_EQ(vocab().mes[0][1], " c");
  EXPECT_EQ(vocab().mes[0][2], "");
}

TEST_F(VocabEnv, CommentsAreRemovedAndCounted) {
  std::string t = "a=1 /* one */\n\n/* two\nlines */\nb=2\n\n\n";
  EXPECT_EQ(enlever_commentaires(t.data(), 0), 0);
  EXPECT_STREQ(t.c_str(), "a=1 \n\n\nb=2\n\n\n");
  t = "a=1 /* one */\n\n/* two\nlines */\nb=2\n\n\n";
  enlever_commentaires(t.data(), 1);
  EXPECT_STREQ(t.c_str(), "a=1 \nb=2\n");

  t = "x\n/* ok */y\nz /* open\nmore";
  std::string out = captured([&] { EXPECT_EQ(enlever_commentaires(t.data(), 0), -1); });
  EXPECT_EQ(out, mes(0, 4) + " 3: /* open" + mes(0, 64));
  EXPECT_STREQ(t.c_str(), "x\ny\nz ");
}

TEST_F(VocabEnv, ValComOutOfRangeIsReported) {
  int n = -1;
  float* edit = val_com(0, KW_edit, &n);
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(edit[0], 72.0f);
  EXPECT_EQ(val_com(1, KW_zoom, &n), vocab().current[KW_zoom]);
  EXPECT_EQ(val_com(1, KW_zoom - 200, &n), vocab().current[KW_zoom]);
  std::string out = captured([&] { EXPECT_EQ(val_com(5, 3, &n), nullptr); });
  EXPECT_EQ(out, "5 3: " + mes(0, 60));
  out = captured([&] { EXPECT_EQ(def_com(1, 199, &n), nullptr); });
  EXPECT_EQ(out, "1 199: " + mes(0, 60));
}

TEST_F(VocabEnv, YesNoRefuseNonSwitches) {
  std::string out = captured([] { EXPECT_EQ(set_sem(KW_abs, 1), -1); });
  EXPECT_EQ(out, mes(0, 105) + "yes abs " + mes(0, 66));
  out = captured([] { EXPECT_EQ(set_sem(KW_coe, 0), -1); });
  EXPECT_EQ(out, mes(0, 105) + "no coe " + mes(0, 66));
  EXPECT_EQ(Yes(KW_abs), -1);
  EXPECT_EQ(Yes(KW_coe), -10);

  out = captured([] {
    EXPECT_EQ(set_sem(KW_edit, 0), 0);
    EXPECT_EQ(set_sem(KW_history, 2), 0);
  });
  EXPECT_EQ(out, "");
  EXPECT_EQ(Yes(KW_edit), 0);
  EXPECT_EQ(Yes(KW_history), 2);
  out = captured([] { EXPECT_EQ(set_sem(KW_edit, -3), -1); });
  EXPECT_EQ(Yes(KW_edit), 0);
  EXPECT_EQ(set_sem(KW_edit, 1), 0);
  EXPECT_EQ(Yes(KW_edit), 1);
}

TEST_F(VocabEnv, DebugSwitchMovesTheConsoleState) {
  set_sem(KW_debug, 1);
  EXPECT_EQ(kernel().etat_console, 2);
  set_sem(KW_debug, 0);
  EXPECT_EQ(kernel().etat_console, 1);
}

TEST_F(VocabEnv, IniFamilyRestoresSwitchesAndValues) {
  set_sem(KW_edit, 0);    // initially 1
  set_sem(KW_debug, 1);   // initially 0
  vocab().current[KW_PI][0] = 3;
  ini_yes();
  EXPECT_EQ(Yes(KW_edit), 1);
  EXPECT_EQ(Yes(KW_debug), 1);
  EXPECT_EQ(vocab().current[KW_PI][0], 3.0f);

  ini_no();
  EXPECT_EQ(Yes(KW_edit), 0);
  EXPECT_EQ(Yes(KW_debug), 0);
  EXPECT_EQ(Yes(KW_abs), -1);
  EXPECT_EQ(Yes(KW_pend), -10);

  ini_ini();
  EXPECT_EQ(Yes(KW_edit), 1);
  EXPECT_EQ(Yes(KW_ring), 0);
  EXPECT_EQ(Yes(KW_debug), 0);
  EXPECT_FLOAT_EQ(vocab().current[KW_PI][0], 3.14159265f);
}

}  // namespace
