// Compile time of a 5,000-line function: source preparation, the walk,
// the parenthesising and the link, repeated; prints lines a minute.
#include <chrono>
#include <cstdio>
#include <string>

#include "kernel/bloc.h"
#include "kernel/kernel.h"
#include "kernel/vocab.h"
#include "language/compile.h"
#include "language/functions.h"
#include "platform/console_io.h"

namespace {

// A function of `lines` lines of varied statements.
std::string source(int lines) {
  std::string s = "big(a,b){\n static t=0;\n";
  for (int i = 0; s.size() < 1 || i < lines - 4; i++) {
    switch (i % 8) {
      case 0: s += " x" + std::to_string(i % 50) + "=a+b*" + std::to_string(i) + "-(a,b)[1];\n"; break;
      case 1: s += " if(x1<x2) { y=sin x1+cos(x2); } else { y=0; }\n"; break;
      case 2: s += " for(i=0,10){ t=t+i*2; }\n"; break;
      case 3: s += " while(t>100){ t=t/2; } // halve\n"; break;
      case 4: s += " v=\"text\",\"more\"; w=v[0,2];\n"; break;
      case 5: s += " switch(t){case 1: t=2; break; default: t=t+1;}\n"; break;
      case 6: s += " /* a comment */ z=(a||b)&&(x3>=x4);\n"; break;
      default: s += " k++; m=[1,5]+k;\n"; break;
    }
  }
  return s + " return(t);\n}\n";
}

}  // namespace

int main() {
  std::string sink;
  out_capture(&sink);
  env_minimal();
  kernel().etat_console = 1;
  const int lines = 5000, rounds = 20;
  std::string text = source(lines);
  Objet* f = define_function(text.c_str());
  auto start = std::chrono::steady_clock::now();
  for (int r = 0; r < rounds; r++) {
    libere_bloc(f->code);
    f->code = nullptr;
    if (a_compile(f) < 0 || lier_fonction(f) < 0) {
      out_capture(nullptr);
      printf("compile failed:\n%s\n", sink.c_str());
      return 1;
    }
  }
  double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  out_capture(nullptr);
  printf("%d lines compiled and linked %d times in %.3f s: %.0f lines a minute (%.1f ms a compile)\n", lines, rounds, s,
         lines * rounds / s * 60, s / rounds * 1000);
  return 0;
}
