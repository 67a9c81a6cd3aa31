// The reading commands of measured and generated data, and the
// `generate` command that computes generated data at once.
#include <algorithm>

#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/property_rw.h"
#include "scene/vol_commands.h"
#include "scene/vol_generate.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

bool mot_de_selection(const word* item) { return mot_objet(item[2]) && item_value(item); }

// The words of the command other than the object word with its
// parameters, and the parameters of the first of them that has some.
std::vector<int> cles(word* s, const word** params, int sauf = 0) {
  std::vector<int> k;
  *params = nullptr;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) {
    if (mot_de_selection(item) || item[2] == sauf) continue;
    k.push_back(item[2]);
    if (!*params) *params = item_value(item);
  }
  return k;
}

// The points the numbers select (all without numbers), as rows.
void points_choisis(const word* v, const word* params, std::vector<std::vector<float>>& rows) {
  const int d = std::max<int>(dimp(v), 1);
  auto ligne = [&](int k) { rows.emplace_back(std::vector<float>(d)); for (int c = 0; c < d; c++) rows.back()[c] = getf(v, (k - 1) * d + c); };
  if (!params) {
    for (int k = 1; k <= np(v); k++) ligne(k);
    return;
  }
  for (int k : numeros(params)) {
    if (k < 1 || k > np(v)) hors_limite(k);
    else ligne(k);
  }
}

// The lists of neighbours (`near vertex vertex`, `near vertex dist`), one
// a vertex led by its own size: a row for each vertex the parameters name
// (all without them) holding its list without the size.
void listes_choisies(const word* v, const word* params, std::vector<std::vector<float>>& rows) {
  std::vector<std::vector<float>> toutes;
  for (int i = 0, n = elements(v); i < n;) {
    const int len = std::abs(entier(getf(v, i)));
    if (len < 1 || i + len > n) break;
    toutes.emplace_back();
    for (int j = 1; j < len; j++) toutes.back().push_back(getf(v, i + j));
    i += len;
  }
  if (!params) {
    rows.insert(rows.end(), toutes.begin(), toutes.end());
    return;
  }
  for (int k : numeros(params)) {
    if (k < 1 || k > static_cast<int>(toutes.size())) hors_limite(k);
    else rows.push_back(toutes[static_cast<size_t>(k - 1)]);
  }
}

// Rows of any widths as one FLOAT, short rows padded with zeros.
int resultat_lignes(word* s, const word* lim, const std::vector<std::vector<float>>& rows) {
  size_t d = 1;
  for (const auto& r : rows) d = std::max(d, r.size());
  std::vector<float> f;
  for (const auto& r : rows) {
    f.insert(f.end(), r.begin(), r.end());
    f.insert(f.end(), d - r.size(), 0.0f);
  }
  return build_floats_or_nil(s, lim, f, static_cast<int>(d));
}

// `poi vol(id)` answers with the vertices the animation sees.
void poi_vu(std::vector<int>& k) {
  if (k.size() == 1 && k[0] == KW_poi && Yes(KW_anc) > 0) k.push_back(KW_anc);
}

bool mene(const std::vector<Objet*>& objets) {
  for (Objet* o : objets)
    if (!get_val_1(o->local, KW_lead)) return false;
  return true;
}

int rayons_proches(word* s, const std::vector<Objet*>& objets, const word* lim) {
  const int keys[] = {KW_radius, KW_near, KW_vertex};
  const word* liste = arg_of(s, KW_vertex);
  std::vector<std::vector<float>> rows;
  for (Objet* o : objets) {
    const word* v = derive_vol(o, 3, keys);
    if (!v) return -1;
    if (!liste) {
      points_choisis(v, nullptr, rows);
      continue;
    }
    const std::vector<int> n = numeros(liste);
    const int k = n.empty() ? 0 : n[0];
    rows.push_back({k >= 1 && k <= np(v) ? getf(v, k - 1) : 0.0f});
  }
  return resultat_lignes(s, lim, rows);
}

}  // namespace

int LIRE_DERIVE(word* s, const word* ob, word* st, const word* lim) {
  const word* params = nullptr;
  std::vector<int> k = cles(s, &params);
  Selection sel;
  std::vector<Objet*> objets;
  if (ob && k.size() == 1 && (k[0] == KW_poi || k[0] == KW_fac)) return ECRIT_GEOMETRIE(s, ob);
  if (!ob && k.size() == 1 && lire_selection(s, sel, mot_objet) == WalkEnd::Objects) {
    objets = objets_selection(sel);
    std::erase(objets, nullptr);
    if (!objets.empty() && mene(objets)) poi_vu(k);
  }
  if (ob || !est_derive(static_cast<int>(k.size()), k.data())) return bloc_0(s, ob, st, lim);
  if (!objets_commande(s, sel, objets)) return 0;
  std::vector<std::vector<float>> rows;
  for (Objet* o : objets) {
    const word* v = derive_vol(o, static_cast<int>(k.size()), k.data());
    if (!v) {
      TRACE_FAIL("LIRE_DERIVE()");
      return -1;
    }
    if (tag(v) != T_FLOAT) return resultat(s, v, lim);  // facets: the first volume's
    if (k[0] == KW_near && k.size() >= 2 && k[1] == KW_vertex) listes_choisies(v, params, rows);
    else points_choisis(v, params, rows);
  }
  return resultat_lignes(s, lim, rows);
}

int LIMIT_b(word* s, const word* ob, word* st, const word* lim) {
  // `limit speed vol(1)` and the other bounds are properties.
  if (ob || (item_count(s) > 2 && !find_item(s, KW_generate))) return bloc_0(s, ob, st, lim);
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  float box[6];
  if (!det_limite_vol(objets, find_item(s, KW_generate) != nullptr, box)) {
    err_vide("LIMIT_b()", objets[0]);
    return -1;
  }
  return build_floats_or_nil(s, lim, std::vector<float>(box, box + 6), 3);
}

int RADIUS_b(word* s, const word* ob, word* st, const word* lim) {
  if (ob) return bloc_0(s, ob, st, lim);
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  if (find_item(s, KW_near)) return rayons_proches(s, objets, lim);
  const word* liste = arg_of(s, KW_vertex);
  const std::vector<int> n = numeros(liste);
  std::vector<float> r;
  for (Objet* o : objets) {
    const float x = det_rayon(o, liste ? &n : nullptr);
    if (x < 0) {
      TRACE_FAIL("RADIUS_b()");
      return -1;
    }
    r.push_back(x);
  }
  return build_floats_or_nil(s, lim, r, 1);
}

namespace {

// What `generate vol(id)` alone computes.
const std::vector<std::vector<int>> TOUT = {
    {KW_normal, KW_fac}, {KW_normal, KW_vertex}, {KW_coord, KW_vertex},
    {KW_near, KW_vertex, KW_vertex}, {KW_radius, KW_near, KW_vertex}};

int usage_generate() {
  voir_mot(KW_generate);
  voir_texte("normal fac | normal vertex | coord vertex | near vertex | radius near vertex | poi anc | frac(n) | ext(d) vol(id)\a\n");
  return -1;
}


int genere(Objet* o, word* s, const std::vector<int>& k) {
  if (find_item(s, KW_frac)) return generer_cible(o, {KW_frac, value_at(arg_of(s, KW_frac), 0, 1)});
  if (find_item(s, KW_ext)) return generer_cible(o, {KW_ext, value_at(arg_of(s, KW_ext), 0, 0)});
  if (k.empty()) {
    for (const std::vector<int>& t : TOUT)
      if (!derive_vol(o, static_cast<int>(t.size()), t.data())) return -1;
    return 0;
  }
  return derive_vol(o, static_cast<int>(k.size()), k.data()) ? 0 : -1;
}

}  // namespace

int GENERATE_b(word* s, const word* ob, word* st, const word* lim) {
  Selection sel;
  if (ob || lire_selection(s, sel, mot_objet) != WalkEnd::Objects || sel.object_code != KW_vol)
    return bloc_0(s, ob, st, lim);
  const word* params = nullptr;
  const std::vector<int> k = cles(s, &params, KW_generate);
  const bool cible = find_item(s, KW_frac) || find_item(s, KW_ext);
  if (!cible && !k.empty() && !est_derive(static_cast<int>(k.size()), k.data())) return usage_generate();
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  for (Objet* o : objets)
    if (genere(o, s, k) < 0) {
      TRACE_FAIL("GENERATE_b()");
      return -1;
    }
  return build_nil(s);
}
