// Resolving the lists of trajectories an object names. A list of numbers
// costs one indexed read an element (trajectoire()); a list of names is
// resolved once and kept, with a copy of the list's words and the names'
// addresses, so that a change of the list, a removal or a renaming is
// seen by comparing words rather than by searching the chain again.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <vector>

#include "animation/traj/lists.h"
#include "animation/traj/traj.h"
#include "kernel/access.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "language/cmd_util.h"
#include "language/args.h"
#include "kernel/chains.h"
#include "scene/lookup.h"

namespace {

struct Resolue {
  std::vector<word> mots;           // the list's words when it was resolved
  std::vector<RefObjet> trajs;      // what each element found
  std::vector<const char*> noms;    // their names then
};

std::unordered_map<uint64_t, Resolue>& cache() {
  static std::unordered_map<uint64_t, Resolue> c;
  return c;
}

bool par_numeros(const word* list) { return tag(list) == T_FLOAT || tag(list) == T_LONG; }

// Still what the list names: same words, every trajectory found alive and
// under the same name.
bool valable(const Resolue& r, const word* list) {
  const size_t n = static_cast<size_t>(std::max<word>(list[0], 0));
  if (r.mots.size() != n || std::memcmp(r.mots.data(), list, n * sizeof(word)) != 0) return false;
  for (size_t i = 0; i < r.trajs.size(); i++) {
    const Objet* t = objet_ref(r.trajs[i]);
    if (!t || t->name != r.noms[i]) return false;
  }
  return true;
}

void resous(Resolue& r, const word* list) {
  const int n = nb_selection(list);
  r.mots.assign(list, list + std::max<word>(list[0], 0));
  r.trajs.assign(static_cast<size_t>(std::max(n, 0)), RefObjet{});
  r.noms.assign(r.trajs.size(), nullptr);
  for (int i = 0; i < n; i++)
    if (Objet* t = get_objet_simple(chaine_classe(KW_traj), list, i)) {
      r.trajs[static_cast<size_t>(i)] = ref_objet(t);
      r.noms[static_cast<size_t>(i)] = t->name;
    }
}

}  // namespace

ListeLue lis_liste(Objet* o, ListeTraj which, const word* list) {
  ListeLue l;
  l.list = list;
  if (!list) return l;
  if (par_numeros(list)) {
    l.n = elements(list);
    return l;
  }
  const uint64_t key = (static_cast<uint64_t>(static_cast<uint32_t>(objet_handle(o))) << 2) | which;
  Resolue& r = cache()[key];
  if (!valable(r, list)) resous(r, list);
  l.refs = r.trajs.data();
  l.n = static_cast<int>(r.trajs.size());
  l.by_name = true;
  return l;
}

Objet* element_liste(const ListeLue& l, int i) {
  if (i < 0 || i >= l.n) return nullptr;
  if (!l.by_name) return trajectoire(entier(value_at(l.list, i, -1)));
  return objet_ref(l.refs[i]);
}

void noms_traj_changes() { cache().clear(); }
