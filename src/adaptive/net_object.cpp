// The `network` command: `network(id) fac(...) motif(...) law(...)`
// makes or changes the object and its lists, the bare words `fac`,
// `near` and `texture` set its kind, `CG` its subtype, `dim` a default
// structure, `vol` an attachment.
#include <algorithm>
#include <cstdio>

#include "adaptive/net_commands.h"
#include "adaptive/net_internal.h"
#include "kernel/chains.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "scene/graphic.h"
#include "scene/lookup.h"
#include "scene/unsaved.h"

namespace {

// A flat list of numbers cut into patterns of n values (one pattern when
// n is 0), or a list kept as it is. False after "(k * n) len != k*n".
bool decoupe(const word* v, int n, int code, std::vector<word>& out) {
  if (tag(v) == T_HYBRIDE) {
    out.assign(v, v + size(v));
    return true;
  }
  const std::vector<float> f = floats_of(v);
  const int len = static_cast<int>(f.size());
  if (n <= 0) n = len;
  if (len == 0 || len % n != 0) {
    const int k = len / std::max(n, 1) + 1;
    voir_mot(code);
    char buf[96];
    std::snprintf(buf, sizeof buf, "(%d * %d) %d != %d\a\n", k, n, len, k * n);
    voir_texte(buf);
    return false;
  }
  out = liste_vide();
  for (int k = 0; k < len; k += n) liste_ajoute(out, valeur_floats(f.data() + k, n, n).data());
  return true;
}

// The structure changed: what depends on it is made again at first use.
void oublie_structure(Objet* o) {
  for (int code : {static_cast<int>(KW_matrix), -static_cast<int>(KW_matrix), static_cast<int>(KW_neuron),
                   static_cast<int>(KW_validate), static_cast<int>(KW_near)})
    rem_propr_1(o, code);
}

int couche(const word* fac, bool last) {
  int n = 0;
  for (const word* l : Parties{fac}) {
    n = elements(l);
    if (!last) break;
  }
  return n;
}

}  // namespace

int set_network_fac_motif_law(Objet* o, const word* fac, const word* motif, const word* law) {
  std::vector<int> sizes;
  if (fac)
    for (float f : floats_of(fac)) sizes.push_back(std::max(1, entier(f)));
  if (fac && sizes.size() < 2) {
    voir_mot(KW_fac);
    voir_int("%d ", static_cast<int>(sizes.size()));
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  const word* old = o->local ? get_val_1(o->local, KW_fac) : nullptr;
  const int n1 = fac ? sizes.front() : couche(old, false);
  const int nk = fac ? sizes.back() : couche(old, true);
  std::vector<word> m, l;
  if (motif && !decoupe(motif, n1, KW_motif, m)) return -1;
  if (law && !decoupe(law, nk, KW_law, l)) return -1;
  if (!o->local && !local_ini(o)) return -1;
  if (fac) {
    if (set_fac_tailles(o, sizes) < 0) return -1;
    oublie_structure(o);
  }
  if (motif && !set_propr_1(o, KW_motif, m.data())) return -1;
  if (law && !set_propr_1(o, KW_law, l.data())) return -1;
  return 0;
}

namespace {

bool a_valeur(word* s, int code) {
  word* it = find_item(s, code);
  return it && item_value(it);
}

// What the words of the command give one network.
int regle(Objet* o, word* s) {
  if (has_word(s, KW_fac) && !a_valeur(s, KW_fac)) o->subkind = KW_fac;
  if (has_word(s, KW_near) && !a_valeur(s, KW_near)) o->subkind = KW_near;
  if (has_word(s, KW_texture)) o->subkind = KW_texture;
  if (has_word(s, KW_CG)) o->kind2 = KW_CG;
  const word* fac = a_valeur(s, KW_fac) ? arg_of(s, KW_fac) : nullptr;
  const word* motif = arg_of(s, KW_motif);
  const word* law = arg_of(s, KW_law);
  if ((fac || motif || law) && set_network_fac_motif_law(o, fac, motif, law) < 0) return -1;
  if (has_word(s, KW_dim)) {
    if (!o->local && !local_ini(o)) return -1;
    if (NETWORK_DIM(o, arg_int(s, KW_dim, 6, 0), arg_int(s, KW_dim, 6, 1), arg_int(s, KW_dim, 1, 2)) < 0) return -1;
    oublie_structure(o);
  }
  if (const word* v = arg_of(s, KW_vol); v && !set_propr_1(o, KW_vol, v)) return -1;
  return 0;
}

// `network(1) motif`: a sub-property read through the command.
bool lecture(word* s) {
  if (item_count(s) != 2) return false;
  word* second = next_item(first_item(s));
  return !item_value(second) && second[2] != KW_fac && second[2] != KW_near && second[2] != KW_texture &&
         second[2] != KW_CG && second[2] != KW_dim;
}

}  // namespace

int NETWORK_b(word* s, const word* ob, word* st, const word* lim) {
  const word* selector = command_argument(s);
  if (ob || !selector) return bloc_0(s, ob, st, lim);
  if (has_word(s, KW_brush)) return BRUSH_NETWORK(s, ob, st, lim);
  if (has_word(s, KW_speed)) return SPEED_NETWORK(s, ob, st, lim);
  Objet* head = chaine_classe(KW_network);
  if (lecture(s)) {
    Objet* o = get_objet_simple(head, selector, 0);
    return resultat(s, o && o->local ? get_val_1(o->local, next_item(first_item(s))[2]) : nullptr, lim);
  }
  marque_objets_commande(s);
  for (int i = 0; i < nb_selection(selector); i++) {
    Objet* o = get_objet_simple(head, selector, i);
    if (!o) o = set_objet_simple(head, KW_network / KW_PER_VOC, KW_network, selector, i);
    if (!o || regle(o, s) < 0) {
      TRACE_FAIL("NETWORK_b()");
      return -1;
    }
  }
  return build_nil(s);
}
