// ORVELA with a probe of its memory: every operator new and every request
// of the kernel's allocator are counted, and the linked-in hook _F5 of the
// loop prints what images 30 to 230 of the first run asked for. The scene
// comes on standard input as for orvela.
#include <cstdio>
#include <cstdlib>
#include <new>

#include "app/orvela_main.h"
#include "interaction/loop_state.h"
#include "kernel/bloc.h"

namespace {

long long news = 0;
long long news_at = 0, requests_at = 0;
constexpr int FIRST = 30, LAST = 230;

int probe() {
  const int image = loop().images;
  if (image == FIRST) {
    news_at = news;
    requests_at = bloc_state().requests;
  } else if (image == LAST) {
    std::printf("probe: images %d to %d: %lld new, %lld blocks\n", FIRST, LAST, news - news_at,
                bloc_state().requests - requests_at);
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace

// The sanitizer build has allocators of its own: the probe counts there
// only the kernel's requests.
#if !defined(__SANITIZE_ADDRESS__)
void* operator new(std::size_t n) {
  news++;
  if (void* p = std::malloc(n ? n : 1)) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t n) { return operator new(n); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
#endif

int main(int argc, char** argv) {
  loop().F[5] = probe;
  orvela_main(argc, argv);
}
