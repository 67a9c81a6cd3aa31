#include "scene/lookup.h"

#include <cstring>

#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/lang_state.h"

namespace {

constexpr int NAME_MAX_LEN = 256;

bool est_marque(char c) { return c == '!' || c == '.' || c == '=' || c == '>'; }

// Element `index` of a flat selector (no HYBRIDE): 0 with a number, 1
// with a name, -1 when out of range.
int element_plat(const word* v, int index, int* number, char* name) {
  if (index < 0 || index >= nb_selection(v)) return -1;
  switch (tag(v)) {
    case T_LONG: *number = v[4 + index]; return 0;
    case T_FLOAT: *number = entier(getf(v, index)); return 0;
    case T_CHAR: return mot_i(text(v), index, name, NAME_MAX_LEN) < 0 ? -1 : 1;
    default: return -1;
  }
}

// Element `index` of a selector: 0 with a number, 1 with a name, -1 when
// the selector cannot address objects (reported under `who`). The parts
// of a HYBRIDE list count by their own elements, so `vol(1,2,"a b")`
// names four objects.
int element(const word* selector, int index, int* number, char* name, const char* who) {
  if (!selector) return -1;
  int r = -1;
  switch (tag(selector)) {
    case T_HYBRIDE:
      for (int i = 0, at = index; i < np(selector); i++) {
        const word* part = sous_bloc(selector, i);
        if (!part) break;
        const int n = nb_selection(part);
        if (at < n) {
          r = element_plat(part, at, number, name);
          break;
        }
        at -= n;
      }
      break;
    case T_FLOAT: case T_LONG: case T_CHAR:
      r = element_plat(selector, index, number, name);
      break;
    default:
      return -1;  // no kind of selector
  }
  if (r < 0) {
    voir_int("%d: ", index);
    voir_message(0, MES_ILLEGAL_INDEX);
    TRACE_FAIL(who);
  }
  return r;
}

bool correspond(const Objet* o, int r, int number, const char* name) {
  if (r == 1) return nom_egal(o->name, name);
  return number != 0 ? o->id == number : o->id == 0;
}

// The walk shared by the selector lookups: `kind` and `user_type` of 0
// accept any record.
Objet* cherche(Objet* head, const word* selector, int index, int kind, int user_type, const char* who) {
  int number = 0;
  char name[NAME_MAX_LEN];
  int r = element(selector, index, &number, name, who);
  if (r < 0 || !head) return nullptr;
  if (r == 0 && !kind && !user_type)
    return premier_numero(head, number);
  return premier_objet(head, [&](const Objet* o) {
    return (!kind || o->kind == kind) && (!user_type || o->user_type == user_type) && correspond(o, r, number, name);
  });
}

}  // namespace

bool nom_egal(const char* stored, const char* wanted) {
  if (!stored || !wanted) return false;
  if (est_marque(stored[0])) stored++;
  return std::strcmp(stored, wanted) == 0;
}

int nb_selection(const word* v) {
  if (!v || v[0] < 4) return 0;
  switch (tag(v)) {
    case T_FLOAT:
    case T_LONG: return elements(v);
    case T_HYBRIDE: {
      int n = 0;
      for (int i = 0; i < np(v); i++)
        if (const word* part = sous_bloc(v, i)) n += tag(part) == T_HYBRIDE ? 0 : nb_selection(part);
      return n;
    }
    case T_CHAR: {
      char buf[NAME_MAX_LEN];
      int n = 0;
      while (mot_i(text(v), n, buf, sizeof buf) >= 0) n++;
      return n;
    }
    default:
      return 0;
  }
}

Objet* get_objet_simple(Objet* head, const word* selector, int index) {
  return cherche(head, selector, index, 0, 0, "get_objet_simple()");
}

Objet* get_objet_type(Objet* head, const word* selector, int index, int user_type) {
  return cherche(head, selector, index, 0, user_type, "get_objet_type()");
}

Objet* get_objet_kind(Objet* head, const word* selector, int index, int kind) {
  return cherche(head, selector, index, kind, 0, "get_objet_kind()");
}

Objet* get_objet_id(Objet* head, int kind, int id) {
  return premier_objet(head, [=](const Objet* o) { return o->kind == kind && o->id == id; });
}

Objet* get_objet_nom(Objet* head, const char* name) {
  return premier_objet(head, [=](const Objet* o) { return nom_egal(o->name, name); });
}

Objet* get_objet_kind_nom(Objet* head, int kind, const char* name) {
  return premier_objet(head, [=](const Objet* o) { return o->kind == kind && nom_egal(o->name, name); });
}

Objet* get_objet(Objet* start, int kind, int subkind, int id, const char* name) {
  if (kind == KW_local || !start) return nullptr;
  for (Objet* o = start->kind == T_CHAINE ? start->next : start; o; o = o->next) {
    if (o->kind != kind || (subkind && o->subkind != subkind)) continue;
    if (id == 0 && nom_egal(o->name, name)) return o;
    if (!name && o->id == id) return o;
    if (id && name && o->id == id && nom_egal(o->name, name)) return o;
  }
  return nullptr;
}

Objet* get_extern(const char* name) {
  if (Objet* o = get_objet_nom(chaine_de(0, KIND_EXTERN), name)) return o;
  Objet* f = lang().running_function;
  return f && f->locals ? get_objet_nom(f->locals, name) : nullptr;
}

int num_max(int classe, int code) {
  int best = -1000000000;
  for (Objet* o = chaine_de(classe, code)->next; o; o = o->next)
    if (o->kind == code && o->id > best) best = o->id;
  return best;
}

int element_selection(const word* selector, int index, int* number, char* name) {
  return element(selector, index, number, name, "element_selection()");
}

Objet* set_objet_simple(Objet* head, int classe, int kind, const word* selector, int index) {
  (void)classe;
  int number = 0;
  char name[NAME_MAX_LEN] = "";
  if (selector && element(selector, index, &number, name, "set_objet_simple()") < 0) return nullptr;
  Objet* o = cre_objet(head, kind, 0, nullptr, name, number);
  if (o && number == -12345) o->valid = 0;
  return o;
}

Objet* cre_objet_nom(Objet* head, int classe, int kind, int id, const char* name) {
  (void)classe;
  Objet* o = cre_objet(head, kind, 0, nullptr, name, id);
  if (o && id == -12345) o->valid = 0;
  return o;
}

std::vector<Objet*> arg_objects(word* s, int kind) {
  std::vector<Objet*> out;
  const word* sel = arg_of(s, kind);
  for (int i = 0; sel && i < nb_selection(sel); i++)
    if (Objet* o = get_objet_simple(chaine_classe(kind), sel, i)) out.push_back(o);
  return out;
}

std::vector<Objet*> objets_commande(word* s, int kind) {
  if (arg_of(s, kind)) return arg_objects(s, kind);
  std::vector<Objet*> all;
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
    if (o->kind == kind && o->valid) all.push_back(o);
  return all;
}
