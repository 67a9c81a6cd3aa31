// The one registry of 32-bit handles. Words are 32 bits and pointers 64,
// so wherever a word holds a pointer (slots of PROPRIETES, OBJETS and
// MALLOCS lists, CHAINE heads, code tokens naming objects) it holds a
// handle. Handle 0 means null. Lookups both ways are O(1): the registry
// is a vector of addresses with a free list, and each heap block and
// object record keeps its own handle.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// What a handle designates, so that a handle of one sort never resolves
// as the other.
enum HandleKind : unsigned char { H_FREE = 0, H_MEM = 1, H_OBJET = 2 };

// The registry's table, read inline by the lookups below: slot h holds the
// address and sort of handle h; slot 0 stands for null.
struct HandleEntry {
  void* address;
  HandleKind kind;
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
