// Compile and link time of deeply nested texts, by depth: each kind of
// nesting at 1,000 to 8,000 levels. The time a level takes should not
// grow with the depth.
#include <cstdio>
#include <string>

#include "bench_console.h"
#include "kernel/bloc.h"
#include "language/compile.h"
#include "language/functions.h"

namespace {

std::string repeat(const std::string& s, int n) {
  std::string r;
  for (int i = 0; i < n; i++) r += s;
  return r;
}

struct Kind {
  const char* name;
  std::string (*body)(int depth);
};

const Kind KINDS[] = {
    {"parentheses", [](int n) { return "return(" + repeat("(", n) + "1" + repeat(")", n) + ");"; }},
    {"brackets", [](int n) { return "x=" + repeat("[", n) + "1" + repeat("]", n) + ";"; }},
    {"calls", [](int n) { return "x=" + repeat("g(", n) + "1" + repeat(")", n) + ";"; }},
    {"if", [](int n) { return repeat("if(a) ", n) + "x=1;"; }},
    {"if{ break }", [](int n) { return "for(i=0,3){" + repeat("if(i){", n) + "break;" + repeat("}", n) + "}"; }},
    {"list", [](int n) { return "x=0" + repeat(",1", n) + ";"; }},
};

// Best of five compiles and links of f, in milliseconds; negative when
// the text was refused.
double compile_ms(Objet* f) {
  return bench::best_ms(5, [f] {
    libere_bloc(f->code);
    f->code = nullptr;
    return a_compile(f) >= 0 && lier_fonction(f) >= 0;
  });
}

}  // namespace

int main() {
  if (!bench::start()) return 1;
  std::string table = "depth      ";
  for (const Kind& k : KINDS) table += std::string(k.name) + std::string(14 - std::string(k.name).size(), ' ');
  table += "\n";
  for (int depth : {1000, 2000, 4000, 8000}) {
    char line[64];
    std::snprintf(line, sizeof line, "%-11d", depth);
    table += line;
    for (const Kind& k : KINDS) {
      Objet* f = define_function(("nest(a){" + k.body(depth) + "}").c_str());
      const double ms = f ? compile_ms(f) : -1;
      if (ms < 0) std::snprintf(line, sizeof line, "%-14s", "refused");
      else std::snprintf(line, sizeof line, "%-14.2f", ms);
      table += line;
    }
    table += "\n";
  }
  bench::stop();
  std::printf("compile and link, ms (best of 5)\n%s", table.c_str());
  return 0;
}
