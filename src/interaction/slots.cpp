// The user functions of the loop: seven slots P_fonc0 to P_fonc6 (0 at
// the start, 1 to 5 at their places in each image, 6 at the stop) beside
// the linked-in hooks _F0 to _F5. A slot holds the function's handle, so a
// function removed since does not run. Each runs with one argument: the
// number of images since the loop started; a function with no formal
// ignores it.
#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/access.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/call.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/functions.h"
#include "language/lexer.h"

InteractionState& loop() {
  static InteractionState s;
  return s;
}

namespace {

Objet* fonction(word h) {
  Objet* f = h ? handle_objet(h) : nullptr;
  return f && f->kind == KW_func ? f : nullptr;
}

}  // namespace

word fonction_nommee(const char* name) {
  Objet* f = name ? get_fonction(name) : nullptr;
  if (!f) {
    err_fonction_inconnue(name ? name : "");
    return 0;
  }
  return objet_handle(f);
}

int run_fonction(word h) {
  Objet* f = fonction(h);
  if (!f) return 0;
  const float images = static_cast<float>(loop().images);
  if (run_function_apart(f, &images) < 0) {
    VOIR_CHAR("%s\n", f->name ? f->name : "");
    return -1;
  }
  return 0;
}

int run_hook(int n) {
  InteractionState& L = loop();
  if (n < 6 && L.F[n] && L.F[n]() < 0) {
    voir_int("_F%d()\n", n);
    return -1;
  }
  return 0;
}

int run_slot(int n) { return run_hook(n) < 0 ? -1 : run_user(n); }

int run_user(int n) {
  InteractionState& L = loop();
  Objet* f = fonction(L.P_fonc[n]);
  if (!f) {
    L.P_fonc[n] = 0;
    return 0;
  }
  const float images = static_cast<float>(L.images);
  if (run_function_apart(f, &images) < 0) {
    VOIR_CHAR("%s\n", f->name ? f->name : "");
    return -1;
  }
  return 0;
}

void point_de_controle() {
  InteractionState& L = loop();
  if (!L.Raz_fonc) return;
  for (word& h : L.P_fonc) h = 0;
  L.Raz_fonc = 0;
}

// `interaction func("f")` fills the first empty slot of 1 to 5 (none when
// all are set); `interaction func(n, "f")` slot n, 0 to 6. `interaction
// func` alone asks for all the slots to be cleared at the next check
// point; it is how a running function sets Raz_fonc.
int INTERACTION_FUNC(word* s, const word* lim) {
  (void)lim;
  InteractionState& L = loop();
  const word* v = arg_of(s, KW_func);
  if (!v) {
    L.Raz_fonc = 1;
    return build_nil(s);
  }
  int number = 0, slot = -1;
  char name[LONG_MOT];
  const int first = get_ind(v, 0, &number, name, sizeof name);
  if (first < 0) return -1;
  if (first == 0) {
    slot = number;
    if (tag(v) != T_HYBRIDE || np(v) < 2 || get_ind(v, 1, &number, name, sizeof name) != 1) {
      err_syntaxe(MES_COMMAND_USAGE, KW_func, "(n, \"name\")\n");
      return -1;
    }
    if (slot < 0 || slot >= NB_SLOTS) {
      voir_int("%d: ", slot);
      voir_message(0, MES_ILLEGAL_INDEX);
      return -1;
    }
  }
  const word h = fonction_nommee(name);
  if (!h) return -1;
  if (slot < 0) {
    for (int k = 1; k <= 5 && slot < 0; k++)
      if (!fonction(L.P_fonc[k])) slot = k;
    if (slot < 0) return build_nil(s);
  }
  L.P_fonc[slot] = h;
  return build_nil(s);
}

int interaction_slot(int n) { return run_slot(n); }
