// Creation of objects by their kind word: `vol(1) poi(...) fac(...)`,
// `object(2) name("a")`, `light(1)`. One object per element of the
// selector, numbered or named by it, at the tail of its chain; the other
// words become its properties.
#include <vector>

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/removal.h"
#include "scene/vol_build.h"

namespace {

bool second_vol_ou_vertex(word* s) {
  word* item = next_item(first_item(s));
  for (int i = 1; i < item_count(s); i++, item = next_item(item))
    if (item[2] == KW_vol || item[2] == KW_vertex) return true;
  return false;
}

// Creates the objects the first word names, each given the other words.
int cree(word* s) {
  word* first = first_item(s);
  const int kind = first[2];
  const word* selector = item_value(first);
  Objet* head = chaine_classe(kind);
  const int n = nb_selection(selector);
  for (int i = 0; i < n; i++) {
    Objet* o = set_objet_simple(head, kind / 200, kind, selector, i);
    if (!o) {
      TRACE_FAIL("cree()");
      return -1;
    }
    if (set_propriete_vol_b(o, s) < 0) {
      TRACE_FAIL("set_propriete_vol_b()");
      return -1;
    }
  }
  return build_nil(s);
}

}  // namespace

int formes_vol(word* s);

namespace {

// `vol(1) vertex(2,3) col=...` is `col vertex(2,3) vol(1)=...`: the
// property words first, then `vertex`, then the object word.
int par_sommet(word* s, const word* ob, word* st, const word* lim) {
  std::vector<word> order{4, T_SEGMENTS, 0, 0};
  word* first = first_item(s);
  word* vertex = find_item(s, KW_vertex);
  auto add = [&](const word* item) {
    order.insert(order.end(), item, item + item[0]);
    order[0] += item[0];
    order[2] += 1;
  };
  word* item = next_item(first);
  for (int i = 1; i < item_count(s); i++, item = next_item(item))
    if (item != vertex) add(item);
  add(vertex);
  add(first);
  std::copy(order.begin(), order.end(), s);
  return bloc_0(s, ob, st, lim);
}

}  // namespace

int OBJ_b(word* s, const word* ob, word* st, const word* lim) {
  if (command_argument(s) && find_item(s, KW_vertex) && item_count(s) > 2) return par_sommet(s, ob, st, lim);
  if (ob || !command_argument(s)) return bloc_0(s, ob, st, lim);
  if (int r = formes_vol(s); r != 1) return r;
  if (second_vol_ou_vertex(s)) return bloc_0(s, ob, st, lim);
  return cree(s);
}

int OBJET_b(word* s, const word* ob, word* st, const word* lim) {
  if (ob || !command_argument(s)) return bloc_0(s, ob, st, lim);
  return cree(s);
}
