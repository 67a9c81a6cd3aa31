#include "scene/unsaved.h"

#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "language/commands.h"
#include "scene/lookup.h"
#include "scene/selection.h"

const TravailScene TRAVAUX_SCENE[3] = {
    {KW_vol, 1, 47, ".vol"},
    {KW_traj, 1, 48, ".traj"},
    {KW_law, 1, 49, ".law"},
};

namespace {

// The kinds added by suivre_objets; a handful at most.
constexpr int MAX_SUIVIS = 8;
int suivis[MAX_SUIVIS];
int nb_suivis = 0;

bool suivi(int kind) {
  for (const TravailScene& t : TRAVAUX_SCENE)
    if (t.kind == kind) return true;
  for (int i = 0; i < nb_suivis; i++)
    if (suivis[i] == kind) return true;
  return false;
}

}  // namespace

void suivre_objets(int kind) {
  if (!suivi(kind) && nb_suivis < MAX_SUIVIS) suivis[nb_suivis++] = kind;
}

bool objets_non_sauves(int kind) {
  for (Objet* o = chaine_classe(kind)->next; o; o = o->next)
    if (o->kind == kind && o->unsaved) return true;
  return false;
}

void marque_objets_commande(word* s) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) {
    const int code = item[2];
    const word* selector = item_value(item);
    if (!selector || !suivi(code) || (i > 0 && !mot_objet(code))) continue;
    Objet* head = chaine_classe(code);
    for (int k = 0, n = nb_selection(selector); k < n; k++)
      if (Objet* o = get_objet_simple(head, selector, k)) o->unsaved = 1;
  }
}
