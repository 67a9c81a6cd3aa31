// Console texts on a minimal kernel, with the object chains the tests
// use emptied before and after each test.
#pragma once
#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "scene/removal.h"
#include "support/text_runner.h"

class SceneTest : public TextRunner {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    empty_chains();
  }
  void TearDown() override { empty_chains(); }

  static void empty_chains() {
    for (int kind : {KW_vol, KW_object, KW_light, KW_image, KW_scale})
      rem_tous(chaine_classe(kind), 0, 0);
    rem_tous(chaine_generique(), 0, 0);
  }
  // Runs lines that must succeed.
  static void ok(const std::string& text) {
    Outcome r = run(text);
    ASSERT_EQ(r.status, 0) << text << ": " << r.out;
  }
};
