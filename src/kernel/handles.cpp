#include "kernel/handles.h"

#include <vector>

#include "kernel/bloc.h"
#include "kernel/objet.h"

namespace {

struct HandleRegistry {
  std::vector<HandleEntry> entries{{nullptr, H_FREE, 0}};  // slot 0 stands for null
  std::vector<word> free_list;
  int used = 0;
};

// A plain global: handle lookups are on the interpreter's hot path.
HandleRegistry the_registry;
inline HandleRegistry& registry() { return the_registry; }

}  // namespace

// Empty until the first handle is made: every lookup before then is null.
HandleEntry* handle_table = nullptr;
word handle_table_size = 0;

// Keeps the inline lookups' view of the table current.
static void publish(const HandleRegistry& r) {
  handle_table = const_cast<HandleEntry*>(r.entries.data());
  handle_table_size = static_cast<word>(r.entries.size());
}

word handle_new(void* address, HandleKind kind) {
  HandleRegistry& r = registry();
  word h;
  if (!r.free_list.empty()) {
    h = r.free_list.back();
    r.free_list.pop_back();
    r.entries[h].address = address;
    r.entries[h].kind = kind;
  } else {
    h = static_cast<word>(r.entries.size());
    r.entries.push_back({address, kind, 0});
    publish(r);
  }
  r.used++;
  return h;
}

void handle_release(word h) {
  HandleRegistry& r = registry();
  if (h <= 0 || h >= static_cast<word>(r.entries.size()) || r.entries[h].kind == H_FREE) return;
  r.entries[h].address = nullptr;
  r.entries[h].kind = H_FREE;
  r.entries[h].generation++;
  r.free_list.push_back(h);
  r.used--;
}

int handle_count() { return registry().used; }

word mem_handle(const void* p) {
  if (!p) return 0;
  MemHeader* m = mem_header(p);
  if (m->handle == 0) m->handle = handle_new(const_cast<void*>(p), H_MEM);
  return m->handle;
}

void* handle_mem(word h) { return handle_address(h, H_MEM); }

void mem_handle_forget(const void* p) {
  MemHeader* m = mem_header(p);
  handle_release(m->handle);
  m->handle = 0;
}

word bloc_handle(const word* b) { return mem_handle(b); }
bloc handle_bloc(word h) { return static_cast<bloc>(handle_mem(h)); }

word objet_handle_new(Objet* o) {
  o->handle = handle_new(o, H_OBJET);
  return o->handle;
}

RefObjet ref_objet(Objet* o) {
  const word h = objet_handle(o);
  return {h, h ? handle_table[h].generation : 0u};
}

void objet_handle_forget(Objet* o) {
  handle_release(o->handle);
  o->handle = 0;
}
