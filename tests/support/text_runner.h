// A fixture that runs texts as console lines on a kernel set up on the
// minimal environment, and reads their values.
#pragma once
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "language/eval.h"
#include "support/capture.h"

struct Outcome {
  int status = 0;
  std::vector<word> value;
  std::string out;
};

class TextRunner : public ::testing::Test {
 protected:
  void SetUp() override {
    minimal_kernel();
    if (!kernel().eval_stack) {
      Capture quiet;
      ASSERT_EQ(allocate_work_areas(), 0);
    }
    eval_state().limit = kernel().eval_limit;
    Yes(KW_error) = 1;
    Yes(KW_compile) = 1;
  }

  static Outcome run(const std::string& line) {
    Outcome r;
    Capture out;
    r.status = executer_texte(line.c_str(), r.value);
    r.out = out.take();
    return r;
  }
  // The FLOAT result of a text that must succeed.
  static std::vector<float> floats(const std::string& line) {
    Outcome r = run(line);
    EXPECT_EQ(r.status, 0) << line << ": " << r.out;
    std::vector<float> v;
    if (r.status != 0 || r.value.size() < 4) return v;
    EXPECT_EQ(r.value[1], T_FLOAT) << line;
    for (int i = 0; i < r.value[2] * r.value[3]; i++) v.push_back(wf(r.value[4 + i]));
    return v;
  }
  static float one(const std::string& line) {
    std::vector<float> v = floats(line);
    EXPECT_EQ(v.size(), 1u) << line;
    return v.empty() ? NAN : v[0];
  }
  // The CHAR result of a text that must succeed.
  static std::string str(const std::string& line) {
    Outcome r = run(line);
    EXPECT_EQ(r.status, 0) << line << ": " << r.out;
    if (r.status != 0 || r.value.size() < 5) return "<none>";
    EXPECT_EQ(r.value[1], T_CHAR) << line;
    return reinterpret_cast<const char*>(r.value.data() + 4);
  }
  static bool nil(const std::string& line) {
    Outcome r = run(line);
    return r.status == 0 && r.value.size() == 4 && r.value[1] == T_NIL;
  }
  // A failing text: what it printed.
  static std::string fails(const std::string& line) {
    Outcome r = run(line);
    EXPECT_LT(r.status, 0) << line;
    return r.out;
  }
};

inline void expect_floats(const std::vector<float>& got, std::initializer_list<float> want, const char* what) {
  ASSERT_EQ(got.size(), want.size()) << what;
  size_t i = 0;
  for (float w : want) EXPECT_NEAR(got[i++], w, 1e-5f) << what << " element " << i - 1;
}
