#include "kernel/object_store.h"

#include <cstring>
#include <new>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/vocab.h"

bool est_objet_langage(int kind) {
  switch (kind) {
    case -KW_extern: case -KW_auto: case KW_func: case -KW_static: case T_CODE: case T_CODE_OBJ:
      return true;
    default:
      return false;
  }
}

static bool est_fonction(const Objet* o) {
  return o->kind == KW_func || o->subkind == KW_func || o->kind2 == KW_func;
}

// Records are allocated one by one and counted in the object count.
static Objet* alloue_objet() {
  Objet* o = new (std::nothrow) Objet{};
  if (!o) {
    err_malloc(nullptr, static_cast<long>(sizeof(Objet)));
    return nullptr;
  }
  bloc_state().object_count++;
  return o;
}

// With `no rem` the record stays in memory, unlinked.
static void libere_objet(Objet* o) {
  bloc_state().object_count--;
  if (Yes(KW_rem) <= 0) return;
  objet_handle_forget(o);
  delete o;
}

char* copie_nom(const char* name) {
  if (!name || !*name) return nullptr;
  const size_t len = std::strlen(name);
  char* copy = static_cast<char*>(alloue_mem(len + 2));
  if (copy) std::memcpy(copy, name, len + 1);
  return copy;
}

void lie_en_queue(Objet* head, Objet* o) {
  Objet* tail = head->tail ? head->tail : head;
  while (tail->next) tail = tail->next;
  tail->next = o;
  o->prev = tail;
  o->head = head;
  o->unsaved = 1;  // new in its chain: in no file yet
  head->tail = o;
  if (head->members) {
    o->member = static_cast<int>(head->members->size());
    head->members->push_back({o, o->id});
  }
}

// Emptied slots are squeezed out once they are half of the list.
static void resserre(Objet* head) {
  std::vector<Objet::Member>& m = *head->members;
  size_t kept = 0;
  for (const Objet::Member& e : m)
    if (e.o) {
      e.o->member = static_cast<int>(kept);
      m[kept++] = e;
    }
  m.resize(kept);
  head->members_empty = 0;
}

static void delie(Objet* o) {
  Objet* head = o->head;
  if (head && head->tail == o) head->tail = o->prev != head ? o->prev : nullptr;
  if (head && head->members && o->member >= 0) {
    (*head->members)[static_cast<size_t>(o->member)] = {nullptr, 0};
    if (++head->members_empty > 32 && 2 * static_cast<size_t>(head->members_empty) > head->members->size())
      resserre(head);
  }
  if (o->prev) o->prev->next = o->next;
  if (o->next) o->next->prev = o->prev;
  o->next = o->prev = nullptr;
  o->head = nullptr;
  o->member = -1;
}

void delie_objet(Objet* o) { delie(o); }

void deplace_objet(Objet* o, Objet* head) {
  delie(o);
  lie_en_queue(head, o);
}

void objet_numero(Objet* o, int id) {
  o->id = id;
  if (o->head && o->head->members && o->member >= 0) (*o->head->members)[static_cast<size_t>(o->member)].id = id;
}

void chaine_ini(Objet* head) {
  const word h = head->handle;
  std::vector<Objet::Member>* members = head->members;
  *head = Objet{};
  head->handle = h;
  head->kind = T_CHAINE;
  head->members = members;
  if (members) members->clear();
}

Objet* cre_objet(Objet* head, int kind, int subkind, const word* value, const char* name, int id) {
  Objet* o = alloue_objet();
  if (!o) return nullptr;
  o->kind = kind;
  o->subkind = subkind;
  o->id = id;
  if (value && value[0] != 0 && !(o->local = dup_bloc(value))) {
    libere_objet(o);
    TRACE_FAIL("cre_objet()");
    return nullptr;
  }
  o->name = copie_nom(name);
  o->valid = 1;
  lie_en_queue(head, o);
  return o;
}

// The sub-objects of a language object, functions excepted.
static void rem_enfants(Objet* o) {
  for (Objet* c = o->child; c;) c = est_fonction(c) ? c->next : rem_objet(c);
  o->child = nullptr;
}

static void rem_locals(Objet* o) {
  if (o->locals && o->locals->kind == T_CHAINE)
    rem_chaine_privee(o->locals);
  else
    rem_objet(o->locals);
  o->locals = nullptr;
}

// What a record owns goes with it. A plain record (kind 0) owns its name
// and value like any other, since creation copies both.
static void libere_contenu(Objet* o) {
  switch (o->kind) {
    case T_CHAINE: case T_STACKED:
      return;
    case -1056:
      libere_mem(o->name);
      o->name = nullptr;
      return;
    default:
      break;
  }
  libere_mem(o->name);
  o->name = nullptr;
  if (est_objet_langage(o->kind)) {
    libere_mem(o->local);
    rem_enfants(o);
  } else {
    libere_valeur(o->local);
    // A scene object's local functions hang from a private chain.
    if (o->child && o->child->kind == T_CHAINE) rem_chaine_privee(o->child);
    else rem_objet(o->child);
    o->child = nullptr;
  }
  o->local = nullptr;
  rem_locals(o);
  libere_mem(o->code);
  o->code = nullptr;
}

Objet* rem_objet(Objet* o) {
  if (!o) return nullptr;
  libere_contenu(o);
  Objet* suivant = o->next;
  delie(o);
  libere_objet(o);
  return suivant;
}

Objet* dup_objet(const Objet* o) {
  if (!o) return nullptr;
  Objet* d = alloue_objet();
  if (!d) return nullptr;
  *d = *o;
  d->handle = 0;
  d->name = nullptr;
  d->local = d->code = nullptr;
  d->child = d->locals = d->next = d->prev = nullptr;
  d->hook = nullptr;
  d->head = d->tail = nullptr;
  d->members = nullptr;
  d->members_empty = 0;
  d->member = -1;
  bool ok = true;
  if (o->name) ok = (d->name = copie_nom(o->name)) != nullptr;
  if (ok && o->local)
    ok = (d->local = est_objet_langage(o->kind) ? static_cast<bloc>(dup_mem(o->local))
                                                 : dup_bloc(o->local)) != nullptr;
  if (ok && o->code) ok = (d->code = static_cast<bloc>(dup_mem(o->code))) != nullptr;
  if (!ok) {
    rem_objet(d);
    TRACE_FAIL("dup_objet()");
    return nullptr;
  }
  return d;
}

void rem_chaine_privee(Objet* head) {
  if (!head) return;
  for (Objet* o = head->next; o;) o = rem_objet(o);
  rem_objet(head);
}

Objet* dup_chaine_privee(const Objet* head) {
  Objet* copy = alloue_objet();
  if (!copy) return nullptr;
  chaine_ini(copy);
  for (const Objet* o = head->next; o; o = o->next) {
    Objet* d = dup_objet(o);
    if (!d) {
      rem_chaine_privee(copy);
      TRACE_FAIL("dup_chaine_privee()");
      return nullptr;
    }
    lie_en_queue(copy, d);
  }
  return copy;
}

Objet* cre_chaine_privee() {
  Objet* head = alloue_objet();
  if (!head) return nullptr;
  chaine_ini(head);
  return head;
}
