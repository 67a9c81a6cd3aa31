// The analysis of the live window on scripted bytes: the window's entry,
// its processing, the ring of averages, the envelope, the spectrum, the
// difference, the guard of the analysis step and the first crossing.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "platform/audio.h"
#include "sound/live_analysis.h"
#include "sound/live_capture.h"
#include "sound/live_state.h"
#include "support/text_runner.h"

namespace {

std::unique_ptr<LiveAudio> etat(int fenetre) {
  auto a = std::make_unique<LiveAudio>();
  a->Fenetre = fenetre;
  return a;
}

void fenetre(LiveAudio& a, std::initializer_list<float> v) {
  int i = 0;
  for (float x : v) a.Echantillons[i++] = x;
}

std::vector<float> signal(const LiveAudio& a) { return {a.Signal, a.Signal + a.Fenetre}; }

// Three windows of two samples, each processed.
void trois_fenetres(LiveAudio& a, const float (&f)[3][2]) {
  for (const auto& w : f) {
    fenetre(a, {w[0], w[1]});
    traitement_fenetre(a);
  }
}

TEST(LiveWindow, NewBytesComeInFrontAndShiftTheOldOnes) {
  auto a = etat(8);
  const uint8_t b[12] = {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21};
  entre_octets(*a, b, 8, nullptr, 0);
  EXPECT_EQ(std::vector<float>(a->Echantillons, a->Echantillons + 8),
            (std::vector<float>{10, 11, 12, 13, 14, 15, 16, 17}));
  // Three bytes, fewer than the window: the old ones move on, the same
  // samples are seen again.
  const uint8_t c[3] = {1, 2, 3};
  entre_octets(*a, c, 2, c + 2, 1);
  EXPECT_EQ(std::vector<float>(a->Echantillons, a->Echantillons + 8), (std::vector<float>{1, 2, 3, 10, 11, 12, 13, 14}));
  // More than the window: its first bytes, over both stretches.
  entre_octets(*a, b, 5, b + 5, 7);
  EXPECT_EQ(std::vector<float>(a->Echantillons, a->Echantillons + 8),
            (std::vector<float>{10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST(LiveWindow, ProcessingTakesOffsetGainGateAndLimit) {
  auto a = etat(4);
  a->Offset = 100;
  a->Gain = 2;
  a->Gate = 10;
  a->Limit = 150;
  fenetre(*a, {104, 90, 160, 255});  // |(x - 100) * 2| = 8, 20, 120, 310
  traitement_fenetre(*a);
  EXPECT_EQ(signal(*a), (std::vector<float>{0, 20, 120, 150}));
  // One window a ring pass: the levels are this window's.
  EXPECT_FLOAT_EQ(a->Niveau_moyen, (0 + 20 + 120 + 150) / 4.0f);
  EXPECT_FLOAT_EQ(a->Niveau_min, 0);
  EXPECT_FLOAT_EQ(a->Niveau_max, 150);
  EXPECT_FLOAT_EQ(a->Maxima[0], 150);
}

TEST(LiveWindow, TheRingGivesTheLargestMeanTheSmallestMinimumTheLargestMaximum) {
  auto a = etat(2);
  a->Nb_moyennes = 3;
  const float fenetres[3][2] = {{10, 30}, {50, 52}, {5, 7}};
  for (int w = 0; w < 3; w++) {
    fenetre(*a, {fenetres[w][0], fenetres[w][1]});
    traitement_fenetre(*a);
    if (w < 2) {
      EXPECT_FLOAT_EQ(a->Niveau_moyen, 0) << "no levels before the ring wraps";
    }
  }
  EXPECT_FLOAT_EQ(a->Niveau_moyen, 51);
  EXPECT_FLOAT_EQ(a->Niveau_min, 5);
  EXPECT_FLOAT_EQ(a->Niveau_max, 52);
  // The history of maxima, newest first.
  EXPECT_FLOAT_EQ(a->Maxima[0], 7);
  EXPECT_FLOAT_EQ(a->Maxima[1], 52);
  EXPECT_FLOAT_EQ(a->Maxima[2], 30);
  // The ring's mean is gated and limited again, and the previous kept.
  a->Limit = 40;
  trois_fenetres(*a, fenetres);
  EXPECT_FLOAT_EQ(a->Moyen_precedent, 51);
  EXPECT_FLOAT_EQ(a->Niveau_moyen, 40);
  // Normalised, the three levels are over 255.
  a->Limit = 255;
  a->Normalise = 1;
  trois_fenetres(*a, fenetres);
  EXPECT_FLOAT_EQ(a->Niveau_moyen, 51 / 255.0f);
  EXPECT_FLOAT_EQ(a->Niveau_min, 5 / 255.0f);
  EXPECT_FLOAT_EQ(a->Niveau_max, 52 / 255.0f);
}

TEST(LiveWindow, TheLaw) {
  auto a = etat(4);
  a->Law = 1;
  a->Law_seuil = 10;
  a->Law_scale = 2;
  a->Law_exposant = 1;
  fenetre(*a, {5, 10, 11, 30});
  traitement_fenetre(*a);
  EXPECT_EQ(signal(*a), (std::vector<float>{0, 0, 2, 40})) << "linear above the threshold";
  // A power of the excess; an excess of 0 or less has no logarithm: 0,
  // and a result under the threshold is 0.
  a->Law_exposant = 2;
  a->Law_scale = 1;
  fenetre(*a, {5, 10, 12, 20});
  traitement_fenetre(*a);
  expect_floats(signal(*a), {0, 0, 0, 100}, "the power 2 of the excess");
  // In that branch the gate and the limit apply after the sum, to the law.
  a->Gate = 50;
  a->Limit = 60;
  fenetre(*a, {20, 200, 17, 10});  // law: 100, 36100, 49, 0
  traitement_fenetre(*a);
  EXPECT_EQ(signal(*a), (std::vector<float>{60, 60, 0, 0}));
  EXPECT_FLOAT_EQ(a->Niveau_max, 200) << "the sum saw 200";
  EXPECT_FLOAT_EQ(a->Niveau_moyen, 60) << "the ring pass limits the mean of 61.75";
}

TEST(LiveWindow, AutoGainFollowsTheRangeOfThePeriod) {
  auto a = etat(2);
  a->Auto_periode = 2;
  a->Auto_cible = 0.25f;
  fenetre(*a, {0, 127});
  traitement_fenetre(*a);  // range 127
  EXPECT_FLOAT_EQ(a->Gain, 1) << "not before the period's end";
  traitement_fenetre(*a);  // 127 over the period of 2: |127 / 254 - 0.25|
  EXPECT_FLOAT_EQ(a->Gain, 0.25f);
  EXPECT_EQ(signal(*a), (std::vector<float>{0, 31.75f}));
}

TEST(LiveEnvelope, BlockPeaksAndTheirChange) {
  Enveloppe e{};
  e.n = 2;
  const float x1[6] = {1, 5, 3, 2, 9, 300};
  passe_enveloppe(x1, 6, 2, 100, e);  // gate 2, limit 100
  EXPECT_EQ(e.blocs, 3);
  EXPECT_EQ(std::vector<float>(e.Pic, e.Pic + 3), (std::vector<float>{0, 3, 100}));
  EXPECT_EQ(std::vector<float>(e.Diff, e.Diff + 3), (std::vector<float>{5, 3, 100}));
  const float x2[6] = {7, 0, 4, 4, 0, 0};
  passe_enveloppe(x2, 6, 2, 100, e);
  EXPECT_EQ(std::vector<float>(e.Diff, e.Diff + 3), (std::vector<float>{7, 1, -100})) << "against the last peaks";
  // The bars times the scale.
  e.scale = 2;
  passe_enveloppe(x1, 6, 2, 100, e);
  EXPECT_EQ(std::vector<float>(e.Pic, e.Pic + 3), (std::vector<float>{0, 0, 200}));
  // Under 2 a block: a copy, no change, the first at 0.
  e.n = 1;
  passe_enveloppe(x1, 6, 2, 100, e);
  EXPECT_EQ(std::vector<float>(e.Pic, e.Pic + 6), (std::vector<float>{0, 5, 3, 2, 9, 300}));
  EXPECT_EQ(std::vector<float>(e.Diff, e.Diff + 6), std::vector<float>(6, 0.0f));
}

TEST(LiveStages, SpectrumDerivativeAndTheInverseFlag) {
  minimal_kernel();
  auto a = etat(8);
  a->Spectre_on = 1;
  for (int i = 0; i < 8; i++) a->Signal[i] = 2;
  ASSERT_EQ(etapes_analyse(*a), 0);
  EXPECT_FLOAT_EQ(a->Spectre_re[0], 16);
  for (int k = 1; k < 8; k++) EXPECT_FLOAT_EQ(a->Spectre_re[k], 0);
  EXPECT_EQ(std::vector<float>(a->Derivee, a->Derivee + 8), std::vector<float>(8, 2.0f));
  for (int i = 0; i < 8; i++) a->Signal[i] = static_cast<float>(i);
  ASSERT_EQ(etapes_analyse(*a), 0);
  EXPECT_EQ(std::vector<float>(a->Derivee, a->Derivee + 8), (std::vector<float>{-2, -1, 0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(std::vector<float>(a->Precedent, a->Precedent + 8), signal(*a));
  // The spectrum's bars: negative parts and those under the gate are 0.
  EXPECT_FLOAT_EQ(a->Spectre_re[0], 28);
  for (int k = 1; k < 8; k++) EXPECT_GE(a->Spectre_re[k], 0);
  // Normalise runs the transform inverse, divided by n.
  a->Normalise = 1;
  for (int i = 0; i < 8; i++) a->Signal[i] = 2;
  ASSERT_EQ(etapes_analyse(*a), 0);
  EXPECT_FLOAT_EQ(a->Spectre_re[0], 2);
  // With the envelope on too, the spectra have envelopes of their own.
  a->Normalise = 0;
  a->env.on = 1;
  a->env.n = 4;
  a->env_re.n = a->env_im.n = 2;
  ASSERT_EQ(etapes_analyse(*a), 0);
  EXPECT_EQ(a->env.blocs, 2);
  EXPECT_EQ(a->env_re.blocs, 4);
  EXPECT_FLOAT_EQ(a->env_re.Diff[0], 16);
}

TEST(LiveStages, FirstCrossingIsTheFirstAndNeverRearms) {
  auto a = etat(8);
  const float s[8] = {0, 3, 9, 1, 0, 12, 0, 20};
  for (int i = 0; i < 8; i++) a->Signal[i] = s[i];
  EXPECT_FLOAT_EQ(premier_passage(*a, 5, 1), 2);
  EXPECT_FLOAT_EQ(premier_passage(*a, 10, 1), 5) << "the fall to 0 after it changes nothing";
  EXPECT_FLOAT_EQ(premier_passage(*a, 50, 0), 0) << "none";
  a->Signal[3] = -30;
  EXPECT_FLOAT_EQ(premier_passage(*a, 10, 1), 3) << "by magnitude";
}

// The poll through a back end of given bytes and a clock the test moves.
double temps = 0;
double horloge() { return temps; }

class LivePoll : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    LiveAudio& a = live_audio();
    FreeDirectSound();
    a = *std::make_unique<LiveAudio>();
    temps = 0;
    std::vector<uint8_t> b(4096);
    for (size_t i = 0; i < b.size(); i++) b[i] = static_cast<uint8_t>(i % 4 < 2 ? 200 : 40);
    a.capture = audio_open_bytes(b, horloge);
    a.on = 1;
    a.Fenetre = 16;
    a.Analyse_faite = 0;
    a.Nb_moyennes = 1;
  }
  void TearDown() override { FreeDirectSound(); }
};

TEST_F(LivePoll, TheUnforcedAnalysisPollsOnceInTheRunTheForcedEachTime) {
  LiveAudio& a = live_audio();
  temps = 1.0 / 16;
  ASSERT_EQ(analyse_audio(false), 0);
  EXPECT_FLOAT_EQ(a.Niveau_moyen, 120) << "bytes 200 and 40 in equal numbers";
  EXPECT_EQ(a.Notification, 5512);
  temps = 2.0 / 16;
  ASSERT_EQ(analyse_audio(false), 0);
  EXPECT_EQ(audio_pending(a.capture, nullptr), 5512) << "the second unforced call took nothing";
  ASSERT_EQ(analyse_audio(true), 0);
  EXPECT_EQ(audio_pending(a.capture, nullptr), 0);
  // Nothing new: the window keeps the same samples.
  ASSERT_EQ(HandleNotification(), 0);
  EXPECT_EQ(a.Notification, MIN_NOTIFICATION);
  EXPECT_FLOAT_EQ(a.Niveau_max, 200);
  EXPECT_FLOAT_EQ(a.Niveau_min, 40);
}

TEST_F(LivePoll, LevelsNeedTheCapture) {
  float v[3];
  temps = 0.5;
  ASSERT_EQ(niveaux_audio(v), 0);
  EXPECT_FLOAT_EQ(v[0], 120);
  EXPECT_FLOAT_EQ(v[1], 40);
  EXPECT_FLOAT_EQ(v[2], 200);
  FreeDirectSound();
  EXPECT_EQ(niveaux_audio(v), -1);
  EXPECT_EQ(HandleNotification(), -1);
}

TEST(LiveCapture, WindowFromDim) {
  EXPECT_EQ(fenetre_de_dim(0), 1024);
  EXPECT_EQ(fenetre_de_dim(-3), 1024);
  EXPECT_EQ(fenetre_de_dim(1), 2);
  EXPECT_EQ(fenetre_de_dim(10), 1024);
  EXPECT_EQ(fenetre_de_dim(14), 16384);
  EXPECT_EQ(fenetre_de_dim(15), 16384);
}

}  // namespace
