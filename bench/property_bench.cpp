// Setting and reading a property on 10,000 volumes, through the console
// commands: one command that selects them all (`col vol(v)=...` then
// `col vol(v)`), and a loop of one command per volume, whose lookups scan
// the chain. Best of several rounds; prints milliseconds.
#include "bench_console.h"

int main() {
  if (!bench::start()) return 1;
  const double create = bench::best_ms("v=[1,10000]; vol(v);", 1);
  const double all = bench::best_ms("col vol(v)=1,0.5,0; x=col vol(v); if(NP(x)!=10000) print(\"short\");", 20);
  const double loop = bench::best_ms("for(i=1,10000){col vol(i)=1,0,0; x=col vol(i);}", 3);
  bench::stop();
  if (create < 0 || all < 0 || loop < 0) return 1;
  printf("10000 volumes created by one command:              %8.2f ms\n", create);
  printf("set and read col on all of them, one command each: %8.2f ms (target 50 ms)\n", all);
  printf("set and read col volume by volume (linear lookups): %7.2f ms\n", loop);
  return bench::sink().find("short") == std::string::npos ? 0 : 1;
}
