// What the tests of dynamics share: the commands installed, the fields
// emptied after each test, volumes and fields by number.
#pragma once
#include "animation/dynamics/dynamics.h"
#include "kernel/vocab.h"
#include "scene/lookup.h"
#include "scene/scene_fixture.h"

inline void expect3(const float* got, float x, float y, float z, const char* what) {
  EXPECT_NEAR(got[0], x, 1e-5f) << what;
  EXPECT_NEAR(got[1], y, 1e-5f) << what;
  EXPECT_NEAR(got[2], z, 1e-5f) << what;
}

// The commands and the stage of the dynamics, installed once for all the
// tests that use them.
inline void installe_dynamique() {
  static const bool fait = [] {
    install_dynamics();
    return true;
  }();
  (void)fait;
}

class Dynamics : public SceneTest {
 protected:
  void SetUp() override {
    SceneTest::SetUp();
    installe_dynamique();
    Yes(KW_edit) = 0;
  }
  void TearDown() override {
    Yes(KW_field) = 0;
    rem_tous(chaine_classe(KW_field), 0, 0);
    SceneTest::TearDown();
  }
  static Objet* vol(int id) { return get_objet_id(chaine_classe(KW_vol), KW_vol, id); }
  static Objet* field(int id) { return get_objet_id(chaine_classe(KW_field), KW_field, id); }
};
