// compile_passe_1: sets up the two regions of the work area, runs the
// stages in order and leaves the prepared text at word 4.
#include "language/prepare.h"

#include <algorithm>
#include <cstring>

#include "kernel/report.h"
#include "language/lang_state.h"
#include "language/prepare_stages.h"

namespace {

using Etape = int (*)(Passe&);

const Etape ETAPES[] = {
    passe_commentaires, passe_directives_initiales, passe_includes,
    passe_parentheses,  passe_etiquettes,           passe_macros,
    passe_alias,        passe_reecriture,           passe_substitution,
};

// The source of a function or local object (CHAR) or of a console text
// (CODE), bounded by its block so that a text without NUL is safe.
bool lire_source(Passe& P, Objet* obj) {
  bloc b = obj ? obj->local : nullptr;
  if (!b || (tag(b) != T_CHAR && tag(b) != T_CODE)) return false;
  int mots = size(b) < 0 ? -size(b) : size(b);
  if (mots <= 4) return false;
  P.source = text(b);
  P.source_len = strnlen(P.source, static_cast<size_t>(mots - 4) * sizeof(word));
  P.console = tag(b) == T_CODE;
  return true;
}

void couper_zones(Passe& P, bloc work, word* limit) {
  char* debut = text(work);
  char* fin = reinterpret_cast<char*>(std::max(limit, work + 4));
  size_t moitie = static_cast<size_t>(fin - debut) / 2;
  P.zone[0] = debut;
  P.zone_fin[0] = P.zone[1] = debut + moitie;
  P.zone_fin[1] = fin;
}

// The text moves to word 4 if it ended in the second region.
void finir(Passe& P, bloc work) {
  size_t n = std::strlen(texte(P));
  if (P.courante != 0) std::memmove(P.zone[0], P.zone[1], n + 1);
  P.courante = 0;
  work[0] = static_cast<word>((n + 1) / 4 + 5);
  for (const std::string& nom : P.definis)
    if (!nom_defini(nom.c_str())) ajouter_nom_defini(nom.c_str());
}

int executer(Passe& P) {
  for (Etape etape : ETAPES) {
    int r = etape(P);
    if (r != 0) return r;
  }
  return 0;
}

// A full area is no error unless doubling it once more would pass the ceiling.
int trop_petit(int* status) {
  if (lang().Dim_com <= DIM_COM_MAX / 2) {
    *status = -1;
    return -1;
  }
  err_debordement("compile_passe_1");
  return -2;
}

}  // namespace

int compile_passe_1(Objet* obj, bloc work, word* limit, int* status) {
  *status = 0;
  Passe P;
  P.obj = obj;
  if (!lire_source(P, obj)) {
    err_vide(nullptr, obj);
    TRACE_FAIL("compile_passe_1()");
    return -1;
  }
  couper_zones(P, work, limit);
  int r = executer(P);
  if (P.table.capacity > lang().symbol_capacity) lang().symbol_capacity = P.table.capacity;
  symb_free(&P.table);
  if (r >= 0) {
    finir(P, work);
    return 0;
  }
  if (P.plein && trop_petit(status) == -1) return -1;
  report_compile_line(obj, P.console ? 0 : P.ligne);
  TRACE_FAIL("compile_passe_1()");
  return -1;
}
