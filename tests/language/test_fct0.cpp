// The value functions, run as console texts: results worked out by hand
// for the arithmetic, the descriptors of string, stringf and format,
// searches, random ranges, files, the error word, function texts, pulses,
// and direct calls for the first walk and the evaluation limit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "kernel/chains.h"
#include "kernel/file_out.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "language/eval.h"
#include "language/fct0.h"
#include "language/functions.h"
#include "language/handlers.h"
#include "platform/process.h"
#include "support/capture.h"
#include "support/text_runner.h"

namespace {

class Fct0Test : public TextRunner {
 protected:
  void SetUp() override {
    TextRunner::SetUp();
    fct0_close_files();
    fct0_state() = Fct0State{};
  }
  // Pulse objects go with the test: their properties are held by handle.
  void TearDown() override {
    fct0_close_files();
    for (Objet* o = chaine_de(0, KW_puls)->next; o;) o = rem_objet(o);
  }
};

// ---- the first walk -----------------------------------------------------------

TEST_F(Fct0Test, BareCharAndFloatGiveTheirTags) {
  EXPECT_FLOAT_EQ(one("char"), -1000.0f);
  EXPECT_FLOAT_EQ(one("float"), -1002.0f);
  // Anywhere in the record, before the first word's own work.
  EXPECT_FLOAT_EQ(one("abs(-3) float"), -1002.0f);
}

// A record [items...] as the evaluator builds it.
std::vector<word> record(std::initializer_list<std::vector<word>> items) {
  std::vector<word> r{4, T_SEGMENTS, static_cast<word>(items.size()), 0};
  for (const auto& it : items) r.insert(r.end(), it.begin(), it.end());
  r[0] = static_cast<word>(r.size());
  return r;
}
std::vector<word> item(int code, std::initializer_list<float> arg = {}) {
  std::vector<word> it{3, code / 200, code};
  if (arg.size()) {
    it.insert(it.end(), {static_cast<word>(4 + arg.size()), T_FLOAT, static_cast<word>(arg.size()), 1});
    for (float f : arg) it.push_back(fw(f));
    it[0] = static_cast<word>(it.size());
  }
  return it;
}

TEST_F(Fct0Test, ForeignItemsAndRandVarLeaveTheRecord) {
  std::vector<word> r = record({item(KW_abs, {-2}), item(KW_vol)});
  r.resize(r.size() + 32, 0);
  std::vector<word> before = r;
  EXPECT_EQ(fct0(r.data(), r.data() + r.size()), 1);
  EXPECT_EQ(r, before);

  std::vector<word> rv = record({item(KW_rand, {5}), item(KW_var)});
  rv.resize(rv.size() + 32, 0);
  before = rv;
  EXPECT_EQ(fct0(rv.data(), rv.data() + rv.size()), 1);
  EXPECT_EQ(rv, before);
}

TEST_F(Fct0Test, ResultsNeverPassTheLimit) {
  std::vector<word> r = record({item(KW_string, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})});
  const size_t used = r.size();
  r.resize(used + 64, 0x5a5a5a5a);
  Capture out;
  // Room for the record and four words of result: far too little.
  int status = fct0(r.data(), r.data() + used + 4);
  EXPECT_LT(status, 0);
  EXPECT_NE(out.take().find("OVERFLOW"), std::string::npos);
  for (size_t i = used + 4; i < r.size(); i++) ASSERT_EQ(r[i], 0x5a5a5a5a) << "written past the limit at " << i;

  // With room enough the text replaces the record.
  std::vector<word> ok = record({item(KW_string, {1, -2, 30})});
  ok.resize(ok.size() + 16, 0);
  ASSERT_EQ(fct0(ok.data(), ok.data() + ok.size()), 0);
  EXPECT_EQ(ok[1], T_CHAR);
  EXPECT_STREQ(reinterpret_cast<const char*>(ok.data() + 4), "1,-2,30");
}

TEST_F(Fct0Test, EmptyArgumentGivesNil) {
  EXPECT_TRUE(nil("sqrt"));
  EXPECT_TRUE(nil("cos(\"\")"));
}

// ---- arithmetic -----------------------------------------------------------------

TEST_F(Fct0Test, SquareRootOfNegativeGoesOnWithZero) {
  Outcome r = run("sqrt(-1,4)");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("SQUARE ROOT < 0"), std::string::npos);
  expect_floats(floats("sqrt(-1,4)"), {0, 2}, "sqrt");
}

TEST_F(Fct0Test, LogarithmOfZeroAndOfNegatives) {
  float l = one("log(0)");
  EXPECT_TRUE(std::isinf(l) && l < 0);
  Outcome r = run("log(1,-1)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("log < 0"), std::string::npos);
  expect_floats(floats("log(1,2.7182817)"), {0, 1}, "log");
}

TEST_F(Fct0Test, ElementWiseFunctions) {
  expect_floats(floats("acos(2,-2,0.5)"), {0, 3.1415927f, 1.0471976f}, "acos clamps");
  expect_floats(floats("asin(-3,1)"), {-1.5707964f, 1.5707964f}, "asin clamps");
  expect_floats(floats("atan(1)"), {0.7853982f}, "atan");
  expect_floats(floats("cos(0,3.1415927)"), {1, -1}, "cos");
  expect_floats(floats("sin(1.5707964)"), {1}, "sin");
  expect_floats(floats("exp(0,1)"), {1, 2.7182817f}, "exp");
  expect_floats(floats("cosh(0) "), {1}, "cosh");
  expect_floats(floats("sinh(0)"), {0}, "sinh");
  expect_floats(floats("tanh(0)"), {0}, "tanh");
  expect_floats(floats("tan(0.7853982)"), {1}, "tan");
  expect_floats(floats("abs(-1,2,-0.5)"), {1, 2, 0.5f}, "abs");
  EXPECT_EQ(str("abs(\"x-y\")"), "x-y");
  expect_floats(floats("int(-2.7,2.7,0.2)"), {-2, 2, 0}, "int");
  // Nearest integer with halves away from zero: -0.5 gives -1.
  expect_floats(floats("ent(-0.5,0.5,2.4,-2.6,0)"), {-1, 1, 2, -3, 0}, "ent");
  // acosh, asinh, atanh compute nothing: their elements stay at 0.
  expect_floats(floats("acosh(2)"), {0}, "acosh");
  expect_floats(floats("asinh(1,2)"), {0, 0}, "asinh");
  expect_floats(floats("atanh(0.5)"), {0}, "atanh");
  Outcome r = run("cos(\"a\")");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("ILLEGAL"), std::string::npos);
}

TEST_F(Fct0Test, Reductions) {
  EXPECT_FLOAT_EQ(one("sum(1,2,3.5)"), 6.5f);
  EXPECT_FLOAT_EQ(one("sum(\"ab\")"), 195.0f);
  // Bytes are signed: 0xC3 and 0xA9 count -61 and -87.
  EXPECT_FLOAT_EQ(one("sum(\"\xc3\xa9\")"), -148.0f);
  EXPECT_FLOAT_EQ(one("average(1,2,6)"), 3.0f);
  EXPECT_FLOAT_EQ(one("max(1,5,2)"), 5.0f);
  EXPECT_FLOAT_EQ(one("min(1,5,2)"), 1.0f);
  // The extremes start at -1e9 and 1e9.
  EXPECT_FLOAT_EQ(one("max(-2000000000)"), -1000000000.0f);
  EXPECT_FLOAT_EQ(one("min(2000000000)"), 1000000000.0f);
  EXPECT_EQ(str("max(\"abz\")"), "z");
  EXPECT_EQ(str("min(\"abz\")"), "a");
  EXPECT_FLOAT_EQ(one("scalar(1,2,3,4)"), 11.0f);
  EXPECT_FLOAT_EQ(one("scalar(1,2,3)"), 2.0f);
  EXPECT_FLOAT_EQ(one("product(1,2,3,4)"), 24.0f);
}

TEST_F(Fct0Test, SeveralItemsCombineElementWise) {
  expect_floats(floats("max(1,5,2) max(4,0)"), {4, 5, 2}, "max");
  expect_floats(floats("min(1,5,2) min(4,0,9,-1)"), {1, 0, 2, -1}, "min");
  expect_floats(floats("average(1,2) average(3)"), {2, 2}, "average");
}

TEST_F(Fct0Test, LengthsAndGeometry) {
  EXPECT_FLOAT_EQ(one("dist(0,0,0,3,4,0,3,4,12)"), 17.0f);
  EXPECT_FLOAT_EQ(one("dist(0,0,0,3,4)"), 5.0f);
  EXPECT_FLOAT_EQ(one("dist(\"abcabd\")"), 1.0f - 2.0f / 3.0f);
  EXPECT_FLOAT_EQ(one("dist(\"abab\")"), 0.0f);
  EXPECT_FLOAT_EQ(one("dist(\"a\")"), 1.0f);
  expect_floats(floats("module(3,4,0,1)"), {5, 1}, "module");
  expect_floats(floats("module(1,2,2,3,4,12,5)"), {3, 13, 5}, "module");
  expect_floats(floats("unit(0,0,0)"), {0, 0, 0}, "unit of zero");
  expect_floats(floats("unit(3,4)"), {0.6f, 0.8f}, "unit");
  expect_floats(floats("unit(0.0001,0)"), {0.0001f, 0}, "tiny vector kept");
  expect_floats(floats("vector(1,0,0,0,1,0)"), {0, 0, 1}, "x cross y");
  expect_floats(floats("vector(1,2,3,4,5,6)"), {-3, 6, -3}, "cross product");
  expect_floats(floats("vector(1,2)"), {0, 0, 0}, "missing elements are 0");
}

TEST_F(Fct0Test, MatrixProduct) {
  // A is 2 columns by 1 row (1 2), B 3 columns by 2 rows (3 4 5 / 6 7 8).
  expect_floats(floats("product(1,2,3,4,5,6,7,8) format(2,1,3,2)"), {15, 18, 21}, "1x2 by 2x3");
  // Absent sizes are x1: two 2 by 2 matrices.
  expect_floats(floats("product(1,2,3,4,5,6,7,8) format(2)"), {19, 22, 43, 50}, "2x2 by 2x2");
  Outcome r = run("product(1,2,3) format(2)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("INCOHERENT"), std::string::npos);
}

TEST_F(Fct0Test, ArcPointsAndUsage) {
  expect_floats(floats("arc(2,0,90,3)"), {2, 0, 0, 0, 2, 0, -2, 0, 0}, "quarter steps");
  expect_floats(floats("arc(1,45,0,1)"), {0.70710677f, 0.70710677f, 0}, "one point");
  Outcome r = run("arc(1,2)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("arc r,a,da,n"), std::string::npos);
}

TEST_F(Fct0Test, InverseAndReverse) {
  EXPECT_EQ(str("inv(\"abc\")"), "cba");
  expect_floats(floats("inv(1,2,3,4,5,6,7)"), {4, 5, 6, 1, 2, 3}, "groups of 3, tail dropped");
  expect_floats(floats("inv(1,2,3,4) format(2)"), {3, 4, 1, 2}, "groups of 2");
  expect_floats(floats("inv(2,0,0,0, 0,4,0,0, 0,0,1,0, 1,2,3,1) matrix"),
                {0.5f, 0, 0, 0, 0, 0.25f, 0, 0, 0, 0, 1, 0, -0.5f, -0.5f, -3, 1}, "4x4 inverse");
}

// ---- text ---------------------------------------------------------------------

TEST_F(Fct0Test, StringDescriptors) {
  struct Case {
    const char* line;
    const char* text;
  } cases[] = {
      {"string(\"3d\",5)", "005"},
      {"string(\"3d\",-5)", "-05"},
      {"string(\"1d\",-5)", "-"},          // the sign covers the only place
      {"string(\"2x\",255)", "FF"},
      {"string(\"2x\",256)", "00"},        // high digits lost
      {"string(\"2X\",26)", "1A"},
      {"string(\"8b\",5)", "00000101"},
      {"string(\"3o\",-9)", "-11"},
      {"string(\"x\",255)", "FF"},         // no width: natural width
      {"string(\"\",5)", "5"},
      {"string(\"3d 2d\",5,7,-9)", "00507-9"},  // nothing between elements
      {"string(\"2d,\t1b\",3,1)", "031"},
      {"string(12,-3.7,0)", "12,-3,0"},
  };
  for (const Case& c : cases) EXPECT_EQ(str(c.line), c.text) << c.line;
  EXPECT_TRUE(nil("string(\"abc\")"));
}

TEST_F(Fct0Test, StringfDecimals) {
  EXPECT_EQ(str("stringf(1.5,2)"), "1.500,2.000");
  EXPECT_EQ(str("stringf(\"2 1\",3.14159,2.5)"), "3.14,2.5");
  EXPECT_EQ(str("stringf(\"0\",2.6)"), "3");
  EXPECT_EQ(str("stringf(\"1\",-0.25,4)"), "-0.2,4.000");
  EXPECT_TRUE(nil("stringf(\"abc\")"));
}

TEST_F(Fct0Test, FormatReadsNumbersByDescriptor) {
  expect_floats(floats("format(\"<x,x,1>3 4\")"), {3, 4, 1}, "constant");
  expect_floats(floats("format(\"<*x>10 20\")"), {20}, "skip");
  expect_floats(floats("format(\"<x-2.5x>1 2\")"), {1, -2.5f, 2}, "signed constant");
  expect_floats(floats("format(\"<xxx>7,8\")"), {7, 8, 0}, "text exhausted");
  expect_floats(floats("format(\"<a b>1.5e2\t-4\")"), {150, -4}, "blank passed over");
  Outcome r = run("format(\"abc\")");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("format(\"<descriptif>string\")"), std::string::npos);
  EXPECT_LT(run("format(\"<x 1 2\")").status, 0);
}

TEST_F(Fct0Test, FormatHtmlThroughTheCodeTable) {
  Outcome none = run("format(\"<htm>a<b\")");
  EXPECT_LT(none.status, 0);
  EXPECT_NE(none.out.find("HTML CODE NOT DEFINED"), std::string::npos);
  kernel().htm_table[static_cast<int>('<')] = "&lt;";
  kernel().htm_table[static_cast<int>('&')] = "&amp;";
  EXPECT_EQ(str("format(\"<htm>a<b&c\")"), "a&lt;b&amp;c");
  for (auto& e : kernel().htm_table) e.clear();
}

TEST_F(Fct0Test, FormatLettersOnVectors) {
  std::vector<float> bits = floats("format(\"b\",5,-1)");
  ASSERT_EQ(bits.size(), 64u);
  for (int i = 0; i < 32; i++) EXPECT_EQ(bits[i], i == 0 || i == 2 ? 1.0f : 0.0f) << i;
  for (int i = 32; i < 64; i++) EXPECT_EQ(bits[i], 1.0f) << i;
  expect_floats(floats("format(\"c\",1,0,1)"), {5}, "bits packed back");
  expect_floats(floats("format(\"f\",1.25,-2.5)"), {0.25f, -0.5f}, "fractions");
  expect_floats(floats("format(\"m\",3,1,2)"), {1, 3}, "bounds");
  EXPECT_LT(run("format(\"q\",1)").status, 0);
}

TEST_F(Fct0Test, BytesAndNumbers) {
  expect_floats(floats("ascii(\"AB\xff\")"), {65, 66, 255}, "unsigned bytes");
  EXPECT_EQ(str("ascii(72,105.9)"), "Hi");
  expect_floats(floats("atof(\"1.5, 2\t3\")"), {1.5f, 2, 3}, "runs of separators");
  expect_floats(floats("atof(\",1\")"), {0, 1}, "a leading separator makes an empty word");
  expect_floats(floats("atof(\"1e3\")"), {1000}, "exponent");
  expect_floats(floats("atoi(\"12 -3x +4 1.9\")"), {12, -3, 4, 1}, "integer reader");
}

TEST_F(Fct0Test, InclusionPositions) {
  // Among the others (1 2 3 2), the 2 stands at 1 and 3.
  expect_floats(floats("inclu(2,1,2,3,2)"), {1, 3}, "floats");
  EXPECT_TRUE(nil("inclu(9,1,2)"));
  expect_floats(floats("inclu(\"aa aaa\")"), {0, 1}, "overlapping");
  expect_floats(floats("inclu(\"ab xabab\")"), {1, 3}, "text");
  EXPECT_TRUE(floats("inclu(\"zz abc\")").empty());
  EXPECT_FLOAT_EQ(one("inclu(\"sin\")"), static_cast<float>(KW_sin));
  EXPECT_FLOAT_EQ(one("inclu(\"nokeyword\")"), -1.0f);
}

// ---- random numbers -------------------------------------------------------------

TEST_F(Fct0Test, RandomRanges) {
  for (int i = 0; i < 200; i++) {
    std::vector<float> r = floats("rand(10,-5,0,1)");
    ASSERT_EQ(r.size(), 4u);
    EXPECT_TRUE(r[0] >= 0 && r[0] <= 9 && r[0] == std::trunc(r[0])) << r[0];
    EXPECT_TRUE(r[1] >= -4 && r[1] <= 0 && r[1] == std::trunc(r[1])) << r[1];
    EXPECT_EQ(r[2], 0.0f);
    EXPECT_EQ(r[3], 0.0f);
    std::vector<float> f = floats("randf(2,-2,0.00001)");
    EXPECT_TRUE(f[0] >= 0 && f[0] < 2) << f[0];
    EXPECT_TRUE(f[1] > -2 && f[1] <= 0) << f[1];
    EXPECT_EQ(f[2], 0.0f);
    std::vector<float> p = floats("rand2(3,6,-2,-2)");
    ASSERT_EQ(p.size(), 2u);
    EXPECT_TRUE(p[0] >= 3 && p[0] <= 5 && p[0] == std::trunc(p[0])) << p[0];
    EXPECT_EQ(p[1], -2.0f);
    float q = one("rand2f(1,2)");
    EXPECT_TRUE(q >= 1 && q < 2) << q;
  }
  Outcome r = run("rand2f(3)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("(x,y)"), std::string::npos);
}

// ---- files ----------------------------------------------------------------------

class Fct0Files : public Fct0Test {
 protected:
  void SetUp() override {
    Fct0Test::SetUp();
    dir = std::filesystem::temp_directory_path() / ("orvela_fct0_" + std::to_string(thread_id()));
    std::filesystem::create_directories(dir);
    data = (dir / "data.txt").string();
    ASSERT_TRUE(ecrit_fichier(data, std::string_view("first line\n\n  second\tword here\nlast")));
  }
  void TearDown() override {
    Fct0Test::TearDown();
    std::filesystem::remove_all(dir);
  }
  std::string quoted(const std::string& name) { return "\"" + (dir / name).string() + "\""; }
  std::filesystem::path dir;
  std::string data;
};

TEST_F(Fct0Files, LinesAndWords) {
  EXPECT_FLOAT_EQ(one("fopen(" + quoted("data.txt") + ")"), 1.0f);
  EXPECT_EQ(str("getline(1)"), "first line");
  EXPECT_EQ(str("getword(1)"), "second");  // blank line and blanks skipped
  EXPECT_EQ(str("getword(1)"), "word");
  EXPECT_EQ(str("getline(1)"), "here");
  EXPECT_EQ(str("getline(1)"), "last");    // no newline at the end
  EXPECT_TRUE(nil("getline(1)"));
  EXPECT_TRUE(nil("fclose(1)"));
  Outcome r = run("getline(1)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("NOT FOUND"), std::string::npos);
}

TEST_F(Fct0Files, ReadWriteAndAppend) {
  EXPECT_FLOAT_EQ(one("fopen(" + quoted("out.txt") + ") fwrite"), 1.0f);
  // "abc " then 1.5 as "%f ".
  EXPECT_FLOAT_EQ(one("fwrite(1,\"abc \",1.5)"), 13.0f);
  EXPECT_TRUE(nil("fclose(1)"));
  EXPECT_EQ(str("fread(" + quoted("out.txt") + ")"), "abc 1.500000 ");
  EXPECT_FLOAT_EQ(one("fopen(" + quoted("out.txt") + ") add"), 1.0f);
  EXPECT_FLOAT_EQ(one("fwrite(1,2,3)"), 18.0f);
  EXPECT_TRUE(nil("fclose"));
  EXPECT_EQ(str("fread(" + quoted("out.txt") + ")"), "abc 1.500000 2.000000 3.000000 ");

  EXPECT_FLOAT_EQ(one("fopen(" + quoted("data.txt") + ")"), 1.0f);
  EXPECT_EQ(str("getline(1)"), "first line");
  EXPECT_EQ(str("fread(1)"), "\n  second\tword here\nlast");
  EXPECT_TRUE(nil("fread(1)"));
}

TEST_F(Fct0Files, FaultsAreReported) {
  Outcome close = run("fclose(7)");
  EXPECT_LT(close.status, 0);
  EXPECT_EQ(close.out, "fclose 7\n");
  Outcome missing = run("fopen(" + quoted("none.txt") + ")");
  EXPECT_LT(missing.status, 0);
  EXPECT_NE(missing.out.find("READ ERROR"), std::string::npos);
  EXPECT_LT(run("fread(" + quoted("none.txt") + ")").status, 0);
  EXPECT_LT(run("fwrite(3,\"x\")").status, 0);
  // Twenty slots, then no more.
  for (int i = 1; i <= 20; i++) EXPECT_FLOAT_EQ(one("fopen(" + quoted("data.txt") + ")"), static_cast<float>(i));
  Outcome full = run("fopen(" + quoted("data.txt") + ")");
  EXPECT_LT(full.status, 0);
  EXPECT_NE(full.out.find("OVERFLOW"), std::string::npos);
  EXPECT_TRUE(nil("fclose(5)"));
  EXPECT_FLOAT_EQ(one("fopen(" + quoted("data.txt") + ")"), 5.0f);  // the freed slot
}

TEST_F(Fct0Files, GrepInFiles) {
  ASSERT_TRUE(ecrit_fichier((dir / "g.txt").string(), std::string_view("abab ab")));
  Outcome r = run("grep(\"ab\") fread(" + quoted("g.txt") + ")");
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "3 occurences in file " + (dir / "g.txt").string() + "\n");
  EXPECT_FLOAT_EQ(wf(r.value[4]), 3.0f);
  r = run("grep(\"line\") fread(" + quoted("data.txt") + ")");
  EXPECT_EQ(r.out, "1 occurence in file " + data + "\n");
}

// ---- folders, the error word, functions -------------------------------------------

TEST_F(Fct0Test, Folders) {
  EXPECT_EQ(str("directory(\"a/b/c.txt\")"), "a/b/");
  EXPECT_EQ(str("directory(\"c.txt\")"), "./");
  EXPECT_EQ(str("directory(\"/x\")"), "/");
  kernel().exe = "bin/";
  EXPECT_EQ(str("directory(\"exe\")"), "bin/");
  kernel().exe = "exe/";
  EXPECT_EQ(str("directory"), working_directory() + "/");
  EXPECT_EQ(str("directory(3)"), working_directory() + "/");
}

TEST_F(Fct0Test, ErrorWord) {
  EXPECT_TRUE(nil("error"));
  EXPECT_TRUE(nil("error(37.9)"));
  EXPECT_EQ(str("error"), "error");
  EXPECT_TRUE(nil("error(\"cos\")"));
  EXPECT_EQ(fct0_state().Erreur_code, KW_cos);
  EXPECT_TRUE(nil("error(\"nokeyword\")"));
  EXPECT_EQ(str("error"), "cos");
  Outcome r = run("error(1600)");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("error = 1600 != [0,1599]"), std::string::npos);
  EXPECT_EQ(str("error"), "cos");
  // precision without `time` runs the same body.
  EXPECT_EQ(str("precision"), "cos");
  EXPECT_TRUE(nil("precision(0)"));
  EXPECT_TRUE(nil("error"));
}

TEST_F(Fct0Test, FunctionTexts) {
  {
    Capture quiet;
    ASSERT_NE(define_function("fct0a(xq){return xq;}"), nullptr);
    ASSERT_NE(define_function("fct0b(y){uniq=1; uniq=uniq+1; return uniq;}"), nullptr);
  }
  std::string all = " " + str("func") + " ";
  EXPECT_NE(all.find(" fct0a fct0b "), std::string::npos) << all;
  EXPECT_EQ(str("func(\"fct0a\")"), "fct0a(xq){return xq;}");
  Outcome missing = run("func(\"fct0z\")");
  EXPECT_LT(missing.status, 0);
  EXPECT_NE(missing.out.find("NOT FOUND"), std::string::npos);

  Outcome listed = run("func(\"fct0a\") compile");
  EXPECT_EQ(listed.status, 0);
  EXPECT_EQ(listed.out.rfind("COMPILE\n", 0), 0u) << listed.out;
  EXPECT_NE(listed.out.find("return"), std::string::npos) << listed.out;

  Outcome g = run("grep(\"uniq\")");
  EXPECT_EQ(g.out, "4 occurences fct0b\n");
  EXPECT_FLOAT_EQ(wf(g.value[4]), 4.0f);
  g = run("grep(\"return xq\")");
  EXPECT_EQ(g.out, "1 occurence fct0a\n");

  fct0_state().Tab_noms_err = {"f1", "f2"};
  EXPECT_EQ(str("func error"), "f1 f2");
  EXPECT_TRUE(nil("func error(0)"));
  EXPECT_TRUE(fct0_state().Tab_noms_err.empty());
  EXPECT_EQ(str("func error"), "");
}

TEST_F(Fct0Test, TypedCopies) {
  EXPECT_EQ(str("char(\"ab\")"), "ab");
  expect_floats(floats("float(1,2)"), {1, 2}, "float");
  EXPECT_LT(run("char(1)").status, 0);
  EXPECT_LT(run("float(\"a\")").status, 0);
}

// ---- pulses and waits ---------------------------------------------------------------

TEST_F(Fct0Test, Oscillator) {
  EXPECT_FLOAT_EQ(one("puls(0,0,10,4)"), 5.0f);    // sin 0
  EXPECT_FLOAT_EQ(one("puls(1,0,10,4)"), 10.0f);   // sin pi/2
  EXPECT_NEAR(one("puls(3,0,10,4)"), 0.0f, 1e-5f); // sin 3pi/2
  EXPECT_NEAR(one("puls(0.5,0,10,4,0,2)"), 7.5f, 1e-4f);  // (sin pi/4)^2 = 1/2
  EXPECT_NEAR(one("puls(0,0,10,4,1.5707964)"), 10.0f, 1e-4f);  // phase
  EXPECT_FLOAT_EQ(one("puls(3,5,10,0)"), 5.0f);    // no period: a
  EXPECT_FLOAT_EQ(one("puls(1,2)"), 2.0f);         // missing elements are 0
}

TEST_F(Fct0Test, PulseObjectsStep) {
  EXPECT_TRUE(nil("puls(\"fct0p\") dim(1,2)"));
  float seq[] = {0, 1, 1, 0, 0};
  for (float want : seq) EXPECT_FLOAT_EQ(one("puls(\"fct0p\")"), want);
  EXPECT_TRUE(nil("puls(\"fct0s\") dim(0,2) sin"));
  EXPECT_NEAR(one("puls(\"fct0s\")"), 0.0f, 1e-6f);
  EXPECT_NEAR(one("puls(\"fct0s\")"), 1.0f, 1e-6f);
  EXPECT_NEAR(one("puls(\"fct0s\")"), 0.0f, 1e-6f);
  // Redefining starts again; the length defaults to 1.
  EXPECT_TRUE(nil("puls(\"fct0p\") dim(0)"));
  EXPECT_FLOAT_EQ(one("puls(\"fct0p\")"), 1.0f);
  EXPECT_FLOAT_EQ(one("puls(\"fct0p\")"), 0.0f);
  Outcome r = run("puls(\"fct0unknown\")");
  EXPECT_LT(r.status, 0);
  EXPECT_NE(r.out.find("NOT FOUND"), std::string::npos);
}

TEST_F(Fct0Test, WaitCountsImages) {
  kernel().tim.clear();
  EXPECT_TRUE(nil("wait(100000)"));  // no time base: no wait at all
  EXPECT_FLOAT_EQ(one("wait(1000,0)"), 0.0f);
  EXPECT_FLOAT_EQ(one("wait(0,1000)"), 1.0f);
  EXPECT_FLOAT_EQ(one("wait(0,1000)"), 2.0f);
  EXPECT_FLOAT_EQ(one("wait(1000,0)"), 0.0f);  // a new start clears the count
  EXPECT_FLOAT_EQ(one("wait(0,0)"), 1.0f);     // the stored rate
}

}  // namespace
