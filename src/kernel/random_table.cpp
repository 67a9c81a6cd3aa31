#include "kernel/random_table.h"

#include <cstdint>
#include <new>

#include "kernel/kernel.h"
#include "kernel/report.h"

namespace {
uint64_t state = 0x853c49e6748fea9bULL;
}

void random_seed(unsigned seed) { state = 0x853c49e6748fea9bULL ^ (static_cast<uint64_t>(seed) << 1); }

// A 64-bit linear congruential generator; the top 24 bits give a float.
float random_uniform() {
  state = state * 6364136223846793005ULL + 1442695040888963407ULL;
  return static_cast<float>(state >> 40) / 16777216.0f;
}

void random_table_fill(int n) {
  std::vector<word>& t = kernel().random_table;
  t.clear();
  if (n <= 0) return;
  // Far beyond any use of the table: refused as an allocation failure
  // rather than taking gigabytes.
  if (n > (1 << 26)) {
    err_malloc("random_table_fill()", static_cast<long>(n) * 4);
    return;
  }
  try {
    t.resize(static_cast<size_t>(n));
  } catch (const std::bad_alloc&) {
    err_malloc("random_table_fill()", static_cast<long>(n) * 4);
    return;
  }
  for (int i = 0; i < n; i++) t[i] = fw(random_uniform());
}

float random_table_at(int i) {
  const std::vector<word>& t = kernel().random_table;
  if (t.empty()) return 0.0f;
  return wf(t[static_cast<size_t>(i) % t.size()]);
}

int random_table_size() { return static_cast<int>(kernel().random_table.size()); }
