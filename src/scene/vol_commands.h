// Commands that measure and generate from volumes, and their helpers.
#pragma once
#include <vector>

#include "kernel/objet.h"
#include "kernel/word.h"
#include "scene/selection.h"

// `CG vol(id)` and its forms: `vertex`, `fac`, `secx`, `secy`, `coe`,
// `animate`, `image`, and the modes `abs`, `anc`, `matrix`.
int CG_b(word* s, const word* ob, word* st, const word* lim);
// `limit vol(id)`, `limit generate vol(id)`: the merged box.
int LIMIT_b(word* s, const word* ob, word* st, const word* lim);
// `radius vol(id)`, `radius vertex(n...) vol(id)`, `radius near vertex(n) vol(id)`.
int RADIUS_b(word* s, const word* ob, word* st, const word* lim);
// `generate normal fac vol(id)`, `generate frac(n) vol(id)`...
int GENERATE_b(word* s, const word* ob, word* st, const word* lim);
// Reading a generated property (`normal fac vol(id)`, `near vertex
// vol(id)`, `poi generate vol(id)`...), computed when stale; other keys
// and every write go to bloc_0.
int LIRE_DERIVE(word* s, const word* ob, word* st, const word* lim);
// `poi(k...) vol(id)=...` and `fac(f...) vol(id)=...`: the geometry
// written, the derived data made stale.
int ECRIT_GEOMETRIE(word* s, const word* ob);
// `local("f(){...}") vol(id)` and its reading and running forms.
int LOCALE_b(word* s, const word* ob, word* st, const word* lim);

// The objects a command selects, absent ones left out; false when the
// command selects nothing, the NIL result then written unless the
// command is an assignment (`ob`), whose record stays as it is.
bool objets_commande(word* s, Selection& sel, std::vector<Objet*>& objets, const word* ob = nullptr);
// The parameter value of the word `code` in the command, or null.
