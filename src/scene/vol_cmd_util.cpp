// Helpers of the volume measuring commands.
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "scene/vol_commands.h"

bool objets_commande(word* s, Selection& sel, std::vector<Objet*>& objets, const word* ob) {
  objets.clear();
  if (lire_selection(s, sel, mot_objet) == WalkEnd::Objects)
    for (Objet* o : objets_selection(sel))
      if (o) objets.push_back(o);
  if (objets.empty() && !ob) build_nil(s);
  return !objets.empty();
}

