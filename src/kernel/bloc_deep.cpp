// Deep release and deep duplication: what a block owns through the
// handles it holds goes with it.
#include <cstdlib>

#include "kernel/bloc.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/objet.h"
#include "kernel/report.h"
#include "kernel/slots.h"
#include "kernel/values.h"

/* Release */

static int retire_objets(const word* list) {
  return pour_chaque_slot(list, [list](int pos) {
    if (Objet* o = handle_objet(list[pos])) rem_objet(o);
    return 0;
  });
}

static int libere_proprietes(const word* list) {
  return pour_chaque_slot(list, [list](int pos) { return libere_valeur(handle_bloc(list[pos])); });
}

static int libere_mallocs(const word* list) {
  return pour_chaque_slot(list, [list](int pos) {
    libere_mem_brut(handle_mem(list[pos]));
    return 0;
  });
}

// The value of a property is inline: only what it points to goes here.
static int libere_contenu_propriete(const word* p) {
  const word* v = propr_val(p);
  switch (v[1]) {
    case T_OBJETS: return retire_objets(v);
    case T_PROPRIETES: return libere_proprietes(v);
    case T_CHAINE:
      if (v[0] > 4) rem_chaine_privee(handle_objet(v[4]));
      return 0;
    default: return 0;
  }
}

int libere_valeur(bloc p) {
  if (!p || p[0] < 1) return 0;
  int r = 0;
  switch (p[1]) {
    // Counted kinds; 78 is the positive form of NIL, 28 and 32 token kinds.
    case T_CHAR: case T_FLOAT: case T_NIL: case KW_NIL: case KW_demo: case KW_dup:
    case T_HYBRIDE: case T_SOUND: case T_IMAGE:
      break;
    case 0: case 1:  // a cached property, or a plain counted block
      if (est_propriete(p)) r = libere_contenu_propriete(p);
      break;
    case T_OBJETS: r = retire_objets(p); break;
    case T_MALLOCS: r = libere_mallocs(p); break;
    case T_PROPRIETES: r = libere_proprietes(p); break;
    case T_SEGMENTS:
      if (est_propriete(p)) r = libere_contenu_propriete(p);
      break;
    default:  // these tags carry no count
      libere_mem_brut(p);
      return 0;
  }
  libere_bloc(p);
  return r;
}

/* Duplication */

// Handle of a duplicate of what `h` designates; 0 for a handle that
// designates nothing, -1 when the duplication failed (already reported).
static word dup_slot(word tag, word h) {
  word d = 0;
  switch (tag) {
    case T_OBJETS:
      if (const Objet* o = handle_objet(h)) d = objet_handle(dup_objet(o));
      else return 0;
      break;
    case T_PROPRIETES:
      if (const word* b = handle_bloc(h)) d = bloc_handle(dup_bloc(b));
      else return 0;
      break;
    default:
      if (const void* m = handle_mem(h)) d = mem_handle(dup_mem(m));
      else return 0;
      break;
  }
  return d ? d : -1;
}

// Replaces every handle of a copied list by a handle to a duplicate.
// After a failure the remaining slots are cleared, so that releasing the
// copy doesn't touch what the source owns.
static int dup_slots(bloc list) {
  bool failed = false;
  pour_chaque_slot(list, [list, &failed](int pos) {
    const word h = list[pos];
    if (failed || h == 0) {
      list[pos] = 0;
      return 0;
    }
    const word d = dup_slot(list[1], h);
    failed = d < 0;
    list[pos] = failed ? 0 : d;
    return 0;
  });
  return failed ? -1 : 0;
}

// A null slot of the source gives no slot in the duplicate: the others
// move down, np stays that of the source.
static void compacte(bloc list) {
  int out = 4;
  pour_chaque_slot(list, [list, &out](int pos) {
    if (list[pos]) list[out++] = list[pos];
    return 0;
  });
  for (int i = out; i < list[0]; i++) list[i] = 0;
}

static int dup_contenu_propriete(bloc p) {
  bloc v = propr_val(p);
  switch (v[1]) {
    case T_OBJETS: case T_PROPRIETES: case T_MALLOCS:
      return dup_slots(v);
    case T_CHAINE: {
      if (v[0] < 5 || v[4] == 0) return 0;
      const Objet* head = handle_objet(v[4]);
      Objet* copy = head ? dup_chaine_privee(head) : nullptr;
      v[4] = objet_handle(copy);
      return copy || !head ? 0 : -1;
    }
    default: return 0;
  }
}

// The tokens: NIL gets a fresh heap NIL, the indirect token stands for
// the value of the object it names.
static bloc dup_token(const word* p) {
  if (p[0] == T_NIL) {
    bloc b = alloue_bloc(4);
    if (b) build_nil(b);
    return b;
  }
  if (p[0] == T_INDIRECT) {
    const Objet* o = handle_objet(p[1]);
    if (o && o->local) return dup_bloc(o->local);
    err_vide(nullptr, o);
    return nullptr;
  }
  voir_int("%d: ", p[0]);
  err_bloc(nullptr);
  return nullptr;
}

bloc dup_bloc(const word* p) {
  if (!p) return nullptr;
  if (p[0] < 0) return dup_token(p);
  bloc d = alloue_bloc(p[0]);
  if (!d) {
    TRACE_FAIL("dup_bloc()");
    return nullptr;
  }
  copie_bloc(d, p);
  int r = 0;
  switch (d[1]) {
    case T_CHAR: case T_FLOAT: case T_LONG: case KW_demo: case T_NIL: case T_HYBRIDE:
      break;
    case T_PROPRIETES:
      r = dup_slots(d);
      if (d[3] != 0) compacte(d);
      break;
    case T_OBJETS: case T_MALLOCS:
      r = dup_slots(d);
      break;
    default:
      if (est_propriete(d)) r = dup_contenu_propriete(d);
      break;
  }
  if (r < 0) {
    libere_valeur(d);
    TRACE_FAIL("dup_bloc()");
    return nullptr;
  }
  return d;
}
