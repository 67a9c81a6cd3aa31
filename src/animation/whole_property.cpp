#include "animation/whole_property.h"

#include "kernel/property.h"
#include "kernel/report.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/selection.h"
#include "scene/vol_commands.h"

std::vector<int> chemin_commande(word* s) {
  std::vector<int> k;
  word* it = first_item(s);
  for (int i = 0; i < item_count(s); i++, it = next_item(it))
    if (!mot_objet(it[2]) || !item_value(it)) k.push_back(it[2]);
  return k;
}

int propriete_entiere(word* s, const word* ob, const word* lim, const std::vector<int>& keys, ApresEcriture apres) {
  Selection sel;
  std::vector<Objet*> objets;
  const int n = static_cast<int>(keys.size());
  if (!objets_commande(s, sel, objets, ob)) return 0;
  if (!ob) return resultat(s, get_val_k(objets[0]->local, n, keys.data()), lim);
  for (Objet* o : objets)
    if (!set_propr_k(o, n, keys.data(), ob) || (apres && apres(o, keys, ob) < 0)) {
      TRACE_FAIL("propriete_entiere()");
      return -1;
    }
  return 0;
}
