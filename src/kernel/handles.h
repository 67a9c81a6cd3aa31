// The one registry of 32-bit handles. Words are 32 bits and pointers 64,
// so wherever a word holds a pointer (slots of PROPRIETES, OBJETS and
// MALLOCS lists, CHAINE heads, code tokens naming objects) it holds a
// handle. Handle 0 means null. Lookups both ways are O(1): the registry
// is a vector of addresses with a free list, and each heap block and
// object record keeps its own handle.
#pragma once
#include <cstdint>
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// What a handle designates, so that a handle of one sort never resolves
// as the other.
enum HandleKind : unsigned char { H_FREE = 0, H_MEM = 1, H_OBJET = 2 };

// The registry's table, read inline by the lookups below: slot h holds the
// address and sort of handle h; slot 0 stands for null. A slot's
// generation counts the times it was given back, so that a handle kept
// past its object's end never names the next object given that slot.
struct HandleEntry {
  void* address;
  HandleKind kind;
  uint32_t generation;
};
extern HandleEntry* handle_table;
extern word handle_table_size;

word handle_new(void* address, HandleKind kind);
void handle_release(word h);
inline void* handle_address(word h, HandleKind kind) {
  if (h <= 0 || h >= handle_table_size) return nullptr;
  const HandleEntry& e = handle_table[h];
  return e.kind == kind ? e.address : nullptr;
}
// Handles in use (tests and the memory commands).
int handle_count();

// Heap memory from alloue_bloc or alloue_mem: the handle lives in the
// hidden word in front of the block and is made on first request.
word bloc_handle(const word* b);
bloc handle_bloc(word h);
word mem_handle(const void* p);
void* handle_mem(word h);
// Called by the allocator when the memory goes back.
void mem_handle_forget(const void* p);

word objet_handle_new(Objet* o);
inline Objet* handle_objet(word h) { return static_cast<Objet*>(handle_address(h, H_OBJET)); }
inline word objet_handle(Objet* o) {
  if (!o) return 0;
  return o->handle ? o->handle : objet_handle_new(o);
}
void objet_handle_forget(Objet* o);

// An object held across code that may remove objects (a walk that runs
// the user's functions on each): null once that object is gone, even when
// another has been made since in its place, with its number, its address
// or its handle.
struct RefObjet {
  word handle = 0;
  uint32_t generation = 0;
};
RefObjet ref_objet(Objet* o);
inline Objet* objet_ref(RefObjet r) {
  Objet* o = handle_objet(r.handle);
  return o && handle_table[r.handle].generation == r.generation ? o : nullptr;
}
// The objects held, each looked up again before its turn: f runs on
// those still there when their turn comes; a negative result of f stops
// the walk and is returned, else 0.
template <class F>
int pour_chaque_objet_vivant(const std::vector<RefObjet>& refs, F&& f) {
  for (RefObjet r : refs)
    if (Objet* o = objet_ref(r)) {
      const int k = f(o);
      if (k < 0) return k;
    }
  return 0;
}
