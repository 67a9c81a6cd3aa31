// The block allocator: every bloc on the heap and every plain allocation
// (names, code, buffers) comes from here, so that the counters, the
// `no rem` switch, the debug registry Pile_alloc and the handles see them.
#pragma once
#include <cstddef>
#include <cstdint>

#include "kernel/word.h"

// Two hidden words in front of each allocation: the number of data words
// allocated, and the registry handle (0 until first asked). Two words
// keep what follows 8-byte aligned.
struct MemHeader {
  int32_t words;
  word handle;
};
inline MemHeader* mem_header(const void* p) {
  return reinterpret_cast<MemHeader*>(const_cast<char*>(static_cast<const char*>(p)) -
                                      sizeof(MemHeader));
}
// Words allocated behind a pointer from alloue_bloc or alloue_mem.
inline int mem_words(const void* p) { return mem_header(p)->words; }

struct BlocState {
  long live_blocks = 0;       // allocations not yet released
  long long total_words = 0;  // words ever requested from alloue_bloc
  int object_count = 0;       // object records in existence
  long long requests = 0;     // memory asked of the system, ever

  // Pile_alloc: table of live allocation addresses, debug mode only.
  // Off while pile_debut is null.
  void** pile_debut = nullptr;
  void** pile_libre = nullptr;  // first slot never used
  void** pile_fin = nullptr;
};

BlocState& bloc_state();

// Words a copy of `b` takes: its size, 2 for a token, 1 for an end mark.
inline int bloc_len(const word* b) { return b[0] > 0 ? b[0] : (b[0] < 0 ? 2 : 1); }

// Negative n: permanent block of -n words, its size stored negated.
bloc alloue_bloc(int n);
void libere_bloc(bloc p);
void* alloue_mem(size_t bytes);
void libere_mem(void* p);
// The system's free alone: no live count, no report (tags that carry no
// count, and the slots of a MALLOCS list).
void libere_mem_brut(void* p);
// Copy of a plain allocation, same length.
void* dup_mem(const void* p);
// Deep release by tag. Returns 0, or -1 on a malformed entry table.
int libere_valeur(bloc p);

int copie_bloc(bloc dst, const word* src);
bloc dup_bloc(const word* p);

// Pile_alloc on with n slots (0 or -1), and off again.
int pile_alloc_ini(int n);
void pile_alloc_fin();

// Memory check: walks a block and its nested blocks, reports the first
// whose sizes don't add up. Returns 0, or -1 when one was reported.
int verifie_bloc(const word* b);

// Word 1 of a property: SEGMENTS when made, or for a cached value 0
// (to be computed again) and 1 (computed).
inline bool mot_validite(word w) { return w == T_SEGMENTS || w == 0 || w == 1; }
// A block shaped as a property (keys, then a value) rather than as a
// command list.
bool est_propriete(const word* b);
// The value block of a property.
inline bloc propr_val(bloc p) { return p + p[2]; }
inline const word* propr_val(const word* p) { return p + p[2]; }
