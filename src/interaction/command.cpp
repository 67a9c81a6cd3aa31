// INTERACTION_b: the `interaction` command. Its first sub-keyword that has
// a handler decides and the command returns; with none, the loop starts
// (init_interaction reads the options), unless it already runs.
//
// Own words of this system beside the definition's table:
//   interaction period            the images a second asked for (0: no pacing)
//   interaction period speed      the rate measured over the last image
//   interaction screen(n)         the image period: the screen is cleared
//                                 every n images (0: never)
//   interaction screen(n) func("f", "g")   with the period function f, run
//                                 at the end of each period, and the post-
//                                 image function g, run after its swap
//   interaction message("text") poi(x,y) col(r,g,b)   a button
//   interaction read("a.orv b.orv")   the launch list of command files
//   interaction debug             the state of the loop, printed
//   interaction video name("shot") format("png")   records the images the
//                                 loop draws (video.cpp)
// The other words of the table that have handlers of their own (`matrix`,
// `number`, `sort`, `write`, `normal`, `radius`, `texture`, `transp`,
// `light`, `inside`, `fog`, `displ`) run as the command without the word
// `interaction`.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/access.h"
#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/args.h"
#include "render/window.h"
#include "scene/graphic.h"
#include "language/eval.h"

namespace {

constexpr int GENERATE_MAX = 200;  // words of a kept `generate` block

// The record without its first item, built at `st`.
word* sans_premier(word* s, word* st, const word* lim) {
  word* first = first_item(s);
  const int rest = s[0] - 4 - first[0];
  if (st + 4 + rest > lim) {
    err_dim_ev(nullptr);
    return nullptr;
  }
  st[0] = 4 + rest;
  st[1] = s[1];
  st[2] = s[2] - 1;
  st[3] = s[3];
  std::memmove(st + 4, first + first[0], static_cast<size_t>(rest) * sizeof(word));
  return st;
}

// The command as its second word alone would have it.
int commande_propre(word* s, const word* ob, word* st, const word* lim) {
  word* c = sans_premier(s, st, lim);
  if (!c) return -12;
  const int r = evaluer_1(c, ob, c + c[0], lim);
  if (r < 0) return r;
  return set_result(s, c, lim);
}

int lire_ou_ecrire(word* s, const word* lim, int code, int& variable) {
  const word* v = arg_of(s, code);
  if (!v) return build_float(s, lim, static_cast<float>(variable));
  variable = arg_int(s, code, variable);
  return build_nil(s);
}

int periode(word* s, const word* lim) {
  if (has_word(s, KW_speed)) return build_float(s, lim, loop().Images_par_seconde);
  InteractionState& L = loop();
  const int r = lire_ou_ecrire(s, lim, KW_period, L.Periode_image);
  if (L.Periode_image < 0) L.Periode_image = 0;
  return r;
}

int periode_ecran(word* s, const word* lim) {
  InteractionState& L = loop();
  const word* f = arg_of(s, KW_func);
  if (!arg_of(s, KW_screen) && !f) return build_float(s, lim, static_cast<float>(L.periode));
  // The functions are found first: a name of nothing changes nothing.
  word h[2] = {0, 0};
  char name[256];
  for (int i = 0; f && i < 2; i++) {
    int n = 0;
    if (i > 0 && !(tag(f) == T_HYBRIDE && np(f) > 1) && !(tag(f) == T_CHAR && mot_i(text(f), 1, name, sizeof name) > 0))
      break;
    if (get_ind(f, i, &n, name, sizeof name) != 1 || !(h[i] = fonction_nommee(name))) return -1;
  }
  L.periode = std::max(0, arg_int(s, KW_screen, L.periode));
  L.cpt_periode = 0;
  if (f) {
    L.fonction_periode = h[0];
    L.fonction_apres = h[1];
  }
  return build_nil(s);
}

int bouton(word* s, const word* lim) {
  InteractionState& L = loop();
  const char* t = value_text(arg_of(s, KW_message));
  if (!t) {
    std::vector<float> n{static_cast<float>(L.boutons.size())};
    return build_floats(s, lim, n);
  }
  if (static_cast<int>(L.boutons.size()) >= NB_BOUTONS) {
    voir_mot(KW_message);
    voir_message(0, MES_TOO_MANY);
    return -1;
  }
  Bouton b;
  b.texte = t;
  float at[2] = {0, 0};
  arg_floats(s, KW_poi, at, 2);
  b.x = at[0];
  b.y = at[1];
  arg_floats(s, KW_col, b.col, 3);
  L.boutons.push_back(b);
  return build_nil(s);
}

int liste_lancement(word* s) {
  InteractionState& L = loop();
  const char* t = value_text(arg_of(s, KW_read));
  if (!t) {
    std::string all;
    for (const std::string& f : L.lance) all += (all.empty() ? "" : " ") + f;
    return build_text_or_nil(s, eval_limit(), all);
  }
  L.lance = split_words(t);
  L.lance_pos = 0;
  return build_nil(s);
}

int garde_generate(word* s) {
  InteractionState& L = loop();
  word* second = next_item(first_item(s));
  if (item_count(s) < 3) {
    L.generate.clear();
    return build_nil(s);
  }
  const int rest = s[0] - 4 - first_item(s)[0];
  if (4 + rest > GENERATE_MAX) {
    voir_mot(KW_generate);
    err_debordement(nullptr);
    return -1;
  }
  (void)second;
  L.generate.assign(static_cast<size_t>(4 + rest), 0);
  L.generate_zone.assign(1 << 16, 0);
  L.generate[0] = 4 + rest;
  L.generate[1] = s[1];
  L.generate[2] = s[2] - 1;
  L.generate[3] = s[3];
  std::memcpy(L.generate.data() + 4, first_item(s) + first_item(s)[0], static_cast<size_t>(rest) * sizeof(word));
  return build_nil(s);
}

}  // namespace

int non_construit(int code) {
  voir_mot(code);
  voir_message(0, MES_NOT_IMPLEMENTED);
  return -1;
}

namespace {

// `interaction end ...`: the next word says what ends.
int fin_de(word* s, const word* lim) {
  InteractionState& L = loop();
  word* end = find_item(s, KW_end);
  word* what = item_count(s) > 2 ? next_item(end) : nullptr;
  const int code = what ? what[2] : 0;
  if (code == KW_interaction && item_count(s) == 3) {
    fin_interaction("end interaction");
  } else if (code == KW_write || code == KW_play) {
    L.mode_enregistrement = 0;
    L.mode_play = 0;
  } else if (code == KW_stock) {
    return non_construit(KW_stock);
  } else if (code == KW_video) {
    film_arret();
  } else {
    L.Panneau_continue = 0;
  }
  (void)lim;
  return build_nil(s);
}

int journal(word* s) {
  InteractionState& L = loop();
  L.log_mode = arg_int(s, KW_error, 1);
  stamp_debut();
  return build_nil(s);
}

// The state of the loop, one line a value.
int etat(word* s) {
  const InteractionState& L = loop();
  voir_int("Mode_idle %d\n", kernel().Mode_idle);
  voir_int("images %d\n", L.images);
  voir_int("Nb_image_reste %d\n", L.Nb_image_reste);
  voir_int("Periode_image %d\n", L.Periode_image);
  voir_int("Gel_interaction %d\n", L.Gel_interaction);
  for (int i = 0; i < NB_SLOTS; i++) voir_int2("P_fonc%d %d\n", i, L.P_fonc[i] ? 1 : 0);
  return build_nil(s);
}

}  // namespace

int INTERACTION_b(word* s, const word* ob, word* st, const word* lim) {
  if (!gl_on()) {
    voir_message(1, MESG_GRAPHIC_OFF);
    return build_nil(s);
  }
  InteractionState& L = loop();
  word* item = first_item(s);
  for (int i = 1; i < item_count(s); i++) {
    item = next_item(item);
    switch (item[2]) {
      case KW_ascii: return INTERACTION_ASCII(s, lim);
      case KW_debug: return etat(s);
      case KW_end: return fin_de(s, lim);
      case KW_error: return journal(s);
      case KW_STOP:
        fin_interaction("STOP interaction");
        return build_nil(s);
      case KW_func: return INTERACTION_FUNC(s, lim);
      case KW_generate: return garde_generate(s);
      case KW_period: return periode(s, lim);
      case KW_screen: return periode_ecran(s, lim);
      case KW_message: return bouton(s, lim);
      case KW_read: return liste_lancement(s);
      case KW_matrix: case KW_number: case KW_sort: case KW_write: case KW_normal: case KW_radius:
      case KW_texture: case KW_transp: case KW_light: case KW_inside: case KW_fog: case KW_displ:
        return commande_propre(s, ob, st, lim);
      case KW_coe: case KW_interaction: case KW_pull: case KW_col: case KW_limit:
      case KW_above: case KW_behind: case KW_below: case KW_front:
        return mouvement_manuel(s, lim);
      case KW_cut: return lire_ou_ecrire(s, lim, KW_cut, L.Gel_interaction);
      case KW_image: case KW_interpol: case KW_stock: case KW_play: return non_construit(item[2]);
      case KW_mouse: return INTERACTION_MOUSE(s, lim);
      case KW_video: return INTERACTION_VIDEO(s, lim);
      case KW_menu: {
        const char* t = value_text(item_value(item));
        if (t) L.texte_menu += (L.texte_menu.empty() ? "" : "|") + std::string(t);
        if (t && kernel().Mode_idle == KW_interaction) generer_menu_interaction();
        return build_nil(s);
      }
      default: break;
    }
  }
  if (kernel().Mode_idle == KW_interaction && !L.voir) return build_nil(s);
  if (init_interaction(s, 0) < 0) return -1;
  return build_nil(s);
}
