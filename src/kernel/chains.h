// The chain heads of every object kind: one record per chain, whose `next`
// is the first object. Kinds with no chain of their own use the generic
// chain; failing lines clear the chain of temporaries.
#pragma once
#include "kernel/objet.h"

constexpr int KIND_EXTERN = -41;  // the chain of external variables

constexpr int NB_GRAPHIC_CHAINS = 22;
constexpr int NB_INTERPRETER_CHAINS = 6;

// The heads, one a chain, kept in the kernel's state. Lookups in the
// global chains read each head's list of records, made with the heads.
struct ChainHeads {
  Objet graphic[NB_GRAPHIC_CHAINS];
  Objet interpreter[NB_INTERPRETER_CHAINS];
  Objet generic;
  Objet temporaries;
  ChainHeads();
  ChainHeads(const ChainHeads&) = delete;
  ChainHeads& operator=(const ChainHeads&) = delete;
};

// Head by class and keyword code; the generic chain for codes without one.
Objet* chaine_de(int classe, int code);
// The same with the class taken from the code (code / 200).
Objet* chaine_classe(int code);
Objet* chaine_generique();
Objet* chaine_temporaires();
// Makes the heads (start-up): the first use of the kernel's state.
void chaines_ini();

// The first record of the chain that `match` accepts, in chain order:
// from the head's list of records when it keeps one, else by the links.
template <class F>
Objet* premier_objet(Objet* head, F&& match) {
  if (!head) return nullptr;
  if (head->members) {
    for (const Objet::Member& e : *head->members)
      if (e.o && match(e.o)) return e.o;
    return nullptr;
  }
  for (Objet* o = head->next; o; o = o->next)
    if (match(o)) return o;
  return nullptr;
}

// The first record numbered `id` (any kind), read from the list of
// numbers when the chain keeps one.
Objet* premier_numero(Objet* head, int id);
