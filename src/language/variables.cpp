#include "language/variables.h"

#include <cstring>

#include "kernel/chains.h"
#include "kernel/object_store.h"

int var_kind(const Objet* v) { return v->kind == T_ADDRESS ? v->work[VAR_DECLARED] : v->kind; }

Objet* var_find(const Objet* head, int kind, const char* name) {
  if (!head) return nullptr;
  for (Objet* o = head->next; o; o = o->next)
    if ((kind == 0 || var_kind(o) == kind) && (!name || (o->name && strcmp(o->name, name) == 0))) return o;
  return nullptr;
}

void var_make_address(Objet* v, word target) {
  if (v->kind != T_ADDRESS) v->work[VAR_DECLARED] = v->kind;
  v->kind = T_ADDRESS;
  v->work[VAR_TARGET] = target;
}

Objet* var_create(Objet* head, int kind, const char* name) {
  if (!head) return nullptr;
  return cre_objet(head, kind, 0, nullptr, name, 0);
}

Objet* locals_of(Objet* owner) {
  if (!owner) return nullptr;
  if (!owner->locals) owner->locals = cre_chaine_privee();
  return owner->locals;
}

Objet* extern_table() { return chaine_de(0, KIND_EXTERN); }
