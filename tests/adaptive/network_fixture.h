// Networks made through the console, then read and set word by word.
#pragma once
#include <vector>

#include "../scene/scene_fixture.h"
#include "adaptive/net_internal.h"
#include "adaptive/network.h"
#include "kernel/property.h"
#include "kernel/values.h"
#include "scene/lookup.h"

class NetworkTest : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    rem_tous(chaine_classe(KW_network), 0, 0);
  }
  void TearDown() override {
    rem_tous(chaine_classe(KW_network), 0, 0);
    SceneTest::TearDown();
  }
  static Objet* net(int id) { return get_objet_id(chaine_classe(KW_network), KW_network, id); }
  static float w(const Reseau& r, int j, int i) { return lit(poids(r, j, i)); }
  static void set_w(const Reseau& r, int j, int i, float v) { ecrit(poids(r, j, i), v); }
  static float out(const Reseau& r, int j) { return lit(neurone(r, j, NR_OUTPUT)); }
  static float field(const Reseau& r, int j, int f) { return lit(neurone(r, j, f)); }
  static std::vector<float> values(const word* v) { return v ? floats_of(v) : std::vector<float>{}; }
  // Everything a run needs built, weights all `lo` (mode -3).
  static Reseau complet(Objet* o, float lo = 0.0f) {
    NetOptions opt;
    opt.alea_given = true;
    opt.alea = -3;
    Capture quiet;
    EXPECT_EQ(complete_reseau(o, opt, false), 0);
    Reseau r = trouve_reseau(o);
    go_rand(r, lo, lo, 0.0f, -3);
    return r;
  }
  // Network 1: inputs 1, 2; hidden 3, 4; output 5; the pattern (1, 0.5)
  // towards 0.9, and these weights.
  Reseau reseau_221() {
    ok("network(1) fac(2,2,1) motif(1,0.5) law(0.9)");
    Reseau r = complet(net(1));
    set_w(r, 3, 1, 0.5f);
    set_w(r, 3, 2, -0.5f);
    set_w(r, 4, 1, 1.0f);
    set_w(r, 4, 2, 0.25f);
    set_w(r, 5, 3, 1.0f);
    set_w(r, 5, 4, -1.0f);
    return r;
  }
};
