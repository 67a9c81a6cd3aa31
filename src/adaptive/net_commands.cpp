// `generate network(ids)` with its options: learning, the test pass, the
// query of a pattern and the inverse query; `generate inv network(id1)
// network(id2)`; `speed network(ids) law`; and the rows of the dispatch.
#include <algorithm>

#include "adaptive/net_commands.h"
#include "adaptive/net_internal.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "scene/graphic.h"
#include "scene/law.h"
#include "scene/lookup.h"
#include "scene/unsaved.h"

std::vector<Objet*> reseaux_commande(word* s) { return objets_commande(s, KW_network); }

int lit_options(word* s, NetOptions& opt) {
  const std::vector<std::vector<float>> v = arg_floats_all(s, KW_validate);
  if (!v.empty()) {
    const std::vector<float>& a = v[0];
    opt.passes = std::max(1, a.empty() ? 1 : entier(a[0]));
    opt.start = a.size() > 1 ? std::max(0, entier(a[1])) : 0;
    opt.third = a.size() > 2 ? entier(a[2]) : 0;
    opt.test = v.size() > 1;
  }
  if (has_word(s, KW_coe)) {
    opt.coe_given = true;
    opt.coe_start = arg_float(s, KW_coe, 1.0f, 0);
    opt.coe_end = arg_float(s, KW_coe, 0.01f, 1);
  }
  if (arg_of(s, KW_law) && !has_word(s, KW_inv) && !courbe_loi(arg_of(s, KW_law), opt.curve)) return -1;
  opt.error = arg_float(s, KW_error, 0.1f);
  opt.max = arg_float(s, KW_max, 100.0f);
  for (int i = 0; i < 3; i++) opt.mass[i] = arg_float(s, KW_mass, opt.mass[i], i);
  if (has_word(s, KW_alea)) {
    opt.alea_given = true;
    opt.alea = arg_int(s, KW_alea, -1);
  }
  opt.edit = has_word(s, KW_edit);
  opt.debug = has_word(s, KW_debug);
  opt.time = arg_int(s, KW_time, -1);
  return 0;
}

namespace {

// The three numbers of each network that learned, NIL when none did.
int apprend(word* s, const std::vector<Objet*>& nets, const NetOptions& opt, const word* lim) {
  std::vector<float> out;
  for (Objet* o : nets) {
    NetResult res;
    const int r = opt.test ? test_reseau(o, opt, &res) : generer_reseau_1(o, opt, &res);
    if (r < 0) {
      TRACE_FAIL("GENERATE_NETWORK()");
      return -1;
    }
    if (r == 0) out.insert(out.end(), {static_cast<float>(res.passes), res.max_error, static_cast<float>(res.converged)});
  }
  return build_floats_or_nil(s, lim, out, 3);
}

// The outputs of each network for one pattern, one after the other.
int interroge(word* s, const std::vector<Objet*>& nets, const word* motif, word* st, const word* lim) {
  std::vector<word> pattern(motif, motif + size(motif));
  std::vector<word> all;
  int nx = 0;
  for (Objet* o : nets) {
    if (valider_motif_reseau(o, pattern.data(), st, lim, nullptr) < 0) {
      TRACE_FAIL("valider_motif_reseau()");
      return -1;
    }
    nx = dimp(st);
    all.insert(all.end(), st + 4, st + size(st));
  }
  if (all.empty()) return build_nil(s, lim);
  std::vector<float> f(all.size());
  for (size_t i = 0; i < all.size(); i++) f[i] = wf(all[i]);
  return build_floats(s, lim, f, nets.size() == 1 ? nx : 1);
}

int inverse(word* s, const std::vector<Objet*>& nets, const word* lim) {
  const word* v = arg_of(s, KW_law);
  const word* found = v ? requete_inverse(nets, v) : nullptr;
  if (!found) return build_nil(s, lim);
  if (!build_fits(s, size(found), lim)) return build_nil(s, lim);
  const std::vector<word> copy(found, found + size(found));
  std::copy(copy.begin(), copy.end(), s);
  return 0;
}

// `generate network(ids) number`: neurons, patterns and layers of each.
int nombres(word* s, const std::vector<Objet*>& nets, const word* lim) {
  std::vector<float> out;
  for (Objet* o : nets) {
    const Reseau r = trouve_reseau(o);
    out.insert(out.end(), {static_cast<float>(r.N), static_cast<float>(hybride_parts(r.motif)),
                           static_cast<float>(hybride_parts(r.fac))});
  }
  return build_floats_or_nil(s, lim, out, 3);
}

// `generate network(ids) anc`: the best weights back in place.
int ancien(word* s, const std::vector<Objet*>& nets, const word* lim) {
  for (Objet* o : nets) {
    const Reseau r = trouve_reseau(o);
    if (r.matrix && r.best) std::copy(r.best + 4, r.best + size(r.best), r.matrix + 4);
  }
  return build_nil(s, lim);
}

int generate_network(word* s, word* st, const word* lim) {
  const std::vector<Objet*> nets = reseaux_commande(s);
  if (has_word(s, KW_inv)) return inverse(s, nets, lim);
  if (const word* m = arg_of(s, KW_motif)) return interroge(s, nets, m, st, lim);
  if (has_word(s, KW_number)) return nombres(s, nets, lim);
  if (has_word(s, KW_anc)) return ancien(s, nets, lim);
  NetOptions opt;
  if (lit_options(s, opt) < 0) return -1;
  if (const char* file = arg_text(s, KW_read))
    for (Objet* o : nets)
      if (lit_motifs_fichier(o, file, s, opt) < 0) {
        TRACE_FAIL("GENERATE_NETWORK()");
        return -1;
      }
  return apprend(s, nets, opt, lim);
}

int generate_inv_network(word* s, const word* lim) {
  std::vector<Objet*> two;
  word* item = first_item(s);
  for (int i = 0; i < item_count(s); i++, item = next_item(item))
    if (item[2] == KW_network && item_value(item))
      for (int k = 0; k < nb_selection(item_value(item)); k++)
        if (Objet* o = get_objet_simple(chaine_classe(KW_network), item_value(item), k)) two.push_back(o);
  if (two.size() < 2) {
    voir_mot(KW_generate);
    voir_texte("inv network(id1) network(id2) [fac(n)]\a\n");
    return -1;
  }
  NetOptions opt;
  if (lit_options(s, opt) < 0) return -1;
  NetResult res;
  const int r = GENERATE_INV_NETWORK(two[0], two[1], arg_int(s, KW_fac, 1), opt, &res);
  if (r < 0) {
    TRACE_FAIL("GENERATE_INV_NETWORK()");
    return -1;
  }
  if (r > 0) return build_nil(s, lim);
  const float f[3] = {static_cast<float>(res.passes), res.max_error, static_cast<float>(res.converged)};
  return build_floats(s, lim, 3, f, 3);
}

int generate_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_network);
  if (!*done) return 0;
  marque_objets_commande(s);
  if (has_word(s, KW_inv) && word_count(s, KW_network) >= 2) return generate_inv_network(s, lim);
  return generate_network(s, st, lim);
}

int speed_shape(word* s, const word* ob, word* st, const word* lim, bool* done) {
  *done = !ob && has_word(s, KW_network);
  return *done ? SPEED_NETWORK(s, ob, st, lim) : 0;
}

}  // namespace

int test_reseau(Objet* o, const NetOptions& opt, NetResult* res) {
  *res = NetResult{};
  Reseau r = trouve_reseau(o);
  if (!r.motif || !r.law) {
    rapport_manque(o, !r.motif ? KW_motif : KW_law);
    return 1;
  }
  if (complete_reseau(o, opt, false) < 0) return -1;
  r = trouve_reseau(o);
  if (r.kind() == KW_fac) {
    int count = 0;
    res->max_error = passe_controle(r, opt, &count);
    if (res->max_error < 0) return -1;
    res->converged = count == 0;
  }
  return rafraichit_validate(r);
}

int VALIDATE_NETWORK(word* s, const word*, word*, const word* lim) {
  NetOptions opt;
  if (lit_options(s, opt) < 0) return -1;
  opt.test = true;
  return apprend(s, reseaux_commande(s), opt, lim);
}

int SPEED_NETWORK(word* s, const word*, word*, const word* lim) {
  const int code = has_word(s, KW_motif) ? KW_motif : KW_law;
  std::vector<float> out;
  for (Objet* o : reseaux_commande(s)) {
    const word* v = o->local ? get_val_1(o->local, code) : nullptr;
    if (!v) continue;
    const std::vector<float> now = floats_of(v);
    const word* before = get_val_1(o->local, -code);
    const std::vector<float> old = before ? floats_of(before) : now;
    for (size_t i = 0; i < now.size(); i++) out.push_back(now[i] - (i < old.size() ? old[i] : now[i]));
    const std::vector<word> copy(v, v + size(v));
    if (!set_propr_1(o, -code, copy.data())) return -1;
  }
  return build_floats_or_nil(s, lim, out);
}

void install_network_commands() {
  register_graphic_handler({KW_network}, NETWORK_b);
  register_graphic_shape(KW_generate, generate_shape);
  register_graphic_shape(KW_speed, speed_shape);
}
