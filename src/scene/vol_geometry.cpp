// Writing a volume's geometry by assignment, after which everything
// derived from the old geometry is stale:
//   poi vol(id)=x1,y1,z1,...     the vertex array replaced (3 to a vertex,
//                                missing last coordinates 0)
//   poi(k1,k2...) vol(id)=...    vertices k1, k2... moved, 3 values each
//                                (the same 3 for all when only 3 are given)
//   fac(f1...) vol(id)=a,b,c...  facets replaced (0 appends one)
//   fac vol(id)=a,b,c...         a facet appended
#include <vector>

#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/property_rw.h"
#include "scene/vol_build.h"
#include "scene/vol_commands.h"
#include "scene/volume.h"

namespace {

int remplace_sommets(Objet* o, const std::vector<float>& f) {
  const size_t n = (f.size() + 2) / 3;
  std::vector<word> v(4 + 3 * n, 0);
  build_head(v.data(), static_cast<word>(v.size()), T_FLOAT, static_cast<word>(n), 3);
  for (size_t i = 0; i < f.size(); i++) v[4 + i] = fw(f[i]);
  return set_propr_1(o, KW_poi, v.data()) ? 0 : -1;
}

int deplace_sommets(Objet* o, const std::vector<int>& k, const std::vector<float>& f) {
  bloc poi = poi_vol(o);
  if (!poi) {
    err_vide("deplace_sommets()", o);
    return -1;
  }
  const int d = stride(poi);
  for (size_t i = 0; i < k.size(); i++) {
    if (k[i] < 1 || k[i] > poi[2]) {
      hors_limite(k[i]);
      continue;
    }
    const size_t from = f.size() >= 3 * (i + 1) ? 3 * i : 0;
    for (int c = 0; c < 3 && c < d; c++) {
      const size_t at = from + static_cast<size_t>(c);
      setf(poi, (k[i] - 1) * d + c, at < f.size() ? f[at] : 0.0f);
    }
  }
  return 0;
}

int ecrit(Objet* o, int code, const word* params, const word* ob) {
  if (code == KW_fac) {
    std::vector<int> k = params ? numeros(params) : std::vector<int>{0};
    for (int f : k)
      if (ajou_fac(o, KW_fac, ob, f) < 0) return -1;
    return 0;
  }
  const std::vector<float> f = floats_of(ob);
  if (f.empty()) return 0;
  return params ? deplace_sommets(o, numeros(params), f) : remplace_sommets(o, f);
}

}  // namespace

int ECRIT_GEOMETRIE(word* s, const word* ob) {
  Selection sel;
  std::vector<Objet*> objets;
  word* first = first_item(s);
  const int code = first[2];
  const word* params = item_value(first);
  if (!objets_commande(s, sel, objets, ob)) return 0;
  for (Objet* o : objets) {
    if (ecrit(o, code, params, ob) < 0) {
      TRACE_FAIL("ECRIT_GEOMETRIE()");
      return -1;
    }
    invalide_caches(o);
  }
  return 0;  // the assignment keeps its value, as in bloc_0
}
