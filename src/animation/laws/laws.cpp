// The law handler: f(t) of the gradation functions, LAW_CG and
// VALIDATE_LAW_CG on the centres of volumes, LAW_LINE.
#include "animation/laws/laws.h"

#include <algorithm>
#include <cmath>

#include "animation/collision/collision.h"
#include "animation/dynamics/dyn_props.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "scene/graphic.h"
#include "scene/law.h"
#include "scene/selection.h"
#include "scene/vol_commands.h"
#include "scene/volume.h"

namespace {

// `acc(t...)`: f(t) of each value, by the law's keyword.
int valeurs_loi(word* s, const word* lim, int code, const word* v) {
  std::vector<float> r;
  for (float t : floats_of(v)) r.push_back(loi(code, t));
  return build_floats(s, lim, r);
}

// The origin of a volume along its curve: `law CG`, made from where it
// stands when missing or when `validate` asks.
float* origine(Objet* o, const std::vector<float>& curve, bool valider) {
  float* org = flottants(get_val_2(o->local, KW_law, KW_CG), 3);
  const float* T = get_matrix_vol(o);
  if (!T) return nullptr;
  if (org && !valider) return org;
  if (!org && !(org = cree_floats(o, KW_law, KW_CG, 3))) return nullptr;
  for (int c = 0; c < 3; c++) org[c] = T[TR_TRAN + c] - curve[c];
  return org;
}

// LAW_CG and VALIDATE_LAW_CG.
int LAW_CG(word* s, const word* ids, const word* lim) {
  std::vector<float> curve;
  if (!courbe_loi(ids, curve) || curve.empty()) return -1;
  const bool valider = has_word(s, KW_validate);
  const float t = arg_float(s, KW_CG, 0);
  Selection sel;
  std::vector<Objet*> objets;
  if (!objets_commande(s, sel, objets)) return 0;
  std::vector<float> r;
  for (Objet* o : objets) {
    float* org = origine(o, curve, valider);
    float* T = get_matrix_vol(o);
    if (!org || !T) {
      TRACE_FAIL("LAW_CG()");
      return -1;
    }
    if (!valider) {
      float p[3];
      point_courbe(curve, t, p);
      for (int c = 0; c < 3; c++) T[TR_TRAN + c] = org[c] + p[c];
    }
    r.insert(r.end(), T + TR_TRAN, T + TR_TRAN + 3);
  }
  return build_floats(s, lim, r, 3);
}

// `law line(x1,y1, ...) poi(x...)`.
int LAW_LINE(word* s, const word* lim) {
  const std::vector<float> line = arg_floats(s, KW_line);
  const std::vector<float> x = arg_floats(s, KW_poi);
  if (line.size() < 2 || x.empty()) {
    voir_texte("law line(x1,y1, ...) poi(x)\a\n");
    return -1;
  }
  std::vector<float> r;
  for (float v : x) r.push_back(read_law(line.data(), static_cast<int>(line.size() / 2), 2, v));
  return build_floats(s, lim, r);
}

bool loi_de_gradation(int code) { return code == KW_acc || code == KW_dec || code == KW_pend; }

// `acc(t)`, `dec(t)`, `pend(t)` alone.
int forme_loi(word* s, const word* ob, word* st, const word* lim, bool* done) {
  (void)ob;
  (void)st;
  const word* v = command_argument(s);
  *done = item_count(s) == 1 && v;
  return *done ? valeurs_loi(s, lim, first_item(s)[2], v) : 0;
}

// `law CG`, `law line`, `law acc(t)`...; the rest is the object command.
int forme_law(word* s, const word* ob, word* st, const word* lim, bool* done) {
  (void)ob;
  (void)st;
  *done = false;
  if (item_count(s) < 2) return 0;
  const int k = next_item(first_item(s))[2];
  const word* v = item_value(next_item(first_item(s)));
  // The law object of `law CG` is the `law` word that carries a number;
  // without one, `law CG vol(id)` is the property.
  const word* ids = nullptr;
  word* it = first_item(s);
  for (int i = 0; i < item_count(s); i++, it = next_item(it))
    if (it[2] == KW_law && item_value(it)) ids = item_value(it);
  if (k == KW_CG && ids) return *done = true, LAW_CG(s, ids, lim);
  if (k == KW_line) return *done = true, LAW_LINE(s, lim);
  if (loi_de_gradation(k) && item_count(s) == 2 && v) return *done = true, valeurs_loi(s, lim, k, v);
  return 0;
}

}  // namespace

void point_courbe(const std::vector<float>& curve, float t, float r[3]) {
  const int n = static_cast<int>(curve.size() / 3);
  if (n < 1) {
    std::fill(r, r + 3, 0.0f);
    return;
  }
  const float s = std::clamp(t, 0.0f, 1.0f) * static_cast<float>(n - 1);
  const int i = std::min(entier(s), n - 1);
  const int j = std::min(i + 1, n - 1);
  const float f = s - static_cast<float>(i);
  for (int c = 0; c < 3; c++) r[c] = curve[i * 3 + c] + f * (curve[j * 3 + c] - curve[i * 3 + c]);
}

void install_laws() {
  for (int code : {KW_acc, KW_dec, KW_pend}) register_graphic_shape(code, forme_loi);
  register_graphic_shape(KW_law, forme_law);
}
