// The learning loop and the queries: lists made equal, structure built on
// first use, the edges of resuming and converging, the inverse query and
// the inverse network.
#include "network_fixture.h"

namespace {

TEST_F(NetworkTest, TheCommandCutsFlatListsIntoPatterns) {
  ok("network(1) fac(2,3,1) motif(0.1,0.2, 0.3,0.4) law(0.5,0.6)");
  Reseau r = trouve_reseau(net(1));
  ASSERT_NE(r.motif, nullptr);
  EXPECT_EQ(hybride_parts(r.motif), 2);
  EXPECT_EQ(values(sous_bloc(r.motif, 1)), (std::vector<float>{0.3f, 0.4f}));
  EXPECT_EQ(dimp(sous_bloc(r.motif, 1)), 2);
  EXPECT_EQ(values(sous_bloc(r.law, 1)), (std::vector<float>{0.6f}));
  EXPECT_EQ(r.N, 6);
  // Layers numbered in order, and their reverse.
  EXPECT_EQ(values(sous_bloc(r.fac, 1)), (std::vector<float>{3, 4, 5}));
  EXPECT_EQ(tag(sous_bloc(r.fac, 1)), T_LONG);
  EXPECT_EQ(values(sous_bloc(r.inv_fac, 0)), (std::vector<float>{6}));
  EXPECT_EQ(network_kind(net(1)), KW_fac);
}

TEST_F(NetworkTest, MismatchedSizesAreReported) {
  EXPECT_EQ(fails("network(1) fac(2,3,1) motif(0.1,0.2,0.3) law(1)"), "motif (2 * 2) 3 != 4\n");
  EXPECT_EQ(trouve_reseau(net(1)).motif, nullptr);  // nothing was stored
  EXPECT_EQ(fails("network(1) fac(2,3,2) law(1,2,3)"), "law (2 * 2) 3 != 4\n");
  ok("network(1) fac(2,3,1) motif(0.1,0.2) law(1)");
  // A law list edited to another size than the output layer.
  std::vector<word> l = liste_vide();
  const float two[2] = {1, 0};
  liste_ajoute(l, valeur_floats(two, 2, 2).data());
  set_propr_1(net(1), KW_law, l.data());
  Outcome o = run("generate network(1) alea(1)");
  EXPECT_LT(o.status, 0);
  EXPECT_EQ(o.out, "fac law (1) 1 != 2 * 1\n");
}

TEST_F(NetworkTest, TooManyNeuronsAreRefusedAndTheWeightsKept) {
  reseau_221();
  EXPECT_EQ(fails("network(1) fac(5000, 5000)"), "fac 10000 > 8192\n");
  EXPECT_EQ(fails("network(1) dim(100000, 1, 1)"), "fac 150001 > 8192\n");
  Reseau r = trouve_reseau(net(1));
  EXPECT_EQ(r.N, 5);
  ASSERT_NE(r.matrix, nullptr);
  EXPECT_EQ(w(r, 5, 3), 1.0f);
}

TEST_F(NetworkTest, ShorterListsRepeatTheirLastElement) {
  ok("network(1) fac(1,1,1) motif(0.1, 0.2, 0.3) law(0.9)");
  ASSERT_EQ(egalise_listes(net(1)), 0);
  Reseau r = trouve_reseau(net(1));
  ASSERT_EQ(hybride_parts(r.law), 3);
  EXPECT_EQ(values(sous_bloc(r.law, 2)), (std::vector<float>{0.9f}));
  ok("network(2) fac(1,1,1) motif(0.1) law(0.7, 0.8)");
  ASSERT_EQ(egalise_listes(net(2)), 0);
  EXPECT_EQ(values(sous_bloc(trouve_reseau(net(2)).motif, 1)), (std::vector<float>{0.1f}));
}

TEST_F(NetworkTest, ANetworkWithoutLayersGetsOneHiddenLayerOfNPlusM) {
  ok("network(1) motif(0.1,0.2,0.3) law(0.4,0.5)");
  ok("generate network(1) validate(1) alea(3)");
  Reseau r = trouve_reseau(net(1));
  ASSERT_EQ(hybride_parts(r.fac), 3);
  EXPECT_EQ(elements(sous_bloc(r.fac, 1)), 5);
  EXPECT_EQ(r.N, 10);
  // dim: hidden layers of (in + out) / (h + 1).
  ok("network(2) dim(4,2,2)");
  Reseau d = trouve_reseau(net(2));
  ASSERT_EQ(hybride_parts(d.fac), 4);
  EXPECT_EQ(elements(sous_bloc(d.fac, 1)), 2);
  ok("network(3) dim");
  EXPECT_EQ(trouve_reseau(net(3)).N, 18);
}

TEST_F(NetworkTest, MissingListsAreReportedAndGiveNil) {
  ok("network(1) fac(1,1,1)");
  Outcome o = run("generate network(1)");
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.out, "network 1 motif MISSING\n");
  ok("network(2) motif(1)");
  EXPECT_TRUE(nil("generate network(2)"));
}

TEST_F(NetworkTest, OnePassUsesTheStartCoefficient) {
  reseau_221();
  const std::vector<float> res = floats("generate network(1) validate(1) coe(1, 0.3)");
  ASSERT_EQ(res.size(), 3u);
  EXPECT_EQ(res[0], 1.0f);
  EXPECT_EQ(res[2], 0.0f);
  // The step with a coefficient of 1 (not 0.3): the hand-made value.
  EXPECT_NEAR(w(trouve_reseau(net(1)), 5, 3), 1.0623876f, 1e-6f);
}

TEST_F(NetworkTest, ConvergenceStopsAtItsPass) {
  reseau_221();
  // With a tolerance of 0.5 the first pass finds nothing to learn.
  const std::vector<float> res = floats("generate network(1) validate(50) error(0.5)");
  ASSERT_EQ(res.size(), 3u);
  EXPECT_EQ(res[0], 1.0f);
  EXPECT_NEAR(res[1], 0.9f - 0.451964f, 1e-5f);
  EXPECT_EQ(res[2], 1.0f);
  EXPECT_EQ(w(trouve_reseau(net(1)), 5, 3), 1.0f);
}

TEST_F(NetworkTest, LearningReachesItsPatterns) {
  // XOR coded away from 0: there is no bias neuron.
  ok("network(1) fac(2,4,1) motif(0.1,0.1, 0.1,0.9, 0.9,0.1, 0.9,0.9) law(0.1,0.9,0.9,0.1)");
  const std::vector<float> res = floats("generate network(1) validate(5000) coe(4,1) alea(1)");
  ASSERT_EQ(res.size(), 3u);
  EXPECT_LT(res[0], 5000.0f);
  EXPECT_LE(res[1], 0.1f);
  EXPECT_EQ(res[2], 1.0f);
  // The outputs are kept in `validate`, shaped as the laws.
  const word* v = get_val_1(net(1)->local, KW_validate);
  ASSERT_EQ(hybride_parts(v), 4);
  EXPECT_NEAR(getf(sous_bloc(v, 1), 0), 0.9f, 0.1f);
  EXPECT_NEAR(one("generate network(1) motif(0.9,0.1)"), 0.9f, 0.1f);
}

TEST_F(NetworkTest, AResumeBeyondThePassesLearnsNothing) {
  reseau_221();
  ok("generate network(1) validate(1)");
  Reseau r = trouve_reseau(net(1));
  const std::vector<float> before = values(r.matrix);
  const std::vector<float> res = floats("generate network(1) validate(5, 7)");
  ASSERT_EQ(res.size(), 3u);
  EXPECT_EQ(res[0], 0.0f);
  EXPECT_GT(res[1], 0.1f);  // the check still runs
  EXPECT_EQ(res[2], 1.0f);
  EXPECT_EQ(values(trouve_reseau(net(1)).matrix), before);
}

TEST_F(NetworkTest, AResumeRunsOnePassAtItsNumber) {
  reseau_221();
  ok("generate network(1) validate(1)");
  const std::vector<float> res = floats("generate network(1) validate(5, 3)");
  ASSERT_EQ(res.size(), 3u);
  EXPECT_EQ(res[0], 3.0f);
  EXPECT_EQ(res[2], 0.0f);
  // A resume needs the neurons of an earlier run.
  rem_propr_1(net(1), KW_neuron);
  Outcome o = run("generate network(1) validate(5, 3)");
  EXPECT_LT(o.status, 0);
  EXPECT_EQ(o.out, "network 1 neuron MISSING\n");
}

TEST_F(NetworkTest, AFailureKeepsTheWeights) {
  reseau_221();
  Reseau r = trouve_reseau(net(1));
  // A second pattern too short for the first layer.
  std::vector<word> m = liste_vide();
  const float a[2] = {1, 0.5f}, b = 1;
  liste_ajoute(m, valeur_floats(a, 2, 2).data());
  liste_ajoute(m, valeur_floats(&b, 1).data());
  set_propr_1(net(1), KW_motif, m.data());
  set_w(r, 5, 3, 0.75f);
  Outcome o = run("generate network(1) validate(3)");
  EXPECT_LT(o.status, 0);
  EXPECT_EQ(o.out, "fac motif (2) 2 != 1 * 1\n");
  EXPECT_EQ(w(trouve_reseau(net(1)), 5, 3), 0.75f);
}

TEST_F(NetworkTest, EditMarksOutputsBeyondTheTolerance) {
  ok("network(1) fac(1,1,2) motif(1) law(0.5, 0.9)");
  Reseau r = complet(net(1));
  set_w(r, 2, 1, 0.0f);  // hidden output 0.5, the outputs 0.5 each
  Outcome o = run("generate network(1) validate validate edit");
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.out,
            "motif 1\n   0.5000   0.5000\n   0.5000   0.9000\n          ********\n"
            "1 ********, max 0.400000\n");
}

TEST_F(NetworkTest, InverseQueryKeepsTheFirstOfEqualDistances) {
  ok("network(1) fac(1,1,1) motif(0.1, 0.2) law(0.5, 0.2)");
  ok("network(2) fac(1,1,1) motif(0.3) law(0.5)");
  // Law 0.5 of network 1 and of network 2 tie: network 1's motif.
  EXPECT_FLOAT_EQ(one("generate inv law(0.5) network(1,2)"), 0.1f);
  EXPECT_FLOAT_EQ(one("generate inv law(0.5) network(2,1)"), 0.3f);
  EXPECT_FLOAT_EQ(one("generate inv law(0.25) network(1,2)"), 0.2f);
  // Over the shorter length: only the first value counts.
  EXPECT_FLOAT_EQ(one("generate inv law(0.2, 99) network(1,2)"), 0.2f);
  ok("network(3) fac(1,1,2) motif(0.7) law(0.2, 5)");
  EXPECT_FLOAT_EQ(one("generate inv law(0.2) network(3,1)"), 0.7f);
  EXPECT_TRUE(nil("generate inv law(0.2) network(4)"));
}

TEST_F(NetworkTest, InverseNetworkExchangesTheFirstNetworksLists) {
  ok("network(1) fac(2,2,1) motif(0.1,0.2, 0.3,0.4) law(0.8, 0.9)");
  ok("network(2)");
  const std::vector<float> res = floats("generate inv network(1) network(2) fac(2) validate(3) alea(5)");
  EXPECT_EQ(res.size(), 3u);
  Reseau a = trouve_reseau(net(1));
  Reseau b = trouve_reseau(net(2));
  // Network 1's own lists now have their codes exchanged.
  EXPECT_EQ(values(sous_bloc(a.motif, 0)), (std::vector<float>{0.8f}));
  EXPECT_EQ(values(sous_bloc(a.law, 1)), (std::vector<float>{0.3f, 0.4f}));
  EXPECT_EQ(values(sous_bloc(b.motif, 1)), (std::vector<float>{0.9f}));
  EXPECT_EQ(values(sous_bloc(b.law, 0)), (std::vector<float>{0.1f, 0.2f}));
  // fac(2): two hidden layers of (1 + 2) / 2 neurons.
  ASSERT_EQ(hybride_parts(b.fac), 4);
  EXPECT_EQ(elements(sous_bloc(b.fac, 1)), 1);
  EXPECT_EQ(elements(sous_bloc(b.fac, 3)), 2);
}

TEST_F(NetworkTest, AnInverseOfItselfIsRefused) {
  reseau_221();
  EXPECT_EQ(fails("generate inv network(1) network(1)"), "network 1 ILLEGAL\n");
  Reseau r = trouve_reseau(net(1));
  EXPECT_EQ(values(sous_bloc(r.motif, 0)), (std::vector<float>{1, 0.5f}));
  EXPECT_EQ(w(r, 5, 3), 1.0f);
}

TEST_F(NetworkTest, SpeedIsTheChangeSinceTheLastLook) {
  ok("network(1) fac(1,1,1) motif(0.1, 0.2) law(0.5, 0.2)");
  expect_floats(floats("speed network(1) law"), {0, 0}, "first look");
  ok("network(1) law(0.7, 0.1)");
  expect_floats(floats("speed network(1) law"), {0.2f, -0.1f}, "second look");
}

}  // namespace
