// The real program fed arbitrary bytes on standard input and arbitrary
// command-line words: it must always end by itself with status 0.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct Rng {
  uint64_t s;
  explicit Rng(uint64_t seed) : s(seed * 2654435761u + 1) {}
  uint32_t next() {
    s ^= s << 13;
    s ^= s >> 7;
    s ^= s << 17;
    return static_cast<uint32_t>(s);
  }
  int below(int n) { return static_cast<int>(next() % static_cast<uint32_t>(n)); }
};

// Runs orvela with `args` in a fresh folder, `input` on standard input;
// returns the wait status.
int run(const std::vector<std::string>& args, const std::string& input) {
  char dir[] = "/tmp/orvela_robustXXXXXX";
  if (!mkdtemp(dir)) return -1;
  std::string in_path = std::string(dir) + "/.input";
  FILE* f = fopen(in_path.c_str(), "wb");
  if (!f) return -1;
  fwrite(input.data(), 1, input.size(), f);
  fclose(f);
  pid_t pid = fork();
  if (pid == 0) {
    if (chdir(dir) != 0 || !freopen(".input", "rb", stdin) || !freopen("/dev/null", "w", stdout))
      _exit(127);
    std::vector<char*> argv{const_cast<char*>("orvela")};
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    alarm(60);
    execv(ORVELA_BINARY, argv.data());
    _exit(127);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  std::string cleanup = std::string("rm -rf ") + dir;
  if (system(cleanup.c_str()) != 0) return -1;
  return status;
}

std::string random_bytes(Rng& r, size_t n) {
  std::string s(n, '\0');
  for (char& c : s) c = static_cast<char>(r.below(4) == 0 ? "\n\033\t {}()\"/*\\"[r.below(12)] : r.below(256));
  return s;
}

std::string random_word(Rng& r) {
  static const char* keys[] = {"ini=", "env=", "eva=", "com=", "emp=", "pri=", "esc=", "buf=", "lan=",
                               "mal=", "x=", "y=", "win=", "hei=", "cam=", "zbu=", "ale=", "dy=",
                               "rvb=", "voc1=", "voc2=", "mac=", "exe=", "tim=", "", "gra="};
  static const char* values[] = {"-1", "0", "1", "0.5", "2147483647", "-2147483648", "1e30", "abc",
                                 ",", "3,", ",4", "/", "/dev/zero", "..", "ful", "vid", "\033", "%s%n%d",
                                 "PC", "SGI", "99999999999999999999"};
  std::string w = keys[r.below(sizeof keys / sizeof *keys)];
  if (r.below(3) == 0) {
    for (int i = r.below(100); i > 0; i--) w.push_back(static_cast<char>(1 + r.below(255)));
  } else {
    w += values[r.below(sizeof values / sizeof *values)];
  }
  return w;
}

bool ended_normally(int status) { return WIFEXITED(status) && WEXITSTATUS(status) == 0; }

}  // namespace

TEST(Robustness, ArbitraryBytesOnStandardInput) {
  for (uint64_t seed = 1; seed <= 12; seed++) {
    Rng r(seed);
    size_t n = seed % 4 == 0 ? 200000 : static_cast<size_t>(r.below(5000));
    int status = run({"gra=0", "ID"}, random_bytes(r, n));
    EXPECT_TRUE(ended_normally(status)) << "seed " << seed << " status " << status;
  }
}

TEST(Robustness, ArbitraryCommandLineWords) {
  for (uint64_t seed = 1; seed <= 40; seed++) {
    Rng r(seed);
    std::vector<std::string> args{"gra=0", "ID"};
    for (int i = r.below(6); i >= 0; i--) args.push_back(random_word(r));
    int status = run(args, "x\n");
    std::string shown;
    for (const std::string& a : args) shown += a + " ";
    EXPECT_TRUE(ended_normally(status)) << shown << " status " << status;
  }
}
