// `field(id) ...`: a force field made like any object, its kind given by
// the word that comes with it: `meta(q0..q8)` (generate_field_meta),
// `func("name")` (generate_field_func), `vol(id)` or `image(id)`; without
// one of these the field has the forms of direction of its `poi`, `near`
// and `radius`.
#include <vector>

#include "animation/dynamics/dynamics.h"
#include "kernel/keywords.h"
#include "language/commands.h"
#include "kernel/chains.h"
#include "scene/graphic.h"
#include "scene/lookup.h"

namespace {

// The kind a creation command gives its fields, or 0.
int sorte(word* s) {
  for (int code : {KW_meta, KW_func, KW_vol, KW_image})
    if (find_item(s, code)) return code;
  return 0;
}

// Marks the fields the selector names with their kind. A `func` field is
// known by its property: its subkind would make it a function.
void marque(const std::vector<word>& selector, int kind) {
  Objet* head = chaine_classe(KW_field);
  for (int i = 0, n = nb_selection(selector.data()); i < n; i++)
    if (Objet* f = get_objet_simple(head, selector.data(), i)) {
      f->subkind = kind == KW_func ? 0 : kind;
      f->work[0] = f->work[1] = 0;  // the function is looked up again
    }
}

int generate_field_meta(const std::vector<word>& selector) {
  marque(selector, KW_meta);
  return 0;
}

int generate_field_func(const std::vector<word>& selector) {
  marque(selector, KW_func);
  return 0;
}

int FIELD_b(word* s, const word* ob, word* st, const word* lim) {
  const word* sel = item_value(first_item(s));
  const int kind = ob || !sel ? 0 : sorte(s);
  const std::vector<word> selector = sel ? std::vector<word>(sel, sel + sel[0]) : std::vector<word>{};
  const int r = OBJET_b(s, ob, st, lim);
  if (r < 0 || !kind) return r;
  if (kind == KW_meta) return generate_field_meta(selector);
  if (kind == KW_func) return generate_field_func(selector);
  marque(selector, kind);
  return 0;
}

}  // namespace

void install_fields() { register_graphic_handler({KW_field}, FIELD_b); }
