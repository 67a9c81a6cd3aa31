#include <cstring>

#include "kernel/access.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/commands.h"
#include "scene/lookup.h"
#include "scene/primitives.h"
#include "scene/removal.h"
#include "scene/vol_build.h"
#include "scene/volume.h"

namespace {

std::vector<float> flottants(const word* v) {
  std::vector<float> out;
  if (!v) return out;
  if (tag(v) == T_FLOAT || tag(v) == T_LONG) {
    const int n = std::min(np(v) * std::max(dimp(v), 1), size(v) - 4);
    for (int i = 0; i < n; i++) out.push_back(tag(v) == T_FLOAT ? getf(v, i) : static_cast<float>(v[4 + i]));
  } else if (tag(v) == T_HYBRIDE) {
    for (int i = 0; i < np(v); i++) {
      std::vector<float> part = flottants(sous_bloc(v, i));
      out.insert(out.end(), part.begin(), part.end());
    }
  }
  return out;
}

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

std::vector<float> valeurs_mot(word* s, int code, bool* present) {
  word* item = find_item(s, code);
  if (present) *present = item != nullptr;
  return item ? flottants(item_value(item)) : std::vector<float>{};
}

int compte_mot(word* s, int code, int fallback, int least) {
  const std::vector<float> v = valeurs_mot(s, code);
  return v.empty() ? fallback : std::max(entier(v[0]), least);
}

bool taille_possible(word* s, const Taille& t, int extra, const char* name) {
  const word* ids = item_value(first_item(s));
  return volume_possible(t, (ids ? nb_selection(ids) : 1) + extra, name);
}

std::vector<std::vector<float>> valeurs_mots(word* s, int code) {
  std::vector<std::vector<float>> out;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (item[2] == code) out.push_back(flottants(item_value(item)));
  return out;
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
  return set_result_nil(s);
}
