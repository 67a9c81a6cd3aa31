// Translation lists: loading from files and variables, the refusals, the
// whole-string, in-text and single-word translators, reload and listing.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "kernel/kernel.h"
#include "kernel/translate.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"

namespace {

namespace fs = std::filesystem;

template <class F>
std::string captured(F f) {
  std::string out;
  out_capture(&out);
  f();
  out_capture(nullptr);
  return out;
}

std::map<std::string, std::string> g_vars;

int read_test_var(const char* name, std::string* text) {
  auto it = g_vars.find(name);
  if (it == g_vars.end()) return -1;
  if (it->second == "<float>") return -2;
  *text = it->second;
  return 0;
}

class Translate : public ::testing::Test {
 protected:
  fs::path dir;

  void SetUp() override {
    kernel_reset();
    vocab_reset();
    captured([] { env_minimal(); });
    kernel().etat_console = 1;
    Yes(KW_ring) = 1;
    const char* test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    dir = fs::temp_directory_path() / (std::string("orvela_translate_") + test);
    fs::create_directories(dir);
    set_translate_var_reader(nullptr);
  }
  void TearDown() override {
    captured([] { set_GENERATE_MESSAGE(nullptr, nullptr, TRANSLATE_FROM_FILE); });
    fs::remove_all(dir);
    kernel().etat_console = 0;
  }
  std::string file(const char* name, const char* text) {
    std::string path = (dir / name).string();
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  std::string mes(int n) { return vocab().mes[0][n]; }
  // English and French lists loaded from files.
  void load_pair() {
    std::string a = file("eng", "hello\nworld\ngood\ngood morning\n");
    std::string b = file("fra", "bonjour\nmonde\nbon\nbon matin\n");
    std::string out = captured([&] { EXPECT_EQ(set_GENERATE_MESSAGE(a.c_str(), b.c_str(), TRANSLATE_FROM_FILE), 0); });
    EXPECT_EQ(out, " TRANSLATE: " + a + " -> " + b + "\n");
    ASSERT_EQ(translation_state(), 2);
  }
};

TEST_F(Translate, MissingOrEqualNamesLeaveTranslationOff) {
  const char* pairs[][2] = {{nullptr, "b"}, {"a", ""}, {"same", "same"}, {"Voc_eng", "Voc_xxx"}};
  for (auto& p : pairs) {
    Yes(KW_generate) = 0;
    std::string out = captured([&] { EXPECT_EQ(set_GENERATE_MESSAGE(p[0], p[1], TRANSLATE_FROM_FILE), 0); });
    EXPECT_EQ(out, "NO TRANSLATE\n");
    EXPECT_EQ(Yes(KW_generate), -1);
    EXPECT_EQ(translation_state(), 0);
  }
}

TEST_F(Translate, ListsThatCannotBeUsed) {
  std::string two = file("two", "a\nb\n"), three = file("three", "x\ny\nz");
  std::string out = captured([&] { EXPECT_EQ(set_GENERATE_MESSAGE(two.c_str(), three.c_str(), '\\'), -1); });
  EXPECT_EQ(out, "(nb message 1 = 2) != (nb message 2 = 3)\a\n");
  EXPECT_EQ(translation_state(), 0);
  EXPECT_EQ(Yes(KW_generate), -1);

  // Equal prefixes with unequal tails count as identical lists.
  std::string longer = file("longer", "a\nbc");
  out = captured([&] { set_GENERATE_MESSAGE(two.c_str(), longer.c_str(), '\\'); });
  EXPECT_EQ(out, "NO TRANSLATE\n");

  std::string absent = (dir / "absent").string();
  out = captured([&] { EXPECT_EQ(set_GENERATE_MESSAGE(two.c_str(), absent.c_str(), '\\'), -1); });
  EXPECT_EQ(out, absent + ": " + mes(36) + "NO TRANSLATE\n");
  EXPECT_EQ(translation_state(), 0);
}

TEST_F(Translate, WholeStringLookup) {
  load_pair();
  std::string r;
  EXPECT_EQ(generate_message("world", 0, 0, &r), 0);
  EXPECT_EQ(r, "monde");
  EXPECT_EQ(generate_message("bon matin", 1, 1, &r), 0);
  EXPECT_EQ(r, "good morning") << "abs exchanges the lists";
  EXPECT_EQ(generate_message("world", 1, 0, &r), 0);
  EXPECT_EQ(r, "world") << "a negative parameter without abs returns the text";
  EXPECT_EQ(generate_message(nullptr, 0, 0, &r), 0);
  EXPECT_EQ(r, (dir / "fra").string());
  std::string out = captured([&] { EXPECT_EQ(generate_message("wor", 0, 0, &r), -1); });
  EXPECT_EQ(out, "wor not in vocabulary\a\n");
}

TEST_F(Translate, WithoutListsTheResultIsTheVocabularyName) {
  captured([] { set_GENERATE_MESSAGE("Voc_eng", "Voc_fra", 92); });
  std::string r;
  EXPECT_EQ(generate_message("x", 0, 0, &r), 0);
  EXPECT_EQ(r, "Voc_fra");
  EXPECT_EQ(translate_text("hello", 0, 100), "hello");
}

TEST_F(Translate, InTextTranslation) {
  load_pair();
  EXPECT_EQ(translate_text("hello world, bad!", 0, 1000), "bonjour monde, bad!");
  EXPECT_EQ(translate_text("say hello", 0, 1000), "say bonjour");
  // A word is copied whole when no entry starts at its first letter.
  EXPECT_EQ(translate_text("shello", 0, 1000), "shello");
  // First entry found wins: "good" comes before "good morning".
  EXPECT_EQ(translate_text("good morning", 0, 1000), "bon morning");
  EXPECT_EQ(translate_text("bonjour monde", 1, 1000), "hello world");
  EXPECT_EQ(translate_text("hello hello hello", 0, 10), "bonjour bo");
}

TEST_F(Translate, SingleWord) {
  load_pair();
  EXPECT_EQ(translate_word("world", 0), "monde");
  EXPECT_EQ(translate_word("monde", 1), "world");
  EXPECT_EQ(translate_word("worlds!", 0), "worlds");
  EXPECT_EQ(translate_word("hell", 0), "hell");
}

TEST_F(Translate, ListsFromVariables) {
  g_vars = {{"v_eng", "yes\nno"}, {"v_fra", "oui\nnon"}, {"v_num", "<float>"}};
  std::string out = captured([] { EXPECT_EQ(set_GENERATE_MESSAGE("v_eng", "v_fra", TRANSLATE_FROM_VAR), -1); });
  EXPECT_EQ(out, "var v_eng: " + mes(28) + "NO TRANSLATE\n") << "no reader: no variable exists";

  set_translate_var_reader(read_test_var);
  captured([] { EXPECT_EQ(set_GENERATE_MESSAGE("v_eng", "v_fra", TRANSLATE_FROM_VAR), 0); });
  EXPECT_EQ(translate_word("no", 0), "non");
  out = captured([] { EXPECT_EQ(set_GENERATE_MESSAGE("v_eng", "v_none", TRANSLATE_FROM_VAR), -1); });
  EXPECT_EQ(out, "var v_none: " + mes(28) + "NO TRANSLATE\n");
  out = captured([] { EXPECT_EQ(set_GENERATE_MESSAGE("v_eng", "v_num", TRANSLATE_FROM_VAR), -1); });
  EXPECT_NE(out.find(mes(22)), std::string::npos);
  EXPECT_EQ(translation_state(), 0);
}

TEST_F(Translate, ReloadCommandAndListing) {
  std::string out = captured([] { EXPECT_EQ(read_generate_message(" \t", '\\'), -1); });
  EXPECT_EQ(out, "read generate message (\"voc1,voc2\")\n");

  std::string a = file("a", "one\ntwo\n");
  std::string b = file("b", "un\ndeux\n");
  out = captured([&] { EXPECT_EQ(read_generate_message((a + " ,\t" + b + ",rest").c_str(), '\\'), 0); });
  EXPECT_EQ(out, " TRANSLATE: " + a + " -> " + b + "\n");
  std::string joined;
  out = captured([&] { joined = list_generate_message(); });
  EXPECT_EQ(out, "one -> un\ntwo -> deux\n");
  EXPECT_EQ(joined, "one -> un\ntwo -> deux");
}

}  // namespace
