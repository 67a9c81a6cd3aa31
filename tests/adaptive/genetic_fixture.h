// Populations made through the console, with both random sources
// scripted: each draw takes the next number given, and a draw past the
// script fails the test.
#pragma once
#include <deque>
#include <string>
#include <vector>

#include "../scene/scene_fixture.h"
#include "adaptive/genetic.h"
#include "adaptive/genetic_state.h"
#include "kernel/property.h"
#include "kernel/random_table.h"
#include "kernel/values.h"
#include "language/args.h"
#include "scene/lookup.h"

class GeneticTest : public SceneTest {
 protected:
  std::deque<float> process, table;

  void SetUp() override {
    SceneTest::SetUp();
    rem_tous(chaine_classe(KW_genetic), 0, 0);
    genetics().process = [this] { return draw(process, "process"); };
    genetics().table = [this] { return draw(table, "table"); };
    genetics_restart();
  }
  void TearDown() override {
    genetics().process = nullptr;
    genetics().table = nullptr;
    rem_tous(chaine_classe(KW_genetic), 0, 0);
    SceneTest::TearDown();
  }
  static float draw(std::deque<float>& q, const char* which) {
    if (q.empty()) {
      ADD_FAILURE() << "a draw past the script of the " << which << " generator";
      return 0.0f;
    }
    const float f = q.front();
    q.pop_front();
    return f;
  }
  // Every scripted number used, none left over.
  void expect_script_used() {
    EXPECT_TRUE(process.empty()) << process.size() << " process numbers left";
    EXPECT_TRUE(table.empty()) << table.size() << " table numbers left";
  }
  // One generation of object 1 under `bar`: the count below it, every
  // scripted number used, and its two strings.
  void expect_generation(float bar, int below, const std::string& first, const std::string& second) {
    {
      Capture quiet;
      EXPECT_EQ(generation_genetique(gen(1), bar, nullptr, nullptr), below);
    }
    expect_script_used();
    EXPECT_EQ(individu(1, 1), first);
    EXPECT_EQ(individu(1, 2), second);
  }
  static Objet* gen(int id) { return get_objet_id(chaine_classe(KW_genetic), KW_genetic, id); }
  // Individual i (from 1) of the population under `code`.
  static std::string individu(int id, int i, int code = KW_particle) {
    Population p;
    if (!lit_population(get_val_1(gen(id)->local, code), &p) || i < 1 || i > p.n) return "<none>";
    return std::string(p.individu(i - 1), strnlen(p.individu(i - 1), static_cast<size_t>(p.L)));
  }
  static std::vector<float> prop(int id, int c1, int c2 = 0) {
    const word* v = c2 ? get_val_2(gen(id)->local, c1, c2) : get_val_1(gen(id)->local, c1);
    return v ? floats_of(v) : std::vector<float>{};
  }
};
