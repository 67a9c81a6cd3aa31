#include "kernel/bloc.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "kernel/handles.h"
#include "kernel/report.h"
#include "kernel/resources.h"
#include "kernel/vocab.h"

BlocState& bloc_state() {
  static BlocState s;
  return s;
}

// `no rem` stops every release: memory stays, counters keep rising.
static bool release_on() { return Yes(KW_rem) > 0; }

// An address as the debug registry prints it.
static int adresse_int(const void* p) {
  return static_cast<int>(reinterpret_cast<uintptr_t>(p));
}

/* Pile_alloc */

int pile_alloc_ini(int n) {
  pile_alloc_fin();
  if (n <= 0) return -1;
  void** t = static_cast<void**>(std::calloc(static_cast<size_t>(n), sizeof(void*)));
  if (!t) return -1;
  BlocState& s = bloc_state();
  s.pile_debut = s.pile_libre = t;
  s.pile_fin = t + n;
  return 0;
}

void pile_alloc_fin() {
  BlocState& s = bloc_state();
  std::free(s.pile_debut);
  s.pile_debut = s.pile_libre = s.pile_fin = nullptr;
}

// The lowest zero slot, else the free pointer while below the end.
static void pile_note(void* p) {
  BlocState& s = bloc_state();
  if (!s.pile_debut) return;
  for (void** q = s.pile_debut; q < s.pile_libre; ++q)
    if (!*q) {
      *q = p;
      return;
    }
  if (s.pile_libre < s.pile_fin)
    *s.pile_libre++ = p;
  else
    VOIR_CHAR("%s", "Debordement de Pile_alloc\a\n");
}

static void** pile_cherche(const void* p) {
  BlocState& s = bloc_state();
  for (void** q = s.pile_debut; q < s.pile_libre; ++q)
    if (*q == p) return q;
  return nullptr;
}

// A slot at the top lowers the free pointer, others are zeroed.
static void pile_vide(void** q) {
  BlocState& s = bloc_state();
  *q = nullptr;
  if (q == s.pile_libre - 1) s.pile_libre--;
}

/* Allocation */

// Small blocks given back are kept by size and handed out again: what is
// taken and given back at each image (the values of a function's local
// variables) then never reaches the system's allocator. The sanitizer
// build gives every block back, so that it sees each use after release.
#if defined(__SANITIZE_ADDRESS__)
constexpr size_t POOL_WORDS = 0;
#else
constexpr size_t POOL_WORDS = 64;
#endif
constexpr int POOL_DEPTH = 256;

namespace {

struct Pool {
  MemHeader* kept[POOL_WORDS + 1][POOL_DEPTH];
  int count[POOL_WORDS + 1] = {};
};

Pool& pool() {
  static Pool p;
  return p;
}

}  // namespace

// Requests from this size on are first weighed against the memory the
// machine has left: the system would grant more than it has, and end a
// process when the pages are touched.
static constexpr size_t GRAND = 1u << 20;

static void* alloue_mots(size_t words) {
  MemHeader* m = nullptr;
  if (words <= POOL_WORDS && pool().count[words] > 0) {
    Pool& p = pool();
    m = p.kept[words][--p.count[words]];
  } else {
    const size_t bytes = sizeof(MemHeader) + words * sizeof(word);
    if (words > static_cast<size_t>(INT32_MAX) || (bytes >= GRAND && !memoire_disponible(static_cast<double>(bytes))))
      return nullptr;
    m = static_cast<MemHeader*>(std::malloc(bytes));
    if (!m) {
      memoire_manque();
      return nullptr;
    }
    bloc_state().requests++;
  }
  m->words = static_cast<int32_t>(words);
  m->handle = 0;
  return m + 1;
}

// Gives the memory back (to the pool, or to the system); `counted` lowers
// the live count.
static void rend(void* p, bool counted) {
  mem_handle_forget(p);
  MemHeader* m = mem_header(p);
  const size_t words = static_cast<size_t>(m->words);
  if (words <= POOL_WORDS && pool().count[words] < POOL_DEPTH) {
    Pool& q = pool();
    q.kept[words][q.count[words]++] = m;
  } else {
    std::free(m);
  }
  if (counted) bloc_state().live_blocks--;
}

bloc alloue_bloc(int n) {
  const bool permanent = n < 0;
  const size_t words = permanent ? -static_cast<int64_t>(n) : n;
  bloc b = n ? static_cast<bloc>(alloue_mots(words)) : nullptr;
  if (!b) {
    err_malloc(nullptr, static_cast<double>(words) * sizeof(word));
    return nullptr;
  }
  b[0] = permanent ? -static_cast<word>(words) : static_cast<word>(words);
  BlocState& s = bloc_state();
  s.live_blocks++;
  s.total_words += static_cast<long long>(words);
  pile_note(b);
  return b;
}

void* alloue_mem(size_t bytes) {
  const size_t words = bytes ? (bytes + sizeof(word) - 1) / sizeof(word) : 1;
  void* p = alloue_mots(words);
  if (!p) {
    err_malloc(nullptr, static_cast<double>(bytes));
    return nullptr;
  }
  bloc_state().live_blocks++;
  pile_note(p);
  return p;
}

void* dup_mem(const void* p) {
  if (!p) return nullptr;
  const size_t bytes = static_cast<size_t>(mem_words(p)) * sizeof(word);
  void* d = alloue_mem(bytes);
  if (d) std::memcpy(d, p, bytes);
  return d;
}

// The common release: with the registry on, an address it doesn't hold
// is a double release, reported and otherwise ignored. The registry is
// searched before word 0 is read, since a released block can't be read.
// `bloc_test` refuses a size word that is not positive; `counted` lowers
// the live count.
static void release(void* p, bool bloc_test, bool counted) {
  if (!release_on() || !p) return;
  void** slot = nullptr;
  if (bloc_state().pile_debut) {
    slot = pile_cherche(p);
    if (!slot) {
      voir_int("%d: Deja libere\a\n", adresse_int(p));
      return;
    }
  }
  if (bloc_test && static_cast<const word*>(p)[0] <= 0) return;
  if (slot) pile_vide(slot);
  rend(p, counted);
}

void libere_bloc(bloc p) { release(p, true, true); }
void libere_mem(void* p) { release(p, false, true); }
void libere_mem_brut(void* p) { release(p, false, false); }

int copie_bloc(bloc dst, const word* src) {
  if (!dst || !src || dst == src) return 0;
  if (src[0] == 0) {
    dst[0] = 0;
    return 1;
  }
  const int n = bloc_len(src);
  std::memmove(dst, src, static_cast<size_t>(n) * sizeof(word));
  return n;
}

bool est_propriete(const word* b) {
  if (!b || b[0] < 8 || !mot_validite(b[1]) || b[3] < 1) return false;
  const long off = b[2];
  return off == 2L * b[3] + 4 && off + 4 <= b[0] && b[off] > 0 && off + b[off] <= b[0];
}
