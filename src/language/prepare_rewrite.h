// Stage 8, statement rewriting, split over three files: the walk and the
// characters between words (prepare_rewrite.cpp), the rules for words
// (prepare_statements.cpp), strings and balanced groups (prepare_groups.cpp).
#pragma once
#include "language/prepare_stages.h"

struct Reecriture {
  Passe& P;
  const char* p;  // reading position
  Sortie o;
  bool fini = false;  // a string ran into the end: the stage stops there
};

// A word read at the position before r.p, now past it. -1 after a report.
int reecrire_mot(Reecriture& r, const char* mot);
// At a double quote: the string with its escapes resolved.
void reecrire_chaine(Reecriture& r);
// At "(", "[" or "{": the whole balanced group. -1 after SYNTAX ERROR.
int copier_groupe(Reecriture& r);
// One mark, string, quoted character or byte, inside a group or a head.
void copier_unite(Reecriture& r);
