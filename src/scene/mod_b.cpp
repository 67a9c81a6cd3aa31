// MOD_b: `tran(dx,dy,dz) vol(id)` and the other transformations of
// objects' vertices, with their options: `vertex` lists and laws, centre
// (`poi`, `CG`), `axis`, `ini` and `validate` with the saved copy,
// `generate` targets, `max`, `mouse`; `matrix` and `move` change the
// transformation block instead of the vertices.
#include <algorithm>
#include <cstring>

#include "kernel/bloc.h"
#include "kernel/chains.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/random_table.h"
#include "kernel/report.h"
#include "kernel/vocab.h"
#include "language/args.h"
#include "language/commands.h"
#include "scene/graphic.h"
#include "scene/law.h"
#include "scene/lookup.h"
#include "scene/matrix.h"
#include "scene/mod_mouse.h"
#include "scene/primitives.h"
#include "scene/selection.h"
#include "scene/transform.h"
#include "scene/volume.h"

bool mot_transformation(int code) {
  switch (code) {
    case KW_tran: case KW_rotx: case KW_roty: case KW_rotz: case KW_rota: case KW_dila: case KW_dilx:
    case KW_dily: case KW_dilz: case KW_hom: case KW_symx: case KW_symy: case KW_symz: case KW_syma:
    case KW_cutx: case KW_cuty: case KW_cutz: case KW_alea: case KW_alex: case KW_aley: case KW_alez:
    case KW_rand: case KW_distort: case KW_move:
      return true;
    default:
      return false;
  }
}

namespace {

bool objet_transformable(int code) {
  switch (code) {
    case KW_vol: case KW_object: case KW_light: case KW_memory: case KW_menu: case KW_brush: case KW_field: case KW_fog:
      return true;
    default:
      return false;
  }
}

// Words that hand the command to another subsystem.
bool passe_la_main(int code) {
  switch (code) {
    case KW_force: case KW_image: case KW_network: case KW_quat: case KW_traj: case KW_eye: case KW_aim:
    case KW_view: case KW_audio:
      return true;
    default:
      return false;
  }
}

struct Commande {
  Transformation t;
  std::vector<Objet*> objets;
  bool cg = false;
  int ini = 0;
  bool validate = false;
  int validate_n = 1;
  bool generate = false;
  bool max = false;
  bool matrix = false;
  bool has_axis = false;
};


// Reads the words of the command. 1 when it is well formed, 0 for the
// usage report, -1 after another report.
int lit(word* s, Commande& c) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item)) {
    const int code = item[2];
    const word* v = item_value(item);
    std::vector<float> f = arg_floats(s, code);
    if (mot_transformation(code) && !c.t.kind) {
      c.t.kind = code;
      c.t.par = f;
    } else if (objet_transformable(code) && v) {
      Selection sel;
      sel.chaine = chaine_classe(code);
      sel.selector = v;
      for (Objet* o : objets_selection(sel))
        if (o) c.objets.push_back(o);
    } else {
      switch (code) {
        case KW_vertex:
          for (float x : f) c.t.vertices.push_back(entier(x));
          break;
        case KW_poi:
          for (int k = 0; k < 3 && k < static_cast<int>(f.size()); k++) c.t.centre[k] = f[static_cast<size_t>(k)];
          break;
        case KW_CG: c.cg = true; break;
        case KW_axis:
          c.has_axis = true;
          for (int k = 0; k < 3; k++) c.t.axis[k] = k < static_cast<int>(f.size()) ? f[static_cast<size_t>(k)] : 0.0f;
          break;
        case KW_cos: case KW_sin: case KW_acc: case KW_dec: case KW_pend: c.t.law = code; break;
        case KW_law:
          c.t.law = KW_law;
          if (!courbe_loi(v, c.t.curve)) return -1;
          break;
        case KW_ini: c.ini = f.empty() ? 1 : entier(f[0]); break;
        case KW_validate: c.validate = true, c.validate_n = f.empty() ? 1 : entier(f[0]); break;
        case KW_generate: case KW_ext: case KW_frac: c.generate = true; break;
        case KW_max: c.max = true; break;
        case KW_anc: c.t.alea = true; break;
        case KW_matrix: c.matrix = true; break;
        default: break;  // mouse, frame, scale: the factors, read apart
      }
    }
  }
  if (!c.t.kind && !c.has_axis) return 0;
  return 1;
}

// The transformation block changed instead of the vertices: the object
// moves, turns or grows as a whole.
void modifie_bloc(Objet* o, const Transformation& t) {
  float* b = get_matrix_vol(o);
  if (!b) return;
  // The mouse factors scale the first two values, as on the vertices.
  auto val = [&](size_t j, float d) { return (j < t.par.size() ? t.par[j] : d) * (j < 2 ? t.factor[j] : 1.0f); };
  switch (t.kind) {
    case KW_tran: case KW_move:
      for (int k = 0; k < 3; k++) b[TR_TRAN + k] += val(static_cast<size_t>(k), 0);
      break;
    case KW_dila:
      for (int k = 0; k < 3; k++) b[TR_DILA + k] *= val(static_cast<size_t>(k), 1);
      break;
    case KW_hom:
      for (int k = 0; k < 3; k++) b[TR_DILA + k] *= val(0, 1);
      break;
    case KW_rotx: case KW_roty: case KW_rotz:
      b[TR_ROTX + (t.kind - KW_rotx)] += val(0, 0) * DEGRES;
      break;
    case KW_rota:
      b[TR_ROTA] = val(0, 0) * DEGRES;
      for (int k = 0; k < 3; k++) b[TR_ROTA + 1 + k] = t.axis[k];
      break;
    default:
      break;
  }
}

// `poi validate`: a copy of `poi`, remade when its size no longer fits.
bloc copie_sauvee(Objet* o, const word* poi) {
  bloc saved = get_val_2(o->local, KW_poi, KW_validate);
  if (saved && saved[0] == poi[0]) return saved;
  rem_propr_2(o, KW_poi, KW_validate);
  bloc p = ajoute_propriete(o, 8 + poi[0]);
  if (!p) return nullptr;
  p[0] = 8 + poi[0];
  propr_key_2(p, KW_poi, KW_validate);
  std::memcpy(propr_val(p), poi, static_cast<size_t>(poi[0]) * sizeof(word));
  return propr_val(p);
}

int transforme(Objet* o, Commande& c) {
  if (c.matrix || c.t.kind == KW_move) {
    modifie_bloc(o, c.t);
    return 0;
  }
  bloc poi = c.generate ? get_val_2(o->local, KW_poi, KW_generate) : get_val_1(o->local, KW_poi);
  if (!poi || tag(poi) != T_FLOAT || stride(poi) < 3) {
    err_vide("MOD_b()", o);
    return -1;
  }
  raz_generate(o, 1);
  const int d = stride(poi);
  const int n = c.max && !c.generate ? std::min(det_np(o), np(poi)) : np(poi);
  float* dst = sommets(poi);
  if (c.ini > 0) {
    bloc saved = copie_sauvee(o, poi);
    if (!saved) return -1;
    std::memcpy(dst, sommets(saved), static_cast<size_t>(np(poi)) * static_cast<size_t>(d) * sizeof(float));
  }
  if (c.cg) mat::moyenne(dst, std::min(det_np(o), np(poi)), d, c.t.centre);
  if (c.t.kind) TRANSF_POI(dst, dst, n, d, c.t);
  if (c.validate && c.validate_n > 0) {
    bloc saved = copie_sauvee(o, poi);
    if (!saved) return -1;
    std::memcpy(sommets(saved), dst, static_cast<size_t>(np(poi)) * static_cast<size_t>(d) * sizeof(float));
  }
  invalide_caches(o);
  if (c.generate) {  // the generated copy moved itself: it still holds
    const int kp[] = {KW_poi, KW_generate}, kf[] = {KW_fac, KW_generate};
    cache_valide(o, 2, kp);
    cache_valide(o, 2, kf);
  }
  return 0;
}

}  // namespace

int MOD_b(word* s, const word* ob, word* st, const word* lim) {
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (passe_la_main(item[2])) return bloc_0(s, ob, st, lim);
  Commande c;
  const int r = lit(s, c);
  if (r < 0) return -1;
  if (r == 0 || ob) {
    voir_texte("transf(par)obj(id)\a\n");
    return -1;
  }
  if (!facteurs_souris(s, c.t.factor)) return build_nil(s);
  for (Objet* o : c.objets)
    if (transforme(o, c) < 0) {
      TRACE_FAIL("MOD_b()");
      return -1;
    }
  return build_nil(s);
}

// `alea` alone reads the seed of the table, `alea(n)` sets it.
int ALEA_b(word* s, const word* ob, word* st, const word* lim) {
  (void)st;
  std::vector<float> v = arg_floats(s, KW_alea);
  if (ob && tag(ob) == T_FLOAT && np(ob) > 0) v = {getf(ob, 0)};
  const int size = random_table_size();
  if (!v.empty()) graine_alea() = size > 0 ? ((entier(v[0]) % size) + size) % size : 0;
  if (ob) return 0;
  return build_float(s, lim, static_cast<float>(graine_alea()));
}
