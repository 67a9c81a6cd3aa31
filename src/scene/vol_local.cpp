// LOCALE_b and the running of local functions. Forms:
//   local("f(x){...}") vol(id)  adds or replaces f and compiles it
//   local vol(id)               the names of the object's functions
//   local(n) vol(id)            the text of function n
//   local("f") vol(id)          the text of f
//   local exec vol(id)          runs them all now
// A local function reaches the console's variables through `extern`,
// and shares with the object's other functions the variables it
// declares `global`.
#include <algorithm>
#include <cstring>
#include <utility>
#include <string>
#include <vector>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "language/call.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/compile.h"
#include "language/eval.h"
#include "language/functions.h"
#include "language/lang_state.h"
#include "scene/graphic.h"
#include "scene/property_rw.h"
#include "scene/scene_state.h"
#include "scene/selection.h"
#include "scene/vol_commands.h"
#include "scene/vol_local.h"

namespace {

constexpr size_t NOM_MAX = 126;

Objet* locale_nommee(Objet* o, const std::string& nom) {
  for (Objet* f = o->child ? o->child->next : nullptr; f; f = f->next)
    if (f->name && nom == f->name) return f;
  return nullptr;
}

Objet* locale_numero(Objet* o, int n) {
  int i = 1;
  for (Objet* f = o->child ? o->child->next : nullptr; f; f = f->next, i++)
    if (i == n) return f;
  return nullptr;
}

int compte(Objet* o) {
  int n = 0;
  for (Objet* f = o->child ? o->child->next : nullptr; f; f = f->next) n++;
  return n;
}

// The owner's handle, in the function's sixth owner word: the object
// whose `global` variables its local functions share.
constexpr int MOT_PROPRIETAIRE = 5;

Objet* racine_locale(Objet* f) {
  return f && f->kind == KIND_LOCAL ? handle_objet(f->work[MOT_PROPRIETAIRE]) : nullptr;
}

bool en_cours(Objet* o) {
  for (RefObjet r : scene().locales_en_cours)
    if (objet_ref(r) == o) return true;
  return false;
}

// A list that runs may not change, nor run again from within.
bool occupe(Objet* o) {
  if (!en_cours(o)) return false;
  voir_mot(KW_local);
  voir_message(0, MES_ILLEGAL);
  return true;
}

bool est_definition(const char* t) { return std::strchr(t, '(') != nullptr; }

int non_trouve(const char* nom) {
  voir_mot(KW_local);
  VOIR_CHAR("%s ", nom);
  err_pas_trouve(nullptr);
  return -1;
}

// The names of the object's functions, blank separated.
std::string noms(Objet* o) {
  std::string t;
  for (Objet* f = o->child ? o->child->next : nullptr; f; f = f->next) t += std::string(t.empty() ? "" : " ") + (f->name ? f->name : "");
  return t;
}

// Reading: the names, or the text of one function.
int lecture(word* s, Objet* o, const word* v, const word* lim) {
  if (!v) return build_text_or_nil(s, lim, noms(o));
  Objet* f = nullptr;
  if (const char* t = value_text(v)) {
    if (!(f = locale_nommee(o, t))) return non_trouve(t);
  } else {
    const std::vector<int> n = numeros(v);
    const int k = n.empty() ? 0 : n[0];
    if (!(f = locale_numero(o, k))) {
      hors_limite(k);
      return -1;
    }
  }
  return resultat(s, f->local, lim);
}

int execute(Objet* f) {
  if (run_function_apart(f) < 0) {
    VOIR_CHAR("%s\n", "exec_fonc_obj");
    return -1;
  }
  return 0;
}

}  // namespace

Objet* ajoute_locale(Objet* o, const char* source) {
  std::string nom = function_name(source);
  if (nom.empty() || nom.size() > NOM_MAX) {
    voir_mot(KW_local);
    voir_message(0, MES_ILLEGAL_NAME);
    return nullptr;
  }
  if (occupe(o)) return nullptr;
  if (!o->child && !(o->child = cre_chaine_privee())) return nullptr;
  // Compiled apart first: a text that fails leaves the list as it was.
  Objet* f = cre_objet(o->child, KIND_LOCAL, 0, nullptr, nom.c_str(), compte(o) + 1);
  if (!f || !(f->local = source_value(source))) {
    rem_objet(f);
    return nullptr;
  }
  f->work[MOT_PROPRIETAIRE] = objet_handle(o);
  lang().local_root = racine_locale;
  if (a_compile(f) < 0 || lier_fonction(f) < 0) {
    rem_objet(f);
    TRACE_FAIL("ajoute_locale()");
    return nullptr;
  }
  Objet* ancien = locale_nommee(o, nom);
  if (ancien == f) return f;
  // A replacement keeps the place and number of the function it replaces.
  std::swap(ancien->local, f->local);
  std::swap(ancien->code, f->code);
  std::swap(ancien->locals, f->locals);
  for (int k = 0; k < MOT_PROPRIETAIRE; k++) std::swap(ancien->work[k], f->work[k]);
  rem_objet(f);
  return ancien;
}

int exec_locales(Objet* o, int combien) {
  if (occupe(o)) return -1;
  if (!o->child) return 0;
  // The list is held apart while it runs, so that a function may remove
  // its own object; it goes back if the object is still there.
  Objet* liste = o->child;
  o->child = nullptr;
  const RefObjet ref = ref_objet(o);
  scene().locales_en_cours.push_back(ref);
  // On an area of their own, as the cycle runs outside any console line.
  int r = 0;
  int faites = 0;
  for (Objet* f = liste->next; f && r == 0 && (combien <= 0 || faites < combien); f = f->next, faites++)
    r = execute(f);
  std::vector<RefObjet>& e = scene().locales_en_cours;
  e.erase(std::find_if(e.begin(), e.end(), [&](RefObjet x) { return x.handle == ref.handle; }));
  // The object may have gone, and another been made in its place.
  if (objet_ref(ref) == o) o->child = liste;
  else rem_chaine_privee(liste);
  return r;
}

// Twelve lists, volumes last so that their functions see the lights and
// views of this image already moved. Menus and genetic populations have
// steps of their own and are not among them.
int EXEC_LOCALE_TOUT() {
  for (int kind : {KW_fog, KW_light, KW_view, KW_traj, KW_field, KW_brush, KW_image, KW_object, KW_memory,
                   KW_network, KW_device, KW_vol}) {
    // A function may remove objects of the chain and make others: those
    // removed are skipped, those made wait for the next pass.
    Pret<RefObjet> objets(scene().marches);
    objets.v.clear();
    for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
      if (o->kind == kind && o->child && o->child->kind == T_CHAINE) objets.v.push_back(ref_objet(o));
    if (pour_chaque_objet_vivant(objets.v, [](Objet* o) { return o->child ? exec_locales(o) : 0; }) < 0) {
      TRACE_FAIL("EXEC_LOCALE_TOUT");
      return -1;
    }
  }
  return 0;
}

int REM_LOCALE(word* s) {
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  const word* v = arg_of(s, KW_local);
  for (Objet* o : objets) {
    if (occupe(o)) return -1;
    if (!o->child) continue;
    if (!v) {
      rem_chaine_privee(o->child);
      o->child = nullptr;
      continue;
    }
    const char* t = value_text(v);
    const std::vector<int> n = t ? std::vector<int>{} : numeros(v);
    Objet* f = t ? locale_nommee(o, t) : locale_numero(o, n.empty() ? 0 : n[0]);
    if (f) rem_objet(f);
    int i = 1;  // the others keep their order, numbered again from 1
    for (Objet* g = o->child->next; g; g = g->next) objet_numero(g, i++);
  }
  return build_nil(s);
}

int LOCALE_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets, ob)) return 0;
  const word* v = ob ? ob : arg_of(s, KW_local);
  const char* t = value_text(v);
  const bool definit = t && est_definition(t);
  const bool lance = find_item(s, KW_exec) != nullptr;
  if (definit || lance) {
    // The functions run may remove the objects that follow.
    Pret<RefObjet> refs(scene().marches);
    refs.v.clear();
    for (Objet* o : objets) refs.v.push_back(ref_objet(o));
    const int r = pour_chaque_objet_vivant(refs.v, [&](Objet* o) {
      if (definit && !ajoute_locale(o, t)) return -1;
      return lance ? exec_locales(o) : 0;
    });
    if (r < 0) {
      TRACE_FAIL("LOCALE_b()");
      return -1;
    }
  }
  if (ob) return 0;
  if (definit || lance) return build_nil(s);
  return lecture(s, objets[0], v, lim);
}
