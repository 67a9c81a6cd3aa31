// The command `limit`: the bounds of objects, of lines and of rows of a
// lattice read; the paths of limits written as properties, their values
// checked first.
#include <algorithm>
#include <cfloat>
#include <vector>

#include "animation/cycle.h"
#include "animation/dynamics/dyn_props.h"
#include "animation/limits/limits.h"
#include "animation/whole_property.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "render/image_display.h"
#include "scene/graphic.h"
#include "scene/image_object.h"
#include "scene/lookup.h"
#include "scene/property_rw.h"
#include "scene/selection.h"
#include "scene/vol_commands.h"
#include "scene/vol_measure.h"
#include "scene/volume.h"

namespace {

// The box of n points of dimension dim (at least 2 used), min then max.
std::vector<float> boite(const float* p, int n, int dim, int w) {
  std::vector<float> lo(w, 0), hi(w, 0);
  for (int i = 0; i < n; i++)
    for (int c = 0; c < w; c++) {
      const float x = c < dim ? p[i * dim + c] : 0;
      if (i == 0 || x < lo[c]) lo[c] = x;
      if (i == 0 || x > hi[c]) hi[c] = x;
    }
  lo.insert(lo.end(), hi.begin(), hi.end());
  return lo;
}

// The second word of the command, 0 when there is none.
int deuxieme(word* s) { return item_count(s) > 1 ? next_item(first_item(s))[2] : 0; }

int usage(const char* forme) {
  voir_mot(KW_limit);
  voir_texte(forme);
  voir_texte("\a\n");
  return -1;
}

// The least count of values each path of `limit dist` takes.
struct FormeDist {
  std::vector<int> mots;  // the words after `limit dist`
  int min;
  const char* forme;
};
const FormeDist FORMES_DIST[] = {
    {{KW_CG, KW_force}, 5, "dist CG force vol(id)=d1,d2,a,b,id..."},
    {{KW_CG}, 3, "dist CG vol(id)=d1,d2,id..."},
    {{KW_roty}, 2, "dist roty vol(id)=a,id..."},
    {{KW_vertex, KW_vertex}, 2, "dist vertex vertex vol(id)=d1,d2,..."},
    {{KW_secx}, 2, "dist secx vol(id)=d1,d2"},
    {{KW_secy}, 2, "dist secy vol(id)=d1,d2"},
    {{KW_vertex}, 2, "dist vertex vol(id)=d1,d2"},
};

// The words of the command between `limit dist` and the object word.
std::vector<int> mots_dist(word* s) {
  std::vector<int> k;
  word* it = next_item(next_item(first_item(s)));
  for (int i = 2; i < item_count(s); i++, it = next_item(it)) {
    if (mot_objet(it[2])) break;
    k.push_back(it[2]);
  }
  return k;
}

// `limit dist ... vol(id)=...`: the values checked, then the property;
// `limit ext vol(id)`: the size of the volume's box.
int LIMIT_DIST(word* s, const word* ob, word* st, const word* lim) {
  if (deuxieme(s) == KW_ext && !ob && item_count(s) == 3) {
    Selection sel;
    std::vector<Objet*> objets;
    if (!objets_commande(s, sel, objets)) return 0;
    float b[6];
    if (!det_limite_vol(objets, false, b)) {
      err_vide("LIMIT_DIST()", objets[0]);
      return -1;
    }
    return build_floats(s, lim, {b[3] - b[0], b[4] - b[1], b[5] - b[2]}, 3);
  }
  if (ob) {
    const std::vector<int> k = mots_dist(s);
    for (const FormeDist& f : FORMES_DIST)
      if (k == f.mots && elements(ob) < f.min) return usage(f.forme);
  }
  return bloc_0(s, ob, st, lim);
}

// `limit line(x1,y1,...) [inside(n)]`: the box of the points of the line.
int LIMIT_LINE(word* s, const word* lim) {
  const std::vector<float> p = arg_floats(s, KW_line);
  const int dim = std::max(arg_int(s, KW_inside, 2), 1);
  const int n = static_cast<int>(p.size()) / dim;
  if (n < 1) return usage("line(x1,y1, ...)");
  return build_floats(s, lim, boite(p.data(), n, dim, std::min(dim, 3)), std::min(dim, 3));
}

// `limit image(id)`: the box it is drawn in on the window, left, bottom,
// right, top in pixels from the bottom left corner.
int limite_image(word* s, const word* lim) {
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  float b[4];
  if (!image_placement(objets[0], b)) return build_nil(s);
  return build_floats(s, lim, {b[0], b[1], b[2], b[3]}, 2);
}

// `limit light(ids)`, `limit view(ids)`: the box of the places of their
// eyes, min then max (objects with no eye yet take no part);
// `limit fog(ids)`: the least start and the greatest end of their fogs
// (`fog zbuf`: r,g,b,start,end; 1000 and 2000 when not given);
// `limit menu(id)`: a menu is a pop-up with no place of its own on the
// window, so the empty block. A kind with no object of the number, or
// not built, reads as a missing object does elsewhere: the empty block.
int limite_objets(word* s, const word* lim, int kind) {
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  if (kind == KW_fog) {
    float debut = 0, fin = 0;
    for (size_t i = 0; i < objets.size(); i++) {
      float f[5] = {0, 0, 0, 1000.0f, 2000.0f};
      floats_of(get_val_2(objets[i]->local, KW_fog, KW_zbuf), f, 5);
      debut = i == 0 ? f[3] : std::min(debut, f[3]);
      fin = i == 0 ? f[4] : std::max(fin, f[4]);
    }
    return build_floats(s, lim, {debut, fin}, 2);
  }
  if (kind != KW_light && kind != KW_view) return build_nil(s);
  std::vector<float> eyes;
  for (Objet* o : objets) {
    float e[3];
    if (floats_of(get_val_1(o->local, KW_eye), e, 3) == 3) eyes.insert(eyes.end(), e, e + 3);
  }
  if (eyes.empty()) return build_nil(s);
  return build_floats(s, lim, boite(eyes.data(), static_cast<int>(eyes.size()) / 3, 3, 3), 3);
}

// `limit poi vol(id)`: the box of the stored vertices, in the volume's
// coordinates; `limit secx(j) vol(id)`, `limit secy(i)`, `limit vertex(k...)`:
// the box of rows j, of columns i, of vertices k (from 1; all rows,
// columns or vertices with no number).
int LIMIT_COM(word* s, const word* lim, int code) {
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  Objet* o = objets[0];
  const word* poi = poi_vol(o);
  if (!poi || np(poi) < 1) {
    err_vide("LIMIT_b()", o);
    return -1;
  }
  const int d = stride(poi), n = np(poi);
  const int len = std::max(vol_secx(o) + (vol_close(o) ? 0 : 1), 1);
  const std::vector<int> choisis = numeros(arg_of(s, code));
  std::vector<float> pts;
  auto prend = [&](int i) {
    if (i < 0 || i >= n) return;
    for (int c = 0; c < 3; c++) pts.push_back(c < d ? getf(poi, i * d + c) : 0);
  };
  for (int i = 0; i < n; i++) {
    const int numero = code == KW_secx ? i / len + 1 : code == KW_secy ? i % len + 1 : i + 1;
    if (choisis.empty() || std::find(choisis.begin(), choisis.end(), numero) != choisis.end()) prend(i);
  }
  if (pts.empty()) return build_nil(s);
  return build_floats(s, lim, boite(pts.data(), static_cast<int>(pts.size()) / 3, 3, 3), 3);
}

// The paths the stages read as plain arrays: written whole, as given.
const std::vector<int> ENTIERES[] = {
    {KW_limit, KW_tran, KW_poi},         {KW_limit, KW_tran, KW_vertex}, {KW_limit, KW_tran, KW_poi, KW_force},
    {KW_limit, KW_near, KW_vertex, KW_vertex}, {KW_limit, KW_dist, KW_vertex, KW_vertex},
    {KW_limit, KW_dist, KW_vertex},
};

const int TRAN_VERTEX[] = {KW_limit, KW_tran, KW_vertex};

// `limit tran vertex(k...) vol(id)=x1,y1,z1,x2,y2,z2`: the box of vertices
// k (vertex(0): every vertex) in the table of a box a vertex, grown as
// needed; a vertex given no box takes one of the largest floats, which
// holds nothing. Without a value: the boxes of vertices k, rows of 6.
int tran_vertex_numeros(word* s, const word* ob, const word* lim, const word* params) {
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets, ob)) return 0;
  std::vector<int> ks = numeros(params);
  const bool tous = std::find(ks.begin(), ks.end(), 0) != ks.end();
  if (!ob) {
    Objet* o = objets[0];
    const word* l = get_val_k(o->local, 3, TRAN_VERTEX);
    const std::vector<float> v = floats_of(l);
    const int n = static_cast<int>(v.size()) / 6;
    std::vector<float> r;
    for (int i = 0; i < n; i++)
      if (tous || std::find(ks.begin(), ks.end(), i + 1) != ks.end()) r.insert(r.end(), &v[i * 6], &v[i * 6] + 6);
    return build_floats_or_nil(s, lim, r, 6);
  }
  if (elements(ob) < 6) return usage("tran vertex(k) vol(id)=x1,y1,z1,x2,y2,z2");
  float b[6];
  floats_of(ob, b, 6);
  for (Objet* o : objets) {
    std::vector<float> v = floats_of(get_val_k(o->local, 3, TRAN_VERTEX));
    v.resize(v.size() / 6 * 6);
    std::vector<int> cibles = ks;
    if (tous) {
      cibles.clear();
      for (int i = 1; i <= det_np(o); i++) cibles.push_back(i);
    }
    for (int k : cibles) {
      if (k < 1) continue;
      const size_t fin = static_cast<size_t>(k) * 6;
      while (v.size() < fin)
        for (int c = 0; c < 6; c++) v.push_back(c < 3 ? -FLT_MAX : FLT_MAX);
      std::copy(b, b + 6, v.begin() + static_cast<long>(fin - 6));
    }
    const int n = static_cast<int>(v.size()) / 6;
    if (rem_propr_k(o, 3, TRAN_VERTEX) < 0) return -1;
    float* f = n ? flottants(set_matrix_k(o, 3, TRAN_VERTEX, n, 6), n * 6) : nullptr;
    if (n && !f) {
      TRACE_FAIL("LIMIT_b()");
      return -1;
    }
    std::copy(v.begin(), v.end(), f);
  }
  return 0;
}

int LIMIT_b2(word* s, const word* ob, word* st, const word* lim) {
  const std::vector<int> chemin = chemin_commande(s);
  if (const word* k = arg_of(s, KW_vertex); k && elements(k) > 0 && chemin == std::vector<int>(TRAN_VERTEX, TRAN_VERTEX + 3))
    return tran_vertex_numeros(s, ob, lim, k);
  for (const std::vector<int>& e : ENTIERES)
    if (chemin == e) return propriete_entiere(s, ob, lim, chemin);
  const int k = deuxieme(s);
  switch (k) {
    case KW_dist:
    case KW_ext: return LIMIT_DIST(s, ob, st, lim);
    case KW_line: return ob ? bloc_0(s, ob, st, lim) : LIMIT_LINE(s, lim);
    case KW_vol:
    case KW_generate: return LIMIT_b(s, ob, st, lim);
    case KW_image: return ob || item_count(s) != 2 ? bloc_0(s, ob, st, lim) : limite_image(s, lim);
    case KW_poi:
    case KW_secx:
    case KW_secy:
    case KW_vertex:
      return ob || item_count(s) != 3 ? bloc_0(s, ob, st, lim) : LIMIT_COM(s, lim, k == KW_poi ? 0 : k);
    case KW_light:
    case KW_view:
    case KW_fog:
    case KW_menu:
    case KW_genetic: return ob || item_count(s) != 2 ? bloc_0(s, ob, st, lim) : limite_objets(s, lim, k);
    default: return bloc_0(s, ob, st, lim);
  }
}

}  // namespace

void install_limits() {
  register_stage(STAGE_EXEC_LIMIT_DYNAMIC, EXEC_LIMIT_DYNAMIC_VOL);
  register_stage(STAGE_EXEC_LIMIT_DYNAMIC_BRUSH, EXEC_LIMIT_DYNAMIC_BRUSH);
  register_stage(STAGE_EXEC_LIMIT, EXEC_LIMIT);
  register_graphic_handler({KW_limit}, LIMIT_b2);
  register_graphic_handler({KW_inside}, INSIDE_b);
}
