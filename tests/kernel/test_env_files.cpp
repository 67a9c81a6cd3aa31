// The shipped env/ folder and the built-in minimal environment must give the
// same vocabularies: codes, names, descriptors, defaults and messages.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "kernel/kernel.h"
#include "kernel/vocab.h"
#include "platform/console_io.h"

namespace {

struct Keyword {
  std::string name;
  int emp, sem, dim, type;
  std::vector<float> defaults;
  bool operator==(const Keyword&) const = default;
};

struct Snapshot {
  std::vector<Keyword> keywords[2];
  std::vector<std::string> messages[2];
};

Snapshot snapshot() {
  const VocabState& v = vocab();
  Snapshot s;
  for (int voc = 0; voc < 2; voc++) {
    for (int k = 0; k < v.nb_kw[voc]; k++) {
      int c = voc * KW_PER_VOC + k;
      s.keywords[voc].push_back({v.name[c], v.emp[c], v.sem[c], v.dim[c], v.type[c],
                                 std::vector<float>(v.defaults[c], v.defaults[c] + v.dim[c])});
    }
    s.messages[voc] = v.mes[voc];
  }
  return s;
}

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.good()) << path;
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string stripped(std::string text, int compact) {
  EXPECT_EQ(enlever_commentaires(text.data(), compact), 0);
  text.resize(std::char_traits<char>::length(text.c_str()));
  return text;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string l; std::getline(in, l);)
    if (!l.empty()) lines.push_back(l);
  return lines;
}

const std::string ENV_DIR = std::string(ORVELA_SOURCE_DIR) + "/env/";

class EnvFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    kernel_reset();
    vocab_reset();
    std::string out;
    out_capture(&out);
    env_minimal();
    out_capture(nullptr);
    EXPECT_EQ(out, "minimal environment without any file\n");
  }
};

TEST_F(EnvFiles, InitFileNamesTheTwoVocabularies) {
  std::vector<std::string> lines = lines_of(stripped(read_file(ENV_DIR + "initb.h"), 1));
  EXPECT_EQ(lines, (std::vector<std::string>{"env/", "enva.h,koma.h,mesa.h", "envb.h,komb.h,mesb.h"}));
}

TEST_F(EnvFiles, BothRoadsGiveTheSameVocabularies) {
  Snapshot minimal = snapshot();
  const char* files[2][3] = {{"enva.h", "koma.h", "mesa.h"}, {"envb.h", "komb.h", "mesb.h"}};
  const char* env_texts[2] = {ENV_TEXT_0, ENV_TEXT_1};
  vocab_reset();
  for (int voc = 0; voc < 2; voc++) {
    std::string env = stripped(read_file(ENV_DIR + files[voc][0]), 1);
    EXPECT_EQ(lines_of(env), lines_of(env_texts[voc]));
    EXPECT_GE(lire_kom(voc, stripped(read_file(ENV_DIR + files[voc][1]), 0).c_str()), 0);
    EXPECT_GE(lire_mes(voc, stripped(read_file(ENV_DIR + files[voc][2]), 0).c_str()), 0);
  }
  Snapshot from_files = snapshot();
  for (int voc = 0; voc < 2; voc++) {
    ASSERT_EQ(from_files.keywords[voc].size(), minimal.keywords[voc].size());
    for (size_t k = 0; k < minimal.keywords[voc].size(); k++)
      EXPECT_EQ(from_files.keywords[voc][k], minimal.keywords[voc][k]) << minimal.keywords[voc][k].name;
    EXPECT_EQ(from_files.messages[voc], minimal.messages[voc]);
  }
}

TEST_F(EnvFiles, MinimalEnvironmentMatchesTheKeywordCodes) {
  const VocabState& v = vocab();
  EXPECT_EQ(v.nb_voc, 2);
  EXPECT_EQ(v.nb_kw[0], 121);  // the built-in 120 and `reload`
  EXPECT_EQ(v.nb_kw[1], 161);
  struct { const char* name; int code; } spots[] = {
      {"aba", KW_aba}, {"yes", KW_yes}, {"reload", KW_reload}, {"no", KW_no}, {"above", KW_above}, {"zoom", KW_zoom},
      {"interaction", KW_interaction}, {"rand2", KW_rand2}, {"NL", KW_NL}, {"follow", KW_follow},
      {"generate", KW_generate}, {"segment", KW_segment}, {"text", KW_text}};
  for (auto s : spots) {
    int voc = -1, code = -1;
    ASSERT_EQ(cherche_mot(s.name, &voc, &code), 0) << s.name;
    EXPECT_EQ(code, s.code) << s.name;
    EXPECT_EQ(voc, s.code / KW_PER_VOC) << s.name;
  }
}

TEST_F(EnvFiles, MinimalEnvironmentDescriptorsAndDefaults) {
  const VocabState& v = vocab();
  EXPECT_FLOAT_EQ(v.defaults[KW_PI][0], 3.14159265358979f);
  EXPECT_EQ(v.dim[KW_frac], 6);
  EXPECT_EQ(v.current[KW_frac][5], 0.0f);
  EXPECT_EQ(v.dim[KW_neuron], 8);
  EXPECT_EQ(v.emp[KW_follow], 0);
  EXPECT_EQ(v.sem[KW_follow], 0);
  EXPECT_EQ(v.type[KW_follow], 1);
  EXPECT_EQ(v.dim[KW_back], 6);
  EXPECT_EQ(v.defaults[KW_back][5], 191.25f);
  EXPECT_EQ(v.dim[KW_link], 0);
  EXPECT_EQ(v.sem[KW_link], 1);
  EXPECT_EQ(v.sem[KW_pend], -10);
  EXPECT_EQ(v.type[KW_pend], 0);
  EXPECT_EQ(v.emp[KW_alea], 3);
  EXPECT_EQ(v.type[KW_clip], 2);
  EXPECT_EQ(v.type[KW_disk], 2);
  EXPECT_EQ(v.emp[KW_rota], 2);
  EXPECT_EQ(v.defaults[KW_period][0], 75.0f);
  EXPECT_EQ(v.dim[KW_min], 1);
  EXPECT_EQ(v.defaults[KW_poi][2], -1000.0f);
  EXPECT_EQ(v.sem[KW_edit], 1);
  EXPECT_EQ(v.sem[KW_ring], 0);
  EXPECT_EQ(v.type[KW_ring], 0);
}

TEST_F(EnvFiles, MinimalEnvironmentMessagesByPosition) {
  const VocabState& v = vocab();
  EXPECT_EQ(v.nb_mes[0], 119);
  EXPECT_EQ(v.nb_mes[1], 138);
  EXPECT_EQ(v.mes[0][0], " ?");
  EXPECT_EQ(v.mes[0][5], " SEE YOU SOON!...\n");
  EXPECT_EQ(v.mes[0][70], " FUNCTIONS HAVE NOT BEEN SAVED (0,1) ?\a");
  EXPECT_EQ(v.mes[0][76], " lire ... \"name\"\a\n");
  EXPECT_EQ(v.mes[0][107], " \nCOMPILATION ERROR\a\n");
  EXPECT_EQ(v.mes[0][118], " TOO_MANY");
  EXPECT_EQ(v.mes[0][23].rfind(" a: add\n", 0), 0u);
  // Labels of vocabulary 1 skip 14 and repeat 87; positions count.
  EXPECT_EQ(v.mes[1][13], " ???\n");
  EXPECT_EQ(v.mes[1][14], " not implemented texture\a\n");
  EXPECT_EQ(v.mes[1][87], " envelope error\a\n");
  EXPECT_EQ(v.mes[1][88], " split vertex(n1,n2,...) vol(id)\a\n");
  EXPECT_EQ(v.mes[1][45], " Right button: menu\nEscape: Fin\a\n");
  EXPECT_EQ(v.mes[1][131], " CHANGE THE VARIABLE THEN MIDDLE  BOTTON");
  EXPECT_EQ(v.mes[1][137], " DESIGNATE A VERTEX");
}

TEST_F(EnvFiles, MinimalEnvironmentKeepsTheGenerateSwitch) {
  vocab_reset();
  Yes(KW_generate) = -1;
  std::string out;
  out_capture(&out);
  env_minimal();
  out_capture(nullptr);
  EXPECT_EQ(Yes(KW_generate), -1);
  EXPECT_EQ(vocab().sem_ini[KW_generate], 0);
  EXPECT_EQ(kernel().env_text.size(), 2u);
}

}  // namespace
