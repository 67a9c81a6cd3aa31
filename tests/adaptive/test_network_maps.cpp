// The self-organising map and the reward network: the neighbour table,
// one pass of each, worked out by hand.
#include "network_fixture.h"

namespace {

TEST_F(NetworkTest, NeighbourTableOfA3x3Map) {
  const std::vector<int> t = table_voisins(2, 9);
  ASSERT_EQ(t.size(), 11u * 9);
  // Input rows are all 0.
  for (int k = 0; k < 18; k++) EXPECT_EQ(t[k], 0);
  // The grid:  3  4  5 / 6  7  8 / 9 10 11; self, N, NE, E, SE, S, SW, W, NW.
  auto row = [&](int n) { return std::vector<int>(t.begin() + (n - 1) * 9, t.begin() + n * 9); };
  EXPECT_EQ(row(3), (std::vector<int>{3, 0, 0, 4, 7, 6, 0, 0, 0}));
  EXPECT_EQ(row(4), (std::vector<int>{4, 0, 0, 5, 8, 7, 6, 3, 0}));
  EXPECT_EQ(row(7), (std::vector<int>{7, 4, 5, 8, 11, 10, 9, 6, 3}));
  EXPECT_EQ(row(11), (std::vector<int>{11, 8, 0, 0, 0, 0, 0, 10, 7}));
}

TEST_F(NetworkTest, NeighbourTableBeyondASquareCount) {
  // Five outputs on a grid of side 2: the fifth starts a third row.
  const std::vector<int> t = table_voisins(1, 5);
  auto row = [&](int n) { return std::vector<int>(t.begin() + (n - 1) * 9, t.begin() + n * 9); };
  EXPECT_EQ(row(4), (std::vector<int>{4, 2, 3, 5, 0, 6, 0, 0, 0}));
  EXPECT_EQ(row(6), (std::vector<int>{6, 4, 5, 0, 0, 0, 0, 0, 0}));
}

TEST_F(NetworkTest, NeighbourhoodShrinksOverThePasses) {
  EXPECT_EQ(voisinage(1, 1), 9);  // one pass: step 0
  EXPECT_EQ(voisinage(1, 10), 9);
  EXPECT_EQ(voisinage(2, 10), 8);
  EXPECT_EQ(voisinage(8, 10), 2);
  EXPECT_EQ(voisinage(10, 10), 1);  // 0, held at 1
}

// A 2 x 2 map of two inputs, its outputs at the corners of the square.
class MapTest : public NetworkTest {
 protected:
  Reseau carte() {
    ok("network(1) texture fac(2,4) motif(0.8,0.2) law(0,0,0,0)");
    Reseau r = complet(net(1));
    const float corners[4][2] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};
    for (int k = 0; k < 4; k++) {
      set_w(r, 3 + k, 1, corners[k][0]);
      set_w(r, 3 + k, 2, corners[k][1]);
    }
    return r;
  }
};

TEST_F(MapTest, OnePassMovesTheWinnerAndItsNeighbours) {
  Reseau r = carte();
  ASSERT_NE(r.near, nullptr);
  NetOptions opt;
  opt.passes = 1;
  float largest = 0;
  Capture out;
  // Distances 1.0, 0.4, 1.6, 1.0: neuron 4 wins, above the tolerance.
  EXPECT_EQ(passe_texture(r, 0.5f, 1, opt, &largest), 1);
  EXPECT_EQ(out.take(), "*** passe 1 vois 9 ***\n");
  EXPECT_NEAR(largest, 0.4f, 1e-6f);
  // Its row: 4, then S 6, SW 5, W 3; each moves halfway to (0.8, 0.2).
  EXPECT_NEAR(w(r, 4, 1), 0.9f, 1e-6f);
  EXPECT_NEAR(w(r, 4, 2), 0.1f, 1e-6f);
  EXPECT_NEAR(w(r, 6, 1), 0.9f, 1e-6f);
  EXPECT_NEAR(w(r, 6, 2), 0.6f, 1e-6f);
  EXPECT_NEAR(w(r, 5, 1), 0.4f, 1e-6f);
  EXPECT_NEAR(w(r, 5, 2), 0.6f, 1e-6f);
  EXPECT_NEAR(w(r, 3, 1), 0.4f, 1e-6f);
  EXPECT_NEAR(w(r, 3, 2), 0.1f, 1e-6f);
}

TEST_F(MapTest, ACountOfTwoAtTheTopRowMovesTheCellAlone) {
  Reseau r = carte();
  NetOptions opt;
  opt.passes = 10;
  opt.debug = true;
  float largest = 0;
  Capture out;
  EXPECT_EQ(passe_texture(r, 0.5f, 8, opt, &largest), 1);
  EXPECT_EQ(out.take(),
            "*** passe 8 vois 2 ***\nmotif 1\tvainqueur 4\n"
            "poids[1->4]: 1.000000->0.900000\npoids[2->4]: 0.000000->0.100000\n");
  EXPECT_EQ(w(r, 3, 1), 0.0f);
  EXPECT_EQ(w(r, 6, 2), 1.0f);
}

TEST_F(MapTest, DifferencesWithinTheToleranceAreLeft) {
  Reseau r = carte();
  NetOptions opt;
  opt.error = 0.3f;  // |0.8 - 1| and |0.2 - 0| are within it
  float largest = 0;
  Capture quiet;
  EXPECT_EQ(passe_texture(r, 0.5f, 1, opt, &largest), 1);
  EXPECT_EQ(w(r, 4, 1), 1.0f);
  EXPECT_EQ(w(r, 4, 2), 0.0f);
  EXPECT_NEAR(w(r, 3, 1), 0.4f, 1e-6f);  // 0.8 is beyond it
  EXPECT_EQ(w(r, 3, 2), 0.0f);
}

TEST_F(MapTest, NoWinnerBelowTheFirstBar) {
  Reseau r = carte();
  for (int k = 3; k <= 6; k++) set_w(r, k, 1, 2000000.0f);
  NetOptions opt;
  float largest = 0;
  Capture out;
  EXPECT_LT(passe_texture(r, 0.5f, 1, opt, &largest), 0);
  EXPECT_EQ(out.take(), "*** passe 1 vois 9 ***\nPas de vainqueur pour motif 1\n");
}

TEST_F(MapTest, TheQueryOfAMapGivesTheWinnersWeights) {
  carte();
  std::vector<word> place(16);
  const float p[2] = {0.1f, 0.9f};  // nearest corner (0, 1): neuron 5
  ASSERT_EQ(valider_motif_reseau(net(1), valeur_floats(p, 2, 2).data(), place.data(), place.data() + 16, nullptr), 0);
  EXPECT_EQ(values(place.data()), (std::vector<float>{0, 1}));
  EXPECT_EQ(place[3], 2);
}

// A recurrent network of two inputs and one output over three patterns.
class RewardTest : public NetworkTest {
 protected:
  Reseau recurrent(const char* laws, bool cg) {
    ok(std::string("network(1) near fac(2,2) motif(0,0, 1,1, 1,0) law(") + laws + ")");
    if (cg) ok("network(1) CG");
    return complet(net(1), 0.5f);
  }
  static std::vector<float> rewards() {
    const int keys[] = {KW_motif, KW_law, KW_dist};
    return values(get_val_k(net(1)->local, 3, keys));
  }
};

TEST_F(RewardTest, MeanChangeRewards) {
  Reseau r = recurrent("1,1, 0,0, 0.5,0.5", false);
  std::vector<float> got;
  ASSERT_EQ(recompenses(r, got), 0);
  // (mean motif change) x (mean law change): 1 x -1, -0.5 x 0.5.
  expect_floats(got, {-1.0f, -0.25f}, "rewards");
  expect_floats(rewards(), {-1.0f, -0.25f}, "motif law dist");
}

TEST_F(RewardTest, CentreOfGravityRewards) {
  Reseau r = recurrent("1,0, 0,1, 1,0", true);
  std::vector<float> got;
  ASSERT_EQ(recompenses(r, got), 0);
  // Motif centres 0 (sum 0: skipped), 0.25, 0; law centres 0, 0.5, 0:
  // unit motions (1, 0) then (-1, 0) for both.
  expect_floats(got, {1.0f, 1.0f}, "rewards");
}

TEST_F(RewardTest, NegativeRewardsMoveTheWeightsTowardsTheBestCopy) {
  Reseau r = recurrent("1,1, 0,0, 0.5,0.5", false);
  // The best copy one above every weight from the inputs to the outputs.
  for (int j = 3; j <= 4; j++)
    for (int i = 1; i <= 2; i++) ecrit(poids_de(r.best, r.N, j, i), 1.5f);
  NetOptions opt;
  float largest = 0;
  ASSERT_EQ(passe_near(r, 0.5f, opt, &largest), 2);
  r = trouve_reseau(net(1));
  // s = 0.5 x -1: w += 1 x -0.5; then s = -0.125: w += 1.5 x -0.125.
  EXPECT_NEAR(w(r, 3, 1), 0.5f - 0.5f - 0.1875f, 1e-6f);
  EXPECT_NEAR(w(r, 4, 2), 0.5f - 0.5f - 0.1875f, 1e-6f);
  EXPECT_NEAR(largest, 0.5f, 1e-6f);
  // The lateral weights are not in the rule.
  EXPECT_EQ(w(r, 3, 4), 0.5f);
  // The best copy follows the matrix; the laws hold the outputs.
  EXPECT_EQ(values(r.best), values(r.matrix));
  const std::vector<float> law0 = values(sous_bloc(r.law, 0));
  ASSERT_EQ(law0.size(), 2u);
  // Pattern (0, 0) leaves only the lateral weight 0.5 times a logistic
  // output: a positive input, an output above one half.
  EXPECT_GT(law0[0], 0.5f);
  EXPECT_LT(law0[0], 1.0f);
}

TEST_F(RewardTest, PositiveRewardsLeaveTheWeights) {
  Reseau r = recurrent("1,0, 0,1, 1,0", true);
  NetOptions opt;
  float largest = 0;
  ASSERT_EQ(passe_near(r, 0.5f, opt, &largest), 0);
  r = trouve_reseau(net(1));
  EXPECT_EQ(w(r, 3, 1), 0.5f);
  EXPECT_EQ(largest, 0.0f);
}

TEST_F(RewardTest, TimeSelectsOnePair) {
  Reseau r = recurrent("1,1, 0,0, 0.5,0.5", false);
  for (int j = 3; j <= 4; j++)
    for (int i = 1; i <= 2; i++) ecrit(poids_de(r.best, r.N, j, i), 1.5f);
  NetOptions opt;
  opt.time = 2;
  float largest = 0;
  ASSERT_EQ(passe_near(r, 0.5f, opt, &largest), 1);
  r = trouve_reseau(net(1));
  EXPECT_NEAR(w(r, 3, 1), 0.5f - 0.125f, 1e-6f);
}

}  // namespace
