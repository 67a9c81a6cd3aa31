// The arithmetic of a network against values worked out by hand: the
// forward pass of a 2-2-1 network, one step of back-propagation, the
// minimum-magnitude rule of drawn weights.
#include "network_fixture.h"

namespace {

// Logistic of slope 1 at 0.25, 1.125 and at the output's input
// 0.5621765 - 0.7549150 = -0.1927385.
constexpr float O3 = 0.5621765f, O4 = 0.7549150f, O5 = 0.4519640f;

TEST_F(NetworkTest, ForwardPassOfA221Network) {
  Reseau r = reseau_221();
  const word* pattern = sous_bloc(r.motif, 0);
  ASSERT_EQ(propage(r, pattern), 0);
  EXPECT_NEAR(field(r, 3, NR_INPUT), 0.25f, 1e-6f);
  EXPECT_NEAR(field(r, 4, NR_INPUT), 1.125f, 1e-6f);
  EXPECT_NEAR(out(r, 3), O3, 1e-6f);
  EXPECT_NEAR(out(r, 4), O4, 1e-6f);
  EXPECT_NEAR(out(r, 5), O5, 1e-6f);
  EXPECT_FLOAT_EQ(out(r, 1), 1.0f);
  EXPECT_FLOAT_EQ(out(r, 2), 0.5f);
}

TEST_F(NetworkTest, ThresholdByTheNetworksFunc) {
  Reseau r = reseau_221();
  const float f[2] = {0.0f, 0.5f};
  ASSERT_NE(set_propr_1(net(1), KW_func, valeur_floats(f, 2).data()), nullptr);
  r = trouve_reseau(net(1));
  ASSERT_EQ(propage(r, sous_bloc(r.motif, 0)), 0);
  // 0.5 <= 0.25 is false, 0.5 <= 1.125 true; the output's input is -1.
  EXPECT_EQ(out(r, 3), 0.0f);
  EXPECT_EQ(out(r, 4), 1.0f);
  EXPECT_FLOAT_EQ(field(r, 5, NR_INPUT), -1.0f);
  EXPECT_EQ(out(r, 5), 0.0f);
}

TEST_F(NetworkTest, PerNeuronKindsWhenFuncHoldsNoNumbers) {
  reseau_221();
  Objet* o = net(1);
  rem_propr_1(o, KW_func);
  // Neuron 3 a threshold at 0.2, neuron 4 logistic of slope 2.
  std::vector<word> list = liste_vide();
  const float pairs[5][2] = {{1, 1}, {1, 1}, {0, 0.2f}, {1, 2}, {1, 1}};
  for (const auto& p : pairs) liste_ajoute(list, valeur_floats(p, 2).data());
  const int keys[] = {KW_func, KW_neuron};
  ASSERT_NE(set_propr_k(o, 2, keys, list.data()), nullptr);
  ASSERT_EQ(cree_neurones(o), 0);
  Reseau r = trouve_reseau(o);
  EXPECT_FALSE(r.func_global);
  EXPECT_EQ(field(r, 3, NR_KIND), 0.0f);
  EXPECT_FLOAT_EQ(field(r, 4, NR_PARAM), 2.0f);
  EXPECT_FLOAT_EQ(field(r, 5, NR_NUMBER), 5.0f);
  ASSERT_EQ(propage(r, sous_bloc(r.motif, 0)), 0);
  EXPECT_EQ(out(r, 3), 1.0f);
  EXPECT_NEAR(out(r, 4), 0.9046505f, 1e-6f);   // 1 / (1 + e^-2.25)
  EXPECT_NEAR(out(r, 5), 0.5238193f, 1e-6f);   // input 1 - 0.9046505
}

TEST_F(NetworkTest, AnUnknownFunctionNameIsError48) {
  reseau_221();
  std::vector<word> list = liste_vide();
  std::vector<word> name(8, 0);
  build_text(name.data(), name.data() + name.size(), "nulle");
  liste_ajoute(list, name.data());
  const int keys[] = {KW_func, KW_neuron};
  ASSERT_NE(set_propr_k(net(1), 2, keys, list.data()), nullptr);
  Capture out;
  EXPECT_LT(cree_neurones(net(1)), 0);
  EXPECT_NE(out.take().find("48 nulle"), std::string::npos);
}

TEST_F(NetworkTest, OutputLimitsClampUpToTheShorterLength) {
  reseau_221();
  std::vector<word> place(16, 0);
  const float limits[4] = {0.0f, 0.4f, 5.0f, 6.0f};  // a second pair with no output
  const std::vector<word> lim = valeur_floats(limits, 4);
  const float pattern[2] = {1.0f, 0.5f};
  ASSERT_EQ(valider_motif_reseau(net(1), valeur_floats(pattern, 2).data(), place.data(), place.data() + 16, lim.data()), 0);
  EXPECT_EQ(place[1], T_FLOAT);
  ASSERT_EQ(elements(place.data()), 1);
  EXPECT_FLOAT_EQ(getf(place.data(), 0), 0.4f);
  ASSERT_EQ(valider_motif_reseau(net(1), valeur_floats(pattern, 2).data(), place.data(), place.data() + 16, nullptr), 0);
  EXPECT_NEAR(getf(place.data(), 0), O5, 1e-6f);
}

TEST_F(NetworkTest, AShortPatternIsReported) {
  Reseau r = reseau_221();
  const float one = 1.0f;
  Capture out;
  EXPECT_LT(propage(r, valeur_floats(&one, 1).data()), 0);
  EXPECT_EQ(out.take(), "fac (2) > motif (1 * 1)\n");
}

TEST_F(NetworkTest, OneBackPropagationStep) {
  Reseau r = reseau_221();
  NetOptions opt;  // tolerance 0.1, weight limit 100
  std::vector<float> work;
  ASSERT_EQ(passe_retropropagation(r, 1.0f, opt, work), 1);
  // error 0.9 - o5, delta (1 - o5) o5 error, the old weights carrying it back.
  EXPECT_NEAR(field(r, 5, NR_DELTA), 0.1109752f, 1e-6f);
  EXPECT_NEAR(w(r, 5, 3), 1.0623876f, 1e-6f);
  EXPECT_NEAR(w(r, 5, 4), -0.9162232f, 1e-6f);
  EXPECT_NEAR(field(r, 3, NR_ERROR), 0.1109752f, 1e-6f);
  EXPECT_NEAR(field(r, 4, NR_ERROR), -0.1109752f, 1e-6f);
  EXPECT_NEAR(field(r, 3, NR_DELTA), 0.0273148f, 1e-6f);
  EXPECT_NEAR(field(r, 4, NR_DELTA), -0.0205324f, 1e-6f);
  EXPECT_NEAR(w(r, 3, 1), 0.5273148f, 1e-6f);
  EXPECT_NEAR(w(r, 3, 2), -0.4863426f, 1e-6f);
  EXPECT_NEAR(w(r, 4, 1), 0.9794676f, 1e-6f);
  EXPECT_NEAR(w(r, 4, 2), 0.2397338f, 1e-6f);
  // Errors of the inputs from the old first-layer weights.
  EXPECT_NEAR(field(r, 1, NR_ERROR), -0.0068751f, 1e-6f);
  EXPECT_NEAR(field(r, 2, NR_ERROR), -0.0187905f, 1e-6f);
  // Weights between unconnected neurons stay 0.
  EXPECT_EQ(w(r, 5, 1), 0.0f);
  EXPECT_EQ(w(r, 3, 4), 0.0f);
}

TEST_F(NetworkTest, BackPropagationClampsAtTheWeightLimit) {
  Reseau r = reseau_221();
  NetOptions opt;
  opt.max = 1.0f;
  std::vector<float> work;
  ASSERT_EQ(passe_retropropagation(r, 1.0f, opt, work), 1);
  EXPECT_EQ(w(r, 5, 3), 1.0f);
  EXPECT_NEAR(w(r, 5, 4), -0.9162232f, 1e-6f);
}

TEST_F(NetworkTest, APatternWithinTheToleranceTeachesNothing) {
  Reseau r = reseau_221();
  NetOptions opt;
  opt.error = 0.5f;  // |0.9 - 0.452| is below it
  std::vector<float> work;
  ASSERT_EQ(passe_retropropagation(r, 1.0f, opt, work), 0);
  EXPECT_EQ(w(r, 5, 3), 1.0f);
}

TEST_F(NetworkTest, ThresholdNeuronsNeverLearn) {
  Reseau r = reseau_221();
  const float f[2] = {0.0f, 0.5f};
  set_propr_1(net(1), KW_func, valeur_floats(f, 2).data());
  r = trouve_reseau(net(1));
  NetOptions opt;
  std::vector<float> work;
  ASSERT_EQ(passe_retropropagation(r, 1.0f, opt, work), 1);
  EXPECT_EQ(field(r, 5, NR_DELTA), 0.0f);
  EXPECT_EQ(w(r, 5, 3), 1.0f);
  EXPECT_EQ(w(r, 4, 1), 1.0f);
}

TEST_F(NetworkTest, AllZeroPatternGivesOneHalfWhateverTheWeights) {
  Reseau r = reseau_221();
  const float zeros[2] = {0, 0};
  ASSERT_EQ(propage(r, valeur_floats(zeros, 2).data()), 0);
  EXPECT_FLOAT_EQ(out(r, 3), 0.5f);
  EXPECT_FLOAT_EQ(out(r, 4), 0.5f);
  EXPECT_FLOAT_EQ(out(r, 5), 0.5f);  // 0.5 - 0.5: no bias moves it
}

TEST_F(NetworkTest, SmallDrawnWeightsArePushedToPlusMin) {
  ok("network(1) fac(2,2,1) motif(1,0.5) law(0.9)");
  Reseau r = complet(net(1));
  go_rand(r, -0.005f, -0.005f, 0.01f, -3);
  EXPECT_FLOAT_EQ(w(r, 3, 1), 0.01f);
  EXPECT_FLOAT_EQ(w(r, 5, 4), 0.01f);
  EXPECT_EQ(w(r, 5, 1), 0.0f);  // not connected
  go_rand(r, 0.005f, 0.005f, 0.01f, -3);
  EXPECT_FLOAT_EQ(w(r, 4, 2), 0.01f);
  go_rand(r, -0.5f, -0.5f, 0.01f, -3);
  EXPECT_FLOAT_EQ(w(r, 4, 2), -0.5f);
  EXPECT_FLOAT_EQ(poids_min(0.0f, 0.01f), 0.01f);
  EXPECT_FLOAT_EQ(poids_min(-0.0099f, 0.01f), 0.01f);
  EXPECT_FLOAT_EQ(poids_min(-0.01f, 0.01f), -0.01f);
}

TEST_F(NetworkTest, DrawsRepeatWithTheSeedAndStayInRange) {
  ok("network(1) fac(3,4,2) motif(1,0.5,0) law(0.9,0.1)");
  Reseau r = complet(net(1));
  go_rand(r, -0.5f, 0.5f, 0.01f, 42);
  const std::vector<float> first = values(r.matrix);
  go_rand(r, -0.5f, 0.5f, 0.01f, 42);
  EXPECT_EQ(values(r.matrix), first);
  go_rand(r, -0.5f, 0.5f, 0.01f, -2);  // no reseed: the next numbers
  EXPECT_NE(values(r.matrix), first);
  int connected = 0;
  for (float v : first) {
    EXPECT_LE(v, 0.5f);
    EXPECT_GE(v, -0.5f);
    if (v != 0) {
      connected++;
      EXPECT_GE(std::fabs(v), 0.01f);
    }
  }
  EXPECT_EQ(connected, 3 * 4 + 4 * 2);
}

TEST_F(NetworkTest, ConnectivityByKind) {
  ok("network(1) near fac(2,1) motif(1,0) law(1)");
  ok("network(2) texture fac(2,2) motif(1,0) law(1,1)");
  Reseau a = complet(net(1));
  go_rand(a, 1, 1, 0.01f, -3);
  for (int j = 1; j <= 3; j++)
    for (int i = 1; i <= 3; i++) EXPECT_EQ(w(a, j, i), i == j ? 0.0f : 1.0f) << j << "," << i;
  Reseau b = complet(net(2));
  go_rand(b, 1, 1, 0.01f, -3);
  // Inputs to outputs, and laterally between the two outputs.
  EXPECT_EQ(w(b, 3, 1), 1.0f);
  EXPECT_EQ(w(b, 4, 2), 1.0f);
  EXPECT_EQ(w(b, 3, 4), 1.0f);
  EXPECT_EQ(w(b, 4, 3), 1.0f);
  EXPECT_EQ(w(b, 1, 3), 0.0f);
  EXPECT_EQ(w(b, 2, 1), 0.0f);
  EXPECT_EQ(w(b, 3, 3), 0.0f);
}

}  // namespace
