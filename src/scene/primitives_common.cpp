#include <cstring>

#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/lookup.h"
#include "scene/primitives.h"
#include "scene/removal.h"
#include "scene/vol_build.h"
#include "scene/volume.h"

namespace {

// Removes the volumes that bear this number, or this name.
void remplace(int number, const char* name) {
  Objet* head = chaine_classe(KW_vol);
  if (*name) {
    for (Objet* o = get_objet_kind_nom(head, KW_vol, name); o; o = get_objet_kind_nom(head, KW_vol, name))
      rem_objet(o);
  } else {
    rem_objet_id(KW_vol, number);
  }
}

}  // namespace

int compte_mot(word* s, int code, int fallback, int least) {
  float first = 0;
  return arg_floats(s, code, &first, 1) ? std::max(entier(first), least) : fallback;
}

bool taille_possible(word* s, const Taille& t, int extra, const char* name) {
  const word* ids = command_argument(s);
  return volume_possible(t, (ids ? nb_selection(ids) : 1) + extra, name);
}

int pose_geometrie(Objet* o, const Construction& c) {
  const std::vector<word> poi = bloc_sommets(c.poi);
  const std::vector<word> fac = bloc_facettes(c.fac);
  if (!set_propr_1(o, KW_poi, poi.data()) || !set_propr_1(o, KW_fac, fac.data())) return -1;
  vol_secx(o) = c.secx;
  vol_secy(o) = c.secy;
  vol_secz(o) = c.secz;
  vol_close(o) = c.close;
  if (c.transf) {
    float* t = get_matrix_vol(o);
    if (!t) return -1;
    for (int k = 0; k < 3; k++) {
      t[TR_TRAN + k] = c.tran[k];
      t[TR_DILA + k] = c.dila[k];
      t[TR_ROTX + k] = c.rot[k] * DEGRES;
    }
  }
  invalide_caches(o);
  return 0;
}

int cree_volumes(word* s, int subkind, const Construction& c, std::initializer_list<int> used) {
  word* first = first_item(s);
  const word* ids = item_value(first);
  if (!ids || nb_selection(ids) == 0) {
    voir_mot(first[2]);
    voir_texte("(id)\a\n");
    return -1;
  }
  for (int i = 0, n = nb_selection(ids); i < n; i++) {
    int number = 0;
    char name[256] = "";
    if (element_selection(ids, i, &number, name) < 0) return -1;
    remplace(number, name);
    Objet* o = cre_objet(chaine_classe(KW_vol), KW_vol, subkind, nullptr, name, number);
    if (!o || pose_geometrie(o, c) < 0) {
      TRACE_FAIL("cree_volumes()");
      return -1;
    }
    word* item = next_item(first);
    for (int k = 1; k < item_count(s); k++, item = next_item(item)) {
      bool skip = false;
      for (int code : used) skip = skip || item[2] == code;
      if (!skip && ajou_propriete_simple(o, item) < 0) return -1;
    }
  }
  return build_nil(s);
}
