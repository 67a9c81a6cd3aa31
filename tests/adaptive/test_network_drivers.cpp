// What networks drive: a brush that paints an image through a network,
// a pattern run by `motif(v) network(id)`, a rolled motif, patterns read
// from picture files.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "network_fixture.h"
#include "scene/image_object.h"

namespace {

class DriverTest : public NetworkTest {
 protected:
  void TearDown() override {
    rem_tous(chaine_classe(KW_image), 0, 0);
    NetworkTest::TearDown();
  }
  // A network of four inputs and four outputs whose weights are all 0:
  // every output is exactly 0.5.
  static void moitie() {
    ok("network(1) fac(4,4) motif(0,0,0,0) law(0,0,0,0)");
    complet(net(1));
  }
};

TEST_F(DriverTest, TheBrushPaintsTheOutputsOverItsPixels) {
  moitie();
  ok("image(1) dim(4)");
  uint8_t* px = pixels_image(image_numero(1));
  ASSERT_NE(px, nullptr);
  ok("network(1) brush image(1) poi(2,2) dim(2,2)");
  // The 2 x 2 pixels around (2, 2) grey at 0.5; the others still black.
  auto at = [&](int x, int y) { return px + (y * 4 + x) * 4; };
  EXPECT_EQ(at(1, 1)[0], 128);
  EXPECT_EQ(at(2, 2)[1], 128);
  EXPECT_EQ(at(2, 1)[2], 128);
  EXPECT_EQ(at(0, 0)[0], 0);
  EXPECT_EQ(at(3, 3)[0], 0);
  EXPECT_EQ(fails("network(9) brush image(1)"), "network not found: 9\n");
}

TEST_F(DriverTest, AMotifFillingTheInputsIsAQuery) {
  moitie();
  expect_floats(floats("motif(1,1,1,1) network(1)"), {0.5f, 0.5f, 0.5f, 0.5f}, "query");
  // A single parameter still addresses a pattern of the list.
  expect_floats(floats("motif(1) network(1)"), {0, 0, 0, 0}, "point");
}

TEST_F(DriverTest, RollShiftsTheFirstMotif) {
  ok("network(1) fac(4,4) motif(1,2,3,4) law(0,0,0,0)");
  complet(net(1));
  expect_floats(floats("roll network(1) motif(8,9)"), {0.5f, 0.5f, 0.5f, 0.5f}, "outputs");
  EXPECT_EQ(values(sous_bloc(trouve_reseau(net(1)).motif, 0)), (std::vector<float>{3, 4, 8, 9}));
}

TEST_F(DriverTest, PicturesBecomePatterns) {
  const std::string dir = std::filesystem::temp_directory_path() / ("orvela_net_" + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  const std::string file = dir + "/white.bmp";
  ok("image(1) dim(4)");
  uint8_t* px = pixels_image(image_numero(1));
  for (int k = 0; k < 16 * 4; k++) px[k] = 255;
  ok("write image(1) name(\"" + file + "\")");
  ok("network(1) fac(4,4)");
  ok("read image network(1) motif(\"" + file + " " + file + "\") dim(2,2)");
  Reseau r = trouve_reseau(net(1));
  ASSERT_EQ(hybride_parts(r.motif), 2);
  EXPECT_EQ(values(sous_bloc(r.motif, 1)), (std::vector<float>{1, 1, 1, 1}));
  EXPECT_EQ(dimp(sous_bloc(r.motif, 1)), 2);
  Outcome o = run("read image network(1) law(\"" + dir + "/none.bmp\") dim(2,2)");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("NOT FOUND"), std::string::npos);
  EXPECT_EQ(trouve_reseau(net(1)).law, nullptr);
  std::filesystem::remove_all(dir);
}

TEST_F(DriverTest, PatternFilesByLineAndByFormat) {
  const std::string dir = std::filesystem::temp_directory_path() / ("orvela_pat_" + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  {
    std::ofstream(dir + "/lines.txt") << "# xor\n0.1 0.1 ; 0.1\n0.1,0.9;0.9\n\n0.9 0.1 ; 0.9\n0.9 0.9 ; 0.1\n";
    std::ofstream(dir + "/stream.txt") << "1 2 3 4 5 6\n7 8 9 10 11 12\n";
    std::ofstream(dir + "/bad.txt") << "0.1 x ; 1\n";
  }
  ok("network(1)");
  const std::vector<float> res = floats("generate network(1) read(\"" + dir + "/lines.txt\") validate(1) alea(3)");
  EXPECT_EQ(res.size(), 3u);
  Reseau r = trouve_reseau(net(1));
  ASSERT_EQ(hybride_parts(r.motif), 4);
  EXPECT_EQ(values(sous_bloc(r.motif, 1)), (std::vector<float>{0.1f, 0.9f}));
  EXPECT_EQ(values(sous_bloc(r.law, 3)), (std::vector<float>{0.1f}));
  // Weights drawn in the `mass` range: a constant -3 puts its low value.
  ok("generate network(1) read(\"" + dir + "/lines.txt\") mass(0.25, 1, 0.01) alea(-3) validate(1) coe(0, 0)");
  EXPECT_EQ(w(trouve_reseau(net(1)), 3, 1), 0.25f);
  // format(2, 1): motifs of two values each followed by a law of one;
  // average(2) then halves the motifs.
  ok("network(2)");
  ok("generate network(2) read(\"" + dir + "/stream.txt\") format(2, 1) validate(1) alea(1)");
  EXPECT_EQ(hybride_parts(trouve_reseau(net(2)).motif), 4);
  EXPECT_EQ(values(sous_bloc(trouve_reseau(net(2)).law, 1)), (std::vector<float>{6}));
  ok("network(3)");
  ok("generate network(3) read(\"" + dir + "/stream.txt\") format(4, 2) average(2) validate(1) alea(1)");
  EXPECT_EQ(values(sous_bloc(trouve_reseau(net(3)).motif, 1)), (std::vector<float>{7.5f, 9.5f}));
  Outcome o = run("generate network(3) read(\"" + dir + "/bad.txt\")");
  EXPECT_LT(o.status, 0);
  EXPECT_NE(o.out.find("line"), std::string::npos) << o.out;
  std::filesystem::remove_all(dir);
}

}  // namespace
