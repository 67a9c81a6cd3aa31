// The genetics' commands.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"

// The objects the `genetic` word of a command names, each made when
// absent; every valid one when the word has no identifiers.
std::vector<Objet*> genetiques_ou_crees(word* s);

// `genetic(id) particle(i1, ...)`, read or written; the other shapes of
// `genetic(...)` go to the generic object command.
int GENETIC_b(word* s, const word* ob, word* st, const word* lim);
// Their rows in the dispatch.
void install_genetic_commands();
