// The two option parsers.
#include <gtest/gtest.h>

#include "kernel/options.h"
#include "kernel/screen.h"
#include "support/capture.h"

class Options : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    kernel_reset();
    kernel().etat_console = 1;
    screen() = ScreenState{};
  }
  void TearDown() override {
    kernel_reset();
    screen() = ScreenState{};
    minimal_kernel();
  }
  int buf = 0, write_id = 1;
  std::string keys;
  const char* a(const char* text) { return option_a(text, &buf, &write_id, &keys); }
  Capture out;
};

TEST_F(Options, InterpreterKeysAreComparedExactly) {
  a("eva=5000");
  a("evaa=7");
  a("eva");
  EXPECT_EQ(kernel().Dim_ev, 5000);
  a("buf=123");
  EXPECT_EQ(buf, 123);
  a("ID");
  EXPECT_EQ(write_id, 0);
  a("IDS");
  a("deb");
  EXPECT_EQ(kernel().deb, 1);
  a("tim=20");
  EXPECT_EQ(kernel().tim, "20");
  EXPECT_EQ(keys, "20");
}

TEST_F(Options, MalSetsTheScratchSizeAndNeverTheRegistry) {
  a("mal=");
  EXPECT_EQ(kernel().Dim_mal, 0);
  a("mal=777");
  EXPECT_EQ(kernel().Dim_mal, 777);
}

TEST_F(Options, ExecutableFolderKeepsItsTextAfterABang) {
  a("exe=!/opt/x");
  EXPECT_EQ(kernel().exe, "/opt/x");
  a("exe=bin/");
  EXPECT_EQ(kernel().exe, "bin/");
}

TEST_F(Options, LaunchTextSetsTheLaunchState) {
  EXPECT_EQ(kernel().lan_state, -1);
  a("lan=go()");
  EXPECT_EQ(kernel().lan, "go()");
  EXPECT_EQ(kernel().lan_state, 1);
}

TEST_F(Options, AWholeTextIsParsedWordByWordAcrossLines) {
  options_a_text("mac=SGI\n  esc=96\tpri=80\n\nvoc1=Voc_fr\n");
  EXPECT_EQ(kernel().mac, "SGI");
  EXPECT_EQ(kernel().esc, 96);
  EXPECT_EQ(kernel().pri, 80);
  EXPECT_EQ(kernel().voc1, "Voc_fr");
}

TEST_F(Options, NonNumbersAndHugeNumbersDoNotBreakTheParser) {
  a("eva=abc");
  EXPECT_EQ(kernel().Dim_ev, 0);
  a("eva=99999999999999999999");
  EXPECT_EQ(kernel().Dim_ev, 2000000000);
  std::string text = std::string(500, 'k') + "=1 next";
  const char* end = a(text.c_str());
  EXPECT_STREQ(end, " next");
}

TEST_F(Options, GraphicSizesAndFractions) {
  int lift = 0;
  option_b("x=640", &lift);
  option_b("y=0.5", &lift);
  EXPECT_EQ(screen().width, 640);
  EXPECT_EQ(screen().height, screen().max_height / 2);
  EXPECT_FLOAT_EQ(screen().frac_y, 0.5f);
  option_b("win=800,600", &lift);
  EXPECT_EQ(screen().width, 800);
  EXPECT_EQ(screen().height, 600);
  option_b("hei=300", &lift);
  EXPECT_EQ(screen().hei_w, 300);
  EXPECT_EQ(screen().hei_h, 300);
  option_b("cam=5,40", &lift);
  EXPECT_EQ(screen().origin_y, 5);
  EXPECT_EQ(screen().image_height, -40);
  option_b("dy=10", &lift);
  option_b("dy=5", &lift);
  EXPECT_EQ(lift, 15);
  option_b("gra=0", &lift);
  EXPECT_EQ(screen().gra, 0);
  option_b("gra=2", &lift);
  EXPECT_EQ(screen().gra, 1);
}

TEST_F(Options, WindowSizeFromAFileAndItsFailure) {
  int lift = 0;
  option_b("win=/nonexistent/dims", &lift);
  EXPECT_EQ(out.take(), "creer le fichier /nonexistent/dims contenant les dimensions de l'ecran\n");
  EXPECT_EQ(screen().width, 768);
}

TEST_F(Options, DepthBufferModesArePrinted) {
  int lift = 0;
  option_b("zbu=0", &lift);
  option_b("zbu=2", &lift);
  option_b("zbu=7", &lift);
  EXPECT_EQ(out.take(), "zbuffer off\nzbuffer 32 bits\nzbuffer = 7 shorts\n");
}

TEST_F(Options, WordsOfALaunchText) {
  auto w = split_words("  f(1)  g \t h\n");
  ASSERT_EQ(w.size(), 3u);
  EXPECT_EQ(w[0], "f(1)");
  EXPECT_EQ(w[2], "h");
}
